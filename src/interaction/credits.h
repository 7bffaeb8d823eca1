// Coins and credits.
#pragma once

struct Form_Main;

// Adds a credit. When the queue is empty, plays the coin sound and prompts for a track. Raises 6 for the
// 32768th credit.
void InsertCoin(Form_Main& form);

// Refuses a pick for lack of credit: plays the refusal sound and blinks the counter three times. Nothing else
// changes.
void RefuseForCredit(Form_Main& form);

// Returns true when starts must be paid for and there is no credit left.
bool OutOfCredit(const Form_Main& form);
