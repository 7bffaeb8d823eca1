"""What the players of the demo library do behind a tune: each routine plays one bar of one part.

A routine gets the session, the name of its part and the beat at which the bar starts. Songs have three, four or six
beats in a bar; six are the eighths of a jig or a barcarole.
"""

from demo_score import Voicing, chord_classes, near

OFF = {3: (1, 2), 4: (1, 3), 6: (2, 5)}
PULSE = {3: (0, 1, 2), 4: (0, 1, 2, 3), 6: (0, 3)}


def low_root(chord, lowest=36):
    return lowest + (chord.root - lowest) % 12


def fifth_of(chord, root, lowest=31):
    step = chord.steps[2] if len(chord.steps) > 2 else 7
    return root + step if root + step < 48 else max(root + step - 12, lowest)


def chord_of(session, name, beat, centre, count=3, rich=False):
    voicing = session.voicings.setdefault((name, centre), Voicing(centre, count, rich))
    return voicing.of(session.song, session.chord(beat))


def runs(session, start):
    """Each chord of a bar with its first beat and length."""
    beat, end = start, start + session.song.meter
    while beat < end:
        chord, length = session.chord(beat), 1
        while beat + length < end and session.chord(beat + length) is chord:
            length += 1
        yield chord, beat, length
        beat += length


# Basses -----------------------------------------------------------------------------------------------------------


def two_beat(session, name, start):
    """Root and fifth on the strong beats."""
    meter = session.song.meter
    bar = round(start / meter)
    strong = {3: (0,), 4: (0, 2), 6: (0, 3)}[meter]
    for i, offset in enumerate(strong):
        chord = session.chord(start + offset)
        root = low_root(chord, 33)
        odd = i % 2 if meter != 3 else bar % 2
        same = session.chord(start) is chord
        pitch = fifth_of(chord, root) if odd and same else root
        session.play(name, start + offset, {3: 1.2, 4: 1.3, 6: 2.0}[meter], pitch, 0.9 if i == 0 else 0.78)
    if meter == 4 and session.chord(start + 4) is not session.chord(start + 3) and session.rng.random() < 0.5:
        aim = low_root(session.chord(start + 4), 33)
        session.play(name, start + 3, 0.8, aim - 2 if aim > 38 else aim + 2, 0.7)


def walking(session, name, start):
    """A note on each beat: root, chord notes, and a step towards the next root."""
    last = session.memory.get(name, 40)
    meter = session.song.meter
    for i in range(meter):
        chord, after = session.chord(start + i), session.chord(start + i + 1)
        if i == 0 or chord is not session.chord(start + i - 1):
            pitch = min((low_root(chord, 28), low_root(chord, 36)), key=lambda p: abs(p - last))
        elif after is not chord or i == meter - 1:
            aim = min((low_root(after, 28), low_root(after, 36)), key=lambda p: abs(p - last))
            pitch = aim + (1 if session.rng.random() < 0.5 else -1)
        else:
            way = 1 if last < 38 else -1 if last > 45 else session.rng.choice((-1, 1))
            pitch = near(last + 2 * way, chord_classes(chord), way)
        session.play(name, start + i, 0.94, int(pitch), 0.86 if i % 2 else 0.78)
        if session.rng.random() < 0.12:
            session.play(name, start + i + 0.5, 0.3, int(pitch), 0.5)
        last = int(pitch)
    session.memory[name] = last


def eighths(session, name, start):
    """Driving eighths on the root, with the fifth and octave at the end of the bar."""
    for i in range(session.song.meter * 2):
        chord = session.chord(start + i / 2)
        root = low_root(chord, 33)
        pitch = root + (0, 0, 0, 0, 0, 0, 7, 5)[i % 8] if i >= 6 and session.chord(start + 3) is session.chord(start) else root
        session.play(name, start + i / 2, 0.44, pitch, 0.9 if i % 2 == 0 else 0.7)


def octaves(session, name, start):
    """Eighths that jump between two octaves."""
    for i in range(session.song.meter * 2):
        session.play(
            name,
            start + i / 2,
            0.4,
            low_root(session.chord(start + i / 2), 31) + (12 if i % 2 else 0),
            0.88 if i % 2 == 0 else 0.74,
        )


