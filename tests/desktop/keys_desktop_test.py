"""The jukebox on a screen: it shows its frame, reacts to keys and touch, and writes its log."""
import unittest

import desk


class Keys(desk.DeskTest):
    def test_the_arrows_move_the_cursor_and_the_quit_key_ends_it(self):
        first = self.start_and_see()
        self.screen.press("Down")
        second = self.see_change(first, "the cursor after Down")
        self.screen.press("Up")
        self.see_change(second, "the cursor after Up")
        log = self.log()
        self.assertEqual(log[0], " : Lancement de l'application")
        self.assertRegex(log[1], r"^ : Vantorix-Jukebox version \d+\.\d+\.\d+$")
        self.screen.press("Escape")
        self.assert_ends(0)
        self.assertEqual(self.log()[-1], " Fin ")

    def test_confirm_enters_a_folder_and_back_leaves_it(self):
        root = self.start_and_see()
        self.press_until_log("Return", " : Valider")
        self.see_log(" : Some Artist - First Track.wav")
        self.see_change(root, "the folder's page")
        self.press_until_log("BackSpace", " : Retour")

    def test_the_keypad_is_apart_and_unknown_keys_do_nothing(self):
        self.start_and_see()
        self.screen.press("XF86AudioPlay")
        self.screen.press("KP_Enter")
        self.see_log(" : Valider")
        self.assertEqual(sum(line.startswith(" NumTrack : ") for line in self.log()), 1)

    def test_a_touch_picks_what_it_touches(self):
        desk.edit(self.home / "config.ini", "TactileMode=false", "TactileMode=true")
        self.start_and_see()
        # The middle of the second row of the left column of the delivered theme.
        self.screen.click(320, 106)
        self.see_log(" : Valider")
        self.see_log(" : Some Artist - Second Track.wav")

    def test_a_track_plays_until_the_program_ends(self):
        self.start_and_see()
        self.press_until_log("Return", " : Some Artist - First Track.wav")
        def picked():
            return any(line.startswith(" : InfoPath(NumTrack)=") for line in self.log())
        self.press_until("Return", picked, "the track is picked")
        self.signal()
        self.assert_ends(0)
        self.assertNotIn("run-time error", self.told())


if __name__ == "__main__":
    unittest.main()
