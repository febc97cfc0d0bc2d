// The two process-wide lists a rendering pass collects figures and
// expression images into, and the joining of finished results. Interface
// thread only; a pass is never re-entered.
#include "fl/expr/markup.h"

#include <charconv>
#include <string_view>

namespace fl {

namespace {

std::vector<std::string>& figList() {
    static std::vector<std::string> list;
    return list;
}

std::vector<NodePtr>& mathList() {
    static std::vector<NodePtr> list;
    return list;
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

// Adds `figOffset` to every src="f:N" and `mathOffset` to every src="m:N".
std::string renumber(const std::string& html, size_t figOffset, size_t mathOffset) {
    static constexpr std::string_view kSrc = "src=\"";
    std::string out;
    out.reserve(html.size() + 16);
    size_t i = 0;
    while (true) {
        const size_t at = html.find(kSrc, i);
        if (at == std::string::npos) break;
        size_t p = at + kSrc.size();
        out.append(html, i, p - i);
        i = p;
        if (p + 2 > html.size() || (html[p] != 'f' && html[p] != 'm') || html[p + 1] != ':') continue;
        size_t q = p + 2;
        while (q < html.size() && isDigit(html[q]))
            ++q;
        if (q == p + 2 || q >= html.size() || html[q] != '"') continue;
        size_t n = 0;
        if (std::from_chars(html.data() + p + 2, html.data() + q, n).ec != std::errc()) continue;
        out += html[p];
        out += ':';
        out += std::to_string(n + (html[p] == 'f' ? figOffset : mathOffset));
        i = q;
    }
    out.append(html, i, std::string::npos);
    return out;
}

} // namespace

void RenderResult::append(const RenderResult& other) {
    html += renumber(other.html, figs.size(), maths.size());
    figs.insert(figs.end(), other.figs.begin(), other.figs.end());
    maths.insert(maths.end(), other.maths.begin(), other.maths.end());
}

std::string addFigure(const std::string& svg) {
    figList().push_back(svg);
    return "f:" + std::to_string(figList().size() - 1);
}

std::string addMath(const NodePtr& node) {
    mathList().push_back(node);
    return "m:" + std::to_string(mathList().size() - 1);
}

void resetFigures() {
    figList().clear();
    mathList().clear();
}

RenderResult takeRender(std::string html) {
    RenderResult r;
    r.html = std::move(html);
    r.figs = std::move(figList());
    r.maths = std::move(mathList());
    resetFigures(); // a moved-from vector is valid but unspecified
    return r;
}

} // namespace fl
