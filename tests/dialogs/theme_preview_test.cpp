// The preview of a theme: its pictures, the places of its fields, damaged themes.
#include "dialogs/theme_preview.h"

#include "support/dialog_box.h"

#include <QImage>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

class ThemePreviewTest : public DialogBox {
protected:
    void RemoveFromTheme(const QString& name) { QFile::remove(box.Home(u"themes/default/"_s + name)); }
    QSize SizeOf(const QString& picture) { return Look(picture).picture->size(); }
};

TEST_F(ThemePreviewTest, TheTrackZoneIsShownAtAQuarterOfItsSize) {
    Open();
    EXPECT_EQ(SizeOf(u"Picture_ZoneList"_s), QSize(112, 90));
    EXPECT_EQ(SizeOf(u"Image_Theme"_s), QSize(160, 90));
}

TEST_F(ThemePreviewTest, TheFieldsAreAtAQuarterOfTheirLabelsPlace) {
    box.SetTheme(u"zonelistGauche2"_s, u"ZoneListPisteNumSaisieX"_s, u"100"_s);
    box.SetTheme(u"zonelistGauche2"_s, u"ZoneListPisteNumSaisieY"_s, u"-8"_s);
    box.SetTheme(u"zonelistGauche2"_s, u"ZoneListPisteNumSaisieW"_s, u"42"_s);
    box.SetTheme(u"zonelistGauche2"_s, u"ZoneListPisteNumSaisieH"_s, u"30"_s);
    Open();
    // Halves are rounded to even.
    EXPECT_EQ(Look(u"Text_ZoneListGauche"_s, 1).place, QRect(25, -2, 10, 8));
    EXPECT_EQ(Look(u"Text_ZoneListDroite"_s, 0).place, QRect(58, 1, 6, 4));
}

TEST_F(ThemePreviewTest, APictureThatIsMissingOrDamagedIsNotShown) {
    RemoveFromTheme(u"preview.jpg"_s);
    RemoveFromTheme(u"zonelist.png"_s);
    files.Write(box.Home(u"themes/default/zonelist.png"_s), "\x89PNG broken", false);
    Open();
    EXPECT_EQ(Look(u"Image_Theme"_s).picture, nullptr);
    EXPECT_EQ(Look(u"Picture_ZoneList"_s).picture, nullptr);
}

TEST_F(ThemePreviewTest, ALargePreviewIsScaledDown) {
    RemoveFromTheme(u"preview.jpg"_s);
    QImage large(4096, 256, QImage::Format_RGB32);
    large.fill(Qt::red);
    ASSERT_TRUE(large.save(box.Home(u"themes/default/Preview.JPG"_s), "JPG"));
    Open();
    EXPECT_EQ(SizeOf(u"Image_Theme"_s), QSize(1024, 64));
}

TEST_F(ThemePreviewTest, AThemeThatVanishedAfterItWasListedStopsTheProgram) {
    QDir().mkpath(box.Home(u"themes/gone"_s));
    Open();
    QDir(box.Home(u"themes/gone"_s)).removeRecursively();
    const auto stop = StopOf([&] { Set(u"Combo_Theme"_s, u"gone"_s); });
    ASSERT_TRUE(stop);
    EXPECT_EQ(stop->error.number, kTypeMismatch);
}

TEST_F(ThemePreviewTest, EveryNumberOfASlotIsRead) {
    for (const QString& name : {u"NumSaisie"_s, u"Cover"_s, u"Titre"_s}) {
        for (const QString& part : {u"X"_s, u"Y"_s, u"W"_s, u"H"_s}) {
            Jukebox other;
            other.RemoveTheme(u"zonelistGauche4"_s, u"ZoneListPiste"_s + name + part);
            other.form.settings.Theme = u"default"_s;
            other.form.config.Combo_Theme = u"default"_s;
            const auto stop = StopOf([&] { Combo_Theme_Change(other.form); });
            ASSERT_TRUE(stop) << name.toStdString() << part.toStdString();
            EXPECT_TRUE(stop->error.detail.contains(u"[zonelistGauche4] ZoneListPiste"_s + name + part));
        }
    }
}

} // namespace
