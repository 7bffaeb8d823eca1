// Choosing a folder: slow, unreadable and vanished folders, and what is done in the meantime.
#include "dialogs/folder_chooser.h"

#include "support/dialog_box.h"

#include <gtest/gtest.h>

#include <vector>

using namespace Qt::Literals::StringLiterals;

namespace {

class FolderChooserTest : public DialogBox {
protected:
    FolderChooserTest() { box.Folder(u"blues/slow"_s); }

    // Does these things one after the other while the next folder is being read.
    void WhileReading(std::vector<std::function<void()>> things) {
        files.turns = static_cast<int>(things.size()) + 1;
        box.platform.pump.runPending = [this, things = std::move(things), next = std::size_t{0}]() mutable {
            if (next == things.size()) {
                return false;
            }
            things[next++]();
            return true;
        };
    }
    QStringList Way(const QString& folder) const {
        QStringList way = {u"/"_s};
        for (qsizetype at = folder.indexOf(u'/', 1); at > 0; at = folder.indexOf(u'/', at + 1)) {
            way += folder.left(at);
        }
        return way + QStringList{folder};
    }
};

TEST_F(FolderChooserTest, TheLogTellsTheFolderThatWasChosen) {
    Open();
    inDialog = [&] {
        Set(u"Dir1"_s, box.Music(u"blues"_s));
        Click(u"Command_OK"_s);
    };
    Click(u"Command_Select"_s);
    EXPECT_EQ(LogSinceOpening().mid(1), (QStringList{u" : Fenetre selection repertoire"_s,
                                                     u" : Changement repertoire "_s + box.Music(u"blues"_s),
                                                     u" : Quitter fenetre selection repertoire"_s}));
}

TEST_F(FolderChooserTest, TheLogTellsNoFolderAfterCancel) {
    Open();
    Click(u"Command_Select"_s);
    EXPECT_EQ(LogSinceOpening().mid(1), (QStringList{u" : Fenetre selection repertoire"_s,
                                                     u" : Quitter fenetre selection repertoire"_s}));
}

TEST_F(FolderChooserTest, TheListHoldsTheFoldersAboveTheOpenOneAndItsFolders) {
    box.Folder(u"Alpha"_s);
    box.Folder(u".hidden"_s);
    box.Folder(u"zoo"_s);
    box.Track(u"track.mp3"_s);
    Open();
    inDialog = [&] {
        EXPECT_EQ(Look(u"Dir1"_s).entries,
                  Way(box.Music()) +
                      QStringList({box.Music(u"Alpha"_s), box.Music(u"blues"_s), box.Music(u"zoo"_s)}));
        Set(u"Dir1"_s, u"/"_s);
        DoubleClick(u"Dir1"_s);
        EXPECT_EQ(Look(u"Dir1"_s).entries.first(), u"/"_s);
        EXPECT_EQ(Look(u"Dir1"_s).entries.count(u"/"_s), 1);
    };
    Click(u"Command_Select"_s);
}

TEST_F(FolderChooserTest, AFolderThatCannotBeReadIsEmpty) {
    Open();
    inDialog = [&] {
        Set(u"Dir1"_s, box.Music(u"blues"_s));
        files.Fail("ListFolder", 1, 1);
        EXPECT_EQ(DoubleClick(u"Dir1"_s), 0);
        EXPECT_EQ(Look(u"Dir1"_s).entries, Way(box.Music(u"blues"_s)));
        Click(u"Command_OK"_s);
    };
    Click(u"Command_Select"_s);
    EXPECT_EQ(form.folderDialog.SelectedDirectory, box.Music(u"blues"_s));
}

TEST_F(FolderChooserTest, AMusicFolderThatIsGoneOpensTheApplicationFolder) {
    Open();
    QDir(box.Music()).removeRecursively();
    inDialog = [&] { EXPECT_EQ(Look(u"Dir1"_s).value, box.Home()); };
    Click(u"Command_Select"_s);
    EXPECT_EQ(files.read, (QStringList{box.Music(), box.Home()}));
}

TEST_F(FolderChooserTest, AMusicFolderThatCannotBeReadIsOpenAndEmpty) {
    Open();
    files.Fail("ListFolder", 1, 1);
    inDialog = [&] { EXPECT_EQ(Look(u"Dir1"_s).entries, Way(box.Music())); };
    Click(u"Command_Select"_s);
}

TEST_F(FolderChooserTest, AFolderThatVanishesIsGivenAllTheSame) {
    Open();
    inDialog = [&] {
        Set(u"Dir1"_s, box.Music(u"blues"_s));
        QDir(box.Music(u"blues"_s)).removeRecursively();
        Click(u"Command_OK"_s);
    };
    EXPECT_EQ(Click(u"Command_Select"_s), 0);
    EXPECT_EQ(form.config.Label_StartPath, box.Music(u"blues"_s));
}

TEST_F(FolderChooserTest, CancelEndsTheReadingOfAFolder) {
    Open();
    bool reachedTheEnd = false;
    WhileReading({[&] { EXPECT_TRUE(form.folderDialog.isReading); }, [&] { Click(u"Command_Cancel"_s); },
                  [&] { reachedTheEnd = true; }});
    EXPECT_EQ(Click(u"Command_Select"_s), 0);
    EXPECT_FALSE(reachedTheEnd);
    EXPECT_FALSE(form.folderDialog.Visible);
    EXPECT_FALSE(form.folderDialog.isReading);
    EXPECT_EQ(files.read, QStringList{box.Music()});
    EXPECT_EQ(form.config.Label_StartPath, box.Music());
}

TEST_F(FolderChooserTest, OkGivesTheFolderThatIsBeingRead) {
    Open();
    WhileReading({[&] { Click(u"Command_OK"_s); }});
    form.config.Label_StartPath = u"/old"_s;
    Click(u"Command_Select"_s);
    EXPECT_FALSE(form.folderDialog.Visible);
    EXPECT_EQ(form.config.Label_StartPath, box.Music());
}

TEST_F(FolderChooserTest, TheListsTakeNoInputWhileAFolderIsBeingRead) {
    Open();
    WhileReading({[&] { Set(u"Dir1"_s, u"/"_s); }, [&] { DoubleClick(u"Dir1"_s); },
                  [&] { Set(u"Drive1"_s, u"/"_s); }});
    inDialog = [&] { EXPECT_EQ(Look(u"Dir1"_s).value, box.Music()); };
    Click(u"Command_Select"_s);
    EXPECT_EQ(files.read, QStringList{box.Music()});
}

TEST_F(FolderChooserTest, ADoubleClickWhileAFolderIsBeingOpenedHasNoEffect) {
    Open();
    inDialog = [&] {
        Set(u"Dir1"_s, box.Music(u"blues"_s));
        WhileReading({[&] { DoubleClick(u"Dir1"_s); }, [&] { Set(u"Dir1"_s, u"/"_s); }});
        DoubleClick(u"Dir1"_s);
        EXPECT_EQ(Look(u"Dir1"_s).value, box.Music(u"blues"_s));
        EXPECT_EQ(files.read, (QStringList{box.Music(), box.Music(u"blues"_s)}));
    };
    Click(u"Command_Select"_s);
}

TEST_F(FolderChooserTest, TheListsTakeInputAgainAfterACancelledReading) {
    Open();
    WhileReading({[&] { Click(u"Command_Cancel"_s); }});
    Click(u"Command_Select"_s);
    files.turns = 0;
    inDialog = [&] {
        EXPECT_EQ(Set(u"Dir1"_s, box.Music(u"blues"_s)), 0);
        EXPECT_EQ(Look(u"Dir1"_s).value, box.Music(u"blues"_s));
    };
    Click(u"Command_Select"_s);
}

// The reading of the first window has not returned when the second one opens and closes.
TEST_F(FolderChooserTest, ASecondWindowDuringACancelledReadingIsHarmless) {
    Open();
    inDialog = [&] {
        Set(u"Dir1"_s, box.Music(u"blues"_s));
        Click(u"Command_OK"_s);
    };
    files.turns = 2;
    box.platform.pump.runPending = [this, step = 0]() mutable {
        if (step++ > 0) {
            return false;
        }
        Click(u"Command_Cancel"_s);
        files.turns = 0;
        Click(u"Command_Select"_s);
        return true;
    };
    Click(u"Command_Select"_s);
    EXPECT_FALSE(form.folderDialog.Visible);
    EXPECT_TRUE(form.config.Visible);
    EXPECT_EQ(form.config.Label_StartPath, box.Music(u"blues"_s));
}

} // namespace
