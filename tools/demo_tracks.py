"""The contents of the demo library: folders, their covers, and each track with its band and melody.

The names show every form that the jukebox splits: number, artist and title in all combinations, underscores for blanks,
no blanks around the dash, an album in between, an ending in capitals, long, short and accented titles.
"""

from typing import NamedTuple

import demo_melodies as tunes

SAINTS = "Late Night Brass Band"
CLOCK = "Clockwork Orchestra"
ORGAN = "Harbour Lights Organ"
BOX = "The Music Box Company"
PIANO = "Parlour Piano"
WHISTLES = "The Tin Whistles"
FIDDLES = "Village Fiddlers"
SQUARE = "Square Wave Club"
BALLROOM = "Clockwork Orchestra/Clockwork Orchestra - Ballroom"


class Folder(NamedTuple):
    """Title and second line on its cover, motif, palette, file of the cover ("" for none)."""

    title: str
    artist: str
    motif: str
    palette: int
    file: str


FOLDERS = {
    "": Folder("Jukebox", "Demo Library", "sunburst", 0, ""),
    "Brass Band": Folder("Brass Band", SAINTS, "sunburst", 1, "folder.jpg"),
    "Clockwork Orchestra": Folder("Clockwork", CLOCK, "gears", 2, "folder.jpg"),
    BALLROOM: Folder("Ballroom", CLOCK, "waves", 4, "folder.jpg"),
    "Harbour Lights Organ": Folder("Harbour Lights", ORGAN, "pipes", 8, "bigcover.png"),
    "Music Box": Folder("Music Box", BOX, "stars", 0, "folder.jpg"),
    "Music Box/Carols": Folder("Carols", BOX, "stars", 1, "folder.jpg"),
    "Music Box/Lullabies": Folder("Lullabies", BOX, "hills", 4, "folder.jpg"),
    "Parlour Piano": Folder("Parlour Piano", "Rags And Minuets", "keys", 3, "folder.jpg"),
    "Saturday Night": Folder("Saturday Night", "Everybody Dance", "record", 5, "folder.jpg"),
    "Square Wave Club": Folder("Square Wave", SQUARE, "blocks", 5, "folder.png"),
    "The Tin Whistles": Folder("Tin Whistles", WHISTLES, "hills", 6, "folder.jpg"),
    "Village Fiddlers": Folder("Village Green", FIDDLES, "stripes", 9, "folder.jpg"),
    "Pictures In Motion": Folder("In Motion", "Two Short Films", "stripes", 7, "folder.jpg"),
}

