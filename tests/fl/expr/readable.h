// Rendered markup as text a test row can state: each expression image of the
// pass becomes its flat rendering in brackets, then tags go and entities are
// decoded. "<span class=\"v\">I</span> = <img class=\"math\" src=\"m:0\">"
// reads "I = [U / R]".
#pragma once

#include "fl/expr/markup.h"
#include "fl/expr/render.h"

#include <string>
#include <vector>

namespace fl {

inline std::string readable(const std::string& html, const std::vector<NodePtr>& maths) {
    static const std::string kOpen = "<img class=\"math\" src=\"m:";
    std::string out;
    size_t i = 0;
    for (size_t at = html.find(kOpen); at != std::string::npos; at = html.find(kOpen, i)) {
        out.append(html, i, at - i);
        const size_t end = html.find("\">", at);
        const size_t n = std::stoul(html.substr(at + kOpen.size(), end - at - kOpen.size()));
        out += "[" + (n < maths.size() ? render(maths[n], false) : std::string("?")) + "]";
        i = end + 2;
    }
    out.append(html, i, std::string::npos);
    return htmlToPlain(out);
}

} // namespace fl
