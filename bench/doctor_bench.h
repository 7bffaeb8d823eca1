// The check of a music library beside listing it, and beside ffprobe.
#pragma once

#include <QString>

// `home` is the delivered application folder, `demo` the demo library.
void BenchDoctor(const QString& home, const QString& demo);
