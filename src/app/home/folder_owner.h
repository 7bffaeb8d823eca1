// Acting as the owner of a folder.
#pragma once

#include <QString>

// Gives the process the rights of the folder's owner. Does nothing unless the superuser runs it. Returns
// false when that fails.
bool BecomeOwnerOf(const QString& folder);

// Gives up the superuser's rights for good after BecomeOwnerOf: the toolkit refuses to run with the rights of
// two users. Does nothing without another owner. Returns false when that fails.
bool StayOwner();
