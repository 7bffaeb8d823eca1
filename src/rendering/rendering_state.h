// State of the rendering: the visible frame, the off-screen surfaces, the information lines, the big cover.
#pragma once

#include "core/integer.h"
#include "imaging/cover_picture.h"
#include "imaging/ready_pictures.h"
#include "imaging/strip.h"
#include "imaging/surface.h"

#include <QString>

// A place that a video is shown in, in screen pixels; the media graph draws the pixels itself.
struct VideoSurface {
    int Left = 0;
    int Top = 0;
    int Width = 0;
    int Height = 0;
    bool Visible = false;
};

struct RenderingState {
    // The visible frame, in screen pixels; all other surfaces are in design pixels of the theme.
    Surface Picture_Main;
    VideoSurface Picture_MainVideo;
    Surface Picture_Video;
    // The track zone in its normal and its selected look.
    Surface Picture_Cache;
    Surface Picture_CacheHilight;
    // The outgoing page and the frame being assembled while a page turns.
    Surface Picture_CacheTmp;
    Surface Picture_CacheTmp2;
    // The rows of the queue, normal, selected, and as scrolled by touch.
    Strip Picture_Playlist;
    Strip Picture_PlaylistHilight;
    Strip Picture_PlaylistTmp;
    // The texts of the first two.
    StripTexts playlistTexts;
    StripTexts playlistHilightTexts;
    // The rows of the menu, normal and selected.
    Surface Picture_Command;
    Surface Picture_CommandHilight;
    // The last picture from a tag; not yet decoded while its source says so.
    Surface Picture_TmpCover;
    LateTagPicture tmpCoverSource;

    // What the information lines show, their blink phase and age in heartbeat ticks.
    QString BlockMainInfos;
    Integer16 InfosBlink;
    Integer16 InfosTicks;

    // Covers ready in the sizes in which they were drawn last.
    ReadyPictures readyCovers;
    // The last cover loaded from a file.
    CoverPicture ImgCover{readyCovers};
    // What the big cover holds: 0 nothing, 1 ImgCover, 2 Picture_TmpCover.
    Integer16 CoverKind;
    // The slot last shown as selected; -1 makes the next frame load its big cover anew.
    Integer16 LastDrawnSlot;
};
