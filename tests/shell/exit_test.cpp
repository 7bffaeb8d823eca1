// The exit routine: what it stops, what it sends, and what it leaves unchanged.
#include "shell/exit.h"

#include "shell/handle_event.h"
#include "support/jukebox.h"

#include <QJsonDocument>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using ::testing::ElementsAre;

constexpr int kQuitKey = 27;

template <typename Body>
int ExitCodeOf(Body&& body) {
    try {
        std::forward<Body>(body)();
    } catch (const ProgramEnd& end) {
        return end.exitCode;
    }
    return -1;
}

InputEvent Event(InputKind kind, int code = 0) {
    InputEvent event;
    event.kind = kind;
    event.code = code;
    return event;
}

// Returns all calls, each as one line of JSON.
std::vector<std::string> AllCalls(const SimulatedPlatform& platform) {
    std::vector<std::string> calls;
    for (const QJsonArray& call : platform.calls.Entries()) {
        calls.push_back(QJsonDocument(call).toJson(QJsonDocument::Compact).toStdString());
    }
    return calls;
}

constexpr const char* kFree = R"(["BASS_Free"])";
constexpr const char* kOutput = R"(["Output","AT+R-1\r\n"])";
constexpr const char* kPortClosed = R"(["PortOpen",false])";

TEST(Exit, FreesTheSoundThenLetsTheControllerGoThenClosesItsPort) {
    Jukebox jukebox;
    jukebox.SetKey(QStringLiteral("config.ini"), QStringLiteral("RGBLeds"), QStringLiteral("Active"),
                   QStringLiteral("true"));
    jukebox.Start();
    jukebox.form.shell.tmrSpectrum.Enabled = true;
    jukebox.platform.calls.Clear();
    // The calls up to each run of pending events.
    std::vector<std::vector<std::string>> points;
    jukebox.platform.pump.runPending = [&] {
        points.push_back(AllCalls(jukebox.platform));
        return false;
    };
    EXPECT_EQ(ExitCodeOf([&] { ExitJukebox(jukebox.form); }), 0);
    const auto sent = ElementsAre(kFree, kOutput);
    EXPECT_THAT(points, ElementsAre(sent, sent, sent));
    EXPECT_THAT(AllCalls(jukebox.platform), ElementsAre(kFree, kOutput, kPortClosed));
    EXPECT_FALSE(jukebox.form.shell.tmrSpectrum.Enabled);
}

TEST(Exit, SendsNothingWithoutAController) {
    Jukebox jukebox;
    jukebox.Start();
    jukebox.platform.calls.Clear();
    EXPECT_EQ(ExitCodeOf([&] { ExitJukebox(jukebox.form); }), 0);
    EXPECT_THAT(AllCalls(jukebox.platform), ElementsAre(kFree));
}

TEST(Exit, DoesNotWaitForARunningHandler) {
    Jukebox jukebox;
    jukebox.Start();
    jukebox.form.shell.InputBusy = 1;
    EXPECT_EQ(ExitCodeOf([&] { HandleEvent(jukebox.form, Event(InputKind::kClose)); }), 0);
}

TEST(Exit, SavesNothing) {
    Jukebox jukebox;
    jukebox.Start();
    jukebox.form.coins.Credits = 3;
    jukebox.form.settings.Theme = QStringLiteral("small");
    const QStringList files = QDir(jukebox.Home()).entryList(QDir::AllEntries | QDir::Hidden);
    const QString settings = jukebox.Home(QStringLiteral("config.ini"));
    const auto before = jukebox.platform.files.ReadWhole(settings, 1 << 20);
    EXPECT_EQ(ExitCodeOf([&] { HandleEvent(jukebox.form, Event(InputKind::kKeyDown, kQuitKey)); }), 0);
    EXPECT_EQ(QDir(jukebox.Home()).entryList(QDir::AllEntries | QDir::Hidden), files);
    EXPECT_EQ(jukebox.platform.files.ReadWhole(settings, 1 << 20), before);
}

TEST(Exit, IsTheLastLineOfTheLogWhenTheQuitKeyLeadsThere) {
    Jukebox jukebox;
    jukebox.Start();
    EXPECT_EQ(ExitCodeOf([&] { HandleEvent(jukebox.form, Event(InputKind::kKeyDown, kQuitKey)); }), 0);
    EXPECT_EQ(jukebox.Log().last(), QStringLiteral(" Fin "));
}

} // namespace
