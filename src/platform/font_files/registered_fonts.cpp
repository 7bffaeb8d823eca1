// Recognising the bytes of a font file by their hash.
#include "platform/font_files/registered_fonts.h"

#include <QCryptographicHash>
#include <QFontDatabase>
#include <QStringList>

int RegisteredFonts::Register(const QByteArray& bytes) {
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
