// The page that is shown: its entries of the list.
#pragma once

struct Form_Main;

// Empties the slots of a page. Raises 9 for more rows than a page can have.
void ClearPage(Form_Main& form);

// Counts the pages of the list. Raises 11 for pages without rows.
void CountPages(Form_Main& form);

// Returns the index in the list of the entry in the page's first slot.
int FirstOfPage(const Form_Main& form);

// Fills the slots of the current page. NumTrack is the loop's counter; afterwards it is the index after the
// page's last entry in the list.
void FillPage(Form_Main& form);
