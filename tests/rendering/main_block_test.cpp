// The Main block's information lines.
#include "rendering/main_block.h"
#include "support/jukebox.h"

#include <gtest/gtest.h>

namespace {

class MainBlockTest : public testing::Test {
protected:
    MainBlockTest() {
        jukebox.Start();
        form.PlaylistCount = 1;
        form.PlaylistCurrent = 1;
        form.PlaylistTitre(1) = QStringLiteral("Mix.vtxpl");
        form.InfosBlink = 0;
    }

    // The text of the second line in a state of the lines.
    QString SecondLine(const char* state) {
        form.BlockMainInfos = QString::fromLatin1(state);
        form.InfosTicks = 1;
        BlockMainRedrawInfos(form);
        return jukebox.DrawnTexts().last().section(u',', 0, 0);
    }

    Jukebox jukebox;
    Form_Main& form = jukebox.form;
};

// Deliberate D-19.
TEST_F(MainBlockTest, APlaylistKeepsItsEndingWhileItIsCalledNowPlaying) {
    EXPECT_EQ(SecondLine("nowplaying"), QStringLiteral("MIX.VTXPL"));
}

TEST_F(MainBlockTest, APlaylistLosesItsEndingInTheOtherStates) {
    EXPECT_EQ(SecondLine("addtoplaylist"), QStringLiteral("MIX"));
}

} // namespace
