// Carrying out the steps of a situation, and taking the picture after them or in the middle of the last one.
#include "app/workshop/stage.h"

#include "app/workshop/sample_music.h"
#include "core/path_text.h"
#include "core/run_time_error.h"
#include "dialogs/keyboard.h"
#include "platform/posix/termination_signals.h"
#include "platform/simulated/simulated_platform.h"
#include "rendering/geometry.h"
#include "settings/ini_file.h"
#include "shell/hand_down.h"
#include "shell/handle_event.h"
#include "shell/start_up.h"
#include "state/form_main.h"

#include <QDir>
#include <QFile>
#include <QPainter>

#include <array>
#include <cmath>

namespace {

constexpr double kHeartbeatMilliseconds = 399;
const QString kThemeName = QStringLiteral("shown");

// Usual settings, and the usual keys.
constexpr std::array kSettings = {
    std::pair{"Main",
              "Theme=shown,Fullscreen=false,FullscreenSize=1280x720 32bits,PlayTransitionSound=true,"
              "DefaultOrder=alpha,tactilemode=false,ShowFolderCover=true,ShowFileCover=true,ShowCover=true,"
              "ShowBigCover=false,ShowMp3CoverTag=true,ShowTrackNum=true,ShowMainZone=true,"
              "ActiveMainZone=true,ShowPlaylistZone=true,ActivePlaylistZone=true,ShowCommandZone=true,"
              "ActiveCommandZone=true,ManageCoin=false"},
    std::pair{"Key",
              "haut=38,bas=40,gauche=37,droite=39,Valider=13,retour=8,Config=120,Quitter=27,gotonextzone=9,"
              "insertcoin=45,addtofav=,fav=,Preview=113,Stop=114,Play=115,Pause=116,Next=117"},
    std::pair{"RGBLeds", "Active=false,Commport=1,NbLeds=30,Stereo=false"}};

// Ends a situation from inside of a handler, once its picture is taken.
struct PictureTaken {};

// Ends a situation after a signal.
struct PlayInterrupted {};

// A situation that is played.
struct Play {
    SimulatedPlatform& platform;
    Form_Main& form;
    const Situation& situation;
    // The music is not the sample library.
    bool isOwnMusic = false;
    std::size_t next = 0;
    // The picture is taken when this many more events could have run; 0 for not at all.
    int shootAfter = 0;
    QImage picture;
};

// The rectangle of a video that is shown inside the frame; empty when there is none.
QRect VideoPlace(const Play& play) {
    QRect place;
    for (const QJsonArray& call : play.platform.calls.Entries()) {
        if (call.at(0) == QStringLiteral("Video") && call.at(1) == QStringLiteral("Place")) {
            place =
                call.at(2) == QStringLiteral("Picture_Main")
                    ? QRect(call.at(3).toInt(), call.at(4).toInt(), call.at(5).toInt(), call.at(6).toInt())
                    : QRect();
        }
    }
    return place;
}

// Bars of colour take the place of a running video.
void PaintTestCard(QImage& picture, const QRect& place) {
    constexpr std::array kBars = {Qt::white, Qt::yellow, Qt::cyan, Qt::green, Qt::magenta, Qt::red, Qt::blue};
    // The simulated graph shows its picture as high as the shape of the video allows.
    const int height = place.width() * 9 / 16;
    QPainter painter(&picture);
    for (int bar = 0; bar < static_cast<int>(kBars.size()); ++bar) {
        const int left = place.width() * bar / static_cast<int>(kBars.size());
        const int right = place.width() * (bar + 1) / static_cast<int>(kBars.size());
        painter.fillRect(place.x() + left, place.y(), right - left, std::min(height, place.height()),
                         kBars[static_cast<std::size_t>(bar)]);
    }
}

void EndIfInterrupted() {
    if (TerminationSignal() != 0) {
        throw PlayInterrupted();
    }
}

void TakePicture(Play& play) {
    play.picture = play.form.frame.Picture_Main.picture.copy();
    if (play.form.player.VideoControl) {
        const QRect place = VideoPlace(play);
        if (!place.isEmpty()) {
            PaintTestCard(play.picture, place);
        }
    }
    const QImage& board = play.form.keyboard.Picture_Keyboard.picture;
    if (play.form.shell.Form_KeyBoard.Visible && !board.isNull()) {
        QPainter painter(&play.picture);
        painter.drawImage((play.picture.width() - board.width()) / 2,
                          (play.picture.height() - board.height()) / 2, board);
    }
}

void Send(Play& play, const InputEvent& event) {
    EndIfInterrupted();
    play.platform.pump.Stirred();
    if (const std::optional<RunTimeError> error = HandleEvent(play.form, event)) {
        throw RunTimeError(*error);
    }
}

void Press(Play& play, int code) {
    InputEvent event;
    event.kind = InputKind::kKeyDown;
    event.code = code;
    Send(play, event);
}

void Tick(Play& play, int count) {
    for (int i = 0; i < count; ++i) {
        play.platform.clock.Advance(kHeartbeatMilliseconds);
        Send(play, InputEvent());
    }
}

// Moves the cursor on the page to a slot, one key at a time.
void MoveTo(Play& play, const SlotPlace& place) {
    constexpr int kDown = 40;
    constexpr int kRight = 39;
    constexpr int kMostKeys = 12;
    for (int i = 0; i < kMostKeys && static_cast<int>(play.form.cursor.SelX) < place.column; ++i) {
        Press(play, kRight);
    }
    for (int i = 0; i < kMostKeys && static_cast<int>(play.form.cursor.SelY) < place.row; ++i) {
        Press(play, kDown);
    }
}

// The slot of a folder on the page that is shown; nothing when it is not there.
std::optional<int> SlotOfFolder(const Form_Main& form, const QString& name) {
    std::optional<int> first;
    for (int slot = 0; slot < 2 * form.theme.ZoneListNbTracksParColonne.value(); ++slot) {
        const bool isFolder = form.library.InfoType(slot) == u"dir";
        if (isFolder && NameOfPath(form.library.InfoPath(slot)) == name) {
            return slot;
        }
        first = first || !isFolder ? first : slot;
    }
    return first;
}

bool HasFolder(const Form_Main& form, const QString& name) {
    const auto slot = SlotOfFolder(form, name);
    return slot && NameOfPath(form.library.InfoPath(*slot)) == name;
}

// Turns pages until the folder is shown. Other music has other folders; there the first one of the page will
// do.
void Enter(Play& play, const QString& name) {
    constexpr int kRight = 39;
    constexpr int kConfirm = 13;
    for (int page = 0;
         !play.isOwnMusic && page < play.form.library.NbPages.value() && !HasFolder(play.form, name);
         ++page) {
        Press(play, kRight);
        Press(play, kRight);
    }
    if (const auto slot = SlotOfFolder(play.form, name)) {
        MoveTo(play, PlaceOfSlot(play.form, *slot));
        Press(play, kConfirm);
    }
}

// A page turn folds a page at growing speed, so its frames are about the root of twice the page's width.
// Events run twice in each frame.
int MiddleOfFold(const Form_Main& form) {
    return static_cast<int>(1.3 * std::sqrt(2.0 * std::max(form.theme.ZoneListPage(0).W.value(), 1)));
}

void CarryOut(Play& play, const Step& step) {
    switch (step.kind) {
    case Step::kKey:
        return Press(play, step.value);
    case Step::kTick:
        return Tick(play, step.value);
    case Step::kEnter:
        return Enter(play, step.name);
    case Step::kShootInKey:
        play.shootAfter = step.turns > 0 ? step.turns : MiddleOfFold(play.form);
        return Press(play, step.value);
    }
}

void CarryOutTheRest(Play& play) {
    while (play.next < play.situation.steps.size()) {
        CarryOut(play, play.situation.steps[play.next++]);
    }
    TakePicture(play);
}

// Steps after the keyboard has opened are for the keyboard.
void ShowModal(Play& play, const QString& dialog) {
    if (dialog == u"Form_KeyBoard") {
        Form_KeyBoard_Load(play.form);
        CarryOutTheRest(play);
        throw PictureTaken();
    }
}

bool PassEvent(Play& play) {
    EndIfInterrupted();
    if (play.shootAfter > 0 && --play.shootAfter == 0) {
        TakePicture(play);
        throw PictureTaken();
    }
    return false;
}

void Run(Play& play) {
    play.platform.pump.runPending = [&play] { return PassEvent(play); };
    play.platform.dialogs.showModal = [&play](const QString& dialog) { ShowModal(play, dialog); };
    Form_Load(play.form);
    CarryOutTheRest(play);
}

// Returns what stopped the jukebox; empty when nothing did.
QString RunSafely(Play& play) {
    try {
        Run(play);
        return QString();
    } catch (const PictureTaken&) {
        return QString();
    } catch (const PlayInterrupted&) {
        return QString();
    } catch (const ProgramEnd&) {
        return QStringLiteral("The jukebox ended.");
    } catch (const ProgramStop& stop) {
        return QStringLiteral("The jukebox ended with error %1").arg(WordsOf(stop.error));
    } catch (const SimulatedHang& hang) {
        return QStringLiteral("The jukebox would hang (%1).").arg(hang.wait);
    } catch (const std::exception& error) {
        return QStringLiteral("The jukebox stopped with error %1").arg(WordsOf(RunTimeErrorOf(error)));
    }
}

} // namespace

