// The icon set: every tile and the two shared keys have a drawing of their
// own; every document is well-formed SVG made of stroke elements only; and
// every drawing, rendered as a page renders it, keeps its margin and a weight
// like its neighbours'.
#include "fl/formulas/icons.h"
#include "fl/formulas/lists.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>
#include <QSvgRenderer>
#include <QXmlStreamReader>

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace {

// The accents of the light and the dark palette: the colours a page draws in.
const char* const kAccents[] = {"#2457d6", "#7ea5ff"};

// Every route of the tile table, then the two shared keys; "finder" is both.
std::vector<std::string> allKeys() {
    std::vector<std::string> keys;
    for (const fl::Tile& t : fl::tiles())
        keys.push_back(t.route);
    for (const char* shared : {"formel", "finder"})
        if (std::find(keys.begin(), keys.end(), shared) == keys.end()) keys.push_back(shared);
    return keys;
}

// A copied entry left unchanged would give two tiles the same picture.
TEST(IconSet, noTwoKeysShareADrawing) {
    std::map<std::string, std::string> seen;
    for (const std::string& key : allKeys()) {
        const auto [it, fresh] = seen.emplace(fl::iconSvg(key), key);
        EXPECT_TRUE(fresh) << key << " draws the same as " << it->second;
    }
}

// Shapes a stroke-only drawing may use, with the attributes that place them.
// Anything else (fill, style, text, a stroke of its own) would break the
// common look or the colour the page sets.
const std::map<QString, std::set<QString>> kAllowed = {
    {"path", {"d"}},
    {"circle", {"cx", "cy", "r"}},
    {"ellipse", {"cx", "cy", "rx", "ry"}},
    {"rect", {"x", "y", "width", "height", "rx", "ry"}},
    {"line", {"x1", "y1", "x2", "y2"}},
    {"polyline", {"points"}},
};

bool isPathData(const QString& d) {
    for (QChar c : d)
        if (!QStringLiteral("MmLlHhVvCcSsQqTtAaZz0123456789.,- ").contains(c)) return false;
    return !d.isEmpty();
}

// Checks one document; returns the number of shapes.
int checkDocument(const std::string& doc, const std::string& colour) {
    QXmlStreamReader xml(QByteArray::fromStdString(doc));
    int shapes = 0, depth = 0;
    while (!xml.atEnd()) {
        xml.readNext();
        depth += int(xml.isStartElement()) - int(xml.isEndElement());
        if (!xml.isStartElement()) continue;
        const QXmlStreamAttributes attrs = xml.attributes();
        const QString name = xml.name().toString();
        if (depth == 1) {
            EXPECT_EQ(name, QStringLiteral("svg"));
            EXPECT_EQ(xml.namespaceUri(), QStringLiteral("http://www.w3.org/2000/svg"));
            // The page's colour; size and weight show in the rendering below.
            EXPECT_EQ(attrs.value("stroke").toString().toStdString(), colour);
            continue;
        }
        EXPECT_EQ(depth, 2) << "nested element " << name.toStdString();
        const auto allowed = kAllowed.find(name);
        EXPECT_TRUE(allowed != kAllowed.end()) << "element " << name.toStdString();
        shapes += allowed != kAllowed.end();
        for (const QXmlStreamAttribute& a : attrs) {
            const QString attr = a.name().toString(), value = a.value().toString();
            bool number = false;
            value.toDouble(&number);
            EXPECT_TRUE(allowed != kAllowed.end() && allowed->second.count(attr))
                << name.toStdString() << " with " << attr.toStdString();
            EXPECT_TRUE(attr == "points" || (attr == "d" ? isPathData(value) : number))
                << attr.toStdString() << "=" << value.toStdString();
        }
    }
    EXPECT_FALSE(xml.hasError()) << xml.errorString().toStdString() << " at line " << xml.lineNumber()
                                 << ", column " << xml.columnNumber();
    return shapes;
}

TEST(IconDocument, isWellFormedSvgOfStrokeShapesOnly) {
    for (const std::string& key : allKeys()) {
        for (const char* colour : kAccents) {
            SCOPED_TRACE(key + " in " + colour);
            EXPECT_GT(checkDocument(fl::iconDocument(key, colour), colour), 0);
        }
    }
}

// About 4 px of margin, less half the stroke, leaves the outer two pixels
// clear; a faint anti-aliased edge may touch them. The ink's share of the
// square keeps a drawing beside its neighbours: below the band it fades (or
// failed to render), above it the strokes close up at 34 px.
TEST(IconDrawing, keepsItsMarginAndTheWeightOfTheSet) {
    const int size = 48, frame = 2, faint = 64;
    for (const std::string& key : allKeys()) {
        SCOPED_TRACE(key);
        // As Qt renders it for a page, on its own 48 px grid.
        QImage img(size, size, QImage::Format_ARGB32_Premultiplied);
        img.fill(Qt::transparent);
        QPainter p(&img);
        p.setRenderHint(QPainter::Antialiasing);
        QSvgRenderer(QByteArray::fromStdString(fl::iconDocument(key, "#000000"))).render(&p);
        p.end();
        int outside = 0;
        double ink = 0;
        for (int y = 0; y < size; ++y)
            for (int x = 0; x < size; ++x) {
                const bool inFrame = x < frame || y < frame || x >= size - frame || y >= size - frame;
                if (inFrame && qAlpha(img.pixel(x, y)) > faint) ++outside;
                ink += qAlpha(img.pixel(x, y)) / 255.0;
            }
        EXPECT_EQ(outside, 0);
        EXPECT_GE(ink / (size * size), 0.08);
        EXPECT_LE(ink / (size * size), 0.28);
    }
}

} // namespace
