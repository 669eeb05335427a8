#include "today/World.h"

#include "server/Text.h"
#include "today/Families.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace today {

namespace {

constexpr const char* kDeleted = "あぼーん";

bool isBelow(const std::string& host, const std::string& domain) {
    return host == domain || host.ends_with("." + domain);
}

} // namespace

Kind kindOfHost(const std::string& host) {
    if (isBelow(host, "rooms.example"))
        return Kind::kRoom;
    return isBelow(host, "town.example") ? Kind::kTown : Kind::kDat;
}

Thread* World::Find(const std::string& board, const std::string& key) {
    Board* found = boards.Find(board);
    return found != nullptr ? found->Find(key) : nullptr;
}

const Category* World::FindHost(const std::string& host) const {
    const auto& categories = boards.Categories();
    const auto found = std::find_if(categories.begin(), categories.end(),
                                    [&](const Category& one) { return one.host == host; });
    return found == categories.end() ? nullptr : &*found;
}

std::vector<Line> linesOf(const std::string& dat) {
    static const std::string kMark = toCp932(kDeleted);
    std::vector<Line> lines;
    for (std::string_view rest = dat; !rest.empty();) {
        std::string_view line = rest.substr(0, rest.find('\n'));
        rest.remove_prefix(std::min(rest.size(), line.size() + 1));
        std::array<std::string, 5> fields;
        for (std::string& field : fields) {
            field = line.substr(0, line.find("<>"));
            line.remove_prefix(std::min(line.size(), field.size() + 2));
        }
        const auto& [name, mail, date, body, title] = fields;
        lines.push_back({name, mail, date, body, title, date == kMark});
    }
    return lines;
}

std::string deletedLine(const std::string& title) {
    static const std::string kMark = toCp932(kDeleted);
    return kMark + "<>" + kMark + "<>" + kMark + "<> " + kMark + " <>" + title + "\n";
}

Answer answerTo(World& world, const Question& question, time_t now) {
    if (question.method == "POST")
        return takePost(world, question, now);
    if (question.path == "/bbsmenu.json" && question.host == kMenuHost)
        return menuAnswer(world);
    switch (kindOfHost(question.host)) {
    case Kind::kDat: return datFamilyAnswer(world, question);
    case Kind::kRoom: return roomAnswer(world, question);
    case Kind::kTown: return townAnswer(world, question);
    }
    return {};
}

} // namespace today
