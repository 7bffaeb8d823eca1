// One slot of the track zone.
#pragma once

#include "core/integer.h"
#include "rendering/geometry.h"
#include "rendering/titles.h"

struct Form_Main;
class FolderNames;

// Paints the page's entry `slot` at its place on both caches. `names` belongs to the folder shown.
void DrawSlot(Form_Main& form, const SlotPlace& place, Integer16 slot, const FolderNames& names);

// The words of a slot, in capitals.
struct SlotWords {
    TitleParts parts;
    // The track number; empty when there is none.
    QString number;
};

// Makes the words of an entry from its kind ("dir", "file", "playlist") and its title in the list.
SlotWords WordsOfSlot(const QString& type, const QString& title);

// Returns the second line of a folder's slot: its only sub-folder or the number of its sub-folders; empty
// without any. `title` is the folder's title in capitals. Raises 76 when there is no such folder.
QString FolderSummary(Form_Main& form, const QString& path, const QString& title);
