// Building the rows of a page.
#include "platform/qt/page_rows.h"

#include "platform/qt/dialog_widgets.h"

#include <QFrame>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QVBoxLayout>

namespace {

// Pixels. On a narrower screen than 800 pixels a page scrolls sideways.
constexpr int kLeastPageWidth = 540;

WrapLabel* NewLabel(const char* text, const char* role) {
    auto* label = new WrapLabel(QString::fromLatin1(text));
    SetRole(label, role);
    return label;
}

} // namespace

QWidget* NewPage() {
    auto* page = new QWidget;
    page->setMinimumWidth(kLeastPageWidth);
    auto* column = new QVBoxLayout(page);
    column->setContentsMargins(20, 12, 12, 16);
    column->setSpacing(6);
    return page;
}

QVBoxLayout* ColumnOf(QWidget* widget) {
    return static_cast<QVBoxLayout*>(widget->layout());
}

void AddHeading(QWidget* page, const char* text) {
    ColumnOf(page)->addWidget(NewLabel(text, "heading"));
}

void AddExplanation(QWidget* page, const char* text) {
    ColumnOf(page)->addWidget(NewLabel(text, "explanation"));
}

QWidget* AddRow(QWidget* page, QWidget* caption, const char* explanation, QWidget* control) {
    auto* row = new QFrame;
    SetRole(row, "row");
    auto* column = new QVBoxLayout(row);
    column->setContentsMargins(0, 6, 0, 10);
    column->setSpacing(8);
    auto* line = new QHBoxLayout;
    line->setSpacing(16);
    auto* words = new QVBoxLayout;
    words->setSpacing(2);
    words->addWidget(caption);
    words->addWidget(NewLabel(explanation, "explanation"));
    line->addLayout(words, 1);
    if (control != nullptr) {
        line->addWidget(control, 0, Qt::AlignRight | Qt::AlignVCenter);
    }
    column->addLayout(line);
    ColumnOf(page)->addWidget(row);
    return row;
}

QWidget* AddRow(QWidget* page, const char* caption, const char* explanation, QWidget* control) {
    if (control != nullptr) {
        control->setAccessibleName(QString::fromLatin1(caption));
    }
    return AddRow(page, NewLabel(caption, "caption"), explanation, control);
}

void AddSwitches(DialogWindow& window, QWidget* page, std::span<const SwitchRow> rows) {
    for (const SwitchRow& row : rows) {
        AddRow(page, row.caption, row.explanation, window.AddSwitch({QString::fromLatin1(row.control)}));
    }
}

void AddPlaceFields(DialogWindow& window, QWidget* row, const char* control) {
    auto* line = new QHBoxLayout;
    line->setSpacing(12);
    for (const char* side : {"Left", "Top", "Width", "Height"}) {
        auto* column = new QVBoxLayout;
        column->setSpacing(2);
        column->addWidget(NewLabel(side, "explanation"));
        QLineEdit* field = window.AddField({QString::fromLatin1(control) + QLatin1String(side)});
        field->setAccessibleName(QString::fromLatin1(side));
        column->addWidget(field);
        line->addLayout(column, 1);
    }
    ColumnOf(row)->addLayout(line);
}
