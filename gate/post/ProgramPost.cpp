#include "post/ProgramPost.h"

namespace gate {

namespace {

// As browsers end the lines of what is typed.
std::string WithLineEnds(std::string_view text) {
    std::string ended;
    for (const char byte : text) {
        if (byte == '\n')
            ended += "\r\n";
        else if (byte != '\r')
            ended += byte;
    }
    return ended;
}

// What a post fills into a shape, in cp932.
FormPairs Fillings(const ProgramPost& post, Seconds time) {
    const size_t slash = post.board.find('/');
    const bool hasFolder = slash != post.board.npos;
    return {{"$name", post.name},
            {"$mail", post.mail},
            {"$message", WithLineEnds(post.message)},
            {"$time", std::to_string(time)},
            {"$key", post.key},
            {"$bbs", hasFolder ? post.board.substr(slash + 1) : post.board},
            {"$dir", hasFolder ? post.board.substr(0, slash) : ""}};
}

} // namespace

std::optional<ProgramPost> ParseProgramPost(std::string_view body) {
    const FormPairs pairs = ParseFormBody(body);
    const auto either = [&pairs](std::string_view name, std::string_view other) {
        const std::optional<std::string> value = ValueOf(pairs, name);
        return value ? value : ValueOf(pairs, other);
    };
    const auto name = either("FROM", "NAME");
    const auto mail = either("mail", "MAIL");
    const auto message = ValueOf(pairs, "MESSAGE");
    const auto board = either("bbs", "BBS");
    const auto key = either("key", "KEY");
    if (!message || !board || !key || board->empty() || key->empty())
        return std::nullopt;
    return ProgramPost{name.value_or(""), mail.value_or(""), *message, *board, *key};
}

std::string MakeFirstBody(const ProgramPost& post, const FormShape& shape, Seconds now) {
    const FormPairs fillings = Fillings(post, now - shape.secondsBefore);
    FormPairs pairs;
    for (const auto& [name, value] : shape.fields) {
        const std::string text = ValueOf(fillings, value).value_or(ToCp932(value, Charset::kUtf8));
        // A post in the program's own charset goes on as it came.
        const bool isOwn = shape.charset == Charset::kCp932;
        pairs.emplace_back(name, isOwn ? text : FromCp932(text, shape.charset));
    }
    return MakeFormBody(pairs);
}

} // namespace gate
