#include "text/PathNames.h"

#include <string_view>

namespace {

// A leading dot would lead up, or into the folder that holds the attributes of others.
bool IsGood(std::string_view name) {
    return !name.empty() && name.front() != '.' && name.find('/') == name.npos;
}

} // namespace

bool IsGoodComponent(const char* name) {
    return name != nullptr && IsGood(name);
}

bool IsGoodBoardFolder(const char* folder) {
    std::string_view rest = folder != nullptr ? folder : "";
    for (;;) {
        const size_t slash = rest.find('/');
        if (!IsGood(rest.substr(0, slash)))
            return false;
        if (slash == rest.npos)
            return true;
        rest.remove_prefix(slash + 1);
    }
}
