// Reading single keys of an INI file, and changing them in the file's text.
#include "settings/ini_file.h"

#include "settings/text_encoding.h"

#include <algorithm>
#include <utility>

namespace {

constexpr qsizetype kLongestValue = 254;
// The usual length of a line, for estimating how many keys a file has.
constexpr qsizetype kUsualLine = 24;
constexpr QChar kFullWidthEquals = QChar(0xFF1D);

bool IsBlank(QChar c) {
    return c == u' ' || c == u'\t';
}

bool IsLineEnd(QChar c) {
    return c == u'\n' || c == u'\r';
}

QStringView FirstLine(QStringView text) {
    return text.first(std::find_if(text.begin(), text.end(), IsLineEnd) - text.begin());
}

QStringView WithoutBlanksInFront(QStringView text) {
    return text.sliced(std::find_if_not(text.begin(), text.end(), IsBlank) - text.begin());
}

QStringView WithoutBlanks(QStringView text) {
    while (!text.isEmpty() && IsBlank(text.back())) {
        text.chop(1);
    }
    return WithoutBlanksInFront(text);
}

// A byte order mark before a name or a value is not part of it.
QStringView WithoutMark(QStringView text) {
    return text.startsWith(QChar::ByteOrderMark) ? text.sliced(1) : text;
}

// Makes no copy: the result is valid only as long as the text that it is part of.
QString TextWithin(QStringView text) {
    return QString::fromRawData(text.data(), text.size());
}

// Returns the name as it can be written to the file: one line without blanks around it. Reading and writing
// both use this, so that a value is found under the name it was written under.
QStringView WritableName(QStringView name) {
    return WithoutMark(WithoutBlanks(FirstLine(name)));
}

// Does the same for a key, and replaces "=", which would end the key, with its full-width form.
QString WritableKey(QStringView key) {
    QString name = TextWithin(WritableName(key));
    return name.contains(u'=') ? name.replace(u'=', kFullWidthEquals) : name;
}

// Returns the text as it will be read back from the file: half of a surrogate pair becomes "?".
QString AsStored(QStringView text) {
    return DecodeAs(TextEncoding::kUtf8, *EncodeAs(TextEncoding::kUtf8, text.toString()));
}

struct Line {
    enum Kind { kBlank, kSection, kKey, kComment, kOther };
    Kind kind = kOther;
    QStringView name = {};
    QStringView value = {};
};

Line ParseLine(QStringView line) {
    const QStringView text = WithoutBlanks(line);
    if (text.isEmpty()) {
        return {Line::kBlank};
    }
    const QChar first = text.front();
    const bool isIndented = IsBlank(line.front());
    const qsizetype equals = line.indexOf(u'=');
    if (first == u'[') {
        const qsizetype bracket = text.lastIndexOf(u']');
        if (!isIndented || (bracket > 0 && equals < 0)) {
            const QStringView name = text.first(bracket > 0 ? bracket : text.size()).sliced(1);
            return {Line::kSection, WithoutMark(WithoutBlanks(name))};
        }
    }
    const bool isComment = !isIndented && (first == u';' || first == u'#');
    if (isComment) {
        return {Line::kComment};
    }
    if (equals < 0 || first == u'=') {
        return {};
    }
    return {Line::kKey, WithoutMark(WithoutBlanks(line.first(equals))),
            WithoutBlanksInFront(line.sliced(equals + 1))};
}

// Returns the line end of the first line; CR LF when it has none.
QString LineEndOf(const QString& text) {
    const QStringView end = QStringView(text).sliced(FirstLine(text).size());
    return end.isEmpty() || end.startsWith(u"\r\n") ? QStringLiteral("\r\n") : QString(end.front());
}

} // namespace

bool operator==(const IniName& a, const IniName& b) {
    // Most names are looked up in the file's own spelling.
    return a.section == b.section && (a.text == b.text || a.text.compare(b.text, Qt::CaseInsensitive) == 0);
}

// Qt has no hash that ignores case. All halves of surrogate pairs hash alike.
std::size_t qHash(const IniName& name, std::size_t seed) {
    constexpr std::size_t kFactor = 0x9E3779B97F4A7C15;
    seed += static_cast<std::size_t>(name.section) * kFactor;
    for (const QChar c : name.text) {
        const bool isCapital = c >= u'A' && c <= u'Z';
        const char16_t ascii = c.unicode() | (isCapital ? 0x20 : 0);
        const char16_t folded = c < QChar(0x80) ? ascii : c.toCaseFolded().unicode();
        seed = (seed ^ (c.isSurrogate() ? 0xD800 : folded)) * kFactor;
    }
    return seed ^ seed >> 32;
}

IniFile::IniFile(const QByteArray& bytes) : hasByteOrderMark_(HasByteOrderMark(bytes)) {
    const QByteArrayView text = QByteArrayView(bytes).sliced(hasByteOrderMark_ ? kByteOrderMarkLength : 0);
    encoding_ = EncodingOf(text);
    text_ = parsed_ = DecodeAs(encoding_, text);
    ReadLines();
}

QByteArray IniFile::Bytes() const {
    const QByteArray mark = hasByteOrderMark_ ? QByteArrayLiteral("\xEF\xBB\xBF") : QByteArray();
    return mark + *EncodeAs(encoding_, text_);
}

