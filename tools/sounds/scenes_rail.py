"""Scenes of the railway. Each returns a track for a random generator."""

import numpy as np

from instruments import city_hum, heel, murmur
from speech import spoken
from synth import (RATE, add, band_noise, curve, decay, faded, filtered, harmonics, hump, in_room, levelled, padded,
                   peaked, silence, sine, softened, struck, wander)


def station_announcement(chance):
    """Two chime notes and a voice through horn loudspeakers in a big hall."""
    voice = spoken("The train now on platform four, is the six fifteen to Sandringham. Stopping all stations.",
                   "en-gb-x-rp+f3", 150, 48)
    length = min(11.8, 2.0 + len(voice) / RATE + 1.2)
    horn = silence(length)
    for moment, pitch in ((0.25, 784.0), (0.85, 622.3)):
        add(horn, harmonics(pitch, 1.5, (1, 0.25, 0.12)) * decay(1.5, 0.42), moment, 0.55)
    add(horn, softened(voice, 2.5), 1.95, 0.9)
    horn = softened(filtered(horn, 420, 3600, 5), 2.0)
    hall = horn.copy()
    add(hall, horn, 0.075, 0.45)
    add(hall, horn, 0.16, 0.25)
    hall = in_room(hall, chance, 2.0, 0.45, 0.45)
    people = in_room(murmur(length, chance, 8), chance, 1.8, 1.0, 0.4)
    idle = harmonics(50, length, (1, 0.8, 0.3, 0.4, 0.1, 0.25))
    track = 0.9 * peaked(hall) + 0.035 * levelled(people) + 0.012 * idle + 0.012 * band_noise(length, chance, 60, 400)
    for moment in (0.9, 1.45, 2.0, 2.53):
        add(track, in_room(padded(heel(chance), 0.6), chance, 1.2, 0.5), moment, 0.12)
    return track


def train_arriving(chance):
    """A suburban train comes in: wheels slowing, motors winding down, brakes, air, the doors' chime."""
    length = 11.5
    speed = curve(length, ((0, 1.0), (1.5, 0.92), (6.6, 0.0), (11.5, 0.0)))
    near = curve(length, ((0, 0.10), (2.2, 1.0), (5.5, 0.9), (6.8, 0.25), (11.5, 0.2)))
    roll = band_noise(length, chance, 50, 420) + 0.2 * band_noise(length, chance, 600, 2600)
    track = 0.15 * near * roll * speed ** 0.7
    motor = harmonics(90 + 620 * speed, length, (1, 0.5, 0.35, 0.15, 0.1))
    track += 0.07 * near * motor * np.minimum(1, speed * 5)
    clack = struck(((150, 0.035, 1), (390, 0.02, 0.8), (1100, 0.008, 0.5), (2400, 0.005, 0.3)), 0.2, chance)
    moment = 0.5
    while moment < 6.2:
        level = 0.6 * float(np.interp(moment, (0, 2.2, 6.2), (0.15, 1, 0.55)))
        add(track, clack, moment, level)
        pace = 0.11 / max(0.22, float(np.interp(moment, (1.5, 6.6), (0.95, 0.1))))
        add(track, clack, moment + pace, 0.8 * level)
        moment += 5.2 * pace
    brake = curve(length, ((0, 0), (3.2, 0), (5.0, 0.7), (6.3, 1), (6.6, 0), (11.5, 0)))
    pitch = 2980 + 40 * wander(length, chance, 5) - 260 * (1 - speed)
    squeal = harmonics(pitch, length, (1, 0.2, 0.15)) + 0.7 * sine(pitch * 1.347, length)
    track += 0.05 * brake * squeal * (0.55 + 0.45 * wander(length, chance, 17))
    air = band_noise(0.9, chance, 1800, 9500) * decay(0.9, 0.22)
    add(track, faded(air, 0.01, 0.05), 6.95, 0.24)
    add(track, faded(air, 0.01, 0.05), 10.55, 0.10)
    for count in range(5):
        add(track, faded(sine(1320, 0.12) + 0.3 * sine(3960, 0.12), 0.008, 0.03), 8.0 + 0.24 * count, 0.16)
    doors = band_noise(0.9, chance, 180, 1500) * hump(0.9, 0.5)
    add(track, doors, 9.2, 0.07)
    add(track, struck(((95, 0.05, 1), (240, 0.03, 0.7), (620, 0.012, 0.4)), 0.3, chance), 10.05, 0.5)
    track += 0.02 * harmonics(100, length, (1, 0.4, 0.5, 0.2)) + 0.02 * city_hum(length, chance)
    return in_room(track, chance, 1.4, 0.25, 0.4)


def ticket_gates(chance):
    """A row of ticket gates at rush hour: beep, motor, flaps; one card is refused three times."""
    length = 8.5
    people = in_room(murmur(length, chance, 14), chance, 1.6, 0.9, 0.4)
    dry = silence(length)
    flap = struck(((130, 0.04, 1), (310, 0.022, 0.7), (870, 0.01, 0.45), (1900, 0.006, 0.3)), 0.22, chance)
    whirr = harmonics(curve(0.34, ((0, 140), (0.1, 260), (0.34, 190))), 0.34, (1, 0.5, 0.7, 0.3, 0.4)) * hump(0.34, 0.5)
    passages = ((0.40, 1.0), (1.05, 0.55), (1.75, 0.9), (2.30, 0.45), (2.95, 1.0), (5.15, 0.6), (5.75, 1.0),
                (6.45, 0.5), (7.05, 0.9))
    for moment, level in passages:
        beep = faded(harmonics(2093, 0.11, (1, 0, 0.28, 0, 0.12)), 0.004, 0.012)
        add(dry, beep, moment, 0.42 * level)
        add(dry, whirr, moment + 0.14, 0.09 * level)
        add(dry, flap, moment + 0.20, 0.45 * level)
        add(dry, flap, moment + 0.95, 0.28 * level)
        for step in range(3):
            add(dry, heel(chance, 0.8), moment + 0.25 + 0.27 * step, 0.16 * level)
    refusal = faded(harmonics(415, 0.16, (1, 0, 0.5, 0, 0.3, 0, 0.2)), 0.005, 0.02)
    for count in range(3):
        add(dry, refusal, 3.75 + 0.27 * count, 0.42)
    return in_room(dry, chance, 1.5, 0.3, 0.5) + 0.06 * levelled(people) + 0.01 * band_noise(length, chance, 60, 300)
