"""The jukebox's audible sound, recorded from the monitor of a sound sink. Runs under pulse.sh."""
import array
import itertools
import math
import os
import subprocess
import unittest
import wave

import desk

RATE = 44100
# Samples of the recording that are measured together: 0.1 s.
STRETCH = RATE // 10


def write_sines(path, *tones):
    """Writes a sound of tones in sequence, each given as hertz and seconds."""
    frames = array.array("h")
    for hertz, seconds in tones:
        for i in range(RATE * seconds):
            sample = round(16000 * math.sin(2 * math.pi * hertz * i / RATE))
            frames.extend((sample, sample))
    with wave.open(str(path), "wb") as file:
        file.setnchannels(2)
        file.setsampwidth(2)
        file.setframerate(RATE)
        file.writeframes(frames.tobytes())


def strength(samples, hertz):
    """The amplitude of a frequency, after Goertzel."""
    turn = 2 * math.cos(2 * math.pi * hertz / RATE)
    before = last = 0.0
    for sample in samples:
        before, last = last, sample + turn * last - before
    return 2 * math.sqrt(max(0.0, before * before + last * last - turn * before * last)) / len(samples)


def heard(samples):
    """The content of a piece: a tone's hertz, 0 for silence, None for a mixture or an edge."""
    loudest = max(map(abs, samples))
    if loudest < 40:
        return 0
    for hertz in (440, 1000):
        if strength(samples, hertz) > 15000:
            return hertz
    return None


class Recorder:
    """Records the monitor from its construction to its end."""

    def __init__(self, path):
        self.path = path
        self.file = open(path, "wb")
        self.process = subprocess.Popen(
            ["parec", f"--device={os.environ['PULSE_MONITOR']}", "--format=s16le", f"--rate={RATE}", "--channels=1",
             "--latency-msec=20", "--raw"], stdout=self.file)

    def end(self):
        self.process.terminate()
        self.process.wait()
        self.file.close()

    def stretch(self, number):
        samples = array.array("h")
        with open(self.path, "rb") as file:
            file.seek(2 * STRETCH * number)
            samples.frombytes(file.read(2 * STRETCH))
        return heard(samples)

    def count(self):
        return self.path.stat().st_size // (2 * STRETCH)

    def last(self):
        """The last recorded piece."""
        return self.stretch(self.count() - 1) if self.count() else None

    def passages(self):
        """Pairs of a tone and its seconds, without the edges between them."""
        clear = [tone for tone in map(self.stretch, range(self.count())) if tone is not None]
        return [(tone, len(list(run)) / 10) for tone, run in itertools.groupby(clear)]


class Heard(desk.DeskTest):
    def setUp(self):
        super().setUp()
        album = self.music / "First Album"
        for file in album.iterdir():
            file.unlink()
        write_sines(album / "Artist - A.wav", (440, 9))
        write_sines(album / "Artist - B.wav", (1000, 9))
        # The sound between two tracks would be in the recording.
        desk.edit(self.home / "config.ini", "PlayTransitionSound=true", "PlayTransitionSound=false")
        self.recorder = Recorder(self.folder / "recording")
        self.addCleanup(self.recorder.end)

    def hear(self, tone, what):
        desk.wait_until(lambda: self.recorder.last() == tone, what)

    def confirm(self, what):
        """Confirms until the jukebox accepts it."""
        before = self.log().count(" : Valider")
        self.press_until("Return", lambda: self.log().count(" : Valider") > before, what)

    def test_two_picks_are_heard_one_behind_the_other(self):
        self.start_and_see()
        self.press_until_log("Return", " : Artist - A.wav")
        self.confirm("the first pick")
        self.hear(440, "the first track")
        self.screen.press("Down")
        self.confirm("the second pick")
        self.press_until("F5", lambda: self.recorder.last() == 0, "the pause")
        paused = self.recorder.count()
        desk.wait_until(lambda: self.recorder.count() > paused + 15, "a second and a half of the pause")
        self.press_until("F4", lambda: self.recorder.last() == 440, "the first track again")
        self.hear(1000, "the second track")
        self.hear(0, "the end of the queue")
        self.signal()
        self.assert_ends(0)
        passages = self.recorder.passages()
        tones = [tone for tone, _ in passages]
        # There may be a moment of silence between the two tracks.
        self.assertIn(tones, ([0, 440, 0, 440, 1000, 0], [0, 440, 0, 440, 0, 1000, 0]), passages)
        first, rest, second = [passage for passage in passages if passage[0] != 0]
        self.assertGreaterEqual(passages[2][1], 1.4)
        # A track ends one second before its end, the last one four; the heartbeat checks every 0.4 s.
        self.assertAlmostEqual(first[1] + rest[1], 9 - 1 + 0.2, delta=0.6)
        self.assertAlmostEqual(second[1], 9 - 4 + 0.2, delta=0.6)

    def test_a_track_runs_in_a_loop_while_nobody_looks_at_its_end(self):
        """The heartbeat, which ends a track, pauses while the on-screen keyboard is open."""
        write_sines(self.music / "First Album" / "Artist - A.wav", (440, 10), (1000, 6))
        self.start_and_see()
        self.press_until_log("Return", " : Artist - A.wav")
        self.confirm("the pick")
        self.hear(440, "the first tone")
        self.press_until("Tab", lambda: any("MOVE TRACK BEFORE" in line for line in self.log()), "the queue")
        self.press_until("Left", lambda: any("SAVE CURRENT PLAYLIST" in line for line in self.log()), "save")
        self.press_until_log("Return", " : Fenetre Clavier")
        self.hear(1000, "the second tone")
        self.hear(440, "the first tone again")
        self.signal()
        self.assert_ends(0)
        tones = [tone for tone, _ in self.recorder.passages() if tone != 0]
        self.assertEqual(tones, [440, 1000, 440])
        _, second = [seconds for tone, seconds in self.recorder.passages() if tone != 0][:2]
        self.assertAlmostEqual(second, 6, delta=0.4)


if __name__ == "__main__":
    unittest.main()
