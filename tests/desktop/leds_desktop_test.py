"""The light show of the real jukebox: on the wire of a simulated controller, and on wires that misbehave.

Runs under pulse.sh."""
import array
import math
import os
import random
import re
import shutil
import signal
import subprocess
import time
import unittest
import wave

import desk
import heard_desktop_test as sound
from wire import REPLY, Wire, cpu_seconds

LEDS = os.environ.get("VANTORIX_LEDS", str(desk.ROOT / "build" / "vantorix-leds"))
# Seconds of music; a long run takes 60.
SECONDS = int(os.environ.get("VANTORIX_LEDS_SECONDS", "10"))
# Random plugs and pulls; a long run takes 1000.
PULLS = int(os.environ.get("VANTORIX_LEDS_PULLS", "3"))
# How many times slower and larger the jukebox may be, for a build with sanitizers.
SLOWNESS = int(os.environ.get("VANTORIX_SLOWNESS", "1"))
# The LED of 1000 Hz on a strip of thirty.
TONE_LED = b"AT+B-0E"
DARK = b"000000"


def write_wave(path, samples):
    """Writes 16-bit stereo samples to a WAV file."""
    with wave.open(str(path), "wb") as file:
        file.setnchannels(2)
        file.setsampwidth(2)
        file.setframerate(sound.RATE)
        file.writeframes(samples)


def write_music(path, seconds):
    """Writes a second of rising and falling tones, again and again."""
    second = array.array("h")
    for i in range(sound.RATE):
        turn = 2 * math.pi * i / sound.RATE
        tones = math.sin(220 * turn) + math.sin(1000 * turn) * math.sin(turn) + math.sin(5000 * turn) * math.cos(turn)
        sample = round(5000 * tones)
        second.extend((sample, sample))
    write_wave(path, second.tobytes() * seconds)


def write_bursts(path, seconds):
    """Writes half a second of silence and half a second of 1000 Hz, again and again."""
    half = sound.RATE // 2
    second = array.array("h", bytes(4 * half))
    for i in range(half):
        sample = round(16000 * math.sin(2 * math.pi * 1000 * i / sound.RATE))
        second.extend((sample, sample))
    write_wave(path, second.tobytes() * seconds)


class LedsDesk(desk.DeskTest):
    """A jukebox with a strip of thirty LEDs and one track, which Enter picks."""

    def setUp(self):
        super().setUp()
        for album in list(self.music.iterdir()):
            for file in album.iterdir():
                file.unlink()
            album.rmdir()
        self.track = self.music / "Artist - Track.wav"
        write_music(self.track, SECONDS + 30)
        desk.edit(self.home / "config.ini", "\nActive=false", "\nActive=true")
        self.link = self.home / "COM1"

    def wire(self, **manners):
        wire = Wire(self.link, **manners)
        self.addCleanup(wire.end)
        return wire

    def confirm(self):
        self.press_until("Return", lambda: " : Valider" in self.log(), "the pick")

    def ends_by_signal(self):
        self.signal()
        self.assert_ends(0)


