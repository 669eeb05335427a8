#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace gate {

// A form as it is sent: names and values in the order of the form, as bytes of the form's charset.
using FormPairs = std::vector<std::pair<std::string, std::string>>;

// From and to "application/x-www-form-urlencoded". A "%" without two hex digits stands for itself.
FormPairs ParseFormBody(std::string_view body);
std::string MakeFormBody(const FormPairs& pairs);

// The first value of that name.
std::optional<std::string> ValueOf(const FormPairs& pairs, std::string_view name);

} // namespace gate