void IniFile::ReadLines() {
    const QStringView all = parsed_;
    values_.reserve(all.size() / kUsualLine);
    Section* section = nullptr;
    for (qsizetype at = 0; at < all.size();) {
        const QStringView bare = FirstLine(all.sliced(at));
        at += bare.size();
        at += all.sliced(at).startsWith(u"\r\n") ? 2 : 1;
        const Line line = ParseLine(bare);
        if (line.kind == Line::kSection) {
            section = NewSection(TextWithin(line.name));
        }
        if (section == nullptr || line.kind == Line::kBlank) {
            continue;
        }
        section->end = std::min(at, all.size());
        if (line.kind == Line::kKey) {
            qsizetype& begin = values_[{section->number, TextWithin(line.name)}];
            begin = begin != 0 ? begin : line.value.data() - all.data();
        }
    }
}

std::vector<IniLine> IniFile::Lines() const {
    const QStringView all = parsed_;
    std::vector<IniLine> lines;
    QString section;
    int number = 0;
    for (qsizetype at = 0; at < all.size();) {
        const QStringView bare = FirstLine(all.sliced(at));
        at += bare.size();
        at += all.sliced(at).startsWith(u"\r\n") ? 2 : 1;
        ++number;
        const Line line = ParseLine(bare);
        if (line.kind == Line::kSection) {
            section = line.name.toString();
            lines.push_back({number, IniLine::kSection, section, {}, {}});
        } else if (line.kind == Line::kKey) {
            lines.push_back(
                {number, IniLine::kKey, section, line.name.toString(), WithoutMark(line.value).toString()});
        } else if (line.kind == Line::kOther) {
            lines.push_back({number, IniLine::kIgnored, section, {}, bare.toString()});
        }
    }
    return lines;
}

// Returns a new section of that name, or nullptr when there is one already.
IniFile::Section* IniFile::NewSection(const QString& name) {
    Section& section = sections_[{0, name}];
    if (section.number != 0) {
        return nullptr;
    }
    section.number = sections_.size();
    return &section;
}

QString IniFile::Value(QStringView section, QStringView key) const {
    const auto place = sections_.constFind({0, TextWithin(WritableName(section))});
    const qsizetype begin = place == sections_.cend() ? 0 : values_.value({place->number, WritableKey(key)});
    if (begin == 0) {
        return QString();
    }
    const QStringView value = WithoutMark(FirstLine(QStringView(text_).sliced(begin)));
    if (value.size() <= kLongestValue) {
        return value.toString();
    }
    // A surrogate pair is one character and is not split.
    return value.first(kLongestValue - (value[kLongestValue - 1].isHighSurrogate() ? 1 : 0)).toString();
}

void IniFile::SetValue(const QString& section, const QString& key, const QString& value) {
    const QString sectionName = AsStored(WritableName(section));
    const QString keyName = AsStored(WritableKey(key));
    const QString text = AsStored(WithoutBlanksInFront(FirstLine(value)));
    if (keyName.isEmpty()) {
        return;
    }
    if (!EncodeAs(encoding_, sectionName + keyName + text)) {
        encoding_ = TextEncoding::kUtf8;
    }
    if (!sections_.contains({0, sectionName})) {
        AppendSection(sectionName);
    }
    Section& place = sections_[{0, sectionName}];
    if (const qsizetype begin = values_.value({place.number, keyName})) {
        Replace(begin, begin + FirstLine(QStringView(text_).sliced(begin)).size(), text);
    } else {
        AppendKey(place, keyName, text);
    }
    // The bytes of a Windows-1252 file can happen to be valid UTF-8 now and would be read back as other
    // characters.
    if (encoding_ == TextEncoding::kWindows1252) {
        encoding_ = EncodingOf(*EncodeAs(encoding_, text_));
    }
}

void IniFile::AppendSection(const QString& name) {
    EndLineAt(text_.size());
    text_ += u'[' + name + u']' + LineEndOf(text_);
    NewSection(name)->end = text_.size();
}

void IniFile::AppendKey(Section& section, const QString& key, const QString& value) {
    EndLineAt(section.end);
    // A key that would turn its line into a comment or a section gets a leading blank.
    const bool isMistakable = QStringLiteral(";#[").contains(key.front());
    const QString start = (isMistakable ? QStringLiteral(" ") : QString()) + key + u'=';
    const qsizetype begin = section.end;
    Replace(begin, begin, start + value + LineEndOf(text_));
    values_[{section.number, key}] = begin + start.size();
    // If the new line ends with CR and an LF follows, both now form one line end.
    if (QStringView(text_).sliced(section.end - 1).startsWith(u"\r\n")) {
        ++section.end;
    }
}

// Inserts a line end at `at` when the text before it does not end with one. Only the file's last line can
// lack it.
void IniFile::EndLineAt(qsizetype at) {
    if (at > 0 && !IsLineEnd(text_.at(at - 1))) {
        Replace(at, at, LineEndOf(text_));
    }
}

// Replaces a part of the text and moves all positions after it. Parsing again would be too slow when many
// keys of a large file are changed at once.
void IniFile::Replace(qsizetype begin, qsizetype end, const QString& added) {
    text_.replace(begin, end - begin, added);
    const qsizetype distance = added.size() - (end - begin);
    for (Section& section : sections_) {
        section.end += section.end >= end ? distance : 0;
    }
    for (qsizetype& value : values_) {
        value += value > begin ? distance : 0;
    }
}
