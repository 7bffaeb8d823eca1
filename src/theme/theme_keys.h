// Every key of theme.ini as one list: from it come the members of the theme record, the reader and the
// console's names.
#pragma once

// INTEGER(section, key) is a 16-bit number, TEXT(section, key) a font's name or a colour, PAGE(section, key,
// array, index) a 16-bit number kept in an array of the two pages. The lists stand in reading order.

// clang-format off

// The track zone and its two pages.
#define THEME_ZONE_KEYS(INTEGER, TEXT, PAGE) \
    INTEGER("zonelist",      ZoneListX) \
    INTEGER("zonelist",      ZoneListY) \
    INTEGER("zonelist",      ZoneListWidth) \
    INTEGER("zonelist",      ZoneListHeight) \
    PAGE("zonelist",         ZoneListPageGaucheX, ZoneListPageX, 0) \
    PAGE("zonelist",         ZoneListPageGaucheY, ZoneListPageY, 0) \
    PAGE("zonelist",         ZoneListPageGaucheWidth, ZoneListPageWidth, 0) \
    PAGE("zonelist",         ZoneListPageGaucheHeight, ZoneListPageHeight, 0) \
    PAGE("zonelist",         ZoneListPageDroiteX, ZoneListPageX, 1) \
    PAGE("zonelist",         ZoneListPageDroiteY, ZoneListPageY, 1) \
    PAGE("zonelist",         ZoneListPageDroiteWidth, ZoneListPageWidth, 1) \
    PAGE("zonelist",         ZoneListPageDroiteHeight, ZoneListPageHeight, 1)

// The corners of the blocks in the horizontal mode.
// Deliberate D-01: the section is spelled "horitontal". One expects "horizontal"; the spelling stays, because
// themes in the field carry it.
#define THEME_HORIZONTAL_KEYS(INTEGER, TEXT, PAGE) \
    INTEGER("horitontal",    BlockMainX) \
    INTEGER("horitontal",    BlockMainY) \
    INTEGER("horitontal",    BlockPlaylistX) \
    INTEGER("horitontal",    BlockPlaylistY) \
    INTEGER("horitontal",    BlockCommandX) \
    INTEGER("horitontal",    BlockCommandY)

// The corners of the blocks in every other mode.
#define THEME_VERTICAL_KEYS(INTEGER, TEXT, PAGE) \
    INTEGER("vertical",      BlockMainX) \
    INTEGER("vertical",      BlockMainY) \
    INTEGER("vertical",      BlockPlaylistX) \
    INTEGER("vertical",      BlockPlaylistY) \
    INTEGER("vertical",      BlockCommandX) \
    INTEGER("vertical",      BlockCommandY)

// The navigation buttons of the touch mode. The small x belongs to the keys.
#define THEME_NAVIGATION_KEYS(INTEGER, TEXT, PAGE) \
    INTEGER("zonelist",      ZoneListNavigationBackx) \
    INTEGER("zonelist",      ZoneListNavigationBackY) \
    INTEGER("zonelist",      ZoneListNavigationBackWidth) \
    INTEGER("zonelist",      ZoneListNavigationBackHeight) \
    INTEGER("zonelist",      ZoneListNavigationPreviewPagex) \
    INTEGER("zonelist",      ZoneListNavigationPreviewPageY) \
    INTEGER("zonelist",      ZoneListNavigationPreviewPageWidth) \
    INTEGER("zonelist",      ZoneListNavigationPreviewPageHeight) \
    INTEGER("zonelist",      ZoneListNavigationNextPagex) \
    INTEGER("zonelist",      ZoneListNavigationNextPageY) \
    INTEGER("zonelist",      ZoneListNavigationNextPageWidth) \
    INTEGER("zonelist",      ZoneListNavigationNextPageHeight)

