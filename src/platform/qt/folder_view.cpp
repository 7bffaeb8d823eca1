// Showing a list of folders.
#include "platform/qt/folder_view.h"

#include "core/path_text.h"

#include <QAbstractListModel>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <QStyledItemDelegate>

#include <algorithm>
#include <utility>

namespace {

constexpr int kIndent = 22; // pixels
constexpr int kDeepest = 30;
constexpr int kRowHeight = 44;
constexpr int kMargin = 10;

enum FolderRole : int { kPathRole = Qt::UserRole, kDepthRole };

// The root has no name and is shown as it is.
QString Caption(const QString& path) {
    return path == u"/" ? path : NameOfPath(path);
}

int DepthOf(const QString& path) {
    return path == u"/" ? 0 : static_cast<int>(path.count(u'/'));
}

class FolderModel : public QAbstractListModel {
public:
    using QAbstractListModel::QAbstractListModel;

    void SetPaths(const QStringList& paths) {
        beginResetModel();
        paths_ = paths;
        top_ = paths.isEmpty() ? 0 : DepthOf(paths.first());
        endResetModel();
    }
    const QStringList& Paths() const { return paths_; }

    int rowCount(const QModelIndex& parent) const override {
        return parent.isValid() ? 0 : static_cast<int>(paths_.size());
    }
    QVariant data(const QModelIndex& index, int role) const override {
        const QString& path = paths_[index.row()];
        switch (role) {
        case Qt::DisplayRole:
            return Caption(path);
        case kPathRole:
            return path;
        case kDepthRole:
            return std::clamp(DepthOf(path) - top_, 0, kDeepest);
        default:
            return {};
        }
    }

private:
    QStringList paths_;
    int top_ = 0;
};

// Indents the entries. All have the height of one line and the width of the widest, so that the view does not
// measure each of them.
class FolderDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void SetWidth(int width) { width_ = width; }
    QSize sizeHint(const QStyleOptionViewItem& /*option*/, const QModelIndex& /*index*/) const override {
        return {width_, kRowHeight};
    }
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override {
        QStyleOptionViewItem indented = option;
        indented.rect.adjust(kIndent * index.data(kDepthRole).toInt(), 0, 0, 0);
        indented.textElideMode = Qt::ElideNone;
        QStyledItemDelegate::paint(painter, indented, index);
    }

private:
    int width_ = 1;
};

const FolderModel& ModelOf(const QListView& view) {
    return *static_cast<const FolderModel*>(view.model());
}

int WidestEntry(const FolderModel& model, const QFontMetrics& metrics) {
    int widest = 1;
    for (int row = 0; row < model.rowCount({}); ++row) {
        const QModelIndex index = model.index(row);
        const int indent = kIndent * index.data(kDepthRole).toInt();
        widest = std::max(widest, indent + metrics.horizontalAdvance(index.data(Qt::DisplayRole).toString()));
    }
    return widest + 2 * kMargin;
}

} // namespace

FolderView::FolderView() {
    setModel(new FolderModel(this));
    setItemDelegate(new FolderDelegate(this));
    setUniformItemSizes(true);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
}

void FolderView::SetFolders(const QStringList& paths, const QString& highlighted) {
    const QScopedValueRollback refreshing(refreshing_, true);
    const bool changed = ModelOf(*this).Paths() != paths;
    if (changed) {
        auto& folders = *static_cast<FolderModel*>(model());
        folders.SetPaths(paths);
        static_cast<FolderDelegate*>(itemDelegate())->SetWidth(WidestEntry(folders, fontMetrics()));
        scheduleDelayedItemsLayout();
    }
    if (changed || Highlighted() != highlighted) {
        const qsizetype row = highlighted.isEmpty() ? -1 : paths.indexOf(highlighted);
        setCurrentIndex(model()->index(static_cast<int>(row), 0));
    }
}

QString FolderView::Highlighted() const {
    return currentIndex().data(kPathRole).toString();
}

void FolderView::OpenParent(const QString& path) {
    const qsizetype row = ModelOf(*this).Paths().indexOf(FolderOfPath(path));
    if (row >= 0) {
        setCurrentIndex(model()->index(static_cast<int>(row), 0));
        onOpen(FolderOfPath(path));
    }
}

void FolderView::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    QListView::currentChanged(current, previous);
    if (!refreshing_ && current.isValid()) {
        onHighlight(current.data(kPathRole).toString());
    }
}

void FolderView::mouseDoubleClickEvent(QMouseEvent* event) {
    const QModelIndex at = indexAt(event->position().toPoint());
    if (event->button() == Qt::LeftButton && at.isValid()) {
        onOpen(at.data(kPathRole).toString());
    }
}

void FolderView::keyPressEvent(QKeyEvent* event) {
    const QString path = Highlighted();
    if (event->key() == Qt::Key_Right && !path.isEmpty()) {
        onOpen(path);
    } else if (event->key() == Qt::Key_Left && !path.isEmpty()) {
        OpenParent(path);
    } else {
        QListView::keyPressEvent(event);
    }
}
