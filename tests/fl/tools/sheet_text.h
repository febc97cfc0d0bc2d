// A tool's sheet as text a test row can state: indices as "_x", expression
// images as their flat rendering in brackets, tags gone. The sheet is cut into
// its parts so a row can ask for one block or the check alone.
#pragma once

#include "fl/expr/markup.h"
#include "fl/expr/node.h"
#include "fl/expr/render.h"

#include <string>
#include <vector>

namespace fl {

inline std::string sheetText(const std::string& markup, const std::vector<NodePtr>& maths) {
    static const std::string kOpen = "<img class=\"math\" src=\"m:";
    std::string html;
    size_t i = 0;
    for (size_t at = markup.find(kOpen); at != std::string::npos; at = markup.find(kOpen, i)) {
        html.append(markup, i, at - i);
        const size_t end = markup.find("\">", at);
        const size_t n = std::stoul(markup.substr(at + kOpen.size(), end - at - kOpen.size()));
        html += "[" + (n < maths.size() ? render(maths[n], false) : std::string("?")) + "]";
        i = end + 2;
    }
    html.append(markup, i, std::string::npos);
    for (size_t at = html.find("<sub>"); at != std::string::npos; at = html.find("<sub>", at))
        html.replace(at, 5, "_");
    for (size_t at = html.find("</sub>"); at != std::string::npos; at = html.find("</sub>", at))
        html.erase(at, 6);
    return htmlToPlain(html);
}

struct SheetParts {
    std::vector<std::string> given;
    struct Block {
        std::string title, page, body;
    };
    std::vector<Block> blocks;
    std::string check, results, facit, title;

    const Block* block(const std::string& titleStart) const {
        for (const Block& b : blocks)
            if (b.title.rfind(titleStart, 0) == 0) return &b;
        return nullptr;
    }
};

// Between `open` and the next `close` after it, from `from`; empty when absent.
inline std::string between(const std::string& s, const std::string& open, const std::string& close,
                           size_t from = 0) {
    const size_t a = s.find(open, from);
    if (a == std::string::npos) return {};
    const size_t b = s.find(close, a + open.size());
    return s.substr(a + open.size(), b == std::string::npos ? std::string::npos : b - a - open.size());
}

inline SheetParts sheetParts(const std::string& html, const std::vector<NodePtr>& maths) {
    SheetParts p;
    p.title = sheetText(between(html, "<h2>", "</h2>"), maths);
    const std::string known = between(html, "<div class=\"known\">", "</div></div><h3");
    for (size_t at = known.find("<div>"); at != std::string::npos; at = known.find("<div>", at + 1))
        p.given.push_back(sheetText(between(known, "<div>", "</div>", at), maths));
    static const std::string kStep = "<div class=\"step\"><p class=\"h4\"><span class=\"stnum\">";
    for (size_t at = html.find(kStep); at != std::string::npos;) {
        const size_t titleAt = html.find("</span> ", at) + 8;
        const size_t titleEnd = html.find("</p>", titleAt);
        const size_t next = html.find(kStep, titleEnd);
        std::string title = html.substr(titleAt, titleEnd - titleAt);
        std::string page;
        if (const size_t ref = title.rfind(" <span class=\"crumb\">("); ref != std::string::npos) {
            page = sheetText(title.substr(ref + 1), maths);
            title.erase(ref);
        }
        const size_t bodyEnd = next == std::string::npos ? html.find("<h3", titleEnd) : next;
        p.blocks.push_back({sheetText(title, maths), page,
                            sheetText(html.substr(titleEnd + 4, bodyEnd - titleEnd - 4), maths)});
        at = next;
    }
    auto section = [&](const std::string& head) {
        const size_t a = html.find("<h3 class=\"sh\">" + head + "</h3>");
        if (a == std::string::npos) return std::string();
        const size_t from = a + head.size() + 20;
        size_t b = html.find("<h3 class=\"sh\">", from);
        b = std::min(b, html.find("<div class=\"spoiler\">", from));
        return sheetText(html.substr(from, b == std::string::npos ? std::string::npos : b - from), maths);
    };
    p.check = section("Kontrol");
    p.results = section("Resultater");
    p.facit = sheetText(between(html, "FACIT</span> &nbsp; ", "</div>"), maths);
    return p;
}

inline bool contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

} // namespace fl
