#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <SupportDefs.h>

// The text of a side file: a line an attribute, "name type value", separated by blanks. Remarks
// (lines that begin with "#") and lines that make no sense are passed over and stay as they are, so
// that nothing that a person wrote is lost. Of two lines with one name the first counts.
class SideFile {
public:
    struct Attribute {
        type_code type = 0;
        std::string value;
    };

    SideFile() = default;
    explicit SideFile(std::string text) : fText(std::move(text)) {}

    const std::string& Text() const { return fText; }
    std::vector<std::string> Names() const;
    std::optional<Attribute> Find(std::string_view name) const;

    void Set(std::string_view name, type_code type, std::string_view value);
    bool Remove(std::string_view name); // false when it is not there
    bool Rename(std::string_view oldName, std::string_view newName);

private:
    struct Line {
        size_t begin;
        size_t end; // after its line feed
        std::string_view name;
        type_code type;
        std::string_view value;
    };

    // The first good line at or after `position` that may be one of the name; with an empty one,
    // any good line.
    std::optional<Line> _NextLine(size_t position, std::string_view name = {}) const;
    std::optional<Line> _Find(std::string_view name) const;
    void _Append(const std::string& line);

    std::string fText;
};
