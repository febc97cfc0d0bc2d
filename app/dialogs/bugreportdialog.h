// "Rapportér en fejl": a few lines from the student to the makers, through
// the class service, with the program's version and the page on screen if
// the student allows it. Sent on the interface thread; the dialog says
// "Sender…" first, since the window waits for the answer.
#pragma once

#include "net/http.h"
#include "store/json.h"

#include <QDialog>
#include <QString>

class QCheckBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;

namespace app {

// Fewer letters than this (blanks not counted) can't say what went wrong.
inline constexpr int kMinReportLetters = 15;

// The request of a report: "key", "text" and "contact", and with `technical`
// "version", "edition", "page" and "os".
Json bugReportRequest(const QString& text, const QString& contact, bool technical, const QString& page);

class BugReportDialog : public QDialog {
    Q_OBJECT
  public:
    // `page`: the route on screen when the dialog was opened.
    explicit BugReportDialog(const QString& page, QWidget* parent = nullptr, net::Poster poster = net::post);

    void send();

    QPlainTextEdit* text = nullptr;
    QLineEdit* contact = nullptr;
    QCheckBox* technical = nullptr;
    QLabel* status = nullptr;
    QPushButton* cancelButton = nullptr;
    QPushButton* sendButton = nullptr;

  private:
    QString page;
    net::Poster poster;
};

} // namespace app
