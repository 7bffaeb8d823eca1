// The pages of Form_Config: captions, explanations and controls.
#include "platform/qt/config_pages.h"

#include "platform/qt/dialog_style.h"
#include "platform/qt/dialog_widgets.h"
#include "platform/qt/page_rows.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include <array>

namespace {

constexpr int kKeys = 15;
constexpr QSize kThemePicture(480, 270);

constexpr std::array kCoverRows = {
    SwitchRow{"Option_ShowCover", "Show covers", "In the list, from the sources below."},
    SwitchRow{"Option_ShowFolderCover", "Pictures of folders", "A folder shows the picture that is in it."},
    SwitchRow{"Option_ShowFileCover", "Pictures next to tracks",
              "A track shows the .jpg file next to it that has its name."},
    SwitchRow{"Option_ShowMP3TagCover", "Pictures in tags",
              "A track without a picture of its own shows the one inside the music file."},
    SwitchRow{"Option_ShowBigCover", "Big covers",
              "Shows the cover of the selected entry in place of the menu for a few seconds. A folder with a "
              "picture named bigcover shows it across its whole slot."},
    SwitchRow{"Option_ShowTrackNumber", "Track numbers", "Shows the number of a track that has no cover."},
};

constexpr std::array kCoinRows = {
    SwitchRow{
        "Option_ManageCoin", "Tracks cost credits",
        "Each start of a track takes one credit, and the coin key adds one. With No everything is free."},
    SwitchRow{"Option_PlayTransitionSound", "Transition sounds",
              "Plays the sounds of a turning page and of the pause between two tracks."},
};

struct ZoneRow {
    const char* name;
    const char* caption;
    const char* explanation;
};

constexpr std::array kZoneRows = {
    ZoneRow{"Main", "Main zone", "Credits, the time left and the buttons of the player."},
    ZoneRow{"Playlist", "Playlist zone", "The tracks that are waiting."},
    ZoneRow{"Command", "Command zone", "The menu. Without it the configuration opens by its key only."},
};

// Two switches with their words, one next to the other.
QWidget* ZoneSwitches(DialogWindow& window, const ZoneRow& zone) {
    auto* both = new QWidget;
    SetRole(both, "page");
    auto* line = new QHBoxLayout(both);
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(0);
    for (const auto& [ending, words] : {std::pair("Visible", "Shown"), std::pair("Active", "Usable")}) {
        auto* caption = new QLabel(QString::fromLatin1(words));
        SetRole(caption, "explanation");
        Switch* button =
            window.AddSwitch({QStringLiteral("Option_") + QLatin1String(zone.name) + QLatin1String(ending)});
        button->setAccessibleName(QLatin1String(zone.caption) + u' ' + QLatin1String(words));
        line->addSpacing(16);
        line->addWidget(caption);
        line->addWidget(button);
    }
    return both;
}

QWidget* OrientationOptions(DialogWindow& window) {
    auto* both = new QWidget;
    SetRole(both, "page");
    auto* line = new QHBoxLayout(both);
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(10);
    line->addWidget(
        window.AddOption({QStringLiteral("Option_Orientation"), 0}, QStringLiteral("Horizontal")));
    line->addWidget(window.AddOption({QStringLiteral("Option_Orientation"), 1}, QStringLiteral("Vertical")));
    return both;
}

} // namespace

