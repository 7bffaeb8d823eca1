// The names of the theme's variables: every key of theme.ini, the slots, the command menu.
#include "app/console/state_names.h"
#include "app/console/state_values.h"
#include "state/form_main.h"

namespace {

constexpr int kMenus = 100;

constexpr int kSlotRows = 10;

// A part of a slot's fields as two lists, column 1 and column 2, rows 1 to 10.
template <typename Part>
QJsonValue SlotLists(const Part& part) {
    QJsonArray columns;
    for (int column = 1; column <= 2; ++column) {
        QJsonArray rows;
        for (int row = 1; row <= kSlotRows; ++row) {
            rows.append(StateValue(part(column, row)));
        }
        columns.append(rows);
    }
    return columns;
}

// A part of the two pages' rectangles as a list, the left page first.
template <typename Part>
QJsonValue PageList(const Form_Main& form, const Part& part) {
    return QJsonArray{StateValue(part(form.theme.ZoneListPage(0))),
                      StateValue(part(form.theme.ZoneListPage(1)))};
}

// The last menu that has rows.
int MenuCount(const Form_Main& form) {
    int last = kMenus;
    while (last > 0 && form.menu.CommandRowCount(last).value() <= 0) {
        --last;
    }
    return last;
}

int RowCount(const Form_Main& form, int menu) {
    return std::min(form.menu.CommandRowCount(menu).value(), kMenus);
}

QJsonValue RowCounts(const Form_Main& form) {
    return ElementsOf(form.menu.CommandRowCount, 1, MenuCount(form));
}

QJsonValue LastRows(const Form_Main& form) {
    return ElementsOf(form.cursor.CommandLastRow, 1, MenuCount(form));
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
    for (int choice = 1; choice <= kMenus && !form.menu.CommandChoiceValue(menu, row, choice).isEmpty();
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
    return std::min(form.keyboard.KeyNbLines.value(), kMost);
}

QJsonValue KeyCounts(const Form_Main& form) {
    return ElementsOf(form.keyboard.KeyNbCols, 1, KeyboardLines(form));
}

// A field of the keyboard's keys as one list a line, columns from 1.
template <typename Element>
QJsonValue KeyLists(const Form_Main& form, const BoundedTable<Element, 100, 100>& field) {
    QJsonArray lines;
    for (int line = 1; line <= KeyboardLines(form); ++line) {
        lines.append(RowOf(field, line, 1, form.keyboard.KeyNbCols(line).value()));
    }
    return lines;
}

#define NAME(owner, variable)                                                                                \
    {#variable, [](const Form_Main& form) { return StateValue(form.owner.variable); }},
#define KEY(section, key, member, part)                                                                      \
    {key, [](const Form_Main& form) { return StateValue(form.theme.member part); }},
#define KEYS(kind, section, name) KEYS_OF_##kind(KEY, KEY, section, name)
#define PAGES(name, part)                                                                                    \
    {name, [](const Form_Main& form) { return PageList(form, [](const Box16& page) { return page.part; }); }},
#define SLOT_LIST(section, key, member, part)                                                                \
    {key, [](const Form_Main& form) {                                                                        \
         return SlotLists([&](int column, int row) { return form.slots.member(column, row) part; });         \
     }},
#define SLOT_LISTS(kind, name) KEYS_OF_##kind(SLOT_LIST, SLOT_LIST, "", name)
#define KEYBOARD_KEY(section, key, member, part)                                                             \
    {key, [](const Form_Main& form) { return StateValue(form.keyboard.member part); }},
#define KEYBOARD_ROW(kind, name) KEYS_OF_##kind(KEYBOARD_KEY, KEYBOARD_KEY, "", name)
#define KEYBOARD_LISTS(field)                                                                                \
    {#field, [](const Form_Main& form) { return KeyLists(form, form.keyboard.field); }},
#define MENU(field) {#field, [](const Form_Main& form) { return MenuLists(form, form.menu.field); }},
#define CHOICES(field) {#field, [](const Form_Main& form) { return ChoiceLists(form, form.menu.field); }},

// clang-format off
constexpr StateName kNames[] = {
    THEME_ZONE_KEYS(KEYS)
    PAGES("ZoneListPageX", X)
    PAGES("ZoneListPageY", Y)
    PAGES("ZoneListPageWidth", W)
    PAGES("ZoneListPageHeight", H)
    THEME_VERTICAL_KEYS(KEYS)
    THEME_NAVIGATION_KEYS(KEYS)
    THEME_PLAYLIST_KEYS(KEYS)
    THEME_MAIN_KEYS(KEYS)
    THEME_PLAYLIST_BUTTON_KEYS(KEYS)
    THEME_SLOT_STYLE_KEYS(KEYS)
    THEME_COMMAND_KEYS(KEYS)
    NAME(frame, ZoneScaleX)
    NAME(frame, ZoneScaleY)

    SLOT_KEYS(SLOT_LISTS)

    KEYBOARD_KEYS(KEYBOARD_ROW)
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
    NAME(menu, CommandCurrentMenu)
    NAME(menu, CommandCurrentId)
};
// clang-format on

#undef NAME
#undef KEY
#undef KEYS
#undef PAGES
#undef SLOT_LIST
#undef SLOT_LISTS
#undef KEYBOARD_KEY
#undef KEYBOARD_ROW
#undef KEYBOARD_LISTS
#undef MENU
#undef CHOICES

} // namespace

std::span<const StateName> ThemeNames() {
    return kNames;
}
