// Screens for the tests of videos.
#pragma once

#include "platform/video_screen.h"

namespace media {

// Shows nothing.
struct NoScreen : VideoScreen {
    void Attach(VideoPictures&) override {}
    void Detach(VideoPictures&) override {}
    void Wake() override {}
    void Place(const QString&, const QRect&) override {}
    void SetVisible(bool) override {}
};

} // namespace media
