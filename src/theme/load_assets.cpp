// Loading the pictures and sounds of a theme.
#include "theme/load_assets.h"

#include "core/path_text.h"
#include "core/run_time_error.h"
#include "platform/media_graph.h"
#include "state/form_main.h"
#include "state/log.h"
#include "state/paths.h"

#include <array>

namespace {

struct PictureRow {
    const char* file;
    LatePicture ThemeAssets::*member;
};

using A = ThemeAssets;

// clang-format off
constexpr std::array kPictures = {
    PictureRow{"fade.png",                               &A::ImgFade},
    PictureRow{"wait.png",                               &A::ImgWait},
    PictureRow{"zonelist.png",                           &A::ImgZoneList},
    PictureRow{"zonelist_hilight.png",                   &A::ImgZoneListHilight},
    PictureRow{"zonelistWithNumTrack.png",               &A::ImgZoneListWithNumTrack},
    PictureRow{"zonelistWithNumTrack_hilight.png",       &A::ImgZoneListWithNumTrackHilight},
    PictureRow{"zonelist_nowplaying.png",                &A::ImgZoneListNowPlaying},
    PictureRow{"zonelist_comingnext.png",                &A::ImgZoneListComingNext},
    PictureRow{"zonelist_video.png",                     &A::ImgZoneListVideo},
    PictureRow{"zonelist_navigation.png",                &A::ImgZoneListNavigation},
    PictureRow{"main.png",                               &A::ImgMain},
    PictureRow{"main_active_selected.png",               &A::ImgMainActiveSelected},
    PictureRow{"main_active_selected_hilight.png",       &A::ImgMainActiveSelectedHilight},
    PictureRow{"main_active_unselected.png",             &A::ImgMainActiveUnselected},
    PictureRow{"main_active_unselected_hilight.png",     &A::ImgMainActiveUnselectedHilight},
    PictureRow{"playlist.png",                           &A::ImgPlaylist},
    PictureRow{"playlist_active_selected.png",           &A::ImgPlaylistActiveSelected},
    PictureRow{"playlist_active_selected_hilight.png",   &A::ImgPlaylistActiveSelectedHilight},
    PictureRow{"playlist_active_unselected.png",         &A::ImgPlaylistActiveUnselected},
    PictureRow{"playlist_active_unselected_hilight.png", &A::ImgPlaylistActiveUnselectedHilight},
    PictureRow{"playlist_playlisthilight.png",           &A::ImgPlaylistPlaylistHilight},
    PictureRow{"command.png",                            &A::ImgCommand},
    PictureRow{"command_hilight.png",                    &A::ImgCommandHilight},
    PictureRow{"command_listbox.png",                    &A::ImgCommandListbox},
    PictureRow{"command_listbox_hilight.png",            &A::ImgCommandListboxHilight},
    PictureRow{"command_btn.png",                        &A::ImgCommandBtn},
    PictureRow{"command_btn_hilight.png",                &A::ImgCommandBtnHilight},
};

using Graph = std::shared_ptr<MediaGraph>;

struct SoundRow {
    const char* file;
    const char* name;
    Graph ThemeAssets::*member;
    Graph ThemeAssets::*position; // null for SoundCharge
};

constexpr std::array kSounds = {
    SoundRow{"charge.mp3",     "SoundCharge",     &A::SoundCharge,     nullptr},
    SoundRow{"insertcoin.mp3", "SoundInsertCoin", &A::SoundInsertCoin, &A::SoundInsertCoinPosition},
    SoundRow{"move.mp3",       "SoundMove",       &A::SoundMove,       &A::SoundMovePosition},
    SoundRow{"NoCredit.mp3",   "SoundNoCredit",   &A::SoundNoCredit,   &A::SoundNoCreditPosition},
    SoundRow{"PageTurn.mp3",   "SoundPageTurn",   &A::SoundPageTurn,   &A::SoundPageTurnPosition},
};
// clang-format on

static_assert(kPictures.size() == 27 && kSounds.size() == 5);

} // namespace

QStringList ThemePictures() {
    QStringList names;
    for (const PictureRow& row : kPictures) {
        names += QString::fromLatin1(row.file);
    }
    return names;
}

QStringList ThemeSounds() {
    QStringList names;
    for (const SoundRow& row : kSounds) {
        names += QString::fromLatin1(row.file);
    }
    return names;
}

void LoadImages(Form_Main& form) {
    WriteLog(form, QStringLiteral(" : Chargement des images"));
    const PicturePorts ports{form.files, form.zlib, form.pump, form.pictures};
    for (const PictureRow& row : kPictures) {
        (form.assets.*row.member)
            .LoadPicture_File(ports, *form.assets.pictureQueue,
                              ThemeFile(form, QString::fromLatin1(row.file)));
    }
    form.assets.pictureQueue->ForgetAhead();
}

void RenderThemeSound(Form_Main& form, MediaGraph& graph, const QString& name) {
    const auto where = [&] {
        return QStringLiteral("a sound of the theme \"%1\" (expected a sound file)").arg(form.settings.Theme);
    };
    TellingWhere(where, [&] { graph.RenderFile(ThemeFile(form, name)); });
}

void LoadSounds(Form_Main& form) {
    WriteLog(form, QStringLiteral(" : Chargement des sons"));
    for (const SoundRow& row : kSounds) {
        form.assets.*row.member = form.graphs.CreateGraph(QString::fromLatin1(row.name));
        RenderThemeSound(form, *(form.assets.*row.member), QString::fromLatin1(row.file));
        if (row.position != nullptr) {
            form.assets.*row.position = form.assets.*row.member;
        }
    }
}
