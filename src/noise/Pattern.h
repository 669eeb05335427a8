#pragma once

#include <memory>
#include <string>
#include <string_view>

// A regular expression (Perl's syntax, UTF-8) that looks into a text for so long only: an
// expression may need more steps than anyone waits for. Any thread, several at once.
class Pattern {
public:
    enum class Found { kNo, kYes, kTooLong };

    // Null with a text for the user when it can't be understood.
    static std::unique_ptr<Pattern> Make(const std::string& expression, std::string* error);
    ~Pattern();
    Pattern(const Pattern&) = delete;
    Pattern& operator=(const Pattern&) = delete;

    Found FindIn(std::string_view text) const;

private:
    struct Code; // the library's

    explicit Pattern(std::unique_ptr<Code> code);

    const std::unique_ptr<Code> fCode;
};
