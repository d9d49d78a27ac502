"""Building blocks for synthesised sounds.

A sound is a one-dimensional numpy array of samples at RATE samples a second, about -1 to 1.
Times are seconds, frequencies hertz. Chance always comes from a generator passed in, so that the same
seed gives the same sound.
"""

import numpy as np

RATE = 44100
QUIET = 1e-9


# ---- time -------------------------------------------------------------------------------------

def samples(duration):
    """The whole number of samples in a duration (seconds)."""
    return int(round(duration * RATE))


def silence(duration):
    """An empty track of a duration (seconds)."""
    return np.zeros(samples(duration))


def times(duration):
    """The time (seconds) of each sample of a duration."""
    return np.arange(samples(duration)) / RATE


def add(track, sound, at, gain=1.0):
    """Mixes a sound into a track from a moment (seconds) on; what hangs over either end is dropped."""
    start = samples(at)
    skipped = max(0, -start)
    start = max(0, start)
    length = min(len(sound) - skipped, len(track) - start)
    if length > 0:
        track[start:start + length] += gain * sound[skipped:skipped + length]


def padded(sound, duration):
    """The sound with silence (seconds) after it."""
    return np.concatenate((sound, silence(duration)))


# ---- level ------------------------------------------------------------------------------------

def peak(sound):
    """The greatest absolute sample value."""
    return float(np.max(np.abs(sound))) if len(sound) else 0.0


def loudness(sound):
    """The root mean square of the samples."""
    return float(np.sqrt(np.mean(np.square(sound)))) if len(sound) else 0.0


def levelled(sound, level=1.0):
    """The sound scaled to a root mean square."""
    return sound * (level / max(QUIET, loudness(sound)))


def peaked(sound, level=1.0):
    """The sound scaled to a peak."""
    return sound * (level / max(QUIET, peak(sound)))


def softened(sound, drive):
    """The sound through a soft limiter: peaks above about 1/drive of the loudest are rounded off."""
    return np.tanh(drive * peaked(sound)) / np.tanh(drive)


def faded(sound, fade_in=0.02, fade_out=0.05):
    """The sound with raised-cosine fades (seconds) at its ends."""
    result = sound.copy()
    for length, edge in ((samples(fade_in), slice(None)), (samples(fade_out), slice(None, None, -1))):
        length = min(length, len(result))
        if length > 0:
            result[edge][:length] *= 0.5 - 0.5 * np.cos(np.pi * np.arange(length) / length)
    return result


# ---- envelopes --------------------------------------------------------------------------------

def decay(duration, time):
    """An exponential that has fallen to 1/e after a time (seconds)."""
    return np.exp(-times(duration) / time)


def hump(duration, power=1.0):
    """Half a sine over the duration, raised to a power: soft start and end."""
    count = samples(duration)
    return np.sin(np.pi * (np.arange(count) + 0.5) / max(1, count)) ** power


def curve(duration, points):
    """Straight lines between (time in seconds, value) points."""
    moments, values = zip(*points)
    return np.interp(times(duration), moments, values)


def wander(duration, chance, rate):
    """A smooth random curve between 0 and 1 that changes direction about rate times a second."""
    count = max(4, int(duration * rate) + 4)
    knots = chance.random(count)
    position = times(duration) * rate
    whole = position.astype(int)
    part = 0.5 - 0.5 * np.cos(np.pi * (position - whole))
    return knots[whole] * (1 - part) + knots[whole + 1] * part


# ---- tones ------------------------------------------------------------------------------------

def phase(frequency, duration):
    """The phase (radians) of an oscillator at a frequency that may be an array over time."""
    steps = np.broadcast_to(np.asarray(frequency, dtype=float), samples(duration))
    return 2 * np.pi * np.cumsum(steps) / RATE


def sine(frequency, duration, offset=0.0):
    """A sine; the frequency may be an array over time."""
    return np.sin(phase(frequency, duration) + offset)


def harmonics(frequency, duration, levels):
    """A sum of harmonics of a frequency (may be an array): levels[0] is the fundamental's level."""
    angle = phase(frequency, duration)
    result = np.zeros(len(angle))
    for number, level in enumerate(levels, start=1):
        if level:
            result += level * np.sin(number * angle)
    return result


