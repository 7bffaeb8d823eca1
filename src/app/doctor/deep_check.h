// Opening every file as the jukebox does.
#pragma once

#include <vector>

class FindingReport;
class Progress;
struct MediaFile;

// Reports files that do not open, in their order. Works on two files at a time. The progress line shows the
// time left. A signal ends it early.
void CheckOpening(const std::vector<MediaFile>& files, FindingReport& report, Progress& progress);
