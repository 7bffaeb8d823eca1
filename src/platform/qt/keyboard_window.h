// The full-screen window of the on-screen keyboard.
#pragma once

#include <QImage>
#include <QPoint>
#include <QWidget>

class QtEventPump;

// Modal: while it is shown, keys and pointer reach no other window of the program. The previous screen stays
// visible around the keyboard's picture. The window never closes by itself: a close request goes to the
// jukebox.
class KeyboardWindow : public QWidget {
public:
    explicit KeyboardWindow(QtEventPump& pump);

    // Sets the background behind the keyboard, from the window's top left corner; black where it does not
    // reach.
    void SetGround(const QImage& ground);
    // Sets the keyboard's picture and its position on the window; visible when this returns. Copies the
    // pixels.
    void SetPicture(const QImage& picture, const QPoint& place);

protected:
    void paintEvent(QPaintEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    // Tab is an ordinary key here.
    bool focusNextPrevChild(bool /*next*/) override { return false; }

private:
    QtEventPump& pump_;
    QImage ground_;
    QImage picture_;
    QPoint place_;
};
