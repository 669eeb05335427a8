#pragma once

#include "boards/Shop.h"
#include "convert/MenuPage.h"
#include "front/Responder.h"
#include "origin/Location.h"

#include <string>
#include <vector>

namespace gate {

// The board menu, made from those of the settings in the form that the program's parser takes. A
// menu that does not come, or is none, stands as it came last. Any thread may call.
class Menus {
public:
    explicit Menus(const Shop& shop) : fShop(shop) {}

    // The program stores whatever comes as its menu: when there is nothing, an empty body does.
    void Answer(Responder* responder) const;

private:
    std::vector<MenuCategory> _FindMenu(const std::string& address, Deadline deadline) const;
    // From `place`; a host that it has moved to is remembered for the one that the settings name.
    std::vector<MenuCategory> _Fetch(const std::string& address, const Place& place,
                                     const Place& home, Deadline deadline) const;

    const Shop fShop;
};

} // namespace gate
