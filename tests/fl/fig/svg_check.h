// Test support for figures: whether an SVG text is well formed for both an
// XML reader and the Qt renderer, with every number in the one form the
// builder promises (digits, at most one decimal, a point, never "nan", "inf"
// or a locale's comma); and the elements of a figure read back as data.
#pragma once

#include <QRegularExpression>
#include <QSvgRenderer>
#include <QXmlStreamReader>

#include <charconv>
#include <map>
#include <string_view>
#include <string>
#include <vector>

namespace fl::testing {

// A number of the SVG: always with a point, whatever the locale says.
inline double svgNum(std::string_view text) {
    double v = 0;
    std::from_chars(text.data(), text.data() + text.size(), v);
    return v;
}

struct SvgElement {
    std::string tag;
    std::map<std::string, std::string> attrs;
    std::string text;
    double num(const std::string& name) const { return svgNum(attrs.at(name)); }
    bool has(const std::string& name) const { return attrs.count(name) > 0; }
};

// The elements below the root, in order.
inline std::vector<SvgElement> svgElements(const std::string& svg) {
    std::vector<SvgElement> out;
    QXmlStreamReader xml(QByteArray::fromStdString(svg));
    int depth = 0;
    while (!xml.atEnd()) {
        xml.readNext();
        if (xml.isStartElement()) {
            ++depth;
            if (depth == 1) continue;
            SvgElement e;
            e.tag = xml.name().toString().toStdString();
            for (const QXmlStreamAttribute& a : xml.attributes())
                e.attrs[a.qualifiedName().toString().toStdString()] = a.value().toString().toStdString();
            out.push_back(std::move(e));
        } else if (xml.isCharacters() && !out.empty() && depth > 1) {
            out.back().text += xml.text().toString().toStdString();
        } else if (xml.isEndElement()) {
            --depth;
        }
    }
    return out;
}

// The letters of every text, halos left out, joined by "|": a label with a
// subscript reads "U|R1| = 5 V".
inline std::string svgText(const std::string& svg) {
    std::string out;
    for (const SvgElement& e : svgElements(svg))
        if (e.tag == "text" && !e.has("stroke")) out += e.text + "|";
    return out;
}

// "12", "-0", "3.5": digits, at most one decimal, a point.
inline bool svgNumber(QStringView t) {
    qsizetype i = 0, n = t.size();
    if (i < n && t[i] == u'-') ++i;
    const qsizetype digits = i;
    while (i < n && t[i].isDigit())
        ++i;
    if (i == digits) return false;
    if (i == n) return true;
    return i + 2 == n && t[i] == u'.' && t[i + 1].isDigit();
}

// Empty when fine; otherwise what is wrong.
inline std::string svgProblem(const std::string& svg) {
    if (svg.empty()) return "empty";
    QXmlStreamReader xml(QByteArray::fromStdString(svg));
    static const char16_t* const kNumeric[] = {u"x",  u"y",  u"x1", u"y1",    u"x2",     u"y2",       u"cx",
                                               u"cy", u"r", u"rx", u"width", u"height", u"font-size"};
    int elements = 0;
    while (!xml.atEnd()) {
        xml.readNext();
        if (!xml.isStartElement()) continue;
        ++elements;
        for (const QXmlStreamAttribute& a : xml.attributes()) {
            const QStringView name = a.qualifiedName(), value = a.value();
            const auto bad = [&](QStringView token) {
                return "<" + xml.name().toString().toStdString() + "> " + name.toString().toStdString() + "=\"" +
                       value.toString().toStdString() + "\": " + token.toString().toStdString();
            };
            if (value.contains(u"nan", Qt::CaseInsensitive) || value.contains(u"inf", Qt::CaseInsensitive))
                return bad(value);
            for (const char16_t* n : kNumeric)
                if (name == QStringView(n) && !svgNumber(value)) return bad(value);
            if (name == u"points" || name == u"viewBox") {
                for (QStringView pair : value.split(u' ', Qt::SkipEmptyParts))
                    for (QStringView t : pair.split(name == u"points" ? u',' : u' '))
                        if (!svgNumber(t)) return bad(t);
            }
            if (name == u"d") {
                // Commands and numbers, each number whole.
                qsizetype i = 0;
                while (i < value.size()) {
                    if (value[i] == u' ' || value[i].isLetter()) {
                        ++i;
                        continue;
                    }
                    qsizetype j = i;
                    while (j < value.size() && value[j] != u' ' && !value[j].isLetter())
                        ++j;
                    if (!svgNumber(value.mid(i, j - i))) return bad(value.mid(i, j - i));
                    i = j;
                }
            }
        }
    }
    if (xml.hasError()) return "XML: " + xml.errorString().toStdString();
    if (elements < 2) return "no elements";
    QSvgRenderer renderer(QByteArray::fromStdString(svg));
    if (!renderer.isValid()) return "the renderer refuses it";
    return {};
}

} // namespace fl::testing
