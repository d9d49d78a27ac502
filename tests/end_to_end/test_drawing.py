"""How often the program draws."""

import re
import time

from list_screen import ListScreen
from processes import wait_until
from stage import StageTest


def sleeps_of(process_id):
    """How often the main thread has gone to sleep: at most as often as it was woken."""
    with open(f"/proc/{process_id}/task/{process_id}/status") as status:
        return int(re.search(r"^voluntary_ctxt_switches:\s*(\d+)", status.read(), re.MULTILINE)[1])


class DrawingTest(StageTest):
    def frames_drawn(self, display, program):
        self.close(display, program)
        return int(re.search(r"^frames drawn: (\d+)$", program.output, re.MULTILINE)[1])

    def wait_until_asleep(self, program):
        """Until the main thread has not been woken for a second."""
        since = [time.monotonic(), sleeps_of(program.process_id)]

        def is_asleep():
            sleeps = sleeps_of(program.process_id)
            if sleeps != since[1]:
                since[:] = time.monotonic(), sleeps
            return time.monotonic() - since[0] >= 1

        wait_until(is_asleep, "the program has nothing to do")

    def start_pair(self):
        """Two programs that do the same, to be ended at different moments: (display, program, screen)."""
        pair = []
        for display in (self.start_display(), self.start_display()):
            pair.append((display, self.start_program(display, None, "--report"), ListScreen(display)))
        for _, program, screen in pair:
            screen.wait_until_shown()
            self.wait_until_asleep(program)
        return pair

    def test_nothing_is_drawn_while_nothing_happens(self):
        (first_display, first, _), (second_display, second, _) = self.start_pair()
        sleeps = sleeps_of(second.process_id)
        at_once = self.frames_drawn(first_display, first)
        time.sleep(10)
        self.assertLessEqual(sleeps_of(second.process_id) - sleeps, 5, "it was woken for nothing")
        # The rows fade in at launch, which takes a frame more or less; in ten seconds a motion takes 600.
        self.assertAlmostEqual(self.frames_drawn(second_display, second), at_once, delta=4)
        self.assertGreaterEqual(at_once, 1)

    def test_a_paused_row_is_drawn_no_more(self):
        pair = self.start_pair()
        for icon in ("pause", "play"):
            for _, _, screen in pair:
                screen.tap(0)
            for _, _, screen in pair:
                screen.wait_for_icon(0, icon)
        for _, program, screen in pair:
            self.wait_until_asleep(program)
            self.assertGreater(screen.progress(0), 0)
        (first_display, first, _), (second_display, second, _) = pair
        sleeps = sleeps_of(second.process_id)
        self.frames_drawn(first_display, first)
        time.sleep(5)
        self.assertLessEqual(sleeps_of(second.process_id) - sleeps, 5, "it was woken for nothing")
        self.close(second_display, second)
