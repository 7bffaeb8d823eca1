// Assembling the simulated machine.
#include "platform/simulated/simulated_platform.h"

SimulatedPlatform::SimulatedPlatform(const SimulationOptions& options)
    : clock(options.clock), pump(clock, calls), audio(clock, calls, failures), graphs(clock, calls, failures),
      serial(calls, failures), display(options.screens, calls, failures), windows(calls),
      files(realFiles, [this](const char* operation) { return failures.Has(operation); }),
      fonts(files, calls, failures), messageBox(calls), zlib(realZlib, failures),
      pictures(realPictures, failures) {
    for (const QString& operation : options.failing) {
        failures.Add(operation);
    }
    serial.arrived = [this] { pump.Stirred(); };
}

Ports SimulatedPlatform::ports() {
    return {audio, graphs,  serial,     display, windows, fonts,   clock,
            pump,  dialogs, messageBox, files,   zlib,    pictures};
}
