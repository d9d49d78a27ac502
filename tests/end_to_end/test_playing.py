"""Taps on buttons and sliders, and what is heard and seen of it."""

import signal
import time

from processes import wait_until
from sounds import AUDIBLE, RATE, find, is_audible, level
from stage import StageTest, clip

SETTLING = int(0.3 * RATE)  # samples from a tap to its effect being heard


class PlayingTest(StageTest):
    def start(self):
        self.server = self.start_sound_server()
        return self.show_list(self.server)

    def play(self, screen, row, seconds):
        """Taps the row's button and returns when this much of it has been heard; where the tap was."""
        begin = self.server.count()
        screen.tap(row)
        screen.wait_for_icon(row, "pause")
        self.server.wait_until_audible(begin)
        self.server.wait_for(seconds)
        return begin

    def assert_stays_silent(self, begin, end, message):
        self.assertFalse(is_audible(self.server.heard(begin, end)), message)

    def test_a_tapped_button_sounds_as_its_clip_and_stops_at_the_end(self):
        screen = self.start()
        sound = clip(0)
        begin = self.play(screen, 0, seconds=0)
        screen.wait_for_icon(0, "play", patience=len(sound) / RATE + 15)
        self.server.wait_for(1)

        heard = self.server.heard()
        offset, correlation = find(self.folder, sound, heard)
        end = offset + len(sound)
        self.assertGreaterEqual(correlation, 0.9)
        self.assertLess(end, len(heard) - RATE // 2, "not all of it was heard")
        self.assertAlmostEqual(level(heard[offset:end]) / level(sound), 1, delta=0.1)
        self.assertGreaterEqual(offset, begin - SETTLING)
        self.assert_stays_silent(0, max(offset - SETTLING, 0), "heard before the tap")
        self.assert_stays_silent(end + SETTLING, len(heard), "heard after the end")
        self.close(self.display, self.program)

    def test_a_tap_on_another_button_replaces_what_plays(self):
        screen = self.start()
        first, second = clip(2), clip(3)
        self.play(screen, 2, seconds=1.5)
        change = self.server.count()
        screen.tap(3)
        screen.wait_for_icon(3, "pause")
        self.assertEqual(screen.icon(2), "play")
        self.server.wait_until_audible(change + SETTLING)
        self.server.wait_for(2.5)

        heard = self.server.heard()
        self.assertGreaterEqual(find(self.folder, heard[change - RATE:change - SETTLING], first)[1], 0.9)
        windows = 0
        for begin in range(change + SETTLING, len(heard) - RATE // 2, RATE // 2):
            window = heard[begin:begin + RATE // 2]
            if not is_audible(window):
                continue # it has not begun yet
            windows += 1
            with self.subTest(seconds_after_the_tap=(begin - change) / RATE):
                self.assertGreaterEqual(find(self.folder, window, second)[1], 0.9)
                self.assertLess(find(self.folder, window, first)[1], 0.6)
        self.assertGreaterEqual(windows, 4)

    def test_a_tap_on_the_playing_button_pauses_and_another_goes_on_from_there(self):
        screen = self.start()
        sound = clip(2)
        self.play(screen, 2, seconds=2)
        pause = self.server.count()
        screen.tap(2)
        screen.wait_for_icon(2, "play")
        self.server.wait_for(0.5)
        position = screen.progress(2)
        self.assertGreater(position, 0)
        self.server.wait_for(1)
        self.assertEqual(screen.progress(2), position, "it went on in silence")
        resume = self.server.count()
        screen.tap(2)
        screen.wait_for_icon(2, "pause")
        self.server.wait_until_audible(resume)
        self.server.wait_for(1.5)

        heard = self.server.heard()
        self.assert_stays_silent(pause + SETTLING, resume, "heard while paused")
        before, after = pause - RATE, len(heard) - RATE
        offset_before, likeness_before = find(self.folder, heard[before:pause - RATE // 4], sound)
        offset_after, likeness_after = find(self.folder, heard[after:], sound)
        self.assertGreaterEqual(likeness_before, 0.9)
        self.assertGreaterEqual(likeness_after, 0.9)
        # Nothing is left out or heard twice: the sound was late by the length of the pause, no more or less.
        held_up = (after - before) - (offset_after - offset_before)
        self.assertAlmostEqual(held_up / RATE, (resume - pause) / RATE, delta=0.3)

    def test_without_a_sound_server_the_position_goes_on_in_real_time_to_the_end(self):
        screen = self.show_list()
        self.expect_real_time_to_the_end(screen, during=None)

    def test_when_the_sound_server_dies_the_position_goes_on_to_the_end(self):
        screen = self.start()

        def die():
            self.assertTrue(is_audible(self.server.heard()), "it did not sound before")
            self.server.stop()

        self.expect_real_time_to_the_end(screen, during=die)

    def test_after_the_sound_server_was_restarted_the_record_is_heard_again_in_real_time(self):
        screen = self.start()
        sound = clip(2)
        self.play(screen, 2, seconds=1)
        self.server.stop()
        time.sleep(1.5)
        self.server.start()
        self.server.wait_until_audible(0)
        self.assertEqual(screen.icon(2), "pause")
        self.server.wait_for(1.5)
        earliest = screen.progress(2) * len(sound)
        heard = self.server.heard()
        latest = screen.progress(2) * len(sound)
        offset, likeness = find(self.folder, heard[len(heard) - RATE:], sound)
        self.assertGreaterEqual(likeness, 0.9)
        self.assertGreater(offset + RATE, earliest - RATE / 2)
        self.assertLess(offset + RATE, latest + RATE / 2)
        self.close(self.display, self.program)

    def expect_real_time_to_the_end(self, screen, during):
        """Plays a whole row; during() is called in the third second."""
        row = 1
        duration = len(clip(row)) / RATE
        screen.tap(row)
        screen.wait_for_icon(row, "pause")
        begin = time.monotonic()
        seen = []
        while screen.icon(row) == "pause":
            elapsed = time.monotonic() - begin
            self.assertLess(elapsed, duration + 10, "the end did not come")
            seen.append((elapsed, screen.progress(row)))
            if during and elapsed > 2.5:
                during()
                during = None
            time.sleep(0.05)
        end = time.monotonic() - begin
        self.assertAlmostEqual(end, duration, delta=0.8)
        for elapsed, progress in seen:
            if elapsed < end - 0.5: # then the ring goes back
                self.assertAlmostEqual(progress * duration, elapsed, delta=0.8)
        self.assertGreater(max(progress for _, progress in seen), 0.9)
        wait_until(lambda: screen.progress(row) == 0, "the ring is empty again")
        self.close(self.display, self.program)

    def test_a_dragged_thumb_is_heard_from_where_it_was_let_go(self):
        screen = self.start()
        sound = clip(2)
        self.play(screen, 2, seconds=1)
        wait_until(lambda: screen.thumb() is not None, "the thumb is shown")
        thumb = screen.thumb()
        screen.hold_slider(thumb)
        screen.move_on_slider(thumb, 0.4)
        wait_until(lambda: screen.thumb_is_in(0.35, 0.45), "the thumb is dragged")
        self.server.wait_for(SETTLING / RATE)
        silent = self.server.count()
        screen.move_on_slider(0.4, 0.6)
        place = wait_until(
            lambda: screen.thumb_is_in(0.55, 0.65) and screen.thumb(), "the thumb follows the finger")
        wait_until(lambda: abs(screen.progress(2) - place) < 0.02, "the ring follows the thumb")
        end = self.server.count()
        screen.let_go()
        self.server.wait_until_audible(end)
        self.server.wait_for(1.5)

        heard = self.server.heard()
        self.assert_stays_silent(silent, end, "heard under the finger")
        begin = next(index for index in range(end, len(heard)) if abs(heard[index]) > AUDIBLE)
        offset, likeness = find(self.folder, heard[begin:begin + RATE], sound)
        self.assertGreaterEqual(likeness, 0.9)
        self.assertAlmostEqual(offset / len(sound), place, delta=0.02)

    def test_a_tap_on_the_waveform_goes_on_from_there(self):
        screen = self.start()
        sound = clip(2)
        self.play(screen, 2, seconds=1)
        wait_until(lambda: screen.thumb() is not None, "the thumb is shown")
        tap = self.server.count()
        screen.tap_waveform(0.5)
        wait_until(lambda: screen.thumb_is_in(0.5, 1), "the thumb jumps")
        self.server.wait_for(1.5)

        heard = self.server.heard()
        before, likeness_before = find(self.folder, heard[tap - RATE // 2:tap], sound)
        after, likeness_after = find(self.folder, heard[len(heard) - RATE:], sound)
        self.assertGreaterEqual(likeness_before, 0.9)
        self.assertGreaterEqual(likeness_after, 0.9)
        # Where the middle of the sound must have been heard, it jumps there from what went on until then.
        jump = len(heard) - RATE - (after - len(sound) // 2)
        self.assertGreater(jump, tap)
        last = heard[jump - SETTLING - RATE // 2:jump - SETTLING]
        place, likeness = find(self.folder, last, sound)
        self.assertGreaterEqual(likeness, 0.9)
        self.assertAlmostEqual(place - before, jump - SETTLING - tap, delta=0.02 * RATE)
        place, likeness = find(self.folder, heard[jump + SETTLING:jump + SETTLING + RATE // 2], sound)
        self.assertGreaterEqual(likeness, 0.9)
        self.assertAlmostEqual(place, len(sound) // 2 + SETTLING, delta=0.02 * RATE)

    def test_closing_the_window_while_a_record_plays_ends_the_program_cleanly(self):
        screen = self.start()
        self.play(screen, 0, seconds=0.5)
        self.close(self.display, self.program)

    def test_a_termination_signal_while_a_record_plays_ends_the_program_at_once(self):
        screen = self.start()
        self.play(screen, 0, seconds=0.5)
        self.program.send(signal.SIGTERM)
        self.assertIn(self.program.wait(), (0, -signal.SIGTERM), self.program.errors)

    def test_the_tenth_of_many_quick_taps_still_counts(self):
        screen = self.start()
        for row in (0, 1, 2, 3, 4, 5, 4, 3, 2, 6):
            screen.tap(row)
        screen.wait_for_icon(6, "pause")
        begin = self.server.count()
        self.server.wait_for(2)
        self.assertEqual([row for row, icon in enumerate(screen.icons()) if icon != "play"], [6])
        window = self.server.heard(begin + RATE // 2, begin + 2 * RATE)
        self.assertTrue(is_audible(window), "the last tapped row is not heard")
        self.assertGreaterEqual(find(self.folder, window, clip(6))[1], 0.9)