def glide(start, end, duration):
    """A frequency that moves evenly in pitch from start to end (hertz)."""
    part = np.linspace(0, 1, samples(duration))
    return start * (end / start) ** part


# ---- noise and filters ------------------------------------------------------------------------

def noise(duration, chance):
    """White noise with a root mean square of 1."""
    return chance.standard_normal(samples(duration))


def filtered(sound, low=None, high=None, order=2):
    """The sound between low and high (hertz; None: open), with gentle slopes of 6 dB an octave an order."""
    length = len(sound)
    size = length + samples(0.05)
    spectrum = np.fft.rfft(sound, size)
    frequency = np.fft.rfftfreq(size, 1 / RATE)
    if low is not None:
        ratio = (frequency / low) ** order
        spectrum *= ratio / (1 + ratio)
    if high is not None:
        spectrum *= 1 / (1 + (frequency / high) ** order)
    return np.fft.irfft(spectrum, size)[:length]


def band_noise(duration, chance, low, high, order=2):
    """Noise between two frequencies (hertz) with a root mean square of 1."""
    return levelled(filtered(noise(duration, chance), low, high, order))


def convolved(sound, response):
    """The sound through an impulse response; as long as both together."""
    length = len(sound) + len(response) - 1
    size = 1 << (length - 1).bit_length()
    return np.fft.irfft(np.fft.rfft(sound, size) * np.fft.rfft(response, size), size)[:length]


def resonated(sound, modes):
    """The sound through ringing modes (frequency, decay time in seconds, level) beside itself; same length."""
    longest = max(time for _, time, _ in modes)
    response = silence(min(3.0, 7 * longest))
    for frequency, time, level in modes:
        length = len(response) / RATE
        response += level * sine(frequency, length) * decay(length, time)
    return convolved(sound, response)[:len(sound)]


def struck(modes, duration, chance, attack=0.0005):
    """Something hit: modes of (frequency, decay time in seconds, level) starting together."""
    result = silence(duration)
    for frequency, time, level in modes:
        result += level * sine(frequency, duration, chance.uniform(0, 2 * np.pi)) * decay(duration, time)
    return faded(result, attack, min(0.02, duration / 4))


# ---- space ------------------------------------------------------------------------------------

def room_response(chance, length, brightness):
    """An impulse response of a room: noise that dies away over length seconds, high bands sooner.

    Brightness, 0 to 1, is how long the highest band lasts against the lowest.
    """
    bands = ((80, 400), (400, 1600), (1600, 5000), (5000, 12000))
    response = silence(length)
    for number, (low, high) in enumerate(bands):
        share = 1 - (1 - brightness) * number / (len(bands) - 1)
        response += band_noise(length, chance, low, high) * decay(length, length * share / 5) * (0.8 ** number)
    response[:samples(0.012)] = 0
    return response / np.sqrt(np.sum(np.square(response)))


def in_room(sound, chance, length, wet, brightness=0.5):
    """The sound with reverberation of length seconds mixed in at a level; keeps its own length."""
    tail = convolved(sound, room_response(chance, length, brightness))[:len(sound)]
    tail = levelled(tail, loudness(sound)) if loudness(tail) > QUIET else tail
    return sound + wet * tail


def echoed(sound, echoes):
    """The sound with single echoes (delay in seconds, level) mixed in; keeps its own length."""
    result = sound.copy()
    for delay, level in echoes:
        add(result, filtered(sound, None, 2500), delay, level)
    return result


# ---- finishing --------------------------------------------------------------------------------

def finished(sound, drive=1.2, fade_in=0.04, fade_out=0.45):
    """A track ready to write: no rumble or offset, peaks rounded, faded ends.

    The loudest sample is at -2 dB, or lower where the whole would be louder than -16 dB root mean square: clips
    follow one another in a list, and a siren must not jump out of it.
    """
    clean = filtered(sound - np.mean(sound), 28, None, 4)
    track = peaked(faded(softened(clean, drive), fade_in, fade_out), 10 ** (-2 / 20))
    return track * min(1.0, 10 ** (-16 / 20) / loudness(track))
