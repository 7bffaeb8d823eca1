// Setting what the information lines show.
#pragma once

#include <QString>

struct Form_Main;

// Gives the information lines a new state, from its first tick on.
void SetInfos(Form_Main& form, const QString& infos);

// The state "btn" and the focused button.
void SetButtonInfos(Form_Main& form);
