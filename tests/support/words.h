// The words of a text, with spaces between them.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace kormtest {

// (Without a stream: what the standard library has compiled is unknown to MemorySanitizer.)
inline std::vector<std::string> wordsOf(std::string_view text) {
    std::vector<std::string> words;
    for (std::size_t at = text.find_first_not_of(' '); at < text.size(); at = text.find_first_not_of(' ', at)) {
        const std::size_t end = std::min(text.find(' ', at), text.size());
        words.emplace_back(text.substr(at, end - at));
        at = end;
    }
    return words;
}

}  // namespace kormtest
