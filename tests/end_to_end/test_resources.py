"""The program with resources that somebody has damaged."""

import plistlib
import re
import shutil
import signal

from list_screen import FULL_ROWS, ListScreen
from processes import wait_until
from sounds import is_audible
from stage import RESOURCES, StageTest, nearest_records


class ResourcesTest(StageTest):
    def start_with_damaged_sounds(self, *damages):
        """Damages the sound of the first row, the second and so on; a row after them, which is healthy."""
        program, resources = self.copy_program()
        names = [record["sound_name"] for record in nearest_records()]
        for name, damage in zip(names, damages):
            damage(resources / "sounds" / f"{name}.m4a")
        self.server = self.start_sound_server()
        self.screen = self.show_list(self.server, program=program)
        return next(row for row, name in enumerate(names) if name not in names[:len(damages)])

    def expect_to_play(self, row):
        begin = self.server.count()
        self.screen.tap(row)
        self.screen.wait_for_icon(row, "pause")
        self.server.wait_until_audible(begin)

    def test_rows_whose_sounds_are_none_stay_silent_and_other_rows_play(self):
        healthy_row = self.start_with_damaged_sounds(
            lambda path: path.write_text("This is no sound.\n" * 1000),
            lambda path: path.write_bytes(b""),
            lambda path: path.write_bytes(path.read_bytes()[:1000])) # not even its description is whole
        for row in (0, 1, 2, 0, 1, 2):
            self.screen.tap(row)
            self.server.wait_for(0.5)
            self.assertEqual(self.screen.icon(row), "play")
        self.assertFalse(is_audible(self.server.heard()))
        self.expect_to_play(healthy_row)
        self.screen.tap(0) # what plays gives way to silence
        self.screen.wait_for_icon(healthy_row, "play")
        self.close(self.display, self.program)

    def test_a_sound_that_is_cut_off_comes_to_an_end_and_other_rows_play(self):
        healthy_row = self.start_with_damaged_sounds(
            lambda path: path.write_bytes(path.read_bytes()[:path.stat().st_size // 2]))
        self.expect_to_play(0)
        self.screen.wait_for_icon(0, "play")
        self.expect_to_play(healthy_row)
        self.close(self.display, self.program)

    def test_a_damaged_portrait_leaves_its_rows_without_a_picture(self):
        program, resources = self.copy_program()
        records = nearest_records()
        author = records[0]["author_id"]
        people = plistlib.loads((RESOURCES / "FakePeople.plist").read_bytes())
        name = next(person["portrait_name"] for person in people if person["id"] == author)
        for path in (resources / "portraits").glob(f"{name}*.jpg"):
            path.write_bytes(b"\xff\xd8\xff This is no picture.")
        screen = self.show_list(program=program)

        expected = [record["author_id"] != author for record in records[:FULL_ROWS]]
        wait_until(lambda: [screen.has_portrait(row) for row in range(FULL_ROWS)] == expected,
                   "all other rows have their pictures, and these have none", patience=5)
        self.close(self.display, self.program)

    def test_without_a_list_of_records_the_list_is_empty(self):
        program, resources = self.copy_program()
        (resources / "FakeRecords.plist").unlink()
        display = self.start_display()
        process = self.start_program(display, program=program)
        screen = ListScreen(display)
        wait_until(screen.title_is_shown, "the window is shown")
        wait_until(lambda: len(screen.colors_of_list()) == 1, "nothing is listed")
        screen.tap(0)
        self.close(display, process)

    def test_without_a_location_the_program_stops_and_says_why(self):
        def spoil(resources):
            (resources / "FakeUserLocation.plist").unlink()

        self.expect_failure(spoil, "Can't load fake location dictionary.")

    def test_a_location_that_is_no_dictionary_stops_the_program_as_well(self):
        def spoil(resources):
            (resources / "FakeUserLocation.plist").write_bytes(plistlib.dumps(["nowhere"]))

        self.expect_failure(spoil, "Can't load fake location dictionary.")

    def test_a_record_of_an_unknown_author_stops_the_program_and_names_the_author(self):
        def spoil(resources):
            path = resources / "FakeRecords.plist"
            records = plistlib.loads(path.read_bytes())
            records[3]["author_id"] = "author-nobody"
            path.write_bytes(plistlib.dumps(records))

        self.expect_failure(spoil, "Author with ID 'author-nobody' not found.")

    def test_a_record_without_its_sound_stops_the_program_and_names_the_sound(self):
        name = nearest_records()[0]["sound_name"]

        def spoil(resources):
            (resources / "sounds" / f"{name}.m4a").unlink()

        self.expect_failure(spoil, f"Sound file '{name}' not found.")

    def test_without_any_resources_the_program_stops_and_says_why(self):
        self.expect_failure(shutil.rmtree, "Can't load fake location dictionary.")

    def expect_failure(self, spoil, message):
        program, resources = self.copy_program()
        spoil(resources)
        process = self.start_program(self.start_display(), program=program)
        self.assertEqual(process.wait(), -signal.SIGABRT)
        self.assertRegex(process.errors,
                         r"(?m)^\*\*\* Assertion failure in ORVRecordsStorage:\d+: " + re.escape(message) + "$")
