// The page of Form_Config for the slots of a theme: their labels and their key combinations.
#include "platform/qt/config_pages.h"
#include "platform/qt/dialog_widgets.h"
#include "platform/qt/page_rows.h"

#include <QGridLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <array>

namespace {

constexpr int kRows = 10;

struct Side {
    const char* name;
    const char* heading;
};

constexpr std::array kSides = {Side{"Gauche", "Left column"}, Side{"Droite", "Right column"}};

ControlName SlotControl(const char* kind, const Side& side, int row) {
    return {QLatin1String(kind) + QStringLiteral("_ZoneList") + QLatin1String(side.name), row};
}

void AddField(DialogWindow& window, SlotPreview* preview, const Side& side, int row) {
    const ControlName name = SlotControl("Text", side, row);
    QLineEdit* field = window.AddField(name);
    field->setAccessibleName(QStringLiteral("%1, label %2").arg(QLatin1String(side.heading)).arg(row + 1));
    preview->Add(field);
    window.Watch(name, [preview, field, shown = false](const ControlLook& look) mutable {
        preview->SetPlace(field, look.place);
        if (look.visible != shown) {
            shown = look.visible;
            preview->Rearrange();
        }
    });
}

QWidget* Preview(DialogWindow& window) {
    auto* preview = new SlotPreview;
    window.AddOther({QStringLiteral("Picture_ZoneList")}, preview,
                    [preview](const ControlLook& look) { preview->SetPicture(look.picture); });
    for (const Side& side : kSides) {
        for (int row = 0; row < kRows; ++row) {
            AddField(window, preview, side, row);
        }
    }
    return preview;
}

// The row's number, the keys and the button that adds one. All of them are shown for the theme's rows only.
void AddKeys(DialogWindow& window, QGridLayout* grid, const Side& side, int row, int column) {
    const ControlName name = SlotControl("Label", side, row);
    auto* number = new QLabel(QString::number(row + 1));
    SetRole(number, "caption");
    window.Watch(name, [number](const ControlLook& look) {
        if (number->isHidden() == look.visible) {
            number->setVisible(look.visible);
        }
    });
    WrapLabel* keys = window.AddText(name);
    SetRole(keys, "value");
    keys->SetDoubleClick([&window, name] { window.PostDoubleClick(name); });
    QPushButton* button = window.AddButton(SlotControl("Command", side, row), QStringLiteral("Add"));
    grid->addWidget(number, row + 1, column, Qt::AlignRight | Qt::AlignVCenter);
    grid->addWidget(keys, row + 1, column + 1);
    grid->addWidget(button, row + 1, column + 2);
}

} // namespace

QWidget* SlotsPage(DialogWindow& window) {
    QWidget* page = NewPage();
    AddHeading(page, "Labels");
    AddExplanation(page, "What is written next to each slot of the list. OK saves it in the chosen theme.");
    AddExplanation(page, "To manage the alphabetical shortcuts depending on the page number, enter [AP] in "
                         "the input field (example: \"page 2 as 2\" type = \"[AP] 2\" = \"C2\" displayed)");
    ColumnOf(page)->addWidget(Preview(window));
    AddHeading(page, "Keys");
    AddExplanation(page, "The keys that select a slot, pressed one after the other. Add appends the next key "
                         "that you press. Page Up stands for the letter of the page and is shown as [AP].");
    AddExplanation(page, "Double click on the label key combination to re-initialize");
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(8);
    grid->setVerticalSpacing(8);
    for (int i = 0; i < static_cast<int>(kSides.size()); ++i) {
        const int column = 4 * i;
        auto* heading = new WrapLabel(QLatin1String(kSides[i].heading));
        SetRole(heading, "caption");
        grid->addWidget(heading, 0, column, 1, 3);
        grid->setColumnStretch(column + 1, 1);
        for (int row = 0; row < kRows; ++row) {
            AddKeys(window, grid, kSides[i], row, column);
        }
    }
    grid->setColumnMinimumWidth(3, 12);
    ColumnOf(page)->addLayout(grid);
    return page;
}
