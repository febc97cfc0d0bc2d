#include "fl/fig/style.h"

#include "fl/fig/canvas.h"
#include "tests/fl/fig/svg_check.h"

#include <gtest/gtest.h>

#include <limits>

namespace fl {
namespace {

class StyleTest : public ::testing::Test {
  protected:
    void TearDown() override { setFigColors(lightFigColors()); }
};

TEST_F(StyleTest, numbersHaveOneDecimalAPointAndNoLocale) {
    // The suite runs under da_DK, where printf would write "3,1".
    // clang-format off
    const struct {
        double in;
        const char* out;
    } rows[] = {
        {3.04, "3"}, {3.16, "3.2"}, {-0.04, "-0"}, {-2.25, "-2.3"}, {0, "0"}, {1234567.89, "1234567.9"},
        {0.05, "0.1"}, {12.96, "13"}, {std::numeric_limits<double>::quiet_NaN(), "0"},
        {std::numeric_limits<double>::infinity(), "0"}};
    // clang-format on
    for (const auto& r : rows) {
        SCOPED_TRACE(r.in);
        EXPECT_EQ(num(r.in), r.out);
    }
}

TEST_F(StyleTest, classWordsCombineAndTheLaterWordWins) {
    const struct {
        const char* cls;
        const char* attrs;
    } rows[] = {
        {"", " fill=\"none\""},
        {"nonsense", " fill=\"none\""},
        {"wire", " fill=\"none\" stroke=\"#1b1f24\" stroke-width=\"2\" stroke-linejoin=\"round\""},
        // "coil" comes after "wire": its attributes win, the join of "wire" stays.
        {"wire coil", " fill=\"none\" stroke=\"#1b1f24\" stroke-width=\"2\" stroke-linejoin=\"round\""},
        {"plate short", " fill=\"none\" stroke=\"#1b1f24\" stroke-width=\"5\""},
        {"hsel hlc", " fill=\"#e7edfc\" stroke=\"#2457d6\" stroke-width=\"2\""},
    };
    for (const auto& r : rows) {
        SCOPED_TRACE(r.cls);
        EXPECT_EQ(shapeAttrs(r.cls), r.attrs);
    }
}

TEST_F(StyleTest, textClassesSetSizeColourAndWeight) {
    // clang-format off
    const struct {
        const char* cls;
        double size;
        int colour;
        bool bold, italic;
    } rows[] = {{"", 15, 2, false, false}, {"vname", 16, 2, true, true}, {"tick tbig", 12.5, 3, false, false},
                {"glab hl", 11.5, 5, true, false}};
    // clang-format on
    for (const auto& r : rows) {
        SCOPED_TRACE(r.cls);
        const TextStyle s = textStyle(r.cls);
        EXPECT_EQ(s.size, r.size);
        EXPECT_EQ(s.colour, r.colour);
        EXPECT_EQ(s.bold, r.bold);
        EXPECT_EQ(s.italic, r.italic);
    }
}

// The palette's other colours are followed by every kept shape (see the
// canvas test); the halo's is the one a shape doesn't carry.
TEST_F(StyleTest, theHaloIsDrawnFirstInThePanelColourAndTheLettersInTheirOwn) {
    const FigColors other = testing::otherFigColors();
    setFigColors(other);
    Canvas cv;
    cv.text(5, 5, "R", "middle", "hl");
    const auto el = testing::svgElements(cv.document(20, 20));
    ASSERT_EQ(el.size(), 2u);
    EXPECT_EQ(el[0].attrs.at("stroke"), other.slot[1]);
    EXPECT_EQ(el[0].attrs.at("fill"), other.slot[1]);
    EXPECT_EQ(el[1].attrs.at("fill"), other.slot[5]);
}

TEST_F(StyleTest, aSubscriptIsNarrowerThanTheSameLettersOnTheLine) {
    EXPECT_LT(textWidth("U<sub>R1</sub>", 15), textWidth("UR1", 15));
    EXPECT_GT(textWidth("R1", 15, true), textWidth("R1", 15, false));
    EXPECT_DOUBLE_EQ(textWidth("", 15), 0);
    // An unknown letter counts wide, so that a label never overflows its room.
    EXPECT_GE(textWidth("ж", 10), textWidth("n", 10));
}

} // namespace
} // namespace fl
