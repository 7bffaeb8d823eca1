// The order of names and of lines.
#include "library/list_order.h"

#include "library/collation.h"
#include "state/library_state.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <random>

namespace {

// Sets the collation's locale for one test.
class Locale {
public:
    explicit Locale(const char* name) { ::setenv("LC_ALL", name, 1); }
    ~Locale() { ::unsetenv("LC_ALL"); }
    Locale(const Locale&) = delete;
    Locale& operator=(const Locale&) = delete;
};

std::string SortedNames(const char* names) {
    QStringList list = QString::fromUtf8(names).split(u' ');
    SortNames(list);
    return list.join(u' ').toStdString();
}

ListLine Line(const QString& key, const QString& type, const QString& name) {
    return {key, type, QStringLiteral("/music/") + name, name};
}

std::string SortedTitles(std::vector<ListLine> lines) {
    SortLines(lines);
    QStringList titles;
    for (const ListLine& line : lines) {
        titles += line.title;
    }
    return titles.join(u' ').toStdString();
}

TEST(ListOrder, CaseCountsForNothingAndAccentsForLittle) {
    EXPECT_EQ(SortedNames("b A c B2 a1"), "A a1 b B2 c");
    EXPECT_EQ(SortedNames("zoo Éa ea eb été etf"), "ea Éa eb été etf zoo");
    EXPECT_EQ(SortedNames("10 9 1 a _a -a (a"), "_a -a (a 1 10 9 a")
        << "digits sort as text, signs before digits";
}

TEST(ListOrder, NamesEqualButForCaseHaveAnOrderOfTheirOwn) {
    EXPECT_EQ(SortedNames("a A b"), "A a b");
    EXPECT_EQ(SortedNames("A a b"), "A a b");
    EXPECT_EQ(SortedNames("été Été ÉTÉ"), "ÉTÉ Été été");
}

TEST(ListOrder, TheLocaleOfTheEnvironmentDecides) {
    EXPECT_EQ(SortedNames("z ä a ch c d"), "a ä c ch d z");
    {
        const Locale swedish("sv_SE.UTF-8");
        EXPECT_EQ(SortedNames("z ä a ch c d"), "a c ch d z ä");
    }
    {
        const Locale czech("cs_CZ.UTF-8");
        EXPECT_EQ(SortedNames("z ä a ch c d h i"), "a ä c d h ch i z");
    }
    {
        const Locale plain("C");
        EXPECT_EQ(SortedNames("b A c"), "A b c") << "the C locale has the root's order";
    }
    const Locale nonsense("xx_YY");
    EXPECT_EQ(SortedNames("b A c"), "A b c");
}

TEST(ListOrder, TheWholeLineDecidesKeyFirst) {
    const std::vector<ListLine> lines = {
        Line(QStringLiteral("1000000"), QStringLiteral("playlist"), QStringLiteral("a.vtxpl")),
        Line(QStringLiteral("1000000"), QStringLiteral("file"), QStringLiteral("B.mp3")),
        Line(QStringLiteral("0999999"), QStringLiteral("file"), QStringLiteral("z.mp3")),
        Line(QStringLiteral("1000000"), QStringLiteral("dir"), QStringLiteral("z")),
        Line(QStringLiteral("1000000"), QStringLiteral("file"), QStringLiteral("a.mp3")),
    };
    EXPECT_EQ(SortedTitles(lines), "z.mp3 z a.mp3 B.mp3 a.vtxpl");
}

TEST(ListOrder, EqualLinesStayAsFound) {
    std::vector<ListLine> lines;
    for (const char* const title : {"b", "A", "a", "B", "A"}) {
        lines.push_back(
            {QStringLiteral("k"), QStringLiteral("file"), QStringLiteral("/p"), QString::fromUtf8(title)});
    }
    EXPECT_EQ(SortedTitles(lines), "A a A b B");
}

TEST(ListOrder, EmptyAndSingleListsAreLeftAlone) {
    EXPECT_EQ(SortedNames("one"), "one");
    QStringList none;
    SortNames(none);
    EXPECT_TRUE(none.isEmpty());
    EXPECT_EQ(SortedTitles({}), "");
}

// The shortcut for ASCII and the collation itself must give the same order for any mixture of names.
TEST(ListOrder, IsThatOfTheCollationForAnyNames) {
    const Collation collation;
    const QString letters = QString::fromUtf8("aAbBzZ019 ._-'(&|#éÉèñÑœß日本ÅК\u0301\u00AD\u0001~");
    std::mt19937 random(3);
    for (int round = 0; round < 200; ++round) {
        QStringList names;
        for (int i = 0; i < 60; ++i) {
            QString name;
            for (auto length = random() % 6; length > 0; --length) {
                name += letters[static_cast<qsizetype>(
                    random() % (round % 2 == 0 ? 20U : static_cast<unsigned>(letters.size())))];
            }
            names += name;
        }
        QStringList expected = names;
        std::sort(expected.begin(), expected.end(), [&](const QString& a, const QString& b) {
            const int order = collation.Compare(a, b);
            return order != 0 ? order < 0 : a < b;
        });
        SortNames(names);
        ASSERT_EQ(names, expected) << round;
    }
}

TEST(Collation, EveryPairOfAsciiCharactersHasTheOrderOfTheWeights) {
    const Collation collation;
    for (char16_t a = 0; a < 128; ++a) {
        for (char16_t b = 0; b < 128; ++b) {
            const char16_t left[] = {u'x', a, b};
            const char16_t right[] = {u'x', b, a};
            std::uint8_t leftWeights[3] = {};
            std::uint8_t rightWeights[3] = {};
            std::uint8_t* leftEnd = leftWeights;
            std::uint8_t* rightEnd = rightWeights;
            ASSERT_TRUE(collation.AppendWeights(QStringView(left, 3), leftEnd));
            ASSERT_TRUE(collation.AppendWeights(QStringView(right, 3), rightEnd));
            const int byWeights = std::lexicographical_compare(leftWeights, leftEnd, rightWeights, rightEnd)
                                      ? -1
                                  : std::equal(leftWeights, leftEnd, rightWeights, rightEnd) ? 0
                                                                                             : 1;
            const int byCollation = collation.Compare(QStringView(left, 3), QStringView(right, 3));
            ASSERT_EQ(byWeights < 0, byCollation < 0) << int{a} << " " << int{b};
            ASSERT_EQ(byWeights == 0, byCollation == 0) << int{a} << " " << int{b};
        }
    }
}

TEST(Collation, OnlyAsciiHasWeights) {
    const Collation collation;
    std::uint8_t weights[8] = {};
    std::uint8_t* end = weights;
    EXPECT_TRUE(collation.AppendWeights(u"abc", end));
    EXPECT_FALSE(collation.AppendWeights(u"\u00E9", end));
    EXPECT_FALSE(collation.AppendWeights(u"\u0161", end));
}

} // namespace
