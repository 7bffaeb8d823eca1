"""Shared by the checks of this repository: the files that they read, and how they report findings."""

import argparse
import re
import subprocess
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent


def arguments(description, *options):
    """The command line of a check: --root, and options as (names, settings)."""
    parser = argparse.ArgumentParser(description=description)
    parser.add_argument("--root", type=Path, default=ROOT, help="the tree to check (default: this one)")
    for names, settings in options:
        parser.add_argument(*names, **settings)
    return parser.parse_args()


def files_below(root, folder, *endings):
    """Every file below a folder with one of these endings, as sorted paths relative to the root."""
    place = root / folder
    found = (path for path in place.rglob("*") if path.is_file() and "__pycache__" not in path.parts)
    return sorted(path.relative_to(root) for path in found if not endings or path.suffix in endings)


def kept_files(root):
    """Every file that git tracks or would add; outside a repository every file that is not hidden."""
    command = ["git", "-C", str(root), "ls-files", "-z", "--cached", "--others", "--exclude-standard"]
    listing = subprocess.run(command, capture_output=True, check=False)
    if listing.returncode == 0:
        names = {name for name in listing.stdout.decode("utf-8", "surrogateescape").split("\0") if name}
        return sorted(Path(name) for name in names if (root / name).is_file())
    return [path for path in files_below(root, ".") if not any(part.startswith(".") for part in path.parts)]


def text_of(path):
    """A file's text, or None if it is not a text file."""
    data = path.read_bytes()
    return None if b"\0" in data else data.decode("utf-8", "replace")


def numbered(text):
    """The lines of a text with their numbers from 1."""
    return enumerate(text.split("\n"), 1)


def table_below(text, heading):
    """The first Markdown table below a heading: (line number, cells) of each row after its header."""
    inside, rows = False, []
    for number, line in numbered(text):
        if line.startswith("#"):
            if rows:
                break
            inside = line.lstrip("#").strip() == heading
        elif inside and line.startswith("|"):
            rows.append((number, [cell.strip() for cell in re.split(r"(?<!\\)\|", line)[1:-1]]))
        elif inside and rows:
            break
    return rows[2:]


def report(name, findings, looked_at):
    """Prints findings of (path, line, text), or the summary if there are none. Returns the exit code."""
    for path, line, text in sorted(findings, key=lambda finding: (str(finding[0]), finding[1], finding[2])):
        print(f"{path}:{line}: {text}")
    if findings:
        print(f"{name}: {len(findings)} finding{'s' if len(findings) > 1 else ''}", file=sys.stderr)
        return 1
    print(f"{name}: good, {looked_at}")
    return 0
