// Taking pictures from a video and handing them to its window.
#include "platform/qt/qt_video_screen.h"

#include "platform/qt/qt_windows.h"

QtVideoScreen::QtVideoScreen(QtWindows& windows) : windows_(windows) {
    next_.setSingleShot(true);
    next_.setTimerType(Qt::PreciseTimer);
    QObject::connect(&next_, &QTimer::timeout, [this] { TakeDue(); });
}

void QtVideoScreen::Attach(VideoPictures& pictures) {
    pictures_ = &pictures;
    picture_ = {};
    owner_.clear();
    visible_ = true;
    Wake();
}

void QtVideoScreen::Detach(VideoPictures& pictures) {
    if (pictures_ != &pictures) {
        return;
    }
    pictures_ = nullptr;
    next_.stop();
    picture_ = {};
    windows_.HideVideo();
}

void QtVideoScreen::Wake() {
    next_.start(0);
}

void QtVideoScreen::TakeDue() {
    if (pictures_ == nullptr) {
        return;
    }
    if (std::optional<VideoPicture> due = pictures_->TakeDue()) {
        picture_ = std::move(*due);
        Show();
    }
    if (const std::optional<int> wait = pictures_->NextDueIn()) {
        next_.start(*wait);
    }
}

void QtVideoScreen::Place(const QString& owner, const QRect& place) {
    if (owner != owner_ || place != place_) {
        owner_ = owner;
        place_ = place;
        Show();
    }
}

void QtVideoScreen::SetVisible(bool visible) {
    if (visible != visible_) {
        visible_ = visible;
        Show();
    }
}

void QtVideoScreen::Show() {
    if (visible_ && !owner_.isEmpty()) {
        windows_.ShowVideo(owner_, place_, picture_);
    } else {
        windows_.HideVideo();
    }
}
