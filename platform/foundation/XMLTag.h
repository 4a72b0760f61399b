// One tag of XML text that may be broken: where it ends, and which attributes it carries. Internal to this
// room.
#pragma once

#include <functional>
#include <string_view>

namespace clipwave {

struct XMLTagAttribute {
  std::string_view name;
  std::string_view value;  // as it stands in the text, without quotes
};

struct XMLTag {
  std::string_view name;
  std::size_t end = 0;   // behind its ">"; of what is no tag, how far the text was looked at to find that out
  bool isEmpty = false;  // "<name/>"
  bool isTag = false;
};

// How many bytes at the start of `text` form a name that an element or an attribute may have.
std::size_t xmlNameLength(std::string_view text);

// The start or empty-element tag whose "<" stands at `at`, or no tag when that is a "<" which only happens to
// stand in the text ("a <b", "<joe@example.com>", "<b and c>"). Values may lack their quotes, or one of
// them. `each` is called for every attribute that has a value, in order and with repetitions, also of what
// turns out to be no tag; it answers whether to go on.
XMLTag scanXMLTag(std::string_view text, std::size_t at,
                  const std::function<bool(const XMLTagAttribute&)>& each = {});

// Where the document type whose "<" stands at `at` ends, with what it declares between brackets; npos when it
// does not.
std::size_t endOfXMLDocumentType(std::string_view text, std::size_t at);

}  // namespace clipwave
