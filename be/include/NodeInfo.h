#pragma once

#include <StorageDefs.h>

class BNode;

// The MIME type of a file, kept in its attribute "BEOS:TYPE". Borrows the node.
class BNodeInfo {
public:
    BNodeInfo() = default;
    BNodeInfo(BNode* node);
    ~BNodeInfo() = default;

    status_t SetTo(BNode* node);
    status_t InitCheck() const;
    status_t GetType(char* type) const; // B_MIME_TYPE_LENGTH bytes
    status_t SetType(const char* type); // null removes it; B_BAD_VALUE for one that is too long

private:
    BNode* fNode = nullptr;
};
