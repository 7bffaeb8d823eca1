// A list of folders, indented by depth.
#pragma once

#include <QListView>
#include <QStringList>

#include <functional>

// Shows full paths as their last component. A list of 30,000 paths is shared, not copied.
class FolderView : public QListView {
public:
    FolderView();

    // Shows these paths and highlights one of them; the highlight is not reported.
    void SetFolders(const QStringList& paths, const QString& highlighted);
    // The highlighted path; empty if there is none.
    QString Highlighted() const;

    // Called when a person highlights a folder, and when one opens a folder: by a double click, or by the
    // right arrow on the highlighted folder or the left arrow for its parent, if that is in the list.
    std::function<void(const QString&)> onHighlight;
    std::function<void(const QString&)> onOpen;

protected:
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void OpenParent(const QString& path);

    bool refreshing_ = false;
};
