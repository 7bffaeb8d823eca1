// A page turn frame by frame: which leaf folds, what is under it, what opens.
#include "rendering/page_anim.h"

#include "rendering/geometry.h"
#include "support/jukebox.h"

#include <gtest/gtest.h>

#include <QImage>

#include <vector>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kPageWidth = 224;
constexpr int kPageHeight = 336;
// The number of frames in the folding half and in the opening half, for pages of this width.
constexpr int kFoldFrames = 21;
constexpr int kOpenFrames = 15;
// The leaf's width in the last frame of each half: 224 less 1 + ... + 20, and 22 + ... + 9.
constexpr int kLastFold = 14;
constexpr int kLastOpen = 217;

const QRgb kOld = qRgb(200, 10, 10);

// A jukebox on a screen of its theme's size, with two pages. The old page is painted in one colour.
class PageTurn : public testing::Test {
protected:
    void StartWith(Jukebox& box) {
        box.SetTheme(u"zonelist"_s, u"ZoneListNbTracksParColonne"_s, u"5"_s);
        for (int track = 0; track < 17; ++track) {
            box.Track(u"%1.mp3"_s.arg(100 + track));
        }
        box.Start();
        box.form.frame.Picture_Cache.picture.fill(kOld);
        box.form.library.CurrentPage = 1;
    }
    // Turns the page and copies Picture_Main each time pending events run: once before the first frame, then
    // twice per frame.
    void Turn(Jukebox& box, const QString& direction) {
        box.platform.pump.runPending = [&] {
            points.push_back(box.form.frame.Picture_Main.picture.copy());
            return false;
        };
        PageAnim(box.form, direction);
        box.platform.pump.runPending = {};
        current = box.form.frame.Picture_Cache.picture;
    }
    const QImage& FrameAt(int frame) const { return points[static_cast<std::size_t>(1 + 2 * frame)]; }
    bool IsOld(const QImage& image, int x, int width) const {
        QImage old(width, kPageHeight, image.format());
        old.fill(kOld);
        return image.copy(x, 0, width, kPageHeight) == old;
    }
    bool IsNew(const QImage& image, int x, int width) const {
        return image.copy(x, 0, width, kPageHeight) == current.copy(x, 0, width, kPageHeight);
    }

    std::vector<QImage> points;
    QImage current;
};

TEST_F(PageTurn, ForwardTheOldRightPageFoldsAndTheNewLeftPageOpens) {
    Jukebox box;
    StartWith(box);
    Turn(box, u"+"_s);
    ASSERT_EQ(points.size(), 1U + 2 * (kFoldFrames + kOpenFrames));
    EXPECT_TRUE(IsOld(FrameAt(0), 0, 2 * kPageWidth));
    const QImage folded = FrameAt(kFoldFrames - 1);
    EXPECT_TRUE(IsOld(folded, 0, kPageWidth + kLastFold));
    EXPECT_TRUE(IsNew(folded, kPageWidth + kLastFold, kPageWidth - kLastFold));
    const QImage upright = FrameAt(kFoldFrames);
    EXPECT_TRUE(IsOld(upright, 0, kPageWidth));
    EXPECT_TRUE(IsNew(upright, kPageWidth, kPageWidth));
    const QImage opened = FrameAt(kFoldFrames + kOpenFrames - 1);
    EXPECT_TRUE(IsOld(opened, 0, kPageWidth - kLastOpen));
    EXPECT_FALSE(IsOld(opened, kPageWidth - kLastOpen, 1));
    EXPECT_TRUE(IsNew(opened, kPageWidth, kPageWidth));
}

TEST_F(PageTurn, BackTheOldLeftPageFoldsAndTheNewRightPageOpens) {
    Jukebox box;
    StartWith(box);
    Turn(box, u"-"_s);
    ASSERT_EQ(points.size(), 1U + 2 * (kFoldFrames + kOpenFrames));
    EXPECT_TRUE(IsOld(FrameAt(0), 0, 2 * kPageWidth));
    const QImage folded = FrameAt(kFoldFrames - 1);
    EXPECT_TRUE(IsNew(folded, 0, kPageWidth - kLastFold));
    EXPECT_TRUE(IsOld(folded, kPageWidth - kLastFold, kPageWidth + kLastFold));
    const QImage opened = FrameAt(kFoldFrames + kOpenFrames - 1);
    EXPECT_TRUE(IsNew(opened, 0, kPageWidth));
    EXPECT_FALSE(IsOld(opened, kPageWidth + kLastOpen - 1, 1));
    EXPECT_TRUE(IsOld(opened, kPageWidth + kLastOpen, kPageWidth - kLastOpen));
}

