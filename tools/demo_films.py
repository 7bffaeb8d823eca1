"""Makes the two films of the demo library: drawings that move with the notes of the session that is heard."""

import bisect
import math
import random
import subprocess
import tempfile

import numpy
from PIL import Image, ImageDraw, ImageFilter

from demo_pictures import CONDENSED, SCRIPT, blend, face, gradient
from synth import LAME_GAIN, RATE, wav_bytes

WIDTH, HEIGHT, FRAMES = 1024, 576, 25
FINE = 2
W, H = WIDTH * FINE, HEIGHT * FINE
CODECS = {
    ".avi": ["-c:v", "mpeg4", "-vtag", "XVID", "-b:v", "800k", "-maxrate", "2400k", "-bufsize", "2000k", "-g", "100", "-bf", "2", "-mbd", "rd", "-trellis", "1", "-cmp", "2", "-subcmp", "2", "-c:a", "libmp3lame", "-b:a", "96k"],
    ".mpg": ["-c:v", "mpeg1video", "-b:v", "650k", "-maxrate", "2500k", "-bufsize", "1200k", "-g", "18", "-bf", "2", "-c:a", "mp2", "-b:a", "128k"],
}  # fmt: skip


def eased(share):
    share = min(max(share, 0.0), 1.0)
    return share * share * (3 - 2 * share)


class Track:
    """The notes of a part or the strokes of a drum by time, to ask what sounds at a moment."""

    def __init__(self, events):
        self.events = sorted(events)
        self.starts = [event[0] for event in self.events]

    def last(self, now):
        """The last event that has begun, or None."""
        index = bisect.bisect_right(self.starts, now) - 1
        return self.events[index] if index >= 0 else None

    def pulse(self, now, seconds):
        """1 at the start of an event, fading to 0."""
        event = self.last(now)
        return math.exp(-(now - event[0]) / seconds) * event[3] if event else 0.0

    def between(self, start, end):
        return self.events[bisect.bisect_left(self.starts, start) : bisect.bisect_right(self.starts, end)]


class Score:
    """Everything that a film needs to know about the music: parts, drums, beats, the length and the end."""

    def __init__(self, session, sound):
        shift = session.cut
        self.parts = {name: Track([(s - shift, d, p, v) for s, d, p, v in part.events]) for name, part in session.parts.items()}
        names = {name for _, name, _ in session.kit.events}
        self.drums = {
            name: Track([(s - shift, 0.0, 0, v) for s, each, v in session.kit.events if each == name]) for name in names
        }
        self.beats = [session.seconds(beat) - shift for beat in range(session.final + session.song.meter * 2)]
        self.meter = session.song.meter
        self.theme = session.seconds(session.sections[1].start) - shift
        self.sections = [session.seconds(section.start) - shift for section in session.sections]
        self.final = session.seconds(session.final) - shift
        self.length = sound.shape[1] / RATE

    def beat(self, now):
        """The beat at a moment, with its fraction."""
        index = bisect.bisect_right(self.beats, now) - 1
        if index < 0:
            return 0.0
        if index + 1 >= len(self.beats):
            return float(index)
        return index + (now - self.beats[index]) / (self.beats[index + 1] - self.beats[index])

    def drum(self, name, now, seconds):
        return self.drums[name].pulse(now, seconds) if name in self.drums else 0.0


def spaced(text, blanks=1):
    return (" " * blanks).join(text.upper())


def letters(draw, x, y, text, file, pixels, colour, shown=1.0, anchor="lm"):
    """A line of text, of which only the first share is shown."""
    draw.text((x, y), text[: math.ceil(len(text) * shown)], colour, face(file, pixels), anchor=anchor)


