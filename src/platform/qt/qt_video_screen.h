// Shows a running video in the cabinet's windows.
#pragma once

#include "platform/qt/shown_video.h"
#include "platform/video_screen.h"

#include <QTimer>

class QtWindows;

// Takes each picture when it is due, in the event loop, whether or not it can be seen: a video that nobody
// sees runs on.
class QtVideoScreen : public VideoScreen {
public:
    explicit QtVideoScreen(QtWindows& windows);

    void Attach(VideoPictures& pictures) override;
    void Detach(VideoPictures& pictures) override;
    void Wake() override;
    void Place(const QString& owner, const QRect& place) override;
    void SetVisible(bool visible) override;

private:
    void TakeDue();
    void Show();

    QtWindows& windows_;
    VideoPictures* pictures_ = nullptr;
    VideoPicture picture_;
    QString owner_;
    QRect place_;
    bool visible_ = true;
    QTimer next_;
};
