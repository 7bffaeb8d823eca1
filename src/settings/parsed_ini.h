// The sections and keys of an INI file's bytes, found in one pass.
#pragma once

#include "settings/folded_text.h"
#include "settings/text_encoding.h"

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <optional>
#include <vector>

// A part of the file, in bytes from its start.
struct IniRange {
    std::uint32_t begin = 0;
    std::uint32_t end = 0;
};

struct IniSection {
    IniRange name;
    // Behind the last line of the section that is not blank: where a new key goes.
    std::uint32_t end = 0;
};

struct IniEntry {
    std::uint32_t section = 0;
    IniRange key;
    IniRange value;
};

// Any bytes make a file. A line is
//   a comment   when its very first character is ";" or "#",
//   a section   when it begins with "[": the name reaches to the last "]" of the line, or to the line's end;
//   with blanks
//               before the "[" it has to have a "]" and no "=",
//   a key       when something that is not blank stands before its first "=",
//   nothing     else.
// Lines end with LF, CR LF or CR; blanks are the blank and the tab. Keys above the first section belong to
// none.
class ParsedIni {
public:
    explicit ParsedIni(QByteArray content);

    const QByteArray& Bytes() const { return bytes_; }
    TextEncoding Encoding() const { return encoding_; }
    // "\r\n", "\n" or "\r", as the first line has it; "\r\n" when no line ends.
    const QByteArray& LineEnd() const { return lineEnd_; }

    // The first section of that name; nullptr when there is none.
    const IniSection* Section(QStringView name) const;
    // The first entry of that key in the first section of that name; nullptr when there is none.
    const IniEntry* Entry(QStringView section, QStringView key) const;
    // The entry's value, cut behind `limit` characters.
    QString Value(const IniEntry& entry, qsizetype limit) const;

    // Changes that leave everything known of the file true, without a new parse. The bytes are UTF-8, as the
    // file has to be, and hold no line end. Entry and section are of this file, and no longer hold after it.
    // A value without blanks in front takes the place of the entry's.
    void ReplaceValue(const IniEntry& entry, const QByteArray& value);
    // A line `before` + key + "=" + value is added at the section's end, which lies behind a line end.
    // `before` is blanks; the key is not in the section yet.
    void AppendEntry(const IniSection& section, const QByteArray& before, const QByteArray& key,
                     const QByteArray& value);

private:
    void ParseLines();
    void ParseLine(IniRange line, std::uint32_t equals, std::uint32_t next);
    void OpenSection(IniRange name, std::uint32_t next);
    void AddEntry(std::uint32_t section, IniRange key, IniRange value);
    void Splice(std::uint32_t begin, std::uint32_t end, const QByteArray& added);
    std::uint32_t SectionIndex(QStringView name) const;
    QByteArrayView View(IniRange range) const;
    IniRange WithoutBlanks(IniRange range) const;
    bool IsAscii(IniRange range) const;
    std::uint64_t Hash(IniRange range, std::uint64_t seed) const;
    bool Same(IniRange range, const FoldedText& text) const;
    bool Same(IniRange a, IniRange b) const;
    std::uint64_t KeySeed(std::uint32_t section) const;

    QByteArray bytes_;
    TextEncoding encoding_;
    QByteArray lineEnd_;
    bool allAscii_;
    std::uint64_t seed_;
    std::vector<IniSection> sections_;
    std::vector<IniEntry> entries_;
    FoldedTable sectionTable_;
    FoldedTable entryTable_;
    // The section last asked for: nearly always the next one, too.
    struct Asked {
        QString name;
        std::uint32_t index = FoldedTable::kNone;
    };
    mutable std::optional<Asked> asked_;
    // The entry behind the one last found.
    mutable std::uint32_t next_ = 0;
    // While parsing: the lines belong to the last of the sections, which is not looked up when an earlier one
    // has the same name.
    bool hidden_ = true;
};
