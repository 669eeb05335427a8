#include "settings/Services.h"

#include <File.h>

#include <cstdio>

namespace {

constexpr std::string_view kBlank = " \t\r";

std::string_view Trimmed(std::string_view text) {
    const size_t start = text.find_first_not_of(kBlank);
    if (start == text.npos)
        return "";
    return text.substr(start, text.find_last_not_of(kBlank) + 1 - start);
}

bool IsHost(std::string_view value) {
    return !value.empty() && value.find_first_of("/:@ \t") == value.npos;
}

bool IsSearchPage(std::string_view value) {
    const size_t place = value.find("%s");
    return value.starts_with("http") && place != value.npos &&
           value.find('%', place + 1) == value.npos && value.find_first_of(kBlank) == value.npos;
}

bool Take(std::string_view name, std::string_view value, Services* services) {
    if (name == "portal_host" && IsHost(value))
        services->portalHost = value;
    else if (name == "search_page" && IsSearchPage(value))
        services->searchPage = value;
    else
        return false;
    return true;
}

} // namespace

Services ParseServices(std::string_view text) {
    Services services;
    while (!text.empty()) {
        const size_t feed = text.find('\n');
        const std::string_view line = Trimmed(text.substr(0, feed));
        text.remove_prefix(feed == text.npos ? text.size() : feed + 1);
        if (line.empty() || line[0] == '#')
            continue;
        const size_t equals = line.find('=');
        const bool understood =
            equals != line.npos &&
            Take(Trimmed(line.substr(0, equals)), Trimmed(line.substr(equals + 1)), &services);
        if (!understood)
            fprintf(stderr, "services.txt: left out: %.*s\n", static_cast<int>(line.size()),
                    line.data());
    }
    return services;
}

Services ReadServices(const char* path) {
    BFile file(path, B_READ_ONLY);
    off_t size = 0;
    if (file.InitCheck() != B_OK || file.GetSize(&size) != B_OK || size > 65536) {
        fprintf(stderr, "services.txt: can't be read; using the defaults\n");
        return Services();
    }
    std::string text(static_cast<size_t>(size), '\0');
    const ssize_t length = file.Read(text.data(), text.size());
    text.resize(length > 0 ? static_cast<size_t>(length) : 0);
    return ParseServices(text);
}
