// Tells the files that can be decoded from whatever else a path may lead to.
#pragma once

#include <QByteArray>
#include <QString>

// Whether this is a regular file with something in it: a pipe would hold a decoder for ever. If not, `reason`
// is a sentence that says why.
bool IsPlainFile(const QByteArray& path, QString& reason);
