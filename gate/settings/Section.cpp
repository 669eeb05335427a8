#include "settings/Section.h"

#include <algorithm>
#include <sstream>

namespace gate {

std::string LineOf(const toml::source_region& source) {
    std::ostringstream text;
    text << (source.path ? *source.path : std::string()) << ":" << source.begin.line;
    return text.str();
}

void Refuse(const toml::node& node, const std::string& why) {
    throw WrongValue(LineOf(node.source()) + ": " + why);
}

std::string TextOf(const toml::node& node) {
    const std::optional<std::string> text = node.value_exact<std::string>();
    if (!text)
        Refuse(node, "a text in quotes is wanted here");
    return *text;
}

const toml::table& TableOf(const toml::node& node, const std::string& name) {
    if (!node.is_table())
        Refuse(node, "[" + name + "] is wanted here");
    return *node.as_table();
}

void Section::Text(std::string_view key, std::string* value) {
    if (const toml::node* node = Take(key))
        *value = TextOf(*node);
}

void Section::Texts(std::string_view key, std::vector<std::string>* values) {
    const toml::node* node = Take(key);
    if (node == nullptr)
        return;
    values->clear();
    ForEach(*node, key, [&](const toml::node& item) { values->push_back(TextOf(item)); });
}

void Section::Remark(std::vector<std::string>* remarks) const {
    const std::string name = fName.empty() ? "the file" : "[" + fName + "]";
    for (const auto& [key, node] : fTable) {
        if (std::find(fTaken.begin(), fTaken.end(), key.str()) == fTaken.end())
            remarks->push_back(LineOf(node.source()) + ": \"" + std::string(key.str()) +
                               "\" is no key of " + name);
    }
}

int64_t Section::_NumberOf(const toml::node& node, std::string_view key, int64_t least,
                           int64_t most) {
    const std::optional<int64_t> number = node.value_exact<int64_t>();
    if (!number || *number < least || *number > most)
        Refuse(node, std::string(key) + " takes a number from " + std::to_string(least) + " to " +
                         std::to_string(most));
    return *number;
}

} // namespace gate
