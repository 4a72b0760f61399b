// Texts for people: written in English where they arise, shown in the user's language where one is known.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

namespace clipwave {

// What a text reads in the user's language; the text itself where no translation has it. `comment` tells
// texts apart that are the same in English; may be null. A count that is not negative takes the place of "%n"
// and chooses among the forms of the language.
using Translation = std::string (*)(const char* context, const char* text, const char* comment, int count);

// The one translation of the process, as the C library has one locale for it: messages arise at every depth
// and on the threads of devices, and none of those places has a language to hand on. Set before any thread is
// started; null, as at the beginning, leaves every text in English. Texts are asked for on any thread.
void setTranslation(Translation translation);

// A text in the user's language. Both arguments are literals, so that the tool that gathers the texts finds
// them.
std::string localized(const char* context, const char* text);

// A text about a number of things, which stands where the text says "%n": `several` for all numbers but one.
std::string localizedCount(const char* context, const char* several, const char* one, int count);

// The text with each "%1" … "%9" replaced by that argument, and each "%@" by the next one. What stands in an
// argument stays as it is.
std::string filledIn(std::string_view text, std::initializer_list<std::string_view> arguments);

}  // namespace clipwave