TEST_F(PageTurn, AnyWordButPlusTurnsBack) {
    Jukebox box;
    StartWith(box);
    Turn(box, u"forward"_s);
    EXPECT_TRUE(IsNew(FrameAt(kFoldFrames), 0, kPageWidth));
    EXPECT_TRUE(IsOld(FrameAt(kFoldFrames), kPageWidth, kPageWidth));
}

// The opening leaf shows the whole page squeezed into the leaf's width.
TEST_F(PageTurn, TheLeafIsTheWholePageSqueezed) {
    Jukebox box;
    StartWith(box);
    Turn(box, u"+"_s);
    Surface page;
    Resize(page, 2 * kPageWidth, kPageHeight);
    page.stretchMode = box.form.frame.Picture_CacheTmp2.stretchMode;
    Surface source;
    Resize(source, current.width(), current.height());
    source.picture = current;
    StretchBlt(page, {kPageWidth - kLastOpen, 0, kLastOpen, kPageHeight}, source,
               {0, 0, kPageWidth, kPageHeight});
    const QRect leaf(kPageWidth - kLastOpen, 0, kLastOpen, kPageHeight);
    EXPECT_EQ(FrameAt(kFoldFrames + kOpenFrames - 1).copy(leaf), page.picture.copy(leaf));
}

TEST_F(PageTurn, TheWaitPictureCoversTheScreenFirst) {
    Jukebox box;
    StartWith(box);
    Surface expected = box.form.frame.Picture_Main;
    box.form.assets.ImgWait.Render(expected, 0, 0, expected.Width(), expected.Height());
    ASSERT_NE(expected.picture, box.form.frame.Picture_Main.picture);
    Turn(box, u"+"_s);
    EXPECT_EQ(points.front(), expected.picture);
}

TEST_F(PageTurn, TheLogTellsTheTurnThenThePageThenTheFrame) {
    Jukebox box;
    StartWith(box);
    const qsizetype before = box.Log().size();
    Turn(box, u"+"_s);
    QStringList log = box.Log().mid(before);
    EXPECT_EQ(log.at(0), u" : PageAnim"_s);
    EXPECT_EQ(log.at(1), u" : DrawZoneList"_s);
    EXPECT_EQ(log.count(u" : DrawZoneList"_s), 1);
    EXPECT_EQ(log.count(u" : RedrawJukebox"_s), 1);
}

// The page is recorded before the frame is drawn, which can repair the page.
TEST_F(PageTurn, ThePageIsRecordedAsItWasTurnedTo) {
    Jukebox box;
    StartWith(box);
    box.form.library.CurrentPage = 2;
    Turn(box, u"+"_s);
    EXPECT_EQ(box.form.library.DirHistoryPage(0), 2);
    EXPECT_EQ(box.form.library.CurrentPage, 0);
    EXPECT_EQ(box.form.library.DirHistoryPath(0), box.Music());
}

TEST_F(PageTurn, OnAScaledScreenTheLeavesAreStretchedFast) {
    Jukebox box(QSize(1280, 720));
    StartWith(box);
    std::vector<int> modes;
    box.platform.pump.runPending = [&] {
        modes.push_back(box.form.frame.Picture_Main.stretchMode);
        return false;
    };
    PageAnim(box.form, u"+"_s);
    EXPECT_EQ(modes.front(), kStretchHalftone);
    EXPECT_EQ(std::vector<int>(modes.begin() + 1, modes.end()),
              std::vector<int>(2 * (kFoldFrames + kOpenFrames), kStretchFast));
    EXPECT_EQ(box.form.frame.Picture_Main.stretchMode, kStretchHalftone);
}

TEST_F(PageTurn, OnAScreenOfTheThemesSizeTheStretchModeIsLeftAlone) {
    Jukebox box;
    StartWith(box);
    for (const int mode : {int{kStretchFast}, int{kStretchHalftone}}) {
        box.form.frame.Picture_Main.stretchMode = mode;
        std::vector<int> modes;
        box.platform.pump.runPending = [&] {
            modes.push_back(box.form.frame.Picture_Main.stretchMode);
            return false;
        };
        PageAnim(box.form, u"+"_s);
        EXPECT_EQ(modes, std::vector<int>(1 + 2 * (kFoldFrames + kOpenFrames), mode));
        EXPECT_EQ(box.form.frame.Picture_Main.stretchMode, mode);
    }
}