// The list of queued tracks.
#define THEME_PLAYLIST_KEYS(INTEGER, TEXT, PAGE) \
    INTEGER("BlockPlaylist", BlockPlaylistPlaylistX) \
    INTEGER("BlockPlaylist", BlockPlaylistPlaylistY) \
    INTEGER("BlockPlaylist", BlockPlaylistPlaylistW) \
    INTEGER("BlockPlaylist", BlockPlaylistPlaylistH) \
    TEXT("BlockPlaylist",    BlockPlaylistPlaylistFont) \
    INTEGER("BlockPlaylist", BlockPlaylistPlaylistFontSize) \
    TEXT("BlockPlaylist",    BlockPlaylistPlaylistFontColor) \
    INTEGER("BlockPlaylist", BlockPlaylistPlaylistFontDecal) \
    TEXT("BlockPlaylist",    BlockPlaylistPlaylistFontHilight) \
    INTEGER("BlockPlaylist", BlockPlaylistPlaylistFontSizeHilight) \
    TEXT("BlockPlaylist",    BlockPlaylistPlaylistFontColorHilight) \
    INTEGER("BlockPlaylist", BlockPlaylistPlaylistFontDecalHilight)

// The Main block.
#define THEME_MAIN_KEYS(INTEGER, TEXT, PAGE) \
    INTEGER("BlockMain",     BlockMainInsertCoinX) \
    INTEGER("BlockMain",     BlockMainInsertCoinY) \
    INTEGER("BlockMain",     BlockMainInsertCoinW) \
    INTEGER("BlockMain",     BlockMainInsertCoinH) \
    TEXT("BlockMain",        BlockMainInsertCoinFont) \
    INTEGER("BlockMain",     BlockMainInsertCoinFontSize) \
    TEXT("BlockMain",        BlockMainInsertCoinFontColor) \
    INTEGER("BlockMain",     BlockMainRemainX) \
    INTEGER("BlockMain",     BlockMainRemainY) \
    INTEGER("BlockMain",     BlockMainRemainW) \
    INTEGER("BlockMain",     BlockMainRemainH) \
    TEXT("BlockMain",        BlockMainRemainFont) \
    INTEGER("BlockMain",     BlockMainRemainFontSize) \
    TEXT("BlockMain",        BlockMainRemainFontColor) \
    INTEGER("BlockMain",     BlockMainInfosZoneLigne1X) \
    INTEGER("BlockMain",     BlockMainInfosZoneLigne1Y) \
    INTEGER("BlockMain",     BlockMainInfosZoneLigne1W) \
    INTEGER("BlockMain",     BlockMainInfosZoneLigne1H) \
    TEXT("BlockMain",        BlockMainInfosZoneLigne1Font) \
    INTEGER("BlockMain",     BlockMainInfosZoneLigne1FontSize) \
    TEXT("BlockMain",        BlockMainInfosZoneLigne1FontColor) \
    INTEGER("BlockMain",     BlockMainInfosZoneLigne2X) \
    INTEGER("BlockMain",     BlockMainInfosZoneLigne2Y) \
    INTEGER("BlockMain",     BlockMainInfosZoneLigne2W) \
    INTEGER("BlockMain",     BlockMainInfosZoneLigne2H) \
    TEXT("BlockMain",        BlockMainInfosZoneLigne2Font) \
    INTEGER("BlockMain",     BlockMainInfosZoneLigne2FontSize) \
    TEXT("BlockMain",        BlockMainInfosZoneLigne2FontColor) \
    INTEGER("BlockMain",     BlockMainBtnPreviewX) \
    INTEGER("BlockMain",     BlockMainBtnPreviewY) \
    INTEGER("BlockMain",     BlockMainBtnPreviewW) \
    INTEGER("BlockMain",     BlockMainBtnPreviewH) \
    INTEGER("BlockMain",     BlockMainBtnStopX) \
    INTEGER("BlockMain",     BlockMainBtnStopY) \
    INTEGER("BlockMain",     BlockMainBtnStopW) \
    INTEGER("BlockMain",     BlockMainBtnStopH) \
    INTEGER("BlockMain",     BlockMainBtnPlayX) \
    INTEGER("BlockMain",     BlockMainBtnPlayY) \
    INTEGER("BlockMain",     BlockMainBtnPlayW) \
    INTEGER("BlockMain",     BlockMainBtnPlayH) \
    INTEGER("BlockMain",     BlockMainBtnPauseX) \
    INTEGER("BlockMain",     BlockMainBtnPauseY) \
    INTEGER("BlockMain",     BlockMainBtnPauseW) \
    INTEGER("BlockMain",     BlockMainBtnPauseH) \
    INTEGER("BlockMain",     BlockMainBtnNextX) \
    INTEGER("BlockMain",     BlockMainBtnNextY) \
    INTEGER("BlockMain",     BlockMainBtnNextW) \
    INTEGER("BlockMain",     BlockMainBtnNextH)

