// One INI file as text: keys are read and changed without losing anything else in it.
#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>

#include <cstddef>
#include <vector>

enum class TextEncoding;

// The name of a key with the number of its section, or the name of a section with the number 0. Names that
// differ only in case are equal, by the simple case folding of each character: "É" equals "é", "ß" does not
// equal "ss".
struct IniName {
    qsizetype section = 0;
    QString text;
};
bool operator==(const IniName& a, const IniName& b);
std::size_t qHash(const IniName& name, std::size_t seed);

// A line of an INI file as it is read. Comments and blank lines are none of these kinds.
struct IniLine {
    enum Kind { kSection, kKey, kIgnored };
    // Starts at 1.
    int number = 0;
    Kind kind = kIgnored;
    // The section's name; of a key the section that it is in, empty above the first section.
    QString section;
    // Empty except for a key.
    QString key;
    // The value of a key; of an ignored line its whole text.
    QString value;
};

// A parsed INI file. Any bytes are accepted: UTF-8, or Windows-1252 when they are not valid UTF-8; a BOM is
// skipped. Lines end with LF, CR LF or CR; blanks are the space and the tab. A line is
//   a comment   when its very first character is ";" or "#",
//   a section   when it begins with "[": the name ends at the last "]" of the line, or at the line's end;
//               after blanks it also needs a "]" and no "=",
//   a key       when there is more than blanks before its first "=",
//   ignored     otherwise.
// Section names and keys are compared without case; the first matching section and the first matching key in
// it win. Keys above the first section are ignored. Blanks around section names and keys and right after "="
// are dropped; trailing blanks of a value are kept.
class IniFile {
public:
    IniFile() : IniFile(QByteArray()) {}
    explicit IniFile(const QByteArray& bytes);

    // Returns at most 254 characters of the value; empty when section or key is missing.
    QString Value(QStringView section, QStringView key) const;
    // Returns the sections, keys and ignored lines of the file as it was parsed, also those that a line
    // before them hides.
    std::vector<IniLine> Lines() const;
    // Replaces the key's value, or appends key and section as needed. Everything else keeps its bytes, unless
    // the file has to change from Windows-1252 to UTF-8.
    void SetValue(const QString& section, const QString& key, const QString& value);
    // Returns the file's bytes for writing.
    QByteArray Bytes() const;

private:
    struct Section {
        // Starts at 1.
        qsizetype number = 0;
        // The end of its last line that is not blank. A new key is inserted there.
        qsizetype end = 0;
    };

    void ReadLines();
    Section* NewSection(const QString& name);
    void AppendSection(const QString& name);
    void AppendKey(Section& section, const QString& key, const QString& value);
    void EndLineAt(qsizetype at);
    void Replace(qsizetype begin, qsizetype end, const QString& added);

    bool hasByteOrderMark_;
    TextEncoding encoding_;
    // The current text of the file. All positions refer to it.
    QString text_;
    // The text as it was parsed. The names in the tables point into it.
    QString parsed_;
    QHash<IniName, Section> sections_;
    // The position of each key's value, never 0. A value ends at the end of its line.
    QHash<IniName, qsizetype> values_;
};
