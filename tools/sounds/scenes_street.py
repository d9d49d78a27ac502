"""Scenes of the street: trams, crossings, bicycles, coffee, bells, a market.

Each function returns a track for a random generator.
"""

import numpy as np

from instruments import GONG, bell, city_hum, clicks_through, heel, leaves, murmur, note
from speech import spoken
from synth import (add, band_noise, curve, decay, echoed, faded, filtered, glide, harmonics, hump, in_room, levelled,
                   peaked, silence, sine, softened, struck, times, wander)


def tram_bell(chance):
    """A tram rolls by: its gong twice, motor and wheels growing, paired clacks over a crossing, a squeal."""
    length = 8.0
    near = np.exp(-((times(length) - 4.4) / 1.7) ** 2)
    track = 0.035 * city_hum(length, chance)
    track += 0.20 * near * band_noise(length, chance, 45, 260) * (0.7 + 0.3 * sine(6.1, length))
    track += 0.022 * near * band_noise(length, chance, 500, 2200)
    speed = curve(length, ((0, 150), (4.4, 178), (8, 160)))
    track += 0.055 * near * harmonics(speed, length, (1, 0.6, 0.2, 0.5, 0.1, 0.3, 0.05, 0.15))
    squeal_pitch = 2450 + 60 * np.sin(2 * np.pi * 2.7 * times(length)) - 18 * times(length)
    squeal = harmonics(squeal_pitch, length, (1, 0.25, 0.3)) * np.exp(-((times(length) - 5.3) / 0.55) ** 2)
    track += 0.05 * squeal * (0.5 + 0.5 * wander(length, chance, 14))
    clack = struck(((210, 0.03, 1), (540, 0.018, 0.8), (1320, 0.01, 0.5), (2900, 0.005, 0.3)), 0.16, chance)
    for axle in (3.35, 3.55, 4.25, 4.45, 5.15, 5.35):
        add(track, clack, axle, 0.42)
        add(track, clack, axle + 0.085, 0.30)
    for moment, level in ((0.45, 0.30), (0.80, 0.34), (2.10, 0.42), (2.45, 0.46)):
        add(track, bell(842, 2.1, chance, GONG), moment, level)
    return echoed(track, ((0.11, 0.16), (0.19, 0.10)))


def pedestrian_crossing(chance):
    """The crossing's slow tock, the falling swoop at green, then quick ticks while feet cross."""
    length = 9.0
    track = 0.022 * city_hum(length, chance)
    engine = harmonics(27 + 2 * wander(length, chance, 0.8), length, (1, 0.8, 0.6, 0.7, 0.4, 0.3, 0.2, 0.2))
    track += 0.014 * engine * (0.6 + 0.4 * wander(length, chance, 2))
    tock = struck(((980, 0.012, 1), (1960, 0.007, 0.5), (2930, 0.005, 0.35), (420, 0.010, 0.5)), 0.09, chance)
    for moment in (0.35, 1.35, 2.35, 3.35):
        add(track, tock, moment, 0.55)
    swoop = harmonics(glide(3300, 480, 0.19), 0.19, (1, 0.35, 0.2)) * decay(0.19, 0.16)
    add(track, faded(swoop, 0.003, 0.03), 3.85, 0.3)
    for count in range(38):
        add(track, tock, 4.05 + 0.118 * count, 0.5)
    for walker in range(5):
        pace, moment = chance.uniform(0.46, 0.58), chance.uniform(4.3, 5.2)
        while moment < length - 0.3:
            add(track, filtered(heel(chance, 0.7), None, 3500), moment, 0.09 + 0.03 * walker)
            moment += pace * chance.uniform(0.96, 1.04)
    return echoed(track, ((0.07, 0.18), (0.13, 0.10)))


def footsteps_arcade(chance):
    """Hard heels on tiles under a glass roof; a second, quicker walker comes the other way."""
    length = 8.0
    dry = silence(length)
    moment = 0.3
    while moment < length - 0.8:
        add(dry, heel(chance, chance.uniform(0.85, 1.1)), moment,
            0.9 * float(np.interp(moment, (0, 4, 8), (0.55, 1, 0.6))))
        moment += 0.56 * chance.uniform(0.97, 1.03)
    moment = 2.2
    while moment < length - 0.7:
        quick = filtered(heel(chance, 1.3), 500, None)
        add(dry, quick, moment, float(np.interp(moment, (2.2, 6.0, 8), (0.1, 0.65, 0.4))))
        moment += 0.41 * chance.uniform(0.97, 1.03)
    hall = in_room(dry, chance, 2.2, 0.5, 0.55)
    voices = in_room(murmur(length, chance, 5), chance, 2.2, 1.5, 0.4)
    return softened(hall, 2.2) + 0.05 * levelled(voices)


def bicycle_bell(chance):
    """A bicycle on the river path: ring-ring, the freewheel's ticking going by, tyres on asphalt."""
    length = 6.5
    near = np.exp(-((times(length) - 3.1) / 1.05) ** 2)
    track = 0.014 * city_hum(length, chance) + 0.012 * leaves(length, chance)
    track += 0.028 * near * band_noise(length, chance, 900, 4500)
    ring = silence(1.9)
    for count in range(11):
        add(ring, bell(2310 if count % 2 else 2284, 0.8, chance, GONG), 0.047 * count, 0.6 + 0.4 * chance.random())
    for moment, level in ((0.35, 0.20), (1.10, 0.26), (4.55, 0.08)):
        add(track, ring, moment, level)
    tick = struck(((3100, 0.003, 1), (4700, 0.002, 0.7), (1800, 0.003, 0.6)), 0.03, chance)
    moment = 1.9
    while moment < 5.6:
        add(track, tick, moment, 0.7 * float(np.exp(-((moment - 3.2) / 1.0) ** 2)))
        moment += 0.043 + 0.006 * max(0.0, moment - 3.0)
    return track


