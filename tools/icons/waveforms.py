"""The two stock waveform pictures as SVG text: rounded bars, black on transparent."""

import math
import random

PLAYBACK_SIZE = (390, 44)    # points: the phone's playback slider
RECORDING_SIZE = (30, 44)    # points: a tile; thirteen of them fill the phone's recording panel
BAR_PITCH = 3.0              # points from one bar to the next
BAR_WIDTH = 2.0              # points
SMALLEST_BAR = 2.0           # points: silence is a dot

# What is heard, as (start, length, loudness, shape), start and length as fractions of the whole:
# a swell rises and falls (a tram goes by), a strike falls away (a bell), talk comes in syllables.
CITY_EVENTS = (
    (0.015, 0.10, 0.34, "talk"),
    (0.125, 0.12, 0.88, "strike"),
    (0.205, 0.11, 0.62, "strike"),
    (0.300, 0.26, 1.00, "swell"),
    (0.580, 0.12, 0.46, "talk"),
    (0.725, 0.06, 0.30, "talk"),
    (0.800, 0.12, 0.80, "swell"),
    (0.900, 0.09, 0.42, "talk"),
)


def event_level(shape, progress, step):
    """Loudness (0 to 1) of an event at a progress of 0 to 1 through it; step counts the bars."""
    if shape == "swell":
        return math.sin(math.pi * progress) ** 1.4
    if shape == "strike":
        return min(1.0, progress * 12 + 0.25) * math.exp(-3.4 * progress)
    return math.sin(math.pi * progress) ** 0.5 * (0.35 + 0.65 * abs(math.sin(step * 1.15)))


def city_levels(count, seed):
    """Bar levels (0 to 1) of a city recording: the events above over a faint hum."""
    chance = random.Random(seed)
    levels = []
    for step in range(count):
        position = (step + 0.5) / count
        level = 0.06
        for start, length, loudness, shape in CITY_EVENTS:
            progress = (position - start) / length
            if 0 <= progress < 1:
                level = max(level, loudness * event_level(shape, progress, step))
        levels.append(level * chance.uniform(0.62, 1.0))
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


def bars_svg(levels, size):
    """An SVG picture of the given size (points): one rounded bar for each level, centred on the middle line."""
    width, height = size
    lines = [f'<svg xmlns="http://www.w3.org/2000/svg" width="{width}" height="{height}" '
             f'viewBox="0 0 {width} {height}">']
    for step, level in enumerate(levels):
        left = step * BAR_PITCH + (BAR_PITCH - BAR_WIDTH) / 2
        bar = max(SMALLEST_BAR, level * (height - 2))
        lines.append(f'<rect x="{left:.2f}" y="{(height - bar) / 2:.2f}" width="{BAR_WIDTH}" '
                     f'height="{bar:.2f}" rx="{BAR_WIDTH / 2}"/>')
    lines.append("</svg>\n")
    return "\n".join(lines)


def pictures():
    """The waveform pictures as (name, SVG text) pairs."""
    playback = city_levels(round(PLAYBACK_SIZE[0] / BAR_PITCH), seed=12)
    recording = loop_levels(round(RECORDING_SIZE[0] / BAR_PITCH))
    return (("mock_playback_waveform", bars_svg(playback, PLAYBACK_SIZE)),
            ("mock_recording_waveform", bars_svg(recording, RECORDING_SIZE)))
