#!/usr/bin/env python3
"""Measures every clip in resources/sounds/ and prints a table; exits with 1 where a clip breaks a rule.

Needs numpy (Debian: python3-numpy) and ffmpeg. The rules: 3 to 12 seconds, peak under -0.5 dBFS, root mean
square over -35 dBFS, no offset, no clipped runs, no long silence, ends faded, no two clips alike.
"""

import subprocess
import sys
from pathlib import Path

import numpy as np

SOUNDS = Path(__file__).resolve().parents[1] / "resources" / "sounds"
RATE = 44100
COUNT = 24
SHORTEST, LONGEST = 3.0, 12.0     # seconds
LOUDEST_PEAK = -0.5               # dBFS
QUIETEST_LEVEL = -35.0            # dBFS
LARGEST_OFFSET = 0.002            # of full scale
LONGEST_SILENCE = 1.0             # seconds below SILENCE_LEVEL
SILENCE_LEVEL = -60.0             # dBFS
LARGEST_END = -40.0               # dBFS, root mean square of the first and last 5 ms
LARGEST_LIKENESS = 0.85           # correlation of two clips' band pictures
TOTAL_BYTES = 2_600_000
BANDS, SLICES = 24, 48


def decoded(path):
    """The clip's samples, -1 to 1, as the player would hear them."""
    command = ["ffmpeg", "-v", "error", "-i", str(path), "-f", "f32le", "-ac", "1", "-ar", str(RATE), "-"]
    return np.frombuffer(subprocess.run(command, check=True, capture_output=True).stdout, dtype="<f4").astype(float)


def described_format(path):
    """Codec, profile, rate and channels of the file's sound, as one text."""
    command = ["ffprobe", "-v", "error", "-select_streams", "a:0", "-show_entries",
               "stream=codec_name,profile,sample_rate,channels", "-of", "csv=p=0", str(path)]
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout.strip()


def decibels(value):
    """A level relative to full scale in decibels."""
    return 20 * np.log10(max(value, 1e-9))


def level(sound):
    """Root mean square in dBFS."""
    return decibels(float(np.sqrt(np.mean(np.square(sound)))))


def longest_silence(sound):
    """The longest stretch (seconds) whose 50 ms slices all stay under the silence level."""
    slice_length = RATE // 20
    usable = len(sound) // slice_length * slice_length
    slices = np.sqrt(np.mean(np.square(sound[:usable].reshape(-1, slice_length)), axis=1))
    longest = run = 0
    for value in slices:
        run = run + 1 if decibels(value) < SILENCE_LEVEL else 0
        longest = max(longest, run)
    return longest * slice_length / RATE


def clipped_runs(sound):
    """How often three samples in a row lie at full scale."""
    full = np.abs(sound) >= 0.999
    return int(np.sum(full[:-2] & full[1:-1] & full[2:]))


def band_picture(sound):
    """Levels in dB of the bands over the clip's course, as a flat array with the overall level taken out."""
    edges = np.geomspace(60, 14000, BANDS + 1)
    picture = []
    for part in np.array_split(sound, SLICES):
        power = np.abs(np.fft.rfft(part * np.hanning(len(part)))) ** 2
        frequency = np.fft.rfftfreq(len(part), 1 / RATE)
        sums = [power[(frequency >= low) & (frequency < high)].sum() for low, high in zip(edges, edges[1:])]
        picture.append(10 * np.log10(np.array(sums) + 1e-6))
    flat = np.array(picture).ravel()
    flat = np.maximum(flat, flat.max() - 60)
    # What every recording has (more lows than highs) would make all seem alike, so it is taken out.
    tilt = np.tile(np.linspace(1, -1, BANDS), SLICES)
    flat = flat - flat.mean()
    flat = flat - tilt * (flat @ tilt) / (tilt @ tilt)
    return flat / np.linalg.norm(flat)


def nearest(name, pictures):
    """The clip most like the named one, and their correlation."""
    others = ((float(pictures[name] @ picture), other) for other, picture in pictures.items() if other != name)
    likeness, other = max(others)
    return other, likeness


def faults_of(path, sound, likeness):
    """The rules that a clip breaks, as short texts."""
    ends = max(level(sound[:RATE // 200]), level(sound[-RATE // 200:]))
    checks = (
        (SHORTEST <= len(sound) / RATE <= LONGEST, "length"),
        (decibels(np.max(np.abs(sound))) < LOUDEST_PEAK, "peak"),
        (level(sound) > QUIETEST_LEVEL, "too quiet"),
        (abs(float(np.mean(sound))) < LARGEST_OFFSET, "offset"),
        (clipped_runs(sound) == 0, "clipping"),
        (longest_silence(sound) <= LONGEST_SILENCE, "silence"),
        (ends < LARGEST_END, "abrupt end"),
        (likeness < LARGEST_LIKENESS, "like another"),
        (described_format(path) == f"aac,LC,{RATE},1", "format"),
    )
    return [text for good, text in checks if not good]


def main():
    """Prints the table and the verdict."""
    paths = sorted(SOUNDS.glob("*.m4a"))
    sounds = {path.stem: decoded(path) for path in paths}
    pictures = {name: band_picture(sound) for name, sound in sounds.items()}
    failed = len(paths) != COUNT
    print(f"{'clip':<22}{'s':>6}{'peak dB':>9}{'rms dB':>8}{'kB':>6}  nearest clip (likeness)")
    for path in paths:
        sound = sounds[path.stem]
        other, likeness = nearest(path.stem, pictures)
        faults = faults_of(path, sound, likeness)
        failed = failed or bool(faults)
        print(f"{path.stem:<22}{len(sound) / RATE:6.2f}{decibels(np.max(np.abs(sound))):9.2f}{level(sound):8.2f}"
              f"{path.stat().st_size / 1000:6.0f}  {other} ({likeness:.2f})" + "".join("  FAULT: " + f for f in faults))
    total = sum(path.stat().st_size for path in paths)
    failed = failed or total > TOTAL_BYTES
    print(f"{len(paths)} clips, {total / 1e6:.2f} MB: {'rules broken' if failed else 'all rules kept'}")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
