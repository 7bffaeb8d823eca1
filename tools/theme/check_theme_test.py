#!/usr/bin/python3
"""Damages a good theme in one way at a time and checks that check_theme.py finds it."""

import shutil
import tempfile
import unittest
from pathlib import Path

from PIL import Image

from check_theme import check_theme

GOOD = Path(__file__).resolve().parents[2] / "tests/homes/plain/themes/default"


class CheckThemeTest(unittest.TestCase):
    def setUp(self):
        self.place = tempfile.TemporaryDirectory()
        self.theme = Path(self.place.name) / "theme"
        shutil.copytree(GOOD, self.theme)

    def tearDown(self):
        self.place.cleanup()

    def edit(self, old, new):
        file = self.theme / "theme.ini"
        text = file.read_text(encoding="utf-8")
        self.assertIn(old, text)
        file.write_text(text.replace(old, new, 1), encoding="utf-8")

    def set(self, section, key, value):
        """Gives a key of a section another value; None removes the key."""
        lines, inside, done = [], False, False
        for line in (self.theme / "theme.ini").read_text(encoding="utf-8").splitlines():
            inside = line == f"[{section}]" if line.startswith("[") else inside
            if inside and line.startswith(f"{key}="):
                done = True
                line = f"{key}={value}" if value is not None else None
            lines += [line] if line is not None else []
        self.assertTrue(done, key)
        (self.theme / "theme.ini").write_text("\n".join(lines), encoding="utf-8")

    def found(self, words):
        report = check_theme(self.theme)
        self.assertTrue(any(words in text for text in report.errors), f"{words!r} not in {report.errors}")

    def advised(self, words):
        report = check_theme(self.theme)
        self.assertEqual(report.errors, [])
        self.assertTrue(any(words in text for text in report.advice), f"{words!r} not in {report.advice}")

    def test_good_theme_is_clean(self):
        report = check_theme(self.theme)
        self.assertEqual((report.errors, report.advice), ([], []))

    def test_missing_number(self):
        self.set("zonelistDroite7", "ZoneListPisteCoverW", None)
        self.found("[zonelistDroite7] ZoneListPisteCoverW: missing")

    def test_number_outside_16_bits(self):
        self.set("BlockMain", "BlockMainBtnPlayX", 40000)
        self.found("BlockMainBtnPlayX: outside 16 bits")

    def test_not_a_number(self):
        self.set("zonelist", "ZoneListX", "left")
        self.found("ZoneListX: not a whole number")

    def test_colour_of_two_numbers(self):
        self.set("BlockMain", "BlockMainRemainFontColor", "10,20")
        self.found("BlockMainRemainFontColor: not a colour")

    def test_section_in_its_usual_spelling(self):
        self.edit("[horitontal]", "[horizontal]")
        self.found("[horitontal] BlockMainX: missing")

    def test_section_twice(self):
        self.edit("[BlockMain]", "[vertical]\nBlockMainX=1\n[BlockMain]")
        self.found("[vertical] the section occurs twice")

    def test_no_theme_file(self):
        (self.theme / "theme.ini").unlink()
        self.found("theme.ini")

    def test_missing_picture(self):
        (self.theme / "wait.png").unlink()
        self.found("wait.png")

    def test_picture_of_another_kind(self):
        Image.new("RGB", (8, 8)).save(self.theme / "fade.png", "BMP")
        self.found("fade.png: is a BMP")

    def test_pictures_of_different_size(self):
        Image.new("RGBA", (192, 100)).save(self.theme / "main_active_selected.png")
        self.found("sizes differ: main.png 192x120, main_active_selected.png 192x100")

    def test_missing_sound(self):
        (self.theme / "move.mp3").unlink()
        self.found("move.mp3")

    def test_sound_of_another_kind(self):
        (self.theme / "PageTurn.mp3").write_bytes(b"RIFF0000WAVE")
        self.found("PageTurn.mp3: is not an MP3 file")

    def test_button_outside_its_block(self):
        self.set("BlockPlaylist", "BlockPlaylistBtnSaveX", 170)
        self.found("is not inside playlist.png")

    def test_buttons_overlap(self):
        self.set("BlockMain", "BlockMainBtnStopX", 20)
        self.found("Preview (8, 74, 32, 36) and Stop (20, 74, 32, 36) overlap")

    def test_button_beside_its_picture(self):
        self.set("BlockMain", "BlockMainBtnPreviewX", 5)
        self.advised("differ outside the buttons")

    def test_blocks_overlap_in_one_orientation(self):
        self.set("vertical", "BlockCommandX", 100)
        self.set("vertical", "BlockCommandY", 400)
        self.found("overlap")

    def test_slot_outside_the_zone(self):
        self.set("zonelistDroite1", "ZoneListPisteHilightX", 300)
        self.found("zonelistDroite1: (300, 3, 216, 32) is not inside the zone")

    def test_title_outside_its_slot(self):
        self.set("zonelistGauche1", "ZoneListPisteTitreW", 200)
        self.found("zonelistGauche1 Titre")

    def test_two_slots_with_the_same_keys(self):
        self.set("zonelistGauche2", "ZoneListPisteNumSaisieKeys", "33|49")
        self.found("zonelistGauche2: the keys 33|49")

    def test_too_many_rows(self):
        self.set("zonelist", "ZoneListNbTracksParColonne", 11)
        self.found("ZoneListNbTracksParColonne is not 1 to 10")

    def test_pages_of_which_one_is_much_wider(self):
        self.set("zonelist", "ZoneListPageDroiteWidth", 20)
        self.found("the page turn would never end")

    def test_label_box_too_narrow_for_dots(self):
        self.set("zonelistGauche4", "ZoneListPisteNumSaisieW", 17)
        self.found("zonelistGauche4 NumSaisie: 17 wide, three dots need 18")

    def test_selection_that_cannot_be_seen(self):
        shutil.copyfile(self.theme / "zonelist.png", self.theme / "zonelist_hilight.png")
        self.found("the selection is not visible")

    def test_states_that_look_the_same(self):
        shutil.copyfile(self.theme / "main_active_selected.png", self.theme / "main_active_selected_hilight.png")
        self.found("button Preview of main: looks active_selected and active_selected_hilight are the same")

    def test_ground_that_changes_with_the_focus(self):
        with Image.open(self.theme / "main_active_selected.png") as picture:
            image = picture.convert("RGBA")
        image.putpixel((20, 10), (255, 0, 0, 255))
        image.save(self.theme / "main_active_selected.png")
        self.advised("the background of BlockMainInfosZoneLigne1 differs")

    def test_mark_that_misses_the_slots(self):
        Image.new("RGBA", (448, 360)).save(self.theme / "zonelist_video.png")
        self.found("zonelist_video.png: nothing visible in zonelistGauche1")

    def test_keyboard_without_accepting_key(self):
        self.set("keyboard", "KeyKey5-3", 32)
        self.found("keyboard: 0 keys with the code 13")

    def test_keys_of_the_keyboard_overlap(self):
        self.set("keyboard", "KeyX1-2", 20)
        self.found("overlap")

    def test_unknown_font(self):
        self.set("BlockMain", "BlockMainRemainFont", "No Such Font")
        self.advised("'No Such Font'")

    def test_menu_row_wider_than_the_block(self):
        for name in ("command_listbox", "command_listbox_hilight", "command_btn", "command_btn_hilight"):
            Image.new("RGBA", (190, 15)).save(self.theme / f"{name}.png")
        self.found("a row of the menu")


if __name__ == "__main__":
    unittest.main()