TEST_F(PageTurn, DuringTheFoldTheBlocksAreNotOnTheScreenAndTheLastFrameBringsThemBack) {
    Jukebox box;
    StartWith(box);
    const int left = box.form.theme.BlockMain.X.value();
    const QImage before = box.form.frame.Picture_Main.picture.copy(left, 0, 192, 360);
    Turn(box, u"+"_s);
    // To the right of the zone the wait picture stays visible until the whole frame is drawn again.
    const QImage covered = points.front().copy(left, 0, 192, 360);
    EXPECT_NE(covered, before);
    for (const QImage& point : points) {
        ASSERT_EQ(point.copy(left, 0, 192, 360), covered);
    }
    EXPECT_EQ(box.form.frame.Picture_Main.picture.copy(left, 0, 192, 360), before);
}

// One frame of a turn, assembled whole.
class WholeFrames {
public:
    WholeFrames(const Form_Main& form, bool isForward) : form_(form), page_(isForward ? 1 : 0) {
        const double newWidth = form.theme.ZoneListPage(0).W.value();
        double speed = 1;
        for (double width = form.theme.ZoneListPage(page_).W.value(); width > 0; width -= speed++) {
            leaves_.push_back({static_cast<int>(width), true});
        }
        for (double width = 0; width < newWidth; width += speed--) {
            leaves_.push_back({static_cast<int>(width), false});
        }
    }

    std::size_t Count() const { return leaves_.size(); }

    Surface Zone(std::size_t frame) const {
        const auto [width, folds] = leaves_[frame];
        const Surface& from = folds ? form_.frame.Picture_CacheTmp : form_.frame.Picture_Cache;
        const int leaf = folds ? page_ : 1 - page_;
        Surface zone = form_.frame.Picture_CacheTmp;
        const Box under = PageBox(page_);
        BitBlt(zone, under, form_.frame.Picture_Cache, under.x, under.y);
        const Box page = PageBox(leaf);
        const int x = leaf == 0 ? page.x + page.width - width : page.x;
        StretchBlt(zone, {x, page.y, width, page.height}, from, page);
        return zone;
    }

private:
    struct LeafOf {
        int width;
        bool folds;
    };
    Box PageBox(int page) const {
        Box box = BoxOf(form_.theme.ZoneListPage(page));
        return {box.x + form_.theme.ZoneList.X.value(), box.y + form_.theme.ZoneList.Y.value(), box.width,
                box.height};
    }

    const Form_Main& form_;
    int page_;
    std::vector<LeafOf> leaves_;
};

// Turns a page and compares every frame with one that is assembled whole.
void CompareFrames(Jukebox& box, const QString& direction) {
    Form_Main& form = box.form;
    const WholeFrames frames(form, direction == u"+");
    Surface screen;
    std::size_t point = 0;
    box.platform.pump.runPending = [&] {
        if (point == 0) {
            screen = form.frame.Picture_Main;
            screen.stretchMode = kStretchFast;
        } else if (point % 2 == 1) {
            const Surface zone = frames.Zone(point / 2);
            const Box whole{0, 0, zone.Width(), zone.Height()};
            StretchBlt(screen, ScaledBox(form, whole), zone, whole);
            EXPECT_EQ(form.frame.Picture_CacheTmp2.picture, zone.picture) << point;
            EXPECT_EQ(form.frame.Picture_Main.picture, screen.picture) << point;
        }
        ++point;
        return false;
    };
    form.library.CurrentPage = form.library.CurrentPage == 0 ? 1 : 0;
    PageAnim(form, direction);
    box.platform.pump.runPending = {};
    EXPECT_EQ(point, 1 + 2 * frames.Count());
}

// Pages that overlap and have different widths, on screens of several scales.
TEST_F(PageTurn, EveryFrameIsTheSameAsOneAssembledWhole) {
    for (const QSize screen : {QSize(640, 360), QSize(1280, 720), QSize(500, 300), QSize(360, 640)}) {
        for (const bool overlaps : {false, true}) {
            Jukebox box(screen);
            if (overlaps) {
                box.SetTheme(u"zonelist"_s, u"ZoneListX"_s, u"7"_s);
                box.SetTheme(u"zonelist"_s, u"ZoneListPageGaucheWidth"_s, u"240"_s);
                box.SetTheme(u"zonelist"_s, u"ZoneListPageDroiteX"_s, u"190"_s);
                box.SetTheme(u"zonelist"_s, u"ZoneListPageDroiteY"_s, u"-5"_s);
            }
            StartWith(box);
            for (const QString& direction : {u"+"_s, u"-"_s}) {
                CompareFrames(box, direction);
            }
        }
    }
}

} // namespace
