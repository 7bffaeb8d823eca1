// The pictures shown with tracks and folders.
#include "library/covers.h"

#include "shell/form_main.h"

// Covers come with their own change; until then no entry has one.
bool DrawSlotCover(Form_Main& /*form*/, const SlotPlace& /*place*/, Integer16 /*slot*/) {
    return false;
}

void LoadBigCover(Form_Main& /*form*/, Integer16 /*slot*/) {}
