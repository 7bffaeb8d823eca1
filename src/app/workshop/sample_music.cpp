// Making a small music library: silent tracks, coloured covers, videos of a still picture.
#include "app/workshop/sample_music.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QPainter>
#include <QStringList>

#include <array>
#include <cstdint>
#include <initializer_list>

namespace {

QByteArray Number(std::uint32_t value, int bytes) {
    QByteArray text;
    for (int i = 0; i < bytes; ++i) {
        text += static_cast<char>(value >> (8 * i) & 0xFF);
    }
    return text;
}

// A chunk of a RIFF file.
QByteArray Chunk(const char* name, const QByteArray& content) {
    return QByteArray(name, 4) + Number(static_cast<std::uint32_t>(content.size()), 4) + content +
           QByteArray(content.size() % 2, '\0');
}

// Three and a half minutes of silence. The name of a file decides nothing about its format.
QByteArray SilentTrack() {
    constexpr std::uint32_t kRate = 4000;
    constexpr int kSeconds = 210;
    const QByteArray format =
        Number(1, 2) + Number(1, 2) + Number(kRate, 4) + Number(kRate, 4) + Number(1, 2) + Number(8, 2);
    const QByteArray samples(static_cast<qsizetype>(kRate) * kSeconds, '\x80');
    return Chunk("RIFF", "WAVE" + Chunk("fmt ", format) + Chunk("data", samples));
}

// Five minutes of a still picture, uncompressed, at one picture a second. The jukebox ends a video some
// seconds before its end.
QByteArray StillVideo() {
    constexpr std::uint32_t kWidth = 32;
    constexpr std::uint32_t kHeight = 18;
    constexpr std::uint32_t kFrames = 300;
    constexpr std::uint32_t kBytes = kWidth * kHeight * 3;
    const QByteArray main = Number(1'000'000, 4) + Number(kBytes, 4) + Number(0, 4) + Number(0, 4) +
                            Number(kFrames, 4) + Number(0, 4) + Number(1, 4) + Number(kBytes, 4) +
                            Number(kWidth, 4) + Number(kHeight, 4) + QByteArray(16, '\0');
    const QByteArray stream = QByteArray("vidsDIB ") + Number(0, 4) + Number(0, 4) + Number(0, 4) +
                              Number(1, 4) + Number(1, 4) + Number(0, 4) + Number(kFrames, 4) +
                              Number(kBytes, 4) + Number(0xFFFFFFFF, 4) + Number(0, 4) + Number(0, 4) +
                              Number(kWidth, 2) + Number(kHeight, 2);
    const QByteArray picture = Number(40, 4) + Number(kWidth, 4) + Number(kHeight, 4) + Number(1, 2) +
                               Number(24, 2) + Number(0, 4) + Number(kBytes, 4) + QByteArray(16, '\0');
    const QByteArray header =
        "hdrl" + Chunk("avih", main) + Chunk("LIST", "strl" + Chunk("strh", stream) + Chunk("strf", picture));
    QByteArray movie = "movi";
    for (std::uint32_t frame = 0; frame < kFrames; ++frame) {
        movie += Chunk("00db", QByteArray(kBytes, '\x60'));
    }
    return Chunk("RIFF", "AVI " + Chunk("LIST", header) + Chunk("LIST", movie));
}

bool WriteFile(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

// A cover in one of a few colours.
bool MakeCover(const QString& path, int number) {
    constexpr std::array kHues = {12, 205, 45, 285, 140, 330, 170, 95};
    constexpr int kSize = 240;
    const int hue = kHues[static_cast<std::size_t>(number) % kHues.size()];
    QImage cover(kSize, kSize, QImage::Format_RGB32);
    cover.fill(QColor::fromHsv(hue, 170, 150));
    QPainter painter(&cover);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor::fromHsv(hue, 90, 230), 10));
    painter.drawEllipse(QPoint(kSize / 2, kSize / 2), 40 + 15 * (number % 5), 40 + 15 * (number % 5));
    painter.end();
    return cover.save(path, "PNG");
}

// Makes a folder with links to the track.
bool MakeAlbum(const QString& folder, const QString& track, const QStringList& titles) {
    bool isDone = QDir().mkpath(folder);
    for (const QString& title : titles) {
        isDone = QFile::link(track, folder + u'/' + title + QStringLiteral(".mp3")) && isDone;
    }
    return isDone;
}

