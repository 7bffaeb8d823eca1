// A jukebox on a simulated machine whose application folder holds the fuzzer's data as its only file.
#pragma once

#include "core/run_time_error.h"
#include "platform/simulated/simulated_platform.h"
#include "shell/form_main.h"
#include "support/home_folder.h"

#include <QDir>

// Gives a routine the jukebox and the path of the file. The ends that the rules name come back as if nothing
// had been; any other exception is a finding.
template <typename Routine>
void WithOneFile(const QString& name, const std::uint8_t* data, std::size_t size, Routine&& routine) {
    static HomeFolder home;
    QDir().mkpath(home.Path(name + QStringLiteral("/..")));
    const QString path =
        home.Write(name, QByteArray(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)));
    SimulatedPlatform platform;
    Form_Main form(platform.ports());
    form.AppFolder = home.Path();
    try {
        routine(form, path);
    } catch (const RunTimeError&) {
    } catch (const ProgramStop&) {
    }
}
