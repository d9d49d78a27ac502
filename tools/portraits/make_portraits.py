#!/usr/bin/env python3
"""Draws the authors' portraits into resources/portraits/ in six sizes each, as JPEG (4:4:4, quality 90).

Usage: make_portraits.py [name ...]     (no name: all authors)
Needs rsvg-convert (Debian: librsvg2-bin) and convert (Debian: imagemagick).
"""

import subprocess
import sys
import tempfile
from pathlib import Path

from portrait import portrait
from recipes import RECIPES

PORTRAITS = Path(__file__).resolve().parents[2] / "resources" / "portraits"
MASTER = 1440    # pixels: a whole multiple of every size below
SIZES = ((160, ""), (320, "@2x"), (480, "@3x"), (48, "-small"), (96, "-small@2x"), (144, "-small@3x"))


def rasterise(svg, target):
    """Draws SVG text into a large PNG file."""
    command = ["rsvg-convert", "--format=png", f"--width={MASTER}", f"--height={MASTER}", f"--output={target}"]
    subprocess.run(command, input=svg.encode(), check=True)


def write_jpeg(master, pixels, target):
    """Scales the large picture down and writes it; the small ones are sharpened a little."""
    sharpen = ["-unsharp", "0x0.6+0.5+0"] if pixels < 160 else []
    command = ["convert", str(master), "-filter", "Lanczos", "-resize", f"{pixels}x{pixels}", *sharpen, "-strip",
               "-sampling-factor", "4:4:4", "-quality", "90", str(target)]
    subprocess.run(command, check=True)


def make(name, folder):
    """Draws one author in every size."""
    master = Path(folder) / (name + ".png")
    rasterise(portrait(RECIPES[name]), master)
    for pixels, suffix in SIZES:
        write_jpeg(master, pixels, PORTRAITS / f"portrait_{name}{suffix}.jpg")


def main():
    """Draws the authors named on the command line, or all."""
    PORTRAITS.mkdir(parents=True, exist_ok=True)
    with tempfile.TemporaryDirectory() as folder:
        for name in sys.argv[1:] or RECIPES:
            make(name, folder)


if __name__ == "__main__":
    main()
