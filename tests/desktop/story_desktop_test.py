"""An evening at the cabinet, once by keys and once by touch: coins, a page turn, picks, sorting the queue, saving and
loading a playlist, changing the order, and quitting by the menu."""
import os
import unittest

import desk

TRACKS = 25
# From theme pixels to screen pixels: the delivered theme is drawn for 1920x1080.
SCALE = desk.SCREEN_SIZE[0] / 1920


class Evening(desk.DeskTest):
    def setUp(self):
        super().setUp()
        self.theme = desk.sections_of(self.home / "themes" / "default" / "theme.ini")
        self.board = desk.Board(self.home / "themes" / "default" / "theme.ini")
        self.album = self.music / "A Big Album"
        self.album.mkdir()
        desk.write_tone(self.album / self.track(1), 60)
        for number in range(2, TRACKS + 1):
            os.link(self.album / self.track(1), self.album / self.track(number))
        desk.edit(self.home / "config.ini", "\nManageCoin=false", "\nManageCoin=true")

    @staticmethod
    def track(number):
        return f"Some Band - Song {number:02}.wav"

    # --- The jukebox's actions, from its log and its files ---

    def count(self, line):
        return self.log().count(line)

    def credits(self):
        """The credit counter as last drawn."""
        block, box = self.theme["horitontal"], self.theme["BlockMain"]
        left = round((int(block["BlockMainX"]) + int(box["BlockMainInsertCoinX"])) * SCALE)
        top = round((int(block["BlockMainY"]) + int(box["BlockMainInsertCoinY"])) * SCALE)
        drawn = [line for line in self.log() if line.startswith(" : DrawText (") and f",{left},{top}," in line]
        return int(drawn[-1][len(" : DrawText ("):].split(",")[0]) if drawn else None

    def see(self, condition, what):
        def fulfilled():
            self.fail_if_ended(what)
            return condition()
        desk.wait_until(fulfilled, what)

    def see_credits(self, number):
        self.see(lambda: self.credits() == number, f"{number} credits")

    def counts(self):
        path = self.home / "stats.ini"
        return desk.sections_of(path).get("PayingCount", {}) if path.exists() else {}

    def playlist(self):
        """The names of the entries of the only saved playlist, or nothing."""
        files = list((self.home / "playlists").glob("MIX - *.vtxpl"))
        if not files:
            return None
        lines = files[0].read_bytes().decode().split("\r\n")
        self.assertEqual(lines[0].strip(), str((len(lines) - 2) // 2))
        self.assertEqual(lines[1::2][:-1], [str(self.album / name) for name in lines[2::2]])
        return lines[2::2]

    def order_of_album(self):
        path = self.home / "pathconfig.ini"
        return desk.sections_of(path).get(str(self.album), {}).get("Order") if path.exists() else None

    def queue_as_drawn(self):
        """The titles of the queue as last drawn."""
        log = self.log()
        last = len(log) - log[::-1].index(" : DrawPlaylist")
        titles = []
        for line in log[last:]:
            title, *box = line[len(" : DrawText ("):].split(",")
            # A row's texts begin 5 pixels from its left; the credit counter may follow directly.
            if not line.startswith(" : DrawText (") or box[0] != "5":
                break
            titles.append(title)
        # Each row: title and artist, in both looks.
        return titles[::4]

    def see_queue(self, *numbers):
        self.see(lambda: self.queue_as_drawn() == [f"SONG {number:02}.WAV" for number in numbers], f"the queue {numbers}")

    def check_what_is_left(self, config):
        """Checks the files after the evening: everything is counted and nothing else changed."""
        expected = {self.track(number): "1" for number in (23, 24, 25)}
        folder = self.album
        while str(folder) != "/":
            expected[str(folder)] = "3"
            folder = folder.parent
        self.assertEqual(self.counts(), expected)
        self.assertEqual(self.playlist(), [self.track(25), self.track(23)])
        self.assertEqual(self.order_of_album(), "playcount")
        self.assertEqual((self.home / "config.ini").read_bytes(), config)
        self.assertEqual(self.told(), "")
        self.assertEqual([file.name for file in self.home.rglob("*.new")], [])

    # --- By keys ---

    def type_by_keys(self, text):
        """Moves over the keyboard from its first key, first between lines: a shorter line reduces the column."""
        line, column = 1, 1
        for code in [ord(letter) for letter in text] + [desk.ACCEPT]:
            to_line, to_column = self.board.place(code)
            down, step = ("Down", 1) if to_line > line else ("Up", -1)
            keys = [down] * abs(to_line - line)
            for row in range(line, to_line, step):
                column = min(column, int(self.board.values[f"KeyNbCols{row + step}"]))
            keys += ["Right" if to_column > column else "Left"] * abs(to_column - column)
            self.screen.press(*keys, "Return")
            line, column = to_line, to_column

    def test_by_keys(self):
        config = (self.home / "config.ini").read_bytes()
        root = self.start_and_see()
        for number in range(1, 5):
            self.take("Insert")
            self.see_credits(number)
        # Opens the folder and turns to its last page, which holds the tracks 21 to 25; the cursor is on the
        # last one.
        self.take("Return")
        self.see(lambda: self.count(" : PageAnim") == 1, "the folder")
        self.take("Left")
        self.see(lambda: self.count(" : PageAnim") == 2, "the page turn")
        page = self.see_change(root, "the last page")
        for number in (25, 24, 23):
            self.take("Return")
            self.see(lambda title=self.track(number): self.counts().get(title) == "1", f"track {number} is counted")
            self.take("Up")
        self.see_credits(1)
        self.see_queue(25, 24, 23)
        # Moves the queue's second entry after the third and removes it there.
        self.take("Tab")
        self.take("Tab")
        self.take("Down")
        self.take("Return")
        self.see_queue(25, 23, 24)
        self.take("Right")
        self.take("Right")
        self.take("Return")
        self.see_queue(25, 23)
        self.see_credits(2)
        # The queue's button "save".
        self.take("Right")
        self.take("Right")
        queue = self.see_change(page, "the focus on the queue")
        self.take("Return")
        self.see_log(" : Fenetre Clavier")
        self.see_keyboard()
        keyboard = self.see_change(queue, "the keyboard")
        self.type_by_keys("MIX")
        self.see_log(" : Saisie MIX")
        self.see_change(keyboard, "the frame behind the keyboard")
        self.see(lambda: self.playlist() == [self.track(25), self.track(23)], "the playlist's file")
        # Tab wraps to the list, which shows the playlists: this one is loaded, for one credit.
        self.take("Tab")
        self.take("Tab")
        self.take("Return")
        self.see_credits(1)
        self.see_queue(25, 23)
        self.take("Up")
        self.assertIn(str(self.album), [line for line in self.log() if line.startswith(" InfoPath : ")][-1])
        # The menu: another order for the folder, then the last row.
        for _ in range(3):
            self.take("Tab")
        self.take("Right")
        self.see(lambda: self.order_of_album() == "playcount", "the order of the folder")
        self.take("Up")
        self.take("Return")
        self.assert_ends(0)
        self.check_what_is_left(config)

    # --- By touch ---

    def touch(self, x, y):
        """Presses a place of the theme."""
        self.screen.click(round(x * SCALE), round(y * SCALE))

    def touch_in(self, block, section, prefix, aside=0):
        corner = self.theme["horitontal"]
        left, top = (int(corner[f"{block}{axis}"]) for axis in "XY") if block else (0, 0)
        x, y, width, height = (int(self.theme[section][prefix + letter]) for letter in "XYWH")
        self.touch(left + x + width / 2 + aside, top + y + height / 2)

    def touch_slot(self, column, row):
        self.touch_in(None, f"zonelist{'Gauche' if column == 1 else 'Droite'}{row}", "ZoneListPisteHilight")

    def touch_menu(self, row, prefix):
        section = self.theme["zonecommand"]
        corner = self.theme["horitontal"]
        x, y, width, height = (int(section[prefix + letter]) for letter in "XYWH")
        rows = 49 * (row - 1)
        self.touch(int(corner["BlockCommandX"]) + x + width / 2, int(corner["BlockCommandY"]) + y + height / 2 + rows)

    def touch_row_of_queue(self, row):
        """Touches a row. Rows are in the theme's pixels from the scaled top of the queue, see D-22."""
        corner, block = self.theme["horitontal"], self.theme["BlockPlaylist"]
        top = (int(corner["BlockPlaylistY"]) + int(block["BlockPlaylistPlaylistY"])) * SCALE
        left = (int(corner["BlockPlaylistX"]) + int(block["BlockPlaylistPlaylistX"])) * SCALE
        self.screen.click(round(left + 100), round(top + 60 * (row - 1) + 20))

    def touch_queue_button(self, word):
        self.touch_in("BlockPlaylist", "BlockPlaylist", f"BlockPlaylistBtn{word}")

    def test_by_touch(self):
        desk.edit(self.home / "config.ini", "\nTactileMode=false", "\nTactileMode=true")
        config = (self.home / "config.ini").read_bytes()
        root = self.start_and_see()
        for number in range(1, 5):
            # Two presses at the same place would be a double tap.
            self.touch_in("BlockMain", "BlockMain", "BlockMainInsertCoin", aside=(number % 2) * 60 - 30)
            self.see_credits(number)
        self.touch_slot(1, 1)
        self.see(lambda: self.count(" : PageAnim") == 1, "the folder")
        folder = self.see_change(root, "the folder")
        section = self.theme["zonelist"]
        x, y, width, height = (int(section[f"ZoneListNavigationNextPage{part}"]) for part in ("x", "Y", "Width", "Height"))

        def turned():
            self.touch(x + width / 2, y + height / 2)
            return self.count(" : PageAnim") == 2
        self.see(turned, "the page turn")
        page = self.see_change(folder, "the last page")
        for number in (25, 24, 23):
            def picked(title=self.track(number), row=number - 20):
                if title not in self.counts():
                    self.touch_slot(1, row)
                return title in self.counts()
            self.see(picked, f"track {number} is counted")
        self.see_credits(1)
        self.see_queue(25, 24, 23)
        selected = self.see_change(page, "the queue")
        self.touch_row_of_queue(2)
        self.see_change(selected, "the second row selected")
        self.touch_queue_button("Down")
        self.see_queue(25, 23, 24)
        self.touch_queue_button("Remove")
        self.see_queue(25, 23)
        self.see_credits(2)
        queue = self.screen.picture()
        self.touch_queue_button("Save")
        self.see_log(" : Fenetre Clavier")
        self.see_keyboard()
        keyboard = self.see_change(queue, "the keyboard")
        for letter in "MIX":
            self.screen.click(*self.board.middle(ord(letter)))
        self.screen.click(*self.board.middle(desk.ACCEPT))
        self.see_log(" : Saisie MIX")
        self.see_change(keyboard, "the frame behind the keyboard")
        self.see(lambda: self.playlist() == [self.track(25), self.track(23)], "the playlist's file")
        self.touch_slot(1, 1)
        self.see_credits(1)
        self.see_queue(25, 23)
        self.touch_menu(1, "BlockCommandListBoxTexte")
        self.see(lambda: self.order_of_album() == "playcount", "the order of the folder")
        self.touch_menu(7, "BlockCommandBtnTexte")
        self.assert_ends(0)
        self.check_what_is_left(config)


if __name__ == "__main__":
    unittest.main()
