"""Scenes from the grounds and courts. Each returns a track for a random generator."""

import numpy as np

from instruments import applause, cheer, leaves, murmur, whistle
from synth import (add, band_noise, curve, decay, echoed, filtered, harmonics, hump, in_room, silence, softened, struck,
                   times, wander)


def stadium_roar(chance):
    """A murmuring stand, a rising 'ooh', the roar when it goes in, whistles and clapping."""
    length = 9.5
    rise = 1 / (1 + np.exp(-(times(length) - 3.1) * 3.4))
    fall = np.exp(-0.28 * np.maximum(0, times(length) - 4.6))
    surge = rise * fall
    roar = band_noise(length, chance, 320, 2100) * (0.8 + 0.2 * wander(length, chance, 5))
    track = 0.11 * murmur(length, chance, 26) * (0.6 + 0.4 * surge)
    track += 0.20 * roar * surge + 0.10 * band_noise(length, chance, 120, 500) * surge
    add(track, cheer(3.2, chance, 26, 140, 300), 0.9, 0.09)
    add(track, cheer(6.2, chance, 60, 170, 480), 2.8, 0.17)
    busy = curve(length, ((0, 0), (3.4, 0), (4.6, 1), (8, 0.7), (9.5, 0.4)))
    track += 0.34 * applause(length, chance, 70, busy)
    for moment, low, high, long in ((3.9, 1900, 2900, 0.5), (4.9, 2200, 3100, 0.35), (5.3, 2300, 3200, 0.4),
                                    (6.9, 1800, 2700, 0.6)):
        add(track, whistle(low, high, long, 40, 9, 0.1), moment, 0.10)
    return echoed(track, ((0.21, 0.2), (0.34, 0.12)))


def football_siren(chance):
    """The siren ends the match: one long blast round the ground, the crowd breaking loose under it."""
    length = 7.5
    track = 0.05 * murmur(length, chance, 22)
    blast = silence(3.3)
    for pitch, level in ((311.1, 1.0), (392.0, 0.9), (466.2, 0.7), (314.6, 0.6)):
        wind_up = pitch * curve(3.3, ((0, 0.80), (0.16, 1.0), (2.95, 1.0), (3.3, 0.86)))
        levels = [1 / number ** 0.75 for number in range(1, 11)]
        blast += level * harmonics(wind_up, 3.3, levels)
    blast = softened(filtered(blast, 260, 3800), 2.0) * curve(3.3, ((0, 0), (0.09, 1), (3.0, 1), (3.3, 0)))
    add(track, blast, 0.35, 0.55)
    track = echoed(track, ((0.24, 0.30), (0.41, 0.2), (0.66, 0.14), (0.93, 0.08)))
    surge = curve(length, ((0, 0), (2.6, 0), (3.9, 1), (5.2, 0.6), (7.5, 0.12)))
    track += 0.06 * surge * band_noise(length, chance, 350, 2200)
    add(track, cheer(3.6, chance, 50, 160, 460), 2.6, 0.12)
    return track + 0.20 * applause(length, chance, 50, surge)


def strings_hit(chance):
    """A ball on a racket: the ball's thud, the strings, the frame."""
    modes = ((165, 0.016, 1.0), (410, 0.011, 0.8), (640, 0.014, 0.8), (1180, 0.007, 0.5), (2350, 0.003, 0.35))
    hit = struck(modes, 0.14, chance)
    add(hit, band_noise(0.02, chance, 600, 4500) * decay(0.02, 0.004), 0, 0.25)
    return hit


def tennis_rally(chance):
    """A rally from the baseline: hit, bounce, return, shoes squeaking, then the point and applause."""
    length = 10.5
    dry = silence(length)
    bounce = struck(((120, 0.014, 1), (260, 0.010, 0.7), (720, 0.004, 0.35)), 0.1, chance)
    moment = 0.5
    for stroke in range(8):
        near = stroke % 2 == 0
        hit = strings_hit(chance) if near else filtered(strings_hit(chance), None, 1900)
        add(dry, hit, moment, 0.85 if near else 0.42)
        if stroke in (2, 4, 6):
            grunt = harmonics(curve(0.26, ((0, 210), (0.1, 265), (0.26, 190))), 0.26, (1, 0.8, 0.9, 0.5, 0.3, 0.15))
            add(dry, filtered(grunt * hump(0.26, 0.6), 250, 2500), moment - 0.05, 0.06)
        add(dry, bounce, moment + (0.42 if near else 0.40), 0.20 if near else 0.38)
        squeak_at = moment + (0.22 if near else 0.55)
        squeak = harmonics(curve(0.09, ((0, 2500), (0.09, 2950))), 0.09, (1, 0.5, 0.3)) * hump(0.09)
        if stroke % 3 != 1:
            add(dry, squeak, squeak_at, 0.055)
        moment += 0.78 if near else 0.70
    court = softened(in_room(dry, chance, 1.6, 0.32, 0.45), 1.8)
    busy = curve(length, ((0, 0), (6.6, 0), (7.3, 1), (9, 0.9), (10.5, 0.45)))
    track = court + 0.018 * murmur(length, chance, 14) + 0.30 * applause(length, chance, 80, busy)
    add(track, cheer(2.6, chance, 30), 6.6, 0.055)
    return track


def cricket_bat(chance):
    """The bowler runs in, the bat meets the ball, its echo comes off the pavilion, people clap."""
    length = 9.0
    track = 0.016 * leaves(length, chance) + 0.024 * murmur(length, chance, 8)
    pace, moment = 0.36, 0.35
    while moment < 2.85:
        thud = struck(((78, 0.025, 1), (150, 0.016, 0.6), (420, 0.006, 0.2)), 0.14, chance)
        add(track, thud, moment, 0.12 + 0.12 * moment)
        pace *= 0.955
        moment += pace
    add(track, struck(((110, 0.015, 1), (300, 0.008, 0.6)), 0.1, chance), 3.18, 0.35)
    willow = struck(((520, 0.018, 0.7), (930, 0.022, 1.0), (1410, 0.014, 0.8), (2280, 0.008, 0.5), (3600, 0.004, 0.3)),
                    0.25, chance, 0.0002)
    add(track, willow, 3.42, 1.0)
    for delay, level in ((0.27, 0.16), (0.45, 0.10), (0.62, 0.05)):
        add(track, filtered(willow, None, 1500), 3.42 + delay, level)
    add(track, cheer(2.4, chance, 16, 140, 320), 3.75, 0.045)
    busy = curve(length, ((0, 0), (4.2, 0), (5.0, 1), (7, 0.8), (9, 0.2)))
    track += 0.30 * applause(length, chance, 40, busy)
    for moment in (0.9, 2.1, 7.7):
        add(track, whistle(1500, 1150, 0.16, 50, 22), moment, 0.02)
    return softened(track, 1.8)
