"""The on-screen keyboard on a screen: naming a playlist by keys and by mouse, and every way to leave the form."""
import unittest

import desk


class Keyboard(desk.DeskTest):
    def setUp(self):
        super().setUp()
        self.board = desk.Board(self.home / "themes" / "default" / "theme.ini")

    def drawn(self, text):
        """Whether the information lines have ever shown this text."""
        return any(line.startswith(f" : DrawText ({text},") for line in self.log())

    def focus_save_button(self):
        """Picks a track and moves the cursor to the button "save" of the queue."""
        self.start_and_see()
        self.press_until_log("Return", " : Some Artist - First Track.wav")
        self.press_until("Return", lambda: any(line.startswith(" : InfoPath(NumTrack)=") for line in self.log()),
                         "the track is picked")
        for key, text in (("Tab", "PAUSE TRACK"), ("Tab", "MOVE TRACK BEFORE"), ("Left", "SAVE CURRENT PLAYLIST")):
            self.press_until(key, lambda words=text: self.drawn(words), text)

    def open_keyboard(self):
        """Opens the keyboard and returns its picture."""
        self.focus_save_button()
        before = self.screen.picture()
        self.press_until_log("Return", " : Fenetre Clavier")
        self.see_keyboard()
        self.see_change(before, "the keyboard")
        return self.see_rest("the keyboard")

    def playlists(self):
        return {file.name: file.read_bytes().decode() for file in (self.home / "playlists").glob("*.vtxpl")}

    def assert_saved(self, name):
        self.see_log(" : Quitter fenetre clavier")
        desk.wait_until(self.playlists, "the playlist's file")
        (file, content), = self.playlists().items()
        track = self.music / "First Album" / "Some Artist - First Track.wav"
        self.assertRegex(file, rf"^{name} - \d\d [A-Z][a-z][a-z] \d{{4}}\.vtxpl$")
        self.assertEqual(content, f" 1 \r\n{track}\r\n{track.name}\r\n")
        self.assertIn(f" : Saisie {name}", self.log())
        # The list shows the saved playlist.
        wanted = f" InfoPath : {self.home}/playlists/{file}"
        self.press_until("Tab", lambda: wanted in self.log(), "the playlists folder in the list")

    def press(self, code):
        self.screen.click(*self.board.middle(code))

    def test_a_playlist_is_named_by_keys(self):
        shown = self.open_keyboard()
        # From the first key, 0, down to A, and to B next to it.
        for key in ("Down", "Return", "Right", "Return", "Return", "BackSpace"):
            self.screen.press(key)
        self.see_change(shown, "the typed text")
        # Up twice wraps to the last line, whose last key accepts; the column shrinks to the length of the
        # line.
        self.screen.press("Up", "Up", "Right")
        self.screen.press("Return")
        self.assert_saved("ABB")
        # The main window receives the keys again.
        before = len(self.log())
        self.press_until("Left", lambda: len(self.log()) > before, "a key after the keyboard")
        self.press_until_log("Escape", " Fin ")
        self.assert_ends(0)

    def test_a_playlist_is_named_by_mouse(self):
        shown = self.open_keyboard()
        for code in (ord("P"), ord("O"), ord("X"), desk.DELETE, ord("P")):
            self.press(code)
        self.see_change(shown, "the typed text")
        self.press(desk.ACCEPT)
        self.assert_saved("POP")

    def test_a_letter_pressed_twice_in_a_hurry_is_typed_twice(self):
        self.open_keyboard()
        x, y = self.board.middle(ord("L"))
        self.screen.run("xdotool", "mousemove", str(x), str(y), "click", "--repeat", "2", "--delay", "40", "1")
        self.press(desk.ACCEPT)
        self.assert_saved("LL")

    def test_a_press_beside_it_and_the_quit_key_leave_it_without_a_file(self):
        shown = self.open_keyboard()
        self.press(ord("A"))
        self.screen.click(20, 20)
        self.see_log(" : Quitter fenetre clavier")
        self.see_change(shown, "the frame behind the keyboard")
        self.press_until("Return", lambda: self.log().count(" : Fenetre Clavier") == 2, "the keyboard again")
        self.see_keyboard()
        self.screen.press("Escape")
        desk.wait_until(lambda: self.log().count(" : Quitter fenetre clavier") == 2, "the end of the keyboard")
        self.assertEqual(self.playlists(), {})
        self.assertNotIn(" Fin ", self.log())

    def test_a_signal_ends_the_program_under_the_keyboard(self):
        self.open_keyboard()
        self.signal()
        self.assert_ends(0)
        self.assertEqual(self.playlists(), {})

    def test_a_theme_without_the_keyboards_picture_stops_with_words(self):
        (self.home / "themes" / "default" / "keyboard.png").unlink()
        self.focus_save_button()
        self.press_until("Return", lambda: "Form_KeyBoard stopped by run-time error 11" in self.told(), "the stop")
        self.assertIn("keyboard.png", self.told())
        # A key closes the stop page.
        wait_for_page = self.screen.picture()
        self.assertFalse(desk.is_black(wait_for_page))
        self.press_until("Return", lambda: self.jukebox.poll() is not None, "the end")
        self.assert_ends(1)


if __name__ == "__main__":
    unittest.main()
