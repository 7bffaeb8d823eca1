// State of the theme: the theme record, the slots of the two pages, the command menu, pictures and sounds.
#pragma once

#include "core/bounded_array.h"
#include "core/integer.h"
#include "imaging/late_picture.h"
#include "platform/media_graph.h"
#include "theme/theme_keys.h"

#include <QString>

#include <memory>

#define THEME_MEMBER_INTEGER(section, key) Integer16 key;
#define THEME_MEMBER_TEXT(section, key) QString key;
#define THEME_MEMBER_PAGE(section, key, array, index)

// The theme record: a member for each key of theme.ini, in pixels of the theme's own design size.
struct ThemeRecord {
    THEME_ZONE_KEYS(THEME_MEMBER_INTEGER, THEME_MEMBER_TEXT, THEME_MEMBER_PAGE)
    // The rectangles of the pages: element 0 left, 1 right.
    BoundedArray<Integer16, 1> ZoneListPageX;
    BoundedArray<Integer16, 1> ZoneListPageY;
    BoundedArray<Integer16, 1> ZoneListPageWidth;
    BoundedArray<Integer16, 1> ZoneListPageHeight;
    THEME_VERTICAL_KEYS(THEME_MEMBER_INTEGER, THEME_MEMBER_TEXT, THEME_MEMBER_PAGE)
    THEME_NAVIGATION_KEYS(THEME_MEMBER_INTEGER, THEME_MEMBER_TEXT, THEME_MEMBER_PAGE)
    THEME_PLAYLIST_KEYS(THEME_MEMBER_INTEGER, THEME_MEMBER_TEXT, THEME_MEMBER_PAGE)
    THEME_MAIN_KEYS(THEME_MEMBER_INTEGER, THEME_MEMBER_TEXT, THEME_MEMBER_PAGE)
    THEME_PLAYLIST_BUTTON_KEYS(THEME_MEMBER_INTEGER, THEME_MEMBER_TEXT, THEME_MEMBER_PAGE)
    THEME_SLOT_STYLE_KEYS(THEME_MEMBER_INTEGER, THEME_MEMBER_TEXT, THEME_MEMBER_PAGE)
    THEME_COMMAND_KEYS(THEME_MEMBER_INTEGER, THEME_MEMBER_TEXT, THEME_MEMBER_PAGE)

    // Screen pixels for one design pixel.
    double ZoneScaleX = 1.0;
    double ZoneScaleY = 1.0;
};

#undef THEME_MEMBER_INTEGER
#undef THEME_MEMBER_TEXT
#undef THEME_MEMBER_PAGE

#define SLOT_MEMBER_INTEGER(field) BoundedTable<Integer16, 2, 100> field;
#define SLOT_MEMBER_TEXT(field) BoundedTable<QString, 2, 100> field;

// The slots of the two pages, by column (1 left, 2 right) and row (1 to 10 are read), in design pixels of the
// track zone.
struct SlotRecord {
    SLOT_KEYS(SLOT_MEMBER_INTEGER, SLOT_MEMBER_TEXT)
};

#undef SLOT_MEMBER_INTEGER
#undef SLOT_MEMBER_TEXT

// The operator's menus: menus, rows and choices count from 1.
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

    // The graphs of the sounds, and their positions beside them.
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
