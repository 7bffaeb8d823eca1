// The Main block's texts: information lines, credits, remaining time.
#include "rendering/main_block.h"

#include "rendering/geometry.h"
#include "rendering/text.h"
#include "rendering/titles.h"
#include "shell/form_main.h"
#include "shell/log.h"

#include <array>

namespace {

// Deliberate D-19: the running title loses ".vxtpl", a slip for ".vtxpl", so that a playlist's name keeps its
// ending in that state. One expects the ending of the other states; the texts are known as they are.
const QStringList kEndingsOfRunning = {
    QStringLiteral(".avi"),  QStringLiteral(".mpg"), QStringLiteral(".mp4"),  QStringLiteral(".mp3"),
    QStringLiteral(".flac"), QStringLiteral(".wma"), QStringLiteral(".vxtpl")};
// Where a state's second line comes from.
enum class Source { kFixed, kFolder, kRunningTitle, kNextTitle, kLastTitle };

// When a state is left.
enum class Leaves { kNever, kAbove, kExactly };

// What follows a state.
enum class Rule { kNone, kA, kB, kC, kD, kNowPlaying };

struct InfosRow {
    const char* state;
    const char* line1;
    const char* line2;
    Source source;
    Leaves leaves;
    int ticks;
    Rule successor;
};

// clang-format off
constexpr std::array kInfos = {
    InfosRow{"btnpreview",    "",                "play preview track",    Source::kFixed,        Leaves::kAbove,   10, Rule::kA},
    InfosRow{"btnstop",       "",                "stop track",            Source::kFixed,        Leaves::kAbove,   10, Rule::kA},
    InfosRow{"btnplay",       "",                "play track",            Source::kFixed,        Leaves::kAbove,   10, Rule::kA},
    InfosRow{"btnpause",      "",                "pause track",           Source::kFixed,        Leaves::kAbove,   10, Rule::kA},
    InfosRow{"btnnext",       "",                "play next track",       Source::kFixed,        Leaves::kAbove,   10, Rule::kA},
    InfosRow{"btndown",       "",                "move track before",     Source::kFixed,        Leaves::kAbove,   10, Rule::kA},
    InfosRow{"btnup",         "",                "move track after",      Source::kFixed,        Leaves::kAbove,   10, Rule::kA},
    InfosRow{"btnremove",     "",                "remove track",          Source::kFixed,        Leaves::kAbove,   10, Rule::kA},
    InfosRow{"btnload",       "",                "load a playlist",       Source::kFixed,        Leaves::kAbove,   10, Rule::kA},
    InfosRow{"btnsave",       "",                "save current playlist", Source::kFixed,        Leaves::kAbove,   10, Rule::kA},
    InfosRow{"insertcoin",    "please",          "insert coin",           Source::kFixed,        Leaves::kAbove,   15, Rule::kB},
    InfosRow{"selecttrack",   "please",          "select a track",        Source::kFixed,        Leaves::kNever,    0, Rule::kNone},
    InfosRow{"currentpath",   "now in...",       "",                      Source::kFolder,       Leaves::kAbove,   15, Rule::kC},
    InfosRow{"charging",      "charging",        "please wait",           Source::kFixed,        Leaves::kAbove,    5, Rule::kNowPlaying},
    InfosRow{"nowplaying",    "now playing",     "",                      Source::kRunningTitle, Leaves::kAbove,   30, Rule::kD},
    InfosRow{"nextplaying",   "coming next",     "",                      Source::kNextTitle,    Leaves::kAbove,   10, Rule::kC},
    InfosRow{"addtoplaylist", "add to playlist", "",                      Source::kLastTitle,    Leaves::kExactly, 10, Rule::kC},
};
// clang-format on

static_assert(kInfos.size() == 17);

const InfosRow* RowOf(const QString& state) {
    for (const InfosRow& row : kInfos) {
        if (state == QLatin1StringView(row.state)) {
            return &row;
        }
    }
    return nullptr;
}

QString QueueTitle(const Form_Main& form, Integer16 entry, const QStringList& endings) {
    return BlockTitle(form.PlaylistTitre(entry), endings).Titre;
}

// The folder's name behind the last separator; empty when the path holds none.
QString FolderName(const QString& path) {
    const qsizetype separator = path.lastIndexOf(u'/');
    return separator < 0 ? QString() : path.mid(separator + 1);
}

QString SecondLine(const Form_Main& form, const InfosRow& row) {
    switch (row.source) {
    case Source::kFixed:
        return QString::fromLatin1(row.line2);
    case Source::kFolder:
        return FolderName(form.CurrentPath);
    case Source::kRunningTitle:
        return QueueTitle(form, form.PlaylistCurrent, kEndingsOfRunning);
    case Source::kNextTitle:
        return QueueTitle(form, form.PlaylistCurrent + 1, TitleEndings());
    case Source::kLastTitle:
        return QueueTitle(form, form.PlaylistCount, TitleEndings());
    }
    return QString();
}

const char* AfterButton(const Form_Main& form) {
    if (form.PlaylistCount > 0) {
        return "nowplaying";
    }
    return form.Credits > 0 ? "selecttrack" : "insertcoin";
}

const char* WithoutQueue(const Form_Main& form) {
    return form.ManageCoin == u"true" && form.Credits == 0 ? "insertcoin" : "selecttrack";
}

const char* AfterNews(const Form_Main& form) {
    const bool mustPay = form.ManageCoin == u"true" && form.Credits == 0;
    return !mustPay && form.PlaylistCount > 0 ? "nowplaying" : WithoutQueue(form);
}

// The state that follows; none when the state stays.
const char* Successor(const Form_Main& form, Rule rule) {
    switch (rule) {
    case Rule::kA:
        return AfterButton(form);
    case Rule::kB:
        return form.PlaylistCount > 0 || form.Credits > 0 ? AfterButton(form) : nullptr;
    case Rule::kC:
        return AfterNews(form);
    case Rule::kD:
        return form.PlaylistCount > form.PlaylistCurrent ? "nextplaying" : WithoutQueue(form);
    case Rule::kNowPlaying:
        return "nowplaying";
    case Rule::kNone:
        break;
    }
    return nullptr;
}

void ApplyTimeRule(Form_Main& form, const InfosRow& row) {
    const bool over = (row.leaves == Leaves::kAbove && form.InfosTicks > row.ticks) ||
                      (row.leaves == Leaves::kExactly && form.InfosTicks == row.ticks);
    const char* next = over ? Successor(form, row.successor) : nullptr;
    if (next != nullptr) {
        form.BlockMainInfos = QString::fromLatin1(next);
        form.InfosTicks = 1;
    }
}

// A text's rectangle of the Main block, in design pixels of the block.
struct MainRect {
    Integer16 x;
    Integer16 y;
    Integer16 width;
    Integer16 height;
};

void RepaintGround(Form_Main& form, const MainRect& rect) {
    const Box to =
        ScaledBox(form, form.BlockMainX.value() + rect.x.value(), form.BlockMainY.value() + rect.y.value(),
                  rect.width.value(), rect.height.value());
    form.ImgMain.Render(form.Picture_Main, to.x, to.y, to.width, to.height, rect.x.value(), rect.y.value(),
                        rect.width.value(), rect.height.value());
}

void WriteInto(Form_Main& form, const MainRect& rect, const QString& text, const TextStyle& style) {
    const TextBox box =
        ScaledTextBox(form, form.BlockMainX.value() + rect.x.value(),
                      form.BlockMainY.value() + rect.y.value(), rect.width.value(), rect.height.value());
    DrawCentred(form, form.Picture_Main, text, box,
                ScaledStyle(form, style.Typo, style.TypoSize, style.TypoColor));
}

MainRect CreditRect(const Form_Main& form) {
    return {form.BlockMainInsertCoinX, form.BlockMainInsertCoinY, form.BlockMainInsertCoinW,
            form.BlockMainInsertCoinH};
}

void DrawLine1(Form_Main& form, const QString& text) {
    const MainRect rect{form.BlockMainInfosZoneLigne1X, form.BlockMainInfosZoneLigne1Y,
                        form.BlockMainInfosZoneLigne1W, form.BlockMainInfosZoneLigne1H};
    RepaintGround(form, rect);
    if (!text.isEmpty()) {
        WriteInto(form, rect, text.toUpper(),
                  {form.BlockMainInfosZoneLigne1Font, form.BlockMainInfosZoneLigne1FontSize,
                   form.BlockMainInfosZoneLigne1FontColor});
    }
}

void DrawLine2(Form_Main& form, const QString& text) {
    const MainRect rect{form.BlockMainInfosZoneLigne2X, form.BlockMainInfosZoneLigne2Y,
                        form.BlockMainInfosZoneLigne2W, form.BlockMainInfosZoneLigne2H};
    RepaintGround(form, rect);
    if (form.InfosBlink != 1) {
        WriteInto(form, rect, text.toUpper(),
                  {form.BlockMainInfosZoneLigne2Font, form.BlockMainInfosZoneLigne2FontSize,
                   form.BlockMainInfosZoneLigne2FontColor});
    }
}

} // namespace

