#include "cache/TextAttribute.h"

#include "net/lines.h"
#include "text/Utf8Cut.h"

#include <Node.h>
#include <TypeConstants.h>
#include <fs_attr.h>

std::string ReadTextAttribute(const BNode& node, const char* name, size_t longest) {
    attr_info info;
    if (node.GetAttrInfo(name, &info) != B_OK || info.type != B_STRING_TYPE)
        return "";
    std::string text(longest + 1, '\0');
    const ssize_t size = node.ReadAttr(name, B_STRING_TYPE, 0, text.data(), text.size());
    text.resize(size > 0 ? static_cast<size_t>(size) : 0);
    return text.c_str();
}

std::string ReadTitle(const BNode& node, const char* name) {
    return CutAtCharacter(ReadTextAttribute(node, name, kLongestThreadTitle).c_str(),
                          kLongestThreadTitle);
}
