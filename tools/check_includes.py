#!/usr/bin/python3
"""Checks who includes whom in src/ against the table in docs/architecture.md.

The first row of the table that matches a file gives its kind and its rights. An entry of "May include" is a kind, a
kind of some rooms ("header of shell settings"), a kind of the file's own folder ("own state"), a pattern of paths, or
"everything". Toolkits that end in "only" hold for everything a file reaches through our headers as well.
"""

import re
import sys
from pathlib import PurePosixPath

from check_support import arguments, files_below, numbered, report, table_below, text_of

TABLE = "docs/architecture.md"
HEADING = "Who may include whom"

INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]')
TYPE = re.compile(r"\b(?:struct|class|union|enum(?:\s+class)?)\s+(\w+)[^;{}()]*\{|\busing\s+(\w+)\s*=")
COMMENT = re.compile(r"//[^\n]*|/\*.*?\*/", re.DOTALL)

# Which toolkit a system header belongs to; the first match counts. A header that is not here is a finding, so that
# nobody brings in a toolkit unseen.
TOOLKITS = [
    ("Qt SerialPort", r"QSerialPort(Info)?"),
    ("Qt Widgets", r"Q(Application|Widget|Dialog|MessageBox|FileDialog|Label|LineEdit|ListWidget|ListView|TreeView|"
                   r"TableView|TableWidget|PushButton|CheckBox|ComboBox|RadioButton|SpinBox|Slider|TabWidget|GroupBox|"
                   r"(Box|Grid|Form|VBox|HBox|Stacked)?Layout|StackedWidget|ScrollArea|Frame|Style|StyleFactory)"),
    ("Qt Gui", r"Q(GuiApplication|GlyphRun|Window|Screen|Image|ImageReader|ImageWriter|Pixmap|Bitmap|Painter|PainterPath|Pen|"
               r"Brush|Color|Rgb|RgbaFloat|Font|FontDatabase|FontInfo|FontMetrics|FontMetricsF|TextOption|TextLayout|"
               r"GlyphRun|Transform|Polygon|Region|Cursor|Icon|Palette|\w+Event|KeySequence|InputMethod|Clipboard|RawFont|"
               r"StaticText|BackingStore)"),
    ("Qt Core", r"Qt|QtGlobal|Q(String|StringView|StringList|StringDecoder|StringEncoder|Utf8StringView|"
                r"Latin1StringView|AnyStringView|Char|ByteArray|ByteArrayView|Rect|RectF|Size|SizeF|Point|PointF|Date|"
                r"Time|DateTime|TimeZone|Set|Hash|HashFunctions|Map|List|VarLengthArray|Variant|Locale|Collator|"
                r"RegularExpression|"
                r"Json(Array|Object|Value|Document)|CryptographicHash|Buffer|File|FileInfo|Dir|IODevice|TemporaryDir|"
                r"TemporaryFile|StandardPaths|CoreApplication|CoreEvent|Event|EventLoop|Object|Timer|BasicTimer|"
                r"ElapsedTimer|DeadlineTimer|SocketNotifier|Thread|Mutex|Process|LibraryInfo|SysInfo|MetaObject)"),
    ("GStreamer", r"(gst|glib|glib-object)(/.*)?(\.h)?"),
    ("X11", r"X11/.*|xcb/.*"),
    ("ICU", r"unicode/.*"),
    ("mpg123", r"mpg123\.h"),
    ("fontconfig", r"fontconfig/.*"),
    ("giflib", r"gif_lib\.h"),
    ("zlib", r"zlib\.h"),
    ("POSIX", r"(unistd|fcntl|dirent|dlfcn|poll|termios|pty|signal|time|pthread|malloc)\.h|sys/.*|linux/.*"),
    ("", r"immintrin\.h"),  # the compiler's own names for the processor's vectors
    ("", r"[a-z][a-z0-9_]*"),  # the standard library, which everyone may use
]


