// Checking the tags of a folder's files.
#pragma once

struct CheckedFolder;

// Reports tags that stop the program, and pictures in tags that are never shown. Reads every tag.
void CheckTags(const CheckedFolder& checked);
