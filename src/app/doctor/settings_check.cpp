// Checking config.ini: which lines count, and what their values mean.
#include "app/doctor/settings_check.h"

#include "app/doctor/setting_values.h"
#include "app/findings/finding_report.h"
#include "core/path_text.h"
#include "platform/files.h"
#include "settings/config.h"
#include "settings/ini_file.h"

#include <algorithm>
#include <map>
#include <optional>
#include <tuple>

namespace {

constexpr std::int64_t kLargestConfig = std::int64_t{16} * 1024 * 1024;
constexpr qsizetype kLongestValue = 254;

bool IsSame(const QString& a, const QString& b) {
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

// config.ini while it is checked.
struct Config {
    QString path;
    std::vector<IniLine> lines;
    IniFile file;
    FindingReport& report;
};

void Report(const Config& config, Level level, const QString& text, const QString& advice,
            const QString& kind = {}) {
    config.report.Add({level, Subject::kSettings, config.path, text, advice, kind});
}

QString PlaceOf(const IniLine& line) {
    return QStringLiteral("Line %1, [%2] %3").arg(line.number).arg(line.section, line.key);
}

std::vector<KnownKey> AllKeys() {
    std::vector<KnownKey> keys = KnownConfigKeys();
    for (const char* const key : {"RestartWhenStuck", "RestartAfterStop", "Watchdog", "KeepCreditsAndQueue",
                                  "LimitLog", "HoldScreen", "Gamepads"}) {
        keys.push_back({QStringLiteral("Cabinet"), QString::fromLatin1(key)});
    }
    return keys;
}

bool IsKnown(const std::vector<KnownKey>& known, const IniLine& line) {
    return std::any_of(known.begin(), known.end(), [&](const KnownKey& key) {
        return IsSame(key.section, line.section) && IsSame(key.key, line.key);
    });
}

bool IsKnownSection(const std::vector<KnownKey>& known, const QString& section) {
    return std::any_of(known.begin(), known.end(),
                       [&](const KnownKey& key) { return IsSame(key.section, section); });
}

void CheckUnknown(const Config& config, const std::vector<KnownKey>& known, const IniLine& line) {
    if (line.kind == IniLine::kIgnored) {
        Report(
            config, Level::kWarning,
            QStringLiteral(
                "Line %1 has no effect, because it is neither a section, a key with \"=\" nor a comment: %2")
                .arg(line.number)
                .arg(line.value.left(80)),
            QStringLiteral("Correct it, or begin it with \";\"."), QStringLiteral("line without effect"));
    } else if (line.kind == IniLine::kSection && !IsKnownSection(known, line.section)) {
        Report(config, Level::kWarning,
               QStringLiteral("Line %1: the section [%2] is unknown; its keys have no effect.")
                   .arg(line.number)
                   .arg(line.section),
               QStringLiteral("The sections are [Main], [Key], [RGBLeds] and [Cabinet]."),
               QStringLiteral("unknown section"));
    } else if (line.kind == IniLine::kKey && !IsKnown(known, line) &&
               (line.section.isEmpty() || IsKnownSection(known, line.section))) {
        Report(config, Level::kWarning,
               PlaceOf(line) + QStringLiteral(": the key is unknown and has no effect."),
               QStringLiteral("Correct its spelling and its section, or delete the line."),
               QStringLiteral("unknown key"));
    }
}

using Name = std::pair<QString, QString>;

void CheckDoubled(const Config& config) {
    std::map<Name, int> first;
    for (const IniLine& line : config.lines) {
        if (line.kind == IniLine::kIgnored) {
            continue;
        }
        const auto [earlier, isNew] =
            first.try_emplace({line.section.toCaseFolded(), line.key.toCaseFolded()}, line.number);
        if (!isNew) {
            const QString what = line.kind == IniLine::kSection
                                     ? QStringLiteral("Line %1: [%2]").arg(line.number).arg(line.section)
                                     : PlaceOf(line);
            Report(config, Level::kWarning,
                   QStringLiteral("%1 is there twice; only line %2 counts.").arg(what).arg(earlier->second),
                   QStringLiteral("Delete one of the two."), QStringLiteral("doubled key"));
        }
    }
}

const IniLine* LineOf(const Config& config, const KnownKey& key) {
    const auto found = std::find_if(config.lines.begin(), config.lines.end(), [&](const IniLine& line) {
        return line.kind == IniLine::kKey && IsSame(line.section, key.section) && IsSame(line.key, key.key);
    });
    return found == config.lines.end() ? nullptr : &*found;
}

void CheckKnown(const Config& config, const KnownKey& key) {
    const IniLine* const line = LineOf(config, key);
    const QString place =
        line != nullptr ? PlaceOf(*line) : QStringLiteral("[%1] %2 is missing").arg(key.section, key.key);
    if (line != nullptr && line->value.size() > kLongestValue) {
        Report(config, Level::kWarning,
               QStringLiteral("%1: only the first %2 characters of the value are read.")
                   .arg(place)
                   .arg(kLongestValue),
               QStringLiteral("Shorten it; a link with a short path helps for a folder."));
    }
    if (const auto fault = FaultOfSetting(config.file, key, line != nullptr)) {
        Report(config, fault->level, place + QStringLiteral(": ") + fault->text, fault->advice, fault->kind);
    }
}

} // namespace

void CheckConfig(Files& files, const QString& home, FindingReport& report) {
    const QString path = PathIn(home, QStringLiteral("config.ini"));
    const auto bytes = files.ReadWhole(path, kLargestConfig);
    if (!bytes) {
        report.Add(
            {Level::kError, Subject::kSettings, path,
             QStringLiteral(
                 "There are no settings, because the file is missing or cannot be read: the jukebox has "
                 "neither keys nor blocks."),
             QStringLiteral("Copy the delivered config.ini, or restore a backup with vantorix --restore.")});
        return;
    }
    const IniFile file(*bytes);
    const Config config{path, file.Lines(), file, report};
    std::vector<KnownKey> known = AllKeys();
    for (const IniLine& line : config.lines) {
        CheckUnknown(config, known, line);
    }
    CheckDoubled(config);
    // ShowBigCover is read twice.
    std::sort(known.begin(), known.end(), [](const KnownKey& a, const KnownKey& b) {
        return std::tie(a.section, a.key) < std::tie(b.section, b.key);
    });
    known.erase(std::unique(known.begin(), known.end(),
                            [](const KnownKey& a, const KnownKey& b) {
                                return a.section == b.section && a.key == b.key;
                            }),
                known.end());
    for (const KnownKey& key : known) {
        CheckKnown(config, key);
    }
    for (const SettingFault& fault : FaultsOfBindings(config.file)) {
        Report(config, fault.level, fault.text, fault.advice, fault.kind);
    }
}

void CheckFolderName(const QString& folder, FindingReport& report) {
    const QString section = QStringLiteral("Main");
    const QString key = QStringLiteral("StartPath");
    IniFile config;
    config.SetValue(section, key, folder);
    if (IniFile(config.Bytes()).Value(section, key) != folder) {
        report.Add(
            {Level::kError, Subject::kSettings, folder,
             QStringLiteral(
                 "This folder cannot be the music folder: config.ini holds at most 254 characters of a "
                 "path, no line feed, and no path that begins with a blank or has bytes that are not "
                 "UTF-8."),
             QStringLiteral("Make a link with a short path to it, and set that one.")});
    }
}
