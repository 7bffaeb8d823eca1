"""Makes a large music library and a home with planted faults, and says what --check has to find."""

import os
import pathlib
import shutil
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "tools"))
from demo_tags import PADDING, id3, syncsafe  # noqa: E402

# Too wide for every box of the default theme.
WIDE = "Donaudampfschifffahrtselektrizitaetenhauptbetriebswerkbauunterbeamtengesellschaft"
TRACKS_IN_FOLDER = 20
PNG = b"\x89PNG\r\n\x1a\n" + bytes(40)
NOBODY = 65534


class Planted:
    """The planted faults: level, subject, path in bytes, and a word of the text."""

    def __init__(self, music, home):
        self.music, self.home, self.faults = os.fsencode(music), os.fsencode(home), []

    def path(self, name):
        return os.path.join(self.music, os.fsencode(name))

    def plant(self, level, subject, path, word):
        self.faults.append((level, subject, path, word))

    def file(self, level, name, word, content=b"x", subject="music"):
        path = self.path(name)
        os.makedirs(os.path.dirname(path), exist_ok=True)
        with open(path, "wb") as file:
            file.write(content)
        self.plant(level, subject, path, word)
        return path

    def folder(self, level, name, word):
        os.makedirs(self.path(name), exist_ok=True)
        self.plant(level, "music", self.path(name), word)


def tag_without_padding():
    """A tag of version 2.4 whose frames reach its last ten bytes."""
    frames = id3(4, [("TIT2", "Title")], b"a picture")[10:-len(PADDING)]
    return b"ID3\4\0\0" + syncsafe(len(frames)) + frames


def make_good_tracks(planted, track, count):
    """Folders of albums with a cover. All tracks are links to a few files, as albums of one source would be."""
    store = planted.music + b"-store"
    os.makedirs(store)
    cover = (ROOT / "demo" / "Music Box" / "folder.jpg").read_bytes()
    with open(os.path.join(store, b"folder.jpg"), "wb") as file:
        file.write(cover)
    seeds = []
    for version in (2, 3, 4, 3):
        seeds.append(os.path.join(store, b"%d.mp3" % len(seeds)))
        with open(seeds[-1], "wb") as file:
            file.write(id3(version, [("TIT2", "Song"), ("TPE1", "Band")], cover) + track)
    for number in range(count):
        album = number // TRACKS_IN_FOLDER
        folder = planted.path(f"Artist {album // 50:03}/Band {album % 50:02} - Été {album % 7}")
        if number % TRACKS_IN_FOLDER == 0:
            os.makedirs(folder)
            os.link(os.path.join(store, b"folder.jpg"), os.path.join(folder, b"folder.jpg"))
        name = f"{number % TRACKS_IN_FOLDER + 1:02} - The Band - Song of the Night {number}.mp3"
        os.link(seeds[number % len(seeds)], os.path.join(folder, os.fsencode(name)))


def plant_unlisted(p):
    for ending in ("m4a", "ogg", "opus", "aac", "mp4", "mkv", "webm", "mov"):
        p.file("warning", f"Old Computer/Take {ending}.{ending}", f".{ending} files")
    p.file("note", "Old Computer/list.m3u", "Playlists of other programs")
    p.file("warning", "Old Computer/.secret.mp3", "begins with a dot")
    p.file("note", "Old Computer/Thumbs.db", "another program")
    p.file("note", "Videos/Clip.mp3", "sound of the video")
    p.file("warning", "Videos/Pair.mp3", "Neither it nor")
    # The video of the pair.
    p.file("warning", "Videos/Pair.mp4", ".mp4 files")


def plant_unplayable(p, track):
    p.file("warning", "Broken/Silence.mp3", "empty (0 bytes)", b"")
    p.file("error", "Broken/Nothing.avi", "locks up", b"")
    os.chmod(p.file("warning", "Broken/Locked.mp3", "no right to read", track), 0)
    p.file("error", "Broken/mix.vtxpl", "locks up when this playlist", b" 0 \r\n")
    p.file("warning", "Broken/OTHER.VTXPL", "listed as a track", b" 0 \r\n")
    os.symlink("/nowhere/at/all.mp3", p.path("Broken/gone.mp3"))
    p.plant("warning", "music", p.path("Broken/gone.mp3"), "does not exist")
    os.mkfifo(p.path("Broken/pipe.mp3"))
    p.plant("note", "music", p.path("Broken/pipe.mp3"), "a pipe")
    p.file("error", "Broken/Band - Tag.mp3", "tag is broken", tag_without_padding() + track)
    p.file("error", "Broken/Band - Short.mp3", "tag is broken", b"ID3\3\0\0\0\0\0\2" + track)


def plant_names(p, track):
    p.file("error", f"Names/Band - {WIDE}.mp3", "wider than the narrowest box", track)
    os.makedirs(p.path(f"Names/{WIDE}/Album"))
    shutil.copy(p.music + b"-store/0.mp3", p.path(f"Names/{WIDE}/Album/a.mp3"))
    p.plant("error", "music", p.path(f"Names/{WIDE}"), "wider than the narrowest box")
    p.file("warning", b"Names/Caf\xe9.mp3", "not UTF-8", track)
    p.file("warning", "Names/Cuneiform \U00012000.mp3", "no installed font", track)


