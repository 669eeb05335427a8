#pragma once

#include <Message.h>
#include <SupportDefs.h>

class BNode;

// A message's fields as attributes of a file, named by their place: a single field by its name, a
// field of a nested message by "parent:name", one of several values by "name::07", the index padded
// with zeros to the width of the last one.

// Writes an attribute for every field of a known type. A name with a colon would be read back as
// something else: it ends the storing of the message that holds it, without an error.
status_t StoreAttributes(const BMessage& message, BNode* node);

// Puts the values of the node's attributes into the fields that the message already has; the first
// that fails ends it with its error. A name that was not written so is ignored.
status_t ApplyAttributes(BNode* node, BMessage* message);

// One attribute, for what reads them from elsewhere.
status_t ApplyAttribute(const char* name, type_code type, const void* data, ssize_t size,
                        BMessage* message);
