#include "noise/Pattern.h"

#define PCRE2_CODE_UNIT_WIDTH 8
#include <pcre2.h>

#include <array>

namespace {

constexpr uint32_t kMostSteps = 20000;     // of one look into one post
constexpr uint32_t kMostMemory = 1024;     // KiB, of the same
constexpr PCRE2_SIZE kLongestCode = 65536; // bytes that an expression may become

struct Freed {
    void operator()(pcre2_code* code) const { pcre2_code_free(code); }
    void operator()(pcre2_match_context* context) const { pcre2_match_context_free(context); }
    void operator()(pcre2_compile_context* context) const { pcre2_compile_context_free(context); }
    void operator()(pcre2_match_data* data) const { pcre2_match_data_free(data); }
};

// One a thread: nothing in it outlives a look.
pcre2_match_data* MatchData() {
    thread_local const std::unique_ptr<pcre2_match_data, Freed> data(
        pcre2_match_data_create(1, nullptr));
    return data.get();
}

const unsigned char* Bytes(std::string_view text) {
    return reinterpret_cast<const unsigned char*>(text.data());
}

} // namespace

struct Pattern::Code {
    std::unique_ptr<pcre2_code, Freed> code;
    std::unique_ptr<pcre2_match_context, Freed> limits;
};

Pattern::Pattern(std::unique_ptr<Code> code) : fCode(std::move(code)) {}

Pattern::~Pattern() = default;

std::unique_ptr<Pattern> Pattern::Make(const std::string& expression, std::string* error) {
    const std::unique_ptr<pcre2_compile_context, Freed> context(
        pcre2_compile_context_create(nullptr));
    pcre2_set_max_pattern_length(context.get(), kLongestCode);
    int number = 0;
    PCRE2_SIZE offset = 0;
    auto code = std::make_unique<Code>();
    code->code.reset(pcre2_compile(Bytes(expression), expression.size(),
                                   PCRE2_UTF | PCRE2_NEVER_BACKSLASH_C, &number, &offset,
                                   context.get()));
    if (code->code == nullptr) {
        std::array<unsigned char, 256> message = {};
        pcre2_get_error_message(number, message.data(), message.size());
        *error =
            std::to_string(offset + 1) + "文字目: " + reinterpret_cast<const char*>(message.data());
        return nullptr;
    }
    // Where the machine allows no code of its own, the expression is interpreted.
    pcre2_jit_compile(code->code.get(), PCRE2_JIT_COMPLETE);
    code->limits.reset(pcre2_match_context_create(nullptr));
    pcre2_set_match_limit(code->limits.get(), kMostSteps);
    pcre2_set_heap_limit(code->limits.get(), kMostMemory);
    return std::unique_ptr<Pattern>(new Pattern(std::move(code)));
}

// Texts that are no UTF-8 hold nothing that was looked for.
Pattern::Found Pattern::FindIn(std::string_view text) const {
    const int result = pcre2_match(fCode->code.get(), Bytes(text), text.size(), 0, 0, MatchData(),
                                   fCode->limits.get());
    switch (result) {
    case PCRE2_ERROR_MATCHLIMIT:
    case PCRE2_ERROR_DEPTHLIMIT:
    case PCRE2_ERROR_HEAPLIMIT:
    case PCRE2_ERROR_JIT_STACKLIMIT:
    case PCRE2_ERROR_NOMEMORY: return Found::kTooLong;
    default: return result >= 0 ? Found::kYes : Found::kNo;
    }
}
