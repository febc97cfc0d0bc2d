#include "app/pages/circuit/circuiteditor.h"

#include "app/shell/theme.h"
#include "fl/fig/style.h"

#include <gtest/gtest.h>

#include <QSignalSpy>
#include <QTest>

#include <functional>

namespace {

using fl::makeNode;

fl::Circuit circuitOf(std::vector<fl::CNodePtr> ch) {
    fl::Circuit c = fl::defaultCircuit("dc");
    c.root->ch = std::move(ch);
    return c;
}

class CircuitEditorTest : public ::testing::Test {
  protected:
    void SetUp() override { app::setThemeMode(app::ThemeLight); }
    void TearDown() override { app::setThemeMode(app::ThemeLight); }

    // A point inside the box that no smaller box covers: a component's
    // middle, or a group's frame just inside its corner.
    static QPointF spotIn(const fl::HitBox& b) {
        return b.group ? QPointF(b.x + 3, b.y + 3) : QPointF(b.x + b.w / 2, b.y + b.h / 2);
    }
};

// A narrow window draws the picture smaller; a pointer at any box, divided by
// the same factor, still finds that box: hovering highlights it, a click
// selects it, and the empty corner does neither.
TEST_F(CircuitEditorTest, thePointerFindsTheBlockUnderItAtAnyWidth) {
    // R1 in series with a parallel group whose first branch is a series holding
    // another parallel group: three frames, one inside the other.
    fl::Circuit c = circuitOf(
        {makeNode("R"),
         makeNode("P", "",
                  {makeNode("S", "", {makeNode("R"), makeNode("P", "", {makeNode("R"), makeNode("R")})}),
                   makeNode("R")})});
    for (int width : {0, 320}) {
        app::CircuitEditor editor;
        editor.setCircuit(&c);
        editor.resize(width ? width : static_cast<int>(std::ceil(editor.naturalWidth())), 300);
        editor.show();
        SCOPED_TRACE(editor.width());
        EXPECT_EQ(editor.scaleFactor() < 1, width != 0);
        EXPECT_GE(editor.minimumHeight(), static_cast<int>(editor.naturalHeight() * editor.scaleFactor()));
        const std::vector<fl::HitBox> hits = editor.hitBoxes();
        ASSERT_EQ(hits.size(), 8u); // five components, three frames
        QSignalSpy spy(&editor, &app::CircuitEditor::selected);
        for (size_t i = 0; i < hits.size(); ++i) {
            SCOPED_TRACE(hits[i].id);
            const QPoint at = editor.toWidget(spotIn(hits[i])).toPoint();
            QTest::mouseMove(&editor, at);
            EXPECT_EQ(editor.hoverIndex(), static_cast<int>(i));
            EXPECT_EQ(editor.cursor().shape(), Qt::PointingHandCursor);
            QTest::mouseClick(&editor, Qt::LeftButton, {}, at);
            ASSERT_FALSE(spy.isEmpty());
            EXPECT_EQ(spy.takeLast().at(0).toString().toStdString(), hits[i].id);
        }
        QTest::mouseMove(&editor, QPoint(2, 2));
        EXPECT_EQ(editor.hoverIndex(), -1);
        EXPECT_EQ(editor.cursor().shape(), Qt::ArrowCursor);
        QTest::mouseClick(&editor, Qt::LeftButton, {}, QPoint(2, 2));
        ASSERT_EQ(spy.size(), 1);
        EXPECT_EQ(spy.takeLast().at(0).toString(), QString());
    }
}

// The picture is kept between paints; what changes the drawing must still
// reach the screen at the next paint.
TEST_F(CircuitEditorTest, aKeptPictureNeverOutlivesAChange) {
    fl::Circuit c = circuitOf({makeNode("R"), makeNode("R")});
    app::CircuitEditor editor;
    editor.setCircuit(&c);
    editor.resize(900, 300);
    editor.show();
    const QImage first = editor.grab().toImage();
    const struct {
        const char* name;
        std::function<void()> change;
    } rows[] = {
        {"an edit",
         [&] {
             c.sel = c.root->ch[1]->id;
             fl::edit(c, "ser", "R");
             editor.refresh();
             ASSERT_EQ(editor.hitBoxes().size(), 3u);
         }},
        {"a selection",
         [&] {
             c.sel = c.root->ch[0]->id;
             editor.refresh();
         }},
        {"a change of theme", [] { app::setThemeMode(app::ThemeDark); }},
        {"a narrower window", [&] { editor.resize(300, 300); }},
    };
    QImage before = first;
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        row.change();
        const QImage after = editor.grab().toImage();
        EXPECT_NE(after, before);
        // A hover alone lays its wash over the same picture and takes it off again.
        QTest::mouseMove(&editor, editor.toWidget(spotIn(editor.hitBoxes()[0])).toPoint());
        QEvent leave(QEvent::Leave);
        QApplication::sendEvent(&editor, &leave);
        EXPECT_EQ(editor.grab().toImage(), after);
        before = after;
    }
}

TEST_F(CircuitEditorTest, theSelectionIsDrawnAndTheDrawingFollowsTheTheme) {
    fl::Circuit c = circuitOf({makeNode("R"), makeNode("R")});
    c.sel = c.root->ch[1]->id;
    app::CircuitEditor editor;
    editor.setCircuit(&c);
    EXPECT_NE(editor.svgText().find(app::lightColors().soft), std::string::npos)
        << "the selection's background";
    EXPECT_EQ(editor.svgText().find(app::darkColors().text), std::string::npos);
    editor.show();
    app::setThemeMode(app::ThemeDark);
    EXPECT_TRUE(fl::figColors().dark);
    EXPECT_NE(editor.svgText().find(app::darkColors().text), std::string::npos);
    EXPECT_NE(editor.svgText().find(app::darkColors().soft), std::string::npos);
    // Hidden at the change, it catches up when shown again.
    editor.hide();
    app::setThemeMode(app::ThemeLight);
    editor.show();
    EXPECT_NE(editor.svgText().find(app::lightColors().text), std::string::npos);
}

} // namespace
