"""A ledger of small picture files with the pixels that the image object must make from them.

Each line contains the result of loading (OK or BAD), the SHA-256 of the pixels (bottom-up rows, blue green red alpha,
the colour multiplied by alpha), whether `alpha` is set, the kind (`ImageType`), and the file. A field is "-" when there
is no picture.
"""

import hashlib
import io
import os

from PIL import Image

HERE = os.path.dirname(os.path.abspath(__file__))
BITMAP, GIF, PNG, ICON = 1, 9, 10, 11


def premultiplied(pixel):
    red, green, blue, alpha = pixel
    return (red * alpha // 255, green * alpha // 255, blue * alpha // 255, alpha)


def buffer_of(rows):
    """The buffer for rows of (red, green, blue, alpha), the top row first, with colours as stored."""
    return b"".join(bytes((blue, green, red, alpha)) for row in reversed(rows) for red, green, blue, alpha in row)


class Ledger:
    """The files of one folder. All files are rewritten, and files that are no longer named are removed."""

    def __init__(self, folder):
        self.folder = os.path.join(HERE, folder)
        self.extension = folder
        self.lines = []
        self.files = set()
        os.makedirs(self.folder, exist_ok=True)

    def write(self, name, data):
        assert name not in self.files, name
        # Shorter files are not tried at all.
        assert len(data) >= 57, (name, len(data))
        self.files.add(name)
        with open(os.path.join(self.folder, name), "wb") as file:
            file.write(data)

    def named(self, name):
        return name if "." in name else f"{name}.{self.extension}"

    def good(self, name, data, rows, alpha, kind):
        name = self.named(name)
        self.write(name, data)
        self.lines.append(f"OK {hashlib.sha256(buffer_of(rows)).hexdigest()} {int(alpha)} {kind} {name}")

    def bad(self, name, data):
        name = self.named(name)
        self.write(name, data)
        self.lines.append(f"BAD - - - {name}")

    def close(self):
        for name in os.listdir(self.folder):
            if name not in self.files and name != "ledger.txt":
                os.remove(os.path.join(self.folder, name))
        with open(os.path.join(self.folder, "ledger.txt"), "w", encoding="ascii") as file:
            file.write("".join(line + "\n" for line in sorted(self.lines, key=lambda line: line.split()[-1])))
        print(f"{self.extension}: {len(self.lines)} files")


def seen_by_pillow(data, size=None):
    """Rows of (red, green, blue, alpha) as Pillow reads the file; `size` selects the entry of an icon."""
    with Image.open(io.BytesIO(data)) as picture:
        if size is not None:
            picture.size = size
        picture = picture.convert("RGBA")
        width, height = picture.size
        values = list(picture.getdata())
    return [values[y * width:(y + 1) * width] for y in range(height)]


def expect_like(name, data, rows, size=None, tolerance=0):
    """Compares rows of straight colours with those of Pillow. Colours under an alpha of 0 are ignored."""
    seen = seen_by_pillow(data, size)
    assert [len(row) for row in seen] == [len(row) for row in rows], name
    for y, (seen_row, row) in enumerate(zip(seen, rows)):
        for x, (other, own) in enumerate(zip(seen_row, row)):
            same = own[3] == other[3] and (own[3] == 0 or all(abs(a - b) <= tolerance for a, b in zip(own, other)))
            assert same, (name, x, y, own, other)
