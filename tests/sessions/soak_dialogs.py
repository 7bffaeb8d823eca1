"""Random commands for soak.py while one of the operator's dialogs is open.

Each routine takes the source of random numbers and returns a command and what its answer may be: GOOD is never refused,
BAD always, and EITHER depends on what the dialog shows.
"""

GOOD, BAD, EITHER = "good", "bad", "either"

TEXTS = ["", "A1", "[AP]3", "Door", " blanks ", "Überlänge", "a=b", ";x", "[x]", "33|49", "|", "x" * 300, "\U0001f3b5"]
# Sizes below that of the theme can leave a text without room for its dots, which rightly stops the program.
SIZES = ["", "", "640", "700", "1280"]
NO_SIZES = ["abc", "1x", "99999999999", "--5"]
EDGES = ["", "", "0", "5", "40", "1300"]

TEXT_FIELDS = ["Text_%sPosition%s" % (video, part) for video in ("", "Video") for part in ("Left", "Top", "Width", "Height")]
SWITCHES = ["Check_Tactile"] + ["Option_" + name for name in (
    "PlayTransitionSound", "ShowCover", "ShowFolderCover", "ShowFileCover", "ShowBigCover", "ShowMP3TagCover",
    "ShowTrackNumber", "MainVisible", "MainActive", "PlaylistVisible", "PlaylistActive", "CommandVisible",
    "CommandActive", "ManageCoin")]
PICTURES = ["Image_Theme", "Picture_Theme", "Picture_ZoneList"]
OTHERS = ["Label_StartPath", "Label12", "Combo_Theme", "Combo_DefaultOrder", "Command_Select", "Command_OK", "Command_Cancel",
          "Option_Orientation(0)", "Option_Orientation(1)"]

# What no dialog accepts.
NEVER = ["get", "get Nothing", "get Command_OK(0)", "get Label_Key(99)", "set Nothing 1", "set Command_Cancel true", "set",
         "click Nothing", "click", "doubleclick Text_ZoneListGauche(10)", "click Command1", "key x", "jump", "get Text(", "set =x"]
NEVER_IN_CONFIG = ["set Combo_Theme none", "set Combo_Theme", "set Combo_DefaultOrder alpha", "set Check_Tactile TRUE",
                   "set Option_ManageCoin", "set Option_Orientation(0) false", "set Label_Key(0) x", "get Drive1", "get Label1",
                   "set Image_Theme true", "click Command_KeyAssign(15)", "click Command_KeyAssign", "set Label_StartPath /"]

# Keys and presses that the dialogs of the configuration and of the folder ignore, and what always works.
HARMLESS = ["key 13", "key 27", "key 120", "key 40", "key -32768", "down 20 20", "up 20 20", "move 100 100 left", "dblclick 240 20",
            "tick", "tick 3", "spectrum", "wait 50", "state InputBusy KeyValues", "calls", "later key 13", "later tick",
            "later click Command_OK", "later set Text_PositionLeft 3", "later get Label_Key"]


def chosen(source, kinds):
    return source.choices([make for _, make in kinds], [weight for weight, _ in kinds])[0](source)


def a_slot(source, kind):
    return "%s_ZoneList%s(%d)" % (kind, source.choice(["Gauche", "Droite"]), source.randrange(10))


def any_control(source):
    return source.choice([
        source.choice(TEXT_FIELDS), source.choice(SWITCHES), source.choice(PICTURES + OTHERS),
        "%s(%d)" % (source.choice(["Label_Key", "Label_KeyValue", "Command_KeyAssign"]), source.randrange(15)),
        a_slot(source, source.choice(["Text", "Label", "Command"]))])


def a_text(source):
    field = source.choice(TEXT_FIELDS)
    if source.random() < 0.03:
        return "set %s %s" % (field, source.choice(NO_SIZES)), GOOD
    return "set %s %s" % (field, source.choice(EDGES if field.endswith(("Left", "Top")) else SIZES)), GOOD


def a_pick(source):
    return source.choice(["set Combo_Theme default", "set Combo_Theme small", "set Combo_DefaultOrder Alpha",
                          "set Combo_DefaultOrder Playing Count", "set Option_Orientation(0) true",
                          "click Option_Orientation(1)", "set %s %s" % (source.choice(SWITCHES), source.choice(["true", "false"]))])


CONFIG = [
    (20, lambda s: ("get " + any_control(s), GOOD)),
    (12, a_text),
    (14, lambda s: ("set %s %s" % (a_slot(s, "Text"), s.choice(TEXTS)), GOOD)),
    (10, lambda s: ("click " + s.choice(SWITCHES), GOOD)),
    (10, lambda s: (a_pick(s), GOOD)),
    (8, lambda s: ("click Command_KeyAssign(%d)" % s.randrange(15), GOOD)),
    (10, lambda s: ("click " + a_slot(s, "Command"), GOOD)),
    (6, lambda s: ("doubleclick " + a_slot(s, "Label"), GOOD)),
    # A click or double click on what does not react.
    (3, lambda s: ("%s %s" % (s.choice(["click", "doubleclick"]), s.choice(PICTURES + TEXT_FIELDS)), GOOD)),
    (6, lambda s: ("click Command_Select", GOOD)),
    (6, lambda s: (s.choice(NEVER + NEVER_IN_CONFIG), BAD)),
    (6, lambda s: (s.choice(HARMLESS), GOOD)),
    (4, lambda s: ("click Command_Cancel", GOOD)),
    (3, lambda s: ("click Command_OK", GOOD)),
]

KEY_ASSIGN = [
    # Mostly keys that are in use anyway, so that the jukebox can still be driven.
    (40, lambda s: ("key %d" % s.choice([38, 40, 37, 39, 13, 8, 9, 45, 113, 114, 115, 116, 117]), GOOD)),
    (10, lambda s: ("key %d" % s.choice([0, 27, 33, 65, 120, 255, 8364, 32767, -1, -5, -32768]), GOOD)),
    (15, lambda s: ("get " + s.choice(["Label1", "Label_Key", "Command_Cancel"]), GOOD)),
    (10, lambda s: ("click Command_Cancel", GOOD)),
    (10, lambda s: (s.choice(NEVER + ["get Combo_Theme", "click Command_OK", "set Label_Key x"]), BAD)),
    (10, lambda s: (s.choice([command for command in HARMLESS if not command.startswith("key")]), GOOD)),
]


def a_chooser_command(source, paths):
    return chosen(source, [
        (20, lambda s: ("get " + s.choice(["Dir1", "Drive1", "Command_OK"]), GOOD)),
        (35, lambda s: ("set Dir1 " + s.choice(paths), EITHER)),
        (25, lambda s: ("doubleclick Dir1", GOOD)),
        (4, lambda s: ("set Drive1 /", GOOD)),
        (8, lambda s: (s.choice(NEVER + ["set Drive1 /nowhere", "set Dir1 /nowhere", "set Dir1", "get Combo_Theme"]), BAD)),
        (8, lambda s: (s.choice(HARMLESS), GOOD)),
        (8, lambda s: ("click Command_OK", GOOD)),
        (8, lambda s: ("click Command_Cancel", GOOD)),
    ])


def a_dialog_command(source, dialog, paths):
    if dialog == "Form_SelectDirectory":
        return a_chooser_command(source, paths)
    return chosen(source, CONFIG if dialog == "Form_Config" else KEY_ASSIGN)
