#include "app/shell/settingspanel.h"

#include "app/shell/options.h"
#include "app/shell/pagehost.h"
#include "app/shell/theme.h"
#include "store/datastore.h"
#include "store/keys.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>

namespace app {

int textSizeIndex(double scale) {
    if (scale > 1.25) return 2;
    if (scale > 1.05) return 1;
    return 0;
}

const char* themeModeName(int mode) {
    switch (mode) {
    case ThemeLight: return "light";
    case ThemeDark: return "dark";
    default: return "auto";
    }
}

SettingsPanel::SettingsPanel(PageHost* h, QWidget* parent) : QFrame(parent, Qt::Popup), host(h) {
    setObjectName("popover");
    setAttribute(Qt::WA_StyledBackground);

    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(16, 14, 16, 14);
    grid->setHorizontalSpacing(12);
    grid->setVerticalSpacing(10);

    auto* title = new QLabel(QStringLiteral("Indstillinger"), this);
    title->setProperty("class", "sh");
    grid->addWidget(title, 0, 0, 1, 2);

    steps = new QCheckBox(QStringLiteral("Vis ét trin ad gangen"), this);
    steps->setToolTip(QStringLiteral("Skjuler facit og de næste trin, til du selv har prøvet"));
    grid->addWidget(steps, 1, 0, 1, 2);

    rounding = new QComboBox(this);
    rounding->addItem(QStringLiteral("Præcis"), QStringLiteral("p5"));
    rounding->addItem(QStringLiteral("Som formelsamlingen"), QStringLiteral("d2"));
    rounding->setToolTip(QStringLiteral("Præcis = 5 betydende cifre. Som formelsamlingen = 2 decimaler "
                                        "(3 cifre for tal under 1)."));
    grid->addWidget(new QLabel(QStringLiteral("Afrunding"), this), 2, 0);
    grid->addWidget(rounding, 2, 1);

    comma = new QCheckBox(QStringLiteral("Decimalkomma (0,5)"), this);
    grid->addWidget(comma, 3, 0, 1, 2);

    textSize = new QComboBox(this);
    textSize->addItem(QStringLiteral("Normal"), 1.0);
    textSize->addItem(QStringLiteral("Større (115 %)"), 1.15);
    textSize->addItem(QStringLiteral("Størst (130 %)"), 1.3);
    textSize->setToolTip(QStringLiteral("Størrelsen på al tekst – til små skærme og projektor"));
    grid->addWidget(new QLabel(QStringLiteral("Tekststørrelse"), this), 4, 0);
    grid->addWidget(textSize, 4, 1);

    themeButton = new QPushButton(QStringLiteral("◐  Skift lyst / mørkt tema"), this);
    themeButton->setToolTip(QStringLiteral("Lyst, mørkt eller som Windows"));
    grid->addWidget(themeButton, 5, 0, 1, 2);
    themeNow = new QLabel(this);
    themeNow->setProperty("class", "hint");
    grid->addWidget(themeNow, 6, 0, 1, 2);

    classCode = new QLineEdit(this);
    classCode->setPlaceholderText(QStringLiteral("fra din lærer"));
    classCode->setMaxLength(40);
    classCode->setToolTip(QStringLiteral("Koden, din lærer har givet klassen – så får du opgaver og beskeder"));
    grid->addWidget(new QLabel(QStringLiteral("Klassekode"), this), 7, 0);
    grid->addWidget(classCode, 7, 1);
    studentName = new QLineEdit(this);
    studentName->setMaxLength(80);
    grid->addWidget(new QLabel(QStringLiteral("Dit navn"), this), 8, 0);
    grid->addWidget(studentName, 8, 1);

    sync();
    connect(steps, &QCheckBox::toggled, this, &SettingsPanel::stepsToggled);
    connect(rounding, &QComboBox::activated, this, &SettingsPanel::roundingChosen);
    connect(comma, &QCheckBox::toggled, this, &SettingsPanel::commaToggled);
    connect(themeButton, &QPushButton::clicked, this, &SettingsPanel::cycleTheme);
    connect(textSize, &QComboBox::activated, this, &SettingsPanel::textSizeChosen);
    connect(classCode, &QLineEdit::editingFinished, this, &SettingsPanel::classFieldsEdited);
    connect(studentName, &QLineEdit::editingFinished, this, &SettingsPanel::classFieldsEdited);
}

void SettingsPanel::classFieldsEdited() {
    const std::string name = studentName->text().trimmed().toStdString();
    if (!name.empty() && name != storeGetString(key::StudentName)) storeSet(key::StudentName, Json(name));
    const std::string code = classCode->text().trimmed().toStdString();
    if (code == storeGetString(key::ClassKey)) return;
    storeSet(key::ClassKey, Json(code));
    if (!code.empty()) emit classCodeChanged();
}

void SettingsPanel::sync() {
    const AppOptions& o = options();
    const QSignalBlocker b1(steps), b2(rounding), b3(comma), b4(textSize);
    steps->setChecked(o.trinvis);
    rounding->setCurrentIndex(o.rund == "d2" ? 1 : 0);
    comma->setChecked(o.komma);
    textSize->setCurrentIndex(textSizeIndex(textScale()));
    classCode->setText(QString::fromStdString(storeGetString(key::ClassKey)));
    studentName->setText(QString::fromStdString(storeGetString(key::StudentName)));
    showThemeMode();
}

void SettingsPanel::showThemeMode() {
    static const char* const names[] = {"som systemet", "lyst", "mørkt"};
    const int mode = themeMode();
    themeNow->setText(QStringLiteral("Tema: ") + QString::fromUtf8(names[mode >= 0 && mode <= 2 ? mode : 0]));
}

void SettingsPanel::popUpUnder(QWidget* gear) {
    anchor = gear;
    sync();
    adjustSize();
    const QPoint gearRight = gear->mapToGlobal(QPoint(gear->width(), gear->height() + 6));
    move(gearRight.x() - width(), gearRight.y());
    show();
}

void SettingsPanel::stepsToggled(bool on) {
    options().trinvis = on;
    applyDisplaySettings();
    storeSet(key::Trinvis, Json(on));
    emit host->hostSignals()->stepModeChanged(on);
}

void SettingsPanel::roundingChosen(int index) {
    const std::string code = rounding->itemData(index).toString().toStdString();
    if (code == options().rund) return;
    options().rund = code;
    applyDisplaySettings();
    storeSet(key::Rund, Json(code));
    emit host->hostSignals()->settingsChanged();
}

void SettingsPanel::commaToggled(bool on) {
    options().komma = on;
    applyDisplaySettings();
    storeSet(key::Komma, Json(on));
    emit host->hostSignals()->settingsChanged();
}

void SettingsPanel::cycleTheme() {
    // automatic → light → dark → automatic
    const int next = (themeMode() + 1) % 3;
    storeSet(key::Theme, Json(themeModeName(next)));
    setThemeMode(next);
    showThemeMode();
    emit host->hostSignals()->themeChanged();
}

void SettingsPanel::textSizeChosen(int index) {
    const double scale = textSize->itemData(index).toDouble();
    if (scale == textScale()) return;
    setTextScale(scale);
    storeSet(key::Tekst, Json(scale));
    applyTheme();
    emit host->hostSignals()->settingsChanged();
    emit host->hostSignals()->themeChanged();
    // The panel's own text has grown or shrunk with the rest.
    if (isVisible() && anchor) popUpUnder(anchor);
}

}  // namespace app
