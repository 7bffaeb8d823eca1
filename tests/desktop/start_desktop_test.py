"""The start: what must not happen while other threads run."""
import os
import re
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


if __name__ == "__main__":
    unittest.main()
