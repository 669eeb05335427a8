// A side file of attributes, as anybody may have edited it.
#include "Fuzz.h"

#include "storage/SideFile.h"

#include <TypeConstants.h>

namespace {

// What is read must come back the same when it is written.
void Rewrite(SideFile file, const std::string& name) {
    const auto found = file.Find(name);
    Claim(found.has_value(), "a listed attribute is found");
    file.Set(name, found->type, found->value);
    const auto again = file.Find(name);
    Claim(again && again->type == found->type && again->value == found->value,
          "an attribute keeps its value");
    const size_t count = file.Names().size();
    Claim(file.Rename(name, "a new name"), "an attribute can be renamed");
    Claim(file.Find("a new name").has_value(), "a renamed attribute is found");
    Claim(file.Remove("a new name") && file.Names().size() <= count - 1, "it can be removed");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size) {
    const std::string text = TextOf(data, size);
    SideFile file(text);
    const std::vector<std::string> names = file.Names();
    for (size_t i = 0; i < names.size() && i < 8; i++)
        Rewrite(file, names[i]);
    const std::string name = text.c_str();
    file.Set(name, B_STRING_TYPE, text);
    const auto found = file.Find(name);
    Claim(name.empty() || (found && found->value == text), "any name and any text can be kept");
    return 0;
}