def bossa_bass(session, name, start):
    for offset, length, step in ((0, 1.4, 0), (1.5, 0.45, 7), (2, 1.4, 7), (3.5, 0.45, 0)):
        chord = session.chord(start + offset)
        root = low_root(session.chord(start + 4) if offset == 3.5 else chord, 33)
        session.play(name, start + offset, length, fifth_of(chord, root) if step else root, 0.85 if offset in (0, 2) else 0.7)


def skip_bass(session, name, start):
    """A busy bass of eighths that outlines the chord."""
    shape = (0, 0, 2, 2, 1, 1, 2, 0)
    for i in range(8):
        chord = session.chord(start + i / 2)
        root = low_root(chord, 33)
        if i in (1, 5) and session.rng.random() < 0.5:
            continue
        session.play(
            name,
            start + i / 2,
            0.45,
            root + (0, chord.steps[1], chord.steps[2] if len(chord.steps) > 2 else 7)[shape[i]],
            0.85 if i % 2 == 0 else 0.7,
        )


def tango_bass(session, name, start):
    for offset, strength in ((0, 0.95), (1.5, 0.7), (2, 0.85), (3, 0.8)):
        chord = session.chord(start + offset)
        root = low_root(chord, 33)
        session.play(name, start + offset, 0.7, fifth_of(chord, root) if offset in (1.5, 3) else root, strength)


def long_bass(session, name, start):
    """The root for as long as the chord lasts."""
    for chord, beat, length in runs(session, start):
        session.play(name, beat, length * 0.97, low_root(chord, 33), 0.75)


def drone(session, name, start):
    if round(start / session.song.meter) % 2 == 0:
        beats = session.song.meter * 2
        for pitch, strength in ((48 + (session.song.key - 48) % 12 - 12, 0.7), (48 + (session.song.key + 7 - 48) % 12 - 12, 0.5)):
            session.play(name, start, beats * 0.99, pitch, strength)


# Chords -----------------------------------------------------------------------------------------------------------


def chops(session, name, start, centre=60, length=0.4):
    """Short chords after the beat."""
    for offset in OFF[session.song.meter]:
        for pitch in chord_of(session, name, start + offset, centre):
            session.play(name, start + offset, length, pitch, 0.66 if offset < 2 else 0.72, spread=0.006)


def offbeats(session, name, start, centre=64, length=0.2):
    """A chop on every second eighth."""
    for i in range(session.song.meter):
        for pitch in chord_of(session, name, start + i, centre):
            session.play(name, start + i + 0.5, length, pitch, 0.75 if i % 2 else 0.68, spread=0.005)


def strums(session, name, start, centre=57, count=5):
    """Guitar strokes down and up."""
    meter = session.song.meter
    pattern = {4: ((0, 0.75), (1, 0.85), (1.5, 0.5), (2, 0.7), (2.5, 0.5), (3, 0.85), (3.5, 0.55)), 3: ((0, 0.8), (1, 0.65), (1.5, 0.45), (2, 0.68), (2.5, 0.45)),
               6: ((0, 0.85), (2, 0.5), (3, 0.8), (5, 0.55))}[meter]  # fmt: skip
    for offset, strength in pattern:
        pitches = chord_of(session, name, start + offset, centre, count)
        down = offset % 1 == 0
        for i, pitch in enumerate(pitches if down else pitches[::-1][:3]):
            session.play(name, start + offset + i * 0.02, 0.9 if down else 0.4, pitch, strength * (0.8 + 0.05 * i))


def boom_chick(session, name, start, centre=58):
    """Bass string, then a stroke over the others."""
    two_beat(session, name, start)
    for offset in OFF[session.song.meter]:
        for i, pitch in enumerate(chord_of(session, name, start + offset, centre, 4)):
            session.play(name, start + offset + i * 0.012, 0.6, pitch, 0.62)


def four_strums(session, name, start, centre=64):
    """A banjo or rhythm guitar on each beat, the second and fourth heavier."""
    for offset in PULSE[session.song.meter]:
        for i, pitch in enumerate(chord_of(session, name, start + offset, centre, 4)):
            session.play(name, start + offset + i * 0.01, 0.3, pitch, 0.72 if offset % 2 else 0.55)