class Simulated(LedsDesk):
    """With vantorix-leds at the other end."""

    def begin(self, *options):
        self.output = self.folder / "leds"
        self.record = self.folder / "record"
        with open(self.output, "wb") as output:
            leds = subprocess.Popen([LEDS, "--link", str(self.link), "--record", str(self.record), *options],
                                    stdin=subprocess.DEVNULL, stdout=output, stderr=output)
        self.addCleanup(lambda: leds.poll() is None and (leds.kill(), leds.wait()))
        desk.wait_until(self.link.is_symlink, "the simulated controller")
        return leds

    def test_the_music_is_shown_in_whole_frames_at_the_speed_of_the_line(self):
        leds = self.begin("--check", "--pace", "115200")
        self.start_and_see()
        self.confirm()
        desk.wait_until(self.frames, "the first frame")
        begin, start = self.frames(), time.monotonic()
        desk.wait_until(lambda: time.monotonic() - start >= SECONDS, "the music", SECONDS + 5)
        frames = self.frames() - begin
        self.ends_by_signal()
        leds.send_signal(signal.SIGTERM)
        self.assertEqual(leds.wait(desk.PATIENCE), 0, self.output.read_text())
        summary = self.output.read_text().splitlines()[-1]
        print(f"{frames} frames in {SECONDS} s; {summary}")
        self.assertIn("refused 0, faults 0", summary)
        self.assertGreaterEqual(frames, SECONDS * 590 // 60)
        sent = self.sent()
        self.assertTrue(sent.startswith("AT+R-0\\r\\n"), "the command comes before the first frame")
        self.assertTrue(sent.endswith("AT+R-1\\r\\n"), "the last message frees the controller")

    def test_a_video_frees_the_controller(self):
        self.track.unlink()
        shutil.copy(desk.ROOT / "tests" / "sessions" / "media" / "wide_film.avi", self.music / "film.avi")
        leds = self.begin("--check")
        self.start_and_see()
        self.confirm()
        desk.wait_until(lambda: "AT+R-1" in self.sent(), "the command at the start of the video")
        time.sleep(0.5)
        self.assertEqual(self.sent(), "AT+R-1\\r\\n", "the light show is off")
        self.ends_by_signal()
        leds.send_signal(signal.SIGTERM)
        self.assertEqual(leds.wait(desk.PATIENCE), 0, self.output.read_text())
        self.assertEqual(self.sent(), "AT+R-1\\r\\n" * 2)

    def sent(self):
        """What has been recorded, without the times."""
        pieces = self.record.read_text().split("\n")[1:-1]
        return "".join(piece.split(" ", 1)[1] for piece in pieces)

    def frames(self):
        return len(re.findall(r"AT\+B-1D[0-9A-F]{6}00\\r\\n", self.sent()))


@unittest.skipIf(SLOWNESS > 1, "a sanitizer makes the jukebox slower than what is measured")
class Heard(LedsDesk):
    def test_a_tone_lights_its_led_when_it_is_heard_and_a_pause_darkens_it(self):
        write_bursts(self.track, 30)
        wire = self.wire()
        self.start_and_see()
        recorder = sound.Recorder(self.folder / "recording")
        self.addCleanup(recorder.end)
        self.confirm()
        wire.see(b"AT+B-1D")
        self.assertTrue(wire.messages[0][1].startswith(b"AT+R-0"))
        delays = self.delays(recorder, wire, 8)
        self.assertLess(wire.messages[0][0], self.first_heard, "the command comes before the sound")
        print("heard to lit:", ", ".join(f"{1000 * delay:.0f}" for delay in delays), "ms")
        self.assertLessEqual(max(delays), 0.1 * SLOWNESS)
        self.pause(recorder, wire)
        self.ends_by_signal()

    def delays(self, recorder, wire, count):
        """Seconds from each beginning of the tone in the recording to its LED."""
        found = []
        self.first_heard = 0
        while len(found) < count:
            self.wait_for(lambda: not self.loud(recorder), "silence")
            self.wait_for(lambda: self.loud(recorder), "the tone")
            heard = time.monotonic()
            self.first_heard = self.first_heard or heard
            self.wait_for(lambda: self.lit_since(wire, heard - 0.25), "the LED")
            found.append(self.lit_since(wire, heard - 0.25) - heard)
        return found

    def pause(self, recorder, wire):
        self.wait_for(lambda: not self.loud(recorder), "silence")
        self.wait_for(lambda: self.loud(recorder), "the tone")
        self.screen.press("F5")
        pressed = time.monotonic()
        self.wait_for(lambda: not self.is_lit(wire, pressed), "darkness")
        dark = time.monotonic() - pressed
        print(f"pause to dark: {1000 * dark:.0f} ms")
        self.assertLessEqual(dark, 0.2 * SLOWNESS)
        messages = len(wire.messages)
        desk.wait_until(lambda: len(wire.messages) > messages + 150, "five dark frames")
        self.assertFalse([m for _, m in wire.messages[messages:] if m.startswith(b"AT+B") and m[7:13] != DARK])

    @staticmethod
    def wait_for(condition, what):
        """Like wait_until, but checks every millisecond."""
        end = time.monotonic() + desk.PATIENCE
        while not condition():
            if time.monotonic() > end:
                raise AssertionError(what)
            time.sleep(0.001)

    @staticmethod
    def loud(recorder):
        """Whether the last hundredth of a second of the recording is loud."""
        size = recorder.path.stat().st_size // 2 * 2
        samples = array.array("h")
        with open(recorder.path, "rb") as file:
            file.seek(max(0, size - 882))
            samples.frombytes(file.read(size - file.tell()))
        return bool(samples) and max(map(abs, samples)) > 1000

    @staticmethod
    def lit_since(wire, since):
        """When the tone's LED was first lit after a time at which it was dark."""
        return next((t for t, m in list(wire.messages) if t > since and m.startswith(TONE_LED) and m[7:13] != DARK), 0)

    @staticmethod
    def is_lit(wire, since):
        """Whether no frame that came after a time has had the tone's LED dark."""
        return not any(t > since and m.startswith(TONE_LED) and m[7:13] == DARK for t, m in list(wire.messages))


class Misbehaving(LedsDesk):
    """Controllers that are not as they should be."""

    def share_of_a_second(self):
        """The share of a core that the jukebox uses in the next second."""
        begin, cpu = time.monotonic(), cpu_seconds(self.jukebox.pid)
        desk.wait_until(lambda: time.monotonic() - begin > 1, "a second")
        return (cpu_seconds(self.jukebox.pid) - cpu) / (time.monotonic() - begin)

    def test_a_silent_controller_takes_little_time_and_a_signal_ends_the_wait(self):
        wire = self.wire(answers=False)
        self.start_and_see()
        self.confirm()
        wire.see(b"AT+R-0", 10)
        # A busy machine makes the share larger and never smaller.
        share = min(self.share_of_a_second() for _ in range(3))
        print(f"silent controller: {100 * share:.1f} % of a core, {wire.count(b'AT+R-0')} commands")
        self.assertLess(share, 0.05 * SLOWNESS)
        self.assertEqual(wire.count(b"AT+B"), 0)
        self.ends_by_signal()
        wire.see(b"AT+R-1")

    def test_a_device_that_goes_while_nothing_is_sent_takes_no_time(self):
        wire = self.wire()
        self.start_and_see()
        wire.pull()
        share = min(self.share_of_a_second() for _ in range(2))
        self.assertLess(share, 0.05 * SLOWNESS)
        self.confirm()
        desk.wait_until(lambda: "8018" in self.told(), "the error of the first command")
        self.signal()
        self.assert_ends(1)

    def test_a_reply_in_single_bytes_among_others_starts_the_track(self):
        wire = self.wire(answers=False)
        self.start_and_see()
        self.confirm()
        wire.see(b"AT+R-0", 3)
        for byte in b"\0\xff\x80Mode Normal\r\nOK\n" + bytes(range(256)) + b"Mode Mode " + REPLY:
            self.assertEqual(wire.count(b"AT+B"), 0)
            wire.send(bytes([byte]))
            sent = wire.count(b"AT+R-0")
            if byte in b"MO\n":
                desk.wait_until(lambda sent=sent: wire.count(b"AT+R-0") > sent or wire.count(b"AT+B"), "a command")
        wire.see(b"AT+B-1D")
        self.ends_by_signal()

    def test_babble_without_end_holds_nothing_up_but_the_track(self):
        wire = self.wire(answers=False)
        self.start_and_see()
        self.confirm()
        wire.see(b"AT+R-0")
        before = desk.memory_of(self.jukebox.pid)["rss"]
        begin, babble = time.monotonic(), 0
        while time.monotonic() - begin < 2:
            wire.send(random.randbytes(500).replace(b"OK", b"KO"))
            babble += 500
            time.sleep(0.002)
        self.assertEqual(wire.count(b"AT+B"), 0)
        self.assertLess(desk.memory_of(self.jukebox.pid)["rss"] - before, 20 * SLOWNESS * desk.MEGABYTE)
        desk.wait_until(lambda: wire.send(REPLY) or wire.count(b"AT+B-1D"), "the light show")
        self.ends_by_signal()

    def test_a_controller_that_never_reads_does_not_slow_the_jukebox(self):
        desk.edit(self.home / "config.ini", "NbLeds=30", "NbLeds=1000")
        for number in range(40):
            write_music(self.music / f"Other {number:02}.wav", 1)
        wire = self.wire(reads=False)
        self.start_and_see()
        self.confirm()
        desk.wait_until(lambda: wire.send(REPLY) or any("ne prend rien" in line for line in self.log()), "the stall")
        picture = self.screen.picture()
        self.press_until_log("Right", " : PageAnim")
        self.see_change(picture, "another page")
        self.signal()
        self.assert_ends(0)
        self.assertEqual(sum("ne prend rien" in line for line in self.log()), 1)

    def test_random_pulls_end_the_jukebox_with_an_error_and_it_starts_again(self):
        dice = random.Random(PULLS)
        wire = self.wire()
        for number in range(PULLS):
            with self.subTest(number):
                self.pull_once(wire, dice)
                wire.plug()
                wire.answers = wire.reads = True
                wire.messages.clear()
        self.start_and_see()
        self.confirm()
        wire.see(b"AT+B-1D")
        self.ends_by_signal()

    def pull_once(self, wire, dice):
        wire.answers, wire.reads = dice.random() < 0.7, True
        self.home.joinpath("vantorix.log").unlink(missing_ok=True)
        self.start_and_see()
        self.confirm()
        wire.see(b"AT+R-0" if not wire.answers else b"AT+B", dice.randrange(1, 100))
        wire.reads = dice.random() < 0.8
        time.sleep(dice.random() / 5)
        wire.pull()
        desk.wait_until(lambda: "8018" in self.told(), "the error")
        self.assertRegex(self.told(), r"config\.ini, \[RGBLeds\] Commport \"1\": COM1, .*/COM1 has gone")
        self.signal()
        self.assert_ends(1)


if __name__ == "__main__":
    unittest.main()
