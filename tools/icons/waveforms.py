"""The two stock waveform pictures as SVG text: rounded bars, black on transparent.

Bars begin, end and are as high as whole pixels at each density, so no edge is blurred.
"""

import math
import random

PLAYBACK_SIZE = (390, 44)    # points: the phone's playback slider
RECORDING_SIZE = (30, 44)    # points: a tile; thirteen of them fill the phone's recording panel
BAR_PITCH = 3                # points from one bar to the next
BAR_WIDTH = 2                # points
SMALLEST_BAR = 2             # points: silence is a dot
MARGIN = 1                   # points above and below the loudest bar

# What is heard at a street corner, as (first bar, bars, loudness, shape). The shapes are the functions below.
CITY_EVENTS = (
    (3, 9, 0.40, "talk"),
    (13, 5, 0.30, "talk"),
    (21, 2, 0.82, "horn"),
    (25, 5, 0.97, "horn"),
    (36, 7, 0.24, "talk"),
    (47, 6, 0.58, "bell"),
    (52, 9, 0.66, "bell"),
    (50, 38, 1.00, "tram"),
    (92, 8, 0.52, "talk"),
    (101, 4, 0.36, "talk"),
    (106, 8, 0.62, "talk"),
    (117, 1, 0.26, "horn"),
    (120, 1, 0.22, "horn"),
    (123, 1, 0.17, "horn"),
    (126, 1, 0.12, "horn"),
)
SYLLABLE = (1.0, 0.62, 0.86, 0.45)  # loudness of the bars that talk repeats


def talk(progress, bar):
    """A phrase: syllables, loud soon after its beginning and trailing off."""
    return SYLLABLE[bar % len(SYLLABLE)] * min(1, 0.4 + progress * 4) * (1 - 0.55 * progress)


def horn(progress, bar):
    """There at once, held, and gone."""
    return 1.0 if bar == 0 or progress < 0.75 else 0.55


def bell(progress, bar):
    """A strike that rings away."""
    return math.exp(-3.2 * progress)


def tram(progress, bar):
    """Comes slowly, goes faster, with a beat of its wheels on the rail joints."""
    swell = progress / 0.62 if progress < 0.62 else (1 - progress) / 0.38
    return math.sin(math.pi / 2 * swell) ** 1.8 * (1.0 if bar % 4 < 2 else 0.84)


SHAPES = {shape.__name__: shape for shape in (talk, horn, bell, tram)}


def city_levels(count, seed):
    """Bar levels (0 to 1) of a city recording: the events above over a faint hum of traffic."""
    chance = random.Random(seed)
    levels = []
    for step in range(count):
        level = 0.05 + 0.03 * math.sin(step * 0.23)
        for first, bars, loudness, shape in CITY_EVENTS:
            bar = step - first
            if 0 <= bar < bars:
                level = max(level, loudness * SHAPES[shape]((bar + 0.5) / bars, bar))
        levels.append(level * chance.uniform(0.80, 1.0))
    loudest = max(levels)
    return [level / loudest for level in levels]


def loop_levels(count):
    """Bar levels (0 to 1) that repeat after count bars: whole cycles only, so no seam shows."""
    levels = []
    for step in range(count):
        turn = 2 * math.pi * step / count
        level = 0.52 + 0.24 * math.sin(turn + 0.6) + 0.20 * math.sin(3 * turn + 2.0) + 0.10 * math.cos(4 * turn)
        levels.append(min(0.95, max(0.12, level)))
    return levels


def bars_svg(levels, size, zoom):
    """An SVG picture of the given size (points), drawn for zoom pixels a point: one rounded bar for each
    level, centred on the middle line."""
    width, height = size
    lines = [f'<svg xmlns="http://www.w3.org/2000/svg" width="{width}" height="{height}" '
             f'viewBox="0 0 {width} {height}">']
    for step, level in enumerate(levels):
        half = max(SMALLEST_BAR / 2, round(level * (height / 2 - MARGIN) * zoom) / zoom)
        lines.append(f'<rect x="{step * BAR_PITCH}" y="{height / 2 - half:.4f}" width="{BAR_WIDTH}" '
                     f'height="{2 * half:.4f}" rx="{BAR_WIDTH / 2}"/>')
    lines.append("</svg>\n")
    return "\n".join(lines)


def pictures(zoom):
    """The waveform pictures for zoom pixels a point as (name, SVG text) pairs."""
    playback = city_levels(PLAYBACK_SIZE[0] // BAR_PITCH, seed=12)
    recording = loop_levels(RECORDING_SIZE[0] // BAR_PITCH)
    return (("mock_playback_waveform", bars_svg(playback, PLAYBACK_SIZE, zoom)),
            ("mock_recording_waveform", bars_svg(recording, RECORDING_SIZE, zoom)))
