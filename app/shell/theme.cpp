// Palettes, theme mode, text scale and the stylesheets built from them. The
// stylesheet texts live in stylesheets.cpp; everything that fills them in is
// here, so that a size or a colour has one way into the interface.
#include "app/shell/theme.h"

#include "app/shell/stylesheets.h"
#include "app/shell/translations.h"
#include "fl/fig/style.h"
#include "fl/expr/replace_each.h"

#include <QApplication>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QPalette>
#include <QRegularExpression>
#include <QStyleHints>

#include <cmath>

namespace app {

namespace {

struct ThemeState {
    ThemeColors colors = lightColors();
    int mode = ThemeAuto;
    double scale = 1.0;
};

ThemeState& state() {
    static ThemeState s;
    return s;
}

}  // namespace

const ThemeColors& lightColors() {
    static const ThemeColors c{"#f3f5f8", "#ffffff", "#1b1f24", "#5d6672", "#d3d9e1",
                               "#2457d6", "#e7edfc", "#1a7f37", "#c62828", "#ffffff",
                               "#eef1f5", "#0b7a75", "#d9480f", "#7048e8", "#2b8a3e",
                               false};
    return c;
}

const ThemeColors& darkColors() {
    static const ThemeColors c{"#121417", "#1b1e23", "#e6e8eb", "#9aa3ad", "#2d323a",
                               "#7ea5ff", "#1f2a45", "#4cc26b", "#ff6b6b", "#14171b",
                               "#252a31", "#3cc6be", "#ff8a4c", "#a48bff", "#5fd47a",
                               true};
    return c;
}

const ThemeColors& colors() { return state().colors; }

int themeMode() { return state().mode; }

void setThemeMode(int mode) {
    state().mode = mode;
    applyTheme();
}

double textScale() { return state().scale; }

void setTextScale(double scale) { state().scale = (scale >= 0.5 && std::isfinite(scale)) ? scale : 1.0; }

bool systemPrefersDark() {
    if (!qGuiApp) return false;
#if QT_VERSION >= QT_VERSION_CHECK(6, 5, 0)
    return QGuiApplication::styleHints()->colorScheme() == Qt::ColorScheme::Dark;
#else
    // Qt 6.4 has no colour-scheme query. A palette without any role of its
    // own resolves to the platform's, so reset to it for a moment and judge
    // by the lightness of its window colour; applyTheme() sets ours again.
    QGuiApplication::setPalette(QPalette());
    return QGuiApplication::palette().color(QPalette::Window).lightness() < 128;
#endif
}

void applyTheme() {
    const int mode = state().mode;
    const bool dark = mode == ThemeDark || (mode == ThemeAuto && systemPrefersDark());
    state().colors = dark ? darkColors() : lightColors();
    const ThemeColors& c = state().colors;
    // Figures are drawn by the core, which can't see this record.
    fl::setFigColors({{c.bg, c.panel, c.text, c.muted, c.line, c.accent, c.soft, c.ok, c.bad, c.input, c.chip,
                       c.teal, c.orange, c.purple, c.green},
                      c.dark});
    if (!qApp) return;

    QPalette pal;
    pal.setColor(QPalette::Window, qcolor(c.bg));
    for (auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText})
        pal.setColor(role, qcolor(c.text));
    pal.setColor(QPalette::Base, qcolor(c.input));
    pal.setColor(QPalette::AlternateBase, qcolor(c.chip));
    pal.setColor(QPalette::Button, qcolor(c.panel));
    pal.setColor(QPalette::ToolTipBase, qcolor(c.panel));
    pal.setColor(QPalette::Highlight, qcolor(c.accent));
    pal.setColor(QPalette::Link, qcolor(c.accent));
    pal.setColor(QPalette::HighlightedText, QColor(dark ? "#0d1220" : "#ffffff"));
    pal.setColor(QPalette::PlaceholderText, qcolor(c.muted));
    QApplication::setPalette(pal);
    // Setting a stylesheet re-polishes every widget; skip it when nothing changed.
    const QString sheet = appStyleSheet();
    if (qApp->styleSheet() != sheet) qApp->setStyleSheet(sheet);
}

QString fillTokens(const QString& text, const ThemeColors& c, const QString& btnText) {
    QString out = text;
    // @BTNTEXT goes first: it must be gone before the shorter tokens are looked for.
    const std::pair<const char*, QString> tokens[] = {
        {"@BTNTEXT", btnText},
        {"@CHECKIMG", c.dark ? ":/check-dark.svg" : ":/check-light.svg"},
        {"@DASHIMG", c.dark ? ":/dash-dark.svg" : ":/dash-light.svg"},
        {"@BG", qstr(c.bg)},
        {"@PANEL", qstr(c.panel)},
        {"@TEXT", qstr(c.text)},
        {"@MUTED", qstr(c.muted)},
        {"@LINE", qstr(c.line)},
        {"@ACCENT", qstr(c.accent)},
        {"@INPUT", qstr(c.input)},
        {"@SOFT", qstr(c.soft)},
        {"@BAD", qstr(c.bad)},
        {"@CHIP", qstr(c.chip)},
        {"@OK", qstr(c.ok)},
    };
    for (const auto& [token, value] : tokens) out.replace(QLatin1String(token), value);

    const double scale = textScale();
    if (scale == 1.0) return out;
    static const QRegularExpression pt(QStringLiteral("(\\d+(?:\\.\\d+)?)pt\\b"));
    fl::replaceEach(out, pt, [scale](const QRegularExpressionMatch& m, QString& to) {
        to += QString::number(m.captured(1).toDouble() * scale, 'f', 1) + QLatin1String("pt");
    });
    return out;
}

QString appStyleSheet() {
    const ThemeColors& c = colors();
    return fillTokens(QString::fromUtf8(appStyleTemplate()), c, c.dark ? "#0d1220" : "#ffffff");
}

QString documentCss() { return fillTokens(QString::fromUtf8(documentStyleTemplate()), colors(), QString()); }

double scaledPt(double pt) { return pt * textScale(); }

QFont mathFont(double pt) {
    QFont f(QStringLiteral("Cambria Math"));
    f.setPointSizeF(scaledPt(pt));
    return f;
}

QFont uiFont(double pt, int weight) {
    QFont f(QStringLiteral("Segoe UI"));
    f.setPointSizeF(scaledPt(pt));
    f.setWeight(QFont::Weight(weight));
    return f;
}

QColor qcolor(const std::string& colour) { return QColor(QString::fromStdString(colour)); }

void installFontSubstitutions() {
    // The first face of a list draws the text; the next ones fill in what it
    // lacks (Noto Sans has no "√" and no "−", STIX no "⁻"), so a number never
    // falls back to an arbitrary face. A real Segoe UI or Cambria is used as it is.
    const QStringList sans = {"Noto Sans", "DejaVu Sans"};
    const QStringList serif = {"STIXGeneral", "DejaVu Serif", "DejaVu Sans"};
    QFont::insertSubstitutions(QStringLiteral("Segoe UI"), sans);
    QFont::insertSubstitutions(QStringLiteral("system-ui"), sans);
    QFont::insertSubstitutions(QStringLiteral("Cambria"), serif);
    QFont::insertSubstitutions(QStringLiteral("Cambria Math"), serif);
}

void installLook() {
    QApplication::setStyle("Fusion");
    installFontSubstitutions();
    installTranslations();
    QFont font("Segoe UI");
    font.setPointSizeF(10.5);
    QApplication::setFont(font);
}

}  // namespace app
