// State of the theme: the theme record, the slots of the two pages, the command menu, pictures and sounds.
#pragma once

#include "core/bounded_array.h"
#include "core/integer.h"
#include "imaging/picture/late_picture.h"
#include "platform/media_graph.h"
#include "state/box.h"
#include "state/theme_keys.h"

#include <QString>

#include <memory>

#define MEMBER(kind, section, name) MEMBER_OF_##kind(name)

// The theme record: one member per row of the lists, in design pixels of the theme.
struct ThemeRecord {
    THEME_ZONE_KEYS(MEMBER)
    // The rectangles of the pages: element 0 left, 1 right.
    BoundedArray<Box16, 1> ZoneListPage;
    THEME_VERTICAL_KEYS(MEMBER)
    THEME_NAVIGATION_KEYS(MEMBER)
    THEME_PLAYLIST_KEYS(MEMBER)
    THEME_MAIN_KEYS(MEMBER)
    THEME_PLAYLIST_BUTTON_KEYS(MEMBER)
    THEME_SLOT_STYLE_KEYS(MEMBER)
    THEME_COMMAND_KEYS(MEMBER)
};

#undef MEMBER

#define TABLE_OF_TEXT(name) BoundedTable<QString, 2, 100> name;
#define TABLE_OF_RECT(name) BoundedTable<Box16, 2, 100> name;
#define TABLE(kind, name) TABLE_OF_##kind(name)

// The slots of the two pages, by column (1 left, 2 right) and row (rows 1 to 10 are read), in design pixels
// of the track zone.
struct SlotRecord {
    SLOT_KEYS(TABLE)
};

#undef TABLE_OF_TEXT
#undef TABLE_OF_RECT
#undef TABLE

// The operator's menus. Menus, rows and choices are numbered from 1.
struct CommandMenu {
    BoundedArray<Integer16, 100> CommandRowCount;
    BoundedTable<QString, 100, 100> CommandType;
    BoundedTable<QString, 100, 100> CommandAction;
    BoundedTable<QString, 100, 100> CommandLabel;
    SparseCube<QString, 100> CommandChoiceValue;
    SparseCube<QString, 100> CommandChoiceLabel;
    BoundedTable<Integer16, 100, 100> CommandChoice;
    BoundedTable<QString, 100, 100> CommandParam;
    Integer16 CommandCurrentMenu;
    Integer16 CommandCurrentId;
};

// The pictures and sounds of the theme folder.
struct ThemeAssets {
    std::unique_ptr<PictureQueue> pictureQueue = std::make_unique<PictureQueue>();
    LatePicture ImgFade;
    LatePicture ImgWait;
    LatePicture ImgZoneList;
    LatePicture ImgZoneListHilight;
    LatePicture ImgZoneListWithNumTrack;
    LatePicture ImgZoneListWithNumTrackHilight;
    LatePicture ImgZoneListNowPlaying;
    LatePicture ImgZoneListComingNext;
    LatePicture ImgZoneListVideo;
    LatePicture ImgZoneListNavigation;
    LatePicture ImgMain;
    LatePicture ImgMainActiveSelected;
    LatePicture ImgMainActiveSelectedHilight;
    LatePicture ImgMainActiveUnselected;
    LatePicture ImgMainActiveUnselectedHilight;
    LatePicture ImgPlaylist;
    LatePicture ImgPlaylistActiveSelected;
    LatePicture ImgPlaylistActiveSelectedHilight;
    LatePicture ImgPlaylistActiveUnselected;
    LatePicture ImgPlaylistActiveUnselectedHilight;
    LatePicture ImgPlaylistPlaylistHilight;
    LatePicture ImgCommand;
    LatePicture ImgCommandHilight;
    LatePicture ImgCommandListbox;
    LatePicture ImgCommandListboxHilight;
    LatePicture ImgCommandBtn;
    LatePicture ImgCommandBtnHilight;

    // The graphs of the sounds, and a second reference to all but the first, for its position.
    std::shared_ptr<MediaGraph> SoundCharge;
    std::shared_ptr<MediaGraph> SoundInsertCoin;
    std::shared_ptr<MediaGraph> SoundInsertCoinPosition;
    std::shared_ptr<MediaGraph> SoundMove;
    std::shared_ptr<MediaGraph> SoundMovePosition;
    std::shared_ptr<MediaGraph> SoundNoCredit;
    std::shared_ptr<MediaGraph> SoundNoCreditPosition;
    std::shared_ptr<MediaGraph> SoundPageTurn;
    std::shared_ptr<MediaGraph> SoundPageTurnPosition;
};
