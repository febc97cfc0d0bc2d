#include "app/pages/practice/opgavearkpage.h"

#include "app/pages/practice/topiccombo.h"
#include "app/sheet/sheetview.h"
#include "app/shell/locks.h"
#include "app/shell/pagehost.h"
#include "app/widgets/helpers.h"
#include "fl/practice/categories.h"
#include "fl/practice/stats.h"
#include "store/datastore.h"
#include "store/keys.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDate>
#include <QDir>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QMessageBox>
#include <QPushButton>
#include <QStandardPaths>
#include <QTimer>

namespace app {

namespace {

const char kMakeText[] = "Lav nyt opgaveark";
const char kPdfText[] = "Hent som PDF";

bool openForStudent(const std::string& key) {
    return isOpenKey(key);
}

} // namespace

OpgavearkPage::OpgavearkPage(PageHost* h, QWidget* parent) : Page(parent), host(h) {
    auto* heading = new QLabel(QStringLiteral("Opgaveark"), inner);
    setClass(heading, QStringLiteral("h2"));
    addWidget(heading);

    Card* controls = addCard();
    controls->addLabel(QStringLiteral("Lav et ark med tilfældige opgaver, som du kan printe og regne på papir – fx "
                                      "som lektier eller op til en prøve. Facit står bagerst, på en side for sig."),
                       QStringLiteral("hint"));
    topics = new QComboBox(controls);
    topics->setMinimumWidth(260);
    controls->addRow(QStringLiteral("Emne"), topics);
    counts = new QComboBox(controls);
    for (int n : fl::kWorksheetCounts)
        counts->addItem(QStringLiteral("%1 opgaver").arg(n), n);
    controls->addRow(QStringLiteral("Antal"), counts);
    facit = new QComboBox(controls);
    for (const auto& [key, label] : fl::facitChoices())
        facit->addItem(QString::fromStdString(label), QString::fromStdString(key));
    controls->addRow(QStringLiteral("Facit"), facit);
    room = new QCheckBox(QStringLiteral("Plads til udregning"), controls);
    controls->addRow(QString(), room);
    QHBoxLayout* buttons = controls->addButtonRow();
    makeBtn = controls->addButton(buttons, QString::fromUtf8(kMakeText), QStringLiteral("primary"));
    facitBtn = controls->addButton(buttons, QStringLiteral("Vis facit"));
    pdfBtn = controls->addButton(buttons, QString::fromUtf8(kPdfText));

    Card* paper = addCard();
    view = new SheetView(paper);
    paper->layout->addWidget(view);

    connect(makeBtn, &QPushButton::clicked, this, &OpgavearkPage::make);
    connect(facitBtn, &QPushButton::clicked, this, &OpgavearkPage::toggleFacit);
    connect(pdfBtn, &QPushButton::clicked, this, &OpgavearkPage::savePdf);
    for (QComboBox* box : {topics, counts, facit})
        connect(box, &QComboBox::activated, this, &OpgavearkPage::storeOptions);
    connect(room, &QCheckBox::toggled, this, &OpgavearkPage::storeOptions);
    connect(view, &SheetView::action, this, [this](const QString& href) {
        if (host) host->openLink(href);
    });

    const fl::WorksheetOptions o = fl::worksheetOptionsFromJson(storeGet(key::WsOpt));
    fillPracticeTopics(topics, QString::fromStdString(o.topic));
    counts->setCurrentIndex(std::max(0, counts->findData(o.count)));
    facit->setCurrentIndex(std::max(0, facit->findData(QString::fromStdString(o.facit))));
    {
        QSignalBlocker block(room);
        room->setChecked(o.room);
    }
    facitBtn->setEnabled(false);
    pdfBtn->setEnabled(false);
}

fl::WorksheetOptions OpgavearkPage::options() const {
    fl::WorksheetOptions o;
    o.topic = topics->currentData().toString().toStdString();
    o.count = counts->currentData().toInt();
    o.facit = facit->currentData().toString().toStdString();
    o.room = room->isChecked();
    return o;
}

void OpgavearkPage::storeOptions() {
    storeSet(key::WsOpt, fl::worksheetOptionsToJson(options()));
}

void OpgavearkPage::make() {
    makeBtn->setEnabled(false);
    makeBtn->setText(QStringLiteral("Laver opgaver…"));
    QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    const fl::WorksheetOptions o = options();
    storeOptions();
    const std::vector<std::string> weak = fl::weakTopics(fl::loadStats());
    const std::string date =
        QLocale(QLocale::Danish, QLocale::Denmark).toString(QDate::currentDate(), QStringLiteral("d. MMMM yyyy")).toStdString();
    current = fl::drawWorksheet(o, chosenTopicLabel(topics).toStdString(), date,
                                [&] { return fl::exerciseForCategory(o.topic, weak, openForStudent); });
    showFacit = false;
    makeBtn->setText(QString::fromUtf8(kMakeText));
    makeBtn->setEnabled(true);
    showSheet();
}

void OpgavearkPage::showSheet() {
    const bool has = !current.exercises.empty();
    facitBtn->setEnabled(has && current.options.facit != "ingen");
    facitBtn->setText(showFacit ? QStringLiteral("Skjul facit") : QStringLiteral("Vis facit"));
    pdfBtn->setEnabled(has);
    if (!has) {
        view->setProvider([] {
            return fl::takeRender(
                fl::msgBox("Der er ingen opgaver i dette emne lige nu – vælg et andet emne.", false));
        });
        return;
    }
    view->setProvider([this] { return fl::worksheetRender(current, showFacit); });
}

void OpgavearkPage::toggleFacit() {
    if (current.exercises.empty()) return;
    showFacit = !showFacit;
    showSheet();
}

void OpgavearkPage::savePdf() {
    if (current.exercises.empty()) return;
    const QString dir = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    QString path = QFileDialog::getSaveFileName(this, QStringLiteral("Gem som PDF"), QDir(dir).filePath("Opgaveark.pdf"),
                                                QStringLiteral("PDF-filer (*.pdf)"));
    if (path.isEmpty()) return;
    if (!path.endsWith(QLatin1String(".pdf"), Qt::CaseInsensitive)) path += QLatin1String(".pdf");
    if (!savePdfTo(path))
        QMessageBox::warning(this, QStringLiteral("PDF"),
                             QStringLiteral("PDF-filen kunne ikke gemmes. Vælg en anden mappe eller et andet navn."));
}

bool OpgavearkPage::savePdfTo(const QString& path) {
    if (current.exercises.empty()) return false;
    pdfBtn->setEnabled(false);
    pdfBtn->setText(QStringLiteral("Laver PDF…"));
    QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    // Paper has the facit the options ask for, whatever the screen shows.
    const bool ok = view->printToPdf(fl::worksheetRender(current, true), QStringLiteral("Opgaveark"), path);
    pdfBtn->setEnabled(true);
    pdfBtn->setText(ok ? QStringLiteral("✓ PDF gemt") : QString::fromUtf8(kPdfText));
    if (ok) QTimer::singleShot(2500, pdfBtn, [b = pdfBtn] { b->setText(QString::fromUtf8(kPdfText)); });
    return ok;
}

void OpgavearkPage::onEnter() {
    fillPracticeTopics(topics, topics->currentData().toString());
    if (current.exercises.empty()) make();
}

void OpgavearkPage::onSettings() {
    view->refresh();
}

void OpgavearkPage::onTheme() {
    view->refresh();
}

} // namespace app
