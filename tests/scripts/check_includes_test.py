"""Holds scripts/check-includes to what it promises, on small trees of sources that break one rule each."""

import subprocess
import tempfile
import unittest
from pathlib import Path

SCRIPT = Path(__file__).resolve().parents[2] / "scripts" / "check-includes"
EDGES = """
low/layer:
platform/layers: low/layer
platform/views: low/layer
"""


class CheckIncludesTest(unittest.TestCase):
    def check(self, sources):
        """The exit code and the offences for a tree of files, each given as the headers that it includes."""
        with tempfile.TemporaryDirectory() as root:
            for name, headers in sources.items():
                path = Path(root, name)
                path.parent.mkdir(parents=True, exist_ok=True)
                path.write_text("".join(f'#include "{header}"\n' for header in headers))
            Path(root, "scripts").mkdir()
            Path(root, "scripts", "include-edges").write_text(EDGES)
            result = subprocess.run([SCRIPT, root], capture_output=True, text=True, check=False)
        return result.returncode, result.stdout.splitlines()[:-1]

    def test_what_includes_downwards_is_no_offence(self):
        sources = {"low/layer/A.h": [], "low/layer/B.h": ["low/layer/A.h"], "low/layer/B.cpp": ["low/layer/B.h"],
                   "platform/views/C.h": ["low/layer/B.h", "low/layer/A.h"]}
        self.assertEqual(self.check(sources), (0, []))

    def test_a_folder_that_includes_upwards_is_named(self):
        sources = {"low/layer/A.cpp": ["platform/views/B.h"], "platform/views/B.h": []}
        self.assertEqual(self.check(sources), (1, ["low/layer/A.cpp:1: low/layer may not include platform/views"]))

    def test_headers_in_a_cycle_are_named(self):
        sources = {"platform/layers/A.h": ["platform/layers/B.h"], "platform/layers/B.h": ["platform/layers/C.h"],
                   "platform/layers/C.h": ["platform/layers/A.h"], "platform/layers/D.h": ["platform/layers/A.h"]}
        self.assertEqual(self.check(sources), (1, [
            "these include each other: platform/layers/A.h platform/layers/B.h platform/layers/C.h"]))

    def test_classes_whose_sources_include_each_other_are_named(self):
        sources = {"low/layer/A.h": [], "low/layer/A.cpp": ["low/layer/A.h", "low/layer/B.h"],
                   "low/layer/B.h": ["low/layer/A.h"]}
        self.assertEqual(self.check(sources), (1, ["these include each other: low/layer/A low/layer/B"]))

    def test_a_knotted_folder_may_have_them(self):
        sources = {"platform/layers/A.h": [], "platform/layers/A.cpp": ["platform/layers/A.h", "platform/layers/B.h"],
                   "platform/layers/B.h": ["platform/layers/A.h"]}
        self.assertEqual(self.check(sources), (0, []))

    def test_a_knotted_class_may_have_them_and_no_other_of_its_folder(self):
        knot = {"platform/views/UIView.h": [], "platform/views/UIWindow.h": ["platform/views/UIView.h"],
                "platform/views/UIView.cpp": ["platform/views/UIView.h", "platform/views/UIWindow.h"]}
        others = {"platform/views/A.h": [], "platform/views/A.cpp": ["platform/views/A.h", "platform/views/B.h"],
                  "platform/views/B.h": ["platform/views/A.h"]}
        self.assertEqual(self.check(knot), (0, []))
        self.assertEqual(self.check(knot | others), (
            1, ["these include each other: platform/views/A platform/views/B"]))


if __name__ == "__main__":
    unittest.main()
