#include "storage/SideFile.h"

#include <algorithm>
#include <unordered_set>

#include "storage/AttributeText.h"

namespace {

constexpr std::string_view kBlanks = " \t";

// Takes the first word of the text and the blanks behind it.
std::string_view takeWord(std::string_view* text) {
    std::string_view word = text->substr(0, text->find_first_of(kBlanks));
    text->remove_prefix(word.size());
    text->remove_prefix(std::min(text->find_first_not_of(kBlanks), text->size()));
    return word;
}

// Names are compared as they are written, unless one was written by hand in another way.
bool isSameName(std::string_view written, std::string_view name) {
    if (written.find('\\') == std::string_view::npos)
        return written == name;
    return readName(written) == name;
}

std::string writeLine(std::string_view name, type_code type, std::string_view value) {
    return writeName(name) + " " + writeType(type) + " " + writeValue(type, value) + "\n";
}

} // namespace

std::optional<SideFile::Line> SideFile::_NextLine(size_t position, std::string_view name) const {
    while (position < fText.size()) {
        size_t feed = fText.find('\n', position);
        size_t end = feed == std::string::npos ? fText.size() : feed + 1;
        std::string_view rest(fText.data() + position, end - position);
        // Most lines are another attribute's: they are not looked at any further.
        if (!rest.starts_with(name) && rest.find('\\') == std::string_view::npos) {
            position = end;
            continue;
        }
        rest = rest.substr(0, rest.find_last_not_of(" \t\r\n") + 1);
        std::string_view word = takeWord(&rest);
        std::optional<type_code> type = readType(takeWord(&rest));
        if (!word.empty() && word[0] != '#' && type)
            return Line{position, end, word, *type, rest};
        position = end;
    }
    return std::nullopt;
}

std::optional<SideFile::Line> SideFile::_Find(std::string_view name) const {
    for (auto line = _NextLine(0, name); line; line = _NextLine(line->end, name)) {
        if (isSameName(line->name, name) && readValue(line->type, line->value))
            return line;
    }
    return std::nullopt;
}

std::vector<std::string> SideFile::Names() const {
    std::vector<std::string> names;
    std::unordered_set<std::string> seen;
    for (auto line = _NextLine(0); line; line = _NextLine(line->end)) {
        std::optional<std::string> name = readName(line->name);
        if (name && readValue(line->type, line->value) && seen.insert(*name).second)
            names.push_back(*name);
    }
    return names;
}

std::optional<SideFile::Attribute> SideFile::Find(std::string_view name) const {
    std::optional<Line> line = _Find(name);
    if (!line)
        return std::nullopt;
    return Attribute{line->type, *readValue(line->type, line->value)};
}

void SideFile::Set(std::string_view name, type_code type, std::string_view value) {
    std::string written = writeLine(name, type, value);
    if (std::optional<Line> line = _Find(name))
        fText.replace(line->begin, line->end - line->begin, written);
    else
        _Append(written);
}

bool SideFile::Remove(std::string_view name) {
    bool wasThere = false;
    while (std::optional<Line> line = _Find(name)) {
        fText.erase(line->begin, line->end - line->begin);
        wasThere = true;
    }
    return wasThere;
}

bool SideFile::Rename(std::string_view oldName, std::string_view newName) {
    std::optional<Attribute> attribute = Find(oldName);
    if (!attribute)
        return false;
    if (oldName == newName)
        return true;
    Remove(newName);
    std::optional<Line> line = _Find(oldName);
    fText.replace(line->begin, line->end - line->begin,
                  writeLine(newName, attribute->type, attribute->value));
    Remove(oldName);
    return true;
}

// A last line without its line feed, from an editor, must not swallow the new one.
void SideFile::_Append(const std::string& line) {
    if (!fText.empty() && fText.back() != '\n')
        fText += '\n';
    fText += line;
}
