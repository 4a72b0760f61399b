// One tag of XML text that may be broken: where it ends, and which attributes it carries. Internal to this
// room.
#pragma once

#include <functional>
#include <optional>
#include <string_view>

namespace clipwave {

struct XMLAttribute {
  std::string_view name;
  std::string_view value;  // as it stands in the text, without quotes
};

struct XMLTag {
  std::string_view name;
  std::size_t end = 0;   // behind its ">"
  bool isEmpty = false;  // "<name/>"
};

// How many bytes at the start of `text` form a name that an element or an attribute may have.
std::size_t xmlNameLength(std::string_view text);

// The start or empty-element tag whose "<" stands at `at`, or nothing when that is a "<" which only happens
// to stand in the text ("a <b", "<joe@example.com>", "<b and c>"). Values may lack their quotes, or one of
// them. `each` is called for every attribute that has a value, in order and with repetitions, also of what
// turns out to be no tag; it answers whether to go on.
std::optional<XMLTag> scanXMLTag(std::string_view text, std::size_t at,
                                 const std::function<bool(const XMLAttribute&)>& each = {});

}  // namespace clipwave