QWidget* MusicPage(DialogWindow& window) {
    QWidget* page = NewPage();
    WrapLabel* caption = window.AddCaption({QStringLiteral("Label12")}, QStringLiteral("Music folder"));
    SetRole(caption, "caption");
    QWidget* folder =
        AddRow(page, caption, "The jukebox plays what is in this folder and in the folders below it.",
               window.AddButton({QStringLiteral("Command_Select")}, QStringLiteral("Choose...")));
    WrapLabel* path = window.AddText({QStringLiteral("Label_StartPath")});
    SetRole(path, "value");
    ColumnOf(folder)->addWidget(path);
    AddRow(page, "Order of the tracks",
           "For folders that have no order of their own. Alpha sorts by name, Playing Count begins with what "
           "has been played most. Without a choice the list stays empty.",
           window.AddChoice({QStringLiteral("Combo_DefaultOrder")}));
    QWidget* theme = AddRow(page, "Theme", "The look and the sounds of the jukebox.",
                            window.AddChoice({QStringLiteral("Combo_Theme")}));
    ColumnOf(theme)->addWidget(window.AddPicture({QStringLiteral("Image_Theme")}, kThemePicture,
                                                 QStringLiteral("This theme has no preview.")),
                               0, Qt::AlignLeft);
    return page;
}

QWidget* ScreenPage(DialogWindow& window) {
    QWidget* page = NewPage();
    AddRow(page, "Orientation",
           "The layout of the theme that is used: horizontal for a landscape screen, vertical for a portrait "
           "one.",
           OrientationOptions(window));
    AddRow(page, "Touch screen",
           "Yes: the jukebox is used by touch or mouse, with a pointer and without the selection bar. No: by "
           "keys, without a pointer.",
           window.AddSwitch({QStringLiteral("Check_Tactile")}));
    QWidget* picture = AddRow(page, "Picture",
                              "Its place on the screen in pixels. Without a left or top edge it is centred. "
                              "Without a width or height it is as large as the screen and the theme allow. "
                              "Enter whole numbers only: with anything else the theme cannot be loaded.",
                              nullptr);
    AddPlaceFields(window, picture, "Text_Position");
    QWidget* video =
        AddRow(page, "Video",
               "Its place on the desktop in pixels. Empty fields: over the picture. A left edge beyond the "
               "first screen puts the video on the second one. If it equals the width of the first screen, "
               "add one pixel, or the video stays invisible. On the first screen the height sets the width.",
               nullptr);
    AddPlaceFields(window, video, "Text_VideoPosition");
    return page;
}

QWidget* ZonesPage(DialogWindow& window) {
    QWidget* page = NewPage();
    AddHeading(page, "Zones");
    AddExplanation(
        page, "A zone that is not shown is left out of the picture. A usable zone can be reached by keys.");
    for (const ZoneRow& zone : kZoneRows) {
        AddRow(page, zone.caption, zone.explanation, ZoneSwitches(window, zone));
    }
    AddHeading(page, "Covers");
    AddSwitches(window, page, kCoverRows);
    return page;
}

QWidget* CoinsPage(DialogWindow& window) {
    QWidget* page = NewPage();
    AddSwitches(window, page, kCoinRows);
    return page;
}

QWidget* KeysPage(DialogWindow& window, int width) {
    constexpr int kWide = 44;
    const int columns = width >= kWide ? 2 : 1;
    const int rows = (kKeys + columns - 1) / columns;
    QWidget* page = NewPage();
    AddExplanation(page, "Change assigns the next key that you press. Give every action a key of its own: as "
                         "long as one has none, the jukebox accepts no keys.");
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(10);
    grid->setVerticalSpacing(8);
    for (int i = 0; i < kKeys; ++i) {
        const int column = 4 * (i / rows);
        WrapLabel* action = window.AddText({QStringLiteral("Label_Key"), i});
        SetRole(action, "caption");
        WrapLabel* key = window.AddText({QStringLiteral("Label_KeyValue"), i});
        SetRole(key, "value");
        grid->addWidget(action, i % rows, column);
        grid->addWidget(key, i % rows, column + 1);
        grid->addWidget(window.AddButton({QStringLiteral("Command_KeyAssign"), i}, QStringLiteral("Change")),
                        i % rows, column + 2);
        grid->setColumnStretch(column, 3);
        grid->setColumnStretch(column + 1, 3);
    }
    if (columns == 2) {
        grid->setColumnMinimumWidth(3, 24);
    }
    ColumnOf(page)->addLayout(grid);
    return page;
}
