// Measures what every delivered theme costs on three screens, compared with one copy of the screen.
#include "theme_bench.h"

#include "app/cabinet/environment.h"
#include "bench.h"
#include "bench_jukebox.h"
#include "imaging/picture/late_picture.h"
#include "rendering/page_anim.h"
#include "rendering/redraw_jukebox.h"

#include <QDir>
#include <QFile>

#include <array>
#include <memory>
#include <system_error>

namespace {

constexpr int kRounds = 9;
constexpr std::array kScreens = {QSize(1920, 1080), QSize(1366, 768), QSize(1080, 1920)};

// A jukebox that decodes all pictures of its theme before the first frame. With a worker, the CPU time until
// the first frame depends on how far the worker gets.
std::unique_ptr<BenchJukebox> WithoutWorker(const BenchHome& home) {
    auto box = std::make_unique<BenchJukebox>(home);
    box->form.assets.pictureQueue = std::make_unique<PictureQueue>([](const auto&) -> std::jthread {
        throw std::system_error(std::make_error_code(std::errc::resource_unavailable_try_again));
    });
    return box;
}

void TurnPage(Form_Main& form) {
    form.library.CurrentPage = form.library.CurrentPage == 0 ? 1 : 0;
    PageAnim(form, QStringLiteral("+"));
}

void BenchTheme(const BenchHome& home) {
    const auto box = WithoutWorker(home);
    box->Load();
    ScreenCopy copy(home.screen);
    std::unique_ptr<BenchJukebox> fresh;
    PrintRow(QStringLiteral("The theme %1 on %2x%3, CPU time")
                 .arg(home.theme)
                 .arg(home.screen.width())
                 .arg(home.screen.height()),
             RunInTurn({{QStringLiteral("one memcpy of the screen"), [&] { copy.Run(); }},
                        {QStringLiteral("all pictures and the first frame"), [&] { fresh->Load(); },
                         [&] { fresh = WithoutWorker(home); }},
                        {QStringLiteral("a whole frame"), [&] { RedrawJukebox(box->form); }},
                        {QStringLiteral("a page turn"), [&] { TurnPage(box->form); }}},
                       kRounds, ProcessorMilliseconds));
}

} // namespace

QStringList ThemesOf(const QString& homeFolder) {
    const QDir themes(homeFolder + QStringLiteral("/themes"));
    QStringList names;
    for (const QString& name : themes.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name)) {
        if (QFile::exists(themes.filePath(name + QStringLiteral("/theme.ini")))) {
            names += name;
        }
    }
    return names;
}

void BenchThemes(const QString& homeFolder) {
    // New pictures cost page faults, as in the cabinet.
    TuneAllocator();
    for (const QString& theme : ThemesOf(homeFolder)) {
        for (const QSize& screen : kScreens) {
            BenchTheme({.delivered = homeFolder, .theme = theme, .screen = screen});
        }
    }
}
