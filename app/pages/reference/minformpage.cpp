#include "app/pages/reference/minformpage.h"

#include "app/sheet/sheetview.h"
#include "app/shell/pagehost.h"
#include "app/widgets/flowlayout.h"
#include "app/widgets/helpers.h"
#include "fl/expr/markup.h"
#include "fl/expr/numbers.h"
#include "fl/formulas/lists.h"
#include "fl/formulas/routes.h"
#include "store/datastore.h"
#include "store/keys.h"

#include <QCheckBox>
#include <QDir>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QVBoxLayout>

namespace app {

std::vector<fl::MinformItem> loadMinform() {
    std::vector<fl::MinformItem> out;
    const Json list = storeGet(key::Minform);
    if (!list.isArray()) return out;
    for (const Json& j : list.asArray()) {
        if (!j.isObject() || !j.at("key").isString()) continue;
        const std::string key = j.at("key").asString();
        if (!fl::findFormula(key)) continue;
        out.push_back({key, j.at("note").isString() ? j.at("note").asString() : std::string()});
    }
    return out;
}

void saveMinform(const std::vector<fl::MinformItem>& items) {
    Json list = Json::array();
    for (const fl::MinformItem& item : items) {
        Json o = Json::object();
        o["key"] = Json(item.key);
        o["note"] = Json(item.note);
        list.push(std::move(o));
    }
    storeSet(key::Minform, list);
}

MinformPage::MinformPage(PageHost* h, QWidget* parent) : Page(parent), host(h) {
    const fl::Tile* tile = fl::findTile(fl::route::Minform);
    auto* heading = new QLabel(QString::fromStdString(tile ? tile->name : "Min formelsamling (PDF)"), inner);
    heading->setProperty("class", "h2");
    addWidget(heading);
    auto* hint = new QLabel(QStringLiteral("Saml de formler, du selv bruger, skriv dine egne noter til dem, og "
                                           "udskriv det hele som PDF – til tavlen, til eksamen eller til lommen."),
                            inner);
    hint->setProperty("class", "hint");
    hint->setWordWrap(true);
    addWidget(hint);

    Card* add = addCard();
    add->addTitle(QStringLiteral("Tilføj formler"));
    search = new QLineEdit(add);
    search->setPlaceholderText(QStringLiteral("Søg efter en formel, fx ohm, effekt eller spændingsfald"));
    search->setClearButtonEnabled(true);
    add->layout->addWidget(search);
    candidateBox = new QWidget(add);
    candidates = new FlowLayout(candidateBox, 6, 6);
    candidates->setContentsMargins(0, 0, 0, 0);
    add->layout->addWidget(candidateBox);
    connect(search, &QLineEdit::textChanged, this, &MinformPage::rebuildCandidates);

    Card* mine = addCard();
    mine->addTitle(QStringLiteral("Dine formler"));
    listBox = new QWidget(mine);
    list = new QVBoxLayout(listBox);
    list->setContentsMargins(0, 0, 0, 0);
    list->setSpacing(6);
    mine->layout->addWidget(listBox);

    const Json opt = storeGet(key::MinformOpt);
    forms = new QCheckBox(QStringLiteral("Vis formlen omskrevet til hver størrelse"), mine);
    legend = new QCheckBox(QStringLiteral("Vis hvad bogstaverne betyder"), mine);
    forms->setChecked(!opt.isObject() || opt.at("forms").asBool(true));
    legend->setChecked(!opt.isObject() || opt.at("legend").asBool(true));
    mine->layout->addWidget(forms);
    mine->layout->addWidget(legend);
    for (QCheckBox* box : {forms, legend})
        connect(box, &QCheckBox::toggled, this, [this] {
            Json o = Json::object();
            o["forms"] = Json(forms->isChecked());
            o["legend"] = Json(legend->isChecked());
            storeSet(key::MinformOpt, o);
            draw();
        });
    QHBoxLayout* buttons = mine->addButtonRow();
    QPushButton* pdf = mine->addButton(buttons, QStringLiteral("Gem som PDF…"), QStringLiteral("primary"));
    connect(pdf, &QPushButton::clicked, this, [this] { exportPdf(); });

    sheet = new SheetView(inner);
    addWidget(sheet);

    pinned = loadMinform();
    rebuildCandidates();
    rebuildList();
    draw();
}

void MinformPage::store() { saveMinform(pinned); }

void MinformPage::pin(const std::string& key) {
    if (!fl::findFormula(key)) return;
    for (const fl::MinformItem& item : pinned)
        if (item.key == key) return;
    pinned.push_back({key, std::string()});
    store();
    rebuildCandidates();
    rebuildList();
    draw();
}

void MinformPage::unpin(size_t index) {
    if (index >= pinned.size()) return;
    pinned.erase(pinned.begin() + std::ptrdiff_t(index));
    store();
    rebuildCandidates();
    rebuildList();
    draw();
}

void MinformPage::move(size_t index, int step) {
    const std::ptrdiff_t to = std::ptrdiff_t(index) + step;
    if (index >= pinned.size() || to < 0 || to >= std::ptrdiff_t(pinned.size())) return;
    std::swap(pinned[index], pinned[size_t(to)]);
    store();
    rebuildList();
    draw();
}

void MinformPage::rebuildCandidates() {
    while (QLayoutItem* item = candidates->takeAt(0)) {
        if (QWidget* w = item->widget()) {
            w->hide();
            w->deleteLater();
        }
        delete item;
    }
    const std::string query = search->text().toStdString();
    if (fl::trimmed(query).empty()) {
        candidateBox->hide();
        return;
    }
    const auto found = fl::minformCandidates(query, pinned, 12);
    if (found.empty()) {
        auto* none = new QLabel(QStringLiteral("Ingen formler matcher."), candidateBox);
        none->setProperty("class", "hint");
        candidates->addWidget(none);
    }
    for (const fl::Formula* f : found) {
        QPushButton* b = makeButton(QStringLiteral("+ ") + QString::fromStdString(f->title), candidateBox,
                                    QStringLiteral("chip"));
        const std::string key = f->key;
        connect(b, &QPushButton::clicked, this, [this, key] { pin(key); });
        candidates->addWidget(b);
    }
    candidateBox->show();
}

void MinformPage::rebuildList() {
    while (QLayoutItem* item = list->takeAt(0)) {
        if (QWidget* w = item->widget()) {
            w->hide();
            w->deleteLater();
        }
        delete item;
    }
    if (pinned.empty()) {
        auto* none = new QLabel(QStringLiteral("Ingen formler endnu – søg herover, og tryk på en formel."), listBox);
        none->setProperty("class", "hint");
        list->addWidget(none);
        return;
    }
    for (size_t i = 0; i < pinned.size(); ++i) {
        const fl::Formula* f = fl::findFormula(pinned[i].key);
        auto* row = new QWidget(listBox);
        auto* h = new QHBoxLayout(row);
        h->setContentsMargins(0, 0, 0, 0);
        h->setSpacing(6);
        auto* title = new QLabel(QString::fromStdString(f ? f->title : pinned[i].key), row);
        title->setMinimumWidth(220);
        title->setWordWrap(true);
        h->addWidget(title, 2);
        auto* note = new QLineEdit(QString::fromStdString(pinned[i].note), row);
        note->setPlaceholderText(QStringLiteral("Din egen note …"));
        h->addWidget(note, 3);
        connect(note, &QLineEdit::textChanged, this, [this, i](const QString& text) {
            if (i >= pinned.size()) return;
            pinned[i].note = text.toStdString();
            store();
            draw();
        });
        const std::tuple<const char*, const char*, int> actions[] = {
            {"↑", "Flyt op", -1}, {"↓", "Flyt ned", 1}, {"✕", "Fjern fra formelsamlingen", 0}};
        for (const auto& [label, tip, step] : actions) {
            QPushButton* b = makeButton(QString::fromUtf8(label), row, QStringLiteral("chip"));
            b->setToolTip(QString::fromUtf8(tip));
            const int s = step;
            connect(b, &QPushButton::clicked, this, [this, i, s] {
                if (s == 0)
                    unpin(i);
                else
                    move(i, s);
            });
            h->addWidget(b);
        }
        list->addWidget(row);
    }
}

void MinformPage::draw() {
    const std::vector<fl::MinformItem> items = pinned;
    const fl::MinformOptions opts{forms->isChecked(), legend->isChecked()};
    sheet->setProvider([items, opts] { return fl::takeRender(fl::minformHtml(items, opts)); });
}

bool MinformPage::exportPdf(const QString& given) {
    QString path = given;
    if (path.isEmpty()) {
        path = QFileDialog::getSaveFileName(this, QStringLiteral("Gem formelsamlingen som PDF"),
                                            QDir::home().filePath(QStringLiteral("Min formelsamling.pdf")),
                                            QStringLiteral("PDF (*.pdf)"));
        if (path.isEmpty()) return false;
    }
    if (!path.endsWith(QLatin1String(".pdf"), Qt::CaseInsensitive)) path += QStringLiteral(".pdf");
    if (!sheet->printToPdf(QStringLiteral("Min formelsamling"), path)) {
        if (given.isEmpty())
            QMessageBox::warning(this, QStringLiteral("Min formelsamling"),
                                 QStringLiteral("Filen kunne ikke gemmes. Vælg en anden mappe, og prøv igen."));
        return false;
    }
    return true;
}

void MinformPage::onEnter() { draw(); }

void MinformPage::onSettings() { draw(); }

void MinformPage::onTheme() { draw(); }

} // namespace app
