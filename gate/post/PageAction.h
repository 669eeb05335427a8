#pragma once

#include "origin/Location.h"
#include "post/PageForm.h"

#include <optional>

namespace gate {

// Where a form goes of a page that `answered` gave. Nothing unless its address is a path beside the
// page's: only such a one stays the same when the gate shows the page to a web browser.
std::optional<Place> ActionOf(const PageForm& form, const Place& answered);

} // namespace gate
