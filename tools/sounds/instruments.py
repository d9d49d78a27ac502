"""Sources of sound made from the building blocks: strings, bells, pipes, water, steps, voices, crowds."""

import numpy as np

from synth import (RATE, add, band_noise, convolved, decay, faded, filtered, glide, harmonics, hump, levelled, noise,
                   peaked, samples, silence, sine, struck, times, wander)

CHURCH_BELL = ((0.5, 0.55, 1.0), (1.0, 0.7, 0.75), (1.19, 0.75, 0.6), (1.5, 0.4, 0.45), (2.0, 1.1, 0.45),
               (2.51, 0.4, 0.3), (2.66, 0.4, 0.28), (3.01, 0.55, 0.26), (4.17, 0.45, 0.17), (5.43, 0.3, 0.12))
GONG = ((1.0, 1.0, 1.0), (1.98, 0.5, 0.75), (2.76, 0.7, 0.5), (3.93, 0.35, 0.35), (5.4, 0.4, 0.25), (8.2, 0.2, 0.12))


def note(number):
    """The frequency (hertz) of a semitone number where 69 is 440 Hz."""
    return 440.0 * 2 ** ((number - 69) / 12)


# ---- strings, bells, pipes --------------------------------------------------------------------

def bell(frequency, ring, chance, partials=CHURCH_BELL):
    """A bell: inharmonic partials (ratio, level, share of the ring time), each beating a little. Ring: seconds."""
    modes = []
    for ratio, level, share in partials:
        for split in (-0.0007, 0.0007):
            modes.append((frequency * ratio * (1 + split * chance.uniform(0.5, 1.5)), ring * share / 3, level / 2))
    return struck(modes, ring * 1.6, chance)


def plucked(frequency, duration, chance, damping=0.996, softness=0.5):
    """A plucked string: a burst of noise going round a loop one period long, losing its highs each turn.

    The loop holds a whole number of samples, so the string is read back a little faster or slower to be in tune.
    """
    period = int(np.ceil(RATE / frequency)) + 1
    pace = frequency * (period - softness / 2) / RATE
    loop = chance.uniform(-1, 1, period)
    loop = 0.25 * np.roll(loop, 1) + 0.5 * loop + 0.25 * np.roll(loop, -1)
    turns = int(samples(duration) * pace) // period + 2
    rounds = np.empty((turns, period))
    for turn in range(turns):
        rounds[turn] = loop
        loop = damping * ((1 - softness / 2) * loop + softness / 2 * np.roll(loop, -1))
    string = np.interp(np.arange(samples(duration)) * pace, np.arange(turns * period), rounds.ravel())
    return faded(filtered(string - string.mean(), 60, 9000), 0.001, 0.04)


def guitar_body(sound):
    """A string's sound through a guitar's body: three low resonances beside the string itself."""
    response = struck(((98, 0.025, 0.9), (205, 0.016, 0.7), (410, 0.008, 0.4)), 0.15, np.random.default_rng(1))
    return peaked(sound) + 0.6 * peaked(convolved(sound, response)[:len(sound)])


def piano(number, duration, chance, strength=1.0):
    """An old upright's note: three strings a little out of tune, stiff partials, a felt thump."""
    fundamental = note(number)
    stiffness = 0.00035 * 2 ** ((number - 60) / 18)
    length = duration + 0.25
    ring = 2.6 * 2 ** (-(number - 60) / 20)
    result = silence(length)
    for cents in (-3.5, 0.4, 4.2):
        base = fundamental * 2 ** (cents / 1200)
        for partial in range(1, 15):
            frequency = base * partial * np.sqrt(1 + stiffness * partial * partial)
            if frequency > 9000:
                break
            level = strength ** (0.5 + partial / 8) / partial ** 1.25 * (1 - 0.75 * (partial % 7 == 0))
            fall = 0.65 * decay(length, ring / (1 + 0.30 * partial)) + 0.35 * decay(length, ring * 0.22)
            result += level * fall * sine(frequency, length, chance.uniform(0, 6.28))
    result *= np.exp(-np.maximum(0, times(length) - duration) / 0.07)
    add(result, band_noise(0.06, chance, 90, 700) * decay(0.06, 0.012), 0, 0.8 * strength)
    return faded(result, 0.002, 0.03)


