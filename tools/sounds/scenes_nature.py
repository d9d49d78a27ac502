"""Scenes of gardens, weather and water. Each returns a track for a random generator."""

import numpy as np

from instruments import bubbles, city_hum, clicks_through, crunch, leaves, splash, whistle
from speech import spoken
from synth import (add, band_noise, convolved, curve, decay, faded, filtered, harmonics, hump, in_room, levelled,
                   padded, peaked, silence, sine, softened, struck, times, wander)


def garden_birds(chance):
    """Morning in the gardens: two-voiced carolling, a bell-like ping, honeyeaters, wind in leaves."""
    length = 9.5
    track = 0.022 * leaves(length, chance) + 0.01 * city_hum(length, chance)
    carol = ((880, 1250, 0.17, 0), (1250, 1020, 0.14, 60), (760, 1480, 0.23, 90), (1480, 1100, 0.19, 0),
             (980, 1320, 0.13, 120), (1320, 690, 0.32, 40))
    for start, level, shift in ((0.5, 0.5, 1.0), (4.1, 0.55, 1.06), (7.2, 0.3, 0.94)):
        moment = start
        for low, high, duration, warble in carol:
            add(track, whistle(low * shift, high * shift, duration, warble, 26), moment, level)
            add(track, whistle(low * shift * 1.5, high * shift * 1.53, duration, warble, 23), moment, 0.42 * level)
            moment += duration * 0.94
    ping = struck(((2790, 0.055, 1), (5590, 0.02, 0.12)), 0.35, chance, 0.004)
    for moment in np.arange(0.25, length - 0.4, 0.83):
        add(track, ping, moment + chance.uniform(-0.03, 0.03), chance.uniform(0.10, 0.24))
    for _ in range(15):
        moment, pitch, level = chance.uniform(0.1, length - 0.8), chance.uniform(3300, 5200), chance.uniform(0.04, 0.12)
        for count in range(chance.integers(1, 5)):
            add(track, whistle(pitch, pitch * chance.uniform(0.72, 1.2), 0.07), moment + 0.105 * count, level)
    return in_room(track, chance, 0.9, 0.18, 0.6)


def footsteps_gravel(chance):
    """Somebody walks a gravel path, stops, shifts the weight and walks on."""
    length = 7.5
    track = 0.016 * leaves(length, chance) + 0.010 * city_hum(length, chance)
    moments = [0.3 + 0.55 * step for step in range(7)] + [4.75 + 0.53 * step for step in range(5)]
    for step, moment in enumerate(moments):
        pitch = 1.0 if step % 2 else 0.86
        moment += chance.uniform(-0.02, 0.02)
        add(track, struck(((82, 0.022, 1), (145, 0.015, 0.6)), 0.12, chance), moment, 0.16)
        add(track, crunch(0.16, chance, 46, 1500 * pitch, 6000 * pitch), moment, 0.34)
        add(track, crunch(0.20, chance, 60, 2200 * pitch, 7500 * pitch), moment + 0.15, 0.26)
    add(track, crunch(0.5, chance, 40, 1800, 6500), 4.15, 0.14)
    for moment in (1.7, 4.3, 4.55, 6.6):
        add(track, whistle(3900, 3100, 0.09), moment, 0.02)
    return softened(filtered(track, None, 6500), 3.0)


def rain_tin_roof(chance):
    """A shower drums on corrugated iron, swells, and runs off through a gutter."""
    length = 10.0
    kinds = []
    for _ in range(14):
        base = chance.uniform(420, 1900)
        modes = [(base * ratio, chance.uniform(0.004, 0.016) / ratio ** 0.5, level)
                 for ratio, level in ((1, 1), (1.63, 0.8), (2.41, 0.6), (3.9, 0.4))]
        kinds.append(struck(modes, 0.11, chance, 0.0003))
    swell = curve(length, ((0, 0.4), (2.5, 0.6), (5.2, 1.0), (7, 0.95), (10, 0.5)))
    small = clicks_through(length, chance, 900, kinds, 3.0)
    large = clicks_through(length, chance, 24, kinds[:5], 1.9)
    hiss = band_noise(length, chance, 1200, 9000) * (0.8 + 0.2 * wander(length, chance, 6))
    roof = struck(((118, 0.05, 1), (171, 0.04, 0.7), (260, 0.03, 0.5)), 0.3, chance)
    boom = convolved(small, roof)[:len(small)]
    gutter = bubbles(length, chance, 55, 420, 1500)
    return (0.55 * levelled(small) * swell + 0.30 * levelled(large) + 0.16 * hiss * swell
            + 0.22 * levelled(boom) * swell + 0.18 * levelled(gutter))


