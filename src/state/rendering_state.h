// State of the rendering: the visible frame, the off-screen surfaces, the information lines, the big cover.
#pragma once

#include "core/integer.h"
#include "imaging/picture/cover_picture.h"
#include "imaging/picture/ready_pictures.h"
#include "imaging/picture/strip.h"
#include "imaging/picture/surface.h"
#include "state/box.h"

#include <QString>

struct FrameState {
    // The visible frame, in screen pixels. The caches, the rows of the queue and the rows of the menu are in
    // design pixels of the theme.
    Surface Picture_Main;
    // Screen pixels for one design pixel.
    double ZoneScaleX = 1.0;
    double ZoneScaleY = 1.0;
    WindowPlace Picture_MainVideo;
    Surface Picture_Video;
    // The track zone in its normal and its selected look.
    Surface Picture_Cache;
    Surface Picture_CacheHilight;
    // While a page turns: the old page and the frame being assembled.
    Surface Picture_CacheTmp;
    Surface Picture_CacheTmp2;
    // The rows of the queue: normal, selected, and for the touch mode.
    Strip Picture_Playlist;
    Strip Picture_PlaylistHilight;
    Strip Picture_PlaylistTmp;
    // The texts of the first two strips.
    StripTexts playlistTexts;
    StripTexts playlistHilightTexts;
    // The rows of the menu, normal and selected.
    Surface Picture_Command;
    Surface Picture_CommandHilight;
    // The last cover from a tag. It is not decoded until tmpCoverSource.isSettled is set.
    Surface Picture_TmpCover;
    LateTagPicture tmpCoverSource;

    // The state of the information lines, their blink phase, and their age in heartbeat ticks.
    QString BlockMainInfos;
    Integer16 InfosBlink;
    Integer16 InfosTicks;

    // Covers in the sizes in which they were last drawn.
    ReadyPictures readyCovers;
    // The last cover loaded from a file.
    CoverPicture ImgCover{readyCovers};
    // The source of the big cover: 0 none, 1 ImgCover, 2 Picture_TmpCover.
    Integer16 CoverKind;
    // The slot under the cursor in the last frame; -1 makes the next frame load the big cover again.
    Integer16 LastDrawnSlot;
};
