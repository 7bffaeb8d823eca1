"""Picture and sound of a video, observed together: flashes on the screen and clicks in the sound sink. Runs under pulse.sh.

Each second of the clips begins with a flash and a click. The settings in the environment make a longer measurement:
VANTORIX_SYNC_SECONDS and VANTORIX_SYNC_RATES, separated by blanks.
"""
import fractions
import os
import shutil
import statistics
import time
import unittest

import desk
import observe

# A place in the left third of the small video.
EYE = (1030, 600)
SECONDS = int(os.environ.get("VANTORIX_SYNC_SECONDS", "4"))
RATES = os.environ.get("VANTORIX_SYNC_RATES", "30000/1001").split()
# Seconds of the clip after those that are watched. The seek goes to ten seconds before the end.
TAIL = 13
# Milliseconds.
LIMIT = 40


def brightness(pixels):
    return sum(pixels[:3])


def expected_delay(clip_second, rate):
    """Milliseconds from a click to the first picture of its second, in the file."""
    pictures = -(-clip_second * fractions.Fraction(rate) // 1)
    return float(pictures / fractions.Fraction(rate) - clip_second) * 1000


class LipSync(desk.DeskTest):
    def setUp(self):
        super().setUp()
        for album in self.music.iterdir():
            shutil.rmtree(album)
        desk.edit(self.home / "config.ini", "PlayTransitionSound=true", "PlayTransitionSound=false")

    def test_flash_and_click(self):
        for rate in RATES:
            with self.subTest(rate=rate):
                self.measure(rate)

    def measure(self, rate):
        clip = self.music / "The Band - Flash.avi"
        clip.unlink(missing_ok=True)
        observe.flashing_clip(clip, rate, SECONDS + TAIL)
        self.start_and_see()
        ear = observe.Ear()
        self.addCleanup(ear.end)
        watch = observe.Watch(self.screen.display, *EYE, 1, 1)
        self.addCleanup(watch.end)
        self.press_until_log("Return", " : Valider")
        time.sleep(1)
        # The video stays small while the menu has the focus.
        for _ in range(3):
            self.screen.press("Tab")
            time.sleep(0.5)
        time.sleep(SECONDS)
        paused = time.monotonic()
        self.screen.press("F5")
        time.sleep(1.3)
        self.screen.press("F4")
        time.sleep(3)
        sought = time.monotonic()
        self.screen.press("f")
        time.sleep(4)
        changes = watch.end()
        ear.end()
        self.signal()
        self.assert_ends(0)
        self.compare(rate, changes, ear.clicks(), paused, sought)

    def compare(self, rate, changes, clicks, paused, sought):
        flashes = [now for (_, dark), (now, light) in zip(changes, changes[1:])
                   if brightness(light) > 600 and brightness(dark) < 300]
        parts = {"while it plays": (0, paused), "after a pause": (paused, sought), "after a seek": (sought, sought + 60)}
        self.assertTrue(flashes, changes)
        second = 0
        for name, (begin, end) in parts.items():
            second = SECONDS + TAIL - 10 if name == "after a seek" else second
            offsets = []
            for click in clicks:
                if begin <= click < end:
                    flash = min(flashes, key=lambda now, at=click: abs(now - at))
                    offsets.append((flash - click) * 1000 - expected_delay(second, rate))
                    second += 1
            report = f"{rate} pictures a second, {name}: {[round(offset) for offset in offsets]} ms"
            print(report, flush=True)
            self.assertGreaterEqual(len(offsets), 2, report)
            self.assertLess(abs(statistics.median(offsets)), LIMIT, report)


if __name__ == "__main__":
    unittest.main()
