#!/usr/bin/env python3
"""The console's command line: what is taken, what is refused with code 2, and what only warns."""

import os

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
        ["--home", home, "--help"],
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
        checks.equal("usage told for %s" % options, True, "usage: vantorix-console" in errors)


def check_screens(given, checks, home):
    names = b"state MonitorCount MonitorWidth MonitorHeight\n"
    for screen, count, widths in (("1920x1080", 1, [1920]), ("800x600+0+0,640x480-640+0", 2, [800, 640]),
                                  ("800x600,640x480+-640+-480", 2, [800, 640])):
        _, answers, _ = check_support.run(given, ["--home", home, "--screen", screen], names)
        state = answers[-1]["state"]
        checks.equal(screen, (count, widths), (state["MonitorCount"], state["MonitorWidth"]))
    # The jukebox has room for eleven.
    code, answers, _ = check_support.run(given, ["--home", home, "--screen", ",".join(["640x480"] * 12)])
    checks.equal("twelve screens", (1, 9), (code, answers[-1]["error"]["number"]))


def check_home(given, checks, home):
    """A relative home, and one with a separator at its end, are the same folder."""
    for folder, start in ((home + "/", "/"), (os.path.basename(home), os.path.dirname(home)), (".", home)):
        _, answers, _ = check_support.run(given, ["--home", folder], b"state AppFolder\n", cwd=start)
        checks.equal("home %s" % folder, home, answers[-1]["state"]["AppFolder"])


def check_clock_and_failures(given, checks, home):
    check_support.run(given, ["--home", home, "--clock", "2024-02-29 23:59:59"], b"wait 1000\nkey 40\n")
    with open(os.path.join(home, "vantorix.log"), encoding="utf-8") as log:
        stamps = [line[:19] for line in log]
    checks.equal("first stamp", "2024-02-29 23:59:59", stamps[0])
    checks.equal("last stamp", "2024-03-01 00:00:00", stamps[-1])
    code, answers, errors = check_support.run(given, ["--home", home, "--fail", "NoSuchOperation"])
    checks.equal("an unknown operation", (0, [{"ready": True}]), (code, answers))
    checks.equal("it is told", True, "NoSuchOperation" in errors)
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
    checks.end()


if __name__ == "__main__":
    main()