class City:
    """A glass elevator rides the melody through a city at night."""

    SKY, LOW = (18, 14, 52), (132, 34, 106)
    CYAN, PINK, GOLD = (96, 240, 228), (255, 112, 158), (255, 216, 118)
    HORIZON = 0.74
    # Sky above and below, and the light around the sun.
    HOURS = (
        ((18, 14, 52), (132, 34, 106), (240, 80, 130)),
        ((10, 18, 58), (24, 92, 128), (240, 130, 150)),
        ((44, 12, 58), (200, 70, 84), (255, 150, 90)),
    )

    def __init__(self, score, title, band):
        self.score, self.title, self.band = score, title, band
        rng = random.Random(title)
        stars = [(rng.uniform(0, W), rng.uniform(0, H * 0.5), rng.uniform(0.8, 2.6), rng.uniform(0.3, 0.9)) for _ in range(150)]
        self.backs = [self.sky(top, low, glow, stars) for top, low, glow in self.HOURS]
        self.far = self.skyline(rng, 0.16, 0.3, 60, blend(self.SKY, self.LOW, 0.35), 0.25)
        self.near = self.skyline(rng, 0.1, 0.5, 100, (14, 10, 38), 0.55)
        lead = score.parts["lead"].events
        pitches = [event[2] for event in lead]
        self.low, self.high = min(pitches), max(pitches)

    def sky(self, top, low, glow, stars):
        """The background of one hour of the night."""
        back = gradient(W, round(H * self.HORIZON), top, low)
        draw = ImageDraw.Draw(back)
        for x, y, r, light in stars:
            draw.ellipse((x - r, y - r, x + r, y + r), fill=blend(top, (255, 255, 255), light))
        whole = Image.new("RGB", (W, H), (10, 8, 30))
        whole.paste(back, (0, 0))
        halo = Image.new("L", (W // 8, H // 8), 0)
        ImageDraw.Draw(halo).ellipse((W // 8 * 0.42, H // 8 * 0.2, W // 8 * 0.78, H // 8 * 0.88), fill=150)
        halo = halo.filter(ImageFilter.GaussianBlur(16)).resize((W, H), Image.Resampling.BICUBIC)
        whole.paste(glow, (0, 0), halo)
        return whole

    def ground(self, now):
        """The sky of the hour: each part of the music has its own, and they blend into one another."""
        part = bisect.bisect_right(self.score.sections, now) - 1
        now_back = self.backs[max(part, 0) % len(self.backs)]
        share = eased((now - self.score.sections[part]) / 1.2) if part > 0 else 1.0
        if share >= 1:
            return now_back.copy()
        return Image.blend(self.backs[(part - 1) % len(self.backs)], now_back, share)

    def skyline(self, rng, low, high, wide, colour, lit):
        """Houses with windows over twice the width of the picture; the ends fit together."""
        strip = Image.new("RGBA", (W * 2, round(H * self.HORIZON)), (0, 0, 0, 0))
        draw = ImageDraw.Draw(strip)
        x = 0
        while x < W * 2:
            across = min(rng.randrange(wide, wide * 2), W * 2 - x)
            top = strip.height - rng.uniform(low, high) * H
            draw.rectangle((x, top, x + across - 6, strip.height), fill=(*colour, 255))
            if rng.random() < 0.3:
                draw.rectangle((x + across / 2 - 3, top - 50, x + across / 2 + 3, top), fill=(*colour, 255))
            for wx in range(x + 14, x + across - 22, 24):
                for wy in range(round(top) + 16, strip.height - 14, 30):
                    if rng.random() < lit * 0.45:
                        tint = rng.choice((self.GOLD, self.GOLD, self.CYAN, self.PINK))
                        draw.rectangle((wx, wy, wx + 9, wy + 13), fill=(*blend(colour, tint, rng.uniform(0.35, 0.85)), 255))
            x += across
        return strip

    def scrolled(self, image, strip, offset):
        offset = round(offset) % strip.width
        part = strip.crop((offset, 0, min(offset + W, strip.width), strip.height))
        image.paste(part, (0, 0), part)
        if part.width < W:
            rest = strip.crop((0, 0, W - part.width, strip.height))
            image.paste(rest, (part.width, 0), rest)

    def height_of(self, pitch):
        return H * (0.62 - 0.44 * (pitch - self.low) / max(self.high - self.low, 1))

    def sun(self, draw, now):
        x, y = W * 0.6, H * 0.52
        r = H * (0.25 + 0.022 * self.score.drum("kick", now, 0.12))
        step = 4
        for top in numpy.arange(y - r, y + r, step):
            half = math.sqrt(max(r * r - (top + step / 2 - y) ** 2, 0))
            share = (top - y + r) / (2 * r)
            # Stripes of sky, wider towards the bottom.
            if share > 0.5 and (share * 16) % 1 < (share - 0.5) * 1.1:
                continue
            draw.rectangle((x - half, top, x + half, top + step), fill=blend((255, 232, 130), (255, 84, 130), share))

    def floor(self, draw, now):
        """A grid that runs towards the viewer, one row a beat; the horizon flashes with the snare."""
        top = H * self.HORIZON
        draw.rectangle((0, top, W, H), fill=(12, 8, 34))
        bass = self.score.parts["bass"].pulse(now, 0.25)
        colour = blend((40, 30, 96), self.CYAN, 0.35 + 0.5 * bass)
        for i in range(-14, 15):
            draw.line((W * 0.5 + i * W * 0.045, top, W * 0.5 + i * W * 0.32, H), fill=colour, width=3)
        part = self.score.beat(now) % 1
        for i in range(9):
            share = ((i + part) / 9) ** 2.2
            draw.line((0, top + (H - top) * share, W, top + (H - top) * share), fill=colour, width=2 + round(3 * share))
        flash = self.score.drum("snare", now, 0.14)
        draw.rectangle((0, top - 3 - 6 * flash, W, top + 3 + 6 * flash), fill=blend(self.PINK, (255, 255, 255), flash))

    def ribbon(self, draw, now):
        """The melody of the last seconds as a line of light that ends at the elevator."""
        x = W * 0.3
        speed = W * 0.085
        for part, colour, wide in (("second", self.PINK, 8), ("bells", self.GOLD, 8), ("lead", self.CYAN, 12)):
            for start, seconds, pitch, strength in self.score.parts[part].between(now - 4.4, now):
                right = x - (now - min(start + seconds, now)) * speed
                left = x - (now - start) * speed
                age = 1 - (now - start) / 4.4
                y = self.height_of(pitch if part == "lead" else min(max(pitch, self.low), self.high))
                tint = blend((70, 24, 90), colour, max(age, 0.05))
                draw.rounded_rectangle((left, y - wide / 2, max(right - 4, left + 6), y + wide / 2), radius=wide / 2, fill=tint)

    def cabin(self, image, draw, now):
        x = W * 0.3
        event = self.score.parts["lead"].last(now)
        before = self.score.parts["lead"].last(event[0] - 0.001) if event else None
        aim = self.height_of(event[2]) if event else H * 0.62
        source = self.height_of(before[2]) if before else H * 0.62
        y = source + (aim - source) * eased((now - event[0]) / 0.11) if event else aim
        for side in (-46, 46):
            draw.line((x + side, 0, x + side, H * self.HORIZON), fill=blend(self.LOW, self.CYAN, 0.5), width=4)
        for i in range(12):
            draw.line((x - 46, i * H / 16, x + 46, i * H / 16), fill=blend(self.LOW, self.CYAN, 0.28), width=2)
        draw.line((x, 0, x, y - 46), fill=(255, 255, 255), width=3)
        light = self.score.parts["lead"].pulse(now, 0.35)
        draw.rounded_rectangle(
            (x - 44, y - 56, x + 44, y + 56),
            radius=14,
            fill=blend((60, 40, 120), (214, 255, 250), 0.35 + 0.5 * light),
            outline=(255, 255, 255),
            width=4,
        )
        draw.rectangle((x - 44, y - 6, x + 44, y - 2), fill=(255, 255, 255))
        for side in (-18, 18):
            bob = 3 * math.sin(self.score.beat(now) * math.pi * 2 + side)
            draw.ellipse((x + side - 9, y + 6 + bob, x + side + 9, y + 24 + bob), fill=(30, 16, 60))
            draw.rounded_rectangle((x + side - 12, y + 25 + bob, x + side + 12, y + 54), radius=8, fill=(30, 16, 60))

    def meters(self, draw, now):
        """Dots of an arpeggio in the sky, at their pitch."""
        for start, _, pitch, strength in self.score.parts["arp"].between(now - 1.1, now):
            age = (now - start) / 1.1
            x = W * (0.42 + 0.5 * ((pitch * 7) % 24) / 24)
            y = H * (0.52 - 0.017 * (pitch - 66))
            r = 5 + 30 * age
            draw.ellipse(
                (x - r, y - r, x + r, y + r), outline=blend(self.GOLD, self.LOW, age), width=max(round(5 * (1 - age)), 1)
            )

    def words(self, draw, now):
        score = self.score
        ink = (255, 250, 240)
        intro = eased(now / max(score.theme * 0.6, 0.1))
        leave = eased((now - score.theme - 4.0) / 0.8)
        if leave < 1:
            x = W * 0.4 + leave * W * 0.7
            letters(draw, x, H * 0.13, self.title, SCRIPT, 150, ink, intro)
            letters(draw, x + 8, H * 0.235, spaced(self.band), CONDENSED, 42, self.GOLD, eased((now - 0.8) / 1.2))
        people = (
            ("lead", "LEAD", self.CYAN),
            ("bells", "BELLS", self.GOLD),
            ("second", "SECOND", self.PINK),
            ("arp", "ARPEGGIO", self.GOLD),
            ("pad", "PAD", self.PINK),
            ("bass", "BASS", self.CYAN),
        )
        x = W * 0.055
        for part, text, colour in people:
            light = score.parts[part].pulse(now, 0.5)
            letters(draw, x, H * 0.94, text, CONDENSED, 34, blend((92, 78, 140), colour, min(light * 1.2, 1)))
            x += face(CONDENSED, 34).getlength(text) + 44
        for line, text in enumerate(("music, pictures and city", "drawn and played by scripts")):
            shown = eased((now - score.final - 0.1 - 0.4 * line) / 0.9)
            if now > score.final:
                letters(
                    draw,
                    W * 0.945,
                    H * (0.13 + 0.085 * line),
                    text,
                    SCRIPT if line == 0 else CONDENSED,
                    (84, 46)[line],
                    (ink, self.GOLD)[line],
                    shown,
                    "rm",
                )

    def frame(self, now):
        image = self.ground(now)
        draw = ImageDraw.Draw(image)
        self.sun(draw, now)
        beat = self.score.beat(now)
        self.scrolled(image, self.far, beat * 8)
        self.meters(draw, now)
        self.scrolled(image, self.near, beat * 24)
        self.floor(draw, now)
        self.ribbon(draw, now)
        self.cabin(image, draw, now)
        self.words(draw, now)
        return image


class Clockwork:
    """Wheels that step with the beat, and the notes of a quartet that run over a paper roll."""

    PAPER, EDGE, INK = (248, 236, 208), (232, 210, 168), (58, 34, 28)
    BRASS, RUST, TEAL, PLUM = (206, 158, 62), (196, 78, 48), (26, 104, 104), (110, 52, 96)

    def __init__(self, score, title, band):
        self.score, self.title, self.band = score, title, band
        self.back = gradient(W, H, self.PAPER, self.EDGE)
        noise = numpy.random.default_rng(4).normal(0, 2.0, (H, W, 1))
        self.back = Image.fromarray((numpy.asarray(self.back, numpy.float32) + noise).clip(0, 255).astype(numpy.uint8), "RGB")
        draw = ImageDraw.Draw(self.back)
        for i in range(5):
            y = H * (0.38 + 0.085 * i)
            draw.line((W * 0.3, y, W, y), fill=blend(self.EDGE, self.INK, 0.25), width=2)
        draw.rectangle((0, H * 0.955, W, H), fill=self.INK)
        draw.rectangle((0, 0, W, H * 0.02), fill=self.INK)
        self.voices = (
            ("first", self.RUST, "VIOLIN"),
            ("second", self.PLUM, "SECOND VIOLIN"),
            ("plucked", self.BRASS, "PIZZICATO"),
            ("viola", self.TEAL, "VIOLA"),
            ("cello", self.INK, "CELLO"),
        )
        pitches = [event[2] for name, _, _ in self.voices for event in score.parts[name].events]
        self.low, self.high = min(pitches), max(pitches)

    def y_of(self, pitch):
        return H * (0.82 - 0.56 * (pitch - self.low) / (self.high - self.low))

    def wheel(self, draw, x, y, r, teeth, colour, turn):
        points = []
        for i in range(teeth):
            a = turn + 2 * math.pi * i / teeth
            half = math.pi / teeth
            for t, d in ((-0.62, 0.87), (-0.34, 1.0), (0.34, 1.0), (0.62, 0.87)):
                points.append((x + r * d * math.cos(a + t * half), y + r * d * math.sin(a + t * half)))
        draw.polygon([(px + 9, py + 12) for px, py in points], fill=blend(self.EDGE, self.INK, 0.35))
        draw.polygon(points, fill=colour)
        draw.ellipse((x - r * 0.72, y - r * 0.72, x + r * 0.72, y + r * 0.72), fill=blend(colour, self.PAPER, 0.25))
        for i in range(5):
            a = turn + i * 2 * math.pi / 5
            cx, cy, hole = x + r * 0.45 * math.cos(a), y + r * 0.45 * math.sin(a), r * 0.17
            draw.ellipse((cx - hole, cy - hole, cx + hole, cy + hole), fill=blend(self.PAPER, self.EDGE, 0.5))
        draw.ellipse((x - r * 0.17, y - r * 0.17, x + r * 0.17, y + r * 0.17), fill=colour)
        draw.ellipse((x - r * 0.06, y - r * 0.06, x + r * 0.06, y + r * 0.06), fill=self.INK)

    def train(self, draw, now):
        """Three wheels that mesh: each beat is one step of the escapement, with a small recoil."""
        beat = self.score.beat(now)
        step = math.floor(beat) + eased((beat % 1) / 0.35) + 0.06 * math.exp(-(beat % 1) * 9) * math.sin((beat % 1) * 26)
        big, teeth = W * 0.105, 24
        turn = step * 2 * math.pi / teeth
        self.wheel(draw, W * 0.135, H * 0.6, big, teeth, self.BRASS, turn)
        self.wheel(draw, W * 0.226, H * 0.833, big * 16 / 24, 16, self.RUST, -turn * 24 / 16 + 0.12)
        self.wheel(draw, W * 0.05, H * 0.86, big * 14 / 24, 14, self.TEAL, -turn * 24 / 14 + 0.3)
        swing = 0.42 * math.cos(math.pi * step)
        x, y = W * 0.135, H * 0.12
        tip = (x + H * 0.28 * math.sin(swing), y + H * 0.28 * math.cos(swing))
        draw.line((x, y, *tip), fill=self.INK, width=9)
        draw.ellipse((tip[0] - 34, tip[1] - 34, tip[0] + 34, tip[1] + 34), fill=self.BRASS, outline=self.INK, width=6)
        draw.ellipse((x - 12, y - 12, x + 12, y + 12), fill=self.INK)

    def roll(self, draw, now):
        """Notes come from the right and sound at the line."""
        at, speed = W * 0.36, W * 0.135
        for name, colour, _ in self.voices[::-1]:
            for start, seconds, pitch, strength in self.score.parts[name].between(now - 3.5, now + 5.5):
                left, right = at + (start - now) * speed, at + (start + seconds - now) * speed - 5
                if right < W * 0.29:
                    continue
                y, sounding = self.y_of(pitch), start <= now < start + seconds
                half = 11 if name != "first" else 14
                if sounding:
                    age = min((now - start) / 0.5, 1)
                    r = half + 60 * age
                    draw.ellipse(
                        (at - r, y - r, at + r, y + r),
                        outline=blend(colour, self.PAPER, 0.2 + 0.8 * age),
                        width=max(round(8 * (1 - age)), 1),
                    )
                passed = start + seconds <= now
                tint = blend(colour, (255, 255, 255), 0.35) if sounding else blend(colour, self.PAPER, 0.62) if passed else colour
                draw.rounded_rectangle((max(left, W * 0.29), y - half, max(right, left + half), y + half), radius=half, fill=tint)
                if sounding:
                    draw.ellipse((at - half - 4, y - half - 4, at + half + 4, y + half + 4), fill=colour)
        draw.rectangle((at - 3, H * 0.2, at + 3, H * 0.88), fill=self.INK)
        draw.polygon([(at - 18, H * 0.185), (at + 18, H * 0.185), (at, H * 0.215)], fill=self.INK)
        draw.rectangle((W * 0.28, H * 0.19, W * 0.29, H * 0.89), fill=blend(self.EDGE, self.INK, 0.3))

    def words(self, draw, now):
        score = self.score
        letters(draw, W * 0.3, H * 0.105, self.title, SCRIPT, 122, self.INK, eased(now / max(score.theme * 0.8, 0.1)))
        letters(draw, W * 0.955, H * 0.085, spaced(self.band), CONDENSED, 34, self.RUST, eased((now - 0.6) / 1.4), "rm")
        letters(
            draw,
            W * 0.955,
            H * 0.14,
            "after Christian Petzold (1677-1733)",
            CONDENSED,
            30,
            blend(self.INK, self.PAPER, 0.25),
            eased((now - 1.2) / 1.6),
            "rm",
        )
        x = W * 0.3
        for name, colour, text in self.voices:
            light = min(score.parts[name].pulse(now, 0.7) * 1.3, 1)
            bright = blend(colour, (255, 255, 255), 0.45) if name != "cello" else (240, 220, 190)
            letters(draw, x, H * 0.978, text, CONDENSED, 28, blend((120, 98, 84), bright, light))
            x += face(CONDENSED, 28).getlength(text) + 52
        if now > score.final:
            share = eased((now - score.final) / 0.8)
            letters(draw, W * 0.68, H * 0.44, "Fine", SCRIPT, 190, blend(self.PAPER, self.RUST, share), 1.0, "mm")
            letters(
                draw,
                W * 0.68,
                H * 0.585,
                spaced("played and drawn by scripts"),
                CONDENSED,
                34,
                blend(self.PAPER, self.INK, eased((now - score.final - 0.6) / 0.8)),
                1.0,
                "mm",
            )

    def frame(self, now):
        image = self.back.copy()
        draw = ImageDraw.Draw(image)
        self.roll(draw, now)
        self.train(draw, now)
        self.words(draw, now)
        return image


FILMS = {"city": City, "clockwork": Clockwork}


def faded(image, now, length):
    """From black at the start and to black at the end."""
    light = min(now / 0.5, (length - now) / 0.9, 1.0)
    return image if light >= 1 else Image.blend(Image.new("RGB", image.size), image, max(light, 0.0))


def make_film(path, session, sound, title, band, film):
    """Draws every frame and encodes film and sound."""
    path.parent.mkdir(parents=True, exist_ok=True)
    score = Score(session, sound)
    drawn = FILMS[film](score, title, band)
    with tempfile.NamedTemporaryFile(suffix=".wav") as music:
        music.write(wav_bytes(sound if path.suffix == ".avi" else sound * LAME_GAIN))
        music.flush()
        command = ["ffmpeg", "-v", "error", "-y", "-f", "rawvideo", "-pix_fmt", "rgb24", "-s", f"{WIDTH}x{HEIGHT}",
                   "-r", str(FRAMES), "-i", "pipe:0", "-i", music.name, *CODECS[path.suffix], "-pix_fmt", "yuv420p", "-threads", "1",
                   "-map_metadata", "-1", "-fflags", "+bitexact", "-flags:v", "+bitexact", "-flags:a", "+bitexact", str(path)]  # fmt: skip
        with subprocess.Popen(command, stdin=subprocess.PIPE) as encoder:
            for number in range(int(score.length * FRAMES)):
                now = number / FRAMES
                encoder.stdin.write(faded(drawn.frame(now).reduce(FINE), now, score.length).tobytes())
            encoder.stdin.close()
            if encoder.wait():
                raise SystemExit(f"{path}: ffmpeg failed")