def pipe(frequency, duration, chance, levels):
    """An organ pipe: steady harmonics that speak after a breath of wind."""
    drift = 1 + 0.0012 * (wander(duration, chance, 3) - 0.5)
    tone = harmonics(frequency * drift, duration, levels)
    chiff = band_noise(0.07, chance, frequency * 1.8, frequency * 5) * hump(0.07)
    tone = faded(tone, 0.06, 0.09)
    add(tone, chiff, 0, 0.12)
    return tone


# ---- birds, insects, voices -------------------------------------------------------------------

def whistle(start, end, duration, warble=0.0, rate=30.0, overtone=0.18):
    """A bird's note gliding from start to end (hertz), warbling by so many hertz at a rate."""
    frequency = glide(start, end, duration) + warble * np.sin(2 * np.pi * rate * times(duration))
    return harmonics(frequency, duration, (1.0, overtone, overtone / 4)) * hump(duration, 0.6)


def voiced(pitch, duration, formants, breath, chance):
    """A vowel: harmonics of a pitch (hertz, may be an array) weighted by formants (frequency, width, level)."""
    middle = float(np.mean(pitch))
    levels = []
    for number in range(1, int(3600 / middle) + 1):
        place = number * middle
        weight = sum(level / (1 + ((place - centre) / width) ** 2) for centre, width, level in formants)
        levels.append(weight / number ** 0.6)
    tone = harmonics(pitch, duration, levels)
    return tone + breath * filtered(noise(duration, chance), 1500, 5000)


def random_vowel(chance):
    """Formants of some vowel."""
    return ((chance.uniform(300, 800), 110, 1.0), (chance.uniform(900, 2200), 170, 0.55), (2700, 250, 0.16))


def murmur(duration, chance, voices=14):
    """Many people talking, no word to be made out."""
    track = silence(duration)
    for _ in range(voices):
        base = chance.choice((chance.uniform(95, 150), chance.uniform(170, 250)))
        level = chance.uniform(0.2, 1.0)
        moment = chance.uniform(-0.5, 0.4)
        while moment < duration:
            length = chance.uniform(0.09, 0.25)
            pitch = glide(base * chance.uniform(0.9, 1.25), base * chance.uniform(0.8, 1.1), length)
            syllable = voiced(pitch, length, random_vowel(chance), 0.15, chance) * hump(length, 0.8)
            add(track, syllable, moment, level)
            moment += length + (chance.uniform(0.01, 0.08) if chance.random() < 0.8 else chance.uniform(0.3, 1.1))
    return levelled(filtered(track, 110, 3800))


def cheer(duration, chance, voices=40, low=150, high=420):
    """Many people calling a long vowel at once, pitches rising and falling."""
    track = silence(duration)
    for _ in range(voices):
        start = chance.uniform(0, 0.22) * duration
        length = (duration - start) * chance.uniform(0.55, 1.0)
        base = chance.uniform(low, high)
        bend = 1 + 0.14 * hump(length) + 0.012 * np.sin(2 * np.pi * chance.uniform(4.5, 6.5) * times(length))
        vowel = ((chance.uniform(480, 760), 140, 1.0), (chance.uniform(950, 1350), 200, 0.7), (2700, 300, 0.25))
        add(track, voiced(base * bend, length, vowel, 0.2, chance) * hump(length, 0.6), start, chance.uniform(0.3, 1))
    return levelled(track)


def applause(duration, chance, people, shape):
    """Clapping: shape gives how busy it is (0 to 1) over the duration."""
    clicks = silence(duration)
    for _ in range(people):
        period = chance.uniform(0.19, 0.30)
        moments = np.arange(chance.uniform(0, period), duration - 0.01, period)
        moments = np.clip(moments + chance.normal(0, 0.012, len(moments)), 0, duration - 0.01)
        places = (moments * RATE).astype(int)
        places = places[chance.random(len(places)) < shape[places]]
        clicks[places] += chance.uniform(0.15, 1.0) * chance.uniform(0.7, 1.0, len(places))
    track = silence(duration)
    for _ in range(3):
        palm = band_noise(0.03, chance, chance.uniform(700, 1000), chance.uniform(1900, 3200)) * decay(0.03, 0.0045)
        track += convolved(np.where(chance.random(len(clicks)) < 0.4, clicks, 0), palm)[:len(clicks)]
    return peaked(track)


