"""The program started in other ways than a plain one."""

import os
import plistlib
import struct
import subprocess
from pathlib import Path

from list_screen import HEIGHT, WIDTH
from stage import PROGRAM, StageTest

PNG = b"\x89PNG\r\n\x1a\n"


class CommandLineTest(StageTest):
    def run_program(self, *options, program=PROGRAM, display=None):
        process = self.start_program(display or self.start_display(), None, *options, program=program)
        return process.wait(), process

    def test_wrong_options_end_the_program_with_2_and_a_sentence(self):
        display = self.start_display()
        for options, sentence in {
            ("--loud",): 'unknown argument "--loud"',
            ("records",): 'unknown argument "records"',
            ("",): 'unknown argument ""',
            ("--device", "watch"): '--device does not take "watch"; it takes phone|tablet',
            ("--scale=4",): '--scale does not take "4"; it takes 1|2|3',
            ("--screenshot",): "--screenshot needs a value: FILE",
            ("--report=yes",): "--report takes no value",
        }.items():
            with self.subTest(options=options):
                code, process = self.run_program(*options, display=display)
                self.assertEqual(code, 2)
                self.assertEqual(process.errors, f"oruvane: {sentence}\nTry --help.\n")
                self.assertEqual(process.output, "")

    def test_help_is_printed_without_a_display(self):
        environment = {name: value for name, value in self.environment.items() if name != "DISPLAY"}
        result = subprocess.run([PROGRAM, "--help"], env=environment, capture_output=True, text=True)
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        self.assertTrue(result.stdout.startswith("Usage: oruvane [options]\n"), result.stdout)

    def test_a_screenshot_that_cannot_be_saved_ends_the_program_with_1_and_a_sentence(self):
        file = self.folder / "no such folder" / "screen.png"
        code, process = self.run_program("--screenshot", file)
        self.assertEqual(code, 1)
        self.assertIn(f'cannot save the picture to "{file}": ', process.errors)

    def test_without_fonts_it_says_so_once(self):
        fonts = self.folder / "fonts.conf"
        fonts.write_text(f"<fontconfig><dir>{self.folder}</dir><cachedir>{self.folder}</cachedir></fontconfig>")
        self.environment["FONTCONFIG_FILE"] = str(fonts)
        code, process = self.run_program("--screenshot", self.folder / "screen.png")
        self.assertEqual(code, 0, process.errors)
        self.assertEqual(process.errors.count("no usable font is installed"), 1, process.errors)

    def test_with_fonts_it_says_nothing(self):
        code, process = self.run_program("--screenshot", self.folder / "screen.png")
        self.assertEqual(code, 0, process.errors)
        self.assertNotIn("font", process.errors)

    def test_names_in_any_script_are_shown_without_a_word(self):
        program, resources = self.copy_program()
        people = plistlib.loads((resources / "FakePeople.plist").read_bytes())
        for person, name in zip(people, ("বাংলা", "한국어", "עברית", "தமிழ்", "አማርኛ", "ไทย", "中文", "العربية")):
            person["full_name"] = name
        (resources / "FakePeople.plist").write_bytes(plistlib.dumps(people))
        code, process = self.run_program("--screenshot", self.folder / "screen.png", program=program)
        self.assertEqual(code, 0, process.errors)
        self.assertEqual(process.errors, "")

    def test_paths_may_have_blanks_and_letters_of_any_language(self):
        program, _ = self.copy_program("a folder für 録音")
        self.assertEqual(self.screenshot_of(program), self.screenshot_of(PROGRAM))

    def test_the_program_runs_from_where_it_is_installed(self):
        prefix = self.folder / "usr local"
        subprocess.run(["cmake", "--install", os.environ["ORUVANE_BUILD"], "--prefix", prefix],
                       check=True, capture_output=True)
        installed = prefix / "bin" / "oruvane"
        self.assertTrue((prefix / "share" / "oruvane" / "resources" / "FakeRecords.plist").is_file())
        self.assertEqual(self.screenshot_of(installed), self.screenshot_of(PROGRAM))

    def screenshot_of(self, program):
        file = self.folder / "a screen.png"
        code, process = self.run_program("--screenshot", file, program=program)
        self.assertEqual(code, 0, process.errors)
        picture = Path(file).read_bytes()
        file.unlink()
        self.assertTrue(picture.startswith(PNG))
        self.assertEqual(struct.unpack(">II", picture[16:24]), (WIDTH, HEIGHT))
        return picture