def espresso_machine(chance):
    """Behind the counter: the grinder, two knocks, steam from a scream down to a growl, a cup set down."""
    length = 9.5
    track = 0.06 * in_room(murmur(length, chance, 8), chance, 0.8, 0.5)
    grind = silence(length)
    motor = harmonics(curve(2.4, ((0, 60), (0.25, 118), (2.1, 112), (2.4, 50))), 2.4,
                      (1, 0.7, 0.5, 0.6, 0.3, 0.5, 0.2, 0.3))
    beans = struck(((1900, 0.003, 1), (3300, 0.002, 0.8)), 0.03, chance)
    cracks = clicks_through(2.4, chance, 420, (beans,), 3.0)
    body = 0.35 * levelled(motor) + 0.5 * band_noise(2.4, chance, 500, 5200) + 1.0 * levelled(cracks)
    add(grind, faded(body, 0.12, 0.2), 0.3)
    knock = struck(((165, 0.035, 1), (410, 0.02, 0.8), (980, 0.01, 0.5), (2300, 0.006, 0.4)), 0.25, chance)
    for moment, level in ((3.15, 1.0), (3.42, 0.85)):
        add(track, knock, moment, 0.75 * level)
    steam = silence(length)
    hiss = band_noise(3.9, chance, 2200, 11000)
    scream = harmonics(glide(1750, 640, 3.9) * (1 + 0.02 * wander(3.9, chance, 12)), 3.9, (1, 0.6, 0.5, 0.2))
    growl = band_noise(3.9, chance, 150, 900) * (0.55 + 0.45 * sine(31 + 6 * wander(3.9, chance, 3), 3.9))
    part = times(3.9) / 3.9
    early = np.exp(-((part - 0.2) / 0.17) ** 2)
    jet = 0.7 * hiss * (1.0 - 0.72 * part) + 1.1 * scream * early + 1.1 * growl * part ** 1.5
    add(steam, faded(jet, 0.05, 0.12), 4.1)
    track += 0.11 * grind + 0.13 * steam
    cup = struck(((2650, 0.05, 1), (4380, 0.03, 0.7), (6900, 0.02, 0.5), (1420, 0.02, 0.5)), 0.4, chance)
    for moment, level in ((8.25, 0.30), (8.33, 0.13), (8.85, 0.22)):
        add(track, cup, moment, level)
    return in_room(track, chance, 0.7, 0.22, 0.6)


def church_bells(chance):
    """Six bells ring down the scale, then once more with neighbours changed, over a quiet street."""
    length = 11.5
    scale = [note(number) * 1.008 for number in (76, 74, 72, 71, 69, 67)]
    rows = ((0, 1, 2, 3, 4, 5), (1, 0, 3, 2, 5, 4), (1, 3, 0, 5, 2, 4))
    dry = silence(length)
    moment = 0.25
    for row in rows:
        for place in row:
            clapper = band_noise(0.02, chance, 900, 5000) * decay(0.02, 0.004)
            add(dry, clapper, moment, 0.14)
            add(dry, bell(scale[place] * 0.75, 3.4 + 0.35 * place, chance), moment, 0.5 * chance.uniform(0.85, 1.0))
            add(dry, bell(scale[place] * 1.5, 1.6, chance), moment, 0.08)
            moment += 0.43 * chance.uniform(0.97, 1.03)
        moment += 0.30
    far = in_room(filtered(dry, None, 6500), chance, 2.6, 0.32, 0.4)
    return peaked(far) + 0.007 * city_hum(length, chance) + 0.004 * leaves(length, chance)


def market_trader(chance):
    """A fruit seller calls his prices under the market's sheds, a rival answers from further off."""
    calls = (("Strawberries! Two for five! Two for five!", "en-gb+m3", 172, 78, 0.35, 1.0),
             ("Come on! Last of the mangoes!", "en-gb-scotland+m7", 165, 70, 3.9, 0.42),
             ("Two for five, ladies! Beautiful, beautiful!", "en-gb+m3", 176, 84, 5.9, 1.0))
    length = 9.6
    shed = silence(length)
    for text, voice, speed, pitch, moment, level in calls:
        shout = softened(filtered(spoken(text, voice, speed, pitch), 260, 5200), 3.0)
        lift = filtered(shout, 900, 3200)
        call = peaked(shout) + 0.9 * peaked(lift)
        if level < 0.5:
            call = filtered(call, 300, 2400)
        add(shed, call, moment, 0.5 * level)
    track = 0.075 * murmur(length, chance, 22) + in_room(shed, chance, 0.9, 0.28, 0.5)
    for moment in np.sort(chance.uniform(0.2, length - 0.6, 7)):
        rustle = band_noise(0.35, chance, 2500, 9000) * hump(0.35) * wander(0.35, chance, 60) ** 2
        add(track, rustle, moment, 0.05)
    crate = struck(((140, 0.03, 1), (330, 0.02, 0.8), (760, 0.01, 0.5)), 0.2, chance)
    for moment, level in ((3.3, 0.30), (3.46, 0.2), (8.9, 0.25)):
        add(track, crate, moment, level)
    for turn in range(26):
        add(track, struck(((2100, 0.006, 1), (3350, 0.004, 0.7)), 0.05, chance), 4.9 + 0.047 * turn,
            0.05 * float(np.sin(np.pi * (turn + 1) / 27)))
    return track
