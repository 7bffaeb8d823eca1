// The queue's rows as the finger drags them.
#include "rendering/playlist_block.h"
#include "support/jukebox.h"

#include <gtest/gtest.h>

namespace {

// Deliberate D-24.
TEST(ReleaseOffset, IsLimitedByTheRowsAloneAndTheNextFrameByTheirAreaToo) {
    Jukebox jukebox;
    jukebox.Start();
    Form_Main& form = jukebox.form;
    form.TactileMode = QStringLiteral("true");
    form.PlaylistCount = 50;
    DrawPlaylist(form);
    const int rows = 50 * form.ImgPlaylistPlaylistHilight.Height();
    form.TouchDeltaY = 32000;
    EXPECT_EQ(ReleaseOffset(form), rows);
    form.TouchScrollOffset = rows;
    form.TouchDragging = 0;
    ShowPlaylistRows(form);
    EXPECT_EQ(form.TouchScrollOffset.value(), rows - form.BlockPlaylistPlaylistH.value());
}

} // namespace
