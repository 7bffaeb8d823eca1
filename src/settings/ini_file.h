// One INI file as text, read and changed key by key without losing anything else in it.
#pragma once

#include <QByteArray>
#include <QString>

#include <memory>

// A parsed INI file. Section and key compare without case; the first matching section and the first matching
// key in it win. Blanks around section names and keys and right behind "=" are dropped, trailing blanks of a
// value stay. ";" or "#" at a line's start is a comment. UTF-8, or Windows-1252 when the bytes are no valid
// UTF-8; a BOM is skipped.
class IniFile {
public:
    IniFile();
    explicit IniFile(QByteArray bytes);
    ~IniFile();
    IniFile(IniFile&&) noexcept;
    IniFile& operator=(IniFile&&) noexcept;

    // At most 254 characters of the value; empty when section or key is missing.
    QString Value(QStringView section, QStringView key) const;
    // Replaces the key's value, or appends key and section as needed. Everything else keeps its bytes.
    void SetValue(const QString& section, const QString& key, const QString& value);
    // The file as it is to be written.
    const QByteArray& Bytes() const;

private:
    struct Parsed;
    std::unique_ptr<Parsed> parsed_;
};
