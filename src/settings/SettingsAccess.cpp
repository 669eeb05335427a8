#include "settings/SettingsFile.h"

#include <Autolock.h>

status_t SettingsFile::Get(const char* key, bool* value, int32 index) const {
    const BAutolock lock(fLock);
    return FindBool(key, index, value);
}

status_t SettingsFile::Get(const char* key, int8* value) const {
    const BAutolock lock(fLock);
    return FindInt8(key, value);
}

status_t SettingsFile::Get(const char* key, int32* value) const {
    const BAutolock lock(fLock);
    return FindInt32(key, value);
}

status_t SettingsFile::Get(const char* key, float* value) const {
    const BAutolock lock(fLock);
    return FindFloat(key, value);
}

status_t SettingsFile::Get(const char* key, BRect* value) const {
    const BAutolock lock(fLock);
    return FindRect(key, value);
}

status_t SettingsFile::Get(const char* key, BString* value, int32 index) const {
    const BAutolock lock(fLock);
    return FindString(key, index, value);
}

status_t SettingsFile::Replace(const char* key, bool value) {
    const BAutolock lock(fLock);
    return ReplaceBool(key, value);
}

status_t SettingsFile::Replace(const char* key, int8 value) {
    const BAutolock lock(fLock);
    return ReplaceInt8(key, value);
}

status_t SettingsFile::Replace(const char* key, int32 value) {
    const BAutolock lock(fLock);
    return ReplaceInt32(key, value);
}

status_t SettingsFile::Replace(const char* key, float value) {
    const BAutolock lock(fLock);
    return ReplaceFloat(key, value);
}

status_t SettingsFile::Replace(const char* key, BRect value) {
    const BAutolock lock(fLock);
    return ReplaceRect(key, value);
}

status_t SettingsFile::Replace(const char* key, const char* value) {
    const BAutolock lock(fLock);
    return ReplaceString(key, value);
}

void SettingsFile::PutAt(const char* key, int32 index, bool value) {
    const BAutolock lock(fLock);
    if (ReplaceBool(key, index, value) != B_OK)
        AddBool(key, value);
}

void SettingsFile::PutAt(const char* key, int32 index, const char* value) {
    const BAutolock lock(fLock);
    if (ReplaceString(key, index, value) != B_OK)
        AddString(key, value);
}
