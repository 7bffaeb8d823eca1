"""The contents of the demo library: folders, their covers, and each track with its band, manner and melody.

The names show every form that the jukebox splits: number, artist and title in all combinations, underscores for blanks,
no blanks around the dash, an album in between, an ending in capitals, long, short and accented titles.
"""

from typing import NamedTuple

import demo_melodies as tunes
import demo_originals as ours

SAINTS = "Late Night Brass Band"
CLOCK = "Clockwork Orchestra"
ORGAN = "Harbour Lights Organ"
BOX = "The Music Box Company"
PIANO = "Parlour Piano"
WHISTLES = "The Tin Whistles"
FIDDLES = "Village Fiddlers"
SQUARE = "Square Wave Club"
TRIO = "Sundown Trio"
RUE = "Café Rue Basse"
SURF = "The Undertow"
SKA = "The Two Tones"
TAP = "Tap Room Regulars"
BALLROOM = "Clockwork Orchestra/Clockwork Orchestra - Ballroom"


class Folder(NamedTuple):
    """Title and second line on its cover, design, palette, file of the cover ("" for none)."""

    title: str
    artist: str
    design: str
    palette: int
    file: str


FOLDERS = {
    "": Folder("Jukebox", "Demo Library", "record", 0, ""),
    "Brass Band": Folder("Brass Band", SAINTS, "sunburst", 1, "folder.jpg"),
    "Clockwork Orchestra": Folder("Clockwork", CLOCK, "gears", 2, "folder.jpg"),
    BALLROOM: Folder("Ballroom", CLOCK, "ballroom", 4, "folder.jpg"),
    "Harbour Lights Organ": Folder("Harbour Lights", ORGAN, "harbour", 8, "bigcover.png"),
    "Music Box": Folder("Music Box", BOX, "comb", 10, "folder.jpg"),
    "Music Box/Carols": Folder("Carols", BOX, "snow", 0, "folder.jpg"),
    "Music Box/Lullabies": Folder("Lullabies", BOX, "moon", 11, "folder.jpg"),
    "Parlour Piano": Folder("Parlour Piano", "Rags And Minuets", "keys", 3, "folder.jpg"),
    "Saturday Night": Folder("Saturday Night", "Everybody Dance", "record", 5, "folder.jpg"),
    "Square Wave Club": Folder("Square Wave", SQUARE, "grid", 5, "folder.png"),
    "Sundown Lounge": Folder("Sundown Lounge", "Jazz, Bossa And Tango", "sundown", 7, "folder.jpg"),
    "The Tin Whistles": Folder("Tin Whistles", WHISTLES, "hills", 6, "folder.jpg"),
    "Tide And Two Tone": Folder("Tide & Two Tone", "Surf And Ska", "surf", 12, "folder.jpg"),
    "Village Fiddlers": Folder("Village Green", FIDDLES, "bunting", 9, "folder.jpg"),
    "Pictures In Motion": Folder("In Motion", "Two Short Films", "film", 13, "folder.jpg"),
}

# The folders with tracks of several bands: the covers in their tags have the design and palette of the band.
MIXED = ("", "Saturday Night")
BANDS = {
    SAINTS: ("sunburst", 1),
    CLOCK: ("gears", 2),
    ORGAN: ("harbour", 8),
    PIANO: ("keys", 3),
    WHISTLES: ("hills", 6),
    FIDDLES: ("bunting", 9),
    SQUARE: ("grid", 5),
    TRIO: ("sundown", 7),
    RUE: ("ballroom", 10),
    SURF: ("surf", 12),
    SKA: ("surf", 12),
    TAP: ("record", 7),
}

