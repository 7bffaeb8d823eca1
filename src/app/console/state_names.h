// The shared variables by name, as the console shows them.
#pragma once

#include <QJsonValue>
#include <QString>

#include <span>
#include <vector>

struct Form_Main;

// A variable's given name, or "Object.Member", and how to read it.
struct StateName {
    const char* name;
    QJsonValue (*read)(const Form_Main& form);
};

// Every name, in the order in which the whole state is listed.
const std::vector<StateName>& StateNames();

// The row of a name, exact case; null when there is none.
const StateName* FindStateName(const QString& name);

// The parts of the list: the program and its library, queue and dialogs; the theme; surfaces, pictures and
// other objects.
std::span<const StateName> VariableNames();
std::span<const StateName> ThemeNames();
std::span<const StateName> ObjectNames();
