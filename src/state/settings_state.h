// State of the settings: config.ini as text, and the settings of the folder shown.
#pragma once

#include <QString>

#include <memory>

class IniFiles;

// Values stay text until they are used; yes-or-no settings are compared with "true" at each use.
struct SettingsState {
    // The parsed copies of all INI files; see IniFilesOf.
    std::shared_ptr<IniFiles> iniFiles;

    QString StartPath;
    QString Theme;
    QString Fullscreen;
    QString FullscreenSize;
    // The rectangle of the picture area. An empty value is not set.
    QString PositionLeft;
    QString PositionTop;
    QString PositionWidth;
    QString PositionHeight;
    QString Orientation;
    // The rectangle of the second video surface. An empty value is not set.
    QString VideoPositionLeft;
    QString VideoPositionTop;
    QString VideoPositionWidth;
    QString VideoPositionHeight;
    QString PlayTransitionSound;
    QString DefaultOrder;
    QString TactileMode;
    // The switches for covers and track numbers change with the folder shown.
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
    // The value of ShowBigCover in config.ini.
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

    // A setting that exists only per folder.
    QString ShowBigtitle;
    // The folder's own values of ShowCover and ShowTrackNum.
    QString ShowCoverFolder;
    QString ShowTrackNumFolder;
};
