// Steps from page to page.
#pragma once

#include "core/integer.h"

struct Form_Main;

// The page number one back, from 0 to the last; one on, from the last to 0. The current page does not change.
Integer16 PageBefore(const Form_Main& form);
Integer16 PageAfter(const Form_Main& form);
