// Shortening, placing and writing text, and removing accents.
#include "rendering/text.h"

#include "imaging/picture/surface.h"
#include "support/jukebox.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace {

// In the test font at nine points, every character is six pixels wide and a line is twelve pixels high.
constexpr int kCharacter = 6;
constexpr int kLine = 12;
const QString kFont = QStringLiteral("Vantorix Test");
const QString kLeft = QStringLiteral("left");
const QString kTop = QStringLiteral("top");

class DrawTextTest : public testing::Test {
protected:
    void SetUp() override {
        const QString font = TextOfPath(TESTS_FOLDER "/fonts/vantorix_test.ttf");
        ASSERT_GT(box.platform.fonts.AddFontResource(font), 0);
        Resize(pic, 120, 60);
    }

    void Draw(const QString& text, const Box16& where, const QString& align = kLeft,
              const QString& vAlign = kTop) {
        DrawText(box.form, pic, text, where, style, align, vAlign);
    }
    std::optional<ProgramStop> StopOfDraw(const QString& text, const Box16& where,
                                          const QString& align = kLeft, const QString& vAlign = kTop) {
        return StopOf([&] { Draw(text, where, align, vAlign); });
    }

    // Returns a surface with only this text, at this position.
    QImage Written(const QString& text, int x, int y) const {
        Surface plain;
        Resize(plain, pic.Width(), pic.Height());
        plain.FontName = style.Font;
        plain.FontSize = style.Size;
        plain.ForeColor = qRgb(10, 200, 30);
        TextOutA(plain, x, y, text);
        return plain.picture;
    }
    QImage Empty() const { return Written(QString(), 0, 0); }

    Jukebox box;
    Surface pic;
    TextLook style{kFont, 9, QStringLiteral("10,200,30")};
};

TEST_F(DrawTextTest, TheTestFontHasTheSizesThatTheseTestsCountOn) {
    pic.FontName = kFont;
    pic.FontSize = 9;
    EXPECT_EQ(TextWidth(pic, QStringLiteral("ABC")), 3 * kCharacter);
    EXPECT_EQ(TextWidth(pic, QStringLiteral("...")), 3 * kCharacter);
    EXPECT_EQ(TextHeight(pic, QStringLiteral("ABC")), kLine);
    EXPECT_NE(Written(QStringLiteral("A"), 3, 4), Empty());
    EXPECT_NE(Written(QStringLiteral("A"), 3, 4), Written(QStringLiteral("A"), 4, 4));
}

// --- Shortening ----------------------------------------------------------------------------------

TEST_F(DrawTextTest, ATextExactlyAsWideAsItsBoxStays) {
    Draw(QStringLiteral("ABCDEFGHIJ"), {2, 3, 10 * kCharacter, kLine});
    EXPECT_EQ(pic.picture, Written(QStringLiteral("ABCDEFGHIJ"), 2, 3));
}

TEST_F(DrawTextTest, OnePixelTooWideLosesCharactersUntilTheDotsFit) {
    Draw(QStringLiteral("ABCDEFGHIJ"), {2, 3, 10 * kCharacter - 1, kLine});
    EXPECT_EQ(pic.picture, Written(QStringLiteral("ABCDEF..."), 2, 3));
}

TEST_F(DrawTextTest, AShortenedTextThatFillsItsBoxExactlyIsCutNoFurther) {
    Draw(QStringLiteral("ABCDEFGHIJK"), {2, 3, 10 * kCharacter, kLine});
    EXPECT_EQ(pic.picture, Written(QStringLiteral("ABCDEFG..."), 2, 3));
}

TEST_F(DrawTextTest, ABoxForThreeDotsHoldsThreeDots) {
    Draw(QStringLiteral("ABCD"), {2, 3, 3 * kCharacter, kLine});
    EXPECT_EQ(pic.picture, Written(QStringLiteral("..."), 2, 3));
}

TEST_F(DrawTextTest, NoRoomForThreeDotsEndsTheProgram) {
    const auto stop = StopOfDraw(QStringLiteral("ABCD"), {2, 3, 3 * kCharacter - 1, kLine});
    ASSERT_TRUE(stop);
    EXPECT_EQ(stop->error.number, 5);
    EXPECT_EQ(stop->routine, QStringLiteral("DrawText"));
    EXPECT_EQ(pic.picture, Empty());
}

