// Tests of videos on the silent output.
#include "core/run_time_error.h"
#include "platform/gstreamer/audio_output.h"
#include "platform/gstreamer/media_graph.h"
#include "platform/gstreamer/video_graph.h"
#include "platform/gstreamer_media.h"
#include "platform/video_screens.h"

#include <limits>

namespace {

using media::Eventually;
using media::MadeFile;

// Takes the pictures as a window does.
class WatchingScreen : public VideoScreen {
public:
    void Attach(VideoPictures& pictures) override { pictures_ = &pictures; }
    void Detach(VideoPictures&) override {
        pictures_ = nullptr;
        picture = {};
    }
    void Wake() override { halted = false; }
    void Place(const QString& toOwner, const QRect& toPlace) override {
        owner = toOwner;
        place = toPlace;
    }
    void SetVisible(bool) override {}

    // Takes what is due. Returns true when a new picture has come.
    bool Look() {
        std::optional<VideoPicture> due = pictures_ != nullptr ? pictures_->TakeDue() : std::nullopt;
        halted = pictures_ == nullptr || !pictures_->NextDueIn();
        if (due) {
            picture = std::move(*due);
            ++shown;
        }
        return due.has_value();
    }

    VideoPicture picture;
    int shown = 0;
    bool halted = false;
    QString owner;
    QRect place;

private:
    VideoPictures* pictures_ = nullptr;
};

class GstreamerVideo : public testing::Test {
protected:
    GstreamerVideo() { EXPECT_TRUE(output->Start()); }

    // Renders and starts a file.
    void Start(const QString& path) {
        video = graphs.CreateGraph(QStringLiteral("Video"));
        video->RenderFile(path);
        video->SetCurrentPosition(0);
        video->Run();
    }

    // Plays until the condition holds, looking at every picture.
    bool PlaysUntil(const std::function<bool()>& condition, double seconds = 15) {
        return Eventually(
            [&] {
                screen.Look();
                return condition();
            },
            seconds);
    }
    bool PlaysToItsEnd(double seconds = 15) {
        return PlaysUntil([&] { return video->CurrentPosition() >= video->Duration(); }, seconds);
    }
    // Whether the left third of the picture is white, in its 100th row.
    bool IsWhite() const {
        return screen.picture.pixels != nullptr &&
               screen.picture.pixels.get()[qsizetype{100} * screen.picture.bytesPerRow + 21] > 128;
    }

    // Plays from a time to the next white picture. Returns the position at which that is shown. A busy
    // machine shows it later and never earlier, so the earliest of some tries counts.
    double NextWhiteFrom(double from) {
        double earliest = 1e9;
        for (int tries = 0; tries < 5 && earliest > std::ceil(from) + 0.03; ++tries) {
            video->SetCurrentPosition(from);
            video->Run();
            EXPECT_TRUE(PlaysUntil([&] { return !IsWhite() && video->CurrentPosition() > from; }));
            EXPECT_TRUE(PlaysUntil([&] { return IsWhite(); }));
            earliest = std::min(earliest, video->CurrentPosition());
        }
        return earliest;
    }

