// Paths as text: without losing a byte of the name on disk, put together and taken apart.
#pragma once

#include <QByteArray>
#include <QString>

// The bytes of a path as text. Bytes that are no valid UTF-8 become lone surrogates U+DC80..U+DCFF, one a
// byte, so that BytesOfPath gives back exactly the same bytes.
QString TextOfPath(const QByteArray& bytes);

// The bytes on disk of a path made by TextOfPath, or of any other text as UTF-8.
QByteArray BytesOfPath(const QString& text);

// The path of a name in a folder, with one separator between them: the folder "/" has its own.
QString PathIn(const QString& folder, const QString& name);

// The folder of a path, without a separator at its end; "/" for a path right below the root, empty for a path
// without a separator.
QString FolderOfPath(const QString& path);

// What follows the last separator of a path; the whole path when it has none, empty for "/".
QString NameOfPath(const QString& path);
