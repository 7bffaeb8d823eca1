// Choosing a slot where the console cannot observe it: the log, a track deleted after listing, a full queue.
#include "interaction/valider.h"

#include "interaction/folders.h"
#include "support/error_of.h"
#include "support/jukebox.h"

#include <gtest/gtest.h>

#include <QFile>

using namespace Qt::Literals::StringLiterals;

namespace {

template <typename Body>
QStringList LogOf(const Jukebox& box, Body&& body) {
    const qsizetype before = box.Log().size();
    std::forward<Body>(body)();
    return box.Log().mid(before);
}

TEST(ValiderLog, AnEmptySlotWritesTheRoutineAlone) {
    Jukebox box;
    box.Start();
    EXPECT_EQ(LogOf(box, [&] { Valider(box.form, 0); }), QStringList{u" : Valider"_s});
}

TEST(ValiderLog, AStartedTrackIsToldWithItsPathAndSlot) {
    Jukebox box;
    box.Track(u"a.mp3"_s);
    box.Track(u"b.mp3"_s);
    box.Start();
    const QString line = u" : InfoPath(NumTrack)="_s + box.Music(u"b.mp3"_s) + u"  NumTrack=1"_s;
    EXPECT_EQ(LogOf(box, [&] { Valider(box.form, 1); }).count(line), 1);
}

TEST(ValiderLog, APathMayHoldPercentSigns) {
    Jukebox box;
    box.Track(u"100%1 %2.mp3"_s);
    box.Start();
    const QString line = u" : InfoPath(NumTrack)="_s + box.Music(u"100%1 %2.mp3"_s) + u"  NumTrack=0"_s;
    EXPECT_EQ(LogOf(box, [&] { Valider(box.form, 0); }).count(line), 1);
}

TEST(ValiderLog, SteppingBackIsToldEvenWhereItLeadsNowhere) {
    Jukebox box;
    box.Start();
    EXPECT_EQ(LogOf(box, [&] { Retour(box.form); }), QStringList{u" : Retour"_s});
}

TEST(BuyTrack, ATrackThatIsGoneCostsNothing) {
    Jukebox box;
    box.Track(u"a.mp3"_s);
    box.Start();
    box.form.settings.ManageCoin = u"true"_s;
    box.form.coins.Credits = 1;
    ASSERT_TRUE(QFile::remove(box.Music(u"a.mp3"_s)));
    const QStringList log = LogOf(box, [&] { Valider(box.form, 0); });
    EXPECT_EQ(log.first(), u" : Valider"_s);
    EXPECT_EQ(log.at(1), u" : RedrawJukebox"_s);
    EXPECT_EQ(box.form.coins.Credits, 1);
    EXPECT_EQ(box.form.queue.PlaylistCount, 0);
    EXPECT_EQ(box.form.queue.PlaylistSelected, 0);
    EXPECT_EQ(box.form.frame.BlockMainInfos, u"selecttrack"_s);
}

// The credit is checked before the file is looked up.
TEST(BuyTrack, WithoutACreditAGoneTrackIsRefused) {
    Jukebox box;
    box.Track(u"a.mp3"_s);
    box.Start();
    box.form.settings.ManageCoin = u"true"_s;
    ASSERT_TRUE(QFile::remove(box.Music(u"a.mp3"_s)));
    const std::int64_t start = box.platform.clock.timeGetTime();
    Valider(box.form, 0);
    EXPECT_EQ(box.platform.clock.timeGetTime() - start, 720);
}

// The counters are changed before the entry is written.
TEST(BuyTrack, TheThousandAndFirstEntryIsError9) {
    Jukebox box;
    box.Track(u"a.mp3"_s);
    box.Start();
    box.form.settings.ManageCoin = u"true"_s;
    box.form.coins.Credits = 3;
    box.form.queue.PlaylistCount = 999;
    EXPECT_EQ(ErrorOf([&] { Valider(box.form, 0); }), 0);
    EXPECT_EQ(box.form.queue.PlaylistTitre(1000), u"a.mp3"_s);
    EXPECT_EQ(ErrorOf([&] { Valider(box.form, 0); }), kSubscriptOutOfRange);
    EXPECT_EQ(box.form.queue.PlaylistCount, 1001);
    EXPECT_EQ(box.form.coins.Credits, 1);
}

TEST(EnterFolder, AFolderThatIsGoneIsError76WithItsPath) {
    Jukebox box;
    box.Folder(u"x"_s);
    box.Start();
    ASSERT_TRUE(QDir().rmdir(box.Music(u"x"_s)));
    EXPECT_EQ(ErrorOf([&] { Valider(box.form, 0); }), kPathNotFound);
    EXPECT_EQ(box.form.library.CurrentPath, box.Music(u"x"_s));
    EXPECT_EQ(box.form.library.Dir1.Path, box.Music());
    EXPECT_EQ(box.form.library.DirLevel, 0);
}

} // namespace
