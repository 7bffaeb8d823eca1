// Parsing theme.ini and looking up all of its keys: IniFile, inih, SimpleIni, QSettings.
#include "ini_bench.h"

#include "bench.h"
#include "platform/posix/posix_files.h"
#include "settings/ini_file.h"
#include "theme/theme_keys.h"

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
// The theme's own keys and 22 fields for each of the 20 slots, nearly all of them with a value.
constexpr std::size_t kThemeKeys = 171 + 22 * 20;
constexpr qsizetype kShortestValues = 1000;

// A key as each of the readers takes it.
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
#define WANT_NUMBER(section, key) Want(wanted, QStringLiteral(section), #key);
#define WANT_TEXT(section, key) Want(wanted, QStringLiteral(section), #key);
#define WANT_PAGE(section, key, array, index) Want(wanted, QStringLiteral(section), #key);
    THEME_ZONE_KEYS(WANT_NUMBER, WANT_TEXT, WANT_PAGE)
    THEME_HORIZONTAL_KEYS(WANT_NUMBER, WANT_TEXT, WANT_PAGE)
    THEME_VERTICAL_KEYS(WANT_NUMBER, WANT_TEXT, WANT_PAGE)
    THEME_NAVIGATION_KEYS(WANT_NUMBER, WANT_TEXT, WANT_PAGE)
    THEME_PLAYLIST_KEYS(WANT_NUMBER, WANT_TEXT, WANT_PAGE)
    THEME_MAIN_KEYS(WANT_NUMBER, WANT_TEXT, WANT_PAGE)
    THEME_PLAYLIST_BUTTON_KEYS(WANT_NUMBER, WANT_TEXT, WANT_PAGE)
    THEME_SLOT_STYLE_KEYS(WANT_NUMBER, WANT_TEXT, WANT_PAGE)
    THEME_COMMAND_KEYS(WANT_NUMBER, WANT_TEXT, WANT_PAGE)
#undef WANT_NUMBER
#undef WANT_TEXT
#undef WANT_PAGE
    for (const QString& side : {QStringLiteral("zonelistGauche"), QStringLiteral("zonelistDroite")}) {
        for (int row = 1; row <= 10; ++row) {
            const QString section = side + QString::number(row);
#define WANT_FIELD(key) Want(wanted, section, #key);
            SLOT_KEYS(WANT_FIELD, WANT_FIELD)
#undef WANT_FIELD
        }
    }
    return wanted;
}

[[noreturn]] void Stop(const QString& why) {
    std::fprintf(stderr, "vantorix-bench: %s\n", qPrintable(why));
    std::exit(1);
}

// The small blocks that one reader frees are joined by the next large request, whoever makes it: this one,
// which is not measured.
void TidyHeap() {
    volatile char* const large = new char[std::size_t{64} * 1024];
    *large = 1;
    delete[] large;
}

// A reader, which answers with the length of all values together.
Subject Reader(const QString& name, qsizetype expected, const std::function<qsizetype()>& reader) {
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
        // A comma makes a list of a value.
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
    std::vector<Subject> subjects;
    subjects.push_back(Reader(QStringLiteral("IniFile"), length, [&] { return OurWay(themeIni, wanted); }));
#ifdef VANTORIX_PEER_INIH
    subjects.push_back(
        Reader(QStringLiteral("inih, INIReader"), length, [&] { return InihWay(themeIni, wanted); }));
#endif
#ifdef VANTORIX_PEER_SIMPLEINI
    subjects.push_back(Reader(QStringLiteral("SimpleIni, CSimpleIniA"), length,
                              [&] { return SimpleIniWay(themeIni, wanted); }));
#endif
    // QSettings keeps what it has parsed for a path: each run has a copy of its own, made before the clock
    // runs.
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
