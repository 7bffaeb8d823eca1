// A copy of a good theme, in which a test plants mistakes.
#pragma once

#include "app/workshop/theme_check.h"
#include "core/path_text.h"
#include "support/gui_application.h"
#include "support/home_folder.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QPainter>

#include <functional>
#include <vector>

// Pictures and sounds are links to the good theme until they are changed.
class PlantedTheme {
public:
    explicit PlantedTheme(const QString& good = TextOfPath(TESTS_FOLDER "/homes/plain/themes/default")) {
        for (const QFileInfo& entry : QDir(good).entryInfoList(QDir::Files)) {
            entry.suffix() == u"ini" ? QFile::copy(entry.filePath(), Path(entry.fileName()))
                                     : QFile::link(entry.filePath(), Path(entry.fileName()));
        }
    }

    QString Path(const QString& name = QString()) const { return folder_.Path(name); }
    QByteArray Read(const QString& name) { return folder_.Read(name); }
    void Remove(const QString& name) { QFile::remove(Path(name)); }
    void Write(const QString& name, const QByteArray& bytes) {
        Remove(name);
        folder_.Write(name, bytes);
    }
    void Copy(const QString& from, const QString& to) { Write(to, Read(from)); }

    // Sets a key of theme.ini, or inserts it at the beginning of the section.
    void Set(const QString& section, const QString& key, const QString& value) {
        RemoveKey(section, key);
        QString text = Ini();
        text.replace(u'[' + section + QStringLiteral("]\n"),
                     u'[' + section + QStringLiteral("]\n") + key + u'=' + value + u'\n');
        SetIni(text);
    }
    void RemoveKey(const QString& section, const QString& key) {
        QStringList lines = Ini().split(u'\n');
        for (qsizetype at = lines.indexOf(u'[' + section + u']') + 1;
             at > 0 && at < lines.size() && !lines[at].startsWith(u'['); ++at) {
            if (lines[at].startsWith(key + u'=')) {
                lines.removeAt(at);
                break;
            }
        }
        SetIni(lines.join(u'\n'));
    }
    QString Ini() { return QString::fromUtf8(Read(QStringLiteral("theme.ini"))); }
    void SetIni(const QString& text) { Write(QStringLiteral("theme.ini"), text.toUtf8()); }

    // Changes the pixels of a picture.
    void Paint(const QString& name, const std::function<void(QPainter&)>& paint) {
        QImage picture = QImage(Path(name)).convertToFormat(QImage::Format_ARGB32);
        QPainter painter(&picture);
        painter.setCompositionMode(QPainter::CompositionMode_Source);
        paint(painter);
        painter.end();
        Save(name, picture);
    }
    void Save(const QString& name, const QImage& picture) {
        Remove(name);
        picture.save(Path(name), "PNG");
    }

    std::vector<Finding> Check() const { return CheckTheme(Path()); }

private:
    HomeFolder folder_;
};
