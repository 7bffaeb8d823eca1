// Building the menus: the initial choices before anything is drawn, and the log.
#include "theme/load_command.h"

#include "support/jukebox.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

class LoadCommandTest : public testing::Test {
protected:
    std::vector<int> Choices(int menu) {
        std::vector<int> choices;
        for (int row = 1; row <= box.form.menu.CommandRowCount(menu).value(); ++row) {
            choices.push_back(box.form.menu.CommandChoice(menu, row).value());
        }
        return choices;
    }

    Jukebox box;
};

TEST_F(LoadCommandTest, EmptySettingsShowNo) {
    LoadCommand(box.form);
    EXPECT_EQ(Choices(1), std::vector<int>({0, 2, 2, 2, 0, 0, 0}));
    EXPECT_EQ(Choices(2), std::vector<int>({2, 2, 2, 2, 2, 2, 2, 2, 2, 0}));
    EXPECT_EQ(Choices(3), std::vector<int>({2, 0}));
}

TEST_F(LoadCommandTest, EachRowStartsOnItsOwnSetting) {
    const QString on = u"true"_s;
    Form_Main& form = box.form;
    form.settings.ShowBigtitle = form.settings.ShowTrackNumFolder = on;
    form.settings.ManageCoin = form.settings.ShowFolderCover = form.settings.ShowCover =
        form.settings.ShowMp3CoverTag = on;
    LoadCommand(form);
    EXPECT_EQ(Choices(1), std::vector<int>({0, 1, 2, 1, 0, 0, 0}));
    EXPECT_EQ(Choices(2), std::vector<int>({1, 2, 2, 1, 2, 1, 2, 1, 2, 0}));
    EXPECT_EQ(Choices(3), std::vector<int>({1, 0}));
}

TEST_F(LoadCommandTest, NoRowStartsOnItsNeighboursSetting) {
    const QString on = u"true"_s;
    Form_Main& form = box.form;
    form.settings.ShowCoverFolder = on;
    form.settings.PlayTransitionSound = form.settings.ShowFileCover = form.settings.ShowBigCoverDefault =
        form.settings.ShowTrackNum = on;
    LoadCommand(form);
    EXPECT_EQ(Choices(1), std::vector<int>({0, 2, 1, 2, 0, 0, 0}));
    EXPECT_EQ(Choices(2), std::vector<int>({2, 1, 2, 2, 1, 2, 1, 2, 1, 0}));
}

TEST_F(LoadCommandTest, TheOrderOfTheFolderIsComparedAsItStands) {
    for (const auto& [order, choice] :
         {std::pair{u"alpha"_s, 1}, std::pair{u"playcount"_s, 2}, std::pair{u"date"_s, 0},
          std::pair{u"Alpha"_s, 0}, std::pair{QString(), 0}}) {
        box.form.library.Order = order;
        LoadCommand(box.form);
        EXPECT_EQ(box.form.menu.CommandChoice(1, 1), choice) << order.toStdString();
    }
}

// Deliberate D-08: the row compares the setting with "true".
TEST_F(LoadCommandTest, TheGeneralOrderIsOnPlaycountForEveryOrderThereIs) {
    for (const auto& [order, choice] :
         {std::pair{u"alpha"_s, 2}, std::pair{u"playcount"_s, 2}, std::pair{u"true"_s, 1}}) {
        box.form.settings.DefaultOrder = order;
        LoadCommand(box.form);
        EXPECT_EQ(box.form.menu.CommandChoice(2, 3), choice) << order.toStdString();
    }
}

TEST_F(LoadCommandTest, TheLogTellsStartAndEnd) {
    LoadCommand(box.form);
    EXPECT_EQ(box.Log(), QStringList({u" : Configuration de la zone de commandes (LoadCommand)"_s,
                                      u" : Fin de configuration de la zone commande"_s}));
}

TEST_F(LoadCommandTest, TheFirstRowOfTheFirstMenuIsCurrent) {
    box.form.menu.CommandCurrentMenu = 3;
    box.form.menu.CommandCurrentId = 2;
    LoadCommand(box.form);
    EXPECT_EQ(box.form.menu.CommandCurrentMenu, 1);
    EXPECT_EQ(box.form.menu.CommandCurrentId, 1);
}

} // namespace
