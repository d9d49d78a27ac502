"""How often the program draws."""

import re
import time

from processes import wait_until
from stage import StageTest


def sleeps_of(process_id):
    """How often the main thread has gone to sleep: at most as often as it was woken."""
    with open(f"/proc/{process_id}/task/{process_id}/status") as status:
        return int(re.search(r"^voluntary_ctxt_switches:\s*(\d+)", status.read(), re.MULTILINE)[1])


class DrawingTest(StageTest):
    def wait_until_asleep(self, program):
        """Until the main thread has not been woken for a second."""
        since = [time.monotonic(), sleeps_of(program.process_id)]

        def is_asleep():
            sleeps = sleeps_of(program.process_id)
            if sleeps != since[1]:
                since[:] = time.monotonic(), sleeps
            return time.monotonic() - since[0] >= 1

        wait_until(is_asleep, "the program has nothing to do")

    def expect_no_frames(self, program, seconds):
        """For each frame the main thread is woken, so as often as it sleeps it can have drawn one at most."""
        self.wait_until_asleep(program)
        sleeps = sleeps_of(program.process_id)
        time.sleep(seconds)
        self.assertLessEqual(sleeps_of(program.process_id) - sleeps, 5, "it was woken for nothing")

    def test_nothing_is_drawn_while_nothing_happens(self):
        screen = self.show_list(None, "--report")
        self.expect_no_frames(self.program, seconds=10)
        self.assertEqual(set(screen.icons()), {"play"})
        self.close(self.display, self.program)
        self.assertRegex(self.program.output, re.compile(r"^frames drawn: [1-9]\d*$", re.MULTILINE))

    def test_a_paused_row_is_drawn_no_more(self):
        screen = self.show_list()
        sleeps = sleeps_of(self.program.process_id)
        for icon in ("pause", "play"):
            screen.tap(0)
            screen.wait_for_icon(0, icon)
        self.assertGreater(sleeps_of(self.program.process_id) - sleeps, 5, "what is drawn is seen")
        self.expect_no_frames(self.program, seconds=5)
        self.assertGreater(screen.progress(0), 0)
        self.close(self.display, self.program)
