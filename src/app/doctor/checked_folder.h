// One folder of the library as the checks see it.
#pragma once

#include <QSet>
#include <QString>
#include <QStringList>

#include <vector>

class FindingReport;
class FolderNames;
struct Form_Main;
struct WalkedFolder;

// The jukebox's own list of the folder is in `form.library`, the folder's settings are in `form.settings`.
struct CheckedFolder {
    Form_Main& form;
    FindingReport& report;
    const WalkedFolder& walked;
    const FolderNames& names;
    // Whether the list could be made. Without it List_List is incomplete.
    bool isListed = false;
    // Whether every file is opened and every cover decoded.
    bool isDeep = false;
};