# ---- air and ground ---------------------------------------------------------------------------

def city_hum(duration, chance):
    """Distant traffic."""
    low = band_noise(duration, chance, 45, 220) * (0.6 + 0.4 * wander(duration, chance, 0.7))
    tyres = band_noise(duration, chance, 400, 1800) * (0.3 + 0.7 * wander(duration, chance, 0.5))
    return levelled(low + 0.3 * tyres)


def leaves(duration, chance):
    """Wind in leaves: coming and going."""
    gust = wander(duration, chance, 0.55) ** 2
    return band_noise(duration, chance, 900, 6500) * (0.15 + gust) * (0.75 + 0.25 * wander(duration, chance, 9))


def crunch(duration, chance, grains, low, high):
    """A foot on loose stones: many small grains, most of them early."""
    track = silence(duration)
    for _ in range(grains):
        length = chance.uniform(0.003, 0.012)
        centre = chance.uniform(low, high)
        grain = band_noise(length, chance, centre * 0.7, centre * 1.4) * decay(length, length / 3)
        moment = chance.beta(1.6, 3.0) * (duration - length)
        add(track, grain, moment, chance.exponential(0.5))
    return track


def heel(chance, hardness=1.0):
    """A leather heel and sole on stone."""
    track = silence(0.22)
    click = struck(((1450, 0.004, 0.8), (2380, 0.003, 0.6), (3900, 0.002, 0.35), (620, 0.007, 0.6)), 0.05, chance)
    add(track, click, 0, hardness)
    add(track, struck(((105, 0.02, 1.0), (180, 0.014, 0.5)), 0.12, chance), 0, 0.55)
    sole = band_noise(0.05, chance, 700, 4200) * hump(0.05)
    add(track, sole, 0.085, 0.09)
    add(track, struck(((900, 0.004, 0.6), (1700, 0.003, 0.5)), 0.05, chance), 0.1, 0.35 * hardness)
    return track


def bubble(chance, low=500, high=2600):
    """A drop of air in water: a short tone that climbs as it fades."""
    frequency = low * (high / low) ** chance.random()
    length = min(0.12, 24 / frequency + 0.01)
    climb = 1 + chance.uniform(0.05, 0.35) * times(length) / length
    return sine(frequency * climb, length) * decay(length, length / 4) * np.minimum(1, times(length) / 0.0015)


def bubbles(duration, chance, per_second, low=500, high=2600):
    """Running water: many bubbles at random moments, a few of them loud."""
    track = silence(duration)
    kinds = [bubble(chance, low, high) for _ in range(160)]
    for _ in range(int(duration * per_second)):
        add(track, kinds[chance.integers(len(kinds))], chance.uniform(-0.05, duration), chance.exponential(0.4))
    return track


def splash(duration, chance, low=500, high=5000):
    """Water thrown up: a hiss that darkens and a handful of bubbles."""
    hiss = band_noise(duration, chance, low, high) * decay(duration, duration / 4)
    hiss = faded(hiss, 0.015, 0.03)
    return hiss + 0.5 * bubbles(duration, chance, 90, 350, 1400) * decay(duration, duration / 2.5)


def clicks_through(duration, chance, rate, responses, weight=2.5):
    """Random strikes (so many a second, loud ones rare) each ringing with one of the given responses."""
    track = silence(duration)
    for response in responses:
        strikes = silence(duration)
        count = chance.poisson(duration * rate / len(responses))
        strikes[chance.integers(0, len(strikes), count)] = chance.pareto(weight, count).clip(0, 6)
        track += convolved(strikes, response)[:len(track)]
    return track
