// Messages on standard error.
#pragma once

#include <QString>

// Returns a text without line breaks.
QString OneLine(QString text);

// Writes "vantorix: " and the text as one line.
void TellStandardError(const QString& text);
