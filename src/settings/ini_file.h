// One INI file as text, read and changed key by key without losing anything else in it.
#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>

#include <cstddef>

enum class TextEncoding;

// The name of a key in the section of that number, or of a section itself, with number 0. Names that differ
// only in case are equal, by the simple case folding of each character: "É" equals "é", "ß" does not equal
// "ss".
struct IniName {
    qsizetype section = 0;
    QString text;
};
bool operator==(const IniName& a, const IniName& b);
std::size_t qHash(const IniName& name, std::size_t seed);

// A parsed INI file. Any bytes make one: UTF-8, or Windows-1252 when they are not valid UTF-8; a BOM is
// skipped. Lines end with LF, CR LF or CR; blanks are the space and the tab. A line is
//   a comment   when its very first character is ";" or "#",
//   a section   when it begins with "[": the name reaches to the last "]" of the line, or to the line's end;
//               after blanks it also needs a "]" and no "=",
//   a key       when there is more than blanks before its first "=",
//   ignored     otherwise.
// Section and key compare without case; the first matching section and the first matching key in it win. Keys
// above the first section belong to none. Blanks around section names and keys and right after "=" are
// dropped, trailing blanks of a value stay.
class IniFile {
public:
    IniFile() : IniFile(QByteArray()) {}
    explicit IniFile(const QByteArray& bytes);

    // At most 254 characters of the value; empty when section or key is missing.
    QString Value(QStringView section, QStringView key) const;
    // Replaces the key's value, or appends key and section as needed. Everything else keeps its bytes.
    void SetValue(const QString& section, const QString& key, const QString& value);
    // The file as it is to be written.
    QByteArray Bytes() const;

private:
    struct Section {
        // From 1 on.
        qsizetype number = 0;
        // After its last line that is not blank: where a new key goes.
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
    // The file now. All positions are positions in it.
    QString text_;
    // The file as it was parsed: the names in the tables refer to it.
    QString parsed_;
    QHash<IniName, Section> sections_;
    // Where the value of each key begins, never 0. It reaches to the end of its line.
    QHash<IniName, qsizetype> values_;
};
