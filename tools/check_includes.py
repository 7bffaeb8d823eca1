#!/usr/bin/python3
"""Checks the includes in src/ against the table in docs/architecture.md.

The table lists the folders of src/ from the ground up. A file may include its own folder and what its row names: "all
above" (every folder above it in the table), or single folders and headers above it, so that folders never form a cycle;
programs may include "everything". No header includes the main form, and a room's header includes another room's only
for a type that it needs. Toolkits that end in "only" also apply to everything that a file includes indirectly through
our headers.
"""

import re
import sys
from pathlib import PurePosixPath

from check_support import arguments, files_below, numbered, report, table_below, text_of

TABLE = "docs/architecture.md"
HEADING = "Who may include whom"
FORM = PurePosixPath("state/form_main.h")

INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]')
TYPE = re.compile(r"\b(?:struct|class|union|enum(?:\s+class)?)\s+(\w+)[^;{}()]*\{|\busing\s+(\w+)\s*=")
COMMENT = re.compile(r"//[^\n]*|/\*.*?\*/", re.DOTALL)

# The toolkit of each system header; the first match counts. A header that matches none is a finding, so that no new
# toolkit is used unnoticed.
TOOLKITS = [
    ("Qt SerialPort", r"QSerialPort(Info)?"),
    ("Qt Widgets", r"Q(Application|Widget|Dialog|MessageBox|FileDialog|Label|LineEdit|ListWidget|ListView|TreeView|"
                   r"TableView|TableWidget|PushButton|CheckBox|ComboBox|RadioButton|SpinBox|Slider|TabWidget|GroupBox|"
                   r"(Box|Grid|Form|VBox|HBox|Stacked)?Layout|StackedWidget|ScrollArea|ScrollBar|AbstractItemView|StyledItemDelegate|Frame|Style|"
                   r"StyleFactory)"),
    ("Qt Gui", r"Q(GuiApplication|GlyphRun|Window|Screen|Image|ImageReader|ImageWriter|Pixmap|Bitmap|Painter|PainterPath|Pen|"
               r"Brush|Color|Rgb|RgbaFloat|Font|FontDatabase|FontInfo|FontMetrics|FontMetricsF|TextOption|TextLayout|"
               r"GlyphRun|Transform|Polygon|Region|Cursor|Icon|Palette|\w+Event|KeySequence|InputMethod|Clipboard|RawFont|"
               r"StaticText|BackingStore)"),
    ("Qt Core", r"Qt|QtGlobal|Q(String|StringView|StringList|StringDecoder|StringEncoder|Utf8StringView|"
                r"Latin1StringView|AnyStringView|Char|ByteArray|ByteArrayView|Rect|RectF|Size|SizeF|Point|PointF|Date|"
                r"Time|DateTime|TimeZone|Set|Hash|HashFunctions|Map|List|VarLengthArray|Variant|Locale|Collator|"
                r"RegularExpression|"
                r"Json(Array|Object|Value|Document)|CryptographicHash|Buffer|File|FileInfo|Dir|IODevice|TemporaryDir|"
                r"TemporaryFile|FileSystemWatcher|StandardPaths|CoreApplication|CoreEvent|Event|EventLoop|Object|Timer|BasicTimer|"
                r"ElapsedTimer|DeadlineTimer|SocketNotifier|Thread|Mutex|Process|LibraryInfo|SysInfo|MetaObject|"
                r"AbstractListModel|SignalBlocker|ScopedValueRollback)"),
    ("GStreamer", r"(gst|glib|glib-object)(/.*)?(\.h)?"),
    ("X11", r"X11/.*|xcb/.*"),
    ("libevdev", r"libevdev/.*"),
    ("libudev", r"libudev\.h"),
    ("ICU", r"unicode/.*"),
    ("mpg123", r"mpg123\.h"),
    ("fontconfig", r"fontconfig/.*"),
    ("giflib", r"gif_lib\.h"),
    ("zlib", r"zlib\.h"),
    ("POSIX", r"(unistd|fcntl|dirent|dlfcn|grp|mntent|poll|pwd|termios|pty|signal|time|pthread|malloc)\.h|sys/.*|linux/.*"),
    ("", r"(?:immintrin|arm_neon)\.h"),  # the compiler's own names for vector instructions
    ("", r"[a-z][a-z0-9_]*"),  # the standard library, which every file may use
]


class Row:
    """One row of the table."""

    def __init__(self, line, cells):
        folder, _, sees, toolkits = cells
        self.line, self.folder = line, folder.strip("`")
        self.sees = [item.strip(" `") for item in sees.split(",") if item.strip()]
        self.reaches_only = toolkits.endswith(" only")
        self.toolkits = {name.strip() for name in toolkits.removesuffix(" only").split(",")} | {""}

    def allows(self, target, other):
        """Whether a file of this row may include `target`, which is of the row `other`."""
        if other is self or "everything" in self.sees:
            return True
        named = {"all above", other.folder, str(target)} & set(self.sees)
        return bool(named) and other.line < self.line


