// Steps of the queue: its entries, the current one, and the name of the track that plays.
#pragma once

#include "core/integer.h"

#include <QString>

struct Form_Main;

// Adds an entry at the end, which FillLastEntry gives its track. Selects the first entry when none is
// selected.
void AddEntry(Form_Main& form);

// Gives the last entry its track, paid for once and never started. Raises 9 beyond 1000 entries.
void FillLastEntry(Form_Main& form, const QString& path, const QString& title);

// Moves the selected entry, and the selection with it, by a step of 1 or -1. Raises 9 outside the queue.
void MoveSelectedEntry(Form_Main& form, Integer16 step);

// Removes the selected entry. The selection stays at its place, or on the last entry.
void RemoveSelectedEntry(Form_Main& form);

// Returns true when the entry has been started as often as it was paid for.
bool IsUncovered(const Form_Main& form, Integer16 entry);

// Make the entry before or after the current one current; from the first entry to the last, and from the last
// to the first.
void GoToPreviousEntry(Form_Main& form);
void GoToNextEntry(Form_Main& form);

// Makes an entry the current one, and the current entry the selected one. 0 is no entry.
void MakeCurrent(Form_Main& form, Integer16 entry);
void SelectCurrent(Form_Main& form);

// Count a start of the entry, and a start that was paid for.
void CountStart(Form_Main& form, Integer16 entry);
void CountPayment(Form_Main& form, Integer16 entry);

// Names the playing track after an entry of the queue, or after a slot of the page.
void NameAfterEntry(Form_Main& form, Integer16 entry);
void NameAfterSlot(Form_Main& form, Integer16 slot);

// Forgets the name of the playing track when nothing plays.
void NameNothing(Form_Main& form);

// Names a track that the queue starts by itself, or that a double tap starts.
// Deliberate D-12: the slot under the cursor names the track, not the queue's entry. One would expect the
// entry; the information lines take the title from the queue anyway.
void NameAfterSlotUnderCursor(Form_Main& form);
