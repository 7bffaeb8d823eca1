// Tags and covers: a thousand files read by each reader in turn, and a page drawn twice.
#include "tag_bench.h"

#include "bench.h"
#include "imaging/tags/tagged_images.h"
#include "platform/posix/posix_files.h"
#include "platform/simulated/simulated_platform.h"
#include "rendering/track_zone.h"
#include "settings/ini_file.h"
#include "shell/hand_down.h"
#include "shell/start_up.h"
#include "state/form_main.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

#ifdef VANTORIX_PEER_TAGLIB
#include <taglib/attachedpictureframe.h>
#include <taglib/id3v2tag.h>
#include <taglib/mpegfile.h>
#endif

namespace {

constexpr int kFiles = 1000;
// MPEG frames of 128 kbit/s after the tag, and the size of one in bytes.
constexpr int kSoundFrames = 150;
constexpr int kSoundFrameBytes = 417;
constexpr int kPadding = 1024;
constexpr int kRounds = 15;
constexpr int kSide = 1400;
constexpr int kCovers = 20;

void Require(bool isDone, const char* what) {
    if (!isDone) {
        std::fprintf(stderr, "%s\n", what);
        std::exit(1);
    }
}

void WriteFile(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    Require(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size(), "a file cannot be written");
}

QByteArray BigEndian(qsizetype value, int bits) {
    QByteArray bytes;
    for (int shift = 3 * bits; shift >= 0; shift -= bits) {
        bytes.append(static_cast<char>(value >> shift & ((1 << bits) - 1)));
    }
    return bytes;
}

QByteArray Frame(const char* name, const QByteArray& body) {
    return name + BigEndian(body.size(), 8) + QByteArray(2, '\0') + body;
}

// An mp3 with the usual frames, version 2.3, and a picture after them.
QByteArray TaggedTrack(const QByteArray& picture) {
    QByteArray frames;
    for (const char* const name : {"TIT2", "TPE1", "TALB", "TRCK", "TYER", "TCON", "TPE2", "TPOS"}) {
        frames += Frame(name, QByteArray(1, '\0') + "Some text of a song");
    }
    const QByteArray head = QByteArray(1, '\0') + "image/jpeg" + QByteArray(1, '\0') + '\3' + '\0';
    frames += Frame("APIC", head + picture) + QByteArray(kPadding, '\0');
    const QByteArray sound = QByteArray("\xFF\xFB\x90\x64", 4).leftJustified(kSoundFrameBytes, '\0');
    return "ID3" + QByteArray("\3\0\0", 3) + BigEndian(frames.size(), 7) + frames +
           sound.repeated(kSoundFrames);
}

std::vector<QString> MakeTracks(const QString& folder, int pictureBytes) {
    std::minstd_rand dice(1);
    QByteArray picture(pictureBytes, '\0');
    std::ranges::generate(picture, [&dice] { return static_cast<char>(dice() >> 8); });
    const QByteArray file = TaggedTrack(picture);
    std::vector<QString> paths;
    for (int i = 0; i < kFiles; ++i) {
        paths.push_back(QStringLiteral("%1/%2.mp3").arg(folder).arg(i));
        WriteFile(paths.back(), file);
    }
    return paths;
}

// The minimum work of any reader: reading the bytes of the tag into one buffer with system calls.
void ReadBytes(const QByteArray& path, std::vector<char>& buffer) {
    const int file = ::open(path.constData(), O_RDONLY | O_CLOEXEC);
    std::array<char, 10> header{};
    Require(file >= 0 && ::read(file, header.data(), header.size()) == static_cast<ssize_t>(header.size()),
            "a file cannot be read");
    std::size_t size = 0;
    for (std::size_t i = 6; i < header.size(); ++i) {
        size = size << 7 | static_cast<unsigned char>(header.at(i));
    }
    buffer.resize(std::max(buffer.size(), size));
    Require(::read(file, buffer.data(), size) == static_cast<ssize_t>(size), "a tag cannot be read");
    ::close(file);
}

void ReadOurs(Files& files, cTaggedImages& tag, const QString& path) {
    tag.LoadTagged_Images(files, path);
    const auto picture = tag.ExtractImageData(1);
    Require(picture && !picture->empty(), "the own reader finds no picture");
}

#ifdef VANTORIX_PEER_TAGLIB
void ReadByTagLib(TagLib::MPEG::File& file) {
    const TagLib::ID3v2::Tag* const tag = file.ID3v2Tag();
    Require(tag != nullptr && !tag->frameListMap()["APIC"].isEmpty(), "TagLib finds no picture");
    const auto* const frame =
        dynamic_cast<const TagLib::ID3v2::AttachedPictureFrame*>(tag->frameListMap()["APIC"].front());
    Require(frame != nullptr && !frame->picture().isEmpty(), "TagLib reads no picture");
}

// TagLib's default, with the audio properties.
void OpenByTagLib(const QByteArray& path) {
    TagLib::MPEG::File file(path.constData());
    ReadByTagLib(file);
}

// With the tag only.
void OpenTagByTagLib(const QByteArray& path) {
    TagLib::MPEG::File file(path.constData(), false);
    ReadByTagLib(file);
}
#endif

// About as detailed as a photograph: 600 KB.
QByteArray LargeJpeg() {
    QImage picture(kSide, kSide, QImage::Format_RGB32);
    std::minstd_rand dice(2);
    for (int y = 0; y < kSide; ++y) {
        for (int x = 0; x < kSide; ++x) {
            const int noise = static_cast<int>(dice() >> 8 & 31);
            picture.setPixel(x, y, qRgb((x / 6 + noise) & 255, (y / 6 + noise) & 255, ((x + y) / 11) & 255));
        }
    }
    QBuffer file;
    file.open(QIODevice::WriteOnly);
    picture.save(&file, "JPG", 85);
    return file.data();
}

// A home with the default theme and a page of covers, and the paths of the files that hold them.
std::vector<QString> MakeCovers(const QString& delivered, const QString& home) {
    const QString music = home + QStringLiteral("/music");
    const QString theme = QStringLiteral("/themes/default");
    QDir().mkpath(music);
    QDir().mkpath(home + theme);
    for (const QFileInfo& file : QDir(delivered + theme).entryInfoList(QDir::Files)) {
        QFile::copy(file.filePath(), home + theme + u'/' + file.fileName());
    }
    QFile delivery(delivered + QStringLiteral("/config.ini"));
    Require(delivery.open(QIODevice::ReadOnly), "config.ini is missing");
    IniFile config(delivery.readAll());
    config.SetValue(QStringLiteral("Main"), QStringLiteral("StartPath"), music);
    for (const char* const key : {"ShowCover", "ShowFileCover", "ShowMp3CoverTag"}) {
        config.SetValue(QStringLiteral("Main"), QString::fromLatin1(key), QStringLiteral("true"));
    }
    WriteFile(home + QStringLiteral("/config.ini"), config.Bytes());
    const QByteArray jpeg = LargeJpeg();
    std::vector<QString> covers;
    for (int i = 0; i < kCovers; ++i) {
        const QString track = QStringLiteral("%1/%2.mp3").arg(music).arg(i, 2, 10, QChar(u'0'));
        const bool isBeside = i % 2 == 0;
        covers.push_back(isBeside ? track.chopped(3) + QStringLiteral("jpg") : track);
        WriteFile(track, isBeside ? QByteArray() : TaggedTrack(jpeg));
        if (isBeside) {
            WriteFile(covers.back(), jpeg);
        }
    }
    return covers;
}

// Marks every file as changed, so that nothing cached for it is used.
void Touch(const std::vector<QString>& paths) {
    static qint64 seconds = 1'000'000;
    ++seconds;
    for (const QString& path : paths) {
        QFile file(path);
        Require(file.open(QIODevice::ReadWrite) && file.setFileTime(QDateTime::fromSecsSinceEpoch(seconds),
                                                                    QFileDevice::FileModificationTime),
                "a file's time cannot be set");
    }
}

void BenchTracks(const QString& title, int pictureBytes) {
    const QTemporaryDir folder;
    const std::vector<QString> paths = MakeTracks(folder.path(), pictureBytes);
    std::vector<QByteArray> names;
    std::ranges::transform(paths, std::back_inserter(names),
                           [](const QString& path) { return path.toUtf8(); });
    PosixFiles files;
    cTaggedImages tag;
    std::vector<char> buffer;
    const auto each = [](const auto& list, const auto& read) {
        return [&list, read] { std::ranges::for_each(list, read); };
    };
    PrintRow(title, RunInTurn(
                        {
                            {QStringLiteral("reading the tags' bytes"),
                             each(names, [&](const QByteArray& path) { ReadBytes(path, buffer); })},
                            {QStringLiteral("our reader"),
                             each(paths, [&](const QString& path) { ReadOurs(files, tag, path); })},
#ifdef VANTORIX_PEER_TAGLIB
                            {QStringLiteral("TagLib"), each(names, OpenByTagLib)},
                            {QStringLiteral("TagLib, the tag alone"), each(names, OpenTagByTagLib)},
#endif
                        },
                        kRounds));
}

} // namespace

void BenchTags() {
    BenchTracks(QStringLiteral("Tags, 1,000 mp3 with pictures of 20 KB"), 20'000);
    BenchTracks(QStringLiteral("Tags, 1,000 mp3 with pictures of 60 KB"), 60'000);
}

void BenchCovers(const QString& delivered) {
    const QTemporaryDir folder;
    const std::vector<QString> covers = MakeCovers(delivered, folder.path());
    SimulationOptions options;
    options.screens = {QRect(0, 0, 1920, 1080)};
    SimulatedPlatform platform(options);
    Form_Main form(platform.ports(), HandDown());
    form.shell.AppFolder = folder.path();
    Form_Load(form);
    const auto draw = [&] { DrawZoneList(form); };
    PrintRow(QStringLiteral("Covers, a page of 20 of 1400 x 1400"),
             RunInTurn({{QStringLiteral("DrawZoneList, seen before"), draw},
                        {QStringLiteral("DrawZoneList, all files new"), draw, [&] { Touch(covers); }}},
                       kRounds));
}
