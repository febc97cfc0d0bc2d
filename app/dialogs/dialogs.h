// The two dialogs of the program itself: the welcome on the first start
// (where to begin, what works without a network) and "Om" with the version
// and the licences of what the program is built on.
#pragma once

#include <QDialog>

class QPushButton;

namespace app {

class WelcomeDialog : public QDialog {
    Q_OBJECT
  public:
    explicit WelcomeDialog(QWidget* parent = nullptr);
};

class AboutDialog : public QDialog {
    Q_OBJECT
  public:
    // `page`: the route on screen, for a bug report opened from here.
    explicit AboutDialog(QWidget* parent = nullptr, const QString& page = QString());

    QPushButton* reportButton = nullptr;
};

// Shows the welcome once: when "welcome_seen" isn't true, runs the dialog
// and stores true, whatever way it is closed. Returns whether it was shown.
bool showWelcomeIfFirstRun(QWidget* parent);

// The texts, for the dialogs and their tests.
QString welcomeHtml();
QString aboutHtml();

} // namespace app
