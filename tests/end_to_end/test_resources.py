"""The program with resources that somebody has damaged."""

import plistlib
import shutil
import signal

from list_screen import FULL_ROWS, ListScreen
from processes import wait_until
from sounds import is_audible
from stage import RESOURCES, StageTest, nearest_records


class ResourcesTest(StageTest):
    def test_rows_with_damaged_sounds_do_nothing_and_other_rows_play(self):
        program, resources = self.copy_program()
        names = [record["sound_name"] for record in nearest_records()]
        damage = {
            "text": lambda path: path.write_text("This is no sound.\n" * 100),
            "cut off": lambda path: path.write_bytes(path.read_bytes()[:path.stat().st_size // 2]),
            "empty": lambda path: path.write_bytes(b""),
            "a folder": lambda path: (path.unlink(), path.mkdir()),
        }
        damaged_rows = 0, 1, 2, 3
        healthy_row = next(row for row, name in enumerate(names) if name not in names[:4])
        for row, spoil in zip(damaged_rows, list(damage.values())[:3]):
            spoil(resources / "sounds" / f"{names[row]}.m4a")
        server = self.start_sound_server()
        screen = self.show_list(server, program=program)

        for row in (0, 1, 2, 1, 0):
            screen.tap(row)
            server.wait_for(0.5)
            self.assertTrue(self.program.is_running(), self.program.errors)
        screen.tap(healthy_row)
        screen.wait_for_icon(healthy_row, "pause")
        begin = server.count()
        wait_until(lambda: is_audible(server.heard(begin)), "the healthy row is heard")
        self.assertEqual([screen.icon(row) for row in (0, 1, 2)], ["play"] * 3)
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
                         r"(?m)^\*\*\* Assertion failure in ORVRecordsStorage:\d+: " + regex(message) + "$")


def regex(text):
    """The text, to be matched as it is."""
    return "".join(f"[{character}]" if character in ".'()" else character for character in text)
