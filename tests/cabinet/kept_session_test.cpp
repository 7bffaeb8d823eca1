// Credits and queue as they are kept: what counts as unfinished, the file, and restoring them.
#include "app/cabinet/kept_session.h"

#include "app/cabinet/session_keeper.h"
#include "platform/tone_file.h"
#include "playback/queue.h"
#include "support/failing_files.h"
#include "support/jukebox.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

QStringList PathsOf(const KeptSession& session) {
    QStringList paths;
    for (const KeptEntry& entry : session.entries) {
        paths += NameOfPath(entry.path);
    }
    return paths;
}

class KeptSessionTest : public testing::Test {
protected:
    void Add(const QString& name) {
        AddEntry(form);
        FillLastEntry(form, jukebox.Music(name), name);
    }
    // A queue of three paid tracks, the second of which plays.
    void PlaySecondOfThree() {
        for (const QString& name : {u"a.wav"_s, u"b.wav"_s, u"c.wav"_s}) {
            WriteTone(jukebox.Music(name), 44'100, 440);
            Add(name);
        }
        CountStart(form, 1);
        MakeCurrent(form, 2);
        CountStart(form, 2);
        form.player.IsPlaying = -1;
        form.coins.Credits = 7;
    }

    Jukebox jukebox;
    Form_Main& form = jukebox.form;
};

TEST_F(KeptSessionTest, NothingIsKeptAtStart) {
    EXPECT_TRUE(SessionOf(form).IsEmpty());
}

TEST_F(KeptSessionTest, ThePlayingEntryIsTheFirstAndItsStartDoesNotCount) {
    PlaySecondOfThree();
    const KeptSession session = SessionOf(form);
    EXPECT_EQ(PathsOf(session), QStringList({u"b.wav"_s, u"c.wav"_s}));
    EXPECT_TRUE(session.firstPlays);
    EXPECT_EQ(session.entries[0].played, 0);
    EXPECT_EQ(session.entries[0].paid, 1);
    EXPECT_EQ(session.credits, 7);
}

TEST_F(KeptSessionTest, AFinishedQueueLeavesNothing) {
    PlaySecondOfThree();
    MakeCurrent(form, 3);
    CountStart(form, 3);
    form.player.IsPlaying = 0;
    form.coins.Credits = 0;
    EXPECT_TRUE(SessionOf(form).IsEmpty());
}

TEST_F(KeptSessionTest, AnEntryWhoseStartFailedIsTheFirst) {
    PlaySecondOfThree();
    MakeCurrent(form, 3);
    form.player.IsPlaying = 0;
    const KeptSession session = SessionOf(form);
    EXPECT_EQ(PathsOf(session), QStringList(u"c.wav"_s));
    EXPECT_TRUE(session.firstPlays);
}

TEST_F(KeptSessionTest, APaidEntryAboveThePlayingOneIsKeptAtTheEnd) {
    PlaySecondOfThree();
    form.queue.PlaylistPlayed(1) = 0;
    EXPECT_EQ(PathsOf(SessionOf(form)), QStringList({u"b.wav"_s, u"c.wav"_s, u"a.wav"_s}));
}

TEST_F(KeptSessionTest, AQueueThatNobodyPaidForDoesNotStart) {
    PlaySecondOfThree();
    for (int entry = 1; entry <= 3; ++entry) {
        form.queue.PlaylistCredits(entry) = 0;
        form.queue.PlaylistPlayed(entry) = 0;
    }
    MakeCurrent(form, 0);
    form.player.IsPlaying = 0;
    const KeptSession session = SessionOf(form);
    EXPECT_EQ(session.entries.size(), 3U);
    EXPECT_FALSE(session.firstPlays);
}

TEST_F(KeptSessionTest, TheFileKeepsAnyName) {
    KeptSession session;
    session.credits = 32767;
    session.firstPlays = true;
    for (const QByteArray& name :
         {QByteArray("/m/a|b.mp3"), QByteArray("/m/line\nfeed.mp3"), QByteArray("/m/\xff\xfe%41\".mp3"),
          QByteArray("/m/\xc3\xa9t\xc3\xa9 100%.mp3")}) {
        session.entries.push_back(
            {.path = TextOfPath(name), .title = TextOfPath(name), .paid = 3, .played = 2});
    }
    session.stops[session.entries[1].path] = 1;
    const QByteArray bytes = BytesOf(session);
    EXPECT_EQ(KeptSessionOf(bytes), session);
    EXPECT_EQ(BytesOf(*KeptSessionOf(bytes)), bytes);
}

TEST_F(KeptSessionTest, ADamagedFileIsRefusedOrReadInPart) {
    for (const QByteArray& bytes : {QByteArray(), QByteArray("{"), QByteArray("[]"),
                                    QByteArray("{\"version\":2}"), QByteArray("\xff\x00\x01", 3)}) {
        EXPECT_FALSE(KeptSessionOf(bytes)) << bytes.constData();
    }
    const auto part =
        KeptSessionOf("{\"version\":1,\"credits\":99999,\"entries\":[1,{},{\"path\":\"/a\",\"paid\":-3}]}");
    ASSERT_TRUE(part);
    EXPECT_EQ(part->credits, 32767);
    ASSERT_EQ(part->entries.size(), 1U);
    EXPECT_EQ(part->entries[0].paid, 0);
}

TEST_F(KeptSessionTest, CutOffFilesNeverCrash) {
    PlaySecondOfThree();
    const QByteArray bytes = BytesOf(SessionOf(form));
    for (qsizetype length = 0; length < bytes.size(); ++length) {
        EXPECT_TRUE(length == bytes.size() - 1 || !KeptSessionOf(bytes.left(length))) << length;
    }
}

TEST_F(KeptSessionTest, AnEntryThatStoppedTheProgramTwiceIsTakenOut) {
    PlaySecondOfThree();
    KeptSession session = SessionOf(form);
    const QString path = session.entries[0].path;
    Blame(session, path);
    EXPECT_TRUE(TakeOutBlamed(session).empty());
    Blame(session, path);
    EXPECT_EQ(TakeOutBlamed(session), std::vector<QString>{path});
    EXPECT_EQ(PathsOf(session), QStringList(u"c.wav"_s));
    EXPECT_FALSE(session.firstPlays);
    EXPECT_EQ(session.credits, 7);
}

TEST_F(KeptSessionTest, OnlyEntriesCanBeBlamed) {
    PlaySecondOfThree();
    KeptSession session = SessionOf(form);
    Blame(session, u"/elsewhere.mp3"_s);
    EXPECT_TRUE(session.stops.isEmpty());
}

TEST_F(KeptSessionTest, RestoringStartsTheFirstEntryWithoutTakingACredit) {
    PlaySecondOfThree();
    const KeptSession session = SessionOf(form);
    Jukebox next;
    next.SetKey(u"config.ini"_s, u"Main"_s, u"ManageCoin"_s, u"true"_s);
    next.Start();
    RestoreSession(next.form, session);
    EXPECT_EQ(next.form.coins.Credits, 7);
    EXPECT_EQ(next.form.queue.PlaylistCount, 2);
    EXPECT_EQ(next.form.queue.PlaylistCurrent, 1);
    EXPECT_EQ(next.form.queue.PlaylistPlayed(1), 1);
    EXPECT_EQ(next.form.player.IsPlaying, -1);
    EXPECT_EQ(next.form.player.NowPlayingTitre, u"b.wav"_s);
    EXPECT_EQ(next.form.shell.InputBusy, 0);
    EXPECT_EQ(SessionOf(next.form), session);
}

TEST_F(KeptSessionTest, RestoringSkipsFilesThatAreGone) {
    PlaySecondOfThree();
    KeptSession session = SessionOf(form);
    session.entries[0].path = jukebox.Music(u"gone.wav"_s);
    Jukebox next;
    next.Start();
    RestoreSession(next.form, session);
    EXPECT_EQ(next.form.queue.PlaylistCount, 2);
    EXPECT_EQ(next.form.queue.PlaylistCurrent, 2);
}

class SessionKeeperTest : public KeptSessionTest {
protected:
    SessionKeeper Keeper() {
        return SessionKeeper(files, jukebox.Home(), [this](const QString& line) { lines += line; });
    }
    bool IsThere() { return real.Identity(jukebox.Home(u"session.json"_s)).has_value(); }