def thunder(chance):
    """A crack close by, then the roll wandering off between the buildings; thin rain."""
    length = 11.0
    crack = silence(length)
    for moment, level in ((0.9, 0.35), (1.00, 0.7), (1.07, 1.0), (1.22, 0.55), (1.35, 0.4)):
        tear = band_noise(0.5, chance, 250, 7000) * decay(0.5, chance.uniform(0.03, 0.09))
        add(crack, faded(tear, 0.002, 0.05), moment, level)
    roll = silence(length)
    for moment, level, fall in ((1.1, 1.0, 1.1), (2.3, 0.75, 0.9), (3.3, 0.9, 1.3), (4.9, 0.55, 1.2), (6.2, 0.42, 1.5),
                                (7.9, 0.25, 1.4)):
        left = length - moment
        clap = band_noise(left, chance, 36, 150 + 260 * level) * decay(left, fall)
        add(roll, clap * np.minimum(1, times(left) / 0.12) * (0.45 + 0.55 * wander(left, chance, 7)), moment, level)
    drop = struck(((1500, 0.004, 1), (2700, 0.003, 0.7), (4200, 0.002, 0.4)), 0.04, chance)
    rain = 0.6 * band_noise(length, chance, 1800, 9000) + levelled(clicks_through(length, chance, 60, (drop,), 2.2))
    return softened(0.55 * crack + 0.5 * roll, 2.2) + 0.018 * rain


def fountain(chance):
    """A garden fountain: falling sheets of water, splashing drops, a pigeon."""
    length = 8.5
    flow = 0.75 + 0.25 * wander(length, chance, 1.2)
    sheet = band_noise(length, chance, 700, 7500, 1) * flow
    drops = levelled(bubbles(length, chance, 260, 450, 3600))
    deep = levelled(bubbles(length, chance, 60, 220, 620))
    track = 0.17 * sheet + 0.62 * drops + 0.42 * deep + 0.02 * city_hum(length, chance)
    for start in (1.6, 5.2):
        for offset, long, pitch in ((0, 0.22, 405), (0.30, 0.48, 455), (0.86, 0.24, 400)):
            coo_pitch = pitch * (1 + 0.10 * hump(long)) * (1 + 0.012 * np.sin(2 * np.pi * 24 * times(long)))
            add(track, harmonics(coo_pitch, long, (1, 0.22, 0.06)) * hump(long, 0.7), start + offset, 1.5)
    return track


def crickets_dusk(chance):
    """Dusk by the lake: field crickets in bursts, a steady trill, frogs plonking like banjo strings."""
    length = 9.0
    track = 0.012 * city_hum(length, chance) + 0.006 * leaves(length, chance)
    for pitch, period, pulses, level in ((4350, 0.62, 4, 0.34), (4720, 0.81, 3, 0.22), (4080, 0.55, 4, 0.13)):
        pulse = harmonics(pitch, 0.021, (1, 0.12)) * hump(0.021, 0.8)
        moment = chance.uniform(0.05, 0.5)
        while moment < length - 0.2:
            for count in range(pulses):
                add(track, pulse, moment + 0.036 * count, level * (0.65 + 0.12 * count))
            moment += period * chance.uniform(0.96, 1.05)
    trill = sine(5650 + 30 * wander(length, chance, 2), length) * np.maximum(0, sine(54, length)) ** 2
    track += 0.04 * trill * wander(length, chance, 0.5)
    for moment, pitch, level in ((1.15, 462, 0.6), (1.85, 438, 0.36), (3.3, 462, 0.62), (4.15, 436, 0.33),
                                 (5.7, 465, 0.6), (6.25, 440, 0.3), (7.75, 458, 0.55)):
        plonk = harmonics(pitch * (1 + 0.04 * decay(0.3, 0.03)), 0.3, (1, 0.55, 0.5, 0.2, 0.12)) * decay(0.3, 0.055)
        add(track, faded(plonk, 0.004, 0.05), moment, 0.6 * level)
    return in_room(track, chance, 1.2, 0.16, 0.5)


def rowing_eight(chance):
    """An eight on the river: catch, drive, the oars knocking in their locks, water under the hull, a call."""
    length = 10.5
    stroke = 2.05
    river = 0.35 * levelled(bubbles(length, chance, 70, 350, 1300)) + 0.22 * band_noise(length, chance, 300, 2400)
    track = 0.05 * river * (0.7 + 0.3 * wander(length, chance, 1)) + 0.015 * city_hum(length, chance)
    moment = 0.35
    while moment < length - 1.2:
        for _ in range(8):
            shift = chance.normal(0, 0.016)
            add(track, splash(0.34, chance, 500, 5200), moment + shift, 0.034 * chance.uniform(0.7, 1.2))
            lock = struck(((310, 0.022, 1), (690, 0.013, 0.8), (1480, 0.007, 0.5)), 0.14, chance)
            add(track, lock, moment + 0.78 + chance.normal(0, 0.013), 0.26 * chance.uniform(0.7, 1.2))
        drive = band_noise(0.75, chance, 250, 1800) * hump(0.75) ** 1.5
        add(track, drive, moment + 0.06, 0.06)
        slide = band_noise(0.9, chance, 900, 2600) * hump(0.9) * (0.6 + 0.4 * sine(38, 0.9))
        add(track, slide, moment + 1.0, 0.022)
        wake = levelled(bubbles(1.1, chance, 220, 500, 2600)) * hump(1.1)
        add(track, wake, moment + 0.85, 0.035)
        moment += stroke
    for text, at in (("Long!", 0.62), ("And, send it!", 4.45), ("Long!", 8.8)):
        call = softened(filtered(spoken(text, "en-gb+f4", 150, 72), 320, 4200), 2.5)
        add(track, echoing(call), at, 0.26)
    return track


def echoing(call):
    """A call over open water: itself and its return from the far bank."""
    result = padded(peaked(call), 0.5)
    add(result, filtered(call, 300, 1800), 0.31, 0.25)
    return result
