"""Scenes with music: a busker's guitar, a street piano, an organ. The tunes are written for this project."""

import numpy as np

from instruments import city_hum, guitar_body, heel, note, piano, pipe, plucked
from synth import add, band_noise, filtered, in_room, peaked, silence, struck


def busker_guitar(chance):
    """A fingerpicked turn of four chords by a busker; feet pass, a coin lands in the case."""
    length = 11.0
    chords = ((45, 52, 57, 60, 64), (41, 53, 57, 60, 65), (48, 52, 55, 60, 67), (43, 50, 55, 59, 62))
    pattern = (0, 2, 3, 4, 3, 2, 4, 3)
    beat = 0.275
    strings = silence(length)
    moment = 0.3
    for chord in chords:
        for step, place in enumerate(pattern):
            level = 0.95 if step == 0 else chance.uniform(0.45, 0.68)
            tone = plucked(note(chord[place]), 2.0, chance, 0.9965, 0.7 if place == 0 else 0.5)
            add(strings, tone, moment + chance.uniform(-0.008, 0.008), level)
            if step == 4:
                add(strings, plucked(note(chord[1]), 1.4, chance, 0.9962, 0.65), moment, 0.5)
            moment += beat * (1.03 if step == 7 else 1.0)
    for place, number in enumerate((45, 52, 57, 60, 64)):
        add(strings, plucked(note(number), 1.9, chance, 0.9972, 0.5), moment + 0.028 * place, 0.62)
    track = in_room(guitar_body(strings), chance, 0.9, 0.2, 0.5)
    coin = struck(((3870, 0.05, 1), (6240, 0.035, 0.7), (8900, 0.02, 0.5)), 0.3, chance)
    for count, pause in enumerate((0, 0.21, 0.36, 0.46, 0.53)):
        add(track, coin, 6.6 + pause, 0.07 * 0.72 ** count)
    for step in range(9):
        add(track, filtered(heel(chance, 0.6), None, 3000), 4.2 + 0.53 * step,
            0.10 * float(np.sin(np.pi * (step + 0.5) / 9)))
    return peaked(track) + 0.018 * city_hum(length, chance)


# The waltz: for each bar the bass, the two-note chord, and the tune as (beat, semitone number) pairs.
WALTZ = (
    (48, (64, 67), ((0, 76), (1, 79), (2, 84))),
    (47, (62, 67), ((0, 83), (1.5, 79), (2, 81))),
    (45, (60, 64), ((0, 81), (1, 76), (2, 72))),
    (43, (59, 62), ((0, 74), (0.5, 76), (1, 77), (2, 79))),
    (41, (57, 60), ((0, 81), (1, 77), (2, 72))),
    (43, (59, 65), ((0, 74), (1, 79), (2, 71))),
    (48, (64, 67), ((0, 72),)),
)


def street_piano(chance):
    """A waltz on a weathered upright left in the square."""
    beat = 0.43
    length = 11.2
    track = silence(length)
    for bar, (bass, chord, tune) in enumerate(WALTZ):
        start = 0.25 + bar * 3 * beat
        last = bar == len(WALTZ) - 1
        add(track, piano(bass, beat * (3 if last else 1.1), chance, 0.75), start, 0.62)
        add(track, piano(bass - 12, beat * (3 if last else 0.9), chance, 0.6), start, 0.30)
        for step in (1, 2):
            for number in chord:
                long = beat * (2.0 if last and step == 1 else 0.6)
                if not (last and step == 2):
                    add(track, piano(number, long, chance, 0.5), start + step * beat + chance.uniform(-0.01, 0.012),
                        0.28)
        for place, (moment, number) in enumerate(tune):
            until = tune[place + 1][0] if place + 1 < len(tune) else 3
            held = beat * (until - moment) * (1.0 if not last else 0.8)
            add(track, piano(number, held, chance, 0.95), start + moment * beat + chance.uniform(-0.008, 0.012), 0.55)
    track = in_room(peaked(track), chance, 0.6, 0.16, 0.5)
    return peaked(track) + 0.02 * city_hum(length, chance)


# Four-part chords as (length in beats, semitone numbers), bass first.
CHORALE = (
    (2, (43, 50, 59, 67)), (1, (47, 50, 62, 67)), (1, (48, 55, 60, 69)), (2, (50, 57, 62, 66)),
    (1, (52, 55, 59, 67)), (1, (45, 52, 60, 69)), (1, (50, 57, 62, 66)), (3, (43, 55, 59, 67)),
)


def hall_organ(chance):
    """The last lines of a chorale on a full organ in a long hall."""
    length = 11.8
    beat = 0.66
    stops = ((0.5, (0.7, 0.15, 0.05)), (1.0, (1, 0.5, 0.35, 0.2, 0.14, 0.08)), (2.0, (0.5, 0.25, 0.12, 0.06)),
             (3.0, (0.16, 0.08)), (4.0, (0.26, 0.12, 0.05)), (6.0, (0.09, 0.04)), (8.0, (0.10, 0.04)))
    dry = silence(length)
    moment = 0.2
    for beats, chord in CHORALE:
        for number in chord:
            for ratio, levels in stops:
                frequency = note(number) * ratio * (1 + chance.uniform(-0.0008, 0.0008))
                add(dry, pipe(frequency, beats * beat * 0.98, chance, levels), moment, 0.16)
        pedal = pipe(note(chord[0] - 12), beats * beat * 0.98, chance, (1, 0.4, 0.3, 0.12))
        add(dry, pedal, moment, 0.34)
        moment += beats * beat
    dry += 0.012 * band_noise(length, chance, 200, 2500)
    return in_room(dry, chance, 3.4, 0.75, 0.4)