def plant_covers(p, track):
    p.file("warning", "Covers/One/cover.jpg", "has no cover", b"\xff\xd8")
    p.file("note", "Covers/Two/Song.jpg", "Song.fjpg", b"\xff\xd8")
    p.file("warning", "Covers/Three/folder.jpg", "cover stays empty", b"RIFF1234WEBP")
    p.file("warning", "Covers/Four/Song.mp3", "only JPEG, GIF and BMP",
           id3(3, [], PNG).replace(b"image/jpeg", b"image/png\0") + track)
    p.file("note", "Covers/Five/Song.mp3", "none has the type",
           id3(3, [], b"\xff\xd8 back").replace(b"image/jpeg\0\3", b"image/jpeg\0\4") + track)
    p.file("note", "Covers/Six/folder.png", "in its place", PNG)
    for folder, name in (("One", "Song.mp3"), ("Two", "Song.flac"), ("Three", "Song.mp3"), ("Six", "Song.mp3")):
        shutil.copy(p.music + b"-store/0.mp3", p.path(f"Covers/{folder}/{name}"))
    shutil.copy(p.music + b"-store/folder.jpg", p.path("Covers/Six/folder.jpg"))


def plant_folders(p):
    for name in ("System Volume Information", "$RECYCLE.BIN", "@eaDir", "__MACOSX", "lost+found"):
        p.folder("warning", f"Disk/{name}", "belongs to a system")
    p.folder("warning", "Disk/Empty", "nothing that is listed")
    p.folder("note", "Disk/.Trash-1000", "begins with a dot")
    p.folder("warning", "Disk/Locked", "cannot be read")
    os.chmod(p.path("Disk/Locked"), 0)
    os.symlink("..", p.path("Disk/Loop"))
    p.plant("warning", "music", p.path("Disk/Loop"), "link to a folder that it is in")
    os.symlink("Artist 000", p.path("Twice"))
    p.plant("note", "music", p.path("Twice"), "under another path")
    deep = "Deep" + "/d" * 100
    os.makedirs(p.path(deep))
    shutil.copy(p.music + b"-store/0.mp3", p.path(deep + "/a.mp3"))
    p.plant("error", "music", p.path(deep), "more than 100 folders below")
    crowd = p.path("Crowd")
    os.makedirs(crowd)
    for number in range(2000):
        os.link(p.music + b"-store/1.mp3", os.path.join(crowd, b"Song %d.mp3" % number))
    p.plant("error", "music", crowd, "more than 95 pages")


def plant_settings(p):
    """Faults of the home. `home` is a copy of the delivered one."""
    config = p.home + b"/config.ini"
    with open(config, "rb") as file:
        text = file.read()
    for old, new, level, word in (
            (b"ShowTrackNum=true", b"ShowTrackNumber=true", "warning", "ShowTrackNumber: the key is unknown"),
            (b"haut=38", b"haut=up", "error", "locks up at the next key"),
            (b"bas=40", b"bas=13", "warning", "bas never happens"),
            (b"PlayTransitionSound=true", b"PlayTransitionSound=yes", "warning", "PlayTransitionSound: the value"),
            (b"Orientation=horizontal", b"Orientation=landscape", "warning", "counts as vertical"),
            (b"NbLeds=30", b"NbLeds=30\r\nNbLeds=60", "warning", "NbLeds is there twice"),
            (b"PositionLeft=\n", b"PositionLeft=left\n", "error", "not a number of pixels"),
            (b"[Cabinet]", b"[Extra]\nx=1\n[Cabinet]", "warning", "[Extra] is unknown")):
        assert old in text, old
        text = text.replace(old, new, 1)
        p.plant(level, "settings", config, word)
    p.plant("warning", "settings", config, "ShowTrackNum is missing")
    with open(config, "wb") as file:
        file.write(text)
    for name, content, level, word in (
            ("pathconfig.ini", b"[/gone]\r\nOrder=alpha\r\n", "note", "/gone is gone"),
            ("stats.ini", b"[PayingCount]\r\nSong.mp3=many\r\n", "error", "not a number"),
            ("playlists/gone.vtxpl", b" 1 \r\n/gone/song.mp3\r\nSong\r\n", "warning", "/gone/song.mp3"),
            ("playlists/cut.vtxpl", b" 2 \r\n/gone/song.mp3\r\n", "error", "locks up when this playlist")):
        path = os.path.join(p.home, os.fsencode(name))
        with open(path, "wb") as file:
            file.write(content)
        p.plant(level, "settings", path, word)


def give_to_nobody(folder):
    """The superuser may read everything, so that the jukebox of the test belongs to another user."""
    for path, folders, files in os.walk(folder):
        for name in folders + files + ["."]:
            os.lchown(os.path.join(path, name), NOBODY, NOBODY)


def make(base, tracks):
    """Makes `base`/music and `base`/home and returns what was planted."""
    base = pathlib.Path(base)
    os.chmod(base, 0o755)
    music, home = base / "music", base / "home"
    music.mkdir()
    subprocess.run([ROOT / "tools/make_home.sh", ROOT / "home", home, music], check=True)
    (home / "playlists").mkdir(exist_ok=True)
    planted = Planted(music, home)
    track = (ROOT / "demo" / "Amazing_Grace.mp3").read_bytes()[-20000:]
    make_good_tracks(planted, track, tracks)
    for name in ("Videos/Clip.avi",):
        os.makedirs(os.path.dirname(planted.path(name)))
        with open(planted.path(name), "wb") as file:
            file.write(b"RIFF")
    plant_unlisted(planted)
    plant_unplayable(planted, track)
    plant_names(planted, track)
    plant_covers(planted, track)
    plant_folders(planted)
    # Only the listed entries of these folders are faults; without any the folder itself would be one.
    shutil.copy(planted.music + b"-store/0.mp3", planted.path("Old Computer/Good.mp3"))
    plant_settings(planted)
    if os.geteuid() == 0:
        give_to_nobody(home)
    return planted
