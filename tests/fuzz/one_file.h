// A jukebox on a simulated machine whose application folder holds the fuzzer's data as its only file.
#pragma once

#include "core/run_time_error.h"
#include "platform/simulated/simulated_platform.h"
#include "shell/form_main.h"
#include "support/home_folder.h"

#include <QDir>
#include <QFileInfo>

#include <cstdlib>
#include <memory>

// A jukebox takes long to make. Each is used for some hundred files, which cannot make it larger for ever.
inline Form_Main& UsedJukebox(const QString& appFolder) {
    struct Machine {
        SimulatedPlatform platform;
        Form_Main form{platform.ports()};
    };
    constexpr int kFiles = 500;
    static std::unique_ptr<Machine> machine;
    static int files = 0;
    if (files++ % kFiles == 0) {
        machine.reset();
        machine = std::make_unique<Machine>();
        machine->form.AppFolder = appFolder;
    }
    return machine->form;
}

// Gives a routine a jukebox and the path of the file. The ends that the rules name come back as if nothing
// had been; any other exception is a finding.
template <typename Routine>
void WithOneFile(const QString& name, const std::uint8_t* data, std::size_t size, Routine&& routine) {
    static HomeFolder home;
    QDir().mkpath(QFileInfo(home.Path(name)).path());
    const QString path =
        home.Write(name, QByteArray(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)));
    if (QFileInfo(path).size() != static_cast<qint64>(size)) {
        std::abort();
    }
    Form_Main& form = UsedJukebox(home.Path());
    try {
        routine(form, path);
    } catch (const RunTimeError&) {
    } catch (const ProgramStop&) {
    }
}
