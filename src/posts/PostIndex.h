#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

// One post as readers see it, UTF-8.
struct PostText {
    int32_t number = 0;
    std::string_view name;
    std::string_view date; // with what the server adds to it: "2026/11/22(日) 10:00:00.00 ID:abc"
    std::string_view body;
};

// The ID in a post's date line; empty without one, and where the server hides it ("ID:???").
std::string_view IdOf(std::string_view date);
// "2026/11/22" of a date line.
std::string_view DayOf(std::string_view date);
// The trip in a name, with its mark: "◆abc"; empty without one.
std::string_view TripOf(std::string_view name);

// Who wrote which posts of a thread and who answered whom, kept up while posts arrive. Posts are
// known by their numbers; of two with one number the later counts. One thread at a time.
class PostIndex {
public:
    using Numbers = std::vector<int32_t>; // in the order of the thread

    void Add(const PostText& post);
    void Clear() { *this = PostIndex(); }
    size_t Count() const { return fPosts.size(); }

    // The posts by the ID of this one, on its day, and by its trip; empty when it has none.
    const Numbers& WithIdOf(int32_t number) const;
    const Numbers& WithTripOf(int32_t number) const;

    // The posts that refer to this one. A reference to more than `kWidest` posts at once speaks of
    // the thread, not to them.
    static constexpr int32_t kWidest = 50;
    const Numbers& AnswersTo(int32_t number) const;

    struct Branch {
        int32_t number;
        int depth; // 1 answers the post itself
    };
    // The answers to a post, each followed by its own, each post once.
    std::vector<Branch> AnswerTree(int32_t number, int deepest) const;

private:
    struct Post {
        uint32_t writer; // 0: nobody knows
        uint32_t trip;
    };
    using Groups = std::unordered_map<std::string, uint32_t>;

    uint32_t _Join(Groups* groups, std::string key, int32_t number);
    const Numbers& _Group(uint32_t group) const { return fGroups[group]; }

    std::unordered_map<int32_t, Post> fPosts;
    Groups fWriters; // by day and ID
    Groups fTrips;
    std::vector<Numbers> fGroups{Numbers()}; // the first is nobody's, and empty
    std::unordered_map<int32_t, Numbers> fAnswers;
};
