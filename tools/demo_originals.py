"""Our own tunes for the demo library, and a few old ones in the same notation for the bands of the bar."""

from demo_melodies import Melody

# Jazz -------------------------------------------------------------------------------------------------------------

ORDERS = (
    " -*.5 C5*.5 A4*.5 C5*.5 D C*.5 A4*.5 | Bb*1.5 G*.5 E*2 | -*.5 A*.5 G*.5 A*.5 Bb A*.5 F*.5 | D*3 - |"
    " -*.5 D5*.5 C*.5 D*.5 F D*.5 C*.5 | Bb4*1.5 G*.5 E G | A*.5 C5*.5 A4*.5 F*.5 G E | F*3 - |"
)
ORDERS_CHORDS = " F6*4 C7*4 F6*2 D7*2 Gm7*4 Bb6*4 C7*4 F6*2 C7*2 F6*4"
LAST_ORDERS = Melody(
    150,
    ORDERS + " D5*1.5 C*.5 D F | D*1.5 C*.5 A4*2 | C5*1.5 Bb4*.5 C5 Eb | C*3 - |"
    " B4*1.5 A*.5 B D5 | B4*1.5 A*.5 G*2 | Bb A*.5 G*.5 F E | G*3 - |" + ORDERS,
    ORDERS_CHORDS + " Dm7*4 Dm7*4 Cm7*4 F7*4 G7*4 G7*4 Gm7*4 C7*4" + ORDERS_CHORDS,
)
LATE_TRAM_BLUES = Melody(
    156,
    "C5*.5 A4*.5 C5 Eb*.5 C*.5 A4 | G*.5 A*.5 C5 -*2 | C*.5 A4*.5 C5 Eb*.5 C*.5 A4 | F*3 - | D5*.5 Bb4*.5 D5 F*.5 D*.5 Bb4 |"
    " Ab*.5 Bb*.5 D5 -*2 | C*.5 A4*.5 C5 Eb*.5 C*.5 A4 | F#*3 - | G*.5 Bb*.5 D5 C*.5 Bb4*.5 G | E*.5 G*.5 Bb A*.5 G*.5 E |"
    " F*.5 A*.5 C5 Eb D | C*1.5 A4*.5 F*2",
    "F9*4 Bb9*4 F9*4 F9*4 Bb9*4 Bb9*4 F9*4 D7*4 Gm7*4 C7*4 F9*2 D7*2 F9*4",
)
RAIN_ON_THE_AWNING = Melody(
    132,
    "E5*1.5 D*.5 C B4 | A*1.5 B*.5 C5*2 | D*1.5 C*.5 B4 A | G#*3 - | E5*1.5 D*.5 C B4 | A*1.5 C5*.5 E*2 | F*1.5 E*.5 D C |"
    " B4*3 - | C5*1.5 D*.5 E G | F*1.5 E*.5 D*2 | B4*1.5 C5*.5 D F | E*3 - | A4*.5 B*.5 C5 D*.5 E*.5 F | E*1.5 D*.5 C B4 |"
    " A*.5 B*.5 C5 B4*.5 A*.5 G# | A*4",
    "Am7*4 Am7*4 Dm7*4 E7*4 Am7*4 Am7*4 Dm7*4 G7*4 Cmaj7*4 Dm7*4 G7*4 Cmaj7*4 Dm7*4 Am7*4 E7*4 Am7*4",
)
COPPER_SUN = Melody(
    138,
    "F#4*1.5 A*.5 C#5*2 | B4*1.5 A*.5 F#*2 | G*1.5 B*.5 D5*2 | C#*3 - | B4*1.5 D5*.5 F#*2 | E*1.5 D*.5 C#*2 |"
    " D*.5 C#*.5 B4 A G | A*3 - | F#*1.5 A*.5 C#5*2 | B4*1.5 A*.5 F#*2 | G*1.5 B*.5 D5*2 | F#*3 - | G*1.5 F#*.5 E D |"
    " C#*1.5 D*.5 E C# | D*4 | D*3 -",
    "Dmaj7*4 Bm7*4 Em7*4 A7*4 Bm7*4 Em7*4 Gmaj7*4 A7*4 Dmaj7*4 Bm7*4 Em7*4 Bm7*4 Em7*4 A7*4 Dmaj7*4 Dmaj7*4",
)

