#!/usr/bin/env python3
"""Tries every key, and touches the whole screen, in the delivered theme "wall": nothing reaches the menu.

The keys are tried with the settings that the documentation names for a bar, the touches with the delivered settings. As a
counter-check, keys reach the menu if it is active, and a touch reaches it in the theme "default".

    check_wall.py --console PROGRAM --work FOLDER
"""

import os
import shutil
import subprocess

import check_support

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__)))))
TRACKS = 30
SCREENS = {"horizontal": (480, 270), "vertical": (270, 480)}
STEP = 8  # pixels of a quarter of the usual screen: less than the height of a row of the menu
STATE = "state Order ActiveZone CommandCurrentId CommandCurrentMenu InputBusy\n"
# With credits on, the touches on the slots cannot fill the queue beyond what it takes.
TOUCH = {"TactileMode": "true", "ManageCoin": "true"}
BAR = {"ActiveCommandZone": "false", "Config": "255", "Quitter": "255"}


def make_home(given, name, settings):
    """An application folder with some silent tracks and these settings."""
    work = os.path.join(os.path.abspath(given.work), "wall", name)
    shutil.rmtree(work, ignore_errors=True)
    home, music = os.path.join(work, "home"), os.path.join(work, "music")
    os.makedirs(music)
    for number in range(TRACKS):
        open(os.path.join(music, "%02d - Band - Tune.mp3" % number), "wb").close()
    subprocess.run([os.path.join(ROOT, "tools/make_home.sh"), os.path.join(ROOT, "home"), home, music], check=True)
    config = os.path.join(home, "config.ini")
    with open(config, encoding="utf-8") as file:
        lines = file.read().splitlines()
    for key, value in settings.items():
        places = [i for i, line in enumerate(lines) if line.lower().startswith(key.lower() + "=")]
        assert len(places) == 1, key
        lines[places[0]] = "%s=%s" % (key, value)
    with open(config, "w", encoding="utf-8") as file:
        file.write("\n".join(lines) + "\n")
    return home


def play(given, name, settings, commands):
    """Exit code, answers, and the dialogs that opened."""
    home = make_home(given, name, settings)
    width, height = SCREENS[settings.get("Orientation", "horizontal")]
    options = ["--home", home, "--screen", "%dx%d" % (width, height)]
    code, answers, errors = check_support.run(given, options, commands.encode())
    return code, answers, {answer["dialog"] for answer in answers if "dialog" in answer}, errors


def every_key():
    """Every code that a key can have, in every block: the code of the next-block key moves on."""
    return (STATE + "".join("key %d\n" % code for code in range(1, 255))) * 4


def every_place(orientation):
    """Presses and releases all over the screen, upwards: the queue stays empty until the coin box is pressed, because the
    on-screen keyboard, which saves a queue, would take all further presses."""
    width, height = SCREENS[orientation]
    return STATE + "".join(
        "down %d %d\nup %d %d\n" % (x, y, x, y) for y in range(height - 1, 0, -STEP) for x in range(1, width, STEP)
    )


def check_untouched(checks, name, played):
    code, answers, dialogs, errors = played
    states = [answer["state"] for answer in answers if "state" in answer]
    checks.equal(name + ": exit code", 0, code)
    checks.equal(name + ": ended early", [], [answer for answer in answers if "exit" in answer])
    checks.equal(name + ": errors of handlers", [], [answer for answer in answers if "error" in answer])
    checks.equal(name + ": busy", [], [state for state in states if state["InputBusy"] != 0])
    checks.equal(name + ": configuration", False, "Form_Config" in dialogs)
    checks.equal(name + ": errors", [], errors.splitlines())
    checks.equal(name + ": focus on the menu", [], [state for state in states if state["ActiveZone"] == "command"])
    checks.equal(name + ": rows", [("alpha", 1, 1)] * len(states),
                 [(state["Order"], state["CommandCurrentId"], state["CommandCurrentMenu"]) for state in states])


def main():
    given = check_support.arguments()
    checks = check_support.Checks()
    wall = {"Theme": "wall"}
    for orientation in SCREENS:
        turned = {**wall, "Orientation": orientation}
        for kind, settings, commands in (("keys", BAR, every_key()), ("touches", TOUCH, every_place(orientation))):
            name = orientation + " " + kind
            check_untouched(checks, name, play(given, name, {**turned, **settings}, commands + STATE))
    blind = "key 9\n" * 3 + "key 40\n" * 5 + "key 13\nclick Command_Cancel\n"
    checks.equal("an active menu takes keys", {"Form_Config"}, play(given, "active menu", wall, blind)[2])
    # The lowest row of the menu quits.
    shown = play(given, "visible menu", TOUCH, every_place("horizontal"))
    checks.equal("a visible menu takes touches", True, any("exit" in answer for answer in shown[1]))
    checks.end()


if __name__ == "__main__":
    main()
