#!/usr/bin/env python3
"""Bytes that nobody types: the console answers each line, and the next command works."""

import os
import random
import subprocess

import check_support

LONGEST = 65536


def check_lines(given, checks, home):
    cases = [
        (b"state SelX\0\n", "the line holds a zero byte"),
        (b"state \xff\xfe\n", "the line is not valid UTF-8"),
        (b"state \xed\xb2\x80\n", "the line is not valid UTF-8"),
        (b"x" * (LONGEST + 1) + b"\n", "the line is longer than 65536 bytes"),
        (b"x" * (1 << 22) + b"\n", "the line is longer than 65536 bytes"),
        (b"\x1b[A\n", "unknown command: \x1b[A"),
        ("zähle\n".encode(), "unknown command: zähle"),
        (b"later " * 10000 + b"tick\n", "later takes a command other than later"),
        (b"frame " + b"x" * 5000 + b"\n", "cannot be written: " + "x" * 5000),
    ]
    for line, reason in cases:
        _, answers, _ = check_support.run(given, ["--home", home], line + b"wait 1\n")
        checks.equal("%r" % line[:40], [{"ready": True}, {"ok": False, "reason": reason}, {"ok": True}], answers)


def check_line_ends(given, checks, home):
    """CR LF, LF and the end of the input end a line. A line of the maximum length is accepted."""
    longest = b"state" + b" SelX" * ((LONGEST - 5) // 5) + b"\n"
    for text, count in ((b"wait 1\r\nwait 1\r\n", 2), (b"wait 1\nwait 1", 2), (b"\r\n \t\n# wait\n\nwait 1", 1),
                        (b"#\xff\0\nwait 1", 1), (b"#" * (1 << 20) + b"\nwait 1", 1),
                        (b"", 0), (b"\n", 0), (longest, 1), (b"  wait\t1  \n", 1)):
        code, answers, _ = check_support.run(given, ["--home", home], text)
        checks.equal("%r" % text[:40], (0, 1 + count), (code, len(answers)))
        checks.equal("%r is executed" % text[:40], True, all(answer.get("ok", True) for answer in answers))


def check_answers_come_at_once(given, checks, home):
    """Every answer arrives before the next command is written."""
    process = subprocess.Popen([given.console, "--home", home], stdin=subprocess.PIPE, stdout=subprocess.PIPE)
    lines = [process.stdout.readline()]
    for _ in range(3):
        process.stdin.write(b"wait 1\n")
        process.stdin.flush()
        lines.append(process.stdout.readline())
    process.stdin.close()
    checks.equal("answers at once", [b'{"ready":true}\n'] + [b'{"ok":true}\n'] * 3, lines)
    checks.equal("code", 0, process.wait(60))


def check_odd_names(given, checks, home):
    """A file name that is not valid text is returned byte for byte, like Python's own file names."""
    music = os.path.join(os.path.dirname(home), "music")
    name = b"\xff\xfe\"\\\x01\xf0\x9f\x8e\xb5.mp3"
    with open(os.path.join(os.fsencode(music), name), "wb"):
        pass
    _, answers, _ = check_support.run(given, ["--home", home], b"state InfoPath\n")
    paths = [os.fsencode(path) for path in answers[-1]["state"]["InfoPath"]]
    checks.equal("an odd name", True, os.path.join(os.fsencode(music), name) in paths)


def check_noise(given, checks, home):
    """Random lines of command words and random bytes: one answer each, and no crash."""
    source = random.Random(7)
    words = ("key down up move tick spectrum wait later state calls frame surface image serial controller tags # \\x \\ "
             "-1 0 40 13 999 1e9 Picture_Main SelX on off left beside no-zlib").split()
    lines = []
    for _ in range(400):
        if source.random() < 0.2:
            lines.append(bytes(source.choice(range(11, 256)) for _ in range(source.randrange(1, 40))))
        else:
            lines.append(" ".join(source.choice(words) for _ in range(source.randrange(1, 5))).encode())
    code, answers, errors = check_support.run(given, ["--home", home], b"\n".join(lines) + b"\n", cwd=home)
    answered = [answer for answer in answers if not answer.get("later")]
    asked = [line for line in lines if line.strip(b" \t\r\x0b\x0c") and not line.startswith(b"#")]
    checks.equal("answers to noise: " + errors[-300:], (0, 1 + len(asked)), (code, len(answered)))


def main():
    given = check_support.arguments()
    checks = check_support.Checks()
    home = check_support.make_home(given, "odd_input", "base plain\nempty @MUSIC@/a.mp3\n").home
    os.makedirs(home, exist_ok=True)
    check_lines(given, checks, home)
    check_line_ends(given, checks, home)
    check_answers_come_at_once(given, checks, home)
    check_noise(given, checks, home)
    check_odd_names(given, checks, home)
    checks.end()


if __name__ == "__main__":
    main()
