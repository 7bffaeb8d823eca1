// Tests that titles are recognised that stop the program.
#include "rendering/slot_title.h"
#include "rendering/track_slot.h"
#include "support/jukebox.h"

#include <gtest/gtest.h>

#include <array>

// For each title, what StopsAtTitle says is what happens when the jukebox shows it.
TEST(SlotTitleTest, StopsAtTitleSaysWhatHappens) {
    const QString wide(60, u'W');
    int stops = 0;
    for (const QString& name :
         {QStringLiteral("Band - Song.mp3"), QStringLiteral("Band - %1.mp3").arg(wide),
          wide + QStringLiteral(".mp3"), QStringLiteral("07 - %1.mp3").arg(wide),
          QStringLiteral("Band - A %1.mp3").arg(wide), QStringLiteral("Band - %1 A.mp3").arg(wide),
          QStringLiteral("Band - A_%1 B C D E F G.mp3").arg(wide)}) {
        Jukebox jukebox;
        jukebox.Start();
        const SlotWords words = WordsOfSlot(QStringLiteral("file"), name);
        const bool expected =
            StopsAtTitle(jukebox.form, words.parts, jukebox.form.slots.ZoneListPisteTitre(1, 1).W);
        jukebox.Track(name);
        const auto stop = StopOf([&] { jukebox.form.roof.LoadTheme(jukebox.form); });
        EXPECT_EQ(stop.has_value(), expected) << name.toStdString();
        stops += expected ? 1 : 0;
    }
    EXPECT_EQ(stops, 2);
}