// The buttons of the queue.
#define THEME_PLAYLIST_BUTTON_KEYS(INTEGER, TEXT, PAGE) \
    INTEGER("BlockPlaylist", BlockPlaylistBtnDownX) \
    INTEGER("BlockPlaylist", BlockPlaylistBtnDownY) \
    INTEGER("BlockPlaylist", BlockPlaylistBtnDownW) \
    INTEGER("BlockPlaylist", BlockPlaylistBtnDownH) \
    INTEGER("BlockPlaylist", BlockPlaylistBtnUpX) \
    INTEGER("BlockPlaylist", BlockPlaylistBtnUpY) \
    INTEGER("BlockPlaylist", BlockPlaylistBtnUpW) \
    INTEGER("BlockPlaylist", BlockPlaylistBtnUpH) \
    INTEGER("BlockPlaylist", BlockPlaylistBtnRemoveX) \
    INTEGER("BlockPlaylist", BlockPlaylistBtnRemoveY) \
    INTEGER("BlockPlaylist", BlockPlaylistBtnRemoveW) \
    INTEGER("BlockPlaylist", BlockPlaylistBtnRemoveH) \
    INTEGER("BlockPlaylist", BlockPlaylistBtnLoadX) \
    INTEGER("BlockPlaylist", BlockPlaylistBtnLoadY) \
    INTEGER("BlockPlaylist", BlockPlaylistBtnLoadW) \
    INTEGER("BlockPlaylist", BlockPlaylistBtnLoadH) \
    INTEGER("BlockPlaylist", BlockPlaylistBtnSaveX) \
    INTEGER("BlockPlaylist", BlockPlaylistBtnSaveY) \
    INTEGER("BlockPlaylist", BlockPlaylistBtnSaveW) \
    INTEGER("BlockPlaylist", BlockPlaylistBtnSaveH)

// Rows in a column and the text styles of a slot.
#define THEME_SLOT_STYLE_KEYS(INTEGER, TEXT, PAGE) \
    INTEGER("zonelist",      ZoneListNbTracksParColonne) \
    TEXT("zonelist",         ZoneListPisteNumSaisieFont) \
    INTEGER("zonelist",      ZoneListPisteNumSaisieFontSize) \
    TEXT("zonelist",         ZoneListPisteNumSaisieFontColor) \
    TEXT("zonelist",         ZoneListPisteNumSaisieFontHilight) \
    INTEGER("zonelist",      ZoneListPisteNumSaisieFontSizeHilight) \
    TEXT("zonelist",         ZoneListPisteNumSaisieFontColorHilight) \
    TEXT("zonelist",         ZoneListPisteNumPisteFont) \
    INTEGER("zonelist",      ZoneListPisteNumPisteFontSize) \
    TEXT("zonelist",         ZoneListPisteNumPisteFontColor) \
    TEXT("zonelist",         ZoneListPisteNumPisteFontHilight) \
    INTEGER("zonelist",      ZoneListPisteNumPisteFontSizeHilight) \
    TEXT("zonelist",         ZoneListPisteNumPisteFontColorHilight) \
    TEXT("zonelist",         ZoneListPisteTitreTitreFont) \
    INTEGER("zonelist",      ZoneListPisteTitreTitreFontSize) \
    TEXT("zonelist",         ZoneListPisteTitreTitreFontColor) \
    TEXT("zonelist",         ZoneListPisteTitreInterpreteFont) \
    INTEGER("zonelist",      ZoneListPisteTitreInterpreteFontSize) \
    TEXT("zonelist",         ZoneListPisteTitreInterpreteFontColor) \
    TEXT("zonelist",         ZoneListPisteTitreTitreFontHilight) \
    INTEGER("zonelist",      ZoneListPisteTitreTitreFontSizeHilight) \
    TEXT("zonelist",         ZoneListPisteTitreTitreFontColorHilight) \
    TEXT("zonelist",         ZoneListPisteTitreInterpreteFontHilight) \
    INTEGER("zonelist",      ZoneListPisteTitreInterpreteFontSizeHilight) \
    TEXT("zonelist",         ZoneListPisteTitreInterpreteFontColorHilight)

