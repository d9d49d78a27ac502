"""What OpenGL draws, by Mesa's software driver."""

import os
from pathlib import Path

from processes import ChildProcess
from stage import StageTest

BUILD = Path(os.environ["ORUVANE_BUILD"])
PATIENCE = 450  # seconds; OpenGL without a graphics processor is slow


class RenderersTest(StageTest):
    def test_opengl_draws_the_gallery_and_the_list_as_they_are_painted(self):
        """The suite of the gallery once more; the pictures of what differs are left beside it."""
        suite = BUILD / "tests" / "gallery" / "tests_gallery"
        environment = {**self.environment, "DISPLAY": self.start_display().name, "ORUVANE_RENDERER": "opengl"}
        gallery = ChildProcess([suite, "--gtest_brief=1"], environment, self.folder, cwd=suite.parent)
        self.addCleanup(gallery.kill)
        self.assertEqual(gallery.wait(PATIENCE), 0, gallery.output + gallery.errors)
        self.assertIn("PASSED", gallery.output)
