// The folder of the list after the configuration dialog, opened by the menu or by the key.
#include "interaction/menu.h"

#include "interaction/keys.h"
#include "support/jukebox.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

class OpenConfig : public testing::Test {
protected:
    OpenConfig() {
        box.Folder(u"sub"_s);
        box.Track(u"sub/a.mp3"_s);
        box.Start();
        constexpr int kConfirm = 13;
        Form_KeyDown(form, kConfirm, 0);
    }

    Jukebox box;
    Form_Main& form = box.form;
};

TEST_F(OpenConfig, AfterTheKeysDialogTheListStaysInItsFolder) {
    ASSERT_EQ(form.library.Dir1.Path, box.Music(u"sub"_s));
    OpenConfigByKey(form);
    EXPECT_EQ(form.library.Dir1.Path, box.Music(u"sub"_s));
    EXPECT_EQ(form.library.CurrentPath, box.Music(u"sub"_s));
    EXPECT_EQ(form.library.InfoTitre(0), u"a.mp3"_s);
    EXPECT_TRUE(form.shell.Timer1.Enabled);
}

TEST_F(OpenConfig, AfterTheMenusDialogTheListIsBackOnTheMusicFolder) {
    form.menu.CommandCurrentId = 6;
    ValiderCommand(form);
    EXPECT_EQ(form.library.Dir1.Path, box.Music());
    EXPECT_EQ(form.library.CurrentPath, box.Music());
    EXPECT_EQ(form.library.InfoTitre(0), u"sub"_s);
    EXPECT_TRUE(box.Log().contains(u" : deplacement dir1 vers "_s + box.Music()));
    EXPECT_TRUE(form.shell.Timer1.Enabled);
}

TEST_F(OpenConfig, TheHeartbeatRestsWhileTheDialogIsOpen) {
    bool enabled = true;
    QString shown;
    box.platform.dialogs.showModal = [&](const QString& dialog) {
        shown = dialog;
        enabled = form.shell.Timer1.Enabled;
    };
    OpenConfigByMenu(form);
    EXPECT_EQ(shown, u"Form_Config"_s);
    EXPECT_FALSE(enabled);
}

} // namespace
