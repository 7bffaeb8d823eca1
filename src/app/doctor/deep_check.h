// Opening every file as the jukebox does.
#pragma once

#include <vector>

class FindingReport;
class Progress;
struct MediaFile;

// Reports files that do not open. Works on two files at a time. The progress line shows the time left.
void CheckOpening(const std::vector<MediaFile>& files, FindingReport& report, Progress& progress);
