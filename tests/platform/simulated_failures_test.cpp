// Tests of every operation of the simulated machine, failed once.
#include "platform/simulated/simulated_platform.h"
#include "platform/simulated/surroundings.h"
#include "tone_file.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <functional>
#include <map>

namespace {

// A machine with a file, a folder, an open port and a playing stream. Then one operation begins to fail.
class Failing : public ::testing::Test {
protected:
    Failing() {
        WriteTone(tone, 44100, 440);
        SerialSettings settings;
        settings.commPort = 1;
        platform.serial.Open(settings);
        stream = platform.audio.BASS_StreamCreateFile(tone, 0);
        platform.audio.BASS_ChannelPlay(stream, false);
        platform.clock.Advance(100);
    }

    void Fail(const char* operation) {
        ASSERT_TRUE(Failures::IsOperation(QString::fromLatin1(operation)));
        platform.failures.Add(QString::fromLatin1(operation));
    }

    template <typename Action>
    static int ErrorOf(Action action) {
        try {
            action();
        } catch (const RunTimeError& error) {
            return error.number;
        }
        return 0;
    }

    const Surroundings surroundings;
    QTemporaryDir folder;
    QString tone = folder.filePath(QStringLiteral("tone.wav"));
    QString other = folder.filePath(QStringLiteral("other"));
    SimulatedPlatform platform;
    std::uint32_t stream = 0;
};

TEST_F(Failing, GetVersion) {
    Fail("BASS_GetVersion");
    EXPECT_NE(platform.audio.BASS_GetVersion() >> 16, 0x0204U);
}

TEST_F(Failing, Init) {
    EXPECT_TRUE(platform.audio.BASS_Init(-1, 44100, 0));
    Fail("BASS_Init");
    EXPECT_FALSE(platform.audio.BASS_Init(-1, 44100, 0));
}

TEST_F(Failing, StreamCreateFile) {
    Fail("BASS_StreamCreateFile");
    EXPECT_EQ(platform.audio.BASS_StreamCreateFile(tone, 0), 0U);
}

TEST_F(Failing, StreamFree) {
    Fail("BASS_StreamFree");
    EXPECT_FALSE(platform.audio.BASS_StreamFree(stream));
    EXPECT_GT(platform.audio.BASS_ChannelGetLength(stream), 0);
}

TEST_F(Failing, MusicFree) {
    Fail("BASS_MusicFree");
    EXPECT_FALSE(platform.audio.BASS_MusicFree(stream));
}

TEST_F(Failing, ChannelPlay) {
    platform.audio.BASS_ChannelPause(stream);
    const std::int64_t position = platform.audio.BASS_ChannelGetPosition(stream);
    Fail("BASS_ChannelPlay");
    EXPECT_FALSE(platform.audio.BASS_ChannelPlay(stream, false));
    platform.clock.Advance(100);
    EXPECT_EQ(platform.audio.BASS_ChannelGetPosition(stream), position);
}

TEST_F(Failing, ChannelPause) {
    Fail("BASS_ChannelPause");
    EXPECT_FALSE(platform.audio.BASS_ChannelPause(stream));
    platform.clock.Advance(100);
    EXPECT_EQ(platform.audio.BASS_ChannelGetPosition(stream), 8820 * 4);
}

TEST_F(Failing, ChannelStop) {
    Fail("BASS_ChannelStop");
    EXPECT_FALSE(platform.audio.BASS_ChannelStop(stream));
    EXPECT_EQ(platform.audio.BASS_ChannelGetPosition(stream), 4410 * 4);
}

TEST_F(Failing, ChannelGetLength) {
    Fail("BASS_ChannelGetLength");
    EXPECT_EQ(platform.audio.BASS_ChannelGetLength(stream), 0);
}

TEST_F(Failing, ChannelGetPosition) {
    EXPECT_EQ(platform.audio.BASS_ChannelGetPosition(stream), 4410 * 4);
    Fail("BASS_ChannelGetPosition");
    EXPECT_EQ(platform.audio.BASS_ChannelGetPosition(stream), 0);
}

TEST_F(Failing, ChannelSetPosition) {
    Fail("BASS_ChannelSetPosition");
    EXPECT_FALSE(platform.audio.BASS_ChannelSetPosition(stream, 0));
    EXPECT_EQ(platform.audio.BASS_ChannelGetPosition(stream), 4410 * 4);
}

TEST_F(Failing, ChannelGetData) {
    std::array<float, 512> fft{};
    fft[7] = 3;
    Fail("BASS_ChannelGetData");
    EXPECT_FALSE(platform.audio.BASS_ChannelGetData(stream, fft));
    EXPECT_EQ(fft[7], 3);
}

TEST_F(Failing, RenderFile) {
    const auto graph = platform.graphs.CreateGraph(QStringLiteral("SoundMove"));
    EXPECT_EQ(ErrorOf([&] { graph->RenderFile(tone); }), 0);
    Fail("RenderFile");
    EXPECT_EQ(ErrorOf([&] { graph->RenderFile(tone); }), kInvalidProcedureCall);
}

TEST_F(Failing, GraphOperations) {
    const auto graph = platform.graphs.CreateGraph(QStringLiteral("Video"));
    const std::map<const char*, std::function<void()>> operations = {
        {"Run", [&] { graph->Run(); }},
        {"Pause", [&] { graph->Pause(); }},
        {"Stop", [&] { graph->Stop(); }},
        {"CurrentPosition", [&] { graph->SetCurrentPosition(0); }},
        {"Place", [&] { graph->Place(QStringLiteral("Picture_Main"), 0, 0, 10, 10); }}};
    graph->RenderFile(tone);
    for (const auto& [name, operation] : operations) {
        EXPECT_EQ(ErrorOf(operation), 0) << name;
        Fail(name);
        EXPECT_EQ(ErrorOf(operation), kInvalidProcedureCall) << name;
    }
}

TEST_F(Failing, PortOpen) {
    platform.serial.Close();
    Fail("PortOpen");
    EXPECT_EQ(ErrorOf([&] { platform.serial.Open({}); }), kInvalidPortNumber);
    EXPECT_FALSE(platform.serial.IsOpen());
}

TEST_F(Failing, Output) {
    Fail("Output");
    EXPECT_EQ(ErrorOf([&] { platform.serial.Output("AT+R-0\r\n"); }), kPortNotOpen);
    EXPECT_EQ(platform.serial.Input(), QByteArray());
}

TEST_F(Failing, Input) {
    platform.serial.Arrive("x");
    Fail("Input");
    EXPECT_EQ(ErrorOf([&] { platform.serial.Input(); }), kPortNotOpen);
}

TEST_F(Failing, EnumDisplayMonitors) {
    Fail("EnumDisplayMonitors");
    EXPECT_TRUE(platform.display.EnumDisplayMonitors().empty());
}

TEST_F(Failing, TestDisplaySettings) {
    Fail("TestDisplaySettings");
    EXPECT_EQ(platform.display.TestDisplaySettings({800, 600, 32}), DisplayChange::kRefused);
}

TEST_F(Failing, ChangeDisplaySettings) {
    Fail("ChangeDisplaySettings");
    EXPECT_EQ(platform.display.TestDisplaySettings({800, 600, 32}), DisplayChange::kRefused);
    EXPECT_EQ(platform.display.ChangeDisplaySettings({800, 600, 32}), DisplayChange::kRefused);
    EXPECT_EQ(platform.display.CurrentMode().width, 1280);
}

TEST_F(Failing, AddFontResource) {
    Fail("AddFontResource");
    EXPECT_EQ(platform.fonts.AddFontResource(QStringLiteral(TESTS_FOLDER "/fonts/vantorix_test.ttf")), 0);
}

TEST_F(Failing, ZlibRoutines) {
    ASSERT_TRUE(platform.zlib.Has("uncompress"));
    Fail("uncompress");
    EXPECT_FALSE(platform.zlib.Has("uncompress"));
    EXPECT_TRUE(platform.zlib.Has("crc32"));
    Fail("crc32");
    EXPECT_FALSE(platform.zlib.Has("crc32"));
}

TEST_F(Failing, ReadWhole) {
    EXPECT_TRUE(platform.files.ReadWhole(tone, 1 << 20));
    Fail("ReadWhole");
    EXPECT_FALSE(platform.files.ReadWhole(tone, 1 << 20));
}

TEST_F(Failing, Open) {
    EXPECT_TRUE(platform.files.Open(tone));
    Fail("Open");
    EXPECT_FALSE(platform.files.Open(tone));
}

TEST_F(Failing, Identity) {
    EXPECT_TRUE(platform.files.Identity(tone));
    Fail("Identity");
    EXPECT_FALSE(platform.files.Identity(tone));
}

TEST_F(Failing, IsFolder) {
    EXPECT_TRUE(platform.files.IsFolder(folder.path()));
    Fail("IsFolder");
    EXPECT_FALSE(platform.files.IsFolder(folder.path()));
}

TEST_F(Failing, ListFolder) {
    EXPECT_TRUE(platform.files.ListFolder(folder.path()));
    Fail("ListFolder");
    EXPECT_FALSE(platform.files.ListFolder(folder.path()));
}

TEST_F(Failing, Write) {
    Fail("Write");
    EXPECT_FALSE(platform.files.Write(other, "x", true));
    EXPECT_FALSE(QFile::exists(other));
}

TEST_F(Failing, Append) {
    EXPECT_TRUE(platform.files.Append(other, "x"));
    Fail("Append");
    EXPECT_FALSE(platform.files.Append(other, "x"));
    EXPECT_EQ(platform.files.ReadWhole(other, 10), QByteArray("x"));
}

TEST_F(Failing, Rename) {
    Fail("Rename");
    EXPECT_FALSE(platform.files.Rename(tone, other));
    EXPECT_TRUE(QFile::exists(tone));
}

TEST_F(Failing, Remove) {
    Fail("Remove");
    EXPECT_FALSE(platform.files.Remove(tone));
    EXPECT_TRUE(QFile::exists(tone));
}

TEST_F(Failing, SyncFolder) {
    EXPECT_TRUE(platform.files.SyncFolder(folder.path()));
    Fail("SyncFolder");
    EXPECT_FALSE(platform.files.SyncFolder(folder.path()));
}

TEST_F(Failing, MakeFolder) {
    Fail("MakeFolder");
    EXPECT_FALSE(platform.files.MakeFolder(other));
    EXPECT_FALSE(QFile::exists(other));
}

} // namespace
