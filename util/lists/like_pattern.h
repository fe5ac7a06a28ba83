#pragma once
// The pattern match behind the LIKE condition: the whole text against the whole pattern,
// case-sensitive, byte by byte.
//   ?        any one character
//   *        any run of characters, the empty run included
//   #        one decimal digit 0-9
//   [abc]    one character of the group; [!abc] one character not in it
//   [a-z]    inside a group, a hyphen between two characters is the range between them in byte
//            order; a hyphen first or last in the group stands for itself, and so do [ ? # *
// Any other pattern character matches itself. A group without its closing "]" makes the pattern
// invalid, and an invalid pattern matches nothing.

#include <string_view>

namespace lumbra {

bool likeMatches(std::string_view text, std::string_view pattern);

}  // namespace lumbra
