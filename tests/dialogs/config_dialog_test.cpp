// The configuration dialog where the console cannot observe it: the log, the number of writes, names in any
// bytes.
#include "dialogs/config_dialog.h"

#include "interaction/menu.h"
#include "support/dialog_box.h"
#include "support/error_of.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

const QString kConfig = u"config.ini"_s;
const QString kTheme = u"themes/default/theme.ini"_s;

class ConfigDialogTest : public DialogBox {};

TEST_F(ConfigDialogTest, TheLogTellsOpeningConfirmationAndEnd) {
    Open();
    Click(u"Command_OK"_s);
    EXPECT_EQ(LogSinceOpening(), (QStringList{u" : Fenetre de Config"_s, u" : Modification config"_s,
                                              u" : Quitter fenetre de config"_s}));
}

TEST_F(ConfigDialogTest, TheLogTellsNoChangeAfterCancel) {
    Open();
    Set(u"Text_PositionLeft"_s, u"5"_s);
    Click(u"Command_Cancel"_s);
    EXPECT_EQ(LogSinceOpening(), (QStringList{u" : Fenetre de Config"_s, u" : Quitter fenetre de config"_s}));
}

TEST_F(ConfigDialogTest, TheLogTellsTheInnerDialogsInTheirOrder) {
    Open();
    inDialog = [&] { Key(65); };
    Click(u"Command_KeyAssign"_s, 0);
    inDialog = [&] { Click(u"Command_Cancel"_s); };
    Click(u"Command_KeyAssign"_s, 0);
    inDialog = [&] { Click(u"Command_OK"_s); };
    Click(u"Command_Select"_s);
    EXPECT_EQ(LogSinceOpening(),
              (QStringList{u" : Fenetre de Config"_s, u" : Fenetre assignation touche"_s, u"65"_s,
                           u" : Quitter la fenetre d'assignation de touche"_s,
                           u" : Fenetre assignation touche"_s, u" : Annulation Fenetre assignation touche "_s,
                           u" : Fenetre selection repertoire"_s, u" : Changement repertoire "_s + box.Music(),
                           u" : Quitter fenetre selection repertoire"_s}));
}

TEST_F(ConfigDialogTest, EachFileIsWrittenOnce) {
    Open();
    for (const QString& control :
         {u"Text_PositionLeft"_s, u"Text_PositionTop"_s, u"Text_VideoPositionTop"_s}) {
        Set(control, u"5"_s);
    }
    Use(InputKind::kControlSet, u"Text_ZoneListGauche"_s, 0, u"Door"_s);
    Use(InputKind::kControlSet, u"Text_ZoneListDroite"_s, 9, u"Gate"_s);
    const int writes = files.Calls("Write");
    const int renames = files.Calls("Rename");
    Click(u"Command_OK"_s);
    EXPECT_EQ(files.Calls("Write") - writes, 2);
    EXPECT_EQ(files.Calls("Rename") - renames, 2);
    EXPECT_TRUE(Bytes(kConfig).contains("PositionTop=5\n"));
    EXPECT_TRUE(Bytes(kTheme).contains("Libele=Gate\n"));
}

TEST_F(ConfigDialogTest, NoFileIsWrittenWhenNothingChanged) {
    Open();
    const QByteArray config = Bytes(kConfig);
    const QByteArray theme = Bytes(kTheme);
    const int renames = files.Calls("Rename");
    Click(u"Command_OK"_s);
    EXPECT_EQ(files.Calls("Rename"), renames);
    EXPECT_EQ(Bytes(kConfig), config);
    EXPECT_EQ(Bytes(kTheme), theme);
}

TEST_F(ConfigDialogTest, CancelLeavesBothFilesAsTheyAre) {
    Open();
    const QByteArray config = Bytes(kConfig);
    const QByteArray theme = Bytes(kTheme);
    const int writes = files.Calls("Write");
    Set(u"Text_PositionLeft"_s, u"5"_s);
    Use(InputKind::kControlSet, u"Text_ZoneListGauche"_s, 0, u"Door"_s);
    DoubleClick(u"Label_ZoneListGauche"_s, 0);
    Click(u"Command_Cancel"_s);
    EXPECT_EQ(files.Calls("Write"), writes);
    EXPECT_EQ(Bytes(kConfig), config);
    EXPECT_EQ(Bytes(kTheme), theme);
}

