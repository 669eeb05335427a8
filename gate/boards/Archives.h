#pragma once

#include "boards/Shop.h"
#include "boards/Thread.h"

#include <optional>
#include <string>

namespace gate {

// Threads that have left their server: found once in the archives of their family, then kept.
class Archives {
public:
    explicit Archives(const Shop& shop) : fShop(shop) {}

    // The thread as a dat. Without one `failure` tells why; it is empty when every place has
    // answered that it has none.
    std::optional<KeptThread> Find(const ThreadAddress& thread, Deadline deadline,
                                   std::string* failure) const;

private:
    KeptThread _Grown(const ThreadAddress& thread, KeptThread kept, Deadline deadline) const;
    std::optional<KeptThread> _Fetch(const ThreadAddress& thread, const ArchivePlace& archive,
                                     Deadline deadline, std::string* failure) const;

    const Shop fShop;
};

} // namespace gate
