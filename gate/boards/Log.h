#pragma once

#include "boards/Thread.h"
#include "front/Request.h"
#include "front/Responder.h"
#include "store/Store.h"

#include <optional>
#include <string>
#include <string_view>

namespace gate {

// The source of bytes that are a server's own dat.
constexpr const char* kDatSource = "dat";
// The source of those that were made of a dat in UTF-8.
constexpr const char* kUtf8Source = "utf-8 dat";

// What the program wants of a thread.
struct Wanted {
    int64_t start = -1; // it holds so many bytes; −1: it wants the whole
    time_t since = -1;  // it holds the state of then; −1: it does not say

    // A copy whose download was cut counts as the epoch's.
    bool IsOfUnfinishedCopy() const { return since == 0; }
};

// Nothing for a range of another form than "bytes=N-".
std::optional<Wanted> ParseWanted(const Request& request);

// Which part of a log the program lacks.
struct Missing {
    enum class Kind {
        kRest,    // what stands behind `offset`
        kChanged, // the log is another than the program's copy
        kUnknown  // nobody knows what the copy holds
    } kind = Kind::kRest;
    int64_t offset = 0;
    int64_t lines = -1; // before the offset
};

// Looks into a log that the gate has as a whole. A copy's length means something only for the
// source it came from: for another the count of its lines tells.
Missing FindMissing(Store* store, const ThreadAddress& thread, const KeptThread& log,
                    const Wanted& wanted);

// Answers from such a log and notes what was given.
void AnswerFromLog(Store* store, const ThreadAddress& thread, const KeptThread& log,
                   const Wanted& wanted, Responder* responder);

void AnswerNoNews(const Wanted& wanted, Responder* responder);
void AnswerChanged(Responder* responder);
void AnswerUnknown(Responder* responder);
// The head of an answer with `size` bytes from where the program's copy ends; the log ends `beyond`
// bytes behind these.
AnswerHead HeadOfRest(const Wanted& wanted, int64_t size, int64_t beyond, time_t date);

// A dat that came as a whole, as the program reads it. Where the family may write UTF-8 the bytes
// tell whether it does.
KeptThread LogOfDat(const Family& family, const std::string& dat, time_t date);

int64_t CountLines(std::string_view bytes);
// Where the line after `count` lines begins; −1 when there are fewer.
int64_t OffsetOfLine(std::string_view bytes, int64_t count);

} // namespace gate
