"""The start: what must not happen while other threads run, and where themes are read from."""
import os
import re
import shutil
import unittest

import desk


class Start(desk.DeskTest):
    def test_the_locale_is_set_before_any_thread_that_reads_it(self):
        self.screen.environment["LD_PRELOAD"] = os.environ["LOCALE_WATCH_LIBRARY"]
        self.start_and_see()
        self.signal()
        self.assert_ends(0)
        threads = [int(count) for count in re.findall(r"locale set with (\d+) threads", self.told())]
        self.assertTrue(threads)
        # The event thread, and the one that receives the signals.
        self.assertLessEqual(max(threads), 2, self.told())

    def install(self):
        """Makes the program find the delivered files next to it, and removes the copies of the themes."""
        (self.folder / "bin").mkdir()
        shutil.copy2(desk.PROGRAM, self.folder / "bin/vantorix")
        shutil.copytree(desk.ROOT / "home", self.folder / "share/vantorix")
        shutil.rmtree(self.home / "themes")
        program, desk.PROGRAM = desk.PROGRAM, str(self.folder / "bin/vantorix")
        self.addCleanup(setattr, desk, "PROGRAM", program)

    def end_in_order(self):
        self.signal()
        self.assert_ends(0)

    def test_delivered_themes_look_as_copies_do_and_are_copied_only_for_a_change(self):
        with_copies = self.start_and_see()
        self.end_in_order()
        self.install()
        self.assertEqual(self.start_and_see(), with_copies)
        self.press_until_log("F9", " : Fenetre de Config")
        desk.wait_until(lambda: self.screen.focus() == "Vantorix Jukebox - configuration", "the configuration")
        self.press_until_log("Return", " : Quitter fenetre de config")
        self.assertIn(" : Modification config", self.log())
        self.end_in_order()
        self.assertFalse((self.home / "themes").exists())

    def test_a_theme_of_the_application_folder_comes_first(self):
        self.install()
        first = self.start_and_see()
        self.end_in_order()
        shutil.copytree(self.folder / "share/vantorix/themes/touch", self.home / "themes/default")
        self.assertNotEqual(self.start_and_see(), first)


if __name__ == "__main__":
    unittest.main()