    PosixFiles real;
    FailingFiles files{real};
    QStringList lines;
};

TEST_F(SessionKeeperTest, WritesOnlyChanges) {
    PlaySecondOfThree();
    SessionKeeper keeper = Keeper();
    EXPECT_FALSE(keeper.TakeOver());
    keeper.Follow(form);
    EXPECT_EQ(files.Calls("Rename"), 1);
    keeper.Follow(form);
    EXPECT_EQ(files.Calls("Rename"), 1);
    form.coins.Credits += 1;
    keeper.Follow(form);
    EXPECT_EQ(files.Calls("Rename"), 2);
    EXPECT_EQ(Keeper().TakeOver(), SessionOf(form));
}

TEST_F(SessionKeeperTest, AnOrderlyEndLeavesNothing) {
    PlaySecondOfThree();
    SessionKeeper keeper = Keeper();
    keeper.TakeOver();
    keeper.Follow(form);
    EXPECT_TRUE(IsThere());
    keeper.Forget();
    EXPECT_FALSE(IsThere());
    EXPECT_FALSE(real.Identity(jukebox.Home(u"session.crash"_s)));
}

TEST_F(SessionKeeperTest, ACrashIsBlamedOnThePlayingEntryTwice) {
    PlaySecondOfThree();
    SessionKeeper first = Keeper();
    first.TakeOver();
    first.Follow(form);
    for (const int entries : {2, 1}) {
        real.Write(jukebox.Home(u"session.crash"_s), QByteArray(1, char{11}), false);
        const auto kept = Keeper().TakeOver();
        ASSERT_TRUE(kept);
        EXPECT_EQ(int(kept->entries.size()), entries);
        EXPECT_TRUE(lines.contains(u" : Arrêt brutal par le signal 11"_s));
    }
    EXPECT_EQ(lines.filter(u"b.wav retiré de la file d'attente"_s).size(), 1);
}

TEST_F(SessionKeeperTest, AnErrorIsBlamedOnTheEntryThatItNames) {
    PlaySecondOfThree();
    SessionKeeper keeper = Keeper();
    keeper.TakeOver();
    keeper.Follow(form);
    keeper.BlameFor(u"vantorix.log: the log cannot be written"_s);
    EXPECT_TRUE(Keeper().TakeOver()->stops.isEmpty());
    keeper.BlameFor(jukebox.Music(u"c.wav"_s) + u": could not be decoded"_s);
    // The count stays while the entry is in the queue.
    form.coins.Credits += 1;
    keeper.Follow(form);
    EXPECT_EQ(Keeper().TakeOver()->stops, (QHash<QString, int>{{jukebox.Music(u"c.wav"_s), 1}}));
}

TEST_F(SessionKeeperTest, AFileThatCannotBeWrittenIsReportedOnce) {
    PlaySecondOfThree();
    SessionKeeper keeper = Keeper();
    keeper.TakeOver();
    files.Fail("Write");
    keeper.Follow(form);
    form.coins.Credits += 1;
    keeper.Follow(form);
    EXPECT_EQ(lines.filter(u"ne peut pas être écrit"_s).size(), 1);
    files.FailNothing();
    form.coins.Credits += 1;
    keeper.Follow(form);
    EXPECT_EQ(Keeper().TakeOver(), SessionOf(form));
}

TEST_F(SessionKeeperTest, AnUnreadableFileIsReportedAndRemoved) {
    real.Write(jukebox.Home(u"session.json"_s), "no session", false);
    EXPECT_FALSE(Keeper().TakeOver());
    EXPECT_EQ(lines.filter(u"illisible"_s).size(), 1);
    EXPECT_FALSE(IsThere());
}

} // namespace
