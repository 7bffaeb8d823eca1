#!/usr/bin/python3
"""Tests of the demo library's scripts: measure_demo.py finds every fault, and the music is the same on every run."""

import sys
import tempfile
import unittest
from pathlib import Path

import numpy

sys.path.insert(0, str(Path(__file__).resolve().parents[2] / "tools"))
import demo_instruments  # noqa: E402
import demo_melodies  # noqa: E402
import demo_mix  # noqa: E402
import demo_originals  # noqa: E402
import measure_demo  # noqa: E402
from demo_mix import integrated  # noqa: E402
from demo_score import Song  # noqa: E402
from demo_session import Session  # noqa: E402
from demo_styles import STYLES  # noqa: E402
from demo_tracks import FOLDERS, PARTY, TRACKS, VIDEOS  # noqa: E402
from synth import RATE, encode_ffmpeg, wav_bytes  # noqa: E402


def melodies():
    for module in (demo_melodies, demo_originals):
        for name, value in vars(module).items():
            if isinstance(value, demo_melodies.Melody):
                yield name, value


class Measure(unittest.TestCase):
    def setUp(self):
        self.folder = Path(self.enterContext(tempfile.TemporaryDirectory()))

    def good(self, seconds=46.0):
        """Noise on both sides that has the right loudness."""
        rng = numpy.random.default_rng(1)
        shared, apart = rng.standard_normal((2, round(seconds * RATE)))
        sound = numpy.array([shared + 0.3 * apart, shared - 0.3 * apart]) * 0.05
        sound *= numpy.minimum(1, numpy.arange(sound.shape[1])[::-1] / RATE / 2)
        return sound * 10 ** ((measure_demo.LOUDNESS - integrated(sound)) / 20)

    def faults(self, sound):
        path = self.folder / "sound.wav"
        path.write_bytes(wav_bytes(sound))
        return list(measure_demo.faults(measure_demo.measured(path)))

    def test_good_sound_has_no_fault(self):
        self.assertEqual(self.faults(self.good()), [])

    def test_each_fault_is_found(self):
        good = self.good(12.0)
        click = good.copy()
        click[:, RATE : RATE + 40] = 0.97
        broken = {
            "lasts 12.0 s": good,
            "LUFS": good * 0.9,
            "true peak": click,
            "silent for 0.30 s at its start": numpy.concatenate([numpy.zeros((2, round(0.3 * RATE))), good], axis=1),
            "at its end": numpy.concatenate([good, numpy.zeros((2, round(1.5 * RATE)))], axis=1),
            "is cut off": good[:, : -2 * RATE],
            "offset": good + 0.01,
            "correlation": good * [[1], [-1]],
            "is mono": good[[0, 0]],
        }
        for words, sound in broken.items():
            with self.subTest(words):
                self.assertTrue(any(words in fault for fault in self.faults(sound)), self.faults(sound))

    def test_a_dull_style_and_a_harsh_one_are_found(self):
        self.assertEqual(list(measure_demo.style_faults("organ", {"top": -20.0})), [])
        self.assertEqual(len(list(measure_demo.style_faults("organ", {"top": -45.0}))), 1)
        self.assertEqual(len(list(measure_demo.style_faults("organ", {"top": -10.0}))), 1)

    def test_sounds_that_click_are_too_loud_or_copied_are_found(self):
        time = numpy.arange(round(0.5 * RATE)) / RATE
        soft = 0.1 * numpy.sin(2 * numpy.pi * 440 * time) * numpy.minimum(time / 0.006, 1) * numpy.exp(-time * 5)
        click = 0.1 * numpy.cos(2 * numpy.pi * 440 * time) * numpy.exp(-time * 5)
        for name, sound in (("one/move", soft), ("two/move", soft), ("one/click", click), ("one/loud", soft * 9)):
            encode_ffmpeg(sound, self.folder / f"{name}.mp3", ["-c:a", "libmp3lame", "-b:a", "96k"])
        found = measure_demo.check_sounds(self.folder)
        self.assertEqual([line.split(".mp3")[0] for line in found], ["one/click", "one/loud", "two/move"])


class Mix(unittest.TestCase):
    def test_treble_is_turned_down_only_where_there_is_too_much_of_it(self):
        size = 4096
        high = demo_mix.frequencies(size) > 6000
        for tilt, changed in ((1.3, True), (2.5, False)):
            spectrum = numpy.array([(100 / (100 + demo_mix.frequencies(size))) ** (tilt / 2)] * 2)
            energy = numpy.sum(demo_mix.tamed(spectrum, size) ** 2, axis=0)
            self.assertLessEqual(energy[high].sum() / energy.sum(), demo_mix.BRIGHTEST)
            self.assertEqual(changed, not numpy.allclose(demo_mix.tamed(spectrum, size), spectrum))


class Score(unittest.TestCase):
    def test_every_melody_fills_its_bars_and_is_used(self):
        used = [melody for tracks in TRACKS.values() for *_, melody in tracks] + [video[3] for video in VIDEOS]
        for name, melody in melodies():
            with self.subTest(name):
                song = Song(melody)
                self.assertEqual(song.beats % song.meter, 0)
                self.assertIn(melody, used)

    def test_the_key_and_the_tempo_do_not_make_another_tune(self):
        tune = demo_melodies.Melody(100, "C4 D E F | G*2 A*2 | G*4", "C*12")
        higher = demo_melodies.Melody(140, "D4 E F# G | A*2 B*2 | A*4", "D*12")
        other = demo_melodies.Melody(100, "C4 D E E | G*2 A*2 | G*4", "C*12")
        self.assertEqual(measure_demo.contour(tune), measure_demo.contour(higher))
        self.assertNotEqual(measure_demo.contour(tune), measure_demo.contour(other))

    def test_every_style_plays_in_the_wanted_length(self):
        for folder, tracks in TRACKS.items():
            self.assertIn(folder, FOLDERS)
            for file, _, style, melody in tracks:
                with self.subTest(file):
                    session = Session(melody, STYLES[style])
                    self.assertTrue(40 < session.seconds(session.final) < 56)

    def test_the_saved_playlist_has_tracks_of_the_library(self):
        files = {f"{folder}/{file.lstrip('+')}".lstrip("/") for folder, tracks in TRACKS.items() for file, *_ in tracks}
        self.assertEqual(set(PARTY) - files, set())

    def test_the_music_is_the_same_on_every_run(self):
        first = Session(demo_melodies.FRERE_JACQUES, STYLES["box"]).perform()
        demo_instruments.made.cache_clear()
        self.assertTrue(numpy.array_equal(first, Session(demo_melodies.FRERE_JACQUES, STYLES["box"]).perform()))


if __name__ == "__main__":
    unittest.main()
