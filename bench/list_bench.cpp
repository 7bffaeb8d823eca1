// Listing large folders: CreateList, QDir with QCollator, std::filesystem with ICU.
#include "list_bench.h"

#include "bench.h"
#include "library/create_list.h"
#include "platform/simulated/simulated_platform.h"
#include "shell/hand_down.h"
#include "state/form_main.h"

#include <QCollator>
#include <QDir>
#include <QFile>
#include <QLocale>
#include <QStringList>
#include <QTemporaryDir>

#include <unicode/ucol.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <random>
#include <string>

namespace {

constexpr int kRounds = 11;
constexpr unsigned kSeed = 41;

const QStringList& Patterns() {
    static const QStringList patterns =
        QStringLiteral("*.mp3;*.wma;*.wav;*.vtxpl;*.avi;*.mpg;*.mp44;*.flac").split(u';');
    return patterns;
}

// A folder like those in real libraries: names of several words, one in eight with accents.
QString MakeFolder(const QString& scratch, int files) {
    static const QStringList words =
        QStringLiteral("Love Night Blue Road Moon Dance Fire Rain Street River Été Noël Garçon Ça")
            .split(u' ');
    constexpr int kPlainWords = 10;
    QString folder = scratch + QStringLiteral("/music%1").arg(files);
    QDir().mkpath(folder);
    std::mt19937 random(kSeed);
    for (int i = 0; i < files; ++i) {
        const auto accented = random() % 8 == 0;
        QString name;
        for (int word = 0; word < 3; ++word) {
            name += words[static_cast<int>(random() % kPlainWords) + (accented && word == 1 ? 4 : 0)] + u' ';
        }
        QFile file(folder + u'/' + name + QString::number(i) +
                   (i % 5 == 0 ? QStringLiteral(".flac") : QStringLiteral(".mp3")));
        file.open(QIODevice::WriteOnly);
    }
    return folder;
}

// The sort key of an entry in the order "alpha".
QString LineOf(const QString& folder, const QString& name, bool isFolder) {
    const QString path = folder + u'/' + name;
    return (isFolder ? path : name) + (isFolder ? QStringLiteral("|dir|") : QStringLiteral("|file|")) + path +
           u'|' + name;
}

QCollator RootCollator() {
    // In the C locale QCollator compares character codes; English has the order of the root locale.
    QCollator collator(QLocale(QLocale::English, QLocale::UnitedStates));
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    return collator;
}

QStringList QDirLines(const QString& folder) {
    QStringList lines;
    const auto filters = QDir::Files | QDir::AllDirs | QDir::NoDotAndDotDot;
    for (const QFileInfo& entry : QDir(folder).entryInfoList(Patterns(), filters, QDir::NoSort)) {
        lines += LineOf(folder, entry.fileName(), entry.isDir());
    }
    return lines;
}

qsizetype ByCompare(const QString& folder) {
    QStringList lines = QDirLines(folder);
    const QCollator collator = RootCollator();
    std::sort(lines.begin(), lines.end(),
              [&](const QString& a, const QString& b) { return collator.compare(a, b) < 0; });
    return lines.size();
}

qsizetype BySortKeys(const QString& folder) {
    const QCollator collator = RootCollator();
    std::vector<std::pair<QCollatorSortKey, QString>> lines;
    for (const QString& line : QDirLines(folder)) {
        lines.emplace_back(collator.sortKey(line), line);
    }
    std::sort(lines.begin(), lines.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    return static_cast<qsizetype>(lines.size());
}

// Only the names, which is less than what has to be sorted.
qsizetype NamesByCompare(const QString& folder) {
    QStringList names = QDir(folder).entryList(Patterns(), QDir::Files, QDir::NoSort);
    const QCollator collator = RootCollator();
    std::sort(names.begin(), names.end(),
              [&](const QString& a, const QString& b) { return collator.compare(a, b) < 0; });
    return names.size();
}

bool EndsAsMusic(std::string name) {
    std::transform(name.begin(), name.end(), name.begin(),
                   [](unsigned char c) { return c < 0x80 ? std::tolower(c) : c; });
    return std::any_of(Patterns().begin(), Patterns().end(),
                       [&](const QString& pattern) { return name.ends_with(pattern.mid(1).toStdString()); });
}

qsizetype ByFilesystem(const QString& folder) {
    std::vector<std::string> lines;
    for (const auto& entry : std::filesystem::directory_iterator(folder.toStdString())) {
        const std::string name = entry.path().filename().string();
        if (entry.is_directory() || EndsAsMusic(name)) {
            const std::string path = entry.path().string();
            std::string line = entry.is_directory() ? path + "|dir|" : name + "|file|";
            line += path;
            line += '|';
            line += name;
            lines.push_back(std::move(line));
        }
    }
    UErrorCode error = U_ZERO_ERROR;
    const std::unique_ptr<UCollator, void (*)(UCollator*)> collator(ucol_open("", &error), ucol_close);
    ucol_setStrength(collator.get(), UCOL_SECONDARY);
    std::sort(lines.begin(), lines.end(), [&](const std::string& a, const std::string& b) {
        return ucol_strcollUTF8(collator.get(), a.data(), static_cast<int>(a.size()), b.data(),
                                static_cast<int>(b.size()), &error) == UCOL_LESS;
    });
    return static_cast<qsizetype>(lines.size());
}

void WriteSettings(const QString& scratch, const QString& folder, const QStringList& names) {
    QFile order(scratch + QStringLiteral("/pathconfig.ini"));
    order.open(QIODevice::WriteOnly);
    order.write("[" + folder.toUtf8() + "]\r\nOrder=playcount\r\n");
    QFile stats(scratch + QStringLiteral("/stats.ini"));
    stats.open(QIODevice::WriteOnly);
    stats.write("[PayingCount]\r\n");
    for (const QString& name : names) {
        stats.write(name.toUtf8() + "=" + QByteArray::number(name.size()) + "\r\n");
    }
}

// A form that shows one folder with a number of files.
class Shown {
public:
    Shown(const QString& scratch, int files) : folder_(MakeFolder(scratch, files)) {
        form_.shell.AppFolder = scratch;
        form_.settings.DefaultOrder = QStringLiteral("alpha");
        Open();
    }

    const QString& folder() const { return folder_; }
    const QStringList& names() const { return form_.library.File1.List; }
    void List() { CreateList(form_); }
    // Opens a folder like the jukebox: both lists are set to it, then it is listed.
    void Open() {
        PointDir1(form_, folder_);
        PointFile1(form_, folder_);
        CreateList(form_);
    }

private:
    QString folder_;
    SimulatedPlatform platform_;
    Form_Main form_{platform_.ports(), HandDown()};
};

void BenchPeers(Shown& shown) {
    const QString& folder = shown.folder();
    PrintRow(
        QStringLiteral("A folder of 10,000 files, listed and sorted"),
        RunInTurn({{QStringLiteral("CreateList"), [&] { shown.List(); }},
                   {QStringLiteral("QDir and QCollator, whole lines"), [&] { ByCompare(folder); }},
                   {QStringLiteral("QDir and QCollator's sort keys"), [&] { BySortKeys(folder); }},
                   {QStringLiteral("QDir and QCollator, names alone"), [&] { NamesByCompare(folder); }},
                   {QStringLiteral("std::filesystem and ICU, whole lines"), [&] { ByFilesystem(folder); }}},
                  kRounds));
}

} // namespace

void BenchLists() {
    const QTemporaryDir scratch;
    Shown small(scratch.path(), 10'000);
    Shown large(scratch.path(), 30'000);
    BenchPeers(small);
    PrintRow(QStringLiteral("Three times the files"),
             RunInTurn({{QStringLiteral("CreateList, 10,000 files"), [&] { small.List(); }},
                        {QStringLiteral("CreateList, 30,000 files"), [&] { large.List(); }},
                        {QStringLiteral("the whole way into a folder of 30,000"), [&] { large.Open(); }}},
                       kRounds));
    WriteSettings(scratch.path(), small.folder(), small.names());
    PrintRow(QStringLiteral("10,000 files in the order of their counts"),
             RunInTurn({{QStringLiteral("CreateList"), [&] { small.List(); }}}, kRounds));
}
