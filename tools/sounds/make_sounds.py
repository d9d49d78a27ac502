#!/usr/bin/env python3
"""Writes the sample recordings into resources/sounds/: one synthesised scene each, AAC in an .m4a file.

Usage: make_sounds.py [name ...]     (no name: all scenes)
Needs numpy (Debian: python3-numpy), ffmpeg and espeak-ng. A scene's random seed is a checksum of its name,
so that each clip is the same on every run.
"""

import subprocess
import sys
import tempfile
import wave
import zlib
from pathlib import Path

import numpy as np

import scenes_music
import scenes_nature
import scenes_rail
import scenes_sport
import scenes_street
from synth import RATE, finished, peak

SOUNDS = Path(__file__).resolve().parents[2] / "resources" / "sounds"
PEAK_LIMIT = 10 ** (-1 / 20)    # of full scale, after decoding: -1 dB

# Scene and how hard its peaks are rounded: 1 hardly, 3 firmly (for scenes of short hits).
SCENES = {
    "bicycle_bell": (scenes_street.bicycle_bell, 1.5),
    "busker_guitar": (scenes_music.busker_guitar, 1.5),
    "church_bells": (scenes_street.church_bells, 1.4),
    "cricket_bat": (scenes_sport.cricket_bat, 2.2),
    "crickets_dusk": (scenes_nature.crickets_dusk, 1.3),
    "espresso_machine": (scenes_street.espresso_machine, 1.6),
    "football_siren": (scenes_sport.football_siren, 1.3),
    "footsteps_arcade": (scenes_street.footsteps_arcade, 2.0),
    "footsteps_gravel": (scenes_nature.footsteps_gravel, 2.0),
    "fountain": (scenes_nature.fountain, 1.4),
    "garden_birds": (scenes_nature.garden_birds, 1.3),
    "hall_organ": (scenes_music.hall_organ, 1.2),
    "market_trader": (scenes_street.market_trader, 1.6),
    "pedestrian_crossing": (scenes_street.pedestrian_crossing, 1.8),
    "rain_tin_roof": (scenes_nature.rain_tin_roof, 1.8),
    "rowing_eight": (scenes_nature.rowing_eight, 1.8),
    "stadium_roar": (scenes_sport.stadium_roar, 1.3),
    "station_announcement": (scenes_rail.station_announcement, 1.4),
    "street_piano": (scenes_music.street_piano, 1.4),
    "tennis_rally": (scenes_sport.tennis_rally, 2.2),
    "thunder": (scenes_nature.thunder, 1.5),
    "ticket_gates": (scenes_rail.ticket_gates, 1.7),
    "train_arriving": (scenes_rail.train_arriving, 1.5),
    "tram_bell": (scenes_street.tram_bell, 1.5),
}


def write_wave(path, sound):
    """Writes samples as 16-bit mono."""
    with wave.open(str(path), "wb") as target:
        target.setnchannels(1)
        target.setsampwidth(2)
        target.setframerate(RATE)
        target.writeframes(np.round(sound * 32767).astype("<i2").tobytes())


def encode(source, target):
    """Encodes a wave file as AAC-LC, mono, 80 kbit/s, with no dates or encoder names inside."""
    command = ["ffmpeg", "-v", "error", "-y", "-i", str(source), "-ac", "1", "-c:a", "aac", "-b:a", "80k",
               "-movflags", "+faststart", "-map_metadata", "-1", "-flags", "+bitexact", "-bitexact", str(target)]
    subprocess.run(command, check=True)


def decoded_peak(path):
    """The loudest sample of an encoded clip: the encoder overshoots short hits by up to some decibels."""
    command = ["ffmpeg", "-v", "error", "-i", str(path), "-f", "f32le", "-"]
    return peak(np.frombuffer(subprocess.run(command, check=True, capture_output=True).stdout, dtype="<f4"))


def make(name, folder):
    """Synthesises and writes one scene; turns it down and encodes again until its peak has headroom."""
    scene, drive = SCENES[name]
    sound = finished(scene(np.random.default_rng(zlib.crc32(name.encode()))), drive)
    source, target = Path(folder) / (name + ".wav"), SOUNDS / (name + ".m4a")
    for _ in range(5):
        write_wave(source, sound)
        encode(source, target)
        reached = decoded_peak(target)
        if reached <= PEAK_LIMIT:
            break
        sound = sound * (0.98 * PEAK_LIMIT / reached)
    print(f"{name}: {len(sound) / RATE:.1f} s")


def main():
    """Writes the scenes named on the command line, or all."""
    SOUNDS.mkdir(parents=True, exist_ok=True)
    with tempfile.TemporaryDirectory() as folder:
        for name in sys.argv[1:] or SCENES:
            make(name, folder)


if __name__ == "__main__":
    main()
