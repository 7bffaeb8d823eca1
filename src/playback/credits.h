// Coins and credits.
#pragma once

struct Form_Main;

// Adds a credit; without a queue it sounds and asks for a track. Raises 6 for the 32768th credit.
void InsertCoin(Form_Main& form);

// Refuses for lack of credit: the sound, and the counter blinks three times. Nothing else changes.
void RefuseForCredit(Form_Main& form);

// A start must be paid and there is nothing left to pay it with.
bool OutOfCredit(const Form_Main& form);
