#!/usr/bin/env python3
"""Renders the icons and waveform pictures into resources/images/ at one, two and three pixels a point.

Needs rsvg-convert (Debian: librsvg2-bin). The SVG files beside this script are the sources; the
application icon's source is resources/images/oruvane.svg.
"""

import subprocess
from pathlib import Path

import waveforms

HERE = Path(__file__).resolve().parent
IMAGES = HERE.parents[1] / "resources" / "images"
SCALES = ((1, ""), (2, "@2x"), (3, "@3x"))


def render(svg, target, zoom=1):
    """Draws SVG text into a PNG file, zoom pixels for each point."""
    command = ["rsvg-convert", "--format=png", f"--zoom={zoom}", f"--output={target}"]
    subprocess.run(command, input=svg.encode(), check=True)


def pictures(zoom):
    """All pictures for zoom pixels a point as (name, SVG text) pairs."""
    drawn = [(source.stem, source.read_text()) for source in sorted(HERE.glob("*.svg"))]
    return [*drawn, *waveforms.pictures(zoom)]


def main():
    """Renders everything."""
    IMAGES.mkdir(parents=True, exist_ok=True)
    for zoom, suffix in SCALES:
        for name, svg in pictures(zoom):
            render(svg, IMAGES / f"{name}{suffix}.png", zoom)
    icon = IMAGES / "oruvane.svg"
    render(icon.read_text(), icon.with_suffix(".png"))


if __name__ == "__main__":
    main()
