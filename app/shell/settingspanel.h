// The settings popup under the gear: step mode, rounding, decimal sign,
// theme, text size, and the class code and name the class service uses. Each control writes the process-wide setting, stores
// it and announces it through the host's signals; the window and the pages
// react to those alike.
#pragma once

#include <QFrame>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace app {

class PageHost;

class SettingsPanel : public QFrame {
    Q_OBJECT
public:
    SettingsPanel(PageHost* host, QWidget* parent);

    // Shows the present settings without acting on them.
    void sync();
    // Right edge under the gear's right edge, 6 pixels below it.
    void popUpUnder(QWidget* gear);

    QCheckBox* steps = nullptr;
    QComboBox* rounding = nullptr;
    QCheckBox* comma = nullptr;
    QPushButton* themeButton = nullptr;
    QLabel* themeNow = nullptr;
    QComboBox* textSize = nullptr;
    QLineEdit* classCode = nullptr;
    QLineEdit* studentName = nullptr;

signals:
    // A new, non-empty class code was typed: worth a check-in at once.
    void classCodeChanged();

private:
    void stepsToggled(bool on);
    void roundingChosen(int index);
    void commaToggled(bool on);
    void cycleTheme();
    void textSizeChosen(int index);
    void showThemeMode();
    void classFieldsEdited();

    PageHost* host;
    // Where the panel hangs, so that it can be placed again when a new text
    // size changes its own size.
    QWidget* anchor = nullptr;
};

// The combo index for a stored text scale: above 1.25 the largest, above
// 1.05 the middle one, otherwise normal.
int textSizeIndex(double scale);
// "p5", "d2"; "auto", "light", "dark"
const char* themeModeName(int mode);

}  // namespace app
