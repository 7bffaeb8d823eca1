// Setting the toolkit up for a session.
#include "platform/simulated/surroundings.h"

#include <QGuiApplication>
#include <QTemporaryDir>

#include <array>

struct Surroundings::Parts {
    // The toolkit's own command line, without the program's arguments.
    int argumentCount = 1;
    std::array<char, 17> name = {"vantorix-console"};
    std::array<char*, 2> arguments = {name.data(), nullptr};
    // Replaces the user's runtime folder where there is none.
    QTemporaryDir runtimeFolder;
    std::unique_ptr<QGuiApplication> application;
};

Surroundings::Surroundings() : parts_(std::make_unique<Parts>()) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_FONT_DPI", "96");
    qputenv("QT_SCALE_FACTOR", "1");
    qputenv("QT_ENABLE_HIGHDPI_SCALING", "0");
    qputenv("LC_ALL", "C.UTF-8");
    if (qEnvironmentVariableIsEmpty("XDG_RUNTIME_DIR") && parts_->runtimeFolder.isValid()) {
        qputenv("XDG_RUNTIME_DIR", parts_->runtimeFolder.path().toUtf8());
    }
    parts_->application = std::make_unique<QGuiApplication>(parts_->argumentCount, parts_->arguments.data());
}

Surroundings::~Surroundings() = default;
