// Measuring and painting the dialogs' own widgets.
#include "platform/qt/dialog_widgets.h"

#include "platform/qt/dialog_style.h"

#include <QAbstractItemView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <QTextLayout>
#include <QTextOption>

#include <algorithm>
#include <cmath>

namespace {

using Colors = DialogColors;

constexpr int kRing = 2; // pixels of the focus ring
constexpr int kGap = 10; // pixels between a mark and its text

QTextOption Wrapping() {
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    return option;
}

QColor TextColor(const QWidget& widget) {
    return widget.isEnabled() ? Colors::kText : Colors::kDisabled;
}

void PaintBox(QPainter& painter, const QWidget& widget, const QColor& ground) {
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor edge = widget.hasFocus()    ? Colors::kAmber
                        : widget.isEnabled() ? Colors::kEdge
                                             : Colors::kLine;
    painter.setPen(QPen(edge, kRing));
    painter.setBrush(ground);
    const double inset = kRing / 2.0;
    painter.drawRoundedRect(QRectF(widget.rect()).adjusted(inset, inset, -inset, -inset), 6, 6);
}

// Fits a picture into a place and keeps its proportions; never enlarges it.
QRect Fitted(const QSize& picture, const QRect& place) {
    const QSize size = picture.width() <= place.width() && picture.height() <= place.height()
                           ? picture
                           : picture.scaled(place.size(), Qt::KeepAspectRatio).expandedTo(QSize(1, 1));
    QRect target(QPoint(0, 0), size);
    target.moveCenter(place.center());
    return target;
}

} // namespace

WrapLabel::WrapLabel(const QString& text) : QLabel(text) {
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

int WrapLabel::TextHeight(int width) const {
    if (heights_.text != text() || heights_.font != font()) {
        heights_ = {text(), font(), {}};
    }
    const auto [height, isNew] = heights_.byWidth.try_emplace(width, 0);
    if (isNew) {
        height->second = MeasuredHeight(width);
    }
    return height->second;
}

int WrapLabel::MeasuredHeight(int width) const {
    QTextLayout layout(text(), font());
    layout.setTextOption(Wrapping());
    double height = 0;
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(std::max(width, 1));
        height += line.height();
    }
    layout.endLayout();
    return static_cast<int>(std::ceil(height));
}

int WrapLabel::heightForWidth(int width) const {
    const int text = std::max(TextHeight(width - Around().width()), fontMetrics().height());
    return std::max(text + Around().height(), minimumHeight());
}

QSize WrapLabel::sizeHint() const {
    const int text = fontMetrics().horizontalAdvance(this->text()) + 2;
    const int width = std::clamp(text, 1, fontMetrics().averageCharWidth() * 40) + Around().width();
    return {width, heightForWidth(width)};
}

QSize WrapLabel::minimumSizeHint() const {
    return {fontMetrics().averageCharWidth() * 4 + Around().width(),
            fontMetrics().height() + Around().height()};
}

void WrapLabel::SetDoubleClick(std::function<void()> act) {
    doubleClick_ = std::move(act);
    setFocusPolicy(Qt::StrongFocus);
}

void WrapLabel::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    drawFrame(&painter);
    painter.setPen(palette().color(foregroundRole()));
    QTextOption option = Wrapping();
    option.setAlignment(alignment());
    painter.drawText(QRectF(contentsRect()), text(), option);
}

void WrapLabel::mouseDoubleClickEvent(QMouseEvent* event) {
    if (doubleClick_) {
        doubleClick_();
    } else {
        QLabel::mouseDoubleClickEvent(event);
    }
}

void WrapLabel::keyPressEvent(QKeyEvent* event) {
    const int key = event->key();
    if (doubleClick_ && (key == Qt::Key_Delete || key == Qt::Key_Backspace || key == Qt::Key_Space)) {
        doubleClick_();
    } else {
        QLabel::keyPressEvent(event);
    }
}

ScrollPlace::ScrollPlace(QWidget* content) {
    setWidgetResizable(true);
    setFocusPolicy(Qt::NoFocus);
    setWidget(content);
    viewport()->setAutoFillBackground(false);
    content->setAutoFillBackground(false);
}

void ScrollPlace::mousePressEvent(QMouseEvent* event) {
    dragged_ = event->globalPosition();
}

void ScrollPlace::mouseMoveEvent(QMouseEvent* event) {
    const QPoint moved = (event->globalPosition() - dragged_).toPoint();
    dragged_ += moved;
    horizontalScrollBar()->setValue(horizontalScrollBar()->value() - moved.x());
    verticalScrollBar()->setValue(verticalScrollBar()->value() - moved.y());
}