    media::Scratch scratch;
    std::shared_ptr<AudioOutput> output =
        std::make_shared<AudioOutput>(AudioOutputOptions{.sink = "fakesink", .silentSink = "fakesink"});
    WatchingScreen screen;
    std::vector<QString> log;
    GstMediaGraphs graphs{{.screen = screen,
                           .output = [this] { return output; },
                           .log = [this](const QString& line) { log.push_back(line); }},
                          {.sink = "fakesink"}};
    std::shared_ptr<MediaGraph> video;
};

struct Film {
    const char* name;
    int pictures;
    int width;
};

class EveryKindOfFilm : public GstreamerVideo, public testing::WithParamInterface<Film> {};

TEST_P(EveryKindOfFilm, ShowsEveryPictureInItsTime) {
    // A machine that is busy with something else may drop pictures.
    for (int tries = 0; tries < 5 && screen.shown < GetParam().pictures - 2; ++tries) {
        screen.shown = 0;
        Start(MadeFile(GetParam().name));
        EXPECT_NEAR(video->Duration(), 2, 0.15);
        const double start = media::SecondsNow();
        ASSERT_TRUE(PlaysToItsEnd());
        EXPECT_GT(media::SecondsNow() - start, 1.8);
    }
    EXPECT_NEAR(screen.shown, GetParam().pictures, 2);
    EXPECT_NEAR(screen.picture.shape.width(), GetParam().width, 1);
    EXPECT_EQ(screen.picture.size, QSize(320, 240));
    video.reset();
    EXPECT_EQ(screen.picture.pixels, nullptr);
}

INSTANTIATE_TEST_SUITE_P(Videos, EveryKindOfFilm,
                         testing::Values(Film{"film25.avi", 50, 320}, Film{"film2997.mpg", 60, 320},
                                         Film{"film50.avi", 100, 320}, Film{"film_mpeg1.mpg", 50, 320},
                                         Film{"film_surround.mpg", 50, 320}, Film{"film_mono.mp4", 50, 320},
                                         Film{"film_wide_pixels.mpg", 50, 427},
                                         Film{"film_silent.avi", 50, 320},
                                         Film{"film_interlaced.mpg", 50, 320}),
                         [](const testing::TestParamInfo<Film>& film) {
                             QByteArray name(film.param.name);
                             return name.replace('.', '_').toStdString();
                         });

TEST_F(GstreamerVideo, APictureIsShownWhenItsSoundIsHeard) {
    for (const char* name : {"film50.avi", "film2997.mpg"}) {
        Start(MadeFile(name));
        EXPECT_NEAR(NextWhiteFrom(0.5), 1.0, 0.04) << name;
    }
}

TEST_F(GstreamerVideo, PauseHoldsPictureAndPosition) {
    Start(MadeFile("film50.avi"));
    ASSERT_TRUE(PlaysUntil([&] { return video->CurrentPosition() > 0.5; }));
    video->Pause();
    PlaysUntil([] { return false; }, 0.2); // what was mixed already is still heard
    const double held = video->CurrentPosition();
    const int shown = screen.shown;
    EXPECT_FALSE(PlaysUntil([&] { return video->CurrentPosition() != held; }, 0.4));
    EXPECT_EQ(screen.shown, shown);
    EXPECT_TRUE(screen.halted);
    video->Run();
    ASSERT_TRUE(PlaysUntil([&] { return screen.shown > shown; }));
    EXPECT_GT(video->CurrentPosition(), held);
    ASSERT_TRUE(PlaysToItsEnd());
}

TEST_F(GstreamerVideo, ASeekContinuesThere) {
    Start(MadeFile("film2997.mpg"));
    ASSERT_TRUE(PlaysUntil([&] { return video->CurrentPosition() > 1.5; }));
    video->SetCurrentPosition(0.7);
    EXPECT_LT(video->CurrentPosition(), 1.4);
    EXPECT_GE(video->CurrentPosition(), 0.7);
    ASSERT_TRUE(PlaysToItsEnd());
}

TEST_F(GstreamerVideo, TheFirstPictureAfterASeekWaitsForItsSound) {
    QString reason;
    VideoPlayback playback(VideoReader::Open(MadeFile("film50.avi"), reason, false));
    playback.Run();
    EXPECT_TRUE(playback.TakeDue(0)) << "the first picture of a video is shown at once";
    ASSERT_TRUE(playback.BeginSeek(kFramesPerSecond));
    playback.Seek();
    EXPECT_FALSE(playback.TakeDue(0));
    EXPECT_GT(playback.NextDueIn(0).value_or(0), 0);
    std::vector<std::int32_t> sums(std::size_t{2} * 441);
    playback.Mix(sums, 3000);
    EXPECT_FALSE(playback.TakeDue(2999));
    EXPECT_TRUE(playback.TakeDue(3000));
    ASSERT_TRUE(playback.BeginSeek(kFramesPerSecond / 2));
    playback.Halt();
    playback.Seek();
    EXPECT_TRUE(playback.TakeDue(3001)) << "no sound is awaited during a pause";
}

// The file would not be read on while the first picture is kept.
TEST_F(GstreamerVideo, AfterASeekPicturesThatNobodyTakesAreDropped) {
    QString reason;
    VideoPlayback playback(VideoReader::Open(MadeFile("film50.avi"), reason, false));
    playback.Run();
    ASSERT_TRUE(playback.BeginSeek(kFramesPerSecond / 4));
    playback.Seek();
    std::int64_t mixed = 0;
    EXPECT_TRUE(Eventually(
        [&] {
            std::vector<std::int32_t> sums(std::size_t{2} * 441);
            playback.Mix(sums, mixed);
            mixed += 441;
            return playback.Counts().dropped > 10;
        },
        15));
}

TEST_F(GstreamerVideo, ASeekWhilePausedShowsThePictureOfItsTime) {
    Start(MadeFile("film50.avi"));
    ASSERT_TRUE(PlaysUntil([&] { return video->CurrentPosition() > 0.3; }));
    video->Pause();
    EXPECT_FALSE(IsWhite());
    video->SetCurrentPosition(1.02);
    EXPECT_TRUE(PlaysUntil([&] { return IsWhite(); }));
    EXPECT_NEAR(video->CurrentPosition(), 1.02, 0.001);
    video->SetCurrentPosition(0.5);
    EXPECT_TRUE(PlaysUntil([&] { return !IsWhite(); }));
}

TEST_F(GstreamerVideo, StopAndSeekToTheStartPlayTheVideoAgain) {
    Start(MadeFile("film_mpeg1.mpg"));
    for (int round = 0; round < 2; ++round) {
        ASSERT_TRUE(PlaysUntil([&] { return video->CurrentPosition() > 0.4; }));
        video->Stop();
        video->SetCurrentPosition(0);
        EXPECT_EQ(video->CurrentPosition(), 0);
        EXPECT_TRUE(PlaysUntil([&] { return IsWhite(); })) << "the first picture";
        video->Run();
    }
    ASSERT_TRUE(PlaysToItsEnd());
    video->SetCurrentPosition(0);
    ASSERT_TRUE(PlaysToItsEnd());
}

TEST_F(GstreamerVideo, ManySeeksAtOnceEndAtTheLast) {
    Start(MadeFile("film2997.mpg"));
    for (int i = 0; i < 40; ++i) {
        video->SetCurrentPosition(i % 2 == 0 ? 1.9 : 0.2);
    }
    video->SetCurrentPosition(1.5);
    EXPECT_NEAR(video->CurrentPosition(), 1.5, 0.001);
    ASSERT_TRUE(PlaysUntil([&] { return video->CurrentPosition() > 1.6; }));
    ASSERT_TRUE(PlaysToItsEnd());
}

// The window shows a picture for as long as it likes, also while the file is read at another place.
TEST_F(GstreamerVideo, APictureMayBeKeptDuringASeek) {
    int complaints = 0;
    const guint handler = g_log_set_handler(
        "GStreamer", G_LOG_LEVEL_CRITICAL,
        [](const gchar*, GLogLevelFlags, const gchar*, gpointer count) { ++*static_cast<int*>(count); },
        &complaints);
    for (const char* name : {"film25.avi", "film_mpeg1.mpg", "film50.avi"}) {
        QString reason;
        const std::unique_ptr<VideoReader> owned = VideoReader::Open(MadeFile(name), reason, false);
        VideoReader& reader = *owned;
        const std::optional<TimedPicture> kept = reader.NextPicture();
        ASSERT_TRUE(kept);
        for (int i = 0; i < 20; ++i) {
            EXPECT_TRUE(reader.Seek(kFramesPerSecond / 20 * (i % 15), false)) << name;
        }
    }
    g_log_remove_handler("GStreamer", handler);
    EXPECT_EQ(complaints, 0);
}

TEST_F(GstreamerVideo, TimesOutsideAreMovedToTheNearerEnd) {
    Start(MadeFile("film25.avi"));
    video->Pause();
    for (const double seconds : {1e300, 100.0, std::numeric_limits<double>::infinity()}) {
        video->SetCurrentPosition(seconds);
        EXPECT_NEAR(video->CurrentPosition(), video->Duration(), 0.001);
    }
    for (const double seconds : {-1e300, -1.0, std::nan("")}) {
        video->SetCurrentPosition(seconds);
        EXPECT_EQ(video->CurrentPosition(), 0);
    }
}

TEST_F(GstreamerVideo, AFileWithoutAPicturePlaysItsSoundOverBlack) {
    for (const char* name : {"film_black.avi", "film_is_music.avi"}) {
        Start(MadeFile(name));
        EXPECT_GT(video->Duration(), 1.9);
        video->Place(QStringLiteral("Picture_Main"), 0, 0, 300, 200);
        EXPECT_EQ(video->Height(), 200);
        ASSERT_TRUE(PlaysUntil([&] { return video->CurrentPosition() > 0.5; }));
        EXPECT_EQ(screen.shown, 0);
        EXPECT_EQ(screen.picture.pixels, nullptr);
        EXPECT_TRUE(screen.halted) << "there is nothing to look for";
        video->SetCurrentPosition(video->Duration() - 0.3);
        ASSERT_TRUE(PlaysToItsEnd());
    }
}

TEST_F(GstreamerVideo, ATruncatedFileEndsEarly) {
    Start(MadeFile("film_truncated.avi"));
    const double start = media::SecondsNow();
    ASSERT_TRUE(PlaysToItsEnd());
    EXPECT_LT(media::SecondsNow() - start, 3);
    EXPECT_GT(screen.shown, 10);
}

TEST_F(GstreamerVideo, APictureOfOnePixelIsShown) {
    Start(MadeFile("film_1x1.avi"));
    ASSERT_TRUE(PlaysToItsEnd());
    EXPECT_EQ(screen.picture.size, QSize(1, 1));
}

TEST_F(GstreamerVideo, ThePictureMayChangeItsSize) {
    Start(MadeFile("film_changing.mpg"));
    ASSERT_TRUE(PlaysUntil([&] { return screen.picture.size == QSize(320, 240); }));
    video->Place(QStringLiteral("Picture_MainVideo"), 0, 0, 400, 400);
    EXPECT_EQ(video->Height(), 300);
    ASSERT_TRUE(PlaysUntil([&] { return screen.picture.size == QSize(160, 320); }));
    EXPECT_EQ(video->Height(), 400);
    ASSERT_TRUE(PlaysToItsEnd());
}

TEST_F(GstreamerVideo, ATimeStampFarAheadDoesNotHoldTheEndUp) {
    Start(MadeFile("film_jumping.mp4"));
    EXPECT_GT(video->Duration(), 80000);
    ASSERT_TRUE(PlaysToItsEnd());
    EXPECT_GE(screen.shown, 20);
}

TEST_F(GstreamerVideo, AFileThatIsDeletedWhileItPlaysGoesOn) {
    const QString path = scratch.Write("gone.avi", media::BytesOf(MadeFile("film25.avi")));
    Start(path);
    std::filesystem::remove(path.toStdString());
    ASSERT_TRUE(PlaysToItsEnd());
    EXPECT_NEAR(screen.shown, 50, 2);
}

TEST_F(GstreamerVideo, AFileThatCannotBeRenderedRaisesFiveWithItsPathAndReason) {
    video = graphs.CreateGraph(QStringLiteral("Video"));
    std::string random(20000, '\0');
    for (std::size_t i = 0; i < random.size(); ++i) {
        random[i] = static_cast<char>(i * i * 31 >> 3);
    }
    for (const QString& path :
         {scratch.Path() + QStringLiteral("/missing.avi"), scratch.Path(),
          scratch.Write("text.avi", "no pictures in here\n"), scratch.Write("empty.mpg", ""),
          scratch.Write("random.avi", random),
          scratch.Write("header.avi", media::BytesOf(MadeFile("film25.avi")).substr(0, 300))}) {
        const double start = media::SecondsNow();
        try {
            video->RenderFile(path);
            ADD_FAILURE() << path.toStdString();
        } catch (const RunTimeError& error) {
            EXPECT_EQ(error.number, 5);
            EXPECT_TRUE(error.detail.startsWith(path + QStringLiteral(": "))) << path.toStdString();
            EXPECT_GT(error.detail.size(), path.size() + 10);
        }
        EXPECT_LT(media::SecondsNow() - start, 5);
    }
}

TEST_F(GstreamerVideo, APictureThatIsTooLargeIsRefused) {
    try {
        Start(MadeFile("film_8192.avi"));
        FAIL();
    } catch (const RunTimeError& error) {
        EXPECT_TRUE(error.detail.contains(QStringLiteral("16777216 pixels"))) << error.detail.toStdString();
    }
}

TEST_F(GstreamerVideo, AFileThatDoesNotOpenInTimeIsRefused) {
    VideoGraph slow({.screen = screen, .output = [this] { return output; }, .limits = {.looks = 0}});
    try {
        slow.RenderFile(MadeFile("film25.avi"));
        FAIL();
    } catch (const RunTimeError& error) {
        EXPECT_TRUE(error.detail.endsWith(OpeningTookTooLong()));
    }
}

TEST_F(GstreamerVideo, AVideoNeedsASoundOutput) {
    output.reset();
    EXPECT_THROW(Start(MadeFile("film25.avi")), RunTimeError);
}

TEST_F(GstreamerVideo, WithoutAFileOperationsHaveNoEffect) {
    video = graphs.CreateGraph(QStringLiteral("Video"));
    EXPECT_THROW(video->RenderFile(scratch.Path() + QStringLiteral("/missing.avi")), RunTimeError);
    video->Run();
    video->SetCurrentPosition(3);
    video->Place(QStringLiteral("Picture_Main"), 0, 0, 20, 10);
    EXPECT_EQ(video->Height(), 10);
    video->SetVisible(true);
    video->Pause();
    video->Stop();
    EXPECT_EQ(video->Duration(), 0);
    EXPECT_EQ(video->CurrentPosition(), 0);
    EXPECT_FALSE(screen.Look());
}

TEST_F(GstreamerVideo, RunsToItsEndWhenNobodyTakesItsPictures) {
    Start(MadeFile("film50.avi"));
    const double start = media::SecondsNow();
    ASSERT_TRUE(Eventually([&] { return video->CurrentPosition() >= video->Duration(); }));
    EXPECT_GT(media::SecondsNow() - start, 1.8);
    EXPECT_EQ(screen.shown, 0);
}

TEST_F(GstreamerVideo, LatePicturesAreDroppedAndCounted) {
    Start(MadeFile("film50.avi"));
    ASSERT_TRUE(PlaysUntil([&] { return video->CurrentPosition() > 0.4; }));
    EXPECT_FALSE(IsWhite());
    const int shown = screen.shown;
    std::this_thread::sleep_for(std::chrono::milliseconds(500));
    ASSERT_TRUE(PlaysUntil([&] { return screen.shown > shown; }));
    EXPECT_GT(video->CurrentPosition(), 0.85) << "nothing of the half second is shown late";
    ASSERT_TRUE(PlaysUntil([&] { return IsWhite(); }));
    video->Stop();
    ASSERT_EQ(log.size(), 1U);
    EXPECT_TRUE(log[0].contains(QStringLiteral("film50.avi"))) << log[0].toStdString();
    video->Stop();
    EXPECT_EQ(log.size(), 1U);
}

TEST_F(GstreamerVideo, CanBeDestroyedAtAnyTime) {
    for (int i = 0; i < 30; ++i) {
        Start(MadeFile(i % 2 == 0 ? "film2997.mpg" : "film25.avi"));
        std::this_thread::sleep_for(std::chrono::milliseconds(i * 3));
        video->SetCurrentPosition(i % 3 * 0.5);
        screen.Look();
        video.reset();
    }
}

TEST_F(GstreamerVideo, PlaceReportsTheHeightOfThePicture) {
    Start(MadeFile("film_wide_pixels.mpg"));
    video->Place(QStringLiteral("Picture_Main"), 5, 6, 427, 1000);
    EXPECT_NEAR(video->Height(), 240, 1);
    EXPECT_EQ(screen.owner, QStringLiteral("Picture_Main"));
    EXPECT_EQ(screen.place, QRect(5, 6, 427, 1000));
    video->Place(QStringLiteral("Picture_MainVideo"), 0, 0, 1000, 120);
    EXPECT_EQ(video->Height(), 120);
}

} // namespace
