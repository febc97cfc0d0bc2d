// Helpers shared by the tests of the pages' markup: a fixed set of tile
// colours, a predicate that closes some routes, and counting in a text.
#pragma once

#include "fl/formulas/home.h"

#include <set>
#include <string>

namespace markup_util {

inline const fl::TileLook kLook{"#ffffff", "#d3d9e1", "#1b1f24", "#2457d6"};

// Open is everything but `closed`.
inline fl::OpenRoute closing(std::set<std::string> closed) {
    return [closed = std::move(closed)](const std::string& route) { return !closed.count(route); };
}

inline bool has(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

inline size_t count(const std::string& text, const std::string& part) {
    size_t n = 0;
    for (size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + part.size()))
        ++n;
    return n;
}

} // namespace markup_util
