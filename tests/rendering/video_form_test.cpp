// The video window: its place for every kind of setting, loading, showing and unloading it.
#include "rendering/video_form.h"

#include "support/error_of.h"
#include "support/jukebox.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <ostream>

namespace {

using namespace Qt::StringLiterals;

// The primary monitor, one right of it with its upper edge lower, and one below that.
const std::vector<QRect> kMonitors = {QRect(0, 0, 1280, 720), QRect(1280, 100, 800, 600),
                                      QRect(1280, 700, 1024, 768)};

void Configure(Form_Main& form, const char* left, const char* top, const char* width, const char* height) {
    form.settings.VideoPositionLeft = QString::fromLatin1(left);
    form.settings.VideoPositionTop = QString::fromLatin1(top);
    form.settings.VideoPositionWidth = QString::fromLatin1(width);
    form.settings.VideoPositionHeight = QString::fromLatin1(height);
}

std::array<int, 4> PlaceOf(const Form_Main& form) {
    const WindowPlace& place = form.shell.Form_Video;
    return {place.Left, place.Top, place.Width, place.Height};
}

struct Placed {
    const char* name;
    std::array<const char*, 4> configured;
    std::array<int, 4> place;
};

// clang-format off
const std::array kPlaced = {
    Placed{"AllGiven",                {"1281", "5", "320", "240"},     {1281, 5, 320, 240}},
    Placed{"OnlyTheLeftEdge",         {"1281", "", "", ""},            {1281, 100, 799, 600}},
    Placed{"TheLastColumn",           {"2079", "", "", ""},            {2079, 100, 1, 600}},
    Placed{"ATopOnTheLowerMonitor",   {"1281", "750", "", ""},         {1281, 750, 1023, 718}},
    Placed{"ATopAboveTheMonitor",     {"1281", "0", "", ""},           {1281, 0, 799, 720}},
    Placed{"ANegativeTop",            {"1281", "-50", "640", "480"},   {1281, -50, 640, 480}},
    Placed{"OnTheLowerMonitorAlone",  {"2080", "", "", ""},            {2080, 700, 224, 768}},
    Placed{"BeyondEveryMonitor",      {"5000", "", "", ""},            {5000, 0, 1280, 720}},
    Placed{"HalvesAreRoundedToEven",  {"1281.5", "10.5", "3.5", "2.5"}, {1282, 10, 4, 2}},
    Placed{"NoWidthAtAll",            {"1281", "0", "0", "-7"},        {1281, 0, 0, 0}},
    Placed{"FarAway",                 {"2147483647", "", "10", "10"},  {2147483647, 0, 10, 10}},
};
// clang-format on

void PrintTo(const Placed& row, std::ostream* out) {
    *out << row.name;
}

class VideoFormPlace : public ::testing::TestWithParam<Placed> {};

TEST_P(VideoFormPlace, IsInDesktopPixels) {
    Jukebox jukebox(kMonitors);
    const auto& [left, top, width, height] = GetParam().configured;
    Configure(jukebox.form, left, top, width, height);
    ShowVideoForm(jukebox.form);
    EXPECT_EQ(PlaceOf(jukebox.form), GetParam().place);
    EXPECT_TRUE(jukebox.platform.windows.videoVisible);
    EXPECT_EQ(jukebox.platform.windows.videoPlace, jukebox.form.shell.Form_Video.Rectangle());
}

INSTANTIATE_TEST_SUITE_P(Places, VideoFormPlace, ::testing::ValuesIn(kPlaced),
                         [](const auto& row) { return row.param.name; });

struct Fault {
    const char* name;
    std::array<const char*, 4> configured;
    int number;
    const char* key;
};

// clang-format off
const std::array kFaults = {
    Fault{"LeftIsAWord",     {"right", "", "", ""},             13, "VideoPositionLeft"},
    Fault{"TopIsAWord",      {"1281", "top", "", ""},           13, "VideoPositionTop"},
    Fault{"WidthIsAWord",    {"1281", "", "wide", ""},          13, "VideoPositionWidth"},
    Fault{"HeightIsABlank",  {"1281", "", "", " "},             13, "VideoPositionHeight"},
    Fault{"LeftIsHuge",      {"2147483648", "", "", ""},        6,  "VideoPositionLeft"},
    Fault{"HeightIsHuge",    {"1281", "", "", "1e12"},          6,  "VideoPositionHeight"},
    Fault{"TooManyPixels",   {"1281", "", "100000", "100000"},  7,  "VideoPositionWidth"},
};
// clang-format on

void PrintTo(const Fault& row, std::ostream* out) {
    *out << row.name;
}

class VideoFormFault : public ::testing::TestWithParam<Fault> {};

TEST_P(VideoFormFault, NamesTheKeyAndLeavesNoWindow) {
    Jukebox jukebox(kMonitors);
    const auto& [left, top, width, height] = GetParam().configured;
    Configure(jukebox.form, left, top, width, height);
    try {
        ShowVideoForm(jukebox.form);
        FAIL() << "no error";
    } catch (const RunTimeError& error) {
        EXPECT_EQ(error.number, GetParam().number);
        EXPECT_TRUE(error.detail.contains(u"config.ini, [Main] "_s + QString::fromLatin1(GetParam().key)))
            << error.detail.toStdString();
    }
    EXPECT_FALSE(jukebox.form.shell.Form_Video.Visible);
    EXPECT_FALSE(jukebox.platform.windows.videoVisible);
}

INSTANTIATE_TEST_SUITE_P(Settings, VideoFormFault, ::testing::ValuesIn(kFaults),
                         [](const auto& row) { return row.param.name; });

TEST(VideoForm, IsLoadedBlackInItsSizeWithoutBeingShown) {
    Jukebox jukebox(kMonitors);
    Configure(jukebox.form, "1281", "", "", "");
    LoadVideoForm(jukebox.form);
    const Surface& picture = jukebox.form.frame.Picture_Video;
    EXPECT_EQ(picture.picture.size(), QSize(799, 600));
    EXPECT_EQ(QPoint(picture.Left, picture.Top), QPoint(0, 0));
    EXPECT_EQ(picture.picture.pixel(400, 300), 0xFF000000U);
    EXPECT_FALSE(jukebox.form.shell.Form_Video.Visible);
    EXPECT_FALSE(jukebox.platform.windows.videoVisible);
}

// Deliberate D-163: the position is compared with the width of a first screen that is not the leftmost one.
TEST(VideoForm, OnAFirstScreenOnTheRightCountsAsBeyondIt) {
    Jukebox jukebox({QRect(800, 0, 1280, 720), QRect(0, 0, 800, 600)});
    Configure(jukebox.form, "1281", "", "", "");
    EXPECT_TRUE(VideoLiesBeyondScreen(jukebox.form));
    Configure(jukebox.form, "799", "", "", "");
    EXPECT_FALSE(VideoLiesBeyondScreen(jukebox.form));
}

// The list of monitors can be missing.
TEST(VideoForm, HasTheSizeOfTheScreenWithoutAListOfMonitors) {
    Jukebox jukebox;
    jukebox.platform.failures.Add(u"EnumDisplayMonitors"_s);
    Configure(jukebox.form, "700", "", "", "");
    LoadVideoForm(jukebox.form);
    EXPECT_EQ(PlaceOf(jukebox.form), (std::array{700, 0, 640, 360}));
}

// Deliberate D-161: a change of the configured place does not move a window that is loaded.
TEST(VideoForm, KeepsItsPlaceUntilItIsUnloaded) {
    Jukebox jukebox(kMonitors);
    Configure(jukebox.form, "1300", "", "", "");
    ShowVideoForm(jukebox.form);
    Configure(jukebox.form, "1400", "", "", "");
    LoadVideoForm(jukebox.form);
    ShowVideoForm(jukebox.form);
    EXPECT_EQ(jukebox.form.shell.Form_Video.Left, 1300);
    EXPECT_TRUE(jukebox.form.shell.Form_Video.Visible);
    UnloadVideoForm(jukebox.form);
    LoadVideoForm(jukebox.form);
    EXPECT_EQ(jukebox.form.shell.Form_Video.Left, 1400);
}

// Deliberate D-162: a video does not bring back a window that was unloaded.
TEST(VideoForm, StaysAwayAfterItWasUnloadedUntilItIsShownAgain) {
    Jukebox jukebox(kMonitors);
    Configure(jukebox.form, "1281", "", "", "");
    ShowVideoForm(jukebox.form);
    UnloadVideoForm(jukebox.form);
    EXPECT_FALSE(jukebox.form.shell.Form_Video.Visible);
    EXPECT_FALSE(jukebox.platform.windows.videoVisible);
    EXPECT_EQ(jukebox.form.frame.Picture_Video.Width(), 0);
    LoadVideoForm(jukebox.form);
    EXPECT_FALSE(jukebox.form.shell.Form_Video.Visible);
    EXPECT_FALSE(jukebox.platform.windows.videoVisible);
    ShowVideoForm(jukebox.form);
    EXPECT_TRUE(jukebox.platform.windows.videoVisible);
}

// Deliberate D-160: the log tells the operator why a video at the exact edge is not seen.
TEST(VideoForm, AtTheExactEdgeIsLoggedOnceWhenItIsLoaded) {
    const QString line = u" : Vidéo invisible, VideoPositionLeft doit valoir au moins 1281"_s;
    Jukebox jukebox(kMonitors);
    Configure(jukebox.form, "1280", "", "", "");
    EXPECT_FALSE(VideoLiesBeyondScreen(jukebox.form));
    LoadVideoForm(jukebox.form);
    LoadVideoForm(jukebox.form);
    EXPECT_EQ(jukebox.Log().count(line), 1);
    UnloadVideoForm(jukebox.form);
    Configure(jukebox.form, "1281", "", "", "");
    LoadVideoForm(jukebox.form);
    EXPECT_EQ(jukebox.Log().count(line), 1);
}

} // namespace
