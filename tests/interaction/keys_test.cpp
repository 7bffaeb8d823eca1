// The log lines of a key, and the keys that end the program or fail before the guard is set.
#include "interaction/keys.h"

#include "support/error_of.h"
#include "support/jukebox.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kNoBinding = 33;
constexpr int kKeyDown = 40;
constexpr int kKeyQuit = 27;

// Returns the log lines that the body adds.
template <typename Body>
QStringList LogOf(const Jukebox& box, Body&& body) {
    const qsizetype before = box.Log().size();
    std::forward<Body>(body)();
    return box.Log().mid(before);
}

TEST(KeyLog, FourLinesTellTheSlotUnderTheCursor) {
    Jukebox box;
    box.Track(u"a.mp3"_s);
    box.Folder(u"x"_s);
    box.Start();
    box.form.cursor.SelY = 2;
    const QString path = box.Music(u"a.mp3"_s);
    EXPECT_EQ(LogOf(box, [&] { Form_KeyDown(box.form, kNoBinding, 0); }),
              QStringList({u" NumTrack : 1"_s, u" InfoPath : "_s + path, u" InfoType : file"_s,
                           u" InfoTitre : a.mp3"_s}));
    box.form.cursor.SelY = 1;
    EXPECT_EQ(LogOf(box, [&] { Form_KeyDown(box.form, kNoBinding, 0); }),
              QStringList({u" NumTrack : 0"_s, u" InfoPath : "_s + box.Music(u"x"_s), u" InfoType : dir"_s,
                           u" InfoTitre : x"_s}));
}

TEST(KeyLog, AnEmptySlotIsToldEmpty) {
    Jukebox box;
    box.Start();
    EXPECT_EQ(LogOf(box, [&] { Form_KeyDown(box.form, kNoBinding, 0); }),
              QStringList({u" NumTrack : 19"_s, u" InfoPath : "_s, u" InfoType : "_s, u" InfoTitre : "_s}));
}

TEST(KeyLog, ADroppedKeyWritesNothing) {
    Jukebox box;
    box.Track(u"a.mp3"_s);
    box.Track(u"b.mp3"_s);
    box.Start();
    box.form.shell.InputBusy = 1;
    EXPECT_EQ(LogOf(box, [&] { Form_KeyDown(box.form, kKeyDown, 0); }), QStringList());
    EXPECT_EQ(box.form.cursor.SelY, 1);
    EXPECT_EQ(box.form.shell.InputBusy, 1);
}

bool Ends(Form_Main& form, int key) {
    try {
        Form_KeyDown(form, key, 0);
    } catch (const ProgramEnd& end) {
        return end.exitCode == 0;
    }
    return false;
}

TEST(QuitKey, TellsTheModeOfTheStartAndTheEnd) {
    Jukebox box;
    box.Start();
    box.form.settings.Fullscreen = u"true"_s;
    box.form.cursor.TrackNumberInput = u"65"_s;
    const QStringList log = LogOf(box, [&] { EXPECT_TRUE(Ends(box.form, kKeyQuit)); });
    EXPECT_TRUE(log.contains(u" Retour résolution d'origine 640 x 360 x "_s +
                             QString::number(box.form.shell.ScreenBits.value())));
    EXPECT_EQ(log.last(), u" Fin "_s);
    EXPECT_EQ(box.form.cursor.TrackNumberInput, QString());
}

TEST(QuitKey, WithoutAModeOfItsOwnTellsTheEndAlone) {
    Jukebox box;
    box.Start();
    const QStringList log = LogOf(box, [&] { EXPECT_TRUE(Ends(box.form, kKeyQuit)); });
    EXPECT_EQ(log.mid(4), QStringList{u" Fin "_s});
}

// Deliberate D-27: the menu's "quit" neither restores the screen mode nor logs the end.
TEST(QuitKey, TheMenusQuitGoesStraightToTheExit) {
    Jukebox box;
    box.Start();
    box.form.settings.Fullscreen = u"true"_s;
    box.form.cursor.ActiveZone = u"command"_s;
    box.form.menu.CommandCurrentId = 7;
    constexpr int kKeyConfirm = 13;
    const QStringList log = LogOf(box, [&] { EXPECT_TRUE(Ends(box.form, kKeyConfirm)); });
    EXPECT_EQ(log.mid(4), QStringList{u" : ValiderCommand"_s});
}

// The cursor is recorded before the guard is set, so an error there leaves the guard clear.
TEST(KeyGuard, ADepthBeyondTheHistoryFailsBeforeTheGuard) {
    Jukebox box;
    box.Start();
    box.form.library.DirLevel = 101;
    EXPECT_EQ(ErrorOf([&] { Form_KeyDown(box.form, kNoBinding, 0); }), kSubscriptOutOfRange);
    EXPECT_EQ(box.form.shell.InputBusy, 0);
}

} // namespace