class Row:
    """One row of the table."""

    def __init__(self, line, cells):
        kind, files, may_include, toolkits = cells
        self.line, self.kind = line, kind
        self.files = re.findall(r"`([^`]+)`", files)
        self.may_include = [item.strip() for item in may_include.split(",")]
        self.reaches_only = toolkits.endswith(" only")
        self.toolkits = {name.strip() for name in toolkits.removesuffix(" only").split(",")} | {""}

    def covers(self, path):
        return any(matches(path, pattern) for pattern in self.files)

    def allows(self, includer, target, kind):
        """Whether a file of this row may include `target`, which is of that kind."""
        return any(self.item_allows(item, includer, target, kind) for item in self.may_include)

    @staticmethod
    def item_allows(item, includer, target, kind):
        if item.startswith("`"):
            return matches(target, item.strip("`"))
        if item.startswith("own "):
            return kind == item[4:] and target.parent == includer.parent
        name, _, rooms = item.partition(" of ")
        return item == "everything" or (kind == name and (not rooms or target.parts[0] in rooms.split()))


def matches(path, pattern):
    """A pattern of paths below src/: "*" stands for anything within one name, {a,b} for either."""
    expression = re.escape(pattern).replace(r"\*", "[^/]*")
    expression = re.sub(r"\\\{(.*?)\\\}", lambda choice: "(" + choice[1].replace(",", "|") + ")", expression)
    return re.fullmatch(expression, str(path)) is not None


def toolkit_of(header):
    """The toolkit of a system header, "" for the standard library; nothing when it is not known."""
    for name, pattern in TOOLKITS:
        if re.fullmatch(pattern, header):
            return name
    return None


class Source:
    """One file of src/ with what it includes."""

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
    """The files of src/ against the rows of the table."""

    def __init__(self, root):
        rows = table_below((root / TABLE).read_text(encoding="utf-8"), HEADING)
        self.rows = [Row(line, cells) for line, cells in rows]
        paths = [PurePosixPath(*path.parts[1:]) for path in files_below(root, "src", ".h", ".cpp")]
        self.sources = {path: Source(root, path) for path in paths}
        self.findings = []

    def row_of(self, path):
        return next((row for row in self.rows if row.covers(path)), None)

    def find(self, path, line, text):
        self.findings.append((f"src/{path}", line, text))

    def run(self):
        if not self.rows:
            self.findings.append((TABLE, 1, f'no table below "{HEADING}"'))
            return
        for source in self.sources.values():
            row = self.row_of(source.path)
            if row is None:
                self.find(source.path, 1, f"no row of the table in {TABLE} covers this file")
                continue
            self.check_ours(source, row)
            self.check_toolkits(source, row)
        for row in self.rows:
            if not any(self.row_of(path) is row for path in self.sources):
                self.findings.append((TABLE, row.line, f"no file is of this kind: {row.kind}"))

    def check_ours(self, source, row):
        for line, target in source.ours:
            if target not in self.sources:
                self.find(source.path, line, f'there is no "{target}" in src/')
                continue
            other = self.row_of(target)
            kind = other.kind if other else "?"
            if not row.allows(source.path, target, kind):
                self.find(source.path, line, f'"{row.kind}" may not include "{target}" ({kind}); {TABLE}:{row.line}')
            elif row.kind == kind == "header" and not self.needs_type(source, target):
                self.find(source.path, line, f'takes no type from "{target}": a header includes another one only then')

    def needs_type(self, source, target):
        words = set(re.findall(r"\w+", source.code))
        return bool(self.sources[target].types() & words)

    def check_toolkits(self, source, row):
        for line, header in source.system:
            toolkit = toolkit_of(header)
            if toolkit is None:
                self.find(source.path, line, f"<{header}> belongs to no toolkit that this check knows")
            elif toolkit not in row.toolkits:
                self.find(source.path, line, f'"{row.kind}" may not use {toolkit} (<{header}>); {TABLE}:{row.line}')
        if row.reaches_only:
            for line, target in source.ours:
                self.check_reach(source, row, line, target)

    def check_reach(self, source, row, line, target):
        """What comes along with one of our headers, followed to its end."""
        seen, waiting = set(), [target]
        while waiting:
            path = waiting.pop()
            if path in seen or path not in self.sources:
                continue
            seen.add(path)
            waiting += [name for _, name in self.sources[path].ours]
            for _, header in self.sources[path].system:
                if toolkit_of(header) not in row.toolkits:
                    self.find(source.path, line, f'"{row.kind}" may not reach <{header}> through "{path}"')


def main():
    root = arguments(__doc__).root
    check = Check(root)
    check.run()
    includes = sum(len(source.ours) + len(source.system) for source in check.sources.values())
    return report("check_includes", check.findings, f"{len(check.sources)} files, {includes} includes")


if __name__ == "__main__":
    sys.exit(main())