def broken(session, name, start, centre=60):
    """Broken chords in eighths."""
    order = {4: (0, 2, 1, 2, 3, 2, 1, 2), 3: (0, 2, 3, 2, 1, 2), 6: (0, 1, 2, 3, 2, 1)}[session.song.meter]
    step = 1 if session.song.meter == 6 else 0.5
    for i, index in enumerate(order):
        pitches = chord_of(session, name, start + i * step, centre, 4)
        session.play(name, start + i * step, 1.6 * step, pitches[index % len(pitches)], 0.62 if i % 2 else 0.72)


def sixteenths(session, name, start, centre=69):
    """A fast arpeggio of a machine."""
    for i in range(session.song.meter * 4):
        pitches = chord_of(session, name, start + i / 4, centre, 3)
        whole = pitches + [pitches[0] + 12]
        session.play(name, start + i / 4, 0.23, whole[(0, 1, 2, 3, 2, 1, 3, 1)[i % 8] % len(whole)], 0.75 if i % 4 == 0 else 0.58)


def held(session, name, start, centre=60, count=3):
    """The chord for as long as it lasts."""
    for _, beat, length in runs(session, start):
        for pitch in chord_of(session, name, beat, centre, count):
            session.play(name, beat, length * 0.97, pitch, 0.6, spread=0.01)


def pulsed(session, name, start, centre=62, count=3):
    """Repeated chords, one a beat, as inner strings play them."""
    for offset in range(session.song.meter):
        for pitch in chord_of(session, name, start + offset, centre, count):
            session.play(name, start + offset, 0.5, pitch, 0.7 if offset == 0 else 0.55)


def stride(session, name, start):
    """The left hand of a ragtime piano: a low octave, then a chord."""
    meter = session.song.meter
    bass = {4: (0, 2), 3: (0,), 6: (0, 3)}[meter]
    for i, offset in enumerate(bass):
        chord = session.chord(start + offset)
        root = low_root(chord, 36)
        pitch = fifth_of(chord, root) if i and chord is session.chord(start) else root
        for each in (pitch, pitch - 12):
            session.play(name, start + offset, 0.8, each, 0.7)
    for offset in OFF[meter]:
        for pitch in chord_of(session, name, start + offset, 55, 3):
            session.play(name, start + offset, 0.4, pitch, 0.58, spread=0.005)


def boogie(session, name, start):
    """Eight to the bar for the left hand: root, third, fifth, sixth, seventh and back."""
    climb = (0, 4, 7, 9, 10, 9, 7, 4)
    for i in range(8):
        chord = session.chord(start + i / 2)
        step = climb[i] - (1 if climb[i] == 4 and chord.kind.startswith("m") else 0)
        root = low_root(chord, 36)
        session.play(name, start + i / 2, 0.5, root + step, 0.78 if i % 2 == 0 else 0.62)
        session.play(name, start + i / 2, 0.5, root + step - 12, 0.6 if i % 2 == 0 else 0.48)


def shuffle_riff(session, name, start):
    """The guitar's fifth that rocks to the sixth and back."""
    for i in range(8):
        root = low_root(session.chord(start + i / 2), 40)
        for pitch in (root, root + (9 if i % 4 in (2, 3) else 7)):
            session.play(name, start + i / 2, 0.42, pitch, 0.75 if i % 2 == 0 else 0.55)


COMPS = (((0, 1.4), (1.5, 0.4)), ((0.5, 0.4), (2.5, 1.2)), ((1.5, 0.5), (3, 0.8)), ((0, 0.6), (2.5, 0.4), (3.5, 0.4)))


def comping(session, name, start, centre=58):
    """Sparse chords of a jazz pianist in changing figures."""
    for offset, length in COMPS[int(session.rng.integers(len(COMPS)))]:
        if offset < session.song.meter:
            for pitch in chord_of(session, name, start + offset, centre, 4, rich=True):
                session.play(name, start + offset, length, pitch, 0.52, spread=0.008)


def bossa_guitar(session, name, start, centre=60):
    """The chord in the syncopation of two bars."""
    bar = round(start / session.song.meter) % 2
    for offset in ((0, 1, 2.5), (0.5, 1.5, 3))[bar]:
        for i, pitch in enumerate(chord_of(session, name, start + offset, centre, 4, rich=True)):
            session.play(name, start + offset + i * 0.008, 0.7, pitch, 0.62)


