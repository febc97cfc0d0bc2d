// The two process-wide lists a rendering pass collects figures and
// expression images into, and the joining of finished results. Interface
// thread only; a pass is never re-entered. Below them, the text helpers and
// block builders: they append to one string and never fail; text that comes
// from the user is escaped by the caller.
#include "fl/expr/markup.h"

#include "fl/expr/numbers.h"

#include <charconv>
#include <functional>
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

// Stays empty until a figure with shapes comes, then keeps pace with figList.
std::vector<ShapeFigurePtr>& shapeList() {
    static std::vector<ShapeFigurePtr> list;
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
    if (!other.figShapes.empty()) {
        figShapes.resize(figs.size());
        figShapes.insert(figShapes.end(), other.figShapes.begin(), other.figShapes.end());
    }
    figs.insert(figs.end(), other.figs.begin(), other.figs.end());
    maths.insert(maths.end(), other.maths.begin(), other.maths.end());
}

std::string addFigure(const std::string& svg, ShapeFigurePtr shapes) {
    if (shapes) {
        shapeList().resize(figList().size());
        shapeList().push_back(std::move(shapes));
    }
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
    shapeList().clear();
}

RenderResult takeRender(std::string html) {
    RenderResult r;
    r.html = std::move(html);
    r.figs = std::move(figList());
    r.maths = std::move(mathList());
    r.figShapes = std::move(shapeList());
    resetFigures(); // a moved-from vector is valid but unspecified
    return r;
}

namespace {

bool isAsciiLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool startsAt(const std::string& s, size_t at, std::string_view what) {
    return s.compare(at, what.size(), what) == 0;
}

void replaceAll(std::string& s, std::string_view from, std::string_view to) {
    if (s.find(from) == std::string::npos) return;
    std::string out;
    out.reserve(s.size());
    size_t i = 0;
    for (size_t at = s.find(from); at != std::string::npos; at = s.find(from, i)) {
        out.append(s, i, at - i);
        out += to;
        i = at + from.size();
    }
    out.append(s, i, std::string::npos);
    s = std::move(out);
}

// The inner text of each <tag>…</tag>, passed through `fn`.
std::string mapElement(const std::string& html, std::string_view open, std::string_view close,
                       const std::function<std::string(const std::string&)>& fn) {
    std::string out;
    size_t i = 0;
    while (true) {
        const size_t a = html.find(open, i);
        if (a == std::string::npos) break;
        const size_t b = html.find(close, a + open.size());
        if (b == std::string::npos) break;
        out.append(html, i, a - i);
        out += fn(html.substr(a + open.size(), b - a - open.size()));
        i = b + close.size();
    }
    out.append(html, i, std::string::npos);
    return out;
}

std::string plainPower(std::string inner) {
    replaceAll(inner, "−", "-");
    const bool simple = !inner.empty() && inner.find_first_not_of("0123456789-") == std::string::npos;
    if (simple) return superscript(inner);
    return inner.size() == 1 ? "^" + inner : "^(" + inner + ")";
}

std::string stepList(const std::vector<StepBlock>& steps, bool withPage) {
    if (steps.empty()) return {};
    std::string out = "<h3 class=\"sh\">Udregning trin for trin</h3><div class=\"steps\">";
    for (size_t i = 0; i < steps.size(); ++i) {
        const StepBlock& s = steps[i];
        out += "<div class=\"step\"><p class=\"h4\"><span class=\"stnum\">" + std::to_string(i + 1) +
               "</span> " + s.title;
        // A page number reads "formelsamlingen s. 6"; a named sheet ("YΔ-arket") stands as it is.
        if (withPage && !s.page.empty()) {
            const bool number = s.page[0] >= '0' && s.page[0] <= '9';
            out +=
                " <span class=\"crumb\">(" + (number ? "formelsamlingen s. " + s.page : s.page) + ")</span>";
        }
        out += "</p>" + s.html + "</div>";
    }
    return out + "</div>";
}

void decodeEntities(std::string& text) {
    replaceAll(text, "&nbsp;", " ");
    replaceAll(text, "&lt;", "<");
    replaceAll(text, "&gt;", ">");
    replaceAll(text, "&amp;", "&");
}

} // namespace

std::string htmlEscape(const std::string& text) {
    std::string out;
    out.reserve(text.size());
    for (char c : text) {
        if (c == '&')
            out += "&amp;";
        else if (c == '<')
            out += "&lt;";
        else if (c == '>')
            out += "&gt;";
        else
            out += c;
    }
    return out;
}

std::string varSpan(const std::string& name) {
    return "<span class=\"v\">" + name + "</span>";
}

std::string symbolHtml(const std::string& text) {
    static constexpr std::string_view kPhi = "φ_";
    std::string out;
    out.reserve(text.size() + 16);
    size_t i = 0;
    while (i < text.size()) {
        // φ_1 and cos φ_2: the index may be a number, and it is taken before the general rule.
        if (startsAt(text, i, kPhi)) {
            size_t j = i + kPhi.size();
            while (j < text.size() && (isAsciiLetter(text[j]) || (text[j] >= '0' && text[j] <= '9')))
                ++j;
            if (j > i + kPhi.size()) {
                out += "φ<sub>" + text.substr(i + kPhi.size(), j - i - kPhi.size()) + "</sub>";
                i = j;
                continue;
            }
        }
        if (text[i] == '_') {
            size_t j = i + 1;
            while (j < text.size() && isAsciiLetter(text[j]))
                ++j;
            if (j > i + 1) {
                out += "<sub>" + text.substr(i + 1, j - i - 1) + "</sub>";
                i = j;
                continue;
            }
        }
        out += text[i++];
    }
    return out;
}

