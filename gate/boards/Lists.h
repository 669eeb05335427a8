#pragma once

#include "boards/Shop.h"
#include "boards/Thread.h"
#include "front/Responder.h"

#include <map>
#include <mutex>
#include <string>

namespace gate {

// Boards' lists of threads, "subject.txt". A list that has just come is given again for some
// seconds. Any thread may call.
class Lists {
public:
    explicit Lists(const Shop& shop) : fShop(shop) {}

    void Answer(const ThreadAddress& board, Responder* responder);

private:
    struct List {
        std::string bytes;
        time_t date = -1;
        std::chrono::steady_clock::time_point came;
    };
    bool _FindRecent(const std::string& name, List* list);
    void _KeepRecent(const std::string& name, const List& list);
    bool _Fetch(const ThreadAddress& board, List* list, std::string* failure, int* status) const;
    bool _FetchFrom(const ThreadAddress& board, const std::string& host, Deadline deadline,
                    List* list, std::string* failure, int* status) const;
    static std::string _Convert(const ThreadAddress& board, const std::string& bytes);

    const Shop fShop;
    std::mutex fMutex;
    std::map<std::string, List> fRecent; // guarded by fMutex
};

} // namespace gate