TEST_F(DrawTextTest, AShortTextNeedsNoRoomForDots) {
    Draw(QStringLiteral("AB"), {2, 3, 2 * kCharacter, kLine});
    EXPECT_EQ(pic.picture, Written(QStringLiteral("AB"), 2, 3));
}

TEST_F(DrawTextTest, ATextWithoutCharactersFitsABoxWithoutWidth) {
    Draw(QString(), {2, 3, 0, kLine});
    EXPECT_EQ(pic.picture, Empty());
    EXPECT_EQ(box.Log().constLast(),
              QStringLiteral(" : DrawText (,2,3,0,12,Vantorix Test,9,10,200,30,left,top)"));
}

TEST_F(DrawTextTest, ABoxOfNegativeWidthEndsTheProgramEvenWithoutText) {
    const auto stop = StopOfDraw(QString(), {2, 3, -1, kLine});
    ASSERT_TRUE(stop);
    EXPECT_EQ(stop->error.number, 5);
}

TEST_F(DrawTextTest, TheHeightTakesNoPartInShortening) {
    Draw(QStringLiteral("ABC"), {2, 20, 3 * kCharacter, 1}, kLeft, QStringLiteral("center"));
    EXPECT_EQ(pic.picture, Written(QStringLiteral("ABC"), 2, 14)); // 20 + (0.5 - 6), half to even
}

// The reference for every shortened text: removes one character at a time.
QString ShortenedOneByOne(const Surface& surface, const QString& text, int width) {
    if (TextWidth(surface, text) <= width) {
        return text;
    }
    for (qsizetype length = text.size() - 1; length >= 0; --length) {
        const bool inPair = length > 0 && text[length - 1].isHighSurrogate() && text[length].isLowSurrogate();
        const QString shorter = text.left(length) + QStringLiteral("...");
        if (!inPair && TextWidth(surface, shorter) <= width) {
            return shorter;
        }
    }
    return QStringLiteral("error 5");
}

QString ShortenedOrError(const Surface& surface, const QString& text, int width) {
    try {
        return ShortenedText(surface, text, width);
    } catch (const RunTimeError& error) {
        return QStringLiteral("error %1").arg(error.number);
    }
}

struct CharacterRange {
    char32_t first;
    char32_t last;
};

// Random texts of one kind: characters from these ranges, each range equally likely.
struct Script {
    const char* name;
    std::vector<CharacterRange> ranges;
};

QString RandomText(std::mt19937& random, const Script& script, int length) {
    const auto below = [&](std::size_t count) { return random() % count; };
    QString text;
    char32_t character = U' ';
    for (int i = 0; i < length; ++i) {
        // Characters are often repeated, which gives runs of marks and of zero-width characters.
        if (i == 0 || below(3) != 0) {
            const CharacterRange& range = script.ranges[below(script.ranges.size())];
            character = range.first + static_cast<char32_t>(below(range.last - range.first + 1));
        }
        text += character < 0x10000 ? QString(QChar(static_cast<char16_t>(character)))
                                    : QString::fromUcs4(&character, 1);
    }
    return text;
}

class ShortenedScripts : public DrawTextTest, public testing::WithParamInterface<Script> {
protected:
    // Returns in how many of 60 boxes the shortened text differs from the reference.
    int Differences(const QString& font, int longest) {
        std::mt19937 random(1);
        int differences = 0;
        for (int i = 0; i < 60; ++i) {
            pic.FontName = font;
            pic.FontSize = static_cast<int>(6 + random() % 40);
            const QString text =
                RandomText(random, GetParam(), static_cast<int>(random() % static_cast<unsigned>(longest)));
            const auto room = static_cast<int>(random() % 400);
            const QString expected = ShortenedOneByOne(pic, text, room);
            differences += ShortenedOrError(pic, text, room) == expected ? 0 : 1;
        }
        return differences;
    }
};

