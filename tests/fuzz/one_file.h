// A jukebox on a simulated machine whose application folder contains only the fuzzer's data.
#pragma once

#include "core/run_time_error.h"
#include "platform/simulated/simulated_platform.h"
#include "shell/hand_down.h"
#include "state/form_main.h"
#include "support/home_folder.h"

#include <QDir>
#include <QFileInfo>

#include <cstdlib>
#include <memory>

// Making a jukebox is slow. Each is used for several hundred files and then replaced, so that its memory
// stays bounded.
inline Form_Main& UsedJukebox(const QString& appFolder) {
    struct Machine {
        SimulatedPlatform platform;
        Form_Main form{platform.ports(), HandDown()};
    };
    constexpr int kFiles = 500;
    static std::unique_ptr<Machine> machine;
    static int files = 0;
    if (files++ % kFiles == 0) {
        machine.reset();
        machine = std::make_unique<Machine>();
        machine->form.shell.AppFolder = appFolder;
    }
    return machine->form;
}

// Calls a routine with a jukebox and the path of the file. Run-time errors and stops of the program are
// expected; any other exception is a finding.
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
