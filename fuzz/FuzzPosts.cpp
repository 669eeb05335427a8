#include "Fuzz.h"

#include "noise/NoiseFilter.h"
#include "posts/OwnPosts.h"
#include "posts/ThreadTitles.h"
#include "text/Folding.h"
#include "views/ShownPost.h"

// A file of rules, which may be anybody's, and posts as people write them: what was read is read
// the same once it is written; nothing that is looked for is outside of a post.
extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size) {
    const std::string text = TextOf(data, size);
    const std::string_view input = text;
    const size_t half = input.find('\0');
    const std::string_view file = input.substr(0, half);
    const std::string_view shown = half == input.npos ? input : input.substr(half + 1);
    const PostText post = ParseShownPost(shown);

    NoiseRules rules;
    NoiseRules again;
    size_t skipped = 0;
    std::string error;
    if (ReadNoiseRules(file, &rules, &skipped, &error)) {
        if (!ReadNoiseRules(WriteNoiseRules(rules), &again, &skipped, &error) || skipped > 0 ||
            again.list.size() != rules.list.size())
            Claim(false, "rules that were written are read");
        for (size_t i = 0; i < rules.list.size(); i++)
            Claim(again.list[i].IsSame(rules.list[i]), "a rule is read as it was written");
        if (rules.list.size() > 20)
            rules.list.resize(20);
        const NoiseFilter filter(rules, "h.example/b");
        filter.Hides(post);
        filter.TakeFindings();
    }

    PostIndex index;
    for (int32_t number : {1, 2, post.number}) {
        PostText each = post;
        each.number = number;
        index.Add(each);
    }
    index.AnswerTree(1, 3);
    index.WithIdOf(post.number);
    FindOwnPost(post.name, {post});
    NumbersFromText(post.date);
    Claim(Folded(Folded(shown)) == Folded(shown), "what is folded stays");
    RankNextThreads({std::string(post.name), "1700000000.dat", 1},
                    {{std::string(post.body), "1700000001.dat", 1}}, 3);
    return 0;
}
