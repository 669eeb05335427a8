#include "convert/SubjectList.h"

#include "convert/Fields.h"
#include "convert/Words.h"

#include <algorithm>
#include <optional>
#include <set>

namespace gate {

namespace {

// What the program keeps of a name, with ".dat", and of a count.
constexpr size_t kLongestKey = 11;
constexpr size_t kLongestCount = 7;

struct Thread {
    std::string_view key, title, count;
};

// The key is behind its separator taken off the line.
std::string_view TakeKey(std::string_view* line) {
    const std::string_view key = line->substr(0, line->find('.'));
    line->remove_prefix(key.size());
    for (const std::string_view separator : {".cgi,", ".dat,", ".dat<>", ".cgi<>"}) {
        if (line->starts_with(separator)) {
            line->remove_prefix(separator.size());
            return key;
        }
    }
    return "";
}

bool AreDigits(std::string_view text, size_t most) {
    return !text.empty() && text.size() <= most &&
           text.find_first_not_of("0123456789") == text.npos;
}

std::optional<Thread> ParseThread(std::string_view line) {
    Thread thread;
    thread.key = TakeKey(&line);
    line = Trimmed(line);
    const size_t open = line.rfind('(');
    if (open == line.npos || !line.ends_with(')'))
        return std::nullopt;
    thread.title = Trimmed(line.substr(0, open));
    thread.count = line.substr(open + 1, line.size() - open - 2);
    if (!AreDigits(thread.key, kLongestKey) || thread.title.empty() ||
        !AreDigits(thread.count, kLongestCount))
        return std::nullopt;
    return thread;
}

} // namespace

std::string MakeSubjectList(std::string_view list, Charset charset) {
    const std::string utf8 = ToUtf8(list, charset);
    std::string_view rest = utf8;
    std::string made;
    std::set<std::string_view> keys;
    for (std::string_view line; TakeLine(&rest, &line);) {
        const std::optional<Thread> thread = ParseThread(line);
        if (!thread || !keys.insert(thread->key).second)
            continue;
        made.append(thread->key) += ".dat<>";
        made.append(thread->title) += " (";
        made.append(thread->count) += ")\n";
    }
    return ToCp932(made, Charset::kUtf8);
}

} // namespace gate
