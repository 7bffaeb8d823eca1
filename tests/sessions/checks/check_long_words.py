#!/usr/bin/env python3
"""Shows long words as titles in each slot of the delivered themes.

A title of one word that is wider than its box ends the jukebox if there is an artist. The words are the longest of five
languages, from the word lists of the system, and some of our own.

    check_long_words.py --console PROGRAM --work FOLDER
"""

import os
import shutil
import struct
import subprocess
import zlib

import check_support

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__)))))
LISTS = ("american-english", "ngerman", "french", "spanish", "italian")
WORDS_OF_A_LIST = 100
ROWS = {"default": 10, "touch": 6, "wall": 6}
OWN_WORDS = (
    "Supercalifragilisticexpialidocious", "Donaudampfschifffahrtsgesellschaft", "Anticonstitutionnellement",
    "Geschwindigkeitsübertretungsverfahrens", "Precipitevolissimevolmente", "Electroencefalografistas",
    "M.A.N.I.F.E.S.T.A.T.I.O.N.S.", "S.O.S.S.O.S.S.O.S.S.O.S", "WWWWWWWWWWWWWWWWWWWWWWWW",
)  # fmt: skip
RIGHT = 39


def long_words():
    """The longest words of the installed word lists; a blank or a hyphen would break a title."""
    words = list(OWN_WORDS)
    for name in LISTS:
        try:
            with open(os.path.join("/usr/share/dict", name), encoding="utf-8") as file:
                found = {line.strip() for line in file}
        except FileNotFoundError:
            print("no word list %s: left out" % name)
            continue
        found = {word for word in found if not set(word) & set(" -/_")}
        words += sorted(found, key=lambda word: (-len(word), word))[:WORDS_OF_A_LIST]
    return words


def white_png():
    """A cover of one pixel."""

    def chunk(kind, body):
        return struct.pack(">I", len(body)) + kind + body + struct.pack(">I", zlib.crc32(kind + body))

    header = struct.pack(">IIBBBBB", 1, 1, 8, 2, 0, 0, 0)
    pixel = zlib.compress(b"\0\xff\xff\xff")
    return b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", pixel) + chunk(b"IEND", b"")


def make_music(folder, words, slots):
    """One track for each word, every second one with a cover, then two full pages of the longest word of all."""
    longest = max(words[:len(OWN_WORDS)], key=len)
    titles = words + [longest] * (2 * slots + (-len(words)) % slots)
    os.makedirs(folder)
    for number, title in enumerate(titles):
        # The last page has covers, the one before it has none; letters and an artist do not count as a track number.
        cover = number % 2 == 0 if number < len(words) else number >= len(titles) - slots
        name = os.path.join(folder, "Choir %04d - %s" % (number, title))
        open(name + ".mp3", "wb").close()
        if cover:
            with open(name + ".jpg", "wb") as file:
                file.write(white_png())
    return len(titles)


def main():
    given = check_support.arguments()
    checks = check_support.Checks()
    words = long_words()
    for theme, rows in ROWS.items():
        work = os.path.join(os.path.abspath(given.work), "long words", theme)
        shutil.rmtree(work, ignore_errors=True)
        home, music = os.path.join(work, "home"), os.path.join(work, "music")
        tracks = make_music(music, words, 2 * rows)
        subprocess.run([os.path.join(ROOT, "tools/make_home.sh"), os.path.join(ROOT, "home"), home, music], check=True)
        config = os.path.join(home, "config.ini")
        with open(config, encoding="utf-8") as file:
            text = file.read()
        with open(config, "w", encoding="utf-8") as file:
            file.write(text.replace("\nTheme=default", "\nTheme=" + theme))
        pages = -(-tracks // (2 * rows))
        commands = ("key %d\nkey %d\nstate CurrentPage Theme\n" % (RIGHT, RIGHT)) * (pages - 1)
        code, answers, errors = check_support.run(given, ["--home", home, "--screen", "320x180"], commands.encode())
        shown = [answer["state"] for answer in answers if "state" in answer]
        checks.equal(theme + ": exit code", 0, code)
        checks.equal(theme + ": errors", [], [answer for answer in answers if "error" in answer] + errors.splitlines())
        checks.equal(theme + ": pages", [{"CurrentPage": page, "Theme": theme} for page in range(1, pages)], shown)
    checks.end()


if __name__ == "__main__":
    main()