const QStringList kSaturday = {QStringLiteral("01 - The Tin Whistles - Ode To Joy"),
                               QStringLiteral("02 - Clockwork Orchestra - In The Hall Of The Mountain King"),
                               QStringLiteral("03 - Harbour Lights - Greensleeves"),
                               QStringLiteral("04 - Swan Lake"),
                               QStringLiteral("05 - The Music Box Company - The Blue Danube"),
                               QStringLiteral("Late Night Brass Band - Yankee Doodle"),
                               QStringLiteral("Auld Lang Syne"),
                               QStringLiteral("Square Wave Club - Turkey In The Straw"),
                               QStringLiteral("Ñandú y Los Ángeles - Ça Ira"),
                               QStringLiteral("Village Fiddlers - Oh Susanna"),
                               QStringLiteral("Can Can"),
                               QStringLiteral("108 - Largo")};

const QStringList kLong = {
    QStringLiteral(
        "The Very Long Named Orchestra Of The Old Harbour Town - When The Saints Go Marching In To The "
        "Town And Out Again On The Other Side"),
    QStringLiteral("01 - A Waltz That Nobody Can Remember The Name Of Although They All Tried To"),
    QStringLiteral("The Company Of Many Words - Short"),
    QStringLiteral("One - A Title With Several Words That Needs Two Lines"),
    QStringLiteral("Short - Short"),
    QStringLiteral("I")};

const QStringList kFolders = {QStringLiteral("Accordion Evening"),
                              QStringLiteral("Brass Band"),
                              QStringLiteral("Clockwork Orchestra"),
                              QStringLiteral("Dance Hall"),
                              QStringLiteral("Evening Choir"),
                              QStringLiteral("Fairground Organ"),
                              QStringLiteral("Guitars And Singers"),
                              QStringLiteral("Harbour Lights"),
                              QStringLiteral("Italian Songs"),
                              QStringLiteral("Jazz Cellar"),
                              QStringLiteral("Kitchen Radio"),
                              QStringLiteral("Lullabies"),
                              QStringLiteral("Music Box"),
                              QStringLiteral("Organ And Bells"),
                              QStringLiteral("Parlour Piano"),
                              QStringLiteral("Quartets"),
                              QStringLiteral("Ragtime"),
                              QStringLiteral("Square Wave Club"),
                              QStringLiteral("Tin Whistles"),
                              QStringLiteral("Village Fiddlers"),
                              QStringLiteral("Waltzes"),
                              QStringLiteral("Yodel")};

bool MakeFolders(const QString& folder, const QString& track) {
    bool isDone = true;
    for (int i = 0; i < kFolders.size(); ++i) {
        const QString path = folder + u'/' + kFolders[i];
        isDone = MakeAlbum(path, track, {QStringLiteral("01 - Ode To Joy"), QStringLiteral("02 - Largo")}) &&
                 isDone;
        isDone = (i % 3 == 2 || MakeCover(path + QStringLiteral("/folder.png"), i)) && isDone;
        for (int album = 0; album < i % 4; ++album) {
            isDone = QDir().mkpath(path + QStringLiteral("/Volume %1").arg(album + 1)) && isDone;
        }
    }
    return isDone;
}

} // namespace

bool MakeSampleMusic(const QString& folder) {
    const QString track = folder + QStringLiteral("/silence");
    const QString videos = folder + u'/' + kSampleVideos.toString();
    bool isDone = WriteFile(track, SilentTrack()) && MakeFolders(folder, track);
    const QString album = folder + u'/' + kSampleAlbum.toString();
    isDone =
        MakeAlbum(album, track, kSaturday) && MakeCover(album + QStringLiteral("/bigcover.png"), 1) && isDone;
    isDone = MakeAlbum(folder + u'/' + kSampleLongTitles.toString(), track, kLong) && isDone;
    isDone = QDir().mkpath(folder + u'/' + kSampleEmpty.toString()) && isDone;
    isDone = MakeAlbum(videos, track, {QStringLiteral("Ode To Joy")}) && isDone;
    for (const char* title : {"Pictures In Motion - Two Boats", "The Harbour"}) {
        isDone =
            WriteFile(videos + u'/' + QString::fromLatin1(title) + QStringLiteral(".avi"), StillVideo()) &&
            isDone;
    }
    // Covers of single tracks: "x.fjpg" beside a track "x.f...", "x.jpg" beside an mp3.
    for (int i = 0; i < kSaturday.size(); i += 2) {
        QImage cover;
        const QString path = album + u'/' + kSaturday[i];
        isDone = MakeCover(path + QStringLiteral(".png"), i) && cover.load(path + QStringLiteral(".png")) &&
                 cover.save(path + QStringLiteral(".jpg")) && isDone;
        QFile::remove(path + QStringLiteral(".png"));
    }
    return isDone;
}
