// Showing a theme before it is chosen, and writing the labels and keys of its slots.
#include "dialogs/theme_preview.h"

#include "core/conversions.h"
#include "core/path_text.h"
#include "core/run_time_error.h"
#include "dialogs/key_names.h"
#include "imaging/picture/c32bppdib.h"
#include "library/create_list.h"
#include "library/list_order.h"
#include "platform/files.h"
#include "settings/copy_folder.h"
#include "settings/ini_file.h"
#include "settings/ini_files.h"
#include "settings/profile.h"
#include "state/form_main.h"
#include "state/log.h"
#include "state/paths.h"
#include "theme/theme_reader.h"

#include <algorithm>
#include <array>
#include <optional>

namespace {

// The preview shows the track zone at a quarter of its size.
constexpr double kScale = 4;
constexpr int kMostRows = 10;
// The largest side of preview.jpg as it is kept; a larger picture is scaled down.
constexpr int kLargestSide = 1024;

// A page of the preview: its section in theme.ini, its slots, and the letter of a slot without a label.
struct Page {
    const char* section;
    BoundedArray<SlotControls, 9> ConfigDialogState::*slots;
    char16_t letter;
};

constexpr std::array kPages = {
    Page{"zonelistGauche", &ConfigDialogState::Gauche, u'A'},
    Page{"zonelistDroite", &ConfigDialogState::Droite, u'B'},
};

QString SectionOf(const Page& page, int row) {
    return QString::fromLatin1(page.section) + QString::number(row);
}

int RowsShown(const Form_Main& form) {
    return std::min(form.config.ZoneListNbTracks.value(), kMostRows);
}

QString SelectedFolder(Form_Main& form) {
    return FolderOfTheme(form, form.config.Combo_Theme);
}

std::shared_ptr<const QImage> Scaled(const c32bppDIB& picture, double factor) {
    Surface surface;
    Resize(surface, CInt32(picture.Width() * factor).value(), CInt32(picture.Height() * factor).value());
    if (surface.picture.isNull()) {
        return nullptr;
    }
    picture.Render(surface, 0, 0, surface.Width(), surface.Height());
    return std::make_shared<const QImage>(surface.picture);
}

// Loads a picture of the selected theme; empty when there is none. No pending events run, so that no other
// control can act while the preview changes.
c32bppDIB LoadPreviewPicture(Form_Main& form, const QString& name) {
    c32bppDIB picture;
    const PicturePorts ports{form.files, form.zlib, form.pump, form.pictures};
    const QString path = FindFile(form.files, SelectedFolder(form), name);
    const auto bytes = path.isEmpty() ? std::nullopt : ReadPictureFile(ports, path);
    if (bytes) {
        picture.LoadPicture_Stream(ports, {reinterpret_cast<const std::uint8_t*>(bytes->constData()),
                                           static_cast<std::size_t>(bytes->size())});
    }
    return picture;
}

void ShowPictures(Form_Main& form) {
    const c32bppDIB preview = LoadPreviewPicture(form, QStringLiteral("preview.jpg"));
    const int side = std::max({preview.Width(), preview.Height(), kLargestSide});
    form.config.Image_Theme = Scaled(preview, static_cast<double>(kLargestSide) / side);
    form.config.Picture_ZoneList =
        Scaled(LoadPreviewPicture(form, QStringLiteral("zonelist.png")), 1 / kScale);
}

Box Quarter(const Box16& box) {
    const auto quarter = [](Integer16 value) { return CInt32(value.value() / kScale).value(); };
    return {quarter(box.X), quarter(box.Y), quarter(box.W), quarter(box.H)};
}

// Reads a rectangle of a slot. All three of a slot are read, so that a theme that cannot be loaded fails
// here.
Box16 ReadBox(const ThemeReader& reader, const QString& section, const QString& name) {
    const auto part = [&](const char* letter) {
        return reader.Integer(section, (name + QString::fromLatin1(letter)).toLatin1().constData());
    };
    return {part("X"), part("Y"), part("W"), part("H")};
}

void ShowSlot(SlotControls& slot, const ThemeReader& reader, const Page& page, int row) {
    const QString section = SectionOf(page, row);
    slot.place = Quarter(ReadBox(reader, section, QStringLiteral("ZoneListPisteNumSaisie")));
    const QString label = reader.Text(section, "ZoneListPisteNumSaisieLibele");
    ReadBox(reader, section, QStringLiteral("ZoneListPisteCover"));
    ReadBox(reader, section, QStringLiteral("ZoneListPisteTitre"));
    const QString keys = reader.Text(section, "ZoneListPisteNumSaisieKeys");
    slot.text = label.isEmpty() ? page.letter + QString::number(row - 1) : label;
    const auto where = [&] {
        return reader.Place(section, QStringLiteral("ZoneListPisteNumSaisieKeys"),
                            QStringLiteral("key codes joined by \"|\""));
    };
    slot.Caption = TellingWhere(where, [&] { return NameOfCombination(keys); });
    slot.Tag = keys;
    slot.Visible = true;
}

void HideSlots(Form_Main& form) {
    for (const Page& page : kPages) {
        for (int i = 0; i < kMostRows; ++i) {
            (form.config.*page.slots)(i) = SlotControls();
        }
    }
}

void Show(Form_Main& form) {
    form.config.Image_Theme = nullptr;
    form.config.Picture_ZoneList = nullptr;
    form.config.ZoneListNbTracks = 0;
    HideSlots(form);
    if (form.config.Combo_Theme.isEmpty()) {
        return;
    }
    ShowPictures(form);
    const ThemeReader reader(form, SelectedFolder(form));
    form.config.ZoneListNbTracks = reader.Integer(QStringLiteral("zonelist"), "ZoneListNbTracksParColonne");
    for (int row = 1; row <= RowsShown(form); ++row) {
        for (const Page& page : kPages) {
            ShowSlot((form.config.*page.slots)(row - 1), reader, page, row);
        }
    }
}

void AddThemes(Form_Main& form, const FolderList& folders) {
    for (const QString& folder : folders.List) {
        const QString name = NameOfPath(folder);
        if (!form.config.Combo_ThemeList.contains(name)) {
            form.config.Combo_ThemeList += name;
        }
    }
}

// An application folder needs no themes of its own when there are delivered ones.
void ListOwnThemes(Form_Main& form) {
    const QString folder = ThemesFolder(form);
    if (form.shell.shareFolder.isEmpty() || form.files.IsFolder(folder)) {
        PointFolderList(form, form.config.Dir1, folder);
    } else {
        form.config.Dir1 = {folder, {}};
    }
    form.config.Combo_ThemeList.clear();
    AddThemes(form, form.config.Dir1);
}

void ListDeliveredThemes(Form_Main& form) {
    const QString folder = DeliveredThemesFolder(form);
    if (folder.isEmpty() || !form.files.IsFolder(folder)) {
        return;
    }
    FolderList delivered;
    PointFolderList(form, delivered, folder);
    AddThemes(form, delivered);
    SortNames(form.config.Combo_ThemeList);
}

void SetSlots(const Form_Main& form, IniFile& file) {
    for (int row = 1; row <= RowsShown(form); ++row) {
        for (const Page& page : kPages) {
            const SlotControls& slot = (form.config.*page.slots)(row - 1);
            const QString section = SectionOf(page, row);
            file.SetValue(section, QStringLiteral("ZoneListPisteNumSaisieLibele"), Trim(slot.text));
            file.SetValue(section, QStringLiteral("ZoneListPisteNumSaisieKeys"), Trim(slot.Tag));
        }
    }
}

bool ChangesFile(Form_Main& form, const QString& path) {
    IniFile file = IniFilesOf(form).Open(form.files, path);
    const QByteArray before = file.Bytes();
    SetSlots(form, file);
    return file.Bytes() != before;
}

// Returns the folder whose theme.ini gets the slots. The delivered files are never changed: a theme that only
// exists there is first copied to the application folder. Returns nothing when there is nothing to write.
std::optional<QString> FolderToWrite(Form_Main& form) {
    const QString folder = SelectedFolder(form);
    QString own = PathIn(ThemesFolder(form), form.config.Combo_Theme);
    if (folder == own) {
        return own;
    }
    if (!ChangesFile(form, FileIn(form.files, folder, QStringLiteral("theme.ini")))) {
        return std::nullopt;
    }
    const bool isCopied = CopyFolderSafely(form.files, folder, own, CopyInProgress(form.shell.AppFolder));
    WriteLog(form,
             (isCopied ? QStringLiteral(" : Copie du theme ") : QStringLiteral(" : Impossible d'écrire ")) +
                 own);
    return isCopied ? std::optional(own) : std::nullopt;
}

} // namespace

void ListThemes(Form_Main& form) {
    ListOwnThemes(form);
    ListDeliveredThemes(form);
    // On the first run the variable has no value yet; without the key it is "default".
    QString theme =
        GetPrivateProfileString(form, ConfigPath(form), QStringLiteral("Main"), QStringLiteral("Theme"));
    if (theme.isEmpty()) {
        theme = form.settings.Theme;
    }
    form.config.Combo_Theme = form.config.Combo_ThemeList.contains(theme) ? theme : QString();
}

void Combo_Theme_Change(Form_Main& form) {
    EndsProgram("Combo_Theme_Change", [&] { Show(form); });
}

void Combo_Theme_Click(Form_Main& form) {
    Combo_Theme_Change(form);
}

void WriteSlots(Form_Main& form) {
    if (RowsShown(form) < 1) {
        return;
    }
    const std::optional<QString> folder = FolderToWrite(form);
    if (!folder) {
        return;
    }
    const QString path = FileIn(form.files, *folder, QStringLiteral("theme.ini"));
    const bool isWritten = ChangeProfile(form, path, [&](IniFile& file) { SetSlots(form, file); });
    if (!isWritten) {
        WriteLog(form, QStringLiteral(" : Impossible d'écrire ") + path);
    }
}
