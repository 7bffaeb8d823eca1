// Paths as text that never loses a byte of the name on disk.
#pragma once

#include <QByteArray>
#include <QString>

// The bytes of a path as text. Bytes that are no valid UTF-8 become lone surrogates U+DC80..U+DCFF, one a
// byte, so that BytesOfPath gives back exactly the same bytes.
QString TextOfPath(const QByteArray& bytes);

// The bytes on disk of a path made by TextOfPath, or of any other text as UTF-8.
QByteArray BytesOfPath(const QString& text);
