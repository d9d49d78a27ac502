"""The keys of the host, pressed in the running program."""

import struct

from list_screen import HEIGHT, WIDTH
from processes import wait_until
from stage import StageTest

PNG = b"\x89PNG\r\n\x1a\n"
PRESSES = 5 # fast enough that some fall into one second


class KeysTest(StageTest):
    def setUp(self):
        super().setUp()
        self.pictures = self.folder / "Pictures" # of the home that the program sees

    def take_pictures(self, count=1):
        """Presses Ctrl+S so many times; the answer of the program to each."""
        answers = self.program.errors.count("\n")
        for _ in range(count):
            self.display.press("oruvane", "Control_L", "s")
        wait_until(lambda: self.program.errors.count("\n") == answers + count, "every picture is answered")
        return self.program.errors.splitlines()[answers:]

    def test_pictures_are_saved_in_a_folder_that_is_made_and_under_names_of_their_own(self):
        self.show_list()
        self.assertFalse(self.pictures.exists())
        answers = self.take_pictures(PRESSES)
        files = sorted(self.pictures.iterdir())
        self.assertCountEqual(answers, [f'saved "{file}"' for file in files])
        self.assertEqual(len(files), PRESSES)
        seconds = {file.name[:len("oruvane 2026-01-01 00-00-00")] for file in files}
        self.assertLess(len(seconds), PRESSES, "some were taken within one second")
        for file in files:
            head = file.read_bytes()[:24]
            self.assertEqual(head[:8], PNG)
            self.assertEqual(struct.unpack(">II", head[16:24]), (WIDTH, HEIGHT))
        self.close(self.display, self.program)

    def test_a_folder_that_cannot_be_written_is_told_and_the_program_goes_on(self):
        self.pictures.write_text("a file where the folder should be")
        screen = self.show_list()
        answer, = self.take_pictures()
        self.assertIn(f'cannot save the picture to "{self.pictures}/oruvane ', answer)
        screen.tap(0)
        screen.wait_for_icon(0, "pause")
        self.pictures.unlink()
        answer, = self.take_pictures()
        self.assertIn(f'saved "{self.pictures}/oruvane ', answer)
        self.close(self.display, self.program)
