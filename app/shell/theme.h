// The theme: one palette record drives the Qt palette, the application
// stylesheet and the stylesheet of every rich-text document. Also owns the
// theme mode and the text scale, which it applies by rewriting point sizes
// inside the stylesheets. Interface thread only.
#pragma once

#include <QColor>
#include <QFont>
#include <QString>

#include <string>

namespace app {

struct ThemeColors {
    std::string bg;
    std::string panel;
    std::string text;
    std::string muted;
    std::string line;
    std::string accent;
    std::string soft;
    std::string ok;
    std::string bad;
    std::string input;
    std::string chip;
    std::string teal;
    std::string orange;
    std::string purple;
    std::string green;
    bool dark = false;
};

const ThemeColors& lightColors();
const ThemeColors& darkColors();

// The palette in force; the light one until applyTheme() says otherwise.
const ThemeColors& colors();

enum ThemeMode { ThemeAuto = 0, ThemeLight = 1, ThemeDark = 2 };

// Stores the mode and applies it at once.
void setThemeMode(int mode);
int themeMode();

// Below 0.5 (or not a number) counts as 1.0. Does not re-apply by itself.
void setTextScale(double scale);
double textScale();

// Chooses the palette, sets the QPalette and the application stylesheet.
void applyTheme();

// Whether the desktop asks for a dark scheme; false where it can't tell.
bool systemPrefersDark();

// Replaces the colour tokens and, when the text scale isn't 1.0, every size
// in pt by the scaled size. Sizes in px never change.
QString fillTokens(const QString& text, const ThemeColors& c, const QString& btnText);
QString appStyleSheet();
QString documentCss();

// "Cambria Math" at pt × text scale.
QFont mathFont(double pt);
// The interface face ("Segoe UI") at pt × text scale.
QFont uiFont(double pt, int weight = QFont::Normal);
// pt × text scale, for the few places that set a size outside the stylesheet.
double scaledPt(double pt);

QColor qcolor(const std::string& colour);
inline QString qstr(const std::string& colour) { return QString::fromStdString(colour); }

// Maps the Windows faces the stylesheets name to faces installed here.
// Call once, after the QApplication exists and before any widget.
void installFontSubstitutions();

// The program's look as a whole: the Fusion style, the face substitutes, Qt's
// own words in Danish and the interface face as the application font. Call
// once, after the QApplication exists and before any widget.
void installLook();

}  // namespace app
