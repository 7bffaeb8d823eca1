// The table of the key bindings: reading and writing them.
#include "dialogs/key_bindings.h"

#include "core/run_time_error.h"
#include "dialogs/key_names.h"
#include "settings/config.h"
#include "settings/ini_file.h"
#include "state/form_main.h"

#include <array>

namespace {

const QString kSection = QStringLiteral("Key");

// The bindings by their index in KeyValues, which is also the order in which they are written.
struct BindingRow {
    const char* key;
    QString SettingsState::*variable;
    const char* caption;
};

using S = SettingsState;

// clang-format off
constexpr std::array kBindings = {
    BindingRow{"haut",         &S::KeyHaut,         "Up :"},
    BindingRow{"bas",          &S::KeyBas,          "Down :"},
    BindingRow{"gauche",       &S::KeyGauche,       "Left :"},
    BindingRow{"droite",       &S::KeyDroite,       "Right :"},
    BindingRow{"Valider",      &S::KeyValider,      "Confirm :"},
    BindingRow{"retour",       &S::KeyRetour,       "Back :"},
    BindingRow{"insertcoin",   &S::KeyInsertCoin,   "Insert coin :"},
    BindingRow{"gotonextzone", &S::KeyGotoNextZone, "Next zone :"},
    BindingRow{"Quitter",      &S::KeyQuitter,      "Quit :"},
    BindingRow{"Config",       &S::KeyConfig,       "Configuration :"},
    BindingRow{"Preview",      &S::KeyPreview,      "Previous track :"},
    BindingRow{"Stop",         &S::KeyStop,         "Stop :"},
    BindingRow{"Play",         &S::KeyPlay,         "Play :"},
    BindingRow{"Pause",        &S::KeyPause,        "Pause :"},
    BindingRow{"Next",         &S::KeyNext,         "Next track :"},
};
// clang-format on

static_assert(kBindings.size() == 15);

} // namespace

void ShowBindings(Form_Main& form) {
    ReadKeyBindings(form);
    for (int i = 0; i < static_cast<int>(kBindings.size()); ++i) {
        const BindingRow& row = kBindings[static_cast<std::size_t>(i)];
        const QString code = form.settings.*row.variable;
        const auto where = [&] {
            return ConfigPlace(form, kSection, QString::fromLatin1(row.key)) +
                   QStringLiteral(" (expected a key code)");
        };
        form.config.Label_KeyValue(i) = TellingWhere(where, [&] { return NameOfStoredKey(code); });
        form.config.KeyValues(i) = code;
    }
}

void SetBindings(const Form_Main& form, IniFile& file) {
    for (int i = 0; i < static_cast<int>(kBindings.size()); ++i) {
        file.SetValue(kSection, QString::fromLatin1(kBindings[static_cast<std::size_t>(i)].key),
                      form.config.KeyValues(i));
    }
}

QString CaptionOfBinding(Integer16 Index) {
    return QString::fromLatin1(kBindings[Subscript(Index).Within(kBindings.size() - 1)].caption);
}
