#include "storage/NodeAttributes.h"

#include <cstring>

#include <String.h>
#include <TypeConstants.h>
#include <fs_attr.h>

#include "storage/NodePrivate.h"

namespace {

constexpr size_t kMaxValueSize = 16 * 1024 * 1024;

status_t checkName(const char* name) {
    if (!name || !*name)
        return B_BAD_VALUE;
    return strlen(name) < B_ATTR_NAME_LENGTH ? B_OK : B_NAME_TOO_LONG;
}

// B_FILE_ERROR when nothing is open, B_ENTRY_NOT_FOUND when the open file has lost its name.
status_t pathOf(const BNode& node, std::string* path) {
    if (BNode::Private::Descriptor(node) < 0)
        return B_FILE_ERROR;
    *path = BNode::Private::Path(node);
    return path->empty() ? B_ENTRY_NOT_FOUND : B_OK;
}

status_t findAttribute(const BNode& node, const char* name, SideFile::Attribute* result) {
    std::string path;
    SideFile sideFile;
    status_t status = checkName(name);
    if (status == B_OK)
        status = pathOf(node, &path);
    if (status == B_OK)
        status = readSideFile(path, &sideFile);
    if (status != B_OK)
        return status;
    std::optional<SideFile::Attribute> found = sideFile.Find(name);
    if (!found)
        return B_ENTRY_NOT_FOUND;
    *result = std::move(*found);
    return B_OK;
}

// The value after bytes were written into it: whole at 0, extended by zeros where it was too short.
std::string overwrite(std::string value, size_t offset, std::string_view bytes) {
    if (offset == 0)
        return std::string(bytes);
    if (value.size() < offset + bytes.size())
        value.resize(offset + bytes.size());
    value.replace(offset, bytes.size(), bytes);
    return value;
}

} // namespace

ssize_t BNode::WriteAttr(const char* name, type_code type, off_t offset, const void* buffer,
                         size_t length) {
    status_t status = checkName(name);
    bool isInRange = offset >= 0 && length <= kMaxValueSize &&
                     static_cast<size_t>(offset) <= kMaxValueSize - length;
    if (status != B_OK || !isInRange || (!buffer && length > 0))
        return status != B_OK ? status : B_BAD_VALUE;
    std::string path;
    status = pathOf(*this, &path);
    if (status != B_OK)
        return status;
    std::string_view bytes(length > 0 ? static_cast<const char*>(buffer) : "", length);
    status = changeSideFile(path, [&](SideFile& sideFile) {
        std::optional<SideFile::Attribute> old = sideFile.Find(name);
        std::string value = old ? std::move(old->value) : std::string();
        sideFile.Set(name, type, overwrite(std::move(value), static_cast<size_t>(offset), bytes));
        return B_OK;
    });
    return status == B_OK ? static_cast<ssize_t>(length) : status;
}

ssize_t BNode::ReadAttr(const char* name, type_code /*type*/, off_t offset, void* buffer,
                        size_t length) const {
    if (offset < 0 || (!buffer && length > 0))
        return B_BAD_VALUE;
    SideFile::Attribute attribute;
    status_t status = findAttribute(*this, name, &attribute);
    if (status != B_OK)
        return status;
    if (static_cast<size_t>(offset) >= attribute.value.size())
        return 0;
    size_t count =
        attribute.value.copy(static_cast<char*>(buffer), length, static_cast<size_t>(offset));
    return static_cast<ssize_t>(count);
}

status_t BNode::RemoveAttr(const char* name) {
    SideFile::Attribute present;
    status_t status = findAttribute(*this, name, &present);
    std::string path;
    if (status == B_OK)
        status = pathOf(*this, &path);
    if (status != B_OK)
        return status;
    return changeSideFile(path, [&](SideFile& sideFile) -> status_t {
        return sideFile.Remove(name) ? B_OK : B_ENTRY_NOT_FOUND;
    });
}

status_t BNode::RenameAttr(const char* oldName, const char* newName) {
    SideFile::Attribute present;
    status_t status = checkName(newName);
    if (status == B_OK)
        status = findAttribute(*this, oldName, &present);
    std::string path;
    if (status == B_OK)
        status = pathOf(*this, &path);
    if (status != B_OK)
        return status;
    return changeSideFile(path, [&](SideFile& sideFile) -> status_t {
        return sideFile.Rename(oldName, newName) ? B_OK : B_ENTRY_NOT_FOUND;
    });
}

status_t BNode::GetAttrInfo(const char* name, attr_info* info) const {
    if (!info)
        return B_BAD_VALUE;
    SideFile::Attribute attribute;
    status_t status = findAttribute(*this, name, &attribute);
    if (status != B_OK)
        return status;
    info->type = attribute.type;
    info->size = static_cast<off_t>(attribute.value.size());
    return B_OK;
}

status_t BNode::GetNextAttrName(char* buffer) {
    if (!buffer)
        return B_BAD_VALUE;
    if (!fAttributes) {
        std::string path;
        SideFile sideFile;
        status_t status = pathOf(*this, &path);
        if (status == B_OK)
            status = readSideFile(path, &sideFile);
        if (status != B_OK)
            return status;
        fAttributes = std::make_unique<Attributes>();
        fAttributes->names = sideFile.Names();
    }
    // A longer name, which only an editor can have written, has no room in the caller's buffer.
    while (fAttributes->next < fAttributes->names.size()) {
        const std::string& name = fAttributes->names[fAttributes->next++];
        if (name.size() >= B_ATTR_NAME_LENGTH)
            continue;
        memcpy(buffer, name.c_str(), name.size() + 1);
        return B_OK;
    }
    return B_ENTRY_NOT_FOUND;
}

status_t BNode::RewindAttrs() {
    fAttributes.reset();
    return fDescriptor < 0 ? B_FILE_ERROR : B_OK;
}

status_t BNode::WriteAttrString(const char* name, const BString* data) {
    if (!data)
        return B_BAD_VALUE;
    size_t size = static_cast<size_t>(data->Length()) + 1;
    ssize_t written = WriteAttr(name, B_STRING_TYPE, 0, data->String(), size);
    return written < 0 ? static_cast<status_t>(written) : B_OK;
}

status_t BNode::ReadAttrString(const char* name, BString* result) const {
    if (!result)
        return B_BAD_VALUE;
    SideFile::Attribute attribute;
    status_t status = findAttribute(*this, name, &attribute);
    if (status == B_OK)
        *result = attribute.value.c_str();
    return status;
}