# Folder: (file, band, style, melody). "+" before a file gives the track its own cover next to it.
TRACKS = {
    "": (
        ("01 - The Tin Whistles - Auld Lang Syne.mp3", WHISTLES, "whistles", tunes.AULD_LANG_SYNE),
        ("Amazing_Grace.mp3", ORGAN, "hymn", tunes.AMAZING_GRACE),
        ("1820 - Greensleeves.mp3", FIDDLES, "quartet", tunes.GREENSLEEVES),
        ("Village Fiddlers - Scarborough Fair.wma", FIDDLES, "fiddles", tunes.SCARBOROUGH_FAIR),
    ),
    "Brass Band": (
        ("01 - Late Night Brass Band - When The Saints Go Marching In.mp3", SAINTS, "dixie", tunes.WHEN_THE_SAINTS),
        ("02 - Late Night Brass Band - Oh Susanna.mp3", SAINTS, "dixie", tunes.OH_SUSANNA),
        ("03 - Late Night Brass Band - Camptown Races.mp3", SAINTS, "dixie", tunes.CAMPTOWN_RACES),
        ("04 - Late Night Brass Band - Yankee Doodle.mp3", SAINTS, "march", tunes.YANKEE_DOODLE),
        ("Late Night Brass Band - Ode To Joy.wma", SAINTS, "march", tunes.ODE_TO_JOY),
        ("The_Can_Can.wav", SAINTS, "march", tunes.CAN_CAN),
    ),
    BALLROOM: (
        ("Clockwork Orchestra - The Blue Danube.mp3", CLOCK, "orchestra", tunes.BLUE_DANUBE),
        ("Clockwork Orchestra - Swan Lake.mp3", CLOCK, "orchestra", tunes.SWAN_LAKE),
        ("Clockwork Orchestra - In The Hall Of The Mountain King And Out Again.mp3", CLOCK, "orchestra", tunes.MOUNTAIN_KING),
        ("07 - Korobeiniki.mp3", CLOCK, "quartet", tunes.KOROBEINIKI),
        ("08 - A Little Night Music.wma", CLOCK, "quartet", tunes.NACHTMUSIK),
        ("09 - Canon.mp3", CLOCK, "quartet", tunes.CANON),
        ("10-Clockwork Orchestra-Morning Mood.mp3", CLOCK, "orchestra", tunes.MORNING_MOOD),
    ),
    "Harbour Lights Organ": (
        ("Harbour Lights Organ - Live At The Pier - Largo.mp3", ORGAN, "hymn", tunes.LARGO),
        ("Ode_To_Joy.mp3", ORGAN, "organ", tunes.ODE_TO_JOY),
        ("02 - Joy To The World.mp3", ORGAN, "organ", tunes.JOY_TO_THE_WORLD),
        ("03 - Silent Night.mp3", ORGAN, "hymn", tunes.SILENT_NIGHT),
        ("04 - Scarborough Fair.MP3", ORGAN, "organ", tunes.SCARBOROUGH_FAIR),
    ),
    "Music Box/Carols": (
        ("The Music Box Company - Jingle Bells.mp3", BOX, "box", tunes.JINGLE_BELLS),
        ("The Music Box Company - Silent Night.mp3", BOX, "box", tunes.SILENT_NIGHT),
        ("The Music Box Company - We Wish You A Merry Christmas.mp3", BOX, "box", tunes.MERRY_CHRISTMAS),
        ("O_Tannenbaum.flac", BOX, "box", tunes.O_TANNENBAUM),
        ("Deck_The_Halls.mp3", BOX, "box", tunes.DECK_THE_HALLS),
        ("Good King Wenceslas.mp3", BOX, "box", tunes.GOOD_KING_WENCESLAS),
    ),
    "Music Box/Lullabies": (
        ("01 - Frère Jacques.mp3", BOX, "box", tunes.FRERE_JACQUES),
        ("02 - Twinkle Twinkle Little Star.mp3", BOX, "box", tunes.TWINKLE),
        ("03 - Lullaby.mp3", BOX, "box", tunes.LULLABY),
        ("04 - Au Clair De La Lune.wma", BOX, "box", tunes.AU_CLAIR_DE_LA_LUNE),
        ("05 - Row Row Row Your Boat.mp3", BOX, "box", tunes.ROW_YOUR_BOAT),
        ("06 - Mary Had A Little Lamb.mp3", BOX, "box", tunes.MARY_HAD_A_LITTLE_LAMB),
    ),
    "Parlour Piano": (
        ("+Parlour Piano - The Entertainer.mp3", PIANO, "rag", tunes.ENTERTAINER),
        ("+03 - Parlour Piano - Minuet In G.mp3", PIANO, "parlour", tunes.MINUET),
        ("05 - Für Elise.flac", PIANO, "parlour", tunes.FUR_ELISE),
        ("+Greensleeves_My_Love.mp3", PIANO, "parlour", tunes.GREENSLEEVES),
        ("+Parlour Piano - Largo.wma", PIANO, "parlour", tunes.LARGO),
        ("+Parlour Piano - Clementine.mp3", PIANO, "barrelhouse", tunes.CLEMENTINE),
        ("Canon.mp3", PIANO, "parlour", tunes.CANON),
        ("Parlour Piano - Sawdust Rag.mp3", PIANO, "rag", ours.SAWDUST_RAG),
    ),
    "Saturday Night": (
        ("01 - Late Night Brass Band - London Bridge.mp3", SAINTS, "dixie", tunes.LONDON_BRIDGE),
        ("02 - The Undertow - William Tell.mp3", SURF, "surf", ours.WILLIAM_TELL),
        ("03 - Village Fiddlers - Yankee Doodle.mp3", FIDDLES, "fiddles", tunes.YANKEE_DOODLE),
        ("04 - Clockwork Orchestra - Can Can.mp3", CLOCK, "orchestra", tunes.CAN_CAN),
        ("05 - Parlour Piano - When The Saints Go Marching In.mp3", PIANO, "barrelhouse", tunes.WHEN_THE_SAINTS),
        ("06 - The Tin Whistles - Drunken Sailor.mp3", WHISTLES, "whistles", tunes.DRUNKEN_SAILOR),
        ("07 - Sundown Trio - Late Tram Blues.mp3", TRIO, "jazz", ours.LATE_TRAM_BLUES),
        ("08 - The Two Tones - La Cucaracha.mp3", SKA, "ska", ours.LA_CUCARACHA),
        ("09 - Square Wave Club - Für Elise.mp3", SQUARE, "chip", tunes.FUR_ELISE),
        ("10 - Village Fiddlers - Oh Susanna.mp3", FIDDLES, "fiddles", tunes.OH_SUSANNA),
        ("11 - Café Rue Basse - Midnight Tram.mp3", RUE, "tango", ours.MIDNIGHT_TRAM),
        ("12 - Tap Room Regulars - Harbour Mist.mp3", TAP, "blues", ours.HARBOUR_MIST),
        ("13 - Late Night Brass Band - Toreador.mp3", SAINTS, "march", ours.TOREADOR),
        ("14 - Parlour Piano - Boiler Room Boogie.mp3", PIANO, "barrelhouse", ours.BOILER_ROOM_BOOGIE),
        ("15 - Village Fiddlers - Pop Goes The Weasel.mp3", FIDDLES, "fiddles", tunes.POP_GOES_THE_WEASEL),
    ),
    "Square Wave Club": (
        ("108 - Korobeiniki.mp3", SQUARE, "chip", tunes.KOROBEINIKI),
        ("Square Wave Club - A Little Night Music.mp3", SQUARE, "chip", tunes.NACHTMUSIK),
        ("Square Wave Club - Row Row Row Your Boat.mp3", SQUARE, "chip", tunes.ROW_YOUR_BOAT),
        ("Hall_Of_The_Mountain_King.mp3", SQUARE, "chip", tunes.MOUNTAIN_KING),
        ("Square Wave Club - Neon Avenue.mp3", SQUARE, "pop", ours.NEON_AVENUE),
    ),
    "Sundown Lounge": (
        ("01 - Sundown Trio - Last Orders.mp3", TRIO, "jazz", ours.LAST_ORDERS),
        ("02 - Sundown Trio - Rain On The Awning.mp3", TRIO, "bossa", ours.RAIN_ON_THE_AWNING),
        ("03 - Sundown Trio - Copper Sun.mp3", TRIO, "bossa", ours.COPPER_SUN),
        ("04 - Café Rue Basse - Habanera.mp3", RUE, "tango", ours.HABANERA),
        ("05 - Café Rue Basse - Rue Basse.mp3", RUE, "musette", ours.RUE_BASSE),
    ),
    "The Tin Whistles": (
        ("01 - Drunken Sailor.mp3", WHISTLES, "whistles", tunes.DRUNKEN_SAILOR),
        ("02 - Scarborough Fair.mp3", WHISTLES, "whistles", tunes.SCARBOROUGH_FAIR),
        ("03 - Mary Had A Little Lamb.mp3", WHISTLES, "whistles", tunes.MARY_HAD_A_LITTLE_LAMB),
        ("04 - High Street Jig.mp3", WHISTLES, "whistles", ours.HIGH_STREET_JIG),
        ("The Tin Whistles - London Bridge.mp3", WHISTLES, "whistles", tunes.LONDON_BRIDGE),
    ),
    "Tide And Two Tone": (
        ("The Undertow - Breaker Row.mp3", SURF, "surf", ours.BREAKER_ROW),
        ("The Undertow - Tide Table.mp3", SURF, "surf", ours.TIDE_TABLE),
        ("The Two Tones - Two Tone Tuesday.mp3", SKA, "ska", ours.TWO_TONE_TUESDAY),
    ),
    "Village Fiddlers": (
        ("01 - Village Fiddlers - Camptown Races.mp3", FIDDLES, "fiddles", tunes.CAMPTOWN_RACES),
        ("02 - Village Fiddlers - Auld Lang Syne.mp3", FIDDLES, "fiddles", tunes.AULD_LANG_SYNE),
        ("03 - Village Fiddlers - Drunken Sailor.wma", FIDDLES, "fiddles", tunes.DRUNKEN_SAILOR),
        ("04 - Village Fiddlers - Kitchen Reel.mp3", FIDDLES, "fiddles", ours.KITCHEN_REEL),
        ("Clementine.mp3", FIDDLES, "fiddles", tunes.CLEMENTINE),
    ),
}

# File, band, style, melody, film.
VIDEOS = (
    ("Pictures In Motion/Square Wave Club - Glass Elevator.avi", SQUARE, "pop", ours.GLASS_ELEVATOR, "city"),
    ("Pictures In Motion/Clockwork Orchestra - Minuet In G.mpg", CLOCK, "quartet", tunes.MINUET, "clockwork"),
)

# The saved playlist, as paths below the library.
PARTY = (
    "Brass Band/01 - Late Night Brass Band - When The Saints Go Marching In.mp3",
    "Saturday Night/06 - The Tin Whistles - Drunken Sailor.mp3",
    "Square Wave Club/108 - Korobeiniki.mp3",
    "Parlour Piano/Parlour Piano - The Entertainer.mp3",
    f"{BALLROOM}/Clockwork Orchestra - The Blue Danube.mp3",
    "Village Fiddlers/01 - Village Fiddlers - Camptown Races.mp3",
    "Harbour Lights Organ/02 - Joy To The World.mp3",
    "01 - The Tin Whistles - Auld Lang Syne.mp3",
)
