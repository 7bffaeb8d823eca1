// State of the settings: config.ini as text, and the settings of the folder shown.
#pragma once

#include "settings/ini_files.h"

#include <QString>

// Values stay text until used; yes-or-no settings are compared with "true" where they are used.
struct SettingsState {
    // The parsed copies of all INI files.
    IniFiles iniFiles;

    QString StartPath;
    QString Theme;
    QString Fullscreen;
    QString FullscreenSize;
    // Rectangle of the picture area; an empty value is not set.
    QString PositionLeft;
    QString PositionTop;
    QString PositionWidth;
    QString PositionHeight;
    QString Orientation;
    // Rectangle of the second video surface; an empty value is not set.
    QString VideoPositionLeft;
    QString VideoPositionTop;
    QString VideoPositionWidth;
    QString VideoPositionHeight;
    QString PlayTransitionSound;
    QString DefaultOrder;
    QString TactileMode;
    // The cover and number switches follow the folder shown.
    QString ShowFolderCover;
    QString ShowFileCover;
    QString ShowCover;
    QString ShowBigCover;
    QString ShowMp3CoverTag;
    QString ShowTrackNum;
    QString ShowMainZone;
    QString ActiveMainZone;
    QString ShowPlaylistZone;
    QString ActivePlaylistZone;
    QString ShowCommandZone;
    QString ActiveCommandZone;
    QString ManageCoin;
    // The installation-wide value of ShowBigCover.
    QString ShowBigCoverDefault;

    // Key bindings: virtual-key codes as decimal text.
    QString KeyHaut;
    QString KeyBas;
    QString KeyGauche;
    QString KeyDroite;
    QString KeyValider;
    QString KeyRetour;
    QString KeyConfig;
    QString KeyQuitter;
    QString KeyGotoNextZone;
    QString KeyInsertCoin;
    QString KeyAddToFav;
    QString KeyPreview;
    QString KeyStop;
    QString KeyPlay;
    QString KeyPause;
    QString KeyNext;

    // The LED controller.
    QString RGBLedsActive;
    QString RGBLedsCommport;
    QString RGBLedsNbLeds;
    QString RGBLedsStereo;

    // Settings that only a folder has.
    QString ShowBigtitle;
    // The folder's own values of two switches, apart from the ones above.
    QString ShowCoverFolder;
    QString ShowTrackNumFolder;
};
