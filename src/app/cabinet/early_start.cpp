// Starting early with the theme that config.ini names. If another theme is loaded later, its pictures are
// decoded then.
#include "app/cabinet/early_start.h"

#include "core/path_text.h"
#include "platform/gstreamer/start.h"
#include "platform/qt/qt_fonts.h"
#include "settings/ini_file.h"
#include "state/paths.h"
#include "theme/load_assets.h"

#include <system_error>
#include <utility>

namespace {

constexpr std::int64_t kLargestConfig = 1 << 20;

QString ThemeIn(Files& files, const QString& appFolder) {
    const IniFile config(files.ReadWhole(PathIn(appFolder, QStringLiteral("config.ini")), kLargestConfig)
                             .value_or(QByteArray()));
    const QString theme = config.Value(u"Main", u"Theme").trimmed();
    return theme.isEmpty() ? QStringLiteral("default") : theme;
}

} // namespace

std::future<void> RunAlongside(std::function<void()> routine) {
    try {
        return std::async(std::launch::async, std::move(routine));
    } catch (const std::system_error&) {
        return {};
    }
}

EarlyStart::EarlyStart(const QString& appFolder, const QString& share)
    : libraries_(RunAlongside([] {
          ReadSystemFonts();
          StartGStreamer();
      })) {
    const QString folder = FolderOfTheme(files_, appFolder, share, ThemeIn(files_, appFolder));
    QStringList paths;
    for (const QString& name : ThemePictures()) {
        paths += PathIn(folder, name);
    }
    queue_->ReadAhead({files_, zlib_, pump_, pictures_}, paths);
}
