// Coins at the end of the counter's range, and the blinking of the counter.
#include "interaction/credits.h"

#include "interaction/keys.h"
#include "support/error_of.h"
#include "support/jukebox.h"

#include <gtest/gtest.h>

#include <QImage>

#include <vector>

using namespace Qt::Literals::StringLiterals;

namespace {

// Deliberate D-140: the counter has 16 bits.
TEST(InsertCoin, The32768thCoinIsError6) {
    Jukebox box;
    box.Start();
    box.form.settings.ManageCoin = u"true"_s;
    box.form.coins.Credits = 32766;
    InsertCoin(box.form);
    EXPECT_EQ(box.form.coins.Credits, 32767);
    box.form.cursor.TrackNumberInput = u"65"_s;
    box.form.frame.BlockMainInfos = u"charging"_s;
    EXPECT_EQ(ErrorOf([&] { InsertCoin(box.form); }), kOverflow);
    EXPECT_EQ(box.form.coins.Credits, 32767);
    EXPECT_EQ(box.form.cursor.TrackNumberInput, QString());
    EXPECT_EQ(box.form.frame.BlockMainInfos, u"charging"_s);
}

TEST(InsertCoin, AfterThe32768thCoinNoKeyIsTaken) {
    Jukebox box;
    box.SetKey(u"config.ini"_s, u"Main"_s, u"ManageCoin"_s, u"true"_s);
    box.Start();
    box.form.coins.Credits = 32767;
    constexpr int kCoinKey = 45;
    EXPECT_EQ(ErrorOf([&] { Form_KeyDown(box.form, kCoinKey, 0); }), kOverflow);
    EXPECT_EQ(box.form.shell.InputBusy, 1);
    box.form.coins.Credits = 5;
    Form_KeyDown(box.form, kCoinKey, 0);
    EXPECT_EQ(box.form.coins.Credits, 5);
}

struct CreditRow {
    const char* manageCoin;
    int credits;
    bool out;
};

class OutOfCreditTest : public testing::TestWithParam<CreditRow> {};

TEST_P(OutOfCreditTest, OnlyTheWordTrueCountsCredits) {
    Jukebox box;
    box.form.settings.ManageCoin = QString::fromLatin1(GetParam().manageCoin);
    box.form.coins.Credits = GetParam().credits;
    EXPECT_EQ(OutOfCredit(box.form), GetParam().out);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Words, OutOfCreditTest, testing::Values(
    CreditRow{"true",   0, true},
    CreditRow{"true",  -1, true},
    CreditRow{"true",   1, false},
    CreditRow{"True",   0, false},
    CreditRow{"false",  0, false},
    CreditRow{"",      -5, false}));
// clang-format on

// At the pauses of the refusal the counter's box shows the background and the number in turn, three times.
TEST(RefuseForCredit, TheCounterGoesAndComesThreeTimes) {
    Jukebox box;
    box.Start();
    Form_Main& form = box.form;
    const QRect counter(form.theme.BlockMain.X.value() + form.theme.BlockMainInsertCoin.X.value(),
                        form.theme.BlockMain.Y.value() + form.theme.BlockMainInsertCoin.Y.value(),
                        form.theme.BlockMainInsertCoin.W.value(), form.theme.BlockMainInsertCoin.H.value());
    std::vector<QImage> seen;
    box.platform.pump.runPending = [&] {
        seen.push_back(form.frame.Picture_Main.picture.copy(counter));
        return false;
    };
    const std::int64_t start = box.platform.clock.timeGetTime();
    RefuseForCredit(form);
    ASSERT_EQ(seen.size(), 6U);
    EXPECT_EQ(box.platform.clock.timeGetTime() - start, 720);
    EXPECT_NE(seen[0], seen[1]);
    for (std::size_t i = 2; i < seen.size(); ++i) {
        EXPECT_EQ(seen[i], seen[i % 2]) << "pause " << i;
    }
    Surface ground;
    Resize(ground, 192, 120);
    form.assets.ImgMain.Render(ground, 0, 0);
    EXPECT_EQ(seen[0], ground.picture.copy(counter.translated(-448, 0)));
}

} // namespace
