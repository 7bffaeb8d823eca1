// State of the dialogs: what their controls hold, and what they hand to one another.
#pragma once

#include "core/bounded_array.h"
#include "core/integer.h"
#include "imaging/picture/surface.h"
#include "state/library_state.h"

#include <QString>
#include <QStringList>

#include <memory>

class QImage;

// The controls of the configuration dialog that hold one setting, with the kind of control and the key in the
// section "Main" of config.ini, in the order in which they are written.
// clang-format off
#define CONFIG_CONTROLS(ROW) \
    ROW(TEXT,        Text_PositionLeft,          "PositionLeft") \
    ROW(TEXT,        Text_PositionTop,           "PositionTop") \
    ROW(TEXT,        Text_PositionWidth,         "PositionWidth") \
    ROW(TEXT,        Text_PositionHeight,        "PositionHeight") \
    ROW(TEXT,        Text_VideoPositionLeft,     "VideoPositionLeft") \
    ROW(TEXT,        Text_VideoPositionTop,      "VideoPositionTop") \
    ROW(TEXT,        Text_VideoPositionWidth,    "VideoPositionWidth") \
    ROW(TEXT,        Text_VideoPositionHeight,   "VideoPositionHeight") \
    ROW(YES_OR_NO,   Check_Tactile,              "TactileMode") \
    ROW(ORIENTATION, Option_Orientation,         "Orientation") \
    ROW(CAPTION,     Label_StartPath,            "StartPath") \
    ROW(THEME,       Combo_Theme,                "Theme") \
    ROW(YES_OR_NO,   Option_PlayTransitionSound, "PlayTransitionSound") \
    ROW(ORDER,       Combo_DefaultOrder,         "DefaultOrder") \
    ROW(YES_OR_NO,   Option_ShowCover,           "ShowCover") \
    ROW(YES_OR_NO,   Option_ShowFolderCover,     "ShowFolderCover") \
    ROW(YES_OR_NO,   Option_ShowFileCover,       "ShowFileCover") \
    ROW(YES_OR_NO,   Option_ShowBigCover,        "ShowBigCover") \
    ROW(YES_OR_NO,   Option_ShowMP3TagCover,     "ShowMp3CoverTag") \
    ROW(YES_OR_NO,   Option_ShowTrackNumber,     "ShowTrackNum") \
    ROW(YES_OR_NO,   Option_MainVisible,         "ShowMainZone") \
    ROW(YES_OR_NO,   Option_MainActive,          "ActiveMainZone") \
    ROW(YES_OR_NO,   Option_PlaylistVisible,     "ShowPlaylistZone") \
    ROW(YES_OR_NO,   Option_PlaylistActive,      "ActivePlaylistZone") \
    ROW(YES_OR_NO,   Option_CommandVisible,      "ShowCommandZone") \
    ROW(YES_OR_NO,   Option_CommandActive,       "ActiveCommandZone") \
    ROW(YES_OR_NO,   Option_ManageCoin,          "ManageCoin")
// clang-format on

// The controls of one slot in the configuration dialog: Text_ZoneListGauche(i), Label_ZoneListGauche(i) and
// Command_ZoneListGauche(i), or the same with Droite.
struct SlotControls {
    // The label's text, and the place of its field over the preview.
    QString text;
    Box place;
    // The key combination: the names of its keys, and its codes joined by "|".
    QString Caption;
    QString Tag;
    bool Visible = false;
};

#define CONFIG_MEMBER(kind, control, key) QString control;

// The configuration dialog works on copies in its controls. A yes-or-no control holds "true" or "false",
// Option_Orientation "horizontal" or "vertical", a list its selected entry or nothing.
struct ConfigDialogState {
    bool Visible = false;
    CONFIG_CONTROLS(CONFIG_MEMBER)
    // The label of the music folder is red as long as no folder has been chosen.
    bool Label12IsRed = false;
    bool Command_OKEnabled = true;
    // The hidden list of the themes' folders, and their names.
    FolderList Dir1;
    QStringList Combo_ThemeList;

    // The codes of the 15 bindings, and the names of their keys.
    BoundedArray<QString, 14> KeyValues;
    BoundedArray<QString, 14> Label_KeyValue;

    // The preview of the selected theme: preview.jpg, zonelist.png at a quarter, the rows of a page. Null
    // when there is no picture.
    std::shared_ptr<const QImage> Image_Theme;
    std::shared_ptr<const QImage> Picture_ZoneList;
    Integer16 ZoneListNbTracks;
    // The slots of the left and the right page.
    BoundedArray<SlotControls, 9> Gauche;
    BoundedArray<SlotControls, 9> Droite;
};

#undef CONFIG_MEMBER

struct KeyAssignState {
    bool Visible = false;
    // The binding being changed, its name, and the code of the pressed key or -1.
    Integer16 KeyAssignIndex;
    QString KeyAssignTitle;
    Integer16 KeyAssignCode;
    QString Label_Key;
};

struct FolderDialogState {
    bool Visible = false;
    // The folder chosen on closing.
    QString SelectedDirectory;
    QStringList Drive1List;
    QString Drive1;
    // The open folder and its sub-folders; all entries: the folders above it, itself, its sub-folders.
    FolderList Dir1;
    QStringList Dir1Entries;
    // The highlighted entry; empty when there is none.
    QString Dir1Highlighted;
    // Set while a folder is being read.
    bool isReading = false;
};