TEST_P(ShortenedScripts, LoseTheirCharactersOneByOne) {
    EXPECT_EQ(Differences(QStringLiteral("DejaVu Sans"), 60), 0);
    EXPECT_EQ(Differences(QStringLiteral("DejaVu Sans"), 250), 0);
    EXPECT_EQ(Differences(kFont, 60), 0);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Scripts, ShortenedScripts, testing::Values(
    Script{"Latin",      {{'A', 'Z'}, {'a', 'z'}, {' ', '/'}, {0xC0, 0xFF}}},
    Script{"ligatures",  {{'f', 'f'}, {'i', 'i'}, {'l', 'l'}, {'A', 'A'}, {'V', 'V'}, {'.', '.'}}},
    Script{"marks",      {{'a', 'z'}, {0x300, 0x36F}}},
    Script{"Greek",      {{0x391, 0x3C9}, {0x410, 0x44F}, {' ', ' '}}},
    Script{"Arabic",     {{0x621, 0x64A}, {0x621, 0x64A}, {' ', ' '}}},
    Script{"vowels",     {{0x621, 0x64A}, {0x64B, 0x655}, {0xFDF0, 0xFDFD}, {' ', ' '}}},
    Script{"Hebrew",     {{0x5D0, 0x5EA}, {0x5B0, 0x5BD}, {'(', ')'}, {' ', ' '}}},
    Script{"Devanagari", {{0x905, 0x939}, {0x93A, 0x94F}, {0x94D, 0x94D}, {' ', ' '}}},
    Script{"Thai",       {{0xE01, 0xE3A}, {0xE40, 0xE4E}}},
    Script{"Han",        {{0x4E00, 0x9FFF}, {0x3040, 0x30FF}, {0xAC00, 0xD7A3}}},
    Script{"emoji",      {{0x1F300, 0x1F6FF}, {0x200D, 0x200D}, {0xFE0F, 0xFE0F}, {0x1F3FB, 0x1F3FF}}},
    Script{"directions", {{0x200B, 0x200F}, {0x202A, 0x202E}, {0x2066, 0x2069}, {'a', 'c'}, {0x627, 0x62A}}},
    Script{"controls",   {{0x09, 0x0D}, {0x9C, 0x9C}, {0xD800, 0xDFFF}, {'a', 'f'}}},
    Script{"everything", {{0x01, 0xFFFF}, {0x10000, 0x10FFFF}}}),
    [](const auto& script) { return std::string(script.param.name); });
// clang-format on

// A joined letter can be narrower than the same letter at the end of a text, so a longer text can fit where a
// shorter one does not.
TEST_F(DrawTextTest, ALongerTextCanBeTheNarrowerOne) {
    std::mt19937 random(7);
    const Script arabic{"Arabic", {{0x621, 0x64A}}};
    const QString dots = QStringLiteral("...");
    int narrower = 0;
    pic.FontName = QStringLiteral("DejaVu Sans");
    for (int i = 0; i < 20; ++i) {
        const QString text = RandomText(random, arabic, 40);
        for (int length = 1; length < 36; ++length) {
            const int width = TextWidth(pic, text.left(length) + dots);
            if (width > TextWidth(pic, text.left(length + 1) + dots)) {
                narrower += 1;
                EXPECT_GT(ShortenedText(pic, text, width - 1).size(), length + dots.size());
            }
        }
    }
    EXPECT_GT(narrower, 0);
}