Stage::Stage(const QString& themeFolder, QString music) : music_(std::move(music)) {
    const QDir home(folder_.path());
    const bool isMade = folder_.isValid() && home.mkpath(QStringLiteral("themes")) &&
                        home.mkpath(QStringLiteral("playlists")) && home.mkpath(QStringLiteral("music")) &&
                        QFile::link(themeFolder, home.filePath(QStringLiteral("themes/") + kThemeName)) &&
                        MakeSampleMusic(home.filePath(QStringLiteral("music")));
    if (!isMade) {
        fault_ = QStringLiteral("the temporary folder \"%1\" cannot be filled").arg(folder_.path());
    }
}

bool Stage::UsesOwnMusic(const Situation& situation) const {
    return !music_.isEmpty() && !situation.needsSamples;
}

bool Stage::Prepare(const Situation& situation, const QSize& screen) {
    const QDir home(folder_.path());
    for (const char* state : {"stats.ini", "pathconfig.ini"}) {
        QFile::remove(home.filePath(QString::fromLatin1(state)));
    }
    IniFile config;
    for (const auto& [section, keys] : kSettings) {
        for (const QString& pair : QString::fromLatin1(keys).split(u',')) {
            config.SetValue(QString::fromLatin1(section), pair.section(u'=', 0, 0), pair.section(u'=', 1));
        }
    }
    const QString main = QStringLiteral("Main");
    config.SetValue(main, QStringLiteral("StartPath"),
                    UsesOwnMusic(situation) ? music_ : home.filePath(QStringLiteral("music")));
    config.SetValue(main, QStringLiteral("Orientation"),
                    screen.height() > screen.width() ? QStringLiteral("vertical")
                                                     : QStringLiteral("horizontal"));
    for (const auto& [key, value] : situation.settings) {
        config.SetValue(main, key, value);
    }
    QFile file(home.filePath(QStringLiteral("config.ini")));
    const QByteArray bytes = config.Bytes();
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

StagePicture Stage::Play(const Situation& situation, const QSize& screen) {
    if (!fault_.isEmpty() || !Prepare(situation, screen)) {
        return {QImage(), fault_.isEmpty() ? QStringLiteral("the settings cannot be written") : fault_};
    }
    SimulationOptions options;
    options.screens = {QRect(QPoint(0, 0), screen)};
    SimulatedPlatform platform(options);
    Form_Main form(platform.ports(), HandDown());
    form.shell.AppFolder = folder_.path();
    ::Play play{platform, form, situation, UsesOwnMusic(situation), 0, 0, QImage()};
    const QString fault = RunSafely(play);
    return {play.picture, fault};
}