def tango_chords(session, name, start, centre=60):
    for offset in (0, 1, 2, 3):
        for pitch in chord_of(session, name, start + offset, centre):
            session.play(name, start + offset, 0.3, pitch, 0.8 if offset == 0 else 0.62)


def tremolo_chord(session, name, start, centre=69):
    """Quick strokes between chord notes, as a pianist fills long bars."""
    if round(start / session.song.meter) % 4 == 3:
        pitches = chord_of(session, name, start, centre, 3)
        for i in range(session.song.meter * 4):
            session.play(name, start + i / 4, 0.3, pitches[-1] if i % 2 else pitches[0], 0.4 + 0.015 * i)


def counter(session, name, start, centre=67):
    """A slow second melody of guide notes."""
    last = session.memory.get(name, centre)
    for chord, beat, length in runs(session, start):
        way = int(session.rng.choice((-1, 1))) if abs(last - centre) < 5 else (-1 if last > centre else 1)
        last = near(last + way, chord_classes(chord), way)
        session.play(name, beat, length * 0.96, last, 0.55)
    session.memory[name] = last


def answers(session, name, start, centre=66):
    """A short phrase at the end of every second bar, when the tune usually breathes."""
    if round(start / session.song.meter) % 2 == 1 and session.song.meter == 4:
        pitch = near(centre, chord_classes(session.chord(start + 2)))
        for i, offset in enumerate((2, 2.5, 3, 3.5)):
            pitch = near(
                pitch + (2, 2, -1, -2)[i],
                session.song.scale() if i % 2 else chord_classes(session.chord(start + offset)),
                1 if i < 2 else -1,
            )
            session.play(name, start + offset, 0.45, pitch, 0.55)


def stabs(session, name, start, centre=64):
    """Short chords of a horn section, every second bar."""
    if round(start / session.song.meter) % 2 == 1:
        for offset, length in ((1.5, 0.3), (2, 0.3), (3.5, 0.25)):
            for pitch in chord_of(session, name, start + offset, centre):
                session.play(name, start + offset, length, pitch, 0.75)


def bell_answers(session, name, start, centre=84):
    """A few high notes, now and then."""
    if session.rng.random() < 0.45:
        for offset in (1, 2) if session.song.meter == 3 else (2, 3):
            pitches = chord_of(session, name, start + offset, centre, 3)
            session.play(name, start + offset, 0.9, pitches[int(session.rng.integers(len(pitches)))], 0.5)


# Drums ------------------------------------------------------------------------------------------------------------

