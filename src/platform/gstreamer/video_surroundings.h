// What a video uses of the rest of the cabinet.
#pragma once

#include "platform/gstreamer/opening.h"

#include <functional>
#include <memory>

class AudioOutput;
struct VideoScreen;

// The screen outlives the videos.
struct VideoSurroundings {
    VideoScreen& screen;
    // The music's output; null while there is none.
    std::function<std::shared_ptr<AudioOutput>()> output;
    std::function<void(const QString&)> log = [](const QString&) {};
    // A video opens within five seconds or not at all.
    OpeningLimits limits = {.looks = 50};
};
