// Lines of text files.
#pragma once

#include <QByteArray>
#include <QString>

// A line as text: UTF-8 or, when the bytes are no valid UTF-8, Windows-1252 (files brought from older
// cabinets).
QString DecodeLine(const QByteArray& bytes);

// Windows-1252 bytes as text; the five unassigned bytes become control characters of the same code.
QString DecodeWindows1252(const QByteArray& bytes);

// The lines of a text file, ended by LF or CR LF; a byte order mark of UTF-8 in front is skipped.
class LineReader {
public:
    LineReader(QByteArray bytes, QString path);

    // The next line without its end. Raises 62, telling path and line number, when there is none.
    QByteArray Next();

private:
    QByteArray bytes_;
    QString path_;
    qsizetype position_ = 0;
    int line_ = 0;
};
