// Reading the toolkit's list of screens.
#include "platform/qt/screens.h"

#include <QGuiApplication>
#include <QScreen>

std::vector<QRect> ScreenPlaces() {
    std::vector<QRect> places = {QGuiApplication::primaryScreen()->geometry()};
    for (const QScreen* screen : QGuiApplication::screens()) {
        if (screen != QGuiApplication::primaryScreen()) {
            places.push_back(screen->geometry());
        }
    }
    return places;
}

int ScreenDepth() {
    return QGuiApplication::primaryScreen()->depth();
}

QString WindowSystem() {
    return QGuiApplication::platformName();
}
