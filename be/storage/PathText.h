#pragma once

#include <string>

#include <SupportDefs.h>

// Paths as texts. Absolute ones here begin with one slash and have none at the end, but for "/".

std::string absolutePath(const std::string& path); // "" when the current folder is unknown
std::string folderOf(const std::string& absolute);
std::string leafOf(const std::string& path); // "" of "/"
std::string joinPath(const std::string& folder, const std::string& leaf);
bool hasDotComponents(const std::string& path);

enum class Traverse { kNo, kYes };

// The absolute path of an entry whose folder exists, without dots or links in the folder's part;
// with kYes the entry is no link either, unless it leads nowhere.
status_t resolveEntry(const std::string& path, Traverse traverse, std::string* result);
