#include "app/dialogs/bugreportdialog.h"

#include "net/api.h"

#include <QCheckBox>
#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSysInfo>
#include <QVBoxLayout>

namespace app {

namespace {

QString red(const QString& text) {
    return QStringLiteral("<span style=\"color:#c62828\">") + text.toHtmlEscaped() + QStringLiteral("</span>");
}

int letters(const QString& text) {
    int n = 0;
    for (const QChar c : text)
        if (!c.isSpace()) ++n;
    return n;
}

} // namespace

Json bugReportRequest(const QString& text, const QString& contact, bool technical, const QString& page) {
    Json request = Json::object();
    request["key"] = Json(net::classKey());
    request["text"] = Json(text.trimmed().toStdString());
    request["contact"] = Json(contact.trimmed().toStdString());
    if (technical) {
        request["version"] = Json(net::kVersion);
        request["edition"] = Json("Skoleudgave");
        request["page"] = Json(page.toStdString());
        request["os"] = Json((QSysInfo::prettyProductName() + QStringLiteral(" (") +
                              QSysInfo::currentCpuArchitecture() + QStringLiteral(")"))
                                 .toStdString());
    }
    return request;
}

BugReportDialog::BugReportDialog(const QString& p, QWidget* parent, net::Poster post)
    : QDialog(parent), page(p), poster(std::move(post)) {
    setWindowTitle(QStringLiteral("Rapportér en fejl"));
    setMinimumWidth(520);
    auto* box = new QVBoxLayout(this);
    auto* heading = new QLabel(QStringLiteral("<b style=\"font-size:14pt\">Rapportér en fejl</b>"));
    box->addWidget(heading);
    auto* intro = new QLabel(QStringLiteral("Fortæl, hvad du gjorde, og hvad der skete. Jo mere præcist, jo "
                                            "lettere er fejlen at finde."));
    intro->setWordWrap(true);
    intro->setProperty("class", "hint");
    box->addWidget(intro);
    text = new QPlainTextEdit;
    text->setPlaceholderText(QStringLiteral("Fx: Jeg trykkede Beregn på et kredsløb med to spoler, og så …"));
    text->setTabChangesFocus(true);
    text->setMinimumHeight(150);
    box->addWidget(text);
    contact = new QLineEdit;
    contact->setPlaceholderText(QStringLiteral("E-mail eller navn, hvis vi må skrive tilbage (valgfrit)"));
    box->addWidget(contact);
#ifdef _WIN32
    technical = new QCheckBox(
        QStringLiteral("Send teknisk info med: programversion, udgave, siden du var på og Windows-version"));
#else
    technical = new QCheckBox(
        QStringLiteral("Send teknisk info med: programversion, udgave, siden du var på og styresystemets version"));
#endif
    technical->setChecked(true);
    box->addWidget(technical);
    status = new QLabel;
    status->setTextFormat(Qt::RichText);
    status->setWordWrap(true);
    box->addWidget(status);
    auto* buttons = new QDialogButtonBox;
    cancelButton = buttons->addButton(QStringLiteral("Annullér"), QDialogButtonBox::RejectRole);
    sendButton = buttons->addButton(QStringLiteral("Send rapporten"), QDialogButtonBox::ActionRole);
    sendButton->setProperty("class", "primary");
    sendButton->setDefault(true);
    box->addWidget(buttons);
    connect(cancelButton, &QPushButton::clicked, this, &QDialog::reject);
    connect(sendButton, &QPushButton::clicked, this, &BugReportDialog::send);
}

void BugReportDialog::send() {
    if (letters(text->toPlainText()) < kMinReportLetters) {
        status->setText(red(QStringLiteral("Skriv lidt mere om fejlen, så vi kan finde den.")));
        text->setFocus();
        return;
    }
    status->setText(QStringLiteral("Sender…"));
    sendButton->setEnabled(false);
    QCoreApplication::processEvents(); // so that "Sender…" is drawn before the window waits
    const net::Reply reply =
        net::call(poster, net::path::Bug, bugReportRequest(text->toPlainText(), contact->text(),
                                                           technical->isChecked(), page));
    if (reply.outcome == 1) {
        status->setText(QStringLiteral("<span style=\"color:#1a7f37\">✓ Tak – rapporten er sendt.</span>"));
        cancelButton->setText(QStringLiteral("Luk"));
        text->setReadOnly(true);
        contact->setReadOnly(true);
        return;
    }
    // The report stays in the fields, to send again when the network is back.
    status->setText(red(QString::fromStdString(reply.text)));
    sendButton->setEnabled(true);
}

} // namespace app
