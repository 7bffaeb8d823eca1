// Single keys of an INI file: reading them, and changing them in the file's bytes.
#include "settings/ini_file.h"

#include "settings/parsed_ini.h"
#include "settings/text_encoding.h"

#include <algorithm>
#include <utility>

namespace {

constexpr qsizetype kLongestValue = 254;

bool IsBlank(QChar c) {
    return c == u' ' || c == u'\t';
}

bool IsLineEnd(QChar c) {
    return c == u'\n' || c == u'\r';
}

// A value as it can stand in the file: one line. Blanks in front are left away, since reading drops them.
QStringView WritableValue(QStringView value) {
    QStringView line = value.first(std::find_if(value.begin(), value.end(), IsLineEnd) - value.begin());
    while (!line.isEmpty() && IsBlank(line.front())) {
        line = line.sliced(1);
    }
    return line;
}

// A name as it can stand in the file: one line, no blanks around it. Reading and writing both go through
// this, so that whatever name a value was written under finds it again.
QString WritableName(QStringView name) {
    QStringView line = WritableValue(name);
    while (!line.isEmpty() && IsBlank(line.back())) {
        line.chop(1);
    }
    return line.toString();
}

// The same for a key: "=", which would end it, becomes its full-width form U+FF1D.
QString WritableKey(QStringView key) {
    return WritableName(key).replace(u'=', QChar(0xFF1D));
}

// Whether a name can stand in the file as it is. Every character is looked at, whatever came before: the
// compiler turns that into wide operations.
bool IsWritable(QStringView name) {
    const char16_t* const units = name.utf16();
    unsigned special = 0;
    for (qsizetype i = 0; i < name.size(); ++i) {
        special |= static_cast<unsigned>(units[i] == u'=') | static_cast<unsigned>(units[i] == u'\n') |
                   static_cast<unsigned>(units[i] == u'\r');
    }
    return special == 0 && (name.isEmpty() || !(IsBlank(name.front()) || IsBlank(name.back())));
}

// A key that would make its line a comment or a section gets a blank in front.
QByteArray BlankBefore(const QString& key) {
    const bool mistakable = key.startsWith(u';') || key.startsWith(u'#') || key.startsWith(u'[');
    return mistakable ? QByteArrayLiteral(" ") : QByteArray();
}

qsizetype TextStart(const QByteArray& bytes) {
    return HasByteOrderMark(bytes) ? kByteOrderMarkLength : 0;
}

QByteArray ToUtf8(const QByteArray& bytes, TextEncoding from) {
    const qsizetype start = TextStart(bytes);
    return bytes.first(start) +
           *EncodeAs(TextEncoding::kUtf8, DecodeAs(from, QByteArrayView(bytes).sliced(start)));
}

// Changed bytes as they will be read again in the same encoding. A Windows-1252 file may by chance have
// become valid UTF-8, which would be read as other characters.
QByteArray Unmistakable(const QByteArray& bytes, TextEncoding encoding) {
    const QByteArrayView text = QByteArrayView(bytes).sliced(TextStart(bytes));
    return EncodingOf(text) == encoding ? bytes : ToUtf8(bytes, encoding);
}

// The bytes with a key's line added to an existing section, or with a new section at the end.
QByteArray WithNewKey(const ParsedIni& file, const QString& section, const QByteArray& line) {
    QByteArray bytes = file.Bytes();
    const IniSection* const place = file.Section(section);
    const qsizetype at = place != nullptr ? static_cast<qsizetype>(place->end) : bytes.size();
    QByteArray added;
    if (at > TextStart(bytes) && !IsLineEnd(QLatin1Char(bytes[at - 1]))) {
        added += file.LineEnd();
    }
    if (place == nullptr) {
        added += '[' + *EncodeAs(file.Encoding(), section) + ']' + file.LineEnd();
    }
    added += line + file.LineEnd();
    return bytes.insert(at, added);
}

// The bytes with the key's value replaced or added; key and value come as text in the file's encoding.
QByteArray Changed(const ParsedIni& file, const QString& section, const QString& key, const QByteArray& key8,
                   const QByteArray& value8) {
    const IniEntry* const entry = file.Entry(section, key);
    if (entry == nullptr) {
        return WithNewKey(file, section, BlankBefore(key) + key8 + '=' + value8);
    }
    QByteArray bytes = file.Bytes();
    return bytes.replace(entry->value.begin, entry->value.end - entry->value.begin, value8);
}

// Does the same to the parsed file itself where no new parse is needed: a file of counts is changed at many
// places by one pick. False, and nothing changed, where it is.
bool ChangeInPlace(ParsedIni& file, const QString& section, const QString& key, const QByteArray& key8,
                   const QByteArray& value8) {
    if (file.Encoding() != TextEncoding::kUtf8) {
        return false;
    }
    if (const IniEntry* const entry = file.Entry(section, key)) {
        file.ReplaceValue(*entry, value8);
        return true;
    }
    const IniSection* const place = file.Section(section);
    if (place == nullptr || !IsLineEnd(QLatin1Char(file.Bytes().at(place->end - 1)))) {
        return false;
    }
    file.AppendEntry(*place, BlankBefore(key), key8, value8);
    return true;
}

} // namespace

struct IniFile::Parsed : ParsedIni {
    using ParsedIni::ParsedIni;
};

IniFile::IniFile() : IniFile(QByteArray()) {}
IniFile::IniFile(QByteArray bytes) : parsed_(std::make_unique<Parsed>(std::move(bytes))) {}
IniFile::~IniFile() = default;
IniFile::IniFile(IniFile&&) noexcept = default;
IniFile& IniFile::operator=(IniFile&&) noexcept = default;

QString IniFile::Value(QStringView section, QStringView key) const {
    if (!IsWritable(section) || !IsWritable(key)) {
        const QString writableSection = WritableName(section);
        const QString writableKey = WritableKey(key);
        const IniEntry* const entry = parsed_->Entry(writableSection, writableKey);
        return entry != nullptr ? parsed_->Value(*entry, kLongestValue) : QString();
    }
    const IniEntry* const entry = parsed_->Entry(section, key);
    return entry != nullptr ? parsed_->Value(*entry, kLongestValue) : QString();
}

void IniFile::SetValue(const QString& section, const QString& key, const QString& value) {
    const QString sectionName = WritableName(section);
    const QString keyName = WritableKey(key);
    const QString text = WritableValue(value).toString();
    if (keyName.isEmpty()) {
        return;
    }
    if (!EncodeAs(parsed_->Encoding(), sectionName + keyName + text)) {
        parsed_ = std::make_unique<Parsed>(ToUtf8(parsed_->Bytes(), parsed_->Encoding()));
    }
    const QByteArray value8 = *EncodeAs(parsed_->Encoding(), text);
    const QByteArray key8 = *EncodeAs(parsed_->Encoding(), keyName);
    if (!ChangeInPlace(*parsed_, sectionName, keyName, key8, value8)) {
        const QByteArray bytes = Changed(*parsed_, sectionName, keyName, key8, value8);
        parsed_ = std::make_unique<Parsed>(Unmistakable(bytes, parsed_->Encoding()));
    }
}

const QByteArray& IniFile::Bytes() const {
    return parsed_->Bytes();
}
