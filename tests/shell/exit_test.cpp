// The exit routine: what it stops, sends and leaves alone.
#include "shell/exit.h"

#include "shell/handle_event.h"
#include "support/jukebox.h"

#include <gtest/gtest.h>

namespace {

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

QJsonArray AllCalls(const SimulatedPlatform& platform) {
    QJsonArray calls;
    for (const QJsonArray& call : platform.calls.Entries()) {
        calls.append(call);
    }
    return calls;
}

QJsonArray Call(const char* operation) {
    return {QString::fromLatin1(operation)};
}

TEST(Exit, FreesTheSoundThenLetsTheControllerGoThenClosesItsPort) {
    Jukebox jukebox;
    jukebox.SetKey(QStringLiteral("config.ini"), QStringLiteral("RGBLeds"), QStringLiteral("Active"),
                   QStringLiteral("true"));
    jukebox.Start();
    jukebox.form.tmrSpectrum.Enabled = true;
    jukebox.platform.calls.Clear();
    // At each point: the newest call.
    std::vector<QJsonArray> points;
    jukebox.platform.pump.runPending = [&] {
        points.push_back(jukebox.platform.calls.Last());
        return false;
    };
    EXPECT_EQ(ExitCodeOf([&] { ExitJukebox(jukebox.form); }), 0);
    const QJsonArray output{QStringLiteral("Output"), QStringLiteral("AT+R-1\r\n")};
    EXPECT_EQ(points, std::vector<QJsonArray>(3, output));
    EXPECT_EQ(AllCalls(jukebox.platform),
              (QJsonArray{Call("BASS_Free"), output, QJsonArray{QStringLiteral("PortOpen"), false}}));
    EXPECT_FALSE(jukebox.form.tmrSpectrum.Enabled);
}

TEST(Exit, SendsNothingWithoutAController) {
    Jukebox jukebox;
    jukebox.Start();
    jukebox.platform.calls.Clear();
    EXPECT_EQ(ExitCodeOf([&] { ExitJukebox(jukebox.form); }), 0);
    EXPECT_EQ(AllCalls(jukebox.platform), QJsonArray{Call("BASS_Free")});
}

TEST(Exit, DoesNotWaitForARunningHandler) {
    Jukebox jukebox;
    jukebox.Start();
    jukebox.form.InputBusy = 1;
    EXPECT_EQ(ExitCodeOf([&] { HandleEvent(jukebox.form, Event(InputKind::kClose)); }), 0);
}

TEST(Exit, SavesNothing) {
    Jukebox jukebox;
    jukebox.Start();
    jukebox.form.Credits = 3;
    jukebox.form.Theme = QStringLiteral("small");
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
