#pragma once
// The little URL handling the module needs: which strings are addresses it may send to, and
// how query values are written.

#include <string>
#include <string_view>

namespace nutrition {

// RFC 3986: unreserved characters pass, every other byte becomes %XX.
std::string percentEncode(std::string_view value);

// An absolute http or https address with a host and nothing a URL cannot hold (spaces,
// control characters, non-ASCII).
bool isWellFormedURL(std::string_view url);

}  // namespace nutrition
