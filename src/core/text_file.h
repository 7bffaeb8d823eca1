// Reading and decoding the lines of text files.
#pragma once

#include <QByteArray>
#include <QString>

// Decodes a line as UTF-8 or, when the bytes are not valid UTF-8, as Windows-1252, which files from older
// cabinets use.
QString DecodeLine(const QByteArray& bytes);

// Decodes Windows-1252. The five unassigned bytes become the control characters of the same code.
QString DecodeWindows1252(const QByteArray& bytes);

// The lines of a text file. LF or CR LF ends a line; a UTF-8 byte order mark at the start is skipped.
class LineReader {
public:
    LineReader(QByteArray bytes, QString path);

    // Returns the next line without its line end. Raises 62 at the end of the file; the detail names the path
    // and the line number.
    QByteArray Next();

private:
    QByteArray bytes_;
    QString path_;
    qsizetype position_ = 0;
    int line_ = 0;
};
