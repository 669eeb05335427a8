#pragma once

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#define TOML_EXCEPTIONS 0
#include <toml++/toml.h>

namespace gate {

// What stands at a key is not what the key takes; names the file and the line.
struct WrongValue : std::runtime_error {
    using std::runtime_error::runtime_error;
};

std::string LineOf(const toml::source_region& source);
[[noreturn]] void Refuse(const toml::node& node, const std::string& why);
std::string TextOf(const toml::node& node);
const toml::table& TableOf(const toml::node& node, const std::string& name);

// Takes the keys of one table; what is left in the end is not known. What a key does not name stays
// as it is. Throws WrongValue.
class Section {
public:
    Section(const toml::table& table, std::string name) : fTable(table), fName(std::move(name)) {}

    const toml::node* Take(std::string_view key) {
        fTaken.emplace_back(key);
        return fTable.get(key);
    }
    void Text(std::string_view key, std::string* value);
    void Texts(std::string_view key, std::vector<std::string>* values);
    template <typename Number>
    void Whole(std::string_view key, int64_t least, int64_t most, Number* value) {
        if (const toml::node* node = Take(key))
            *value = static_cast<Number>(_NumberOf(*node, key, least, most));
    }
    template <typename Call>
    void ForEach(const toml::node& node, std::string_view key, Call call) {
        const toml::array* items = node.as_array();
        if (items == nullptr)
            Refuse(node, std::string(key) + " takes a list");
        for (const toml::node& item : *items)
            call(item);
    }
    // A table in this one, read by `call` as a section.
    template <typename Call>
    void Table(std::string_view key, std::vector<std::string>* remarks, Call call) {
        const toml::node* node = Take(key);
        if (node == nullptr)
            return;
        const std::string name = (fName.empty() ? "" : fName + ".") + std::string(key);
        Section section(TableOf(*node, name), name);
        call(&section);
        section.Remark(remarks);
    }
    void Remark(std::vector<std::string>* remarks) const;

private:
    static int64_t _NumberOf(const toml::node& node, std::string_view key, int64_t least,
                             int64_t most);

    const toml::table& fTable;
    const std::string fName; // empty: the file itself
    std::vector<std::string> fTaken;
};

} // namespace gate
