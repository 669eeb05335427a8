#pragma once

#include <cstddef>
#include <string>

class BNode;

// A string attribute of a file up to its first zero byte; empty when it is missing or of another
// type. One that is longer than `longest` bytes has one byte more, so that it can be told.
std::string ReadTextAttribute(const BNode& node, const char* name, size_t longest);

// A thread's title among them, which is shown only and so is cut.
std::string ReadTitle(const BNode& node, const char* name);
