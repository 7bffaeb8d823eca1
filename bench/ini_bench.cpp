// Parsing theme.ini and looking up all of its keys: IniFile, inih, SimpleIni, QSettings.
#include "ini_bench.h"

#include "bench.h"
#include "platform/posix/posix_files.h"
#include "settings/ini_file.h"
#include "state/theme_keys.h"

#include <QFile>
#include <QSettings>
#include <QTemporaryDir>

#include <cstdio>
#include <cstdlib>
#include <string>

#ifdef VANTORIX_PEER_INIH
#include <INIReader.h>
#endif
#ifdef VANTORIX_PEER_SIMPLEINI
#define SI_NO_CONVERSION
#include <SimpleIni.h>
#endif

namespace {

constexpr int kRounds = 300;
constexpr std::int64_t kLongestFile = std::int64_t{16} * 1024 * 1024;
// The theme's own keys and 22 fields for each of the 20 slots, nearly all with a value.
constexpr std::size_t kThemeKeys = 171 + 22 * 20;
constexpr qsizetype kShortestValues = 1000;

// A key in the form that each reader takes.
struct WantedKey {
    QString section;
    QString key;
    std::string sectionBytes;
    std::string keyBytes;
    QString path;
};

void Want(std::vector<WantedKey>& wanted, const QString& section, const char* key) {
    const QString name = QString::fromLatin1(key);
    wanted.push_back({section, name, section.toStdString(), name.toStdString(), section + u'/' + name});
}

std::vector<WantedKey> ThemeKeys() {
    std::vector<WantedKey> wanted;
#define WANT_KEY(section, key, member, part) Want(wanted, QStringLiteral(section), key);
#define WANT(kind, section, name) KEYS_OF_##kind(WANT_KEY, WANT_KEY, section, name)
    THEME_ZONE_KEYS(WANT)
    THEME_HORIZONTAL_KEYS(WANT)
    THEME_VERTICAL_KEYS(WANT)
    THEME_NAVIGATION_KEYS(WANT)
    THEME_PLAYLIST_KEYS(WANT)
    THEME_MAIN_KEYS(WANT)
    THEME_PLAYLIST_BUTTON_KEYS(WANT)
    THEME_SLOT_STYLE_KEYS(WANT)
    THEME_COMMAND_KEYS(WANT)
#undef WANT_KEY
#undef WANT
    for (const QString& side : {QStringLiteral("zonelistGauche"), QStringLiteral("zonelistDroite")}) {
        for (int row = 1; row <= 10; ++row) {
            const QString section = side + QString::number(row);
#define WANT_KEY(section, key, member, part) Want(wanted, section, key);
#define WANT(kind, name) KEYS_OF_##kind(WANT_KEY, WANT_KEY, section, name)
            SLOT_KEYS(WANT)
#undef WANT_KEY
#undef WANT
        }
    }
    return wanted;
}

[[noreturn]] void Stop(const QString& why) {
    std::fprintf(stderr, "vantorix-bench: %s\n", qPrintable(why));
    std::exit(1);
}

// The next large allocation merges the small blocks that a reader has freed. This allocation, which is not
// measured, does so before the next reader is measured.
void TidyHeap() {
    volatile char* const large = new char[std::size_t{64} * 1024];
    *large = 1;
    delete[] large;
}

// A reader; it returns the total length of all values.
Contender Reader(const QString& name, qsizetype expected, const std::function<qsizetype()>& reader) {
    const auto work = [=] {
        if (reader() != expected) {
            Stop(name + QStringLiteral(" does not find the same values"));
        }
    };
    return {name, work, TidyHeap};
}

qsizetype OurWay(const QString& path, const std::vector<WantedKey>& wanted) {
    const IniFile file(PosixFiles().ReadWhole(path, kLongestFile).value_or(QByteArray()));
    qsizetype length = 0;
    for (const WantedKey& key : wanted) {
        length += file.Value(key.section, key.key).size();
    }
    return length;
}

qsizetype QSettingsWay(const QString& path, const std::vector<WantedKey>& wanted) {
    const QSettings settings(path, QSettings::IniFormat);
    qsizetype length = 0;
    for (const WantedKey& key : wanted) {
        const QVariant value = settings.value(key.path);
        // QSettings turns a value with a comma into a list.
        const bool isList = value.typeId() == QMetaType::QStringList;
        length += isList ? value.toStringList().join(u',').size() : value.toString().size();
    }
    return length;
}

#ifdef VANTORIX_PEER_INIH
qsizetype InihWay(const QString& path, const std::vector<WantedKey>& wanted) {
    const INIReader reader(QFile::encodeName(path).toStdString());
    std::size_t length = 0;
    for (const WantedKey& key : wanted) {
        length += reader.Get(key.sectionBytes, key.keyBytes, std::string()).size();
    }
    return static_cast<qsizetype>(length);
}
#endif

#ifdef VANTORIX_PEER_SIMPLEINI
qsizetype SimpleIniWay(const QString& path, const std::vector<WantedKey>& wanted) {
    CSimpleIniA reader(true);
    reader.LoadFile(QFile::encodeName(path).constData());
    std::size_t length = 0;
    for (const WantedKey& key : wanted) {
        length += std::string(reader.GetValue(key.sectionBytes.c_str(), key.keyBytes.c_str(), "")).size();
    }
    return static_cast<qsizetype>(length);
}
#endif

} // namespace

void BenchIni(const QString& themeIni) {
    const std::vector<WantedKey> wanted = ThemeKeys();
    const qsizetype length = OurWay(themeIni, wanted);
    if (wanted.size() != kThemeKeys || length < kShortestValues) {
        Stop(themeIni + QStringLiteral(" is not a whole theme"));
    }
    std::vector<Contender> subjects;
    subjects.push_back(Reader(QStringLiteral("IniFile"), length, [&] { return OurWay(themeIni, wanted); }));
#ifdef VANTORIX_PEER_INIH
    subjects.push_back(
        Reader(QStringLiteral("inih, INIReader"), length, [&] { return InihWay(themeIni, wanted); }));
#endif
#ifdef VANTORIX_PEER_SIMPLEINI
    subjects.push_back(Reader(QStringLiteral("SimpleIni, CSimpleIniA"), length,
                              [&] { return SimpleIniWay(themeIni, wanted); }));
#endif
    // QSettings caches what it has parsed by path, so each run has its own copy, made before the measurement
    // starts.
    const QTemporaryDir copies;
    int left = kRounds + 1;
    for (int copy = 1; copy <= left; ++copy) {
        QFile::copy(themeIni, copies.filePath(QString::number(copy)));
    }
    subjects.push_back(Reader(QStringLiteral("QSettings"), length, [&] {
        return QSettingsWay(copies.filePath(QString::number(left--)), wanted);
    }));
    PrintRow(QStringLiteral("theme.ini: parsed, and all 611 keys looked up"), RunInTurn(subjects, kRounds));
}
