#include "posts/PostIndex.h"

#include "posts/References.h"

#include <algorithm>
#include <unordered_set>

namespace {

constexpr std::string_view kIdMark = "ID:";
constexpr std::string_view kHiddenId = "???";
constexpr std::string_view kTripMark = "◆";

} // namespace

std::string_view DayOf(std::string_view date) {
    return date.substr(0, date.find_first_of("( "));
}

std::string_view IdOf(std::string_view date) {
    const size_t mark = date.rfind(kIdMark);
    if (mark == std::string_view::npos || (mark > 0 && date[mark - 1] != ' '))
        return {};
    std::string_view id = date.substr(mark + kIdMark.size());
    id = id.substr(0, id.find_first_of(" \t\n"));
    return id.starts_with(kHiddenId) ? std::string_view() : id;
}

std::string_view TripOf(std::string_view name) {
    const size_t mark = name.find(kTripMark);
    if (mark == std::string_view::npos)
        return {};
    const std::string_view trip = name.substr(mark, name.find_first_of(" \t<", mark) - mark);
    return trip.size() > kTripMark.size() ? trip : std::string_view();
}

uint32_t PostIndex::_Join(Groups* groups, std::string key, int32_t number) {
    const auto [group, isNew] =
        groups->try_emplace(std::move(key), static_cast<uint32_t>(fGroups.size()));
    if (isNew)
        fGroups.emplace_back();
    fGroups[group->second].push_back(number);
    return group->second;
}

void PostIndex::Add(const PostText& text) {
    Post post{};
    if (const std::string_view id = IdOf(text.date); !id.empty())
        post.writer =
            _Join(&fWriters, std::string(DayOf(text.date)) + ' ' + std::string(id), text.number);
    if (const std::string_view trip = TripOf(text.name); !trip.empty())
        post.trip = _Join(&fTrips, std::string(trip), text.number);
    fPosts[text.number] = post;
    for (const PostRange& range : FindReferences(text.body)) {
        if (range.last - range.first >= kWidest)
            continue;
        for (int32_t number = range.first; number <= range.last; number++) {
            Numbers& answers = fAnswers[number];
            if (number != text.number && (answers.empty() || answers.back() != text.number))
                answers.push_back(text.number);
        }
    }
}

const PostIndex::Numbers& PostIndex::WithIdOf(int32_t number) const {
    const auto post = fPosts.find(number);
    return _Group(post == fPosts.end() ? 0 : post->second.writer);
}

const PostIndex::Numbers& PostIndex::WithTripOf(int32_t number) const {
    const auto post = fPosts.find(number);
    return _Group(post == fPosts.end() ? 0 : post->second.trip);
}

const PostIndex::Numbers& PostIndex::AnswersTo(int32_t number) const {
    const auto answers = fAnswers.find(number);
    return answers == fAnswers.end() ? fGroups[0] : answers->second;
}

// Breadth first, so that what answers the post itself stands right below it, whatever else it
// answers too; then each branch is put behind its own.
std::vector<PostIndex::Branch> PostIndex::AnswerTree(int32_t number, int deepest) const {
    std::unordered_map<int32_t, Numbers> children;
    std::unordered_set<int32_t> seen{number};
    std::vector<Branch> found{{number, 0}};
    for (size_t i = 0; i < found.size() && found[i].depth < deepest; i++) {
        const Branch branch = found[i];
        for (const int32_t answer : AnswersTo(branch.number)) {
            if (!seen.insert(answer).second)
                continue;
            children[branch.number].push_back(answer);
            found.push_back({answer, branch.depth + 1});
        }
    }
    std::vector<Branch> tree;
    std::vector<Branch> open{{number, 0}};
    while (!open.empty()) {
        const Branch branch = open.back();
        open.pop_back();
        if (branch.depth > 0)
            tree.push_back(branch);
        const Numbers& below = children[branch.number];
        for (auto answer = below.rbegin(); answer != below.rend(); ++answer)
            open.push_back({*answer, branch.depth + 1});
    }
    return tree;
}
