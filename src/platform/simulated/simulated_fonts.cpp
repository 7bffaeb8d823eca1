// Registering the theme's fonts.
#include "platform/simulated/simulated_fonts.h"

#include "platform/files.h"
#include "platform/simulated/call_record.h"
#include "platform/simulated/failures.h"

#include <QCryptographicHash>
#include <QFontDatabase>

namespace {

constexpr std::int64_t kLargestFont = 64 << 20;

} // namespace

int SimulatedFonts::AddFontResource(const QString& path) {
    record_.Add({QStringLiteral("AddFontResource"), path});
    if (failures_.Has("AddFontResource")) {
        return 0;
    }
    const std::optional<QByteArray> bytes = files_.ReadWhole(path, kLargestFont);
    return bytes ? Register(*bytes) : 0;
}

int SimulatedFonts::Register(const QByteArray& bytes) {
    const QByteArray hash = QCryptographicHash::hash(bytes, QCryptographicHash::Sha256);
    const auto known = registered_.find(hash);
    if (known != registered_.end()) {
        return known->second;
    }
    const int id = QFontDatabase::addApplicationFontFromData(bytes);
    const int fonts = id < 0 ? 0 : static_cast<int>(QFontDatabase::applicationFontFamilies(id).size());
    if (fonts > 0) {
        registered_.emplace(hash, fonts);
    }
    return fonts;
}
