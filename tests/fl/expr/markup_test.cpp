// The rendering pass's lists and the joining of results with renumbered
// image references.
#include "fl/expr/markup.h"

#include <gtest/gtest.h>

namespace fl {
namespace {

class MarkupTest : public ::testing::Test {
  protected:
    void SetUp() override { resetFigures(); }
    void TearDown() override { resetFigures(); }
};

TEST_F(MarkupTest, passWithoutImagesHasEmptyLists) {
    const RenderResult r = takeRender("<p>tekst</p>");
    EXPECT_EQ(r.html, "<p>tekst</p>");
    EXPECT_TRUE(r.figs.empty());
    EXPECT_TRUE(r.maths.empty());
}

TEST_F(MarkupTest, listsNumberFromZeroAndTakeRenderEmptiesThem) {
    EXPECT_EQ(addFigure("<svg/>"), "f:0");
    EXPECT_EQ(addFigure("<svg></svg>"), "f:1");
    const NodePtr n = makeVar("U");
    EXPECT_EQ(addMath(n), "m:0");
    const RenderResult r = takeRender("h");
    EXPECT_EQ(r.figs, (std::vector<std::string>{"<svg/>", "<svg></svg>"}));
    ASSERT_EQ(r.maths.size(), 1u);
    EXPECT_EQ(r.maths[0], n);
    EXPECT_EQ(addFigure("x"), "f:0") << "the next pass starts again";
    EXPECT_EQ(addMath(n), "m:0");
}

TEST_F(MarkupTest, appendRenumbersFiguresAndMathsSeparately) {
    RenderResult first;
    first.html = "<img src=\"f:0\" width=\"10\" height=\"20\"><img src=\"f:1\" width=\"1\" height=\"1\">";
    first.figs = {"a", "b"};
    first.maths = {makeNum(1)};

    RenderResult second;
    second.html = "<p class=\"fig\"><img src=\"f:0\" width=\"5\" height=\"6\"></p>"
                  "<img class=\"math\" src=\"m:0\"> og <img class=\"math\" src=\"m:1\">"
                  "<img src=\"f:10\" width=\"5\" height=\"6\">";
    second.figs = {"c"};
    second.maths = {makeNum(2), makeNum(3)};

    first.append(second);
    EXPECT_EQ(first.html,
              "<img src=\"f:0\" width=\"10\" height=\"20\"><img src=\"f:1\" width=\"1\" height=\"1\">"
              "<p class=\"fig\"><img src=\"f:2\" width=\"5\" height=\"6\"></p>"
              "<img class=\"math\" src=\"m:1\"> og <img class=\"math\" src=\"m:2\">"
              "<img src=\"f:12\" width=\"5\" height=\"6\">");
    EXPECT_EQ(first.figs, (std::vector<std::string>{"a", "b", "c"}));
    ASSERT_EQ(first.maths.size(), 3u);
    EXPECT_EQ(first.maths[2]->value, 3);
}

TEST_F(MarkupTest, appendLeavesOtherSourcesAndTextAlone) {
    RenderResult first;
    first.figs = {"a"};
    first.maths = {makeNum(1)};
    RenderResult second;
    second.html =
        "src=\"f:\" src=\"m:x\" src=\"f:3 src=\"http://f:1\" f:0 m:0 src=\"f:99999999999999999999999\"";
    first.append(second);
    EXPECT_EQ(first.html, second.html);
}

} // namespace
} // namespace fl
