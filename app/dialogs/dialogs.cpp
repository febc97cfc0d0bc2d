#include "app/dialogs/dialogs.h"

#include "app/dialogs/bugreportdialog.h"
#include "app/shell/options.h"
#include "app/shell/theme.h"
#include "app/widgets/helpers.h"
#include "store/datastore.h"
#include "store/keys.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPixmap>
#include <QPushButton>
#include <QTextBrowser>
#include <QVBoxLayout>

namespace app {

QString welcomeHtml() {
    return QStringLiteral(
        "<h2>Velkommen til Ostrovalden Skole</h2>"
        "<p>Programmet regner, forklarer og øver el-lære med dig – trin for trin og på dansk.</p>"
        "<h3>Hvor skal jeg begynde?</h3>"
        "<ul>"
        "<li><b>Formelfinder</b>: find en formel, udfyld det, du kender, og lad feltet for det, du søger, stå "
        "tomt. Så får du omskrivningen, udregningen og svaret.</li>"
        "<li><b>Kredsløb</b>: tegn et kredsløb i serie og parallel og få alle strømme og spændinger regnet "
        "ud – med henvisning til siden i formelsamlingen.</li>"
        "<li><b>Øvelser, tekstopgaver og formelkort</b>: træn, og se hvor du står i statistikken.</li>"
        "<li><b>Ordliste, Installation og Test af installation</b>: slå ord, farver, IP-koder og grænseværdier "
        "op.</li>"
        "</ul>"
        "<h3>Uden internet</h3>"
        "<p>Alt det ovenfor virker uden internet, og dine resultater gemmes her på computeren. Kun "
        "klassefunktionerne – opgaver og beskeder fra din lærer – kræver forbindelse; uden den er de bare "
        "stille.</p>"
        "<p>Du finder altid siderne i menuen til venstre, og søgefeltet øverst finder både formler og værktøjer. "
        "Under ⚙ kan du vælge tema, tekststørrelse og decimalkomma.</p>");
}

QString aboutHtml() {
    return QStringLiteral("<h2>Ostrovalden Skole</h2><p>Version ") + QString::fromLatin1(kVersion) +
           QStringLiteral(
               " · Skoleudgave</p>"
               "<p>Et undervisnings- og beregningsværktøj til elektrikerelever og deres lærere.</p>"
               "<h3>Bygget med</h3>"
               "<p><b>Qt 6</b> (Core, Gui, Widgets, Svg) – © The Qt Company Ltd. og andre. Bruges under GNU Lesser "
               "General Public License version 3 (LGPLv3). Du kan hente Qt's kildekode og udskifte bibliotekerne.</p>"
               "<p><b>libcurl</b> – © Daniel Stenberg og andre. Bruges under curl-licensen (en MIT/X-lignende "
               "licens).</p>"
               "<h3>Skrifttyper</h3>"
               "<p><b>Noto Sans</b> – © Google LLC; SIL Open Font License 1.1.<br>"
               "<b>DejaVu Sans og DejaVu Serif</b> – © Bitstream, Inc. og DejaVu-projektet; Bitstream Vera-licensen "
               "med DejaVu-ændringerne i det offentlige domæne.<br>"
               "<b>STIX</b> – © STI Pub Companies; SIL Open Font License 1.1.<br>"
               "Hvor Segoe UI og Cambria Math findes på computeren, bruges de i stedet; de følger med "
               "styresystemet og er ikke en del af programmet.</p>"
               "<p class=\"hint\">Licensteksterne følger med bibliotekerne og skrifttyperne på din computer.</p>");
}

namespace {

QTextBrowser* textView(const QString& html, QWidget* parent) {
    auto* view = new QTextBrowser(parent);
    view->setOpenExternalLinks(true);
    view->document()->setDefaultStyleSheet(documentCss());
    view->setHtml(QStringLiteral("<body>") + html + QStringLiteral("</body>"));
    view->setMinimumSize(520, 380);
    return view;
}

} // namespace

WelcomeDialog::WelcomeDialog(QWidget* parent) : QDialog(parent) {
    setWindowTitle(QStringLiteral("Velkommen"));
    auto* box = new QVBoxLayout(this);
    box->addWidget(textView(welcomeHtml(), this));
    auto* buttons = new QDialogButtonBox(this);
    QPushButton* go = buttons->addButton(QStringLiteral("Kom i gang"), QDialogButtonBox::AcceptRole);
    go->setDefault(true);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    box->addWidget(buttons);
}

AboutDialog::AboutDialog(QWidget* parent, const QString& page) : QDialog(parent) {
    setWindowTitle(QStringLiteral("Om Ostrovalden Skole"));
    auto* box = new QVBoxLayout(this);
    auto* logo = new QLabel(this);
    logo->setPixmap(QPixmap(QStringLiteral(":/logo-skole.png")).scaledToHeight(64, Qt::SmoothTransformation));
    box->addWidget(logo);
    box->addWidget(textView(aboutHtml(), this));
    auto* buttons = new QDialogButtonBox(this);
    buttons->addButton(QStringLiteral("Luk"), QDialogButtonBox::AcceptRole);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    // On the left, apart from "Luk", so that it isn't pressed by mistake.
    reportButton = new QPushButton(QStringLiteral("Rapportér en fejl…"), this);
    connect(reportButton, &QPushButton::clicked, this, [this, page] { BugReportDialog(page, this).exec(); });
    auto* row = new QHBoxLayout;
    row->addWidget(reportButton);
    row->addStretch(1);
    row->addWidget(buttons);
    box->addLayout(row);
}

bool showWelcomeIfFirstRun(QWidget* parent) {
    if (storeGet(key::WelcomeSeen).asBool(false)) return false;
    // Stored first: a student who closes the window with × has seen it too.
    storeSet(key::WelcomeSeen, Json(true));
    WelcomeDialog dialog(parent);
    dialog.exec();
    return true;
}

} // namespace app
