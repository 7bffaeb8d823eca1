// Writing messages to standard error.
#include "app/start/standard_error.h"

#include "core/path_text.h"

#include <cstdio>

QString OneLine(QString text) {
    return text.replace(u'\r', u' ').replace(u'\n', u' ');
}

void TellStandardError(const QString& text) {
    std::fprintf(stderr, "vantorix: %s\n", BytesOfPath(OneLine(text)).constData());
}
