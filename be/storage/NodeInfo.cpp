#include <NodeInfo.h>

#include <cstring>

#include <Node.h>
#include <TypeConstants.h>

namespace {

constexpr const char* kTypeAttribute = "BEOS:TYPE";

} // namespace

BNodeInfo::BNodeInfo(BNode* node) : fNode(node) {}

status_t BNodeInfo::SetTo(BNode* node) {
    fNode = node;
    return node ? InitCheck() : B_BAD_VALUE;
}

status_t BNodeInfo::InitCheck() const {
    return fNode ? fNode->InitCheck() : B_NO_INIT;
}

status_t BNodeInfo::GetType(char* type) const {
    if (!type)
        return B_BAD_VALUE;
    status_t status = InitCheck();
    if (status != B_OK)
        return status;
    char value[B_MIME_TYPE_LENGTH] = {};
    ssize_t size = fNode->ReadAttr(kTypeAttribute, B_MIME_STRING_TYPE, 0, value, sizeof(value) - 1);
    if (size < 0)
        return static_cast<status_t>(size);
    memcpy(type, value, sizeof(value));
    return B_OK;
}

status_t BNodeInfo::SetType(const char* type) {
    status_t status = InitCheck();
    if (status != B_OK)
        return status;
    if (!type)
        return fNode->RemoveAttr(kTypeAttribute);
    size_t size = strlen(type) + 1;
    if (size > B_MIME_TYPE_LENGTH)
        return B_BAD_VALUE;
    // Written after every download, and nearly always the same: then the file is left alone.
    char present[B_MIME_TYPE_LENGTH];
    if (GetType(present) == B_OK && strcmp(present, type) == 0)
        return B_OK;
    ssize_t written = fNode->WriteAttr(kTypeAttribute, B_MIME_STRING_TYPE, 0, type, size);
    return written < 0 ? static_cast<status_t>(written) : B_OK;
}