ScrollPlace* NewScrolled(WrapLabel* label, int lines) {
    auto* place = new ScrollPlace(label);
    place->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    label->ensurePolished();
    place->setFixedHeight(label->fontMetrics().lineSpacing() * lines);
    return place;
}

Switch::Switch() {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize Switch::sizeHint() const {
    return {fontMetrics().horizontalAdvance(QStringLiteral("Yes")) + 3 * kGap + 50, kFingerTarget};
}

void Switch::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (hasFocus()) {
        painter.setPen(QPen(QColor(Colors::kAmber), kRing));
        painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), 6, 6);
    }
    const QRectF track(width() - kGap - 50.0, (height() - 28) / 2.0, 50, 28);
    const bool on = isChecked();
    const QColor edge = !isEnabled() ? Colors::kLine : on ? Colors::kAmber : Colors::kEdge;
    painter.setPen(QPen(edge, 2));
    painter.setBrush(QColor(on && isEnabled() ? Colors::kAmber : Colors::kField));
    painter.drawRoundedRect(track.adjusted(1, 1, -1, -1), 13, 13);
    painter.setPen(Qt::NoPen);
    painter.setBrush(!isEnabled() ? QColor(Colors::kDisabled)
                                  : QColor(on ? Colors::kOnAmber : Colors::kSoft));
    painter.drawEllipse(QPointF(on ? track.right() - 14 : track.left() + 14, track.center().y()), 9, 9);
    painter.setPen(TextColor(*this));
    painter.drawText(QRectF(kGap, 0, track.left() - 2.0 * kGap, height()), Qt::AlignRight | Qt::AlignVCenter,
                     on ? QStringLiteral("Yes") : QStringLiteral("No"));
}

QSize Option::sizeHint() const {
    return {fontMetrics().horizontalAdvance(text()) + 24 + 4 * kGap, kFingerTarget};
}

void Option::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    PaintBox(painter, *this, isChecked() ? Colors::kChosen : Colors::kField);
    const QPointF center(kGap + 12.0, height() / 2.0);
    painter.setPen(QPen(QColor(isChecked() ? Colors::kAmber : Colors::kEdge), 2));
    painter.setBrush(Qt::NoBrush);
    painter.drawEllipse(center, 10, 10);
    if (isChecked()) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor(Colors::kAmber));
        painter.drawEllipse(center, 5, 5);
    }
    painter.setPen(TextColor(*this));
    painter.drawText(QRectF(2.0 * kGap + 24, 0, width(), height()), Qt::AlignLeft | Qt::AlignVCenter, text());
}

Choice::Choice() {
    // The toolkit's delegate for these lists ignores the height that the style sheet gives.
    setItemDelegate(new QStyledItemDelegate(this));
    setFocusPolicy(Qt::StrongFocus);
    setMaxVisibleItems(8);
}

QSize Choice::sizeHint() const {
    int text = fontMetrics().averageCharWidth() * 16;
    for (int i = 0; i < count(); ++i) {
        text = std::max(text, fontMetrics().horizontalAdvance(itemText(i)));
    }
    return {text + 3 * kGap + 24, kFingerTarget};
}

QSize Choice::minimumSizeHint() const {
    return {fontMetrics().averageCharWidth() * 16 + 3 * kGap + 24, kFingerTarget};
}

void Choice::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    PaintBox(painter, *this, underMouse() && isEnabled() ? Colors::kHover : Colors::kField);
    painter.setPen(TextColor(*this));
    painter.drawText(QRect(kGap, 0, width() - 3 * kGap - 16, height()), Qt::AlignLeft | Qt::AlignVCenter,
                     currentText());
    painter.setPen(QPen(QColor(isEnabled() ? Colors::kAmber : Colors::kDisabled), 2));
    const QPointF tip(width() - kGap - 9.0, height() / 2.0 + 3);
    painter.drawPolyline(QPolygonF({tip + QPointF(-6, -6), tip, tip + QPointF(6, -6)}));
}

void Choice::wheelEvent(QWheelEvent* event) {
    event->ignore();
}

void PictureView::SetPicture(const std::shared_ptr<const QImage>& picture) {
    if (picture != picture_) {
        picture_ = picture;
        update();
    }
}

void PictureView::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    if (picture_ && !picture_->isNull()) {
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        const QRect target = Fitted(picture_->size(), rect());
        painter.drawImage(target, *picture_);
        return;
    }
    painter.setPen(QColor(Colors::kLine));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
    painter.setPen(QColor(Colors::kSoft));
    painter.drawText(rect().adjusted(kGap, 0, -kGap, 0), Qt::AlignCenter | Qt::TextWordWrap, words_);
}
