// Showing a theme in a window while its author changes it.
#pragma once

#include "app/findings/finding.h"
#include "app/workshop/stage.h"
#include "app/workshop/theme_watch.h"

#include <QWidget>

#include <vector>

// Shows one situation on one size of screen, scaled to the window, and a bar with words below it. Arrows and
// the keys 1 to 9 choose others. Loads the theme again when one of its files is saved. A theme with errors is
// described by words over its last good picture.
class WatchWindow : public QWidget {
public:
    // `music` is the home's own music folder; empty for samples only.
    WatchWindow(const QString& themeFolder, const QString& music);

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void Load();
    void Show();
    void Choose(int situation, int size);
    QString Place() const;
    QString Bar() const;
    QStringList Words() const;

    QString folder_;
    Stage stage_;
    ThemeWatch watch_;
    int situation_ = 0;
    int size_ = 0;
    std::vector<Finding> findings_;
    // What stopped the jukebox in the situation shown.
    QString fault_;
    bool showsWarnings_ = false;
    // The last good picture.
    QImage picture_;
};

// Shows the window until it is closed. Returns the exit code: 0, or 2 when there is no folder or no display.
int WatchTheme(const QString& themeFolder, const QString& music, char** argv);
