// The queue's steps: adding, moving and removing entries, the current and the selected one, the track's name.
#include "playback/queue.h"

#include "support/jukebox.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

class QueueTest : public testing::Test {
protected:
    void Add(const QString& title) {
        AddEntry(form);
        FillLastEntry(form, u"/music/"_s + title, title);
    }
    // The titles of the entries, from the first to the last.
    QStringList Titles() {
        QStringList titles;
        for (Integer16 entry = 1; entry <= form.queue.PlaylistCount; entry += 1) {
            titles += form.queue.PlaylistTitre(entry);
        }
        return titles;
    }

    Jukebox jukebox;
    Form_Main& form = jukebox.form;
};

TEST_F(QueueTest, AnEntryIsPaidForOnceAndNotStarted) {
    Add(u"a"_s);
    EXPECT_EQ(form.queue.PlaylistPath(1), u"/music/a"_s);
    EXPECT_EQ(form.queue.PlaylistCredits(1), 1);
    EXPECT_EQ(form.queue.PlaylistPlayed(1), 0);
    EXPECT_FALSE(IsUncovered(form, 1));
    CountStart(form, 1);
    EXPECT_TRUE(IsUncovered(form, 1));
    CountPayment(form, 1);
    EXPECT_FALSE(IsUncovered(form, 1));
}

TEST_F(QueueTest, OnlyAQueueWithoutSelectionGetsOne) {
    Add(u"a"_s);
    EXPECT_EQ(form.queue.PlaylistSelected, 1);
    form.queue.PlaylistSelected = 5;
    Add(u"b"_s);
    EXPECT_EQ(form.queue.PlaylistSelected, 5);
}

TEST_F(QueueTest, Entry1001Raises9ThatNamesTheTrack) {
    for (int entry = 0; entry < 1000; ++entry) {
        AddEntry(form);
    }
    AddEntry(form);
    try {
        FillLastEntry(form, u"/music/last.mp3"_s, u"last"_s);
        FAIL() << "no error";
    } catch (const RunTimeError& error) {
        EXPECT_EQ(error.number, 9);
        EXPECT_TRUE(error.detail.startsWith(u"/music/last.mp3 for the queue")) << qPrintable(error.detail);
    }
}

TEST_F(QueueTest, TheSelectionMovesWithItsEntryAndTheCurrentEntryKeepsItsNumber) {
    for (const QString& title : {u"a"_s, u"b"_s, u"c"_s}) {
        Add(title);
    }
    MakeCurrent(form, 2);
    form.queue.PlaylistSelected = 2;
    MoveSelectedEntry(form, 1);
    EXPECT_EQ(Titles(), (QStringList{u"a"_s, u"c"_s, u"b"_s}));
    EXPECT_EQ(form.queue.PlaylistSelected, 3);
    EXPECT_EQ(form.queue.PlaylistCurrent, 2);
}

TEST_F(QueueTest, TheSelectionStaysInTheQueueWhenItsEntryIsRemoved) {
    for (const QString& title : {u"a"_s, u"b"_s, u"c"_s}) {
        Add(title);
    }
    form.queue.PlaylistSelected = 2;
    RemoveSelectedEntry(form);
    EXPECT_EQ(Titles(), (QStringList{u"a"_s, u"c"_s}));
    EXPECT_EQ(form.queue.PlaylistSelected, 2);
    RemoveSelectedEntry(form);
    EXPECT_EQ(Titles(), QStringList{u"a"_s});
    EXPECT_EQ(form.queue.PlaylistSelected, 1);
}

TEST_F(QueueTest, ThePlaceWrapsAtBothEnds) {
    for (const QString& title : {u"a"_s, u"b"_s}) {
        Add(title);
    }
    MakeCurrent(form, 1);
    GoToPreviousEntry(form);
    EXPECT_EQ(form.queue.PlaylistCurrent, 2);
    GoToNextEntry(form);
    EXPECT_EQ(form.queue.PlaylistCurrent, 1);
}

TEST_F(QueueTest, ATrackIsNamedAfterItsEntryOrAfterASlot) {
    Add(u"a"_s);
    form.library.InfoPath(3) = u"/music/slot"_s;
    form.library.InfoTitre(3) = u"slot"_s;
    form.library.NumTrack = 3;
    NameAfterEntry(form, 1);
    EXPECT_EQ(form.player.NowPlayingPath, u"/music/a"_s);
    NameAfterSlotUnderCursor(form);
    EXPECT_EQ(form.player.NowPlayingTitre, u"slot"_s);
    NameNothing(form);
    EXPECT_EQ(form.player.NowPlayingPath + form.player.NowPlayingTitre, QString());
}

} // namespace