std::string stripTags(const std::string& html) {
    std::string out;
    out.reserve(html.size());
    size_t i = 0;
    while (i < html.size()) {
        if (html[i] == '<') {
            const size_t close = html.find('>', i + 1);
            // "<>" and a "<" that is never closed are text, not tags.
            if (close != std::string::npos && close > i + 1) {
                i = close + 1;
                continue;
            }
        }
        out += html[i++];
    }
    return out;
}

std::string htmlToPlain(const std::string& html) {
    std::string s = mapElement(html, "<sub>", "</sub>", [](const std::string& in) { return in; });
    s = mapElement(s, "<sup>", "</sup>", plainPower);
    s = stripTags(s);
    decodeEntities(s);
    return s;
}

std::string msgBox(const std::string& html, bool bad) {
    return (bad ? "<div class=\"msg bad\">" : "<div class=\"msg\">") + html + "</div>";
}

std::string eqTable(const std::vector<WorkRow>& rows) {
    std::string out = "<table class=\"eqs\">";
    for (const WorkRow& r : rows)
        out += "<tr><td class=\"l\">" + r.lhs + "</td><td class=\"m\">=</td><td class=\"r\">" + r.rhs +
               "</td><td class=\"n\">" + r.note + "</td></tr>";
    return out + "</table>";
}

std::string kvGrid(const std::vector<KvItem>& items, int columns) {
    const size_t cols = columns > 0 ? static_cast<size_t>(columns) : 1;
    std::string out = "<table class=\"kvgrid\">";
    for (size_t i = 0; i < items.size(); i += cols) {
        out += "<tr>";
        for (size_t c = 0; c < cols; ++c) {
            if (i + c >= items.size()) {
                out += "<td class=\"kvempty\"></td>";
                continue;
            }
            const KvItem& it = items[i + c];
            out += it.highlight ? "<td class=\"kv hl\">" : "<td class=\"kv\">";
            out += "<span class=\"k\">" + it.key + "</span><br>";
            out += it.highlight ? "<span class=\"val hl\">" : "<span class=\"val\">";
            out += it.value + "</span></td>";
        }
        out += "</tr>";
    }
    return out + "</table>";
}

std::string stepBlocks(const std::vector<StepBlock>& steps) {
    return stepList(steps, false);
}

std::string stepBlocksBook(const std::vector<StepBlock>& steps) {
    return stepList(steps, true);
}

std::string figure(const std::string& svgBody, int width, int height, const std::string& caption,
                   ShapeFigurePtr shapes) {
    const std::string w = std::to_string(width), h = std::to_string(height);
    const std::string name =
        addFigure("<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 " + w + " " + h + "\" width=\"" +
                      w + "\" height=\"" + h + "\">" + svgBody + "</svg>",
                  std::move(shapes));
    // The sheet view finds figures by exactly this tag: src, width, height and nothing else.
    std::string out =
        "<p class=\"fig\"><img src=\"" + name + "\" width=\"" + w + "\" height=\"" + h + "\"></p>";
    if (!caption.empty()) out += "<p class=\"figcap\">" + caption + "</p>";
    return out;
}

std::string sheet(const std::string& id, const std::vector<std::string>& crumbs, const std::string& title,
                  const SheetSections& sections) {
    std::string out =
        "<div class=\"card sheet\" id=\"" + id + "\"><div class=\"sheet-head\"><div class=\"crumb\">";
    for (size_t i = 0; i < crumbs.size(); ++i) {
        if (i > 0) out += " · ";
        out += crumbs[i];
    }
    out += "</div><h2>" + title + "</h2></div>";
    if (!sections.given.empty()) {
        out += "<h3 class=\"sh\">Givet</h3><div class=\"known\">";
        for (const std::string& g : sections.given)
            out += "<div>" + g + "</div>";
        out += "</div>";
    }
    out += stepBlocksBook(sections.steps);
    if (!sections.figure.empty()) out += "<h3 class=\"sh\">Grafik</h3>" + sections.figure;
    if (!sections.check.empty()) out += "<h3 class=\"sh\">Kontrol</h3>" + sections.check;
    if (!sections.results.empty()) out += "<h3 class=\"sh\">Resultater</h3>" + sections.results;
    if (!sections.answer.empty())
        out += "<div class=\"spoiler\"><div class=\"facit\"><span class=\"k\">FACIT</span> &nbsp; " +
               sections.answer + "</div></div>";
    if (!sections.revealed.empty()) out += "<div class=\"spoiler\">" + sections.revealed + "</div>";
    if (!sections.concealed.empty()) out += "<div class=\"spoiler-alt\">" + sections.concealed + "</div>";
    return out + "</div>";
}

std::vector<RichRun> parseRichRuns(const std::string& html) {
    std::vector<RichRun> runs;
    Script state = Script::Normal;
    std::string text;
    auto flush = [&] {
        if (text.empty()) return;
        decodeEntities(text);
        runs.push_back({std::move(text), state});
        text.clear();
    };
    size_t i = 0;
    while (i < html.size()) {
        const size_t close = html[i] == '<' ? html.find('>', i + 1) : std::string::npos;
        if (close == std::string::npos) {
            text += html[i++];
            continue;
        }
        const bool closing = i + 1 < close && html[i + 1] == '/';
        const size_t nameAt = i + (closing ? 2 : 1);
        size_t nameEnd = nameAt;
        while (nameEnd < close && isAsciiLetter(html[nameEnd]))
            ++nameEnd;
        const std::string name = html.substr(nameAt, nameEnd - nameAt);
        i = close + 1;
        // span, b and i change nothing in a run; other tags are dropped.
        if (name != "sub" && name != "sup") continue;
        flush();
        state = closing ? Script::Normal : name == "sub" ? Script::Sub : Script::Sup;
    }
    flush();
    return runs;
}

} // namespace fl