TEST_F(ConfigDialogTest, AConfigurationThatCannotBeWrittenIsLoggedAndTheThemeIsWritten) {
    Open();
    const QByteArray config = Bytes(kConfig);
    Set(u"Text_PositionLeft"_s, u"5"_s);
    Use(InputKind::kControlSet, u"Text_ZoneListGauche"_s, 0, u"Door"_s);
    files.Fail("Write", 1, 1);
    EXPECT_EQ(Click(u"Command_OK"_s), 0);
    EXPECT_FALSE(form.config.Visible);
    EXPECT_EQ(LogSinceOpening(), (QStringList{u" : Fenetre de Config"_s, u" : Modification config"_s,
                                              u" : Impossible d'écrire "_s + box.Home(kConfig),
                                              u" : Quitter fenetre de config"_s}));
    EXPECT_EQ(Bytes(kConfig), config);
    EXPECT_TRUE(Bytes(kTheme).contains("Libele=Door\n"));
}

TEST_F(ConfigDialogTest, AThemeThatCannotBeWrittenIsLoggedAndTheConfigurationIsWritten) {
    Open();
    const QByteArray theme = Bytes(kTheme);
    Set(u"Text_PositionLeft"_s, u"5"_s);
    Use(InputKind::kControlSet, u"Text_ZoneListGauche"_s, 0, u"Door"_s);
    files.Fail("Rename", 2);
    EXPECT_EQ(Click(u"Command_OK"_s), 0);
    EXPECT_FALSE(form.config.Visible);
    EXPECT_EQ(LogSinceOpening(), (QStringList{u" : Fenetre de Config"_s, u" : Modification config"_s,
                                              u" : Impossible d'écrire "_s + box.Home(kTheme),
                                              u" : Quitter fenetre de config"_s}));
    EXPECT_TRUE(Bytes(kConfig).contains("PositionLeft=5\n"));
    EXPECT_EQ(Bytes(kTheme), theme);
}

TEST_F(ConfigDialogTest, TheLabelOfTheMusicFolderWarnsUntilAFolderIsChosen) {
    Open();
    EXPECT_FALSE(Look(u"Label12"_s).warns);
    Click(u"Command_Cancel"_s);
    box.SetKey(kConfig, u"Main"_s, u"StartPath"_s, QString());
    Form_Config_Load(form);
    EXPECT_TRUE(Look(u"Label12"_s).warns);
    EXPECT_FALSE(Look(u"Command_OK"_s).enabled);
    Click(u"Command_Select"_s); // cancelled
    EXPECT_TRUE(Look(u"Label12"_s).warns);
    inDialog = [&] { Click(u"Command_OK"_s); };
    Click(u"Command_Select"_s);
    EXPECT_FALSE(Look(u"Label12"_s).warns);
    EXPECT_TRUE(Look(u"Command_OK"_s).enabled);
}

TEST_F(ConfigDialogTest, AFolderNameInAnyBytesIsFoundAgain) {
    const QString folder = box.Music(TextOfPath("caf\xE9 \xFF"));
    box.Folder(u"sub"_s);
    ASSERT_TRUE(files.MakeFolder(folder));
    Open();
    inDialog = [&] {
        EXPECT_TRUE(Look(u"Dir1"_s).entries.contains(folder));
        EXPECT_EQ(Set(u"Dir1"_s, folder), 0);
        Click(u"Command_OK"_s);
    };
    Click(u"Command_Select"_s);
    Click(u"Command_OK"_s);
    Form_Config_Load(form);
    EXPECT_EQ(Look(u"Label_StartPath"_s).value, folder);
    Click(u"Command_Cancel"_s);
    box.platform.dialogs.showModal = nullptr;
    EXPECT_EQ(ErrorOf([&] { OpenConfigByMenu(form); }), 0);
    EXPECT_EQ(form.library.Dir1.Path, folder);
}

TEST_F(ConfigDialogTest, AFolderThatVanishesAfterItWasChosenIsAnErrorOfTheMenu) {
    box.Folder(u"sub"_s);
    Open();
    inDialog = [&] {
        Set(u"Dir1"_s, box.Music(u"sub"_s));
        QDir(box.Music()).removeRecursively();
        Click(u"Command_OK"_s);
    };
    EXPECT_EQ(Click(u"Command_Select"_s), 0);
    EXPECT_EQ(Look(u"Label_StartPath"_s).value, box.Music(u"sub"_s));
    EXPECT_EQ(Click(u"Command_OK"_s), 0);
    box.platform.dialogs.showModal = nullptr;
    EXPECT_EQ(ErrorOf([&] { OpenConfigByMenu(form); }), kPathNotFound);
}

TEST_F(ConfigDialogTest, AJukeboxWithoutThemesCannotBeConfigured) {
    Open();
    Click(u"Command_Cancel"_s);
    QDir(box.Home(u"themes"_s)).removeRecursively();
    EXPECT_EQ(ErrorOf([&] { Form_Config_Load(form); }), kPathNotFound);
    EXPECT_FALSE(form.config.Visible);
}

} // namespace