# Surf, ska, pop ---------------------------------------------------------------------------------------------------

BREAKER_ROW = Melody(
    168,
    "E4 E*.5 F#*.5 G F# | E B3 D4 E | E E*.5 F#*.5 G A | B*4 | C5 B4*.5 A*.5 G A | B A*.5 G*.5 F#*2 | G F#*.5 E*.5 D F# |"
    " E*4 | B*2 G*.5 A*.5 B | C5*2 A4*2 | B*2 G*.5 F#*.5 E | F#*4 | G*2 E*.5 F#*.5 G | A*2 C5*2 | B4 A G F# | E*4",
    "Em*4 Em*4 Em*4 B7*4 Am*4 Em*4 D*4 Em*4 G*4 C*4 G*4 B7*4 C*4 Am*4 B7*4 Em*4",
)
TIDE_TABLE = Melody(
    164,
    "C#5*1.5 B4*.5 A E | F#*1.5 A*.5 E*2 | C#5*1.5 B4*.5 A C#5 | B4*4 | D5*1.5 C#*.5 B4 F# | A*1.5 C#5*.5 E*2 |"
    " D C# B4 G# | A*4 | F#*2 A*2 | C#5*2 A4*2 | B*2 D5*2 | E*4 | F# E D C# | B4 D5 C# B4 | C#5 A4 B G# | A*4",
    "A*4 D*4 A*4 E*4 Bm*4 A*4 E*4 A*4 F#m*4 A*4 Bm*4 E*4 D*4 Bm*4 E*4 A*4",
)
GALLOP = "G4*.5 G*.25 G*.25 G*.5 G*.25 G*.25 C5*.5 D*.5 E*.5 G4*.25 G*.25 |"
# The gallop of the overture by Gioachino Rossini (1792-1868); the second half is ours.
WILLIAM_TELL = Melody(
    138,
    GALLOP + " G*.5 G*.25 G*.25 G*.5 G*.25 G*.25 C5*.25 E*.75 D*.5 B4*.5 |" + GALLOP +
    " G*.5 C5*.5 E*.5 D*.25 D*.25 C*.5 C*.25 C*.25 C | E*.5 E*.25 E*.25 E*.5 D*.5 C*.5 C*.25 C*.25 C*.5 B4*.5 |"
    " A*.5 A*.25 A*.25 A*.5 C5*.5 B4*.5 A*.5 G | E5*.5 E*.25 E*.25 E*.5 G*.5 F*.5 F*.25 F*.25 F*.5 A*.5 | G*.5 F*.5 E*.5 D*.5 C*2",
    "C*4 C*2 G*2 C*4 C*4 Am*4 F*2 G*2 C*2 F*2 G*2 C*2",
)  # fmt: skip
NEON_AVENUE = Melody(
    118,
    "E5*1.5 D*.5 C*.5 D*.5 E | A4*3 G*.5 A*.5 | C5*1.5 B4*.5 C5*.5 D*.5 E | D*4 | E*1.5 D*.5 C*.5 D*.5 E | A*3 G*.5 E*.5 |"
    " F*1.5 E*.5 D*.5 C*.5 D | E*4 | A G*.5 E*1.5 D*.5 E*.5 | C*2 D*.5 E*1.5 | G E*.5 D*1.5 C*.5 D*.5 | B4*3 - |"
    " A5 G*.5 E*1.5 D*.5 E*.5 | F*2 E*.5 D*1.5 | C B4*.5 C5*1.5 B4 | A*4",
    "Am*4 F*4 C*4 G*4 Am*4 F*4 Dm*4 E*4 F*4 C*4 C*4 G*4 F*4 Dm*4 E*4 Am*4",
)
GLASS_ELEVATOR = Melody(
    124,
    "G4*.5 C5*.5 E D*.5 C*.5 D | E*1.5 G*.5 E*2 | D*.5 E*.5 D*.5 C*.5 A4 C5 | D*3 - | G4*.5 C5*.5 E D*.5 C*.5 D |"
    " E*1.5 A*.5 G*2 | F*.5 E*.5 D*.5 C*.5 B4 D5 | C*3 - | A4 C5*.5 D*.5 E*2 | D*.5 C*.5 D*.5 E*.5 G*2 | A G*.5 E*.5 D*2 |"
    " E*3 - | A4 C5*.5 D*.5 E*2 | F*.5 E*.5 D*.5 E*.5 F*2 | G F*.5 E*.5 D B4 | C5*4",
    "C*4 Am*4 F*4 G*4 C*4 Am*4 G*4 C*4 Am*4 Em*4 F*4 C*4 Am*4 Dm*4 G*4 C*4",
)
TWO_TONE_TUESDAY = Melody(
    152,
    "B4*.5 D5*.5 B4*.5 D5*.5 E D | B4*.5 A*.5 G B*2 | C5*.5 E*.5 C*.5 E*.5 F# E | D*4 | B4*.5 D5*.5 B4*.5 D5*.5 E D |"
    " G F#*.5 E*.5 D*2 | C B4*.5 A*.5 B A*.5 F#*.5 | G*3 - | E5*1.5 D*.5 E G | E*2 D B4 | C5*1.5 B4*.5 C5 E | D*4 |"
    " E*1.5 D*.5 E G | F# E*.5 D*.5 E*2 | C B4 A F# | G*4",
    "G*4 G*4 C*4 D*4 G*4 Em*4 D7*4 G*4 Em*4 Em*4 Am*4 D*4 Em*4 Bm*4 D7*4 G*4",
)
# Traditional.
LA_CUCARACHA = Melody(
    156,
    "-*2.5 C4*.5 C*.5 C*.5 | F*1.5 A C*.5 C*.5 C*.5 | F*1.5 A*2.5 | F F*.5 E*.5 E*.5 D*.5 D | C*2.5 C*.5 C*.5 C*.5 |"
    " E*1.5 G C*.5 C*.5 C*.5 | E*1.5 G*2.5 | C5 D*.5 C*.5 Bb4*.5 A*.5 G | F*4",
    "N*4 F*4 F*4 F*4 C7*4 C7*4 C7*4 C7*4 F*4",
)

