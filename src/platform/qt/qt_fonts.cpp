// Reading font files ourselves and registering their bytes, so that paths with invalid UTF-8 work as well.
#include "platform/qt/qt_fonts.h"

#include "platform/files.h"

#include <fontconfig/fontconfig.h>

namespace {

constexpr std::int64_t kLargestFont = std::int64_t{64} * 1024 * 1024;

} // namespace

void ReadSystemFonts() {
    FcInit();
}

int QtFonts::AddFontResource(const QString& path) {
    const std::optional<QByteArray> bytes = files_.ReadWhole(path, kLargestFont);
    return bytes ? registered_.Register(*bytes) : 0;
}
