#pragma once

#include "origin/Origin.h"
#include "store/Store.h"

namespace gate {

// What everyone who answers needs; all of it outlives them.
struct Shop {
    const Settings& settings;
    Origin& origin;
    Store& store;

    // By when an answer that begins now must have its first byte.
    Deadline AnswerDeadline() const {
        return std::chrono::steady_clock::now() + std::chrono::seconds(settings.answerSeconds);
    }
    // By when a transfer has ended one way or another.
    Deadline TransferDeadline() const {
        return std::chrono::steady_clock::now() +
               std::chrono::seconds(settings.transferSeconds + 5);
    }
};

// The end of the first of `count` equal parts of the time that is left: a server that stays silent
// must leave some for those that are asked after it.
Deadline FirstPart(Deadline deadline, size_t count);
// What a server's status means, in words for the user.
std::string StatusText(const std::string& host, long status);
// What the user is told of an answer that asks if its reader is human.
std::string ChallengeText(const std::string& host);
// Whether an answer asks if its reader is human. Waits for its body where the status allows it.
bool IsChallenge(const Settings& settings, const OriginHead& head, const Transfer& transfer,
                 Deadline deadline);

} // namespace gate