# Tap room ---------------------------------------------------------------------------------------------------------

HARBOUR_MIST = Melody(
    116,
    "-*.5 E5*.5 G*.5 E*.5 D*.5 C*.5 A4 | C5*1.5 A4*.5 G A | -*.5 E5*.5 G*.5 E*.5 D*.5 C*.5 A4 | A*3 - |"
    " -*.5 E5*.5 G*.5 E*.5 D*.5 C*.5 A4 | C5*1.5 D*.5 C A4 | -*.5 E5*.5 G*.5 E*.5 D*.5 C*.5 A4 | A*3 - |"
    " B*.5 D5*.5 E D*.5 B4*.5 G# | A*.5 C5*.5 D C*.5 A4*.5 F# | A*.5 C5*.5 A4*.5 G*.5 E G | A*4",
    "A7*4 D7*4 A7*4 A7*4 D7*4 D7*4 A7*4 A7*4 E7*4 D7*4 A7*2 E7*2 A7*4",
)
SAWDUST_RAG = Melody(
    150,
    "G4*.5 C5*.5 E C*.5 E G4*.5 | A*.5 C5*.5 E C*.5 E D*.5 | B4*.5 D5*.5 F D*.5 F E*.5 | E*.5 D*.5 C B4*.5 A*.5 G |"
    " G*.5 C5*.5 E C*.5 E G4*.5 | A*.5 C5*.5 F A*.5 G*.5 F | E*.5 C*.5 D*.5 E B4*.5 D5 | C*3 - |"
    " A*.5 G*.5 F#*.5 G*1.5 E | F*.5 E*.5 D#*.5 E*1.5 C | D*.5 E*.5 D*.5 B4 G*.5 A*.5 B*.5 | C5*.5 E*.5 G*2 - |"
    " A*.5 G*.5 F#*.5 G*1.5 E | A*.5 G*.5 F*.5 A*1.5 F | E*.5 C*.5 D*.5 E B4*.5 D5 | C*4",
    "C*4 F*4 G7*4 C*2 G7*2 C*4 F*4 C*2 G7*2 C*4 C*4 Am*4 G7*4 C*4 C*4 F*4 C*2 G7*2 C*4",
)
BOILER_ROOM_BOOGIE = Melody(
    168,
    "G4*.5 B*.5 D5 E*.5 D*.5 B4 | G*.5 B*.5 D5 E*.5 F*.5 D | G4*.5 B*.5 D5 E*.5 D*.5 B4 | G*.5 F*.5 D*.5 F*.5 G*2 |"
    " C5*.5 E*.5 G A*.5 G*.5 E | C*.5 E*.5 G Bb*.5 A*.5 G | G4*.5 B*.5 D5 E*.5 D*.5 B4 | G*.5 F*.5 D*.5 F*.5 G*2 |"
    " D5*.5 F#*.5 A B*.5 A*.5 F# | C*.5 E*.5 G A*.5 G*.5 E | D*.5 B4*.5 G*.5 Bb*.5 B A*.5 F*.5 | G*4",
    "G7*4 G7*4 G7*4 G7*4 C7*4 C7*4 G7*4 G7*4 D7*4 C7*4 G7*2 D7*2 G*4",
)
RUE_BASSE = Melody(
    190,
    "E5 E F | E*2 C | A4 C5 E | A*3 | G G A | G*2 E | C E G | F*3 | F E D | A*2 F | E D C | E*2 C | B4 C5 D | E G#4 B | A*3 |"
    " -*3 | G5 F# G | E*2 C | D C# D | A4*3 | B C5 D | F*2 D | E D# E | C*3 | G F# G | E*2 C | F E F | D*3 | E D C |"
    " B4 A G# | A*3 | A*3",
    "Am*3 Am*3 Am*3 Am*3 C*3 C*3 C*3 Dm*3 Dm*3 Dm*3 Am*3 Am*3 E7*3 E7*3 Am*3 Am*3"
    " C*3 C*3 Dm*3 Dm*3 G7*3 G7*3 C*3 C*3 C*3 C*3 F*3 Dm*3 Am*3 E7*3 Am*3 Am*3",
    3,
)
MIDNIGHT_TRAM = Melody(
    124,
    "A4*.5 D5*.5 F*1.5 E*.5 D | C#*.5 E*.5 A4*3 | A*.5 C#5*.5 E*1.5 D*.5 C# | D*1.5 C*.5 A4*2 | Bb*.5 D5*.5 G*1.5 F*.5 E |"
    " F*.5 E*.5 D*3 | E*.5 D*.5 C# B4 C#5 | D*3 - | F*2 E*.5 F*.5 G | A*1.5 G*.5 F*2 | E*2 D*.5 E*.5 F | G*1.5 F*.5 E*2 |"
    " D*2 C*.5 D*.5 E | F*1.5 E*.5 D*2 | C#*.5 D*.5 E G F*.5 E*.5 | D*3 -",
    "Dm*4 A7*4 A7*4 Dm*4 Gm*4 Dm*4 A7*4 Dm*4 F*4 Dm*4 C*4 C7*4 Bb*4 Dm*4 A7*4 Dm*4",
)
LOVE = (
    "D5*.5 C#*.5 C*.5 C*.5 B4*.5 Bb*.5 A*.5 A*.5 | G#*.5 G*.5 F*.5 G*.5 A*.5 G*.5 F*.5 E*.5 |"
    " D5*.5 C#*.5 C*.5 C*.5 B4*.5 Bb*.5 A*.5 A*.5 | G#*.5 G*.5 F*.5 E*.5 F*.5 E*.5 D |"
)
# After the aria by Georges Bizet (1838-1875); the middle part is ours.
HABANERA = Melody(
    116,
    LOVE + " F#5*1.5 E*.5 D A4 | B*1.5 D5*.5 A4*2 | G*.5 B*.5 D5 C# B4 | A*4 |" + LOVE,
    "Dm*4 Dm*2 A7*2 Dm*4 A7*2 Dm*2 D*4 G*2 D*2 G*2 A7*2 A7*4 Dm*4 Dm*2 A7*2 Dm*4 A7*2 Dm*2",
)
# After the song by Georges Bizet; the second line is ours.
TOREADOR = Melody(
    112,
    "C5 D*.75 C*.25 A4 A | A*.75 G*.25 A*.75 Bb*.25 A*2 | Bb G*.75 C5*.25 A4*2 | F D*.75 G*.25 C*2 |"
    " G*1.5 D5*.5 C Bb4 | A*.75 G*.25 A*.75 Bb*.25 A*2 | G A*.75 Bb*.25 C5 E4 | F*4",
    "F*4 F*4 C7*2 F*2 Dm*2 C*2 C7*4 F*4 C7*4 F*4",
)
HIGH_STREET_JIG = Melody(
    330,
    "F#4 A D5 F#*2 D | E C# A4 A*3 | B D5 G F#*2 D | E*3 A4*3 | F# A D5 F#*2 D | E C# A4 A*2 G | F# A D5 E C# A4 | D5*6 |"
    " A F# D F#*2 D | G F# E D*3 | B4 D5 F# G*2 E | C#*3 A4*3 | A5 F# D F#*2 D | G F# E D*2 B4 | A D5 F# E C# A4 | D5*6",
    "D*6 A*6 G*3 D*3 A*6 D*6 A*6 D*3 A*3 D*6 D*6 G*6 Em*6 A*6 D*6 G*6 D*3 A*3 D*6",
    6,
)
KITCHEN_REEL = Melody(
    200,
    "A4*.5 B*.5 C#5*.5 E*.5 F#*.5 E*.5 C#*.5 E*.5 | F#*.5 A*.5 E*.5 C#*.5 B4*.5 C#5*.5 B4*.5 A*.5 |"
    " D5*.5 C#*.5 D*.5 F#*.5 A*.5 F#*.5 D*.5 F#*.5 | E*.5 C#*.5 A4*.5 C#5*.5 B4 E |"
    " A*.5 B*.5 C#5*.5 E*.5 F#*.5 E*.5 C#*.5 E*.5 | F#*.5 A*.5 E*.5 C#*.5 B4*.5 C#5*.5 B4*.5 A*.5 |"
    " D5*.5 C#*.5 D*.5 F#*.5 A*.5 F#*.5 D*.5 F#*.5 | E*.5 C#*.5 B4*.5 G#*.5 A*2 |"
    " E5 A*.5 G#*.5 A E | F#*.5 E*.5 D*.5 C#*.5 D*2 | B4*.5 C#5*.5 D*.5 F#*.5 E D*.5 B4*.5 | C#5*.5 D*.5 E*.5 C#*.5 A4*2 |"
    " E5 A*.5 G#*.5 A E | F#*.5 G#*.5 A*.5 F#*.5 E*2 | D*.5 C#*.5 B4*.5 D5*.5 C#*.5 B4*.5 A*.5 G#*.5 | A*4",
    "A*4 A*2 E*2 D*4 A*2 E*2 A*4 A*2 E*2 D*4 E*2 A*2 A*4 D*4 E*4 A*4 A*4 D*2 A*2 E*4 A*4",
)
