#pragma once

#include <functional>
#include <string>

#include <SupportDefs.h>

#include "storage/SideFile.h"

// The side files in the file system: for FOLDER/NAME it is FOLDER/.attributes/NAME. A side file
// only ever grows by whole lines or is replaced whole, so reading needs no lock; changes of one
// folder's side files come one after another, across threads and processes (a lock on the folder
// .attributes, held for the change only).

constexpr const char* kAttributeFolder = ".attributes";

// The side file of an absolute path, "" for the root folder, which has none.
std::string sideFilePath(const std::string& path);

// An empty one when there is none.
status_t readSideFile(const std::string& path, SideFile* result);

// Reads, lets `change` work on it, and stores the side file; one that has become empty goes. What
// `change` returns is an error that leaves everything as it was, or B_OK.
status_t changeSideFile(const std::string& path, const std::function<status_t(SideFile&)>& change);

void removeSideFile(const std::string& path);

// Brings the side file's bytes to the disk.
status_t syncSideFile(const std::string& path);

// Does `rename`, which moves or replaces a file, and takes its side file along. From the moment
// that the new place is the moved file, no attribute of what it replaced is seen.
status_t moveWithSideFile(const std::string& from, const std::string& to,
                          const std::function<status_t()>& rename);

// Removes the folder .attributes of a folder that holds nothing else. False when there is something
// else.
bool clearAttributeFolder(const std::string& folder);
