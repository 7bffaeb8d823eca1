"""The dialogs on a screen: a cabinet is set up from nothing, every key can be bound, slow folders do not stop the window."""
import os
import time
import unittest

import desk

CONFIGURATION = "Vantorix Jukebox - configuration"
KEY = "Vantorix Jukebox - key"
FOLDER = "Vantorix Jukebox - folder"
JUKEBOX = "Vantorix Jukebox"

# The entries of the list of pages, in pixels of a screen of 1280x720.
PAGES = {name: (170, 84 + 48 * i) for i, name in enumerate(("music", "screen", "zones", "coins", "keys", "slots"))}

# A key for each action, in the order of the page of keys.
KEYS = (("Up", 38), ("Down", 40), ("Left", 37), ("Right", 39), ("Return", 13), ("BackSpace", 8), ("c", 67), ("Tab", 9),
        ("Escape", 27), ("F9", 120), ("F2", 113), ("F3", 114), ("F4", 115), ("F5", 116), ("F6", 117))


class Dialogs(desk.DeskTest):
    def setUp(self):
        super().setUp()
        desk.edit(self.home / "config.ini", f"\nStartPath={self.music}\n", "\nStartPath=\n")

    def settings(self, file="config.ini"):
        return desk.sections_of(self.home / file)

    def see_window(self, name):
        """Waits until a window has the focus: a key pressed before that goes to another one."""
        def focused():
            self.fail_if_ended(name)
            return self.screen.focus() == name
        desk.wait_until(focused, f"the focus of {name!r}")

    def set_music_folder(self):
        desk.edit(self.home / "config.ini", "\nStartPath=\n", f"\nStartPath={self.music}\n")

    def open_page(self, name, tabs=0):
        """Shows a page of the configuration and moves the focus from the list of pages by the tabulator."""
        self.screen.click(*PAGES[name])
        self.see_rest(f"the page {name!r}")
        self.tab(tabs)

    def tab(self, times):
        for _ in range(times):
            self.screen.press("Tab")

    def see_lines(self, line, count):
        desk.wait_until(lambda: self.log().count(line) == count, f"{count} times {line!r} in the log")

    def open_folder_above(self):
        """In the folder chooser: opens the folder above the one that is open."""
        self.see_rest("the open folder")
        self.screen.press("Left")
        self.see_rest("the folder above it")
        self.screen.press("Right")
        self.see_rest("what is in that folder")

    def choose_music(self):
        """Chooses the music folder, next to the application folder, by keys alone."""
        self.tab(1)
        self.screen.press("space")
        self.see_window(FOLDER)
        self.open_folder_above()
        self.screen.run("xdotool", "type", "music")
        self.screen.press("Return")
        self.see_log(f" : Changement repertoire {self.music}")
        self.see_window(CONFIGURATION)

    def bind(self, key, code):
        """Presses the focused button and then a key."""
        lines = self.log().count(str(code))
        self.screen.press("space")
        self.see_window(KEY)
        self.screen.press(key)
        self.see_lines(str(code), lines + 1)
        self.see_window(CONFIGURATION)

    def test_a_cabinet_is_set_up_from_nothing(self):
        (self.home / "config.ini").unlink()
        self.start()
        self.see_window(CONFIGURATION)
        self.choose_music()
        self.tab(1)
        self.screen.press("a")  # the order "Alpha"
        self.tab(1)
        self.screen.press("t")  # the theme "touch"
        # The first six switches show the zones and make them usable, the first one of the coins takes credits.
        for page, switches in (("zones", 6), ("coins", 1)):
            self.open_page(page)
            for _ in range(switches):
                self.screen.press("Tab", "space")
        self.open_page("keys")
        for key, code in KEYS:
            self.tab(1)
            self.bind(key, code)
        # The labels of both pages come first, then the keys of the first slot and the button that adds one.
        rows = int(self.settings("themes/touch/theme.ini")["zonelist"]["ZoneListNbTracksParColonne"])
        self.open_page("slots", tabs=2 * rows + 2)
        self.bind("x", 88)
        # The keys of the slot are just before their button.
        self.screen.press("shift+Tab", "Delete", "Tab")
        self.bind("b", 66)
        self.bind("z", 90)
        self.screen.press("Return")  # presses the focused button, which takes a key
        self.see_window(KEY)
        self.screen.click(640, 440)
        self.see_log(" : Annulation Fenetre assignation touche ")
        self.see_window(CONFIGURATION)
        self.screen.click(*PAGES["music"])
        self.screen.press("Return")
        self.see_log(" : Quitter fenetre de config")
        self.see_window(JUKEBOX)
        main = self.settings()["Main"]
        self.assertEqual([main[key] for key in ("StartPath", "Theme", "DefaultOrder", "ManageCoin", "ShowMainZone",
                                                "ActiveCommandZone", "Orientation", "ShowCover")],
                         [str(self.music), "touch", "alpha", "true", "true", "true", "horizontal", "false"])
        self.assertEqual(list(self.settings()["Key"].values()), [str(code) for _, code in KEYS])
        slot = self.settings("themes/touch/theme.ini")["zonelistGauche1"]
        self.assertEqual(slot["ZoneListPisteNumSaisieKeys"], "66|90")
        # The jukebox plays with these settings: the slot's keys open the first album, a coin pays for its track.
        self.screen.press("b", "z")
        self.see_log(f" InfoPath : {self.music}/First Album")
        self.see_rest("the first album")
        self.screen.press("c", "b", "z")
        desk.wait_until(lambda: any(line.startswith(" : InfoPath(NumTrack)=") for line in self.log()), "the track plays")

    def test_a_first_run_that_is_cancelled_says_what_is_missing(self):
        self.start()
        self.see_window(CONFIGURATION)
        self.screen.press("Escape")
        self.assert_ends(0)
        self.assertIn("no music folder is set", self.told())
        self.assertIn(str(self.home / "config.ini"), self.told())
        self.assertIn(" : Aucun dossier de musique choisi, fin du programme", self.log())

    def test_cancelled_over_a_running_jukebox_it_changes_nothing(self):
        self.set_music_folder()
        before = (self.home / "config.ini").read_bytes()
        self.start_and_see()
        for _ in range(2):
            self.press_until("F9", lambda: self.screen.focus() == CONFIGURATION, "the configuration")
            self.open_page("coins", tabs=1)
            self.screen.press("space", "Escape")
            self.see_window(JUKEBOX)
        self.assertEqual((self.home / "config.ini").read_bytes(), before)
        self.press_until_log("Down", " NumTrack : 1")

    def test_any_key_can_be_bound(self):
        self.set_music_folder()
        self.start_and_see()
        self.press_until("F9", lambda: self.screen.focus() == CONFIGURATION, "the configuration")
        self.open_page("keys", tabs=1)
        for key, code in (("Tab", 9), ("Shift_L", 16), ("Escape", 27), ("Return", 13), ("space", 32), ("F10", 121),
                          ("KP_Enter", 13), ("Alt_L", 18), ("Page_Up", 33), ("F16", 127)):
            self.bind(key, code)
        self.screen.click(*PAGES["music"])
        self.screen.press("Return")
        self.see_log(" : Quitter fenetre de config")
        self.assertEqual(self.settings()["Key"]["haut"], "127")

    def open_chooser(self):
        self.press_until("F9", lambda: self.screen.focus() == CONFIGURATION, "the configuration")
        self.tab(1)
        self.screen.press("space")
        self.see_window(FOLDER)

    def test_a_folder_that_does_not_answer_does_not_stop_the_window(self):
        on, mark = self.folder / "on", self.folder / "hangs"
        (self.folder / "server").mkdir()
        self.screen.environment.update(LD_PRELOAD=os.environ["HUNG_FOLDER_LIBRARY"],
                                       HUNG_FOLDER=str(self.folder / "server"), HUNG_FOLDER_ON=str(on),
                                       HUNG_FOLDER_MARK=str(mark))
        self.set_music_folder()
        self.start_and_see()
        self.open_chooser()
        self.open_folder_above()
        self.screen.run("xdotool", "type", "server")
        on.touch()
        self.screen.press("Right")
        desk.wait_until(mark.exists, "the folder is read")
        self.screen.press("Escape")
        self.see_log(" : Quitter fenetre selection repertoire")
        self.see_window(CONFIGURATION)
        self.screen.press("Escape")
        self.see_window(JUKEBOX)
        self.press_until_log("Down", " NumTrack : 1")

    def test_a_folder_of_many_folders_is_shown(self):
        many = self.folder / "many"
        for i in range(30000):
            (many / f"Folder {i:05}").mkdir(parents=True)
        (self.folder / "zzz").mkdir()
        self.set_music_folder()
        self.start_and_see()
        self.open_chooser()
        self.open_folder_above()
        self.screen.run("xdotool", "type", "many")
        self.screen.press("Right")
        began = time.monotonic()
        self.see_rest("the many folders")
        self.assertLess(time.monotonic() - began, 20)
        self.screen.press("End", "Return")
        self.see_log(f" : Changement repertoire {many}/Folder 29999")


if __name__ == "__main__":
    unittest.main()
