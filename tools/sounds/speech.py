"""Speech from espeak-ng as samples."""

import io
import subprocess
import wave

import numpy as np

from synth import RATE, filtered

WAVE_HEADER = 44    # bytes


def spoken(text, voice, words_per_minute, pitch):
    """Speech from espeak-ng as samples at RATE; pitch is espeak-ng's 0 to 99."""
    command = ["espeak-ng", "--stdout", "-v", voice, "-s", str(words_per_minute), "-p", str(pitch), "-a", "150", text]
    result = subprocess.run(command, check=True, capture_output=True).stdout
    with wave.open(io.BytesIO(result)) as source:
        rate = source.getframerate()
        # The header of a stream gives no true length, so every byte after it is taken.
        data = result[WAVE_HEADER:]
    speech = np.frombuffer(data[:len(data) // 2 * 2], dtype="<i2") / 32768.0
    old = np.arange(len(speech)) / rate
    new = np.arange(int(len(speech) * RATE / rate)) / RATE
    return filtered(np.interp(new, old, speech), 80, rate / 2 * 0.8, 4)
