"""What every test here stands on: a folder, a display, the program, and the records it should show."""

import math
import os
import plistlib
import shutil
import tempfile
import unittest
from pathlib import Path

from display import Display
from list_screen import ListScreen
from processes import ChildProcess, bare_environment
from sounds import SoundServer, decoded

PROGRAM = Path(os.environ["ORUVANE_PROGRAM"])
RESOURCES = Path(__file__).resolve().parents[2] / "resources"
NO_SOUND_SERVER = "unix:/nonexistent/native"


class StageTest(unittest.TestCase):
    """Everything that is started here ends with the test."""

    longMessage = True

    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="oruvane.")
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)
        self.environment = bare_environment(self.folder)
        self._display_count = 0

    def start_display(self):
        self._display_count += 1
        folder = self.folder / f"display{self._display_count}"
        folder.mkdir()
        display = Display(folder, self.environment)
        self.addCleanup(display.stop)
        return display

    def start_sound_server(self):
        server = SoundServer(self.folder, self.environment)
        self.addCleanup(server.stop)
        return server

    def start_program(self, display, sound_server=None, *options, program=PROGRAM):
        address = sound_server.address if sound_server else NO_SOUND_SERVER
        environment = {**self.environment, "DISPLAY": display.name, "PULSE_SERVER": address}
        process = ChildProcess([program, "--appearance", "light", *options], environment, self.folder)
        self.addCleanup(process.kill)
        return process

    def show_list(self, sound_server=None, *options, program=PROGRAM):
        """The screen once the list is on it; self.display and self.program are what it took."""
        self.display = self.start_display()
        self.program = self.start_program(self.display, sound_server, *options, program=program)
        screen = ListScreen(self.display)
        screen.wait_until_shown()
        return screen

    def close(self, display, program):
        """Closes the window and expects a clean end."""
        self.assertTrue(program.is_running(), program.errors)
        display.close_window("oruvane")
        self.assertEqual(program.wait(), 0, program.errors)
        self.assertNotIn("Assertion failure", program.errors)

    def copy_program(self, name="a copy"):
        """The program and its resources in a folder of their own: (program, resources)."""
        folder = self.folder / name
        shutil.copytree(RESOURCES, folder / "resources")
        return Path(shutil.copy2(PROGRAM, folder)), folder / "resources"


def nearest_records():
    """The records in the order of the list, computed from the lists themselves."""
    here = plistlib.loads((RESOURCES / "FakeUserLocation.plist").read_bytes())
    narrowing = math.cos(math.radians(here["latitude"]))

    def distance(record):
        return math.hypot(record["latitude"] - here["latitude"],
                          (record["longitude"] - here["longitude"]) * narrowing)

    return sorted(plistlib.loads((RESOURCES / "FakeRecords.plist").read_bytes()), key=distance)


def clip(row):
    """The samples of a row's sound."""
    return decoded(RESOURCES / "sounds" / f"{nearest_records()[row]['sound_name']}.m4a")
