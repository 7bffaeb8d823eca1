// The shared variables by name, as the console lists them.
#pragma once

#include <QJsonValue>

#include <span>

struct Form_Main;

// A variable's given name, or "Object.Member", and how to read it.
struct StateName {
    const char* name;
    QJsonValue (*read)(const Form_Main& form);
};

// The names in three parts: the program and its library, queue and dialogs; the theme; surfaces, pictures and
// other objects.
std::span<const StateName> VariableNames();
std::span<const StateName> ThemeNames();
std::span<const StateName> ObjectNames();
