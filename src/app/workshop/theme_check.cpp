// Checking a whole theme, subject by subject.
#include "app/workshop/theme_check.h"

#include "app/workshop/checked_theme.h"
#include "app/workshop/contrast_check.h"
#include "app/workshop/file_check.h"
#include "app/workshop/key_check.h"
#include "app/workshop/look_check.h"
#include "app/workshop/picture_check.h"
#include "app/workshop/place_check.h"
#include "app/workshop/sound_check.h"
#include "app/workshop/text_check.h"
#include "platform/posix/termination_signals.h"
#include "theme/load_command.h"

#include <algorithm>
#include <array>

namespace {

constexpr std::array kChecks = {CheckKeys,   LoadPictures,  CheckSizes,   CheckTransparency,
                                CheckPlaces, CheckLooks,    InstallFonts, CheckFonts,
                                CheckTexts,  CheckContrast, CheckSounds,  CheckFiles};

void CheckAll(CheckedTheme& theme) {
    for (const auto check : kChecks) {
        if (TerminationSignal() == 0) {
            check(theme);
        }
    }
}

} // namespace

std::vector<Finding> CheckTheme(const QString& folder) {
    CheckedTheme theme(folder);
    if (!theme.form.files.IsFolder(folder)) {
        return {{Level::kError, Subject::kTheme, folder,
                 QStringLiteral("There is no folder of this name, so there is no theme to check."),
                 QStringLiteral("Give the name of a theme, or its folder.")}};
    }
    if (OpenThemeFile(theme)) {
        LoadCommand(theme.form);
        CheckAll(theme);
    }
    std::stable_sort(theme.findings.begin(), theme.findings.end(),
                     [](const Finding& a, const Finding& b) { return a.level > b.level; });
    return std::move(theme.findings);
}
