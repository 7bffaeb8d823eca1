// Widgets of the dialogs that the toolkit does not have.
#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QImage>
#include <QLabel>
#include <QRadioButton>
#include <QScrollArea>

#include <functional>
#include <map>
#include <memory>
#include <vector>

class QLineEdit;

// A label that breaks its text anywhere if necessary, so that long paths are never cut.
class WrapLabel : public QLabel {
public:
    explicit WrapLabel(const QString& text = {});

    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

    // Makes the label accept the focus. `act` runs on a double click, and on Delete, Backspace or Space.
    void SetDoubleClick(std::function<void()> act);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    // What the frame and the padding add.
    QSize Around() const { return size() - contentsRect().size(); }
    int TextHeight(int width) const;
    int MeasuredHeight(int width) const;

    std::function<void()> doubleClick_;
    // The heights of the text by width: a layout asks for the same ones many times.
    struct Heights {
        QString text;
        QFont font;
        std::map<int, int> byWidth;
    };
    mutable Heights heights_;
};

// A place in which a page or a label scrolls. A finger or the mouse can drag it beside the controls.
class ScrollPlace : public QScrollArea {
public:
    explicit ScrollPlace(QWidget* content);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;

private:
    QPointF dragged_;
};

// A place of a few lines for a label; a longer text scrolls.
ScrollPlace* NewScrolled(WrapLabel* label, int lines);

// A switch with the words "Yes" and "No".
class Switch : public QCheckBox {
public:
    Switch();

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    bool hitButton(const QPoint& at) const override { return rect().contains(at); }
    void paintEvent(QPaintEvent* event) override;
};

// One of several options, of which one is chosen.
class Option : public QRadioButton {
public:
    explicit Option(const QString& caption) : QRadioButton(caption) {}

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    bool hitButton(const QPoint& at) const override { return rect().contains(at); }
    void paintEvent(QPaintEvent* event) override;
};

// A list of which one entry is shown. The wheel scrolls the page and does not change the entry.
class Choice : public QComboBox {
public:
    Choice();

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
};

// A picture that is scaled down to fit, or words if there is none.
class PictureView : public QWidget {
public:
    PictureView(const QSize& largest, const QString& words) : largest_(largest), words_(words) {}

    void SetPicture(const std::shared_ptr<const QImage>& picture);
    QSize sizeHint() const override { return largest_; }
    QSize minimumSizeHint() const override { return largest_; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QSize largest_;
    QString words_;
    std::shared_ptr<const QImage> picture_;
};

// The preview of a theme's page with text fields over it. The preview is enlarged until the fields do not
// overlap; if its width does not allow that, a field moves down until it is free.
class SlotPreview : public QWidget {
public:
    SlotPreview();

    // Adds a field; it becomes a child.
    void Add(QLineEdit* field);
    void SetPicture(const std::shared_ptr<const QImage>& picture);
    // Sets the place of a field, in pixels of the picture.
    void SetPlace(const QLineEdit* field, const QRect& place);
    // Arranges the fields again after fields have been shown or hidden.
    void Rearrange();

    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    struct Field {
        QLineEdit* edit;
        QRect place;
    };
    struct Arrangement {
        double scale = 1;
        bool overlaps = false;
        std::vector<QRect> fields;
        QRect all;
    };

    QSize FieldSize() const;
    QSize PictureSize() const;
    Arrangement Arranged(int width) const;
    Arrangement AtScale(double scale, int width) const;

    std::vector<Field> fields_;
    std::shared_ptr<const QImage> picture_;
};