// Zero-width characters and marks make a text no wider, but they still have to be measured.
TEST_F(DrawTextTest, ManyCharactersWithoutAWidthAreShortenedInTime) {
    pic.FontName = QStringLiteral("DejaVu Sans");
    const QString word = QStringLiteral("Title");
    const int room = TextWidth(pic, word + QStringLiteral(".."));
    for (const char16_t without : {u'\u200B', u'\u0301'}) {
        const QString text = word + QString(5'000, QChar(without)) + word + word;
        const QString shortened = ShortenedText(pic, text, room);
        EXPECT_EQ(shortened, QStringLiteral("Titl..."));
    }
}

// --- Placing -------------------------------------------------------------------------------------

struct PlaceRow {
    const char* align;
    const char* vAlign;
    int x;
    int y;
};

class DrawTextPlaces : public DrawTextTest, public testing::WithParamInterface<PlaceRow> {};

// A text of 18 x 12 pixels in a box of 40 x 30 pixels at (7, 5).
TEST_P(DrawTextPlaces, TheWordsPlaceTheText) {
    const PlaceRow& row = GetParam();
    Draw(QStringLiteral("ABC"), {7, 5, 40, 30}, QString::fromLatin1(row.align),
         QString::fromLatin1(row.vAlign));
    EXPECT_EQ(pic.picture, Written(QStringLiteral("ABC"), row.x, row.y)) << row.align << ' ' << row.vAlign;
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Words, DrawTextPlaces, testing::Values(
    PlaceRow{"left",   "top",     7,  5},
    PlaceRow{"LEFT",   "Top",     7,  5},
    PlaceRow{"Right",  "bottom", 29, 23},
    PlaceRow{"right",  "BOTTOM", 29, 23},
    PlaceRow{"center", "center", 18, 14},
    PlaceRow{"Center", "CENTER", 18, 14},
    PlaceRow{"",       "",       18, 14},
    PlaceRow{"middle", "middle", 18, 14},
    PlaceRow{"left ",  " top",   18, 14},
    PlaceRow{"top",    "left",   18, 14}));
// clang-format on

TEST_F(DrawTextTest, AMiddleBetweenTwoPixelsIsTheEvenOne) {
    Draw(QStringLiteral("A"), {0, 0, 9, 13}, QString(), QString()); // 1.5 and 0.5
    EXPECT_EQ(pic.picture, Written(QStringLiteral("A"), 2, 0));
    Cls(pic);
    Draw(QStringLiteral("A"), {1, 1, 9, 13}, QString(), QString()); // 2.5 and 1.5
    EXPECT_EQ(pic.picture, Written(QStringLiteral("A"), 2, 2));
}

TEST_F(DrawTextTest, ATextTallerThanItsBoxIsDrawnWhole) {
    Draw(QStringLiteral("ABC"), {7, 20, 40, 2}, kLeft, QStringLiteral("bottom"));
    EXPECT_EQ(pic.picture, Written(QStringLiteral("ABC"), 7, 10));
}

TEST_F(DrawTextTest, TheGroundShowsBetweenTheLetters) {
    pic.picture.fill(qRgb(1, 2, 3));
    Draw(QStringLiteral("A"), {0, 0, 20, 20});
    int ground = 0;
    int ink = 0;
    for (int y = 0; y < kLine; ++y) {
        for (int x = 0; x < kCharacter; ++x) {
            ground += pic.picture.pixel(x, y) == qRgb(1, 2, 3) ? 1 : 0;
            ink += pic.picture.pixel(x, y) == qRgb(10, 200, 30) ? 1 : 0;
        }
    }
    EXPECT_EQ(ink, 18); // the inked pixels of "A"
    EXPECT_EQ(ground, kLine * kCharacter - 18);
}

TEST_F(DrawTextTest, TheRightAndTheBottomEdgeStayWithin16Bits) {
    const auto right = StopOfDraw(QStringLiteral("A"), {32767, 0, 6, 12}, QStringLiteral("right"));
    ASSERT_TRUE(right);
    EXPECT_EQ(right->error.number, 6);
    const auto bottom = StopOfDraw(QStringLiteral("A"), {0, 32767, 6, 12}, kLeft, QStringLiteral("bottom"));
    ASSERT_TRUE(bottom);
    EXPECT_EQ(bottom->error.number, 6);
    EXPECT_FALSE(StopOfDraw(QStringLiteral("A"), {32761, 32755, 6, 12}, QStringLiteral("right"),
                            QStringLiteral("bottom")));
}

TEST_F(DrawTextTest, AMiddleOrAnUpperCornerMayLieAnywhere) {
    EXPECT_FALSE(StopOfDraw(QStringLiteral("A"), {32767, 32767, 32767, 32767}));
    EXPECT_FALSE(StopOfDraw(QStringLiteral("A"), {32767, 32767, 32767, 32767}, QString(), QString()));
    EXPECT_FALSE(StopOfDraw(QStringLiteral("A"), {-32768, -32768, 32767, -32768}, QString(), QString()));
    EXPECT_EQ(pic.picture, Empty());
}

// --- Colour --------------------------------------------------------------------------------------

TEST_F(DrawTextTest, BlanksAndFurtherElementsOfAColourDoNoHarm) {
    style.Color = QStringLiteral(" 10 , 200,30,40");
    Draw(QStringLiteral("A"), {2, 3, 20, kLine});
    EXPECT_EQ(pic.picture, Written(QStringLiteral("A"), 2, 3));
}

TEST_F(DrawTextTest, AWrongColourNamesTheKeysThatHaveItBesideTheSameFont) {
    box.form.theme.BlockMainRemainFont.Font = kFont;
    box.form.theme.BlockMainRemainFont.Color = QStringLiteral("1,2");
    box.form.theme.BlockMainInsertCoinFont.Font = QStringLiteral("Other");
    box.form.theme.BlockMainInsertCoinFont.Color = QStringLiteral("1,2");
    box.form.theme.ZoneListPisteTitreTitreFontHilight.Font = kFont;
    box.form.theme.ZoneListPisteTitreTitreFontHilight.Color = QStringLiteral("1,2");
    style.Color = QStringLiteral("1,2");
    const auto stop = StopOfDraw(QStringLiteral("A"), {0, 0, 60, 20});
    ASSERT_TRUE(stop);
    const QString keys = QStringLiteral("theme.ini, [BlockMain] BlockMainRemainFontColor or [zonelist] "
                                        "ZoneListPisteTitreTitreFontColorHilight (expected red,green,blue): "
                                        "\"1,2\" has 2 of 3 numbers");
    EXPECT_TRUE(stop->error.detail.endsWith(keys)) << stop->error.detail.toStdString();
}

TEST_F(DrawTextTest, ABoxWithoutRoomNamesTheTextTheBoxAndTheStyle) {
    box.form.theme.ZoneListPisteNumSaisieFont.Font = kFont;
    box.form.theme.ZoneListPisteNumSaisieFont.Color = style.Color;
    const auto stop = StopOfDraw(QStringLiteral("ABCDE"), {1, 2, 10, 20});
    ASSERT_TRUE(stop);
    for (const char* words : {"\"ABCDE\"", "10x20 at 1,2", "\"Vantorix Test\" of 9 points",
                              "[zonelist] ZoneListPisteNumSaisieFontColor"}) {
        EXPECT_TRUE(stop->error.detail.contains(QLatin1StringView(words)))
            << stop->error.detail.toStdString();
    }
}

struct ColourRow {
    const char* colour;
    int error;
};

class DrawTextColours : public DrawTextTest, public testing::WithParamInterface<ColourRow> {};

TEST_P(DrawTextColours, AColourOfOtherThanThreeNumbersEndsTheProgram) {
    style.Color = QString::fromLatin1(GetParam().colour);
    const auto stop = StopOfDraw(QStringLiteral("A"), {2, 3, 20, kLine});
    ASSERT_TRUE(stop) << GetParam().colour;
    EXPECT_EQ(stop->error.number, GetParam().error) << GetParam().colour;
    EXPECT_EQ(pic.picture, Empty());
}

// An empty text split at commas has no elements.
// clang-format off
INSTANTIATE_TEST_SUITE_P(Colours, DrawTextColours, testing::Values(
    ColourRow{"",             9},
    ColourRow{"1",            9},
    ColourRow{"1,2",          9},
    ColourRow{"red,1,2",     13},
    ColourRow{"1,2,",        13},
    ColourRow{"1;2;3",       13},
    ColourRow{"red,-1,40000", 13},
    ColourRow{"1,40000,3",    6},
    ColourRow{"1,2,-1",       5}));
// clang-format on

TEST_F(DrawTextTest, AFaultyColourIsFoundAfterAFaultyBox) {
    style.Color = QStringLiteral("red");
    EXPECT_EQ(StopOfDraw(QStringLiteral("ABCD"), {2, 3, 1, kLine})->error.number, 5);
    EXPECT_EQ(StopOfDraw(QStringLiteral("A"), {32767, 0, 6, 12}, QStringLiteral("right"))->error.number, 6);
}

// --- Log and state -------------------------------------------------------------------------------

TEST_F(DrawTextTest, TheLogNamesAllArguments) {
    Draw(QStringLiteral("One, two"), {-2, 3, 90, 40}, QStringLiteral("Left"), QStringLiteral("CENTER"));
    EXPECT_EQ(box.Log(), QStringList{QStringLiteral(
                             " : DrawText (One, two,-2,3,90,40,Vantorix Test,9,10,200,30,Left,CENTER)")});
}

TEST_F(DrawTextTest, TheLogHasTheTextBeforeItIsShortened) {
    Draw(QStringLiteral("ABCDEFGHIJ"), {2, 3, 59, kLine});
    EXPECT_TRUE(box.Log().constLast().startsWith(QStringLiteral(" : DrawText (ABCDEFGHIJ,")));
}

TEST_F(DrawTextTest, TheLogLineComesBeforeAnyFault) {
    EXPECT_TRUE(StopOfDraw(QStringLiteral("ABCD"), {2, 3, 1, kLine}));
    style.Color = QStringLiteral("red");
    EXPECT_TRUE(StopOfDraw(QStringLiteral("A"), {2, 3, 20, kLine}));
    EXPECT_EQ(box.DrawnTexts().size(), 2);
}

TEST_F(DrawTextTest, ALogThatCannotBeWrittenEndsTheProgramBeforeAnythingIsDrawn) {
    box.platform.failures.Add(QStringLiteral("Append"));
    const auto stop = StopOfDraw(QStringLiteral("A"), {2, 3, 20, kLine});
    ASSERT_TRUE(stop);
    EXPECT_EQ(stop->error.number, 75);
    EXPECT_EQ(pic.FontName, QString());
    EXPECT_EQ(pic.picture, Empty());
}

TEST_F(DrawTextTest, TheFontStaysOnTheSurface) {
    style.Size = 18;
    Draw(QStringLiteral("A"), {2, 3, 100, 50});
    EXPECT_EQ(pic.FontName, kFont);
    EXPECT_EQ(TextWidth(pic, QStringLiteral("ABC")), 2 * 3 * kCharacter);
    EXPECT_EQ(TextHeight(pic, QString()), 2 * kLine);
    EXPECT_EQ(pic.ForeColor, qRgb(10, 200, 30));
}

TEST_F(DrawTextTest, AFaultLeavesTheFontButNotTheColour) {
    style.Size = 18;
    EXPECT_TRUE(StopOfDraw(QStringLiteral("ABCD"), {2, 3, 1, kLine}));
    EXPECT_EQ(TextWidth(pic, QStringLiteral("A")), 2 * kCharacter);
    EXPECT_EQ(pic.ForeColor, qRgb(0, 0, 0));
}

TEST_F(DrawTextTest, TheCentredRoutineCentresBothWays) {
    DrawCentred(box.form, pic, QStringLiteral("ABC"), {7, 5, 40, 30}, style);
    EXPECT_EQ(pic.picture, Written(QStringLiteral("ABC"), 18, 14));
    EXPECT_TRUE(box.Log().constLast().endsWith(QStringLiteral(",center,center)")));
}

TEST_F(DrawTextTest, ASurfaceWithoutPixelsTakesText) {
    Surface none;
    DrawText(box.form, none, QStringLiteral("A"), {0, 0, 20, 20}, style, kLeft, kTop);
    EXPECT_EQ(none.Width(), 0);
}

// A playlist file can contain a title of any length, and this routine draws it.
TEST_F(DrawTextTest, AVeryLongTextIsShortenedInTime) {
    Draw(QString(100'000, u'A'), {2, 3, 59, kLine});
    EXPECT_EQ(pic.picture, Written(QStringLiteral("AAAAAA..."), 2, 3));
}

// --- Accents -------------------------------------------------------------------------------------

TEST(StripAccents, FiftyThreeLettersLoseTheirAccents) {
    EXPECT_EQ(StripAccents(QStringLiteral("ÀÁÂÃÄÅàáâãäåÒÓÔÕÖØòóôõöøÈÉÊËèéêëÌÍÎÏìíîïÙÚÛÜùúûüÿÑñÇç")),
              QStringLiteral("AAAAAAaaaaaaOOOOOOooooooEEEEeeeeIIIIiiiiUUUUuuuuyNnCc"));
}

TEST(StripAccents, EveryOccurrenceIsReplacedAndTheRestStays) {
    EXPECT_EQ(StripAccents(QStringLiteral("Été à l'été - Œuvre 5 Ýž")),
              QStringLiteral("Ete a l'ete - Œuvre 5 Ýž"));
    EXPECT_EQ(StripAccents(QString()), QString());
}

} // namespace