void BlockMainRedrawInfos(Form_Main& form) {
    if (form.ShowMainZone != u"true") {
        return;
    }
    WriteLog(form, QStringLiteral(" : BlockMainRedrawInfos"));
    const InfosRow* row = RowOf(form.BlockMainInfos);
    if (row == nullptr) {
        return;
    }
    if (form.BlockMainInfos == u"insertcoin" && form.ManageCoin != u"true") {
        form.BlockMainInfos = QStringLiteral("selecttrack");
        return;
    }
    DrawLine1(form, QString::fromLatin1(row->line1));
    DrawLine2(form, SecondLine(form, *row));
    ApplyTimeRule(form, *row);
}

void RepaintCreditBox(Form_Main& form) {
    RepaintGround(form, CreditRect(form));
}

void WriteCredits(Form_Main& form) {
    WriteInto(
        form, CreditRect(form), QString::number(form.Credits.value()),
        {form.BlockMainInsertCoinFont, form.BlockMainInsertCoinFontSize, form.BlockMainInsertCoinFontColor});
}

void RepaintRemain(Form_Main& form) {
    const MainRect rect{form.BlockMainRemainX, form.BlockMainRemainY, form.BlockMainRemainW,
                        form.BlockMainRemainH};
    RepaintGround(form, rect);
    WriteInto(form, rect, form.Remain,
              {form.BlockMainRemainFont, form.BlockMainRemainFontSize, form.BlockMainRemainFontColor});
}
