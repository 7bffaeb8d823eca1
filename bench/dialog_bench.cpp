// Opening the configuration, showing a theme's preview, and what follows OK.
#include "dialog_bench.h"

#include "bench.h"
#include "dialogs/config_dialog.h"
#include "dialogs/controls.h"
#include "dialogs/theme_preview.h"
#include "platform/qt/config_window.h"
#include "platform/qt/qt_event_pump.h"
#include "platform/simulated/simulated_platform.h"
#include "settings/profile.h"
#include "shell/hand_down.h"
#include "shell/load_config.h"
#include "shell/load_theme.h"
#include "shell/start_up.h"
#include "state/form_main.h"
#include "state/paths.h"

#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QProcess>
#include <QPushButton>
#include <QScrollArea>
#include <QStackedWidget>
#include <QTemporaryDir>

#include <memory>

namespace {

constexpr QRect kScreen(0, 0, 1280, 720);
constexpr int kRounds = 31;

// A jukebox on a simulated machine with a copy of the delivered home.
struct Machine {
    explicit Machine(const QString& delivered) {
        QProcess::execute(QStringLiteral("cp"), {QStringLiteral("-rT"), delivered, home.path()});
        form.shell.AppFolder = home.path();
        WritePrivateProfileString(form, ConfigPath(form), QStringLiteral("Main"), QStringLiteral("StartPath"),
                                  home.path() + QStringLiteral("/themes"));
        Form_Load(form);
    }

    QTemporaryDir home;
    SimulatedPlatform platform;
    Form_Main form{platform.ports(), HandDown()};
};

// How many widgets of each kind a window has.
struct Counts {
    explicit Counts(const QWidget& window)
        : pages(window.findChildren<QScrollArea*>().size()), fields(window.findChildren<QLineEdit*>().size()),
          buttons(window.findChildren<QPushButton*>().size()),
          boxes(window.findChildren<QCheckBox*>().size()), lists(window.findChildren<QComboBox*>().size()),
          labels(window.findChildren<QLabel*>().size()) {}

    qsizetype pages;
    qsizetype fields;
    qsizetype buttons;
    qsizetype boxes;
    qsizetype lists;
    qsizetype labels;
};

template <typename Widget>
void Fill(std::vector<QGridLayout*>& pages, qsizetype count) {
    constexpr int kColumns = 4;
    for (qsizetype i = 0; i < count; ++i) {
        QGridLayout* page = pages[static_cast<std::size_t>(i) % pages.size()];
        page->addWidget(new Widget, page->count() / kColumns, page->count() % kColumns);
    }
}

std::unique_ptr<QWidget> BareDialog(const Counts& counts) {
    auto window = std::make_unique<QWidget>();
    auto* outer = new QGridLayout(window.get());
    auto* stack = new QStackedWidget;
    outer->addWidget(stack);
    std::vector<QGridLayout*> pages;
    for (qsizetype i = 0; i < std::max<qsizetype>(counts.pages, 1); ++i) {
        auto* area = new QScrollArea;
        auto* content = new QWidget;
        pages.push_back(new QGridLayout(content));
        area->setWidget(content);
        area->setWidgetResizable(true);
        stack->addWidget(area);
    }
    Fill<QLineEdit>(pages, counts.fields);
    Fill<QPushButton>(pages, counts.buttons);
    Fill<QCheckBox>(pages, counts.boxes);
    Fill<QComboBox>(pages, counts.lists);
    Fill<QLabel>(pages, counts.labels);
    window->resize(1100, 720);
    return window;
}

void ShowOnce(QWidget& window) {
    window.show();
    QCoreApplication::processEvents();
    window.hide();
}

void BenchOpening(Machine& machine) {
    QtEventPump pump;
    const auto looks = [&](const ControlName& control) {
        return LookOf(machine.form, control).value_or(ControlLook());
    };
    Form_Config_Load(machine.form);
    const Counts counts(ConfigWindow(pump, looks, kScreen));
    PrintRow(
        QStringLiteral("The configuration, from the key to its first picture"),
        RunInTurn(
            {{QStringLiteral("a bare dialog with as many widgets"), [&] { ShowOnce(*BareDialog(counts)); }},
             {QStringLiteral("the configuration"),
              [&] {
                  Form_Config_Load(machine.form);
                  ConfigWindow window(pump, looks, kScreen);
                  window.Refresh();
                  ShowOnce(window);
              }},
             {QStringLiteral("of this, its rules alone"), [&] { Form_Config_Load(machine.form); }}},
            kRounds));
}

void BenchPreviews(Machine& machine) {
    const auto show = [&](const char* theme) {
        return [&machine, theme] {
            machine.form.config.Combo_Theme = QString::fromLatin1(theme);
            Combo_Theme_Change(machine.form);
        };
    };
    PrintRow(QStringLiteral("Preview of a theme"), RunInTurn({{QStringLiteral("default"), show("default")},
                                                              {QStringLiteral("touch"), show("touch")}},
                                                             kRounds));
}

void BenchOk(Machine& machine) {
    const auto load = [&] {
        LoadConfig(machine.form);
        LoadTheme(machine.form);
    };
    // Each run changes both files.
    int change = 0;
    const auto open = [&] {
        Form_Config_Load(machine.form);
        machine.form.config.Text_PositionLeft = QString::number(++change % 2);
        machine.form.config.Gauche(0).text = QString::number(change);
    };
    PrintRow(QStringLiteral("From OK to the new frame"),
             RunInTurn({{QStringLiteral("loading the configuration and the theme"), load},
                        {QStringLiteral("OK and the loading after it"),
                         [&] {
                             Form_Config_Command_OK_Click(machine.form);
                             load();
                         },
                         open}},
                       kRounds));
}

} // namespace

void BenchDialogs(const QString& homeFolder) {
    Machine machine(homeFolder);
    BenchOpening(machine);
    BenchPreviews(machine);
    BenchOk(machine);
}
