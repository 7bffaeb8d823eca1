// The Main block's texts: information lines, credits, remaining time.
#include "rendering/main_block.h"

#include "rendering/geometry.h"
#include "rendering/text.h"
#include "rendering/titles.h"
#include "state/form_main.h"
#include "state/log.h"

#include <array>

namespace {

// Deliberate D-19: the running title loses ".vxtpl", a misspelling of ".vtxpl", so a playlist's name keeps
// its ending in this state. One would expect the ending to be removed as in the other states; operators are
// used to these texts.
const QStringList kEndingsOfRunning = {
    QStringLiteral(".avi"),  QStringLiteral(".mpg"), QStringLiteral(".mp4"),  QStringLiteral(".mp3"),
    QStringLiteral(".flac"), QStringLiteral(".wma"), QStringLiteral(".vxtpl")};
// The source of a state's second line.
enum class Source { kFixed, kFolder, kRunningTitle, kNextTitle, kLastTitle };

// When a state ends: never, above its number of ticks, or at exactly that number.
enum class Leaves { kNever, kAbove, kExactly };

// How the next state is found.
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
    return BlockTitle(form.queue.PlaylistTitre(entry), endings).Titre;
}

// Returns the name after the last separator; empty when the path has no separator.
QString FolderName(const QString& path) {
    const qsizetype separator = path.lastIndexOf(u'/');
    return separator < 0 ? QString() : path.mid(separator + 1);
}

QString SecondLine(const Form_Main& form, const InfosRow& row) {
    switch (row.source) {
    case Source::kFixed:
        return QString::fromLatin1(row.line2);
    case Source::kFolder:
        return FolderName(form.library.CurrentPath);
    case Source::kRunningTitle:
        return QueueTitle(form, form.queue.PlaylistCurrent, kEndingsOfRunning);
    case Source::kNextTitle:
        return QueueTitle(form, form.queue.PlaylistCurrent + 1, TitleEndings());
    case Source::kLastTitle:
        return QueueTitle(form, form.queue.PlaylistCount, TitleEndings());
    }
    return QString();
}

const char* AfterButton(const Form_Main& form) {
    if (form.queue.PlaylistCount > 0) {
        return "nowplaying";
    }
    return form.coins.Credits > 0 ? "selecttrack" : "insertcoin";
}

const char* WithoutQueue(const Form_Main& form) {
    return form.settings.ManageCoin == u"true" && form.coins.Credits == 0 ? "insertcoin" : "selecttrack";
}

const char* AfterNews(const Form_Main& form) {
    const bool mustPay = form.settings.ManageCoin == u"true" && form.coins.Credits == 0;
    return !mustPay && form.queue.PlaylistCount > 0 ? "nowplaying" : WithoutQueue(form);
}

// Returns the next state, or nullptr when the state does not change.
const char* Successor(const Form_Main& form, Rule rule) {
    switch (rule) {
    case Rule::kA:
        return AfterButton(form);
    case Rule::kB:
        return form.queue.PlaylistCount > 0 || form.coins.Credits > 0 ? AfterButton(form) : nullptr;
    case Rule::kC:
        return AfterNews(form);
    case Rule::kD:
        return form.queue.PlaylistCount > form.queue.PlaylistCurrent ? "nextplaying" : WithoutQueue(form);
    case Rule::kNowPlaying:
        return "nowplaying";
    case Rule::kNone:
        break;
    }
    return nullptr;
}

void ApplyTimeRule(Form_Main& form, const InfosRow& row) {
    const bool over = (row.leaves == Leaves::kAbove && form.frame.InfosTicks > row.ticks) ||
                      (row.leaves == Leaves::kExactly && form.frame.InfosTicks == row.ticks);
    const char* next = over ? Successor(form, row.successor) : nullptr;
    if (next != nullptr) {
        form.frame.BlockMainInfos = QString::fromLatin1(next);
        form.frame.InfosTicks = 1;
    }
}

// Repaints a rectangle of the block from the block's picture.
void RepaintGround(Form_Main& form, const Box16& inBlock) {
    const Box to = ScaledBox(form, InBlock(form.theme.BlockMain, inBlock));
    const Box from = BoxOf(inBlock);
    form.assets.ImgMain.Render(form.frame.Picture_Main, to.x, to.y, to.width, to.height, from.x, from.y,
                               from.width, from.height);
}

void WriteInto(Form_Main& form, const Box16& inBlock, const QString& text, const TextLook& look) {
    const Box16 box = ScaledTextBox(form, InBlock(form.theme.BlockMain, inBlock));
    DrawCentred(form, form.frame.Picture_Main, text, box, ScaledLook(form, look));
}

void DrawLine1(Form_Main& form, const QString& text) {
    RepaintGround(form, form.theme.BlockMainInfosZoneLigne1);
    if (!text.isEmpty()) {
        WriteInto(form, form.theme.BlockMainInfosZoneLigne1, text.toUpper(),
                  form.theme.BlockMainInfosZoneLigne1Font);
    }
}

void DrawLine2(Form_Main& form, const QString& text) {
    RepaintGround(form, form.theme.BlockMainInfosZoneLigne2);
    if (form.frame.InfosBlink != 1) {
        WriteInto(form, form.theme.BlockMainInfosZoneLigne2, text.toUpper(),
                  form.theme.BlockMainInfosZoneLigne2Font);
    }
}

} // namespace

void SetInfos(Form_Main& form, const QString& infos) {
    form.frame.BlockMainInfos = infos;
    form.frame.InfosBlink = 0;
    form.frame.InfosTicks = 1;
}

void BlockMainRedrawInfos(Form_Main& form) {
    if (form.settings.ShowMainZone != u"true") {
        return;
    }
    WriteLog(form, QStringLiteral(" : BlockMainRedrawInfos"));
    const InfosRow* row = RowOf(form.frame.BlockMainInfos);
    if (row == nullptr) {
        return;
    }
    if (form.frame.BlockMainInfos == u"insertcoin" && form.settings.ManageCoin != u"true") {
        form.frame.BlockMainInfos = QStringLiteral("selecttrack");
        return;
    }
    DrawLine1(form, QString::fromLatin1(row->line1));
    DrawLine2(form, SecondLine(form, *row));
    ApplyTimeRule(form, *row);
}

void RepaintCreditBox(Form_Main& form) {
    RepaintGround(form, form.theme.BlockMainInsertCoin);
}

void WriteCredits(Form_Main& form) {
    WriteInto(form, form.theme.BlockMainInsertCoin, QString::number(form.coins.Credits.value()),
              form.theme.BlockMainInsertCoinFont);
}

void RepaintRemain(Form_Main& form) {
    RepaintGround(form, form.theme.BlockMainRemain);
    WriteInto(form, form.theme.BlockMainRemain, form.player.Remain, form.theme.BlockMainRemainFont);
}
