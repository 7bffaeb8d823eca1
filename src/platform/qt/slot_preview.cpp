// Arranging the text fields over the preview of a theme's page.
#include "platform/qt/dialog_style.h"
#include "platform/qt/dialog_widgets.h"

#include <QLineEdit>
#include <QPainter>

#include <algorithm>

namespace {

constexpr int kGap = 1; // pixels between two fields
constexpr double kStep = 0.05;
constexpr double kGoodScale = 1.85; // leaves some room between the fields of the delivered themes
constexpr double kLargestScale = 4; // the preview has a quarter of the theme's size
// Pixels of the preview. Themes place their labels anywhere.
constexpr int kFarthest = 2000;

bool MeetsAny(const QRect& field, const std::vector<QRect>& others) {
    const QRect wider = field.adjusted(-kGap, -kGap, kGap, kGap);
    return std::any_of(others.begin(), others.end(),
                       [&](const QRect& other) { return wider.intersects(other); });
}

// Moves a field down until it is free. Every step passes at least one field, so this ends.
QRect MovedDown(QRect field, const std::vector<QRect>& others) {
    while (MeetsAny(field, others)) {
        int free = field.top();
        for (const QRect& other : others) {
            if (MeetsAny(field, {other})) {
                free = std::max(free, other.bottom() + 1 + kGap);
            }
        }
        field.moveTop(free);
    }
    return field;
}

} // namespace

SlotPreview::SlotPreview() {
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

void SlotPreview::Add(QLineEdit* field) {
    field->setParent(this);
    fields_.push_back({field, {}});
}

void SlotPreview::SetPicture(const std::shared_ptr<const QImage>& picture) {
    if (picture != picture_) {
        picture_ = picture;
        Rearrange();
    }
}

void SlotPreview::SetPlace(const QLineEdit* field, const QRect& place) {
    const auto found =
        std::find_if(fields_.begin(), fields_.end(), [&](const Field& known) { return known.edit == field; });
    if (found != fields_.end() && found->place != place) {
        found->place = place;
        Rearrange();
    }
}

void SlotPreview::Rearrange() {
    const Arrangement arranged = Arranged(width());
    for (std::size_t i = 0; i < fields_.size(); ++i) {
        if (!arranged.fields[i].isNull()) {
            fields_[i].edit->setGeometry(arranged.fields[i]);
        }
    }
    updateGeometry();
    update();
}

QSize SlotPreview::FieldSize() const {
    return {fontMetrics().averageCharWidth() * 9 + 16, 40};
}

QSize SlotPreview::PictureSize() const {
    return picture_ ? picture_->size().boundedTo(QSize(kFarthest, kFarthest)) : QSize();
}

// A hidden field has no place, and neither has one whose place is not known yet.
SlotPreview::Arrangement SlotPreview::AtScale(double scale, int width) const {
    Arrangement arranged{.scale = scale, .fields = {}, .all = QRect(QPoint(0, 0), PictureSize() * scale)};
    for (const Field& field : fields_) {
        if (field.edit->isHidden() || field.place.isNull()) {
            arranged.fields.emplace_back();
            continue;
        }
        const int middle = field.place.top() / 2 + field.place.bottom() / 2;
        QRect place(QPoint(0, 0), FieldSize());
        place.moveLeft(static_cast<int>(std::clamp(field.place.left(), 0, kFarthest) * scale));
        place.moveTop(static_cast<int>(std::clamp(middle, 0, kFarthest) * scale) - place.height() / 2);
        place.moveRight(std::min(place.right(), std::max(width, place.width()) - 1));
        place.moveTop(std::max(place.top(), 0));
        arranged.overlaps = arranged.overlaps || MeetsAny(place, arranged.fields);
        arranged.fields.push_back(MovedDown(place, arranged.fields));
        arranged.all |= arranged.fields.back();
    }
    return arranged;
}

// The smallest good scale without overlapping fields, or the largest one that the width allows.
SlotPreview::Arrangement SlotPreview::Arranged(int width) const {
    const QSize picture = PictureSize();
    const double widest = picture.isEmpty()
                              ? kLargestScale
                              : std::clamp(double{1} * width / picture.width(), 0.25, kLargestScale);
    double scale = std::min(kGoodScale, widest);
    Arrangement arranged = AtScale(scale, width);
    while (arranged.overlaps && scale + kStep <= widest) {
        scale += kStep;
        arranged = AtScale(scale, width);
    }
    return arranged;
}

int SlotPreview::heightForWidth(int width) const {
    return std::max(Arranged(width).all.height(), 1);
}

QSize SlotPreview::sizeHint() const {
    return Arranged(width()).all.size().expandedTo(QSize(1, 1));
}

QSize SlotPreview::minimumSizeHint() const {
    return {FieldSize().width(), 1};
}

void SlotPreview::resizeEvent(QResizeEvent* /*event*/) {
    Rearrange();
}

// The picture is darkened so that the fields on it are easy to see.
void SlotPreview::paintEvent(QPaintEvent* /*event*/) {
    if (!picture_ || picture_->isNull()) {
        return;
    }
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.setOpacity(0.7);
    painter.drawImage(QRectF(QPointF(0, 0), QSizeF(PictureSize()) * Arranged(width()).scale), *picture_);
}