def toolkit_of(header):
    """The toolkit of a system header: "" for the standard library, None if it is unknown."""
    for name, pattern in TOOLKITS:
        if re.fullmatch(pattern, header):
            return name
    return None


class Source:
    """One file of src/ with its includes."""

    def __init__(self, root, path):
        text = text_of(root / "src" / path) or ""
        self.path, self.code = path, COMMENT.sub(" ", text)
        found = [(number, INCLUDE.match(line)) for number, line in numbered(text)]
        includes = [(number, hit[1], hit[2]) for number, hit in found if hit]
        self.ours = [(number, PurePosixPath(name)) for number, mark, name in includes if mark == '"']
        self.system = [(number, name) for number, mark, name in includes if mark == "<"]

    def types(self):
        return {name for hit in TYPE.findall(self.code) for name in hit if name}


class Check:
    """The files of src/, checked against the rows of the table."""

    def __init__(self, root):
        rows = table_below((root / TABLE).read_text(encoding="utf-8"), HEADING)
        self.rows = [Row(line, cells) for line, cells in rows]
        paths = [PurePosixPath(*path.parts[1:]) for path in files_below(root, "src", ".h", ".cpp")]
        self.sources = {path: Source(root, path) for path in paths}
        self.findings = []

    def row_of(self, path):
        return next((row for row in self.rows if row.folder == str(path.parent)), None)

    def find(self, path, line, text):
        self.findings.append((f"src/{path}", line, text))

    def run(self):
        if not self.rows:
            self.findings.append((TABLE, 1, f'no table below "{HEADING}"'))
            return
        for source in self.sources.values():
            row = self.row_of(source.path)
            if row is None:
                self.find(source.path, 1, f"the table in {TABLE} has no row for this folder")
                continue
            self.check_ours(source, row)
            self.check_toolkits(source, row)
        for row in self.rows:
            if not any(self.row_of(path) is row for path in self.sources):
                self.findings.append((TABLE, row.line, f"this folder has no files: {row.folder}"))

    def check_ours(self, source, row):
        is_header = source.path.suffix == ".h"
        for line, target in source.ours:
            if target not in self.sources:
                self.find(source.path, line, f'there is no "{target}" in src/')
                continue
            other = self.row_of(target)
            if other and not row.allows(target, other):
                self.find(source.path, line, f'"{row.folder}" may not include "{target}"; {TABLE}:{row.line}')
            elif is_header and target == FORM and not row.folder.startswith("app"):
                self.find(source.path, line, f'a header declares the form and does not include "{FORM}"')
            elif is_header and self.are_rooms(row, other) and not self.needs_type(source, target):
                self.find(source.path, line, f'a header may include "{target}" only for a type, and uses none')

    def are_rooms(self, *rows):
        """Folders above the form that are not adapters: their headers declare routines that take the form."""
        form = next((row.line for row in self.rows if row.folder == str(FORM.parent)), 0)
        return all(row and row.line > form and "/" not in row.folder for row in rows)

    def needs_type(self, source, target):
        words = set(re.findall(r"\w+", source.code))
        return bool(self.sources[target].types() & words)

    def check_toolkits(self, source, row):
        for line, header in source.system:
            toolkit = toolkit_of(header)
            if toolkit is None:
                self.find(source.path, line, f"<{header}> belongs to no toolkit known to this check")
            elif toolkit not in row.toolkits:
                self.find(source.path, line, f'"{row.folder}" may not use {toolkit} (<{header}>); {TABLE}:{row.line}')
        if row.reaches_only:
            for line, target in source.ours:
                self.check_reach(source, row, line, target)

    def check_reach(self, source, row, line, target):
        """The system headers that one of our headers includes, directly or indirectly."""
        seen, waiting = set(), [target]
        while waiting:
            path = waiting.pop()
            if path in seen or path not in self.sources:
                continue
            seen.add(path)
            waiting += [name for _, name in self.sources[path].ours]
            for _, header in self.sources[path].system:
                if toolkit_of(header) not in row.toolkits:
                    self.find(source.path, line, f'"{row.folder}" may not reach <{header}> through "{path}"')


def main():
    root = arguments(__doc__).root
    check = Check(root)
    check.run()
    includes = sum(len(source.ours) + len(source.system) for source in check.sources.values())
    return report("check_includes", check.findings, f"{len(check.sources)} files, {includes} includes")


if __name__ == "__main__":
    sys.exit(main())
