// The rows that the pages of Form_Config are made of.
#pragma once

#include "platform/qt/dialog_window.h"

#include <span>

class QVBoxLayout;

// A yes or no, with its caption and what it does.
struct SwitchRow {
    const char* control;
    const char* caption;
    const char* explanation;
};

// An empty page.
QWidget* NewPage();
// The column of a page or of a row, for what comes below its first line.
QVBoxLayout* ColumnOf(QWidget* widget);

void AddHeading(QWidget* page, const char* text);
void AddExplanation(QWidget* page, const char* text);
// Adds a row with a caption, an explanation below it and a control at the right. Returns the row.
QWidget* AddRow(QWidget* page, QWidget* caption, const char* explanation, QWidget* control);
QWidget* AddRow(QWidget* page, const char* caption, const char* explanation, QWidget* control);
void AddSwitches(DialogWindow& window, QWidget* page, std::span<const SwitchRow> rows);
// Adds four fields "Left", "Top", "Width" and "Height" below a row. Their controls' names begin with
// `control`.
void AddPlaceFields(DialogWindow& window, QWidget* row, const char* control);
