// Small helpers every page uses: the "class" property the stylesheet keys
// on, buttons that carry it, and the fade for a freshly shown result.
#pragma once

#include <QString>

class QPushButton;
class QWidget;

namespace app {

// Sets the dynamic property "class" (selected by `QLabel.crumb` and the like)
// and re-polishes, so that a change on a visible widget shows at once.
void setClass(QWidget* widget, const QString& name);

// A push button with a class (none when empty) and the pointing hand.
QPushButton* makeButton(const QString& text, QWidget* parent = nullptr, const QString& cls = QString());

// Lets a widget appear from 15 % opacity to full in 350 ms.
void fadeIn(QWidget* widget);

// Re-applies the stylesheet after a dynamic property has changed.
void repolish(QWidget* widget);

}  // namespace app
