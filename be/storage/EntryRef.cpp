#include <Entry.h>

#include <cstdlib>
#include <cstring>
#include <string>

#include "storage/EntryPrivate.h"

entry_ref::entry_ref(const entry_ref& ref) {
    *this = ref;
}

entry_ref::~entry_ref() {
    free(name);
}

entry_ref& entry_ref::operator=(const entry_ref& ref) {
    if (this == &ref)
        return *this;
    device = ref.device;
    directory = ref.directory;
    fFolder = ref.fFolder;
    set_name(ref.name);
    return *this;
}

bool entry_ref::operator==(const entry_ref& ref) const {
    bool hasSameName = name && ref.name ? strcmp(name, ref.name) == 0 : name == ref.name;
    return hasSameName && device == ref.device && directory == ref.directory;
}

status_t entry_ref::set_name(const char* newName) {
    char* copy = newName ? strdup(newName) : nullptr;
    if (newName && !copy)
        return B_NO_MEMORY;
    free(name);
    name = copy;
    return B_OK;
}

std::string entry_ref::Private::Path(const entry_ref& ref) {
    if (!ref.name || ref.fFolder.empty())
        return {};
    std::string path = ref.fFolder;
    if (path != "/")
        path += '/';
    return path += ref.name;
}

entry_ref entry_ref::Private::FromPath(const std::string& path, dev_t device, ino_t directory) {
    size_t slash = path.rfind('/');
    entry_ref ref;
    ref.device = device;
    ref.directory = directory;
    ref.fFolder = slash == 0 ? "/" : path.substr(0, slash);
    ref.set_name(slash == 0 && path.size() == 1 ? "." : path.c_str() + slash + 1);
    return ref;
}

// The two numbers and the path; of an unset reference the path is empty.
std::string entry_ref::Private::Flatten(const entry_ref& ref) {
    std::string flat(reinterpret_cast<const char*>(&ref.device), sizeof(ref.device));
    flat.append(reinterpret_cast<const char*>(&ref.directory), sizeof(ref.directory));
    return flat + Path(ref);
}

status_t entry_ref::Private::Unflatten(const std::string& flat, entry_ref* ref) {
    dev_t device = 0;
    ino_t directory = 0;
    constexpr size_t kNumbers = sizeof(device) + sizeof(directory);
    if (flat.size() < kNumbers)
        return B_BAD_DATA;
    memcpy(&device, flat.data(), sizeof(device));
    memcpy(&directory, flat.data() + sizeof(device), sizeof(directory));
    std::string path = flat.substr(kNumbers);
    if (path.empty()) {
        *ref = entry_ref();
        return B_OK;
    }
    if (path[0] != '/' || path.find('\0') != std::string::npos)
        return B_BAD_DATA;
    *ref = FromPath(path, device, directory);
    return B_OK;
}