// The texts of the command menu.
#define THEME_COMMAND_KEYS(INTEGER, TEXT, PAGE) \
    INTEGER("zonecommand",   BlockCommandListBoxTexteX) \
    INTEGER("zonecommand",   BlockCommandListBoxTexteY) \
    INTEGER("zonecommand",   BlockCommandListBoxTexteW) \
    INTEGER("zonecommand",   BlockCommandListBoxTexteH) \
    TEXT("zonecommand",      BlockCommandListBoxTexteFont) \
    INTEGER("zonecommand",   BlockCommandListBoxTexteFontSize) \
    TEXT("zonecommand",      BlockCommandListBoxTexteFontColor) \
    TEXT("zonecommand",      BlockCommandListBoxTexteFontHilight) \
    INTEGER("zonecommand",   BlockCommandListBoxTexteFontSizeHilight) \
    TEXT("zonecommand",      BlockCommandListBoxTexteFontColorHilight) \
    INTEGER("zonecommand",   BlockCommandListBoxChoiceTexteX) \
    INTEGER("zonecommand",   BlockCommandListBoxChoiceTexteY) \
    INTEGER("zonecommand",   BlockCommandListBoxChoiceTexteW) \
    INTEGER("zonecommand",   BlockCommandListBoxChoiceTexteH) \
    TEXT("zonecommand",      BlockCommandListBoxChoiceTexteFont) \
    INTEGER("zonecommand",   BlockCommandListBoxChoiceTexteFontSize) \
    TEXT("zonecommand",      BlockCommandListBoxChoiceTexteFontColor) \
    TEXT("zonecommand",      BlockCommandListBoxChoiceTexteFontHilight) \
    INTEGER("zonecommand",   BlockCommandListBoxChoiceTexteFontSizeHilight) \
    TEXT("zonecommand",      BlockCommandListBoxChoiceTexteFontColorHilight) \
    INTEGER("zonecommand",   BlockCommandBtnTexteX) \
    INTEGER("zonecommand",   BlockCommandBtnTexteY) \
    INTEGER("zonecommand",   BlockCommandBtnTexteW) \
    INTEGER("zonecommand",   BlockCommandBtnTexteH) \
    TEXT("zonecommand",      BlockCommandBtnTexteFont) \
    INTEGER("zonecommand",   BlockCommandBtnTexteFontSize) \
    TEXT("zonecommand",      BlockCommandBtnTexteFontColor) \
    TEXT("zonecommand",      BlockCommandBtnTexteFontHilight) \
    INTEGER("zonecommand",   BlockCommandBtnTexteFontSizeHilight) \
    TEXT("zonecommand",      BlockCommandBtnTexteFontColorHilight)

// The fields of a slot, read for each of the 20 slots from a section of its own.
#define SLOT_KEYS(INTEGER, TEXT) \
    INTEGER(ZoneListPisteNumSaisieX) \
    INTEGER(ZoneListPisteNumSaisieY) \
    INTEGER(ZoneListPisteNumSaisieW) \
    INTEGER(ZoneListPisteNumSaisieH) \
    TEXT(ZoneListPisteNumSaisieLibele) \
    TEXT(ZoneListPisteNumSaisieKeys) \
    INTEGER(ZoneListPisteNumPisteX) \
    INTEGER(ZoneListPisteNumPisteY) \
    INTEGER(ZoneListPisteNumPisteW) \
    INTEGER(ZoneListPisteNumPisteH) \
    INTEGER(ZoneListPisteCoverX) \
    INTEGER(ZoneListPisteCoverY) \
    INTEGER(ZoneListPisteCoverW) \
    INTEGER(ZoneListPisteCoverH) \
    INTEGER(ZoneListPisteTitreX) \
    INTEGER(ZoneListPisteTitreY) \
    INTEGER(ZoneListPisteTitreW) \
    INTEGER(ZoneListPisteTitreH) \
    INTEGER(ZoneListPisteHilightX) \
    INTEGER(ZoneListPisteHilightY) \
    INTEGER(ZoneListPisteHilightW) \
    INTEGER(ZoneListPisteHilightH)

// clang-format on
