#pragma once

#include <SupportDefs.h>

#include <functional>
#include <string>

class BFile;

// Replacing files that hold the user's own data: what stands under the name is at every moment one
// whole file, the old or the new one, whatever ends the program or fills the disk. The new one is
// written beside the old, flushed, and renamed over it; through a symbolic link its target is
// replaced, and missing folders are made. Any thread, but one at a time for each file.
//
// B_OK, or the error of the first step that failed; nothing has changed then.
status_t ReplaceFile(const char* path, const std::function<status_t(BFile*)>& write);
status_t ReplaceFile(const char* path, const std::string& content);

// The file that a path leads to, through symbolic links; the path itself where nothing is yet.
std::string TargetOf(const char* path);
status_t MakeParentFolder(const char* path);

// The whole content. An error leaves it empty.
status_t ReadWholeFile(const char* path, std::string* content);
