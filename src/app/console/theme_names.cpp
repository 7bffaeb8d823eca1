// The names of the theme's variables: every key of theme.ini, the slots, the command menu.
#include "app/console/state_names.h"
#include "app/console/state_values.h"
#include "shell/form_main.h"

namespace {

constexpr int kMenus = 100;

// A slot field as two lists, column 1 and column 2, rows 1 to 10.
template <typename Element>
QJsonValue SlotLists(const BoundedTable<Element, 2, 100>& field) {
    return QJsonArray{RowOf(field, 1, 1, 10), RowOf(field, 2, 1, 10)};
}

// The last menu that has rows.
int MenuCount(const Form_Main& form) {
    int last = kMenus;
    while (last > 0 && form.CommandRowCount(last).value() <= 0) {
        --last;
    }
    return last;
}

int RowCount(const Form_Main& form, int menu) {
    return std::min(form.CommandRowCount(menu).value(), kMenus);
}

QJsonValue RowCounts(const Form_Main& form) {
    return ElementsOf(form.CommandRowCount, 1, MenuCount(form));
}

QJsonValue LastRows(const Form_Main& form) {
    return ElementsOf(form.CommandLastRow, 1, MenuCount(form));
}

// A menu field as one list a menu, rows from 1.
template <typename Element>
QJsonValue MenuLists(const Form_Main& form, const BoundedTable<Element, kMenus, kMenus>& field) {
    QJsonArray menus;
    for (int menu = 1; menu <= MenuCount(form); ++menu) {
        menus.append(RowOf(field, menu, 1, RowCount(form, menu)));
    }
    return menus;
}

// The choices of a row, up to the first whose value is empty.
QJsonValue RowChoices(const Form_Main& form, const SparseCube<QString, kMenus>& field, int menu, int row) {
    QJsonArray choices;
    for (int choice = 1; choice <= kMenus && !form.CommandChoiceValue(menu, row, choice).isEmpty();
         ++choice) {
        choices.append(field(menu, row, choice));
    }
    return choices;
}

QJsonValue ChoiceLists(const Form_Main& form, const SparseCube<QString, kMenus>& field) {
    QJsonArray menus;
    for (int menu = 1; menu <= MenuCount(form); ++menu) {
        QJsonArray rows;
        for (int row = 1; row <= RowCount(form, menu); ++row) {
            rows.append(RowChoices(form, field, menu, row));
        }
        menus.append(rows);
    }
    return menus;
}

// The lines of the on-screen keyboard that its theme has, at most the array's.
int KeyboardLines(const Form_Main& form) {
    constexpr int kMost = 100;
    return std::min(form.KeyNbLines.value(), kMost);
}

QJsonValue KeyCounts(const Form_Main& form) {
    return ElementsOf(form.KeyNbCols, 1, KeyboardLines(form));
}

// A field of the keyboard's keys as one list a line, columns from 1.
template <typename Element>
QJsonValue KeyLists(const Form_Main& form, const BoundedTable<Element, 100, 100>& field) {
    QJsonArray lines;
    for (int line = 1; line <= KeyboardLines(form); ++line) {
        lines.append(RowOf(field, line, 1, form.KeyNbCols(line).value()));
    }
    return lines;
}

#define NAME(variable) {#variable, [](const Form_Main& form) { return StateValue(form.variable); }},
#define KEY(section, key) NAME(key)
#define PAGE_KEY(section, key, array, index)                                                                 \
    {#key, [](const Form_Main& form) { return StateValue(form.array(index)); }},
#define PAGES(array) {#array, [](const Form_Main& form) { return ElementsOf(form.array, 0, 1); }},
#define SLOT_LISTS(field) {#field, [](const Form_Main& form) { return SlotLists(form.field); }},
#define KEYBOARD_LISTS(field) {#field, [](const Form_Main& form) { return KeyLists(form, form.field); }},
#define MENU(field) {#field, [](const Form_Main& form) { return MenuLists(form, form.field); }},
#define CHOICES(field) {#field, [](const Form_Main& form) { return ChoiceLists(form, form.field); }},

// clang-format off
constexpr StateName kNames[] = {
    THEME_ZONE_KEYS(KEY, KEY, PAGE_KEY)
    PAGES(ZoneListPageX)
    PAGES(ZoneListPageY)
    PAGES(ZoneListPageWidth)
    PAGES(ZoneListPageHeight)
    THEME_VERTICAL_KEYS(KEY, KEY, PAGE_KEY)
    THEME_NAVIGATION_KEYS(KEY, KEY, PAGE_KEY)
    THEME_PLAYLIST_KEYS(KEY, KEY, PAGE_KEY)
    THEME_MAIN_KEYS(KEY, KEY, PAGE_KEY)
    THEME_PLAYLIST_BUTTON_KEYS(KEY, KEY, PAGE_KEY)
    THEME_SLOT_STYLE_KEYS(KEY, KEY, PAGE_KEY)
    THEME_COMMAND_KEYS(KEY, KEY, PAGE_KEY)
    NAME(ZoneScaleX)
    NAME(ZoneScaleY)

    SLOT_KEYS(SLOT_LISTS, SLOT_LISTS)

    KEYBOARD_KEYS(NAME, NAME)
    {"KeyNbCols", KeyCounts},
    KEYBOARD_TABLES(KEYBOARD_LISTS)

    {"CommandRowCount", RowCounts},
    {"CommandLastRow", LastRows},
    MENU(CommandType)
    MENU(CommandAction)
    MENU(CommandLabel)
    CHOICES(CommandChoiceValue)
    CHOICES(CommandChoiceLabel)
    MENU(CommandChoice)
    MENU(CommandParam)
    NAME(CommandCurrentMenu)
    NAME(CommandCurrentId)
};
// clang-format on

#undef NAME
#undef KEY
#undef PAGE_KEY
#undef PAGES
#undef SLOT_LISTS
#undef KEYBOARD_LISTS
#undef MENU
#undef CHOICES

} // namespace

std::span<const StateName> ThemeNames() {
    return kNames;
}
