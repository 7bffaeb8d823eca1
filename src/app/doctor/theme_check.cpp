// Checking the theme of the home, and loading it with its pictures, fonts and sounds.
#include "app/doctor/theme_check.h"

#include "app/findings/finding_report.h"
#include "app/workshop/theme_check.h"
#include "core/conversions.h"
#include "core/run_time_error.h"
#include "platform/files.h"
#include "shell/load_theme.h"
#include "state/form_main.h"
#include "state/paths.h"
#include "theme/load_command.h"

#include <algorithm>
#include <array>
#include <optional>

namespace {

// The settings that place the picture area and the video.
constexpr std::array kPlaces = {&SettingsState::PositionLeft,       &SettingsState::PositionTop,
                                &SettingsState::PositionWidth,      &SettingsState::PositionHeight,
                                &SettingsState::VideoPositionLeft,  &SettingsState::VideoPositionTop,
                                &SettingsState::VideoPositionWidth, &SettingsState::VideoPositionHeight};

std::optional<RunTimeError> ErrorOfLoading(Form_Main& form) {
    try {
        LoadCommand(form);
        // A folder that does not exist shows an empty page.
        form.library.Dir1 = {};
        LoadTheme(form);
    } catch (const ProgramStop& stop) {
        return stop.error;
    } catch (const RunTimeError& error) {
        return error;
    }
    return std::nullopt;
}

// Adds everything that is wrong with the theme itself, and returns whether there is an error.
bool AddFindings(FindingReport& report, const QString& folder) {
    const std::vector<Finding> findings = CheckTheme(folder);
    for (const Finding& finding : findings) {
        report.Add(finding);
    }
    return std::any_of(findings.begin(), findings.end(),
                       [](const Finding& finding) { return finding.level == Level::kError; });
}

// Adds the error that stops the program at the start, unless `isKnown`: the error is in the theme, and its
// check has found it.
void Report(const Form_Main& form, FindingReport& report, const QString& folder, const RunTimeError& error,
            bool isKnown) {
    // Sizes and places in config.ini are used when the theme is fitted to the screen.
    const bool isSetting = error.detail.startsWith(ConfigPath(form));
    if (isKnown && !isSetting) {
        return;
    }
    report.Add({Level::kError, isSetting ? Subject::kSettings : Subject::kTheme,
                isSetting ? ConfigPath(form) : folder,
                QStringLiteral("The program stops at the start when it loads the theme \"%1\": error %2.")
                    .arg(form.settings.Theme, WordsOf(error)),
                isSetting ? QStringLiteral("Correct the key that is named.")
                          : QStringLiteral("Correct the theme, or set Theme=default in config.ini.")});
}

} // namespace

bool CheckThemeOfHome(Form_Main& form, FindingReport& report) {
    if (form.settings.Theme.isEmpty()) {
        form.settings.Theme = QStringLiteral("default");
    }
    const QString folder = ThemeFolder(form);
    if (!form.files.IsFolder(folder)) {
        report.Add(
            {Level::kError, Subject::kTheme, folder,
             QStringLiteral("The program stops at the start, because there is no theme \"%1\".")
                 .arg(form.settings.Theme),
             QStringLiteral(
                 "Set Theme in config.ini to the name of a folder in \"themes\", for instance default.")});
        return false;
    }
    const bool hasError = AddFindings(report, folder);
    // CheckConfig reports places that are not numbers.
    for (const auto place : kPlaces) {
        if (!IsNumeric(form.settings.*place)) {
            (form.settings.*place).clear();
        }
    }
    std::optional<RunTimeError> error = ErrorOfLoading(form);
    if (error) {
        Report(form, report, folder, *error, hasError);
        for (const auto place : kPlaces) {
            (form.settings.*place).clear();
        }
        error = ErrorOfLoading(form);
    }
    return !error;
}