# Folder: (file, band, melody). "+" before a file gives the track its own cover next to it.
TRACKS = {
    "": (
        ("01 - The Tin Whistles - Auld Lang Syne.mp3", WHISTLES, tunes.AULD_LANG_SYNE),
        ("Amazing_Grace.mp3", ORGAN, tunes.AMAZING_GRACE),
        ("1820 - Greensleeves.mp3", FIDDLES, tunes.GREENSLEEVES),
        ("Village Fiddlers - Scarborough Fair.wma", FIDDLES, tunes.SCARBOROUGH_FAIR),
    ),
    "Brass Band": (
        ("01 - Late Night Brass Band - When The Saints Go Marching In.mp3", SAINTS, tunes.WHEN_THE_SAINTS),
        ("02 - Late Night Brass Band - Oh Susanna.mp3", SAINTS, tunes.OH_SUSANNA),
        ("03 - Late Night Brass Band - Camptown Races.mp3", SAINTS, tunes.CAMPTOWN_RACES),
        ("04 - Late Night Brass Band - Yankee Doodle.mp3", SAINTS, tunes.YANKEE_DOODLE),
        ("Late Night Brass Band - Ode To Joy.wma", SAINTS, tunes.ODE_TO_JOY),
        ("The_Can_Can.wav", SAINTS, tunes.CAN_CAN),
    ),
    BALLROOM: (
        ("Clockwork Orchestra - The Blue Danube.mp3", CLOCK, tunes.BLUE_DANUBE),
        ("Clockwork Orchestra - Swan Lake.mp3", CLOCK, tunes.SWAN_LAKE),
        ("Clockwork Orchestra - In The Hall Of The Mountain King And Out Again.mp3", CLOCK, tunes.MOUNTAIN_KING),
        ("07 - Korobeiniki.flac", CLOCK, tunes.KOROBEINIKI),
        ("08 - A Little Night Music.wma", CLOCK, tunes.NACHTMUSIK),
        ("09 - Canon.mp3", CLOCK, tunes.CANON),
        ("10-Clockwork Orchestra-Morning Mood.mp3", CLOCK, tunes.MORNING_MOOD),
    ),
    "Harbour Lights Organ": (
        ("Harbour Lights Organ - Live At The Pier - Largo.mp3", ORGAN, tunes.LARGO),
        ("Ode_To_Joy.mp3", ORGAN, tunes.ODE_TO_JOY),
        ("02 - Joy To The World.mp3", ORGAN, tunes.JOY_TO_THE_WORLD),
        ("03 - Silent Night.flac", ORGAN, tunes.SILENT_NIGHT),
        ("04 - Scarborough Fair.MP3", ORGAN, tunes.SCARBOROUGH_FAIR),
    ),
    "Music Box/Carols": (
        ("The Music Box Company - Jingle Bells.mp3", BOX, tunes.JINGLE_BELLS),
        ("The Music Box Company - Silent Night.mp3", BOX, tunes.SILENT_NIGHT),
        ("The Music Box Company - We Wish You A Merry Christmas.mp3", BOX, tunes.MERRY_CHRISTMAS),
        ("O_Tannenbaum.flac", BOX, tunes.O_TANNENBAUM),
        ("Deck_The_Halls.mp3", BOX, tunes.DECK_THE_HALLS),
        ("Good King Wenceslas.mp3", BOX, tunes.GOOD_KING_WENCESLAS),
    ),
    "Music Box/Lullabies": (
        ("01 - Frère Jacques.mp3", BOX, tunes.FRERE_JACQUES),
        ("02 - Twinkle Twinkle Little Star.mp3", BOX, tunes.TWINKLE),
        ("03 - Lullaby.mp3", BOX, tunes.LULLABY),
        ("04 - Au Clair De La Lune.wma", BOX, tunes.AU_CLAIR_DE_LA_LUNE),
        ("05 - Row Row Row Your Boat.mp3", BOX, tunes.ROW_YOUR_BOAT),
        ("06 - Mary Had A Little Lamb.mp3", BOX, tunes.MARY_HAD_A_LITTLE_LAMB),
    ),
    "Parlour Piano": (
        ("+Parlour Piano - The Entertainer.mp3", PIANO, tunes.ENTERTAINER),
        ("+03 - Parlour Piano - Minuet In G.mp3", PIANO, tunes.MINUET),
        ("05 - Für Elise.flac", PIANO, tunes.FUR_ELISE),
        ("+Greensleeves_My_Love.mp3", PIANO, tunes.GREENSLEEVES),
        ("+Parlour Piano - Largo.wma", PIANO, tunes.LARGO),
        ("+Parlour Piano - Clementine.mp3", PIANO, tunes.CLEMENTINE),
        ("Canon.mp3", PIANO, tunes.CANON),
    ),
    "Saturday Night": (
        ("01 - Late Night Brass Band - Clementine.mp3", SAINTS, tunes.CLEMENTINE),
        ("02 - Square Wave Club - Jingle Bells.mp3", SQUARE, tunes.JINGLE_BELLS),
        ("03 - Village Fiddlers - Yankee Doodle.mp3", FIDDLES, tunes.YANKEE_DOODLE),
        ("04 - Clockwork Orchestra - Can Can.mp3", CLOCK, tunes.CAN_CAN),
        ("05 - Parlour Piano - When The Saints Go Marching In.mp3", PIANO, tunes.WHEN_THE_SAINTS),
        ("06 - The Tin Whistles - Drunken Sailor.mp3", WHISTLES, tunes.DRUNKEN_SAILOR),
        ("07 - Harbour Lights Organ - Minuet In G.mp3", ORGAN, tunes.MINUET),
        ("08 - The Music Box Company - Swan Lake.mp3", BOX, tunes.SWAN_LAKE),
        ("09 - Square Wave Club - Für Elise.mp3", SQUARE, tunes.FUR_ELISE),
        ("10 - Village Fiddlers - Oh Susanna.mp3", FIDDLES, tunes.OH_SUSANNA),
        ("11 - Late Night Brass Band - London Bridge.mp3", SAINTS, tunes.LONDON_BRIDGE),
        ("12 - Parlour Piano - Camptown Races.mp3", PIANO, tunes.CAMPTOWN_RACES),
        ("13 - Clockwork Orchestra - Ode To Joy.mp3", CLOCK, tunes.ODE_TO_JOY),
        ("14 - The Tin Whistles - Amazing Grace.mp3", WHISTLES, tunes.AMAZING_GRACE),
        ("15 - Square Wave Club - The Entertainer.mp3", SQUARE, tunes.ENTERTAINER),
        ("16 - Harbour Lights Organ - The Blue Danube.mp3", ORGAN, tunes.BLUE_DANUBE),
        ("17 - Village Fiddlers - Pop Goes The Weasel.mp3", FIDDLES, tunes.POP_GOES_THE_WEASEL),
        ("18 - The Music Box Company - Morning Mood.mp3", BOX, tunes.MORNING_MOOD),
        ("19 - Late Night Brass Band - Deck The Halls.mp3", SAINTS, tunes.DECK_THE_HALLS),
        ("20 - Parlour Piano - Twinkle Twinkle Little Star.mp3", PIANO, tunes.TWINKLE),
        ("21 - Clockwork Orchestra - Amazing Grace.mp3", CLOCK, tunes.AMAZING_GRACE),
        ("22 - The Tin Whistles - Auld Lang Syne.mp3", WHISTLES, tunes.AULD_LANG_SYNE),
    ),
    "Square Wave Club": (
        ("108 - Korobeiniki.mp3", SQUARE, tunes.KOROBEINIKI),
        ("Square Wave Club - A Little Night Music.mp3", SQUARE, tunes.NACHTMUSIK),
        ("Square Wave Club - Row Row Row Your Boat.wav", SQUARE, tunes.ROW_YOUR_BOAT),
        ("Hall_Of_The_Mountain_King.mp3", SQUARE, tunes.MOUNTAIN_KING),
    ),
    "The Tin Whistles": (
        ("01 - Drunken Sailor.mp3", WHISTLES, tunes.DRUNKEN_SAILOR),
        ("02 - Scarborough Fair.mp3", WHISTLES, tunes.SCARBOROUGH_FAIR),
        ("03 - Mary Had A Little Lamb.flac", WHISTLES, tunes.MARY_HAD_A_LITTLE_LAMB),
        ("The Tin Whistles - London Bridge.mp3", WHISTLES, tunes.LONDON_BRIDGE),
    ),
    "Village Fiddlers": (
        ("01 - Village Fiddlers - Camptown Races.mp3", FIDDLES, tunes.CAMPTOWN_RACES),
        ("02 - Village Fiddlers - Auld Lang Syne.mp3", FIDDLES, tunes.AULD_LANG_SYNE),
        ("03 - Village Fiddlers - Drunken Sailor.wma", FIDDLES, tunes.DRUNKEN_SAILOR),
        ("Clementine.mp3", FIDDLES, tunes.CLEMENTINE),
    ),
}

VIDEOS = (
    ("Pictures In Motion/Square Wave Club - Can Can.avi", SQUARE, tunes.CAN_CAN, 5),
    ("Pictures In Motion/Clockwork Orchestra - Minuet In G.mpg", CLOCK, tunes.MINUET, 2),
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
