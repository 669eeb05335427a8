#include <Path.h>

#include <Directory.h>
#include <Entry.h>

#include "storage/EntryPrivate.h"
#include "storage/NodePrivate.h"
#include "storage/PathText.h"

BPath::BPath(const char* directory, const char* leaf, bool normalize) {
    SetTo(directory, leaf, normalize);
}

BPath::BPath(const BDirectory* directory, const char* leaf, bool normalize) {
    SetTo(directory, leaf, normalize);
}

BPath::BPath(const BEntry* entry) {
    SetTo(entry);
}

BPath::BPath(const entry_ref* ref) {
    SetTo(ref);
}

status_t BPath::SetTo(const char* path, const char* leaf, bool normalize) {
    bool isGood = path && *path && !(leaf && *leaf == '/');
    // The arguments may be this path's own text.
    std::string text = isGood ? path : "";
    if (isGood && leaf && *leaf)
        text = text + "/" + leaf;
    Unset();
    if (!isGood)
        return fStatus = B_BAD_VALUE;
    if (normalize || hasDotComponents(text))
        return fStatus = resolveEntry(text, Traverse::kNo, &fPath);
    fPath = absolutePath(text);
    return fStatus = fPath.empty() ? B_ENTRY_NOT_FOUND : B_OK;
}

status_t BPath::SetTo(const BDirectory* directory, const char* leaf, bool normalize) {
    if (!directory || directory->InitCheck() != B_OK) {
        Unset();
        return fStatus = B_BAD_VALUE;
    }
    if (leaf && *leaf == '/')
        return SetTo(leaf, nullptr, normalize);
    std::string path = BNode::Private::Path(*directory);
    if (!path.empty())
        return SetTo(path.c_str(), leaf, normalize);
    Unset();
    return fStatus = B_ENTRY_NOT_FOUND;
}

status_t BPath::SetTo(const BEntry* entry) {
    if (entry && entry->InitCheck() == B_OK)
        return entry->GetPath(this);
    Unset();
    return fStatus = entry ? entry->InitCheck() : B_BAD_VALUE;
}

status_t BPath::SetTo(const entry_ref* ref) {
    std::string path = ref ? entry_ref::Private::Path(*ref) : std::string();
    Unset();
    return path.empty() ? (fStatus = B_BAD_VALUE) : SetTo(path.c_str());
}

void BPath::Unset() {
    fPath.clear();
    fStatus = B_NO_INIT;
}

status_t BPath::Append(const char* path, bool normalize) {
    if (fStatus != B_OK || !path || *path == '/') {
        Unset();
        return fStatus = B_BAD_VALUE;
    }
    return SetTo(fPath.c_str(), path, normalize);
}

const char* BPath::Path() const {
    return fStatus == B_OK ? fPath.c_str() : nullptr;
}

const char* BPath::Leaf() const {
    return fStatus == B_OK ? fPath.c_str() + fPath.rfind('/') + 1 : nullptr;
}

status_t BPath::GetParent(BPath* path) const {
    if (!path)
        return B_BAD_VALUE;
    if (fStatus != B_OK)
        return B_NO_INIT;
    return fPath == "/" ? B_ENTRY_NOT_FOUND : path->SetTo(folderOf(fPath).c_str());
}

bool BPath::operator==(const BPath& path) const {
    return fStatus == path.fStatus && fPath == path.fPath;
}

bool BPath::operator==(const char* path) const {
    return path ? fStatus == B_OK && fPath == path : fStatus != B_OK;
}