# Style: meter: drum: (beat, strength) of one bar.
BEATS = {
    "march": {4: {"bass drum": ((0, 0.9), (2, 0.8)), "clash": ((1, 0.35), (3, 0.4)),
                  "field snare": ((0, 0.5), (1, 0.8), (1.5, 0.4), (1.75, 0.45), (2, 0.5), (2.5, 0.35), (3, 0.85), (3.5, 0.5), (3.75, 0.5))},
              3: {"bass drum": ((0, 0.8),), "field snare": ((1, 0.5), (2, 0.55), (2.5, 0.3)), "clash": ((1, 0.16), (2, 0.16))},
              6: {"bass drum": ((0, 0.9), (3, 0.7)), "field snare": ((2, 0.4), (3, 0.75), (5, 0.5))}},
    "parade": {4: {"bass drum": ((0, 0.9), (2, 0.7), (3.5, 0.5)), "hat": ((1, 0.7), (3, 0.7)), "clash": ((3, 0.25),),
                   "field snare": ((0, 0.4), (0.5, 0.3), (1, 0.65), (1.5, 0.5), (2.5, 0.6), (3, 0.5), (3.5, 0.7))}},
    "dixie": {4: {"soft kick": ((0, 0.9), (2, 0.9)), "snare": ((1, 0.4), (3, 0.45)), "woodblock": ((0.5, 0.3), (1, 0.6), (2.5, 0.3), (3, 0.6)),
                  "ride": ((0, 0.5), (1, 0.8), (1.5, 0.4), (2, 0.5), (3, 0.8), (3.5, 0.4))},
              3: {"soft kick": ((0, 0.8),), "brush": ((1, 0.6), (2, 0.6)), "ride": ((0, 0.4), (1, 0.5), (2, 0.5))}},
    "brushes": {4: {"sweep": ((0, 0.8), (1, 0.6), (2, 0.8), (3, 0.6)), "brush": ((1, 0.75), (1.5, 0.3), (3, 0.8), (3.5, 0.35)), "soft kick": ((0, 0.4), (2, 0.35)),
                    "ride": ((0, 0.55), (1, 0.7), (1.5, 0.4), (2, 0.55), (3, 0.7), (3.5, 0.4)), "hat": ((1, 0.5), (3, 0.5))},
                3: {"sweep": ((0, 0.8), (1, 0.6), (2, 0.6)), "brush": ((1, 0.6), (2, 0.5), (2.5, 0.3)), "soft kick": ((0, 0.5),), "ride": ((0, 0.5), (1, 0.45), (2, 0.5))},
                6: {"sweep": ((0, 0.7), (3, 0.7)), "brush": ((3, 0.6), (5, 0.3)), "soft kick": ((0, 0.5),)}},
    "bossa": {4: {"shaker": tuple((i / 2, 0.8 if i % 2 == 0 else 0.5) for i in range(8)), "soft kick": ((0, 0.7), (1.5, 0.4), (2, 0.6), (3.5, 0.4)),
                  "rim": ((0, 0.7), (1.5, 0.7), (3, 0.7)), "conga": ((1, 0.4), (3.5, 0.7)), "hat": ((1, 0.3), (3, 0.3))}},
    "surf": {4: {"kick": ((0, 0.95), (2, 0.9), (2.5, 0.7)), "snare": ((1, 0.9), (1.5, 0.0), (3, 0.95)), "high tom": ((1.5, 0.5),),
                 "ride": tuple((i / 2, 0.75 if i % 2 == 0 else 0.5) for i in range(8)), "tambourine": ((1, 0.5), (3, 0.5))}},
    "ska": {4: {"kick": ((0, 0.7), (2, 0.95)), "rim": ((1, 0.3),), "snare": ((2, 0.75), (3.75, 0.2)), "hat": tuple((i / 2, 0.45 if i % 2 == 0 else 0.9) for i in range(8)),
                "open hat": ((3.5, 0.4),), "tambourine": ((1, 0.3), (3, 0.3))}},
    "pop": {4: {"kick": ((0, 1.0), (1, 0.9), (2, 1.0), (3, 0.9)), "snare": ((1, 0.75), (3, 0.8)), "clap": ((1, 0.6), (3, 0.65)),
                "hat": tuple((i / 4, (0.7, 0.3, 0.0, 0.35)[i % 4]) for i in range(16)), "open hat": tuple((i + 0.5, 0.6) for i in range(4))},
            6: {"kick": ((0, 1.0), (3, 0.9)), "snare": ((3, 0.8),), "hat": tuple((i, 0.6) for i in range(6)), "open hat": ((5, 0.5),)}},
    "chip": {4: {"kick": ((0, 0.9), (1.5, 0.6), (2, 0.9)), "chip": ((1, 1.0), (3, 1.0), (3.75, 0.5)), "hat": tuple((i / 2, 0.6 if i % 2 else 0.35) for i in range(8))},
             3: {"kick": ((0, 0.9),), "chip": ((1, 0.7), (2, 0.8)), "hat": tuple((i / 2, 0.5) for i in range(6))},
             6: {"kick": ((0, 0.9), (3, 0.6)), "chip": ((3, 0.9), (5, 0.4)), "hat": tuple((i, 0.5) for i in range(6))}},
    "shuffle": {4: {"kick": ((0, 0.9), (2, 0.85), (2.5, 0.5)), "snare": ((1, 0.8), (3, 0.85)), "ride": tuple((i / 2, 0.8 if i % 2 == 0 else 0.5) for i in range(8))}},
    "stomp": {4: {"soft kick": ((0, 0.9), (1, 0.5), (2, 0.9), (3, 0.5)), "brush": ((1, 0.7), (1.5, 0.3), (3, 0.75), (3.5, 0.35)), "tambourine": ((1, 0.6), (3, 0.6))}},
    "session": {4: {"bodhran": ((0, 0.95), (0.5, 0.4), (1, 0.55), (1.5, 0.45), (2, 0.9), (2.5, 0.4), (3, 0.6), (3.5, 0.5)), "tambourine": ((1, 0.3), (3, 0.35))},
                3: {"bodhran": ((0, 0.85), (1, 0.45), (2, 0.5), (2.5, 0.3))}, 6: {"bodhran": ((0, 0.95), (1, 0.3), (2, 0.5), (3, 0.8), (4, 0.3), (5, 0.55))}},
    "hoedown": {4: {"soft kick": ((0, 0.85), (2, 0.85)), "brush": ((0.5, 0.25), (1, 0.75), (1.5, 0.35), (2.5, 0.25), (3, 0.8), (3.5, 0.45)), "tambourine": ((1, 0.35), (3, 0.35))},
                3: {"soft kick": ((0, 0.8),), "brush": ((1, 0.55), (2, 0.6))},
                6: {"soft kick": ((0, 0.85), (3, 0.7)), "brush": ((2, 0.5), (5, 0.55)), "tambourine": ((3, 0.35),)}},
    "waltz": {3: {"soft kick": ((0, 0.8),), "brush": ((1, 0.55), (2, 0.6), (2.5, 0.2)), "triangle": ((0, 0.3),), "hat": ((1, 0.4), (2, 0.4))}},
    "tango": {4: {"soft kick": ((0, 0.7), (2, 0.6)), "brush": ((0, 0.4), (1.5, 0.4), (2, 0.5), (3, 0.5), (3.5, 0.35)), "rim": ((3.5, 0.4),)}},
    "traps": {4: {"soft kick": ((0, 0.7), (2, 0.6)), "brush": ((1, 0.55), (3, 0.6)), "hat": ((1, 0.4), (3, 0.4)), "triangle": ((0, 0.25),)},
              3: {"soft kick": ((0, 0.6),), "brush": ((1, 0.4), (2, 0.45))}},
    "orchestra": {4: {"triangle": ((0, 0.25), (2, 0.2)), "bass drum": ((0, 0.25),)}, 3: {"triangle": ((0, 0.3),)}, 6: {"triangle": ((0, 0.2), (3, 0.2))}},
}  # fmt: skip

