// Text files: encoding and lines.
#pragma once

#include <QByteArray>
#include <QString>

// Bytes as text: UTF-8 or, when they are no valid UTF-8, Windows-1252. A BOM is skipped.
QString DecodeText(const QByteArray& bytes);

// Windows-1252 bytes as text; the five unassigned bytes become control characters of the same code.
QString DecodeWindows1252(const QByteArray& bytes);

// The lines of a text, ended by LF or CR LF.
class LineReader {
public:
    LineReader(QString text, QString path) : text_(std::move(text)), path_(std::move(path)) {}

    // The next line without its end. Raises 62, telling path and line number, when there is none.
    QString Next();

private:
    QString text_;
    QString path_;
    qsizetype position_ = 0;
    int line_ = 0;
};
