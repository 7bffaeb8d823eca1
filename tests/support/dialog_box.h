// A jukebox with an open dialog, for tests.
#pragma once

#include "dialogs/config_dialog.h"
#include "dialogs/controls.h"
#include "dialogs/folder_chooser.h"
#include "dialogs/key_assignment.h"
#include "platform/input_event.h"
#include "shell/handle_event.h"
#include "support/failing_files.h"
#include "support/jukebox.h"

#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <vector>

// Files on a medium that answers late: reading a folder calls `wait` as often as `turns` says.
class SlowFiles : public FailingFiles {
public:
    using FailingFiles::FailingFiles;

    std::optional<std::vector<FolderEntry>> ListSlowFolder(const QString& path,
                                                           const std::function<bool()>& wait) override {
        read.append(path);
        for (int i = 0; i < turns; ++i) {
            if (!wait()) {
                return std::nullopt;
            }
        }
        return ListFolder(path);
    }

    int turns = 0;
    // Every folder that was read or begun to be read.
    QStringList read;
};

// Runs the jukebox on files that can be counted, delayed and made to fail. Open starts it and opens the
// configuration. `inDialog` runs while another dialog is open on top of it; if it does not close that dialog,
// the dialog is cancelled.
class DialogBox : public testing::Test {
protected:
    void Open() {
        Form_Load(form);
        box.platform.dialogs.showModal = [this](const QString& dialog) { ShowModal(dialog); };
        before = box.Log().size();
        Form_Config_Load(form);
    }

    static InputEvent Event(InputKind kind, const QString& dialog, const QString& control, int index = -1,
                            const QString& value = QString()) {
        InputEvent event;
        event.kind = kind;
        event.control = {control, index, dialog};
        event.value = value;
        return event;
    }
    // Uses a control of the open dialog. Returns the number of the handler's error, or 0.
    int Use(InputKind kind, const QString& control, int index = -1, const QString& value = QString()) {
        const auto error = HandleEvent(form, Event(kind, OpenDialog(form), control, index, value));
        return error ? error->number : 0;
    }
    int Click(const QString& control, int index = -1) {
        return Use(InputKind::kControlClick, control, index);
    }
    int DoubleClick(const QString& control, int index = -1) {
        return Use(InputKind::kControlDoubleClick, control, index);
    }
    int Set(const QString& control, const QString& value) {
        return Use(InputKind::kControlSet, control, -1, value);
    }
    void Key(int code) {
        InputEvent event;
        event.kind = InputKind::kKeyDown;
        event.code = code;
        HandleEvent(form, event);
    }
    ControlLook Look(const QString& control, int index = -1) const {
        return LookOf(form, {control, index, OpenDialog(form)}).value();
    }

    QStringList LogSinceOpening() const { return box.Log().mid(before); }
    QByteArray Bytes(const QString& name) { return files.ReadWhole(box.Home(name), 1 << 20).value(); }

    Jukebox box;
    SlowFiles files{box.platform.realFiles};
    Form_Main form{PortsOver(), HandDown()};
    std::function<void()> inDialog;
    qsizetype before = 0;

private:
    Ports PortsOver() {
        const Ports ports = box.platform.ports();
        return {ports.audio, ports.graphs, ports.MSComm1, ports.display, ports.windows,
                ports.fonts, ports.clock,  ports.pump,    ports.dialogs, ports.messageBox,
                files,       ports.zlib,   ports.pictures};
    }
    void SetUp() override { form.shell.AppFolder = box.Home(); }
    void ShowModal(const QString& dialog) {
        if (dialog == u"Form_KeyAssign") {
            Form_KeyAssign_Load(form);
        } else {
            Form_SelectDirectory_Load(form);
            ReadOpenFolder(form);
        }
        if (OpenDialog(form) == dialog && inDialog) {
            inDialog();
        }
        if (OpenDialog(form) == dialog) {
            Click(QStringLiteral("Command_Cancel"));
        }
    }
};