FILLS = {
    4: (("snare", 2, 0.6), ("snare", 2.5, 0.7), ("high tom", 2.75, 0.7), ("high tom", 3, 0.8), ("tom", 3.25, 0.8), ("tom", 3.5, 0.85), ("low tom", 3.75, 0.9)),
    3: (("snare", 1, 0.5), ("snare", 1.5, 0.6), ("tom", 2, 0.7), ("low tom", 2.5, 0.8)),
    6: (("snare", 3, 0.6), ("high tom", 4, 0.7), ("low tom", 5, 0.8)),
}  # fmt: skip
LIGHT_FILLS = {
    4: (("brush", 2, 0.6), ("brush", 2.5, 0.65), ("brush", 3, 0.75), ("brush", 3.25, 0.6), ("brush", 3.5, 0.7), ("brush", 3.75, 0.8)),
    3: (("brush", 1, 0.5), ("brush", 2, 0.6), ("brush", 2.5, 0.65)),
    6: (("brush", 3, 0.6), ("brush", 4, 0.6), ("brush", 5, 0.7)),
}  # fmt: skip
ROLLS = {meter: tuple(("field snare", meter - 2 + i / 8, 0.25 + 0.035 * i) for i in range(16)) for meter in (3, 4, 6)}


def drum_bar(session, style, start, strength, fill):
    """One bar of a drum style; a fill replaces its second half."""
    meter = session.song.meter
    beats = BEATS[style].get(meter) or BEATS["brushes"][meter]
    loud = {"march": ROLLS, "parade": ROLLS, "surf": FILLS, "ska": FILLS, "pop": FILLS, "shuffle": FILLS, "dixie": FILLS}
    extra = loud.get(style, LIGHT_FILLS)[meter] if fill else ()
    if style in ("session", "orchestra", "chip", "bossa"):
        extra = ()
    cut = min((offset for _, offset, _ in extra), default=meter)
    for drum, hits in beats.items():
        for offset, force in hits:
            if force and (offset < cut or drum in ("kick", "soft kick", "bass drum")):
                session.hit(start + offset, drum, force * strength)
    for drum, offset, force in extra:
        session.hit(start + offset, drum, force * strength)
