// The menu's rows: the choices that mirror settings, what is drawn, and which rows are visible.
#include "rendering/command_block.h"

#include "support/error_of.h"
#include "support/jukebox.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kRow = 15;
// The room inside the block's border: 120 less 14.
constexpr int kRoom = 106;

class CommandBlock : public testing::Test {
protected:
    CommandBlock() { jukebox.Start(); }

    QImage Shown() {
        form.frame.Picture_Main.picture.fill(kGround);
        ShowCommandRows(form);
        return form.frame.Picture_Main.picture.copy(form.theme.BlockCommand.X.value() + 7,
                                                    form.theme.BlockCommand.Y.value() + 7,
                                                    form.frame.Picture_Command.Width(), kRoom);
    }
    static QImage Part(const Surface& strip, int top, int height) {
        return strip.picture.copy(0, top, strip.Width(), height);
    }

    static constexpr QRgb kGround = 0xFF102030;

    Jukebox jukebox;
    Form_Main& form = jukebox.form;
};

TEST_F(CommandBlock, CoverAndNumberFeedTwoRowsThatAgree) {
    for (const QString& word : {u"true"_s, u"false"_s, QString()}) {
        form.settings.ShowCover = word;
        form.settings.ShowTrackNum = word;
        DrawCommand(form);
        const int choice = word == u"true" ? 1 : 2;
        EXPECT_EQ(form.menu.CommandChoice(1, 3), choice) << word.toStdString();
        EXPECT_EQ(form.menu.CommandChoice(2, 6), choice) << word.toStdString();
        EXPECT_EQ(form.menu.CommandChoice(1, 4), choice) << word.toStdString();
        EXPECT_EQ(form.menu.CommandChoice(2, 9), choice) << word.toStdString();
    }
}

TEST_F(CommandBlock, EachRowMirrorsItsOwnSetting) {
    form.settings.ManageCoin = u"true"_s;
    form.settings.PlayTransitionSound = u"false"_s;
    form.settings.ShowFolderCover = u"false"_s;
    form.settings.ShowFileCover = u"true"_s;
    form.settings.ShowBigCoverDefault = u"true"_s;
    form.settings.ShowMp3CoverTag = u"false"_s;
    form.settings.ShowBigtitle = u"true"_s;
    form.library.Order = u"playcount"_s;
    DrawCommand(form);
    EXPECT_EQ(form.menu.CommandChoice(1, 1), 2);
    EXPECT_EQ(form.menu.CommandChoice(1, 2), 1);
    EXPECT_EQ(form.menu.CommandChoice(2, 1), 1);
    EXPECT_EQ(form.menu.CommandChoice(2, 2), 2);
    EXPECT_EQ(form.menu.CommandChoice(2, 4), 2);
    EXPECT_EQ(form.menu.CommandChoice(2, 5), 1);
    EXPECT_EQ(form.menu.CommandChoice(2, 7), 1);
    EXPECT_EQ(form.menu.CommandChoice(2, 8), 2);
    form.library.Order = u"neither"_s;
    DrawCommand(form);
    EXPECT_EQ(form.menu.CommandChoice(1, 1), 2) << "the choice is unchanged";
}

TEST_F(CommandBlock, LabelsAndChoicesAreInCapitalsInBothLooks) {
    const qsizetype drawn = jukebox.DrawnTexts().size();
    DrawCommand(form);
    QStringList words;
    for (const QString& text : jukebox.DrawnTexts().mid(drawn)) {
        words += text.section(u',', 0, 0);
    }
    // Five rows of four texts, two buttons of two; "tracknote" has no choice yet.
    const QStringList rows = {u"ORDER"_s, u"ALPHA"_s,    u"BIG TITLE"_s, u"NO"_s,        u"COVER"_s,
                              u"YES"_s,   u"TRACKNUM"_s, u"YES"_s,       u"TRACKNOTE"_s, QString()};
    QStringList expected;
    for (qsizetype i = 0; i < rows.size(); i += 2) {
        expected += {rows[i], rows[i + 1], rows[i], rows[i + 1]};
    }
    expected += {u"CONFIG"_s, u"CONFIG"_s, u"QUIT"_s, u"QUIT"_s};
    EXPECT_EQ(words, expected);
}

TEST_F(CommandBlock, ARowThatIsNoListAndNoButtonStaysBlank) {
    form.menu.CommandCurrentMenu = 3;
    const qsizetype drawn = jukebox.DrawnTexts().size();
    DrawCommand(form);
    EXPECT_EQ(form.frame.Picture_Command.Height(), 2 * kRow);
    EXPECT_EQ(jukebox.DrawnTexts().size() - drawn, 2) << "only the button";
}

TEST_F(CommandBlock, AChoiceBeyondTwentyIsError9) {
    form.menu.CommandChoice(1, 5) = 21;
    EXPECT_EQ(ErrorOf([&] { DrawCommand(form); }), kSubscriptOutOfRange);
    form.menu.CommandChoice(1, 5) = 20;
    EXPECT_EQ(ErrorOf([&] { DrawCommand(form); }), 0);
}

TEST_F(CommandBlock, RowsThatFitAreShownFromTheirTop) {
    form.menu.CommandCurrentId = 6;
    const QImage shown = Shown();
    EXPECT_EQ(shown.copy(0, 0, shown.width(), 105), Part(form.frame.Picture_Command, 0, 105));
    form.cursor.ActiveZone = u"command"_s;
    EXPECT_EQ(Shown().copy(0, 5 * kRow, shown.width(), kRow),
              Part(form.frame.Picture_CommandHilight, 5 * kRow, kRow));
}

TEST_F(CommandBlock, RowsThatDoNotFitScrollUnderTheCursor) {
    form.menu.CommandCurrentMenu = 2;
    form.menu.CommandCurrentId = 10;
    form.cursor.ActiveZone = u"command"_s;
    DrawCommand(form);
    const QImage shown = Shown();
    EXPECT_EQ(shown.copy(0, 0, shown.width(), kRoom - kRow),
              Part(form.frame.Picture_Command, 10 * kRow - kRoom, kRoom - kRow));
    EXPECT_EQ(shown.copy(0, kRoom - kRow, shown.width(), kRow),
              Part(form.frame.Picture_CommandHilight, 9 * kRow, kRow));
}

} // namespace
