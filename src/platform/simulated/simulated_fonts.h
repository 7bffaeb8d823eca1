// The theme's fonts in the simulation: really registered, so that text is drawn with them.
#pragma once

#include "platform/fonts.h"

#include <QByteArray>

#include <map>

class CallRecord;
class Failures;
struct Files;

class SimulatedFonts : public Fonts {
public:
    // Files, record and failures outlive the fonts.
    SimulatedFonts(Files& files, CallRecord& record, const Failures& failures)
        : files_(files), record_(record), failures_(failures) {}

    // Needs the application object of the toolkit. The same content is registered once.
    int AddFontResource(const QString& path) override;

private:
    int Register(const QByteArray& bytes);

    Files& files_;
    CallRecord& record_;
    const Failures& failures_;
    // The number of fonts in each content registered so far, by its hash.
    std::map<QByteArray, int> registered_;
};
