#include "noise/NoiseRule.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace {

constexpr std::string_view kFirstLine = "# Itamori NG 1";
constexpr std::string_view kColumns =
    "# kind\tplain or pattern\tboard\tday\thits\tlast hit\tswitched off because\ttext";
constexpr std::string_view kHidesAnswers = "answers\thidden";
constexpr size_t kLongestText = 4096;
constexpr size_t kMostRules = 10000;
constexpr std::array<std::string_view, 3> kKinds = {"id", "name", "word"};
constexpr std::array<std::string_view, 2> kForms = {"plain", "pattern"};

std::string Escaped(std::string_view text) {
    std::string escaped;
    for (const char c : text) {
        switch (c) {
        case '\t': escaped += "\\t"; break;
        case '\n': escaped += "\\n"; break;
        case '\r': escaped += "\\r"; break;
        case '\\': escaped += "\\\\"; break;
        default: escaped += c;
        }
    }
    return escaped;
}

std::string Unescaped(std::string_view text) {
    std::string plain;
    for (size_t i = 0; i < text.size(); i++) {
        if (text[i] != '\\' || i + 1 == text.size()) {
            plain += text[i];
            continue;
        }
        const char next = text[++i];
        plain += next == 't' ? '\t' : next == 'n' ? '\n' : next == 'r' ? '\r' : next;
    }
    return plain;
}

std::string_view TakePart(std::string_view* text, char end) {
    const std::string_view part = text->substr(0, text->find(end));
    text->remove_prefix(std::min(text->size(), part.size() + 1));
    return part;
}

template <size_t kCount>
bool Find(const std::array<std::string_view, kCount>& names, std::string_view name, size_t* index) {
    *index = static_cast<size_t>(std::find(names.begin(), names.end(), name) - names.begin());
    return *index < kCount;
}

template <typename Number>
bool ReadNumber(std::string_view text, Number* number) {
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, *number);
    return error == std::errc() && stop == end && *number >= 0;
}

bool ReadRule(std::string_view line, NoiseRule* rule) {
    size_t kind = 0;
    size_t form = 0;
    if (!Find(kKinds, TakePart(&line, '\t'), &kind) || !Find(kForms, TakePart(&line, '\t'), &form))
        return false;
    rule->kind = static_cast<NoiseKind>(kind);
    rule->isPattern = form == 1;
    rule->board = Unescaped(TakePart(&line, '\t'));
    rule->day = Unescaped(TakePart(&line, '\t'));
    if (!ReadNumber(TakePart(&line, '\t'), &rule->hits) ||
        !ReadNumber(TakePart(&line, '\t'), &rule->lastHit))
        return false;
    rule->failure = Unescaped(TakePart(&line, '\t'));
    rule->text = Unescaped(line);
    return !rule->text.empty() && rule->text.size() <= kLongestText;
}

} // namespace

bool NoiseRule::IsSame(const NoiseRule& other) const {
    return kind == other.kind && isPattern == other.isPattern && text == other.text &&
           board == other.board && day == other.day;
}

std::string WriteNoiseRules(const NoiseRules& rules) {
    std::string text = std::string(kFirstLine) + "\n" + std::string(kColumns) + "\n";
    if (rules.hidesAnswers)
        text += std::string(kHidesAnswers) + "\n";
    for (const NoiseRule& rule : rules.list) {
        text += std::string(kKinds[static_cast<size_t>(rule.kind)]) + "\t" +
                std::string(kForms[rule.isPattern ? 1 : 0]) + "\t" + Escaped(rule.board) + "\t" +
                Escaped(rule.day) + "\t" + std::to_string(rule.hits) + "\t" +
                std::to_string(rule.lastHit) + "\t" + Escaped(rule.failure) + "\t" +
                Escaped(rule.text) + "\n";
    }
    return text;
}

bool ReadNoiseRules(std::string_view text, NoiseRules* rules, size_t* skipped, std::string* error) {
    *rules = NoiseRules();
    *skipped = 0;
    if (TakePart(&text, '\n') != kFirstLine) {
        *error = "NGの規則のファイルではありません。";
        return false;
    }
    while (!text.empty()) {
        const std::string_view line = TakePart(&text, '\n');
        NoiseRule rule;
        if (line.empty() || line[0] == '#')
            continue;
        if (line == kHidesAnswers)
            rules->hidesAnswers = true;
        else if (rules->list.size() < kMostRules && ReadRule(line, &rule))
            rules->list.push_back(std::move(rule));
        else
            (*skipped)++;
    }
    return true;
}
