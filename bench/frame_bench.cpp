// The time of one whole frame and of a page turn, compared with one copy of the screen.
#include "frame_bench.h"

#include "bench.h"
#include "bench_jukebox.h"
#include "rendering/page_anim.h"
#include "rendering/playlist_block.h"
#include "rendering/redraw_jukebox.h"

#include <algorithm>
#include <chrono>
#include <vector>

namespace {

void BenchFrame(const QString& title, const QString& delivered, double scale) {
    const BenchHome home{.delivered = delivered, .scale = scale};
    BenchJukebox box(home);
    box.Load();
    ScreenCopy copy(home.screen);
    PrintRow(title, RunInTurn({{QStringLiteral("one memcpy of the screen"), [&] { copy.Run(); }},
                               {QStringLiteral("RedrawJukebox"), [&] { RedrawJukebox(box.form); }}},
                              51));
}

using Times = std::vector<double>;

double MedianOf(Times times) {
    const auto middle = times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2);
    std::nth_element(times.begin(), middle, times.end());
    return *middle;
}

double MillisecondsSince(std::chrono::steady_clock::time_point start) {
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

// Turns to the other of two pages. Returns the milliseconds between successive points at which pending events
// run: the covering picture; the whole new page with the first leaf; one leaf each; the closing frame. The
// waits of 6 ms take no time here.
Times TurnPage(BenchJukebox& box) {
    Times works;
    auto start = std::chrono::steady_clock::now();
    bool waited = false;
    box.platform.pump.runPending = [&] {
        // Each leaf is followed by the point of its wait and by another one, with no work in between.
        if (!waited) {
            works.push_back(MillisecondsSince(start));
        }
        waited = !works.empty() && works.size() > 1 && !waited;
        start = std::chrono::steady_clock::now();
        return false;
    };
    box.platform.pump.Stirred();
    box.form.library.CurrentPage = box.form.library.CurrentPage == 0 ? 1 : 0;
    PageAnim(box.form, QStringLiteral("+"));
    box.platform.pump.runPending = {};
    works.push_back(MillisecondsSince(start));
    return works;
}

// The median duration of one step over all turns.
Times MediansOf(const std::vector<Times>& turns) {
    Times medians;
    for (std::size_t i = 0; i < turns.front().size(); ++i) {
        Times work;
        for (const Times& turn : turns) {
            work.push_back(turn[i]);
        }
        medians.push_back(MedianOf(work));
    }
    return medians;
}

void BenchTurn(const QString& title, const QString& delivered, double scale) {
    constexpr int kTurns = 9;
    const BenchHome home{.delivered = delivered, .scale = scale};
    BenchJukebox box(home);
    box.Load();
    ScreenCopy copy(home.screen);
    copy.Run();
    TurnPage(box);
    Times copies;
    std::vector<Times> turns;
    for (int i = 0; i < kTurns; ++i) {
        const auto start = std::chrono::steady_clock::now();
        copy.Run();
        copies.push_back(MillisecondsSince(start));
        turns.push_back(TurnPage(box));
    }
    const Times works = MediansOf(turns);
    const double unit = MedianOf(copies);
    // The covering picture, the new page with the first leaf, the other leaves, the closing frame.
    const Times leaves(works.begin() + 2, works.end() - 1);
    double slowest = 0;
    for (const Times& turn : turns) {
        slowest = std::max(slowest, *std::max_element(turn.begin() + 2, turn.end() - 1));
    }
    const auto row = [&](const QString& name, double time) { return Figure{name, time, time / unit}; };
    PrintRow(title + QStringLiteral(", %1 leaves a turn").arg(leaves.size() + 1),
             {row(QStringLiteral("one memcpy of the screen"), unit),
              row(QStringLiteral("a leaf"), MedianOf(leaves)),
              row(QStringLiteral("the slowest leaf, median of %1 turns").arg(kTurns),
                  *std::max_element(leaves.begin(), leaves.end())),
              row(QStringLiteral("the slowest leaf of all turns"), slowest),
              row(QStringLiteral("the covering picture"), works[0]),
              row(QStringLiteral("the new page and its first leaf"), works[1]),
              row(QStringLiteral("the closing frame"), works.back())});
}

// A queue of this length in which no title occurs twice.
void FillQueue(Form_Main& form, int count) {
    form.queue.PlaylistCount = count;
    form.queue.PlaylistSelected = count;
    for (int i = 1; i <= count; ++i) {
        form.queue.PlaylistTitre(i) =
            QStringLiteral("Artist %1 - A Song With a Title That Is Too Long for Its Row %1.mp3").arg(i);
        form.queue.PlaylistPath(i) = QStringLiteral("/music/") + form.queue.PlaylistTitre(i);
    }
}

// The delay that a patron notices: drawing the queue with one more entry, and the frame.
void DrawPick(Form_Main& form) {
    form.queue.PlaylistCount += 1;
    form.queue.PlaylistTitre(form.queue.PlaylistCount) = QStringLiteral("Another Artist - Another Song.mp3");
    DrawPlaylist(form);
    RedrawJukebox(form);
}

// The queue's texts after a theme was loaded, when none has been measured yet.
void DrawUnknown(Form_Main& form) {
    ForgetPlaylistTexts(form);
    DrawPlaylist(form);
}

} // namespace

void BenchQueue(const QString& homeFolder) {
    constexpr int kShort = 50;
    constexpr int kLong = 500;
    BenchJukebox box({.delivered = homeFolder});
    box.Load();
    Form_Main& form = box.form;
    const auto subject = [&](const QString& name, int count, void (*draw)(Form_Main&)) {
        return Contender{name.arg(count), [&form, draw] { draw(form); },
                         [&form, count] {
                             FillQueue(form, count);
                             DrawPlaylist(form);
                         }};
    };
    const QString pick = QStringLiteral("a pick with %1 in the queue");
    const QString unknown = QStringLiteral("DrawPlaylist of %1 unknown titles");
    PrintRow(QStringLiteral("The queue, theme of 1920x1080"),
             RunInTurn({subject(pick, kShort, DrawPick), subject(pick, kLong, DrawPick),
                        subject(unknown, kShort, DrawUnknown), subject(unknown, kLong, DrawUnknown)},
                       21));
}

void BenchFrames(const QString& homeFolder) {
    BenchFrame(QStringLiteral("A frame of 1920x1080, theme of 1920x1080"), homeFolder, 1.0);
    BenchFrame(QStringLiteral("A frame of 1920x1080, theme of 1280x720"), homeFolder, 2.0 / 3);
}

void BenchTurns(const QString& homeFolder) {
    BenchTurn(QStringLiteral("A page turn of 1920x1080, theme of 1920x1080"), homeFolder, 1.0);
    BenchTurn(QStringLiteral("A page turn of 1920x1080, theme of 1280x720"), homeFolder, 2.0 / 3);
}
