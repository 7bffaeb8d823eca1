"""Old melodies of the demo library, written as notes: traditional, or by composers who died more than a century ago.

A melody is a sequence of tokens: a note name, its octave if that changes, and "*" and its length in beats if that is
not one. "-" is a rest, and "|" marks a bar for the reader only. Chords are written the same way ("N" for none); in
total they last as long as the melody. A first bar without a chord is a pick-up.
"""

from typing import NamedTuple


class Melody(NamedTuple):
    """Beats per minute, the tune, its chords, and the beats in a bar: six are eighths."""

    tempo: int
    tune: str
    chords: str
    meter: int = 4


AULD_LANG_SYNE = Melody(
    120,
    "-*3 C4 | F*1.5 F*.5 F A | G*1.5 F*.5 G A | F*1.5 F*.5 A C5 | D*3 D | C*1.5 A4*.5 A F | G*1.5 F*.5 G A |"
    " F*1.5 D*.5 D C | F*3 D5 | C*1.5 A4*.5 A F | G*1.5 F*.5 G D5 | C*1.5 A4*.5 A C5 | D*3 D | C*1.5 A4*.5 A F |"
    " G*1.5 F*.5 G A | F*1.5 D*.5 D C | F*3 -",
    "N*4 F*4 C*4 F*4 Bb*4 F*4 C*4 Bb*2 C*2 F*4 F*4 C*4 F*4 Bb*4 F*4 C*4 Bb*2 C*2 F*4",
)
AMAZING_GRACE = Melody(
    140,
    "-*2 D4 | G*2 B*.5 G*.5 | B*2 A | G*2 E | D*2 D | G*2 B*.5 G*.5 | B*2 A | D5*3 | -*2 B4 |"
    " D5*1.5 B4*.5 D5*.5 B4*.5 | G*2 D | E*1.5 G*.5 G*.5 E*.5 | D*2 D | G*2 B*.5 G*.5 | B*2 A | G*3",
    "N*3 G*3 G*3 C*3 G*3 G*3 G*3 D*3 D*3 G*3 G*3 C*3 G*3 G*3 D*3 G*3",
    3,
)
ODE_TO_JOY = Melody(
    120,
    "E4 E F G | G F E D | C C D E | E*1.5 D*.5 D*2 | E E F G | G F E D | C C D E | D*1.5 C*.5 C*2",
    "C*4 G*4 C*4 G*4 C*4 G*4 C*4 G*2 C*2",
)
WHEN_THE_SAINTS = Melody(
    176,
    "- C4 E F | G*4 | - C E F | G*4 | - C E F | G*2 E*2 | C*2 E*2 | D*4 | - E E D | C*3 C | E*2 G*2 | G F*3 |"
    " - - E F | G*2 E*2 | C*2 D*2 | C*4",
    "C*4 C*4 C*4 C*4 C*4 C*4 C*4 G*4 G*4 C*4 C*4 F*4 F*4 C*4 G*4 C*4",
)
OH_SUSANNA = Melody(
    190,
    "-*3 C4*.5 D*.5 | E G G*1.5 A*.5 | G E C*1.5 D*.5 | E E D C | D*3 C*.5 D*.5 | E G G*1.5 A*.5 | G E C*1.5 D*.5 |"
    " E E D D | C*4 | F*2 F*2 | A A*2 A | G G E C | D*3 C*.5 D*.5 | E G G*1.5 A*.5 | G E C*1.5 D*.5 | E E D D | C*4",
    "N*4 C*4 C*4 C*4 G*4 C*4 C*4 C*2 G*2 C*4 F*4 F*4 C*4 G*4 C*4 C*4 C*2 G*2 C*4",
)
CAMPTOWN_RACES = Melody(
    200,
    "G4 G E G | A G E*2 | E D*3 | E D*3 | G G E G | A G E*2 | D*2 E D | C*4 | C*1.5 C*.5 E G | C5*4 |"
    " A4*1.5 A*.5 C5 A4 | G*4 | G G E G | A G E*2 | D*2 E D | C*4",
    "C*4 C*4 G*4 G*4 C*4 C*4 G*4 C*4 C*4 C*4 F*4 C*4 C*4 C*4 G*4 C*4",
)
YANKEE_DOODLE = Melody(
    220,
    "C4 C D E | C E D G3 | C4 C D E | C*2 B3*2 | C4 C D E | F E D C | B3 G A B | C4*2 C*2 |"
    " A3*1.5 B*.5 A G | A B C4*2 | G3*1.5 A*.5 G F | E*2 G*2 | A*1.5 B*.5 A G | A B C4 A3 | G C4 B3 D4 | C*2 C*2",
    "C*4 C*2 G*2 C*4 C*2 G*2 C*4 F*4 G*4 C*4 F*4 F*4 C*4 C*4 F*4 F*4 C*2 G*2 C*4",
)
JINGLE_BELLS = Melody(
    200,
    "E4 E E*2 | E E E*2 | E G C*1.5 D*.5 | E*4 | F F F*1.5 F*.5 | F E E E*.5 E*.5 | E D D E | D*2 G*2 |"
    " E E E*2 | E E E*2 | E G C*1.5 D*.5 | E*4 | F F F*1.5 F*.5 | F E E E*.5 E*.5 | G G F D | C*4",
    "C*4 C*4 C*4 C*4 F*4 C*4 D*4 G*4 C*4 C*4 C*4 C*4 F*4 C*4 G*4 C*4",
)
SILENT_NIGHT = Melody(
    190,
    "G4*1.5 A*.5 G | E*3 | G*1.5 A*.5 G | E*3 | D5*2 D | B4*3 | C5*2 C | G4*3 | A*2 A | C5*1.5 B4*.5 A |"
    " G*1.5 A*.5 G | E*3 | A*2 A | C5*1.5 B4*.5 A | G*1.5 A*.5 G | E*3 | D5*2 D | F*1.5 D*.5 B4 | C5*3 | E*3 |"
    " C G4 E | G*1.5 F*.5 D | C*3 | -*3",
    "C*3 C*3 C*3 C*3 G*3 G*3 C*3 C*3 F*3 F*3 C*3 C*3 F*3 F*3 C*3 C*3 G*3 G*3 C*3 C*3 C*3 G*3 C*3 N*3",
    3,
)
MERRY_CHRISTMAS = Melody(
    170,
    "-*2 D4 | G G*.5 A*.5 G*.5 F#*.5 | E E E | A A*.5 B*.5 A*.5 G*.5 | F# D D | B B*.5 C5*.5 B4*.5 A*.5 |"
    " G E D*.5 D*.5 | E A F# | G*2 D | G G G | F#*2 F# | G F# E | D*2 A | B A G | D5 D4 D*.5 D*.5 | E A F# | G*3",
    "N*3 G*3 C*3 A*3 D*3 B*3 Em*3 D*3 G*3 G*3 D*3 A*3 D*3 G*3 G*3 D*3 G*3",
    3,
)
O_TANNENBAUM = Melody(
    130,
    "-*2 C4 | F*.75 F*.25 F*1.5 G*.5 | A*.75 A*.25 A*1.5 A*.5 | G*.5 A*.5 Bb E | G F C |"
    " F*.75 F*.25 F*1.5 G*.5 | A*.75 A*.25 A*1.5 A*.5 | G*.5 A*.5 Bb E | G F -*.5 C5*.5 |"
    " C*.5 A4*.5 D5*1.5 C*.5 | C*.5 Bb4*.5 Bb*1.5 Bb*.5 | Bb*.5 G*.5 C5*1.5 Bb4*.5 | Bb*.5 A*.5 A C |"
    " F*.75 F*.25 F*1.5 G*.5 | A*.75 A*.25 A*1.5 A*.5 | G*.5 A*.5 Bb E | G F*2",
    "N*3 F*3 F*3 C*3 F*3 F*3 F*3 C*3 F*3 F*3 C*3 C*3 F*3 F*3 F*3 C*3 F*3",
    3,
)
FRERE_JACQUES = Melody(
    120,
    "C4 D E C | C D E C | E F G*2 | E F G*2 | G*.5 A*.5 G*.5 F*.5 E C | G*.5 A*.5 G*.5 F*.5 E C | C G3 C4*2 | C G3 C4*2",
    "C*4 C*4 C*4 C*4 C*4 C*4 C*4 C*4",
)
TWINKLE = Melody(
    132,
    "C4 C G G | A A G*2 | F F E E | D D C*2 | G G F F | E E D*2 | G G F F | E E D*2 | C C G G | A A G*2 | F F E E | D D C*2",
    "C*4 F*2 C*2 F*2 C*2 G*2 C*2 C*2 F*2 C*2 G*2 C*2 F*2 C*2 G*2 C*4 F*2 C*2 F*2 C*2 G*2 C*2",
)
LULLABY = Melody(
    140,
    "-*2 E4*.5 E*.5 | G*2 E*.5 E*.5 | G*2 E*.5 G*.5 | C5 B4*1.5 A*.5 | A G D*.5 E*.5 | F D D*.5 E*.5 | F*2 D*.5 F*.5 |"
    " B*.5 A*.5 G B | C5*2 C4*.5 C*.5 | C5*2 A4*.5 F*.5 | G*2 E*.5 C*.5 | F G A | G*2 C*.5 C*.5 | C5*2 A4*.5 F*.5 |"
    " G*2 E*.5 C*.5 | F E D | C*3",
    "N*3 C*3 C*3 C*3 G*3 G*3 G*3 G*3 C*3 F*3 C*3 F*3 C*3 F*3 C*3 G*3 C*3",
    3,
)
AU_CLAIR_DE_LA_LUNE = Melody(
    200,
    "C4 C C D | E*2 D*2 | C E D D | C*4 | C C C D | E*2 D*2 | C E D D | C*4 | D D D D | A3*2 A*2 | D4 C B3 A | G*4 |"
    " C4 C C D | E*2 D*2 | C E D D | C*4",
    "C*4 C*2 G*2 C*2 G*2 C*4 C*4 C*2 G*2 C*2 G*2 C*4 G*4 Am*4 D*4 G*4 C*4 C*2 G*2 C*2 G*2 C*4",
)
BLUE_DANUBE = Melody(
    165,
    "-*2 D4 | D F# A | A - A5 | A - F# | F# - D4 | D F# A | A - A5 | A - G | G - C#4 | C# E B | B - B5 | B - G |"
    " G - C#4 | C# E B | B - B5 | B - F# | F#*3",
    "N*3 D*3 D*3 D*3 D*3 D*3 D*3 A*3 A*3 A*3 A*3 A*3 A*3 A*3 A*3 D*3 D*3",
    3,
)
SWAN_LAKE = Melody(
    150,
    "F#5*4 | B4 C#5 D E | F#*3 D | F#*3 D | F#*3 B4 | D5 B4 G D5 | B4*4 | - E5 D C# | F#*4 | B4 C#5 D E | F#*3 D |"
    " F#*3 D | F#*3 B4 | D5 B4 G D5 | B4*8",
    "Bm*4 Bm*4 Bm*4 Bm*4 Bm*4 G*4 Bm*4 F#*4 Bm*4 Bm*4 Bm*4 Bm*4 Bm*4 G*4 Bm*4 Bm*4",
)
MOUNTAIN_KING = Melody(
    130,
    "B3*.5 C#4*.5 D*.5 E*.5 F#*.5 D*.5 F# | F*.5 C#*.5 F E*.5 C*.5 E | B3*.5 C#4*.5 D*.5 E*.5 F#*.5 D*.5 F#*.5 B*.5 |"
    " A*.5 F#*.5 D*.5 F#*.5 A*2 | B4*.5 C#5*.5 D*.5 E*.5 F#*.5 D*.5 F# | F*.5 C#*.5 F E*.5 C*.5 E |"
    " B4*.5 C#5*.5 D*.5 E*.5 F#*.5 D*.5 F#*.5 B*.5 | A*.5 F#*.5 D*.5 F#*.5 A*2",
    "Bm*4 F#*2 Am*2 Bm*4 D*4 Bm*4 F#*2 Am*2 Bm*4 D*4",
)
CAN_CAN = Melody(
    144,
    "C4*2 D*.5 F*.5 E*.5 D*.5 | G G G*.5 A*.5 E*.5 F*.5 | D D D*.5 F*.5 E*.5 D*.5 |"
    " C*.5 C5*.5 B4*.5 A*.5 G*.5 F*.5 E*.5 D*.5 | C*2 D*.5 F*.5 E*.5 D*.5 | G G G*.5 A*.5 E*.5 F*.5 |"
    " D D D*.5 F*.5 E*.5 D*.5 | C*.5 G*.5 D*.5 E*.5 C*2",
    "C*4 C*4 G*4 C*2 G*2 C*4 C*4 G*4 C*1 G*1 C*2",
)
KOROBEINIKI = Melody(
    160,
    "E5 B4*.5 C5*.5 D C*.5 B4*.5 | A A*.5 C5*.5 E D*.5 C*.5 | B4*1.5 C5*.5 D E | C A4 A*2 |"
    " -*.5 D5 F*.5 A G*.5 F*.5 | E*1.5 C*.5 E D*.5 C*.5 | B4 B*.5 C5*.5 D E | C A4 A*2 |"
    " E5*2 C*2 | D*2 B4*2 | C5*2 A4*2 | G#*2 B*2 | E5*2 C*2 | D*2 B4*2 | C5 E A*2 | G#*4 |"
    " E5 B4*.5 C5*.5 D C*.5 B4*.5 | A A*.5 C5*.5 E D*.5 C*.5 | B4*1.5 C5*.5 D E | C A4 A*2",
    "E*4 Am*4 E*4 Am*4 Dm*4 C*4 E*4 Am*4 Am*4 E*4 Am*4 E*4 Am*4 E*4 Am*4 E*4 E*4 Am*4 E*4 Am*4",
)
MINUET = Melody(
    140,
    "D5 G4*.5 A*.5 B*.5 C5*.5 | D G4 G | E5 C*.5 D*.5 E*.5 F#*.5 | G G4 G | C5 D*.5 C*.5 B4*.5 A*.5 |"
    " B C5*.5 B4*.5 A*.5 G*.5 | F# G*.5 A*.5 B*.5 G*.5 | A*3 | D5 G4*.5 A*.5 B*.5 C5*.5 | D G4 G |"
    " E5 C*.5 D*.5 E*.5 F#*.5 | G G4 G | C5 D*.5 C*.5 B4*.5 A*.5 | B C5*.5 B4*.5 A*.5 G*.5 | A B*.5 A*.5 G*.5 F#*.5 | G*3",
    "G*3 G*3 C*3 G*3 C*3 G*3 D*3 D*3 G*3 G*3 C*3 G*3 C*3 G*3 D*3 G*3",
    3,
)
FUR_ELISE = Melody(
    135,
    "E5*.5 D#*.5 E*.5 B4*.5 D5*.5 C*.5 | A4 -*.5 C*.5 E*.5 A*.5 | B -*.5 E*.5 G#*.5 B*.5 | C5 -*.5 E4*.5 E5*.5 D#*.5 |"
    " E*.5 D#*.5 E*.5 B4*.5 D5*.5 C*.5 | A4 -*.5 C*.5 E*.5 A*.5 | B -*.5 E*.5 C5*.5 B4*.5 | A -*.5 B*.5 C5*.5 D*.5 |"
    " E*1.5 G4*.5 F5*.5 E*.5 | D*1.5 F4*.5 E5*.5 D*.5 | C*1.5 E4*.5 D5*.5 C*.5 | B4*.5 E*.5 E5 E*.5 D#*.5 |"
    " E*.5 D#*.5 E*.5 B4*.5 D5*.5 C*.5 | A4 -*.5 C*.5 E*.5 A*.5 | B -*.5 E*.5 C5*.5 B4*.5 | A*2 E5*.5 D#*.5",
    "Am*3 Am*3 E*3 Am*3 Am*3 Am*3 E*3 Am*3 C*3 G*3 Am*3 E*3 Am*3 Am*3 E*3 Am*3",
    3,
)
CANON = Melody(
    130,
    "F#5*2 E*2 | D*2 C#*2 | B4*2 A*2 | B*2 C#5*2 | D*2 C#*2 | B4*2 A*2 | G*2 F#*2 | G*2 E*2 | D5 F# A G | F# D F# E |"
    " D B4 D5 A | G B A G",
    "D*2 A*2 Bm*2 F#m*2 G*2 D*2 G*2 A*2 D*2 A*2 Bm*2 F#m*2 G*2 D*2 G*2 A*2 D*2 A*2 Bm*2 F#m*2 G*2 D*2 G*2 A*2",
)
NACHTMUSIK = Melody(
    132,
    "G4 -*.5 D*.5 G -*.5 D*.5 | G*.5 D*.5 G*.5 B*.5 D5 - | C -*.5 A4*.5 C5 -*.5 A4*.5 | C5*.5 A4*.5 F#*.5 A*.5 D - |"
    " G -*.5 D*.5 G -*.5 D*.5 | G*.5 D*.5 G*.5 B*.5 D5 - | C -*.5 A4*.5 C5 -*.5 A4*.5 | C5*.5 A4*.5 F#*.5 A*.5 G -",
    "G*4 G*4 D*4 D*4 G*4 G*4 D*4 D*2 G*2",
)
ENTERTAINER = Melody(
    150,
    "E4*.5 C5 E4*.5 C5 E4*.5 C5*.5 | C*2.5 C*.5 D*.5 D#*.5 | E*.5 C*.5 D*.5 E B4*.5 D5 | C*3 D4*.5 D#*.5 |"
    " E*.5 C5 E4*.5 C5 E4*.5 C5*.5 | C*3 A4*.5 G*.5 | F#*.5 A*.5 C5*.5 E D*.5 C*.5 A4*.5 | D5*3 D4*.5 D#*.5 |"
    " E*.5 C5 E4*.5 C5 E4*.5 C5*.5 | C*2.5 C*.5 D*.5 D#*.5 | E*.5 C*.5 D*.5 E B4*.5 D5 | C*3 C*.5 D*.5 |"
    " E*.5 C*.5 D*.5 E C*.5 D*.5 C*.5 | E*.5 C*.5 D*.5 E C*.5 D*.5 C*.5 | E*.5 C*.5 D*.5 E B4*.5 D5 | C*3 D4*.5 D#*.5",
    "C*4 F*4 C*2 G7*2 C*4 C*4 F*4 D7*4 G7*4 C*4 F*4 C*2 G7*2 C*4 C*4 F*4 C*2 G7*2 C*4",
)
GREENSLEEVES = Melody(
    150,
    "-*2 A4 | C5*2 D | E*1.5 F*.5 E | D*2 B4 | G*1.5 A*.5 B | C5*2 A4 | A*1.5 G#*.5 A | B*2 G# | E*2 A | C5*2 D |"
    " E*1.5 F*.5 E | D*2 B4 | G*1.5 A*.5 B | C5*1.5 B4*.5 A | G#*1.5 F#*.5 G# | A*3 | A*3 |"
    " G5*3 | G*1.5 F#*.5 E | D*2 B4 | G*1.5 A*.5 B | C5*2 A4 | A*1.5 G#*.5 A | B*2 G# | E*3 |"
    " G5*3 | G*1.5 F#*.5 E | D*2 B4 | G*1.5 A*.5 B | C5*1.5 B4*.5 A | G#*1.5 F#*.5 G# | A*3 | A*2 -",
    "N*3 Am*3 Am*3 G*3 G*3 Am*3 Am*3 E*3 E*3 Am*3 Am*3 G*3 G*3 Am*3 E*3 Am*3 Am*3"
    " C*3 C*3 G*3 G*3 Am*3 Am*3 E*3 E*3 C*3 C*3 G*3 G*3 Am*3 E*3 Am*3 Am*3",
    3,
)
DRUNKEN_SAILOR = Melody(
    170,
    "A4 A*.5 A*.5 A A*.5 A*.5 | A D F A | G G*.5 G*.5 G G*.5 G*.5 | G C E G | A A*.5 A*.5 A A*.5 A*.5 | A B C5 D5 |"
    " C5 A4 G E | D*2 D*2",
    "Dm*4 Dm*4 C*4 C*4 Dm*4 Dm*4 C*4 Dm*4",
)
CLEMENTINE = Melody(
    120,
    "-*2 F4*.5 F*.5 | F C A*.5 A*.5 | A F F*.5 A*.5 | C5 C5 Bb4*.5 A*.5 | G*2 G*.5 A*.5 | Bb Bb A*.5 G*.5 |"
    " A F F*.5 A*.5 | G C E*.5 G*.5 | F*2 -",
    "N*3 F*3 F*3 F*3 C*3 C*3 F*3 C*3 F*3",
    3,
)
LONDON_BRIDGE = Melody(
    150,
    "G4*1.5 A*.5 G F | E F G*2 | D E F*2 | E F G*2 | G*1.5 A*.5 G F | E F G*2 | D*2 G*2 | E C*3",
    "C*4 C*4 G*4 C*4 C*4 C*4 G*4 C*4",
)
MORNING_MOOD = Melody(
    150,
    "B4 G# F# E F# G# | B G# F# E F#*.5 G#*.5 F#*.5 G#*.5 | B G# B C#5 G#4 C#5 | B4 G# F# E*3",
    "E*6 E*6 C#m*6 E*6",
    6,
)
LARGO = Melody(
    72,
    "E4*1.5 G*.5 G*2 | E*1.5 D*.5 C*2 | D*1.5 E*.5 G*1.5 E*.5 | D*4 | E*1.5 G*.5 G*2 | E*1.5 D*.5 C*2 |"
    " D*1.5 E*.5 D*1.5 C*.5 | C*4",
    "C*4 C*4 G*4 G*4 C*4 C*4 G*4 C*4",
)
SCARBOROUGH_FAIR = Melody(
    140,
    "D4*2 D | A*2 A | E*1.5 F*.5 E | D*3 | - A C5 | D5*2 C | A4 B G | A*2 D5 | D*2 D | C*2 A4 | A G F | E C*2 |"
    " D*2 A | G*2 F | E D C | D*3",
    "Dm*3 Dm*3 C*3 Dm*3 Dm*3 F*3 G*3 Dm*3 Dm*3 C*3 F*3 C*3 Dm*3 G*3 C*3 Dm*3",
    3,
)
DECK_THE_HALLS = Melody(
    190,
    "G4*1.5 F*.5 E D | C D E C | D*.5 E*.5 F*.5 D*.5 E*1.5 D*.5 | C B3 C4*2 | G*1.5 F*.5 E D | C D E C |"
    " D*.5 E*.5 F*.5 D*.5 E*1.5 D*.5 | C B3 C4*2 | D*1.5 E*.5 F D | E*1.5 F*.5 G D | E*.5 F#*.5 G A*.5 B*.5 C5 |"
    " B4 A G*2 | G*1.5 F*.5 E D | C D E C | A*.5 A*.5 A*.5 A*.5 G*1.5 F*.5 | E D C*2",
    "C*4 C*4 G*4 C*4 C*4 C*4 G*4 C*4 G*4 C*4 G*4 G*4 C*4 C*4 F*4 C*4",
)
JOY_TO_THE_WORLD = Melody(
    160,
    "C5*2 B4*1.5 A*.5 | G*3 F | E*2 D*2 | C*3 G | A*3 A | B*3 B | C5*4 | - C C B4 | A G G*1.5 F*.5 | E C5 C B4 |"
    " A G G*1.5 F*.5 | E E E E | E*.5 F*.5 G*2 F*.5 E*.5 | D D D D | D*.5 E*.5 F*2 E*.5 D*.5 | C C5*2 A4 |"
    " G*1.5 F*.5 E F | E*2 D*2 | C*4",
    "C*4 C*4 G*4 C*4 F*4 G*4 C*4 C*4 C*4 C*4 C*4 C*4 C*4 G*4 G*4 C*4 C*4 G*4 C*4",
)
GOOD_KING_WENCESLAS = Melody(
    170,
    "C4 C C D | C C G3*2 | A G A B | C4*2 C*2 | C C C D | C C G3*2 | A G A B | C4*2 C*2 | G F E D | E D C*2 |"
    " A3 G A B | C4*2 C*2 | G3 G A B | C4 C D*2 | G F E D | C*2 F*2 | C*4",
    "C*4 C*4 F*4 C*4 C*4 C*4 F*4 C*4 C*4 C*4 F*4 C*4 G*4 C*4 C*4 F*4 C*4",
)
POP_GOES_THE_WEASEL = Melody(
    260,
    "C4*2 C D*2 D | E G E C*2 G3 | C4*2 C D*2 D | E*3 C*2 G3 | C4*2 C D*2 D | E G E C*2 - | A*3 D*2 F | E*3 C*3",
    "C*6 C*6 C*6 C*6 C*6 C*6 F*3 G*3 C*6",
    6,
)
MARY_HAD_A_LITTLE_LAMB = Melody(
    140,
    "E4 D C D | E E E*2 | D D D*2 | E G G*2 | E D C D | E E E E | D D E D | C*4",
    "C*4 C*4 G*4 C*4 C*4 C*4 G*4 C*4",
)
ROW_YOUR_BOAT = Melody(
    190,
    "C4*3 C*3 | C*2 D E*3 | E*2 D E*2 F | G*6 | C5 C C G4 G G | E E E C C C | G*2 F E*2 D | C*6",
    "C*6 C*6 C*6 C*6 C*6 C*6 G*6 C*6",
    6,
)
