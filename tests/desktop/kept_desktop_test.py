"""Credits and queue survive kills at random moments: no credit is lost, and none is given twice.

VANTORIX_KILLS sets the number of kills; the seed is printed.
"""
import json
import os
import random
import signal
import subprocess
import time
import unittest
import wave

import desk
import supervisor

KILLS = int(os.environ.get("VANTORIX_KILLS", "12"))
SEED = int(os.environ.get("VANTORIX_SEED", "0")) or random.SystemRandom().randrange(1, 1_000_000)
# After so many kills the evening ends by the quit key, which also keeps the queue short.
EVENING = 20


def write_long_silence(path):
    """Writes ten minutes that no round reaches the end of."""
    with wave.open(str(path), "wb") as file:
        file.setnchannels(1)
        file.setsampwidth(1)
        file.setframerate(8000)
        file.writeframes(b"\x80" * 8000 * 600)


class Kept(desk.DeskTest):
    def setUp(self):
        super().setUp()
        for key in ("RestartWhenStuck", "RestartAfterStop", "KeepCreditsAndQueue"):
            desk.edit(self.home / "config.ini", f"\n{key}=false\n", f"\n{key}=true\n")
        desk.edit(self.home / "config.ini", "\nManageCoin=false", "\nManageCoin=true")
        for track in sorted(self.music.rglob("*.wav")):
            track.unlink()
            track.parent.rmdir()
        write_long_silence(self.music / "Long.wav")
        self.errors = self.folder / "stderr"

    def launch(self):
        self.run_of = supervisor.Supervisor(self.folder, [desk.PROGRAM, "--home", str(self.home)], self.screen.environment,
                                            600, self.errors, starts_again=False)
        self.addCleanup(self.run_of.end)
        self.jukebox = self.run_of.process
        desk.wait_until(lambda: self.run_of.ready or self.jukebox.poll() is not None, "the start")
        self.assertEqual(self.jukebox.poll(), None, self.errors.read_text(errors="replace"))

    def kept(self):
        """Credits and paths of the queue on the disk."""
        path = self.home / "session.json"
        if not path.exists():
            return 0, []
        session = json.loads(path.read_text(encoding="utf-8"))
        return session["credits"], [entry["path"] for entry in session["entries"]]

    def coins_of_log(self):
        """The number of coin keys in the log, and whether the last key may not have had its effect yet."""
        # Each key writes a block that begins with the slot under the cursor; a pick writes its routine's name next.
        blocks, lines = [], self.log()
        for line in lines:
            if line.startswith(" NumTrack : "):
                blocks.append([])
            elif blocks:
                blocks[-1].append(line)
        coins = [block for block in blocks if " : Valider" not in block[3:5]]
        return len(coins), bool(coins) and coins[-1] is blocks[-1]

    def round(self, source):
        credits, queue = self.kept()
        self.launch()
        keys = source.choices(["Insert", "Return"], [2, 1], k=12)
        typed = subprocess.Popen(["xdotool", "key", "--delay", str(source.choice([20, 80, 200])), *keys],
                                 env=self.screen.environment)
        time.sleep(source.uniform(0, 1.5))
        self.jukebox.kill()
        self.jukebox.wait()
        typed.wait()
        self.run_of.end()
        coins, open_end = self.coins_of_log()
        new_credits, new_queue = self.kept()
        self.assertEqual(new_queue[:len(queue)], queue)
        counted = new_credits + len(new_queue) - len(queue) - credits
        self.assertIn(counted, {coins, coins - 1} if open_end else {coins},
                      f"credits {credits} to {new_credits}, queue {len(queue)} to {len(new_queue)}, coins {coins}\n" +
                      "\n".join(line for line in self.log() if "DrawText" not in line))
        return coins, len(new_queue) - len(queue)

    def quit(self):
        self.launch()
        self.press_until("Escape", lambda: self.jukebox.poll() is not None, "the quit key")
        self.assertEqual(self.jukebox.returncode, 0)
        self.run_of.end()
        self.assertFalse((self.home / "session.json").exists())

    def fail_if_ended(self, what):
        """Tests end the jukebox themselves."""

    def test_kills_at_random_moments(self):
        source = random.Random(SEED)
        coins = picks = 0
        for kill in range(1, KILLS + 1):
            with self.subTest(seed=SEED, kill=kill):
                more_coins, more_picks = self.round(source)
                coins, picks = coins + more_coins, picks + more_picks
            if kill % EVENING == 0:
                self.quit()
        print(f"{KILLS} kills with seed {SEED}: {coins} coins, {picks} picks", flush=True)
        self.assertGreater(coins, 0)

    def test_queue_plays_on_and_credits_are_there_after_a_kill(self):
        self.launch()
        for key in ("Insert", "Insert", "Insert", "Return"):
            self.take(key)
        path = str(self.music / "Long.wav")
        desk.wait_until(lambda: self.kept() == (2, [path]), "the pick on the disk")
        self.jukebox.kill()
        self.jukebox.wait()
        self.run_of.end()
        self.launch()
        self.see_log(" : Reprise : crédits 2, file d'attente 1")
        # A track that plays counts its time down.
        first = self.screen.picture()
        desk.wait_until(lambda: self.screen.picture() != first, "the remaining time")
        self.assertEqual(self.kept(), (2, [path]))

    def test_system_shutdown_ends_the_evening(self):
        self.launch()
        self.take("Insert")
        desk.wait_until(lambda: self.kept() == (1, []), "the coin on the disk")
        self.jukebox.send_signal(signal.SIGTERM)
        self.jukebox.wait(desk.PATIENCE)
        self.assertEqual(self.kept(), (0, []))

    def test_nothing_is_kept_when_it_is_switched_off(self):
        desk.edit(self.home / "config.ini", "\nKeepCreditsAndQueue=true", "\nKeepCreditsAndQueue=false")
        self.launch()
        self.take("Insert")
        self.jukebox.kill()
        self.assertFalse((self.home / "session.json").exists())


if __name__ == "__main__":
    unittest.main()
