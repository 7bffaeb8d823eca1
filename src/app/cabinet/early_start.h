// What the first frame needs, begun before there is a screen.
#pragma once

#include "imaging/late_picture.h"
#include "platform/event_pump.h"
#include "platform/pictures/picture_loader.h"
#include "platform/posix/dlopened_zlib.h"
#include "platform/posix/posix_files.h"

#include <QString>

#include <functional>
#include <future>
#include <memory>

// Runs a routine that only saves time later on a thread of its own; does nothing when the system has no more
// threads. The result waits for the routine at its end.
std::future<void> RunAlongside(std::function<void()> routine);

// While the toolkit connects to the screen the processor has time: the fonts and the decoders' registry are
// read, and the pictures of the theme that config.ini names are decoded. Outlives the jukebox.
class EarlyStart {
public:
    explicit EarlyStart(const QString& appFolder);
    // The queue that decodes the pictures, once.
    std::unique_ptr<PictureQueue> TakePictures() { return std::move(queue_); }

private:
    // There is nobody yet to hand events to.
    struct NoEvents : EventPump {
        void DoEvents() override {}
        void Wait(double /*milliseconds*/) override {}
    };

    PosixFiles files_;
    DlopenedZlib zlib_;
    NoEvents pump_;
    PictureLoader pictures_;
    std::unique_ptr<PictureQueue> queue_ = std::make_unique<PictureQueue>();
    // Waits for its routine at the end.
    std::future<void> libraries_;
};
