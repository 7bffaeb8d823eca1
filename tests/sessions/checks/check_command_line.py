#!/usr/bin/env python3
"""The console's command line: what is accepted, what is refused with code 2, and what only causes a warning."""

import os
import re
import subprocess

import check_support


def check_refusals(given, checks, home):
    refused = [
        [],
        ["--screen", "800x600"],
        ["--home"],
        ["--home", ""],
        ["--home", home + "/no/such/folder"],
        ["--home", home + "/config.ini"],
        ["--home", home, "--home", home],
        ["--home", home, "more"],
        ["--home", home, "--loud", "1"],
        ["--home", home, "--versions"],
    ]
    refused += [["--home", home, "--screen", screen] for screen in
                ("", "800", "800x", "x600", "0x600", "800x0", "800x600,", "800x600+1", "800x600+1+", "99999x600",
                 "-800x600", "800x600 ", "800X600", "800x600+1--2", ",".join(["8x8"] * 65))]
    refused += [["--home", home, "--clock", clock] for clock in
                ("", "now", "2024-05-06", "2024-05-06 7:08:09", "2024-02-30 07:08:09", "2024-05-06 24:00:00",
                 "2024-05-06T07:08:09", "2024-05-06 07:08:09 ")]
    for options in refused:
        code, answers, errors = check_support.run(given, options)
        checks.equal("code of %s" % options, 2, code)
        checks.equal("answers of %s" % options, [], answers)
        checks.equal("usage printed for %s" % options, True, "Usage: vantorix-console" in errors)


def check_screens(given, checks, home):
    names = b"state MonitorCount MonitorWidth MonitorHeight\n"
    for screen, count, widths in (("1920x1080", 1, [1920]), ("800x600+0+0,640x480-640+0", 2, [800, 640]),
                                  ("800x600,640x480+-640+-480", 2, [800, 640])):
        _, answers, _ = check_support.run(given, ["--home", home, "--screen", screen], names)
        state = answers[-1]["state"]
        checks.equal(screen, (count, widths), (state["MonitorCount"], state["MonitorWidth"]))
    # The jukebox has room for eleven screens.
    code, answers, _ = check_support.run(given, ["--home", home, "--screen", ",".join(["640x480"] * 12)])
    checks.equal("twelve screens", (1, 9), (code, answers[-1]["error"]["number"]))


def check_home(given, checks, home):
    """A relative home, and one with a trailing separator, are the same folder."""
    for folder, start in ((home + "/", "/"), (os.path.basename(home), os.path.dirname(home)), (".", home)):
        _, answers, _ = check_support.run(given, ["--home", folder], b"state AppFolder\n", cwd=start)
        checks.equal("home %s" % folder, home, answers[-1]["state"]["AppFolder"])


def check_no_home(given, checks, home):
    """A folder without config.ini and themes is refused, and nothing is written to it."""
    folder = os.path.join(os.path.dirname(home), "no-home")
    os.makedirs(os.path.join(folder, "playlists"), exist_ok=True)
    code, answers, errors = check_support.run(given, ["--home", folder])
    checks.equal("code without a jukebox", (2, []), (code, answers))
    checks.equal("the folder is named", True, '"%s" is no application folder' % folder in errors)
    checks.equal("files of the folder", ["playlists"], os.listdir(folder))


def check_help(given, checks):
    """--help and --version print to standard output and need no folder."""
    for options in (["--help"], ["-h"], ["--home", "/there is no such folder", "--help"]):
        done = subprocess.run([given.console] + options, capture_output=True, text=True, check=False)
        checks.equal("code and errors of %s" % options, (0, ""), (done.returncode, done.stderr))
        for word in ("Usage: vantorix-console --home DIR", "--screen", "--clock", "--fail", "--help", "--version"):
            checks.equal("%s in the answer to %s" % (word, options), True, word in done.stdout)
        checks.equal("longest line of %s" % options, True, max(map(len, done.stdout.split("\n"))) <= 100)
    done = subprocess.run([given.console, "--version"], capture_output=True, text=True, check=False)
    checks.equal("code and errors of --version", (0, ""), (done.returncode, done.stderr))
    checks.equal("the version", True, bool(re.fullmatch(r"vantorix-console \d+\.\d+\.\d+\n", done.stdout)))


def listed(home):
    return sorted(os.listdir(home))


def check_second_jukebox(given, checks, home):
    """A second jukebox on the same folder names the process that uses it; a killed one leaves no lock."""
    before = listed(home)
    first = subprocess.Popen([given.console, "--home", home], stdin=subprocess.PIPE, stdout=subprocess.PIPE)
    checks.equal("the first one", b'{"ready":true}\n', first.stdout.readline())
    with open(os.path.join(home, "vantorix.log"), "rb") as log:
        written = log.read()
    code, answers, errors = check_support.run(given, ["--home", home])
    checks.equal("the second one", (2, []), (code, answers))
    checks.equal("the other process is named", True, "process %d" % first.pid in errors and home in errors)
    with open(os.path.join(home, "vantorix.log"), "rb") as log:
        checks.equal("the log of the first one", written, log.read())
    first.kill()
    first.wait()
    first.stdin.close()
    first.stdout.close()
    code, answers, _ = check_support.run(given, ["--home", home])
    checks.equal("after a kill", (0, [{"ready": True}]), (code, answers))
    checks.equal("files of the folder", before, listed(home))


def check_clock_and_failures(given, checks, home):
    check_support.run(given, ["--home", home, "--clock", "2024-02-29 23:59:59"], b"wait 1000\nkey 40\n")
    with open(os.path.join(home, "vantorix.log"), encoding="utf-8") as log:
        stamps = [line[:19] for line in log]
    checks.equal("first stamp", "2024-02-29 23:59:59", stamps[0])
    checks.equal("last stamp", "2024-03-01 00:00:00", stamps[-1])
    code, answers, errors = check_support.run(given, ["--home", home, "--fail", "NoSuchOperation"])
    checks.equal("an unknown operation", (0, [{"ready": True}]), (code, answers))
    checks.equal("a warning is printed", True, "NoSuchOperation" in errors)
    code, answers, _ = check_support.run(given, ["--home", home, "--fail", "BASS_Init", "--fail", "AddFontResource"])
    checks.equal("two failures", (0, [{"exit": 0}]), (code, answers))
    code, answers, _ = check_support.run(given, ["--home", home, "--fail", "Write"])
    checks.equal("a log that cannot be written", (1, 75), (code, answers[-1]["error"]["number"]))


def main():
    given = check_support.arguments()
    checks = check_support.Checks()
    home = check_support.make_home(given, "command_line", "base plain\nempty @MUSIC@/a.mp3 @MUSIC@/b.mp3\n").home
    check_refusals(given, checks, home)
    check_screens(given, checks, home)
    check_home(given, checks, home)
    check_clock_and_failures(given, checks, home)
    check_no_home(given, checks, home)
    check_help(given, checks)
    check_second_jukebox(given, checks, home)
    checks.end()


if __name__ == "__main__":
    main()
