// The theme: token filling, the text scale's rewrite of pt sizes, the two
// palettes reaching the application, the resource images and the fonts that
// stand in for the Windows faces.
#include "app/shell/theme.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QGlyphRun>
#include <QIcon>
#include <QImage>
#include <QPalette>
#include <QRawFont>
#include <QTextLayout>

namespace {

// Restores the process-wide theme state a test changes.
class ThemeTest : public ::testing::Test {
  protected:
    void TearDown() override {
        app::setTextScale(1.0);
        app::setThemeMode(app::ThemeLight);
    }
};

// Tokens take the palette's values; the text scale rewrites point sizes only.
TEST_F(ThemeTest, fillTokensTakesPaletteAndScale) {
    struct Row {
        const char* name;
        bool dark;
        double scale;
        const char* input;
        const char* expected;
    };
    const Row rows[] = {
        {"button text before background", false, 1.0, "@BTNTEXT @BG", "#0d1220 #f3f5f8"},
        {"check image follows the palette, dark", true, 1.0, "url(@CHECKIMG) url(@DASHIMG)",
         "url(:/check-dark.svg) url(:/dash-dark.svg)"},
        {"pixels stay", false, 1.15, "border: 1px solid; width: 14px;", "border: 1px solid; width: 14px;"},
        {"several in one line", false, 1.3, "a 10pt b 17pt c", "a 13.0pt b 22.1pt c"},
        {"no word boundary, no match", false, 1.3, "10ptx", "10ptx"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        app::setTextScale(row.scale);
        const app::ThemeColors& c = row.dark ? app::darkColors() : app::lightColors();
        EXPECT_EQ(app::fillTokens(row.input, c, "#0d1220").toStdString(), row.expected);
    }
}

TEST_F(ThemeTest, textScaleBelowHalfCountsAsOne) {
    const std::pair<double, double> rows[] = {{0.4, 1.0}, {0.5, 0.5}, {std::nan(""), 1.0}};
    for (auto [given, kept] : rows) {
        SCOPED_TRACE(given);
        app::setTextScale(given);
        EXPECT_EQ(app::textScale(), kept);
    }
}

TEST_F(ThemeTest, modeChoosesThePaletteOfTheApplication) {
    struct Row {
        const char* name;
        int mode;
        bool dark;
        const char* window;
    };
    // The offscreen platform has no colour scheme: automatic gives light.
    // Automatic right after dark: it must not mistake our own dark palette
    // for the platform's.
    const Row rows[] = {{"light", app::ThemeLight, false, "#f3f5f8"},
                        {"dark", app::ThemeDark, true, "#121417"},
                        {"automatic without a scheme", app::ThemeAuto, false, "#f3f5f8"}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        app::setThemeMode(row.mode);
        EXPECT_EQ(app::colors().dark, row.dark);
        EXPECT_EQ(QApplication::palette().color(QPalette::Window), QColor(row.window));
        EXPECT_EQ(QApplication::palette().color(QPalette::HighlightedText),
                  QColor(row.dark ? "#0d1220" : "#ffffff"));
        EXPECT_TRUE(qApp->styleSheet().contains(row.window));
        for (const QString& css : {app::appStyleSheet(), app::documentCss()}) {
            EXPECT_FALSE(css.contains('@')) << "a token left behind: " << css.toStdString();
            EXPECT_TRUE(css.contains(app::qstr(app::colors().accent)));
        }
    }
}

TEST(Resources, everyImageOfTheProgramLoads) {
    for (const char* path : {":/logo-skole.png", ":/check-dark.svg", ":/check-light.svg", ":/dash-dark.svg",
                             ":/dash-light.svg", ":/down.svg"}) {
        SCOPED_TRACE(path);
        EXPECT_FALSE(QImage(path).isNull());
    }
    EXPECT_FALSE(QIcon(":/ostrovalden-skole.ico").pixmap(32, 32).isNull());
}

TEST(Fonts, windowsFacesRenderEverySymbolFromTheChosenFaces) {
    app::installFontSubstitutions();
    const QString symbols = QString::fromUtf8("Uæøå −3,2·10⁻³ √3 φ Ω µ ≈ ≤ → ✓ ⚙ ◐ ↻ ▾ ▸ ⌂ × –");
    for (const char* family : {"Segoe UI", "Cambria", "Cambria Math"}) {
        SCOPED_TRACE(family);
        QFont f(family);
        f.setPointSizeF(12);
        const QStringList chosen = QFont::substitutes(family);
        ASSERT_FALSE(chosen.isEmpty());
        QTextLayout layout(symbols, f);
        layout.beginLayout();
        layout.createLine();
        layout.endLayout();
        // Every glyph is found, and in one of our faces rather than in
        // whatever the system happens to fall back to.
        for (const QGlyphRun& run : layout.glyphRuns()) {
            const QString face = run.rawFont().familyName();
            EXPECT_TRUE(chosen.contains(face, Qt::CaseInsensitive)) << face.toStdString();
            EXPECT_FALSE(run.glyphIndexes().contains(0u)) << face.toStdString() << " misses a glyph";
        }
    }
}

} // namespace
