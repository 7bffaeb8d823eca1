// Converting design pixels to screen pixels where a product and a sum are rounded.
#include "rendering/geometry.h"

#include "support/jukebox.h"

#include <gtest/gtest.h>

namespace {

// 15 times 1.1 is rounded to 16.5 before the zone's corner is added, and a half is rounded to the even
// number. A processor that multiplies and adds with a single rounding finds a little more than a half.
TEST(Geometry, AProductIsRoundedBeforeTheZonesCornerIsAdded) {
    Jukebox box;
    box.form.frame.ZoneScaleX = 1.1;
    box.form.frame.ZoneScaleY = 1.1;
    box.form.theme.ZoneList.X = -16;
    box.form.theme.ZoneList.Y = -16;
    Box16& slot = box.form.slots.ZoneListPisteHilight(1, 1);
    slot.X = 15;
    slot.Y = 15;
    const Box seen = SlotOnScreen(box.form, {1, 1});
    EXPECT_EQ(seen.x, 0);
    EXPECT_EQ(seen.y, 0);
}

} // namespace
