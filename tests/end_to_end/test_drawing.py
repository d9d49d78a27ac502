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

    def test_nothing_is_drawn_while_nothing_happens(self):
        displays = self.start_display(), self.start_display()
        short, long = (self.start_program(display, None, "--report") for display in displays)
        for display, program in zip(displays, (short, long)):
            ListScreen(display).wait_until_shown()
            self.wait_until_asleep(program)
        sleeps = sleeps_of(long.process_id)
        at_once = self.frames_drawn(displays[0], short)
        time.sleep(10)
        self.assertLessEqual(sleeps_of(long.process_id) - sleeps, 5, "it was woken for nothing")
        self.assertLessEqual(abs(self.frames_drawn(displays[1], long) - at_once), 1)
        self.assertGreaterEqual(at_once, 1)

    def test_a_playing_row_is_drawn_when_its_text_changes_and_not_at_every_refresh(self):
        screen = self.show_list(None, "--report")
        self.wait_until_asleep(self.program)
        screen.tap(0)
        screen.wait_for_icon(0, "pause")
        time.sleep(5.5)
        frames = self.frames_drawn(self.display, self.program)
        self.assertGreaterEqual(frames, 6, "five changes of the text and the list itself")
        self.assertLessEqual(frames, 60)
