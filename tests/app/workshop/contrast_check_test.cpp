// Tests of the rows in which the contrast of a slot's texts is measured, against the rows that are drawn.
#include "app/workshop/planted_theme.h"
#include "app/workshop/stage.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <utility>

namespace {

constexpr int kTop = 60;
constexpr int kHeight = 160;
constexpr int kMiddle = kTop + kHeight / 2;
// The letters of the test font have 0.58 of its size, those of most fonts 0.7 and more. In this size the
// difference is far more than kTolerance.
constexpr int kPoints = 60;
// Letters are not exactly in the middle of their line.
constexpr int kTolerance = 6;

struct Text {
    const char* name;
    // The colour as the theme has it, and as a pixel.
    const char* colour;
    QRgb pixel;
};
constexpr Text kTitle = {"ZoneListPisteTitreTitre", "0,255,255", qRgb(0, 255, 255)};
constexpr Text kArtist = {"ZoneListPisteTitreInterprete", "255,255,0", qRgb(255, 255, 0)};

// A theme of two slots, with room for a large title of two lines and its artist.
class ContrastCheckTest : public testing::Test {
protected:
    ContrastCheckTest() {
        SetKey("zonelist", "ZoneListNbTracksParColonne", "1");
        for (const Text& text : {kTitle, kArtist}) {
            for (const char* const ending : {"", "Hilight"}) {
                const QByteArray name(text.name);
                SetKey("zonelist", name + "FontSize" + ending, QByteArray::number(kPoints));
                SetKey("zonelist", name + "FontColor" + ending, text.colour);
            }
        }
        for (const char* const mark :
             {"zonelist_nowplaying.png", "zonelist_comingnext.png", "zonelist_video.png"}) {
            theme_.Paint(QString::fromLatin1(mark),
                         [](QPainter& painter) { painter.fillRect(0, 0, 1000, 1000, Qt::transparent); });
        }
        for (const char* const slot : {"zonelistGauche1", "zonelistDroite1"}) {
            SetKey(slot, "ZoneListPisteTitreX", "60");
            SetKey(slot, "ZoneListPisteTitreY", QByteArray::number(kTop));
            SetKey(slot, "ZoneListPisteTitreW", "360");
            SetKey(slot, "ZoneListPisteTitreH", QByteArray::number(kHeight));
        }
    }

    void SetKey(const char* section, const QByteArray& key, const QByteArray& value) {
        theme_.Set(QString::fromLatin1(section), QString::fromLatin1(key), QString::fromLatin1(value));
    }

    // The first and the last row, from the middle of the rectangle, in which the jukebox draws the text of a
    // title of one line and of one of two lines.
    std::pair<int, int> DrawnRows(const Text& text) {
        HomeFolder music;
        music.Write(QStringLiteral("HH - HH.mp3"), "");
        music.Write(QStringLiteral("HI - HHHHHHHH HHHHHHHH.mp3"), "");
        Stage stage(theme_.Path(), music.Path());
        const StagePicture shown = stage.Play({QStringLiteral("slots"), {}, {}}, QSize(640, 360));
        EXPECT_EQ(shown.fault, QString());
        const QImage picture = shown.picture.convertToFormat(QImage::Format_RGB32);
        std::pair rows(picture.height(), -1);
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                if (picture.pixel(x, y) == text.pixel) {
                    rows = {std::min(rows.first, y), y};
                }
            }
        }
        return {rows.first - kMiddle, rows.second - kMiddle};
    }

    // Whether a row of the background in the text's own colour is reported.
    bool ReportsRow(const Text& text, int fromMiddle) {
        PlantedTheme striped(theme_.Path());
        striped.SetIni(theme_.Ini());
        striped.Paint(QStringLiteral("zonelist.png"), [&](QPainter& painter) {
            painter.fillRect(0, kMiddle + fromMiddle, 448, 1, QColor(text.pixel));
        });
        const QString fault =
            QStringLiteral("[zonelist] %1FontColor: the contrast").arg(QLatin1StringView(text.name));
        const std::vector<Finding> found = striped.Check();
        return std::any_of(found.begin(), found.end(),
                           [&](const Finding& finding) { return finding.text.startsWith(fault); });
    }

    void ExpectRowsAreThoseOf(const Text& text) {
        const auto [first, last] = DrawnRows(text);
        ASSERT_LT(first, last);
        EXPECT_TRUE(ReportsRow(text, first + kTolerance)) << first;
        EXPECT_TRUE(ReportsRow(text, last - kTolerance)) << last;
        EXPECT_FALSE(ReportsRow(text, first - kTolerance)) << first;
        EXPECT_FALSE(ReportsRow(text, last + kTolerance)) << last;
    }

    PlantedTheme theme_;
};

} // namespace

TEST_F(ContrastCheckTest, ATitleIsMeasuredWhereItsLettersAre) {
    ExpectRowsAreThoseOf(kTitle);
}

TEST_F(ContrastCheckTest, AnArtistIsMeasuredBelowTheTitle) {
    EXPECT_GT(DrawnRows(kArtist).first, 0);
    ExpectRowsAreThoseOf(kArtist);
}
