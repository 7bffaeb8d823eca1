// Filling the controls of the dialogs with believable values.
#include "dialog_model.h"

#include "platform/qt/dialog_window.h"

#include <QImage>

#include <array>

namespace {

constexpr int kSlots = 10;

constexpr std::array kKeys = {
    std::pair("Up :", "UP ARROW"),       std::pair("Down :", "DOWN ARROW"),
    std::pair("Left :", "LEFT ARROW"),   std::pair("Right :", "RIGHT ARROW"),
    std::pair("Confirm :", "ENTER"),     std::pair("Back :", "BACKSPACE"),
    std::pair("Coin :", "INSERT"),       std::pair("Next zone :", "TAB"),
    std::pair("Quit :", "ESCAPE"),       std::pair("Configuration :", "F9"),
    std::pair("Preview :", "F2"),        std::pair("Stop :", "F3"),
    std::pair("Play :", "F4"),           std::pair("Pause :", "F5"),
    std::pair("Next :", "PRINT SCREEN"),
};

constexpr std::array kSwitches = {
    "Option_PlayTransitionSound", "Option_ShowCover",       "Option_ShowFolderCover", "Option_ShowFileCover",
    "Option_ShowBigCover",        "Option_ShowMP3TagCover", "Option_ShowTrackNumber", "Option_MainVisible",
    "Option_MainActive",          "Option_PlaylistVisible", "Option_PlaylistActive",  "Option_CommandVisible",
    "Option_CommandActive",       "Option_ManageCoin",      "Check_Tactile",
};

ControlLook Text(const QString& value) {
    ControlLook look;
    look.value = value;
    return look;
}

ControlLook List(const QString& value, const QStringList& entries) {
    ControlLook look = Text(value);
    look.entries = entries;
    return look;
}

ControlLook Picture(int width, int height) {
    QImage picture(width, height, QImage::Format_RGB32);
    picture.fill(0xFF402010);
    ControlLook look;
    look.picture = std::make_shared<const QImage>(picture);
    return look;
}

void AddSlot(DialogModel& model, const QString& side, int row, int left) {
    const auto named = [&](const char* kind) {
        return TextOfControl({QLatin1String(kind) + QStringLiteral("_ZoneList") + side, row});
    };
    ControlLook label = Text(QStringLiteral("[AP] %1").arg(row + 1));
    label.place = QRect(left, 6 + row * 98 / 4, 14, 11);
    model.looks[named("Text")] = label;
    model.looks[named("Label")] = Text(QStringLiteral("[AP] + %1").arg(row + 1));
    model.looks[named("Command")] = {};
    for (const char* kind : {"Text", "Label", "Command"}) {
        model.looks[named(kind)].visible = row < model.rows;
    }
}

} // namespace

ControlLook DialogModel::Look(const ControlName& name) const {
    return looks.at(TextOfControl(name));
}

DialogModel ConfigModel(int rows) {
    DialogModel model{.looks = {}, .rows = rows};
    model.looks[QStringLiteral("Label_StartPath")] = Text(QStringLiteral(
        "/media/jukebox/Music_and_video_collection_of_the_cabinet/Rock_and_Roll_from_1954_to_1963"));
    model.looks[QStringLiteral("Label12")] = {};
    for (const char* field : {"Left", "Top", "Width", "Height"}) {
        model.looks[QStringLiteral("Text_Position") + QLatin1String(field)] = {};
        model.looks[QStringLiteral("Text_VideoPosition") + QLatin1String(field)] =
            Text(QStringLiteral("1921"));
    }
    for (std::size_t i = 0; i < kKeys.size(); ++i) {
        const int index = static_cast<int>(i);
        model.looks[TextOfControl({QStringLiteral("Label_Key"), index})] =
            Text(QLatin1String(kKeys[i].first));
        model.looks[TextOfControl({QStringLiteral("Label_KeyValue"), index})] =
            Text(QLatin1String(kKeys[i].second));
        model.looks[TextOfControl({QStringLiteral("Command_KeyAssign"), index})] = {};
    }
    for (const char* button : {"Command_Select", "Command_OK", "Command_Cancel"}) {
        model.looks[QLatin1String(button)] = {};
    }
    model.looks[QStringLiteral("Combo_Theme")] =
        List(QStringLiteral("default"), {QStringLiteral("default"), QStringLiteral("touch")});
    model.looks[QStringLiteral("Combo_DefaultOrder")] =
        List(QStringLiteral("Alpha"), {QStringLiteral("Alpha"), QStringLiteral("Playing Count")});
    model.looks[QStringLiteral("Image_Theme")] = Picture(480, 270);
    model.looks[QStringLiteral("Picture_ZoneList")] = Picture(320, 270);
    for (const char* name : kSwitches) {
        model.looks[QLatin1String(name)] = Text(QStringLiteral("true"));
    }
    model.looks[QStringLiteral("Check_Tactile")].value = QStringLiteral("false");
    model.looks[QStringLiteral("Option_ManageCoin")].value = QStringLiteral("false");
    model.looks[QStringLiteral("Option_Orientation(0)")] = Text(QStringLiteral("true"));
    model.looks[QStringLiteral("Option_Orientation(1)")] = Text(QStringLiteral("false"));
    for (int row = 0; row < kSlots; ++row) {
        AddSlot(model, QStringLiteral("Gauche"), row, 8);
        AddSlot(model, QStringLiteral("Droite"), row, 168);
    }
    return model;
}

DialogModel KeyModel() {
    DialogModel model;
    model.looks[QStringLiteral("Label1")] = {};
    model.looks[QStringLiteral("Label_Key")] = Text(QStringLiteral("Configuration"));
    model.looks[QStringLiteral("Command_Cancel")] = {};
    return model;
}

DialogModel FolderModel(int children) {
    DialogModel model;
    ControlLook folders =
        List(QStringLiteral("/media/jukebox"),
             {QStringLiteral("/"), QStringLiteral("/media"), QStringLiteral("/media/jukebox")});
    for (int i = 0; i < children; ++i) {
        folders.entries.append(QStringLiteral("/media/jukebox/Folder %1").arg(i));
    }
    model.looks[QStringLiteral("Dir1")] = folders;
    model.looks[QStringLiteral("Drive1")] =
        List(QStringLiteral("/"), {QStringLiteral("/"), QStringLiteral("/home/jukebox")});
    model.looks[QStringLiteral("Command_OK")] = {};
    model.looks[QStringLiteral("Command_Cancel")] = {};
    return model;
}
