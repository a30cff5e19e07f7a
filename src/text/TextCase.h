#pragma once
// Upper case for the module's UTF-8 texts: ASCII letters and the accented Latin letters of its
// languages (à to þ); other characters are left as they are.

#include <string>
#include <string_view>

namespace nutrition {

std::string upperCased(std::string_view text);
// `text` with its first letter in upper case and the rest unchanged.
std::string capitalizingFirstLetter(std::string_view text);

}  // namespace nutrition
