// The circuit page's ways in and out for whole circuits: the saved circuits
// (the row under the drawing, with its preview) and the clipboard's one-line
// text. Both install through openElsewhere()/installCircuit(); the model and
// the store's forms are fl/circuit's.
#include "app/pages/circuit/kredspage.h"

#include "app/pages/circuit/sourcekeys.h"
#include "app/sheet/resultarea.h"
#include "app/shell/theme.h"
#include "app/widgets/helpers.h"
#include "fl/circuit/json.h"
#include "fl/expr/markup.h"
#include "fl/expr/numbers.h"
#include "fl/expr/symbols.h"
#include "fl/fig/schematic.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPixmap>
#include <QPushButton>
#include <QStandardItemModel>
#include <QSvgRenderer>
#include <QVBoxLayout>

#include <cmath>

namespace app {

namespace {

const char kNotACircuit[] = "Udklipsholderen indeholder ikke et kredsløb fra Ostrovalden.";
const char kNoneSaved[] = "ingen gemte endnu";
// A pasted text beyond this holds no circuit a student drew; refusing it
// before parsing keeps the page responsive.
constexpr int kMaxPasteBytes = 512 * 1024;
constexpr int kPreviewWidth = 240;

} // namespace

void KredsPage::buildSavedRow(Card* card) {
    auto* row = new QHBoxLayout;
    row->setContentsMargins(0, 10, 0, 0);
    row->setSpacing(8);
    auto* label = new QLabel(QStringLiteral("Gemte kredsløb"), card);
    label->setProperty("class", "sh");
    row->addWidget(label);
    saved = new QComboBox(card);
    saved->setMinimumWidth(220);
    row->addWidget(saved);
    const std::pair<const char*, void (KredsPage::*)()> actions[] = {{"Åbn", &KredsPage::openSaved},
                                                                     {"Gem som…", &KredsPage::saveAs},
                                                                     {"Omdøb", &KredsPage::renameSaved},
                                                                     {"Slet", &KredsPage::deleteSaved}};
    for (const auto& [text, fn] : actions) {
        const QString t = QString::fromUtf8(text);
        // The editor's row has a "Slet" too; this one is told apart by its name.
        QPushButton* b =
            makeButton(t, card, t == QLatin1String("Slet") ? QStringLiteral("danger") : QString());
        b->setObjectName(QStringLiteral("saved_") + t);
        connect(b, &QPushButton::clicked, this, fn);
        row->addWidget(b);
    }
    row->addStretch(1);
    card->layout->addLayout(row);
    connect(saved, qOverload<int>(&QComboBox::activated), this, [this] { drawSavedPreview(); });

    preview = new QWidget(card);
    auto* pl = new QHBoxLayout(preview);
    pl->setContentsMargins(0, 4, 0, 0);
    pl->setSpacing(12);
    previewPicture = new QLabel(preview);
    previewPicture->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    pl->addWidget(previewPicture, 0, Qt::AlignTop);
    previewInfo = new QLabel(preview);
    previewInfo->setTextFormat(Qt::RichText);
    previewInfo->setWordWrap(true);
    previewInfo->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    pl->addWidget(previewInfo, 1);
    preview->hide();
    card->layout->addWidget(preview);
}

bool KredsPage::loadCircuitText(const std::string& text) {
    fl::Circuit in;
    if (text.size() > static_cast<size_t>(kMaxPasteBytes) || !fl::fromText(text, in)) {
        showMessage(fl::msgBox(kNotACircuit, true));
        return false;
    }
    in.mode = in.mode == "ac" ? "ac" : "dc";
    if (!openElsewhere(in)) installCircuit(in);
    return true;
}

void KredsPage::copyCircuit() {
    QApplication::clipboard()->setText(QString::fromStdString(fl::toText(circuit())));
    showMessage(fl::msgBox(
        "Kredsløbet er kopieret. Sæt det ind på lærersiden under \"Opgaver til klassen\", eller send "
        "teksten til en kammerat.",
        false));
}

void KredsPage::pasteCircuit() {
    loadCircuitText(QApplication::clipboard()->text().toStdString());
}

void KredsPage::refreshSaved(const QString& select) {
    const QString keep = select.isEmpty() ? saved->currentText() : select;
    saved->clear();
    const std::vector<std::string> names = fl::savedCircuitNames();
    const bool any = !names.empty();
    if (!any) {
        saved->addItem(QString::fromUtf8(kNoneSaved));
        if (auto* model = qobject_cast<QStandardItemModel*>(saved->model()))
            model->item(0)->setEnabled(false);
        preview->hide();
    }
    for (const std::string& n : names)
        saved->addItem(QString::fromStdString(n));
    const int at = saved->findText(keep);
    if (any && at >= 0) saved->setCurrentIndex(at);
    for (const char* name : {"Åbn", "Omdøb", "Slet"})
        if (auto* b = findChild<QPushButton*>(QStringLiteral("saved_") + QString::fromUtf8(name)))
            b->setEnabled(any);
}

bool KredsPage::hasSaved() const {
    return saved->count() > 0 && saved->itemText(0) != QString::fromUtf8(kNoneSaved);
}

void KredsPage::saveAs() {
    QString name;
    if (!askText(QStringLiteral("Gem kredsløb"),
                 QStringLiteral("Navn på kredsløbet (fx \"Opgave 3 side 12\"):"), &name))
        return;
    name = name.trimmed();
    if (name.isEmpty() || !fl::saveCircuitAs(name.toStdString(), circuit())) return;
    refreshSaved(name);
    drawSavedPreview();
}

void KredsPage::openSaved() {
    if (!hasSaved()) return;
    fl::Circuit in;
    if (!fl::openSavedCircuit(saved->currentText().toStdString(), in)) {
        inform(QStringLiteral("Åbn kredsløb"), QStringLiteral("Det gemte kredsløb kunne ikke læses."));
        return;
    }
    in.mode = in.mode == "ac" ? "ac" : "dc";
    if (!openElsewhere(in)) installCircuit(in);
}

void KredsPage::renameSaved() {
    if (!hasSaved()) return;
    const QString from = saved->currentText();
    QString to = from;
    if (!askText(QStringLiteral("Omdøb kredsløb"), QStringLiteral("Nyt navn:"), &to)) return;
    to = to.trimmed();
    if (to.isEmpty() || to == from || !fl::renameSavedCircuit(from.toStdString(), to.toStdString())) return;
    refreshSaved(to);
    drawSavedPreview();
}

void KredsPage::deleteSaved() {
    if (!hasSaved()) return;
    const QString name = saved->currentText();
    if (!confirm(QStringLiteral("Slet kredsløb"),
                 QStringLiteral("Slet det gemte kredsløb \"") + name + QStringLiteral("\"?")))
        return;
    fl::removeSavedCircuit(name.toStdString());
    preview->hide();
    refreshSaved();
}

void KredsPage::drawSavedPreview() {
    fl::Circuit in;
    if (!hasSaved() || !fl::openSavedCircuit(saved->currentText().toStdString(), in)) {
        preview->hide();
        return;
    }
    in.sel.clear();
    double w = 0, h = 0;
    const std::string svg = fl::schematic(in, {}, fl::SchematicOptions{}, nullptr, &w, &h);
    QSvgRenderer renderer(QByteArray::fromStdString(svg));
    const double pw = std::min<double>(kPreviewWidth, std::max(w, 1.0));
    const double ph = pw * h / std::max(w, 1.0);
    const qreal dpr = devicePixelRatioF();
    QPixmap pix(QSize(static_cast<int>(std::ceil(pw * dpr)), static_cast<int>(std::ceil(ph * dpr))));
    pix.setDevicePixelRatio(dpr);
    pix.fill(Qt::transparent);
    {
        QPainter p(&pix);
        p.setRenderHint(QPainter::Antialiasing, true);
        renderer.render(&p, QRectF(0, 0, pw, ph));
    }
    previewPicture->setPixmap(pix);
    previewPicture->setStyleSheet(QStringLiteral("border:1px solid ") +
                                  QString::fromStdString(colors().line) + QStringLiteral(";"));

    int count = 0;
    fl::walk(in.root, [&](const fl::CNodePtr& n) {
        if (!n->group) ++count;
    });
    QStringList given;
    const bool inAc = in.mode == "ac";
    for (const SourceKey& s : sourceKeys(inAc)) {
        const std::string text = fl::trimmed(in.src[s.key]);
        if (text.empty()) continue;
        given << QString::fromStdString(fl::symbolDisplay(s.symbol) + " = " + fl::htmlEscape(text) +
                                        (*s.unit ? std::string(" ") + s.unit : std::string()));
    }
    const QString muted = QString::fromStdString(colors().muted);
    QString info = QStringLiteral("<p><b style=\"font-size:12pt\">") + name().toHtmlEscaped() +
                   QStringLiteral("</b></p><p style=\"color:") + muted + QStringLiteral("\">") +
                   (inAc ? QStringLiteral("Vekselstrøm") : QStringLiteral("Jævnstrøm")) +
                   QStringLiteral(" · ") + QString::number(count) +
                   (count == 1 ? QStringLiteral(" komponent") : QStringLiteral(" komponenter"));
    if (!given.isEmpty()) info += QStringLiteral(" · ") + given.join(QStringLiteral(" · "));
    info += QStringLiteral("</p><p style=\"color:") + muted +
            QStringLiteral(";font-size:9pt\">Tryk Åbn for at hente kredsløbet ind i tegneren.</p>");
    previewInfo->setText(info);
    preview->show();
}

QString KredsPage::name() const {
    return saved->currentText();
}

} // namespace app
