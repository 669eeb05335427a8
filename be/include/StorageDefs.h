#pragma once

#include <SupportDefs.h>

#define B_FILE_NAME_LENGTH 256 // with the NUL
#define B_PATH_NAME_LENGTH 1024
#define B_ATTR_NAME_LENGTH 256 // with the NUL
#define B_MIME_TYPE_LENGTH 240

// How a file is opened: one of the first three, and any of the others.
enum {
    B_READ_ONLY = 0x0000,
    B_WRITE_ONLY = 0x0001,
    B_READ_WRITE = 0x0002,

    B_FAIL_IF_EXISTS = 0x0100, // with B_CREATE_FILE
    B_CREATE_FILE = 0x0200,
    B_ERASE_FILE = 0x0400,
    B_OPEN_AT_END = 0x0800
};

enum node_flavor {
    B_FILE_NODE = 0x01,
    B_SYMLINK_NODE = 0x02,
    B_DIRECTORY_NODE = 0x04,
    B_ANY_NODE = 0x07
};
