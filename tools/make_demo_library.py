#!/usr/bin/python3
"""Makes demo/, a music library for trying out the jukebox.

Bands of our own synthesiser play our own tunes and melodies in the public domain; we draw the covers and two films. The
bytes are the same on every run with the same lame and ffmpeg. One core needs six minutes; --jobs takes more cores.
"""

import argparse
import multiprocessing
from pathlib import Path

from demo_films import make_film
from demo_pictures import banner, cover, jpeg
from demo_session import Session
from demo_styles import STYLES
from demo_tags import add_asf, add_id3
from demo_tracks import BANDS, FOLDERS, MIXED, PARTY, TRACKS, VIDEOS
from synth import LAME_GAIN, encode_ffmpeg, encode_mp3, resample, wav_bytes

TARGET = Path(__file__).resolve().parents[1] / "demo"
# Kilobits per second. Music without drums needs less.
QUIET_STYLES = {"box", "hymn", "parlour", "quartet", "whistles"}
LOUD, QUIET = 80, 64
WAV_RATE = 22050  # of the formats that are not lossy, to save space


def encode(sound, path, style):
    """Writes the file in the format of its ending, each at the smallest size that still sounds good."""
    path.parent.mkdir(parents=True, exist_ok=True)
    kind = path.suffix.lower()
    kilobits = QUIET if style in QUIET_STYLES else LOUD
    if kind == ".mp3":
        encode_mp3(sound, path, kilobits)
        return
    sound = sound * LAME_GAIN
    if kind == ".wav":
        path.write_bytes(wav_bytes(resample(sound, WAV_RATE), WAV_RATE))
    elif kind == ".flac":
        encode_ffmpeg(resample(sound, WAV_RATE), path, ["-c:a", "flac", "-compression_level", "8"], WAV_RATE)
    else:
        encode_ffmpeg(sound, path, ["-c:a", "wmav2", "-b:a", "64k"])


def plain_title(file):
    """The title in a file's name, for its tag and its cover."""
    parts = [part.strip() for part in file.rsplit(".", 1)[0].replace("_", " ").split("-")]
    return parts[-1]


def tag(path, name, number, band):
    """A tag in one of the versions; every second track has a cover in the manner of its album or of its band."""
    title, folder = plain_title(path.name), FOLDERS[name]
    design, palette = BANDS[band] if name in MIXED else (folder.design, folder.palette)
    art = jpeg(cover(title, band, design, palette, 300), 80) if number % 2 == 0 else None
    if path.suffix.lower() == ".mp3":
        texts = (("TIT2", title), ("TPE1", band), ("TALB", folder.title), ("TRCK", str(number + 1)))
        add_id3(path, (3, 4, 2)[number % 3], texts, art)
    elif path.suffix.lower() == ".wma" and art:
        add_asf(path, art)


def make_cover(target, name):
    """The picture of a folder."""
    folder = FOLDERS[name]
    place = target / name
    place.mkdir(parents=True, exist_ok=True)
    if folder.file:
        picture = cover(folder.title, folder.artist, folder.design, folder.palette)
        if folder.file == "bigcover.png":
            banner(folder.title, folder.artist, folder.design, folder.palette).save(place / folder.file, optimize=True)
        elif folder.file.endswith("png"):
            picture.quantize(200, dither=0).save(place / folder.file, optimize=True)
        else:
            (place / folder.file).write_bytes(jpeg(picture, 84))


def make_track(job):
    """Plays, encodes and tags one track."""
    target, name, number = job
    file, band, style, melody = TRACKS[name][number]
    path = target / name / file.lstrip("+")
    encode(Session(melody, STYLES[style]).perform(), path, style)
    tag(path, name, number, band)
    if file[0] == "+":
        folder = FOLDERS[name]
        picture = cover(plain_title(path.name), band, folder.design, folder.palette + number)
        path.with_suffix(".jpg").write_bytes(jpeg(picture, 84))
    return f"{path.stat().st_size:8} {path.relative_to(target)}"


def make_video(job):
    target, number = job
    name, band, style, melody, film = VIDEOS[number]
    session = Session(melody, STYLES[style])
    make_film(target / name, session, session.perform(), plain_title(Path(name).name), band, film)
    return f"{(target / name).stat().st_size:8} {name}"


def perform(job):
    make, arguments = job
    return make(arguments)


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--out", type=Path, default=TARGET)
    parser.add_argument("--only", help="make only this folder, given by its path below the library")
    parser.add_argument("--jobs", type=int, default=1, help="processes at the same time")
    args = parser.parse_args()
    wanted = [name for name in FOLDERS if args.only in (None, name)]
    jobs = [(make_video, (args.out, i)) for i, video in enumerate(VIDEOS) if str(Path(video[0]).parent) in wanted]
    # Tracks of the same style follow one another: they share notes.
    tracks = [(TRACKS[name][number][2], name, number) for name in wanted for number in range(len(TRACKS.get(name, ())))]
    jobs += [(make_track, (args.out, name, number)) for _, name, number in sorted(tracks)]
    for name in wanted:
        make_cover(args.out, name)
    with multiprocessing.Pool(args.jobs) as pool:
        for line in pool.imap(perform, jobs):
            print(line, flush=True)
    # make_home.sh turns this list into the saved playlist, which contains full paths.
    (args.out / "playlist.txt").write_text("".join(f"{path}\n" for path in PARTY), encoding="utf-8")
    total = sum(file.stat().st_size for file in args.out.rglob("*") if file.is_file())
    print(f"{len(tracks)} tracks, {total} bytes in total")


if __name__ == "__main__":
    main()
