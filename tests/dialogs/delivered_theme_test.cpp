// The configuration with themes that are only in the share folder: listed, and copied before they are
// changed.
#include "settings/copy_folder.h"
#include "state/paths.h"
#include "support/dialog_box.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

// Moves the test's theme to a share folder.
class DeliveredThemeTest : public DialogBox {
protected:
    void SetUp() override {
        form.shell.AppFolder = box.Home();
        form.shell.shareFolder = share.Path();
        share.MakeFolder(u"themes"_s);
        ASSERT_TRUE(files.Rename(box.Home(u"themes/default"_s), Delivered()));
        QDir(box.Home(u"themes"_s)).removeRecursively();
    }
    QString Delivered() const { return share.Path(u"themes/default"_s); }
    QByteArray DeliveredIni() { return share.Read(u"themes/default/theme.ini"_s); }
    // A slot's label that differs from the theme's.
    void Rename() {
        InputEvent event =
            Event(InputKind::kControlSet, u"Form_Config"_s, u"Text_ZoneListGauche"_s, 0, u"Z9"_s);
        ASSERT_FALSE(HandleEvent(form, event));
    }
    bool Exists(const QString& name) { return QFileInfo::exists(box.Home(name)); }

    HomeFolder share;
};

TEST_F(DeliveredThemeTest, ThemesOfBothFoldersAreListedOnceInTheirOrder) {
    for (const char* const theme : {"themes", "themes/default", "themes/oak", "themes/.hidden"}) {
        QDir().mkpath(box.Home(QString::fromLatin1(theme)));
    }
    QDir().rename(Delivered(), share.Path(u"themes/walnut"_s));
    QDir(box.Home(u"themes/default"_s)).removeRecursively();
    QDir().mkpath(share.Path(u"themes/oak"_s));
    QDir().mkpath(share.Path(u"themes/Birch"_s));
    form.settings.Theme = u"walnut"_s;
    box.SetKey(u"config.ini"_s, u"Main"_s, u"Theme"_s, u"walnut"_s);
    Open();
    EXPECT_EQ(form.config.Combo_ThemeList, QStringList({u"Birch"_s, u"oak"_s, u"walnut"_s}));
    EXPECT_EQ(form.config.Combo_Theme, u"walnut"_s);
}

TEST_F(DeliveredThemeTest, AChangedSlotIsWrittenToACopyOfTheWholeTheme) {
    const QByteArray delivered = DeliveredIni();
    const std::size_t count = share.Count(u"themes/default"_s);
    Open();
    Rename();
    Click(u"Command_OK"_s);
    EXPECT_EQ(DeliveredIni(), delivered);
    EXPECT_TRUE(Bytes(u"themes/default/theme.ini"_s).contains("ZoneListPisteNumSaisieLibele=Z9"));
    EXPECT_EQ(files.ListFolder(box.Home(u"themes/default"_s))->size(), count);
    EXPECT_FALSE(QFileInfo::exists(CopyInProgress(box.Home())));
}

TEST_F(DeliveredThemeTest, AnUnchangedThemeIsNotCopied) {
    Open();
    Rename();
    Click(u"Command_OK"_s);
    // The copy holds what OK writes; as the delivered theme it needs no copy.
    QDir(Delivered()).removeRecursively();
    ASSERT_TRUE(files.Rename(box.Home(u"themes/default"_s), Delivered()));
    Form_Config_Load(form);
    Click(u"Command_OK"_s);
    EXPECT_FALSE(Exists(u"themes/default"_s));
}

TEST_F(DeliveredThemeTest, TheRestOfACopyThatACrashLeftIsRemoved) {
    QDir().mkpath(CopyInProgress(box.Home()) + u"/old"_s);
    Open();
    Rename();
    Click(u"Command_OK"_s);
    EXPECT_TRUE(Exists(u"themes/default/theme.ini"_s));
    EXPECT_FALSE(Exists(u"themes/default/old"_s));
}

// The operation that fails from OK on.
class FailingCopyTest : public DeliveredThemeTest, public testing::WithParamInterface<const char*> {};

INSTANTIATE_TEST_SUITE_P(Operations, FailingCopyTest,
                         testing::Values("MakeFolder", "ListFolder", "Write", "SyncFolder", "Rename"));

TEST_P(FailingCopyTest, IsLoggedAndLeavesTheDeliveredTheme) {
    const QByteArray delivered = DeliveredIni();
    Open();
    Rename();
    files.Fail(GetParam());
    Click(u"Command_OK"_s);
    files.FailNothing();
    EXPECT_FALSE(form.config.Visible);
    EXPECT_FALSE(Exists(u"themes/default"_s));
    EXPECT_FALSE(QFileInfo::exists(CopyInProgress(box.Home())));
    EXPECT_TRUE(LogSinceOpening().contains(u" : Impossible d'écrire "_s + box.Home(u"themes/default"_s)));
    EXPECT_EQ(DeliveredIni(), delivered);
    EXPECT_EQ(FolderOfTheme(form, u"default"_s), Delivered());
}

} // namespace
