#!/usr/bin/env python3
"""The demo library's tags: none stops the program, and every picture in them is complete."""

import os

import check_support

DEMO = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "..", "demo")
JPEG_START, JPEG_END = b"\xff\xd8\xff", b"\xff\xd9"


def tagged_files():
    for folder, _, names in os.walk(os.path.abspath(DEMO)):
        for name in sorted(names):
            if name.lower().endswith((".mp3", ".wma")):
                yield os.path.join(folder, name)


def main():
    given = check_support.arguments()
    checks = check_support.Checks()
    home = check_support.make_home(given, "demo", "base plain\nempty @MUSIC@/a.mp3\n").home
    paths = list(tagged_files())
    lines = "\n".join("tags " + path for path in paths)
    _, answers, errors = check_support.run(given, ["--home", home], lines.encode() + b"\n")
    checks.equal("answers", len(paths), len(answers) - 1)
    pictures = 0
    for path, answer in zip(paths, answers[1:]):
        checks.equal("%s: %s" % (path, answer), True, answer["ok"] and "error" not in answer)
        with open(path, "rb") as file:
            data = file.read()
        for image in answer["images"]:
            start = data.index(JPEG_START)
            checks.equal(path + " holds a complete picture", JPEG_END,
                         data[start + image["length"] - 2:start + image["length"]])
            pictures += 1
    checks.equal("tracks with a picture", True, pictures >= 30)
    checks.equal("standard error", "", errors)
    checks.end()


if __name__ == "__main__":
    main()
