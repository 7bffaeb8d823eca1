// Paths as text: lossless conversion to and from bytes, joining and splitting.
#pragma once

#include <QByteArray>
#include <QString>

// Converts the bytes of a path to text. Each byte that is not valid UTF-8 becomes a lone surrogate
// U+DC80..U+DCFF, so that BytesOfPath returns exactly the same bytes.
QString TextOfPath(const QByteArray& bytes);

// Converts text to the bytes of a path: the original bytes for text from TextOfPath, otherwise UTF-8.
QByteArray BytesOfPath(const QString& text);

// Returns a path without separators at its end; "/" stays.
QString WithoutSeparatorAtEnd(const QString& path);

// Joins a folder and a name with one separator. None is added to a folder that ends with one, such as "/".
QString PathIn(const QString& folder, const QString& name);

// Returns the folder of a path without a separator at its end: "/" for a path directly below the root, empty
// for a path without a separator.
QString FolderOfPath(const QString& path);

// Returns the part of a path after its last separator: the whole path when it has none, empty for "/".
QString NameOfPath(const QString& path);
