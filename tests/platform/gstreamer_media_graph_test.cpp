// Tests of the theme's sounds on the silent output.
#include "platform/gstreamer/media_graph.h"

#include "core/run_time_error.h"
#include "platform/gstreamer_media.h"
#include "platform/video_screens.h"

namespace {

using media::Eventually;

class GstreamerSounds : public testing::Test {
protected:
    static AudioOutputOptions Silent() {
        AudioOutputOptions options{GstMediaGraphs::kSoundBufferTime, GstMediaGraphs::kSoundLatencyTime};
        options.sink = "fakesink";
        return options;
    }

    // The detail of the error that a file raises; empty when it raises none.
    QString DetailOf(MediaGraph& graph, const QString& path) {
        try {
            graph.RenderFile(path);
        } catch (const RunTimeError& error) {
            EXPECT_EQ(error.number, 5);
            return error.detail;
        }
        return {};
    }

    media::Scratch scratch;
    media::NoScreen screen;
    GstMediaGraphs graphs{{.screen = screen, .output = {}}, Silent()};
};

TEST_F(GstreamerSounds, FileThatCannotBeRenderedRaisesFiveWithItsPath) {
    const auto graph = graphs.CreateGraph(QStringLiteral("SoundInsertCoin"));
    for (const QString& path :
         {scratch.Path() + QStringLiteral("/insertcoin.mp3"), scratch.Path(),
          scratch.Write("text.mp3", "no sound at all\n"), scratch.Write("empty.mp3", "")}) {
        EXPECT_TRUE(DetailOf(*graph, path).startsWith(path + QStringLiteral(": "))) << path.toStdString();
    }
    graph->Run();
    EXPECT_EQ(graph->Duration(), 0);
    EXPECT_EQ(graph->CurrentPosition(), 0);
}

TEST_F(GstreamerSounds, SoundPlaysToItsEndAndStartsAnewFromZero) {
    const auto graph = graphs.CreateGraph(QStringLiteral("SoundPageTurn"));
    graph->RenderFile(scratch.WriteTone("turn.wav", 1000, 0.25));
    EXPECT_EQ(graph->Duration(), 0.25);
    EXPECT_EQ(graph->CurrentPosition(), 0);
    for (int i = 0; i < 3; ++i) {
        graph->SetCurrentPosition(0);
        graph->Run();
        EXPECT_LT(graph->CurrentPosition(), 0.2);
        ASSERT_TRUE(Eventually([&] { return graph->CurrentPosition() == 0.25; }));
        graph->Run();
        EXPECT_EQ(graph->CurrentPosition(), 0.25);
    }
}

TEST_F(GstreamerSounds, RestartInTheMiddleGoesBackAtOnce) {
    const auto graph = graphs.CreateGraph(QStringLiteral("SoundInsertCoin"));
    graph->RenderFile(scratch.WriteTone("coin.wav", 1000, 5));
    graph->Run();
    ASSERT_TRUE(Eventually([&] { return graph->CurrentPosition() > 0.3; }));
    graph->SetCurrentPosition(0);
    graph->Run();
    EXPECT_LT(graph->CurrentPosition(), 0.2);
    ASSERT_TRUE(Eventually([&] { return graph->CurrentPosition() > 0.3; }));
}

TEST_F(GstreamerSounds, PauseHoldsStopRewinds) {
    const auto graph = graphs.CreateGraph(QStringLiteral("SoundCharge"));
    graph->RenderFile(scratch.WriteTone("charge.wav", 1000, 5));
    graph->Run();
    ASSERT_TRUE(Eventually([&] { return graph->CurrentPosition() > 0.1; }));
    graph->Pause();
    const double held = graph->CurrentPosition();
    EXPECT_FALSE(Eventually([&] { return graph->CurrentPosition() != held; }, 0.2));
    graph->Run();
    EXPECT_TRUE(Eventually([&] { return graph->CurrentPosition() > held; }));
    graph->Stop();
    EXPECT_EQ(graph->CurrentPosition(), 0);
    EXPECT_FALSE(Eventually([&] { return graph->CurrentPosition() != 0; }, 0.2));
}

TEST_F(GstreamerSounds, PositionsOutsideMeanTheNearerEnd) {
    const auto graph = graphs.CreateGraph(QStringLiteral("SoundMove"));
    graph->RenderFile(scratch.WriteTone("move.wav", 1000, 0.5));
    graph->SetCurrentPosition(0.2);
    EXPECT_NEAR(graph->CurrentPosition(), 0.2, 1e-4);
    graph->SetCurrentPosition(-3);
    EXPECT_EQ(graph->CurrentPosition(), 0);
    graph->SetCurrentPosition(1e300);
    EXPECT_EQ(graph->CurrentPosition(), 0.5);
    graph->SetCurrentPosition(std::nan(""));
    EXPECT_EQ(graph->CurrentPosition(), 0);
}

TEST_F(GstreamerSounds, LongSoundIsCutAfterAMinute) {
    const auto graph = graphs.CreateGraph(QStringLiteral("SoundCharge"));
    graph->RenderFile(media::MadeFile("long_noheader.mp3"));
    EXPECT_EQ(graph->Duration(), 60);
}

TEST_F(GstreamerSounds, SoundsOutliveTheirMakerAndEachOther) {
    auto own = std::make_unique<GstMediaGraphs>(VideoSurroundings{.screen = screen, .output = {}}, Silent());
    auto first = own->CreateGraph(QStringLiteral("SoundCharge"));
    auto second = own->CreateGraph(QStringLiteral("SoundMove"));
    first->RenderFile(scratch.WriteTone("a.wav", 500, 2));
    second->RenderFile(scratch.WriteTone("b.wav", 700, 2));
    first->Run();
    second->Run();
    own.reset();
    first.reset();
    EXPECT_TRUE(Eventually([&] { return second->CurrentPosition() > 0.2; }));
}

} // namespace
