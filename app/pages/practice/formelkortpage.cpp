#include "app/pages/practice/formelkortpage.h"

#include "app/sheet/sheetview.h"
#include "app/shell/pagehost.h"
#include "app/widgets/helpers.h"
#include "store/datastore.h"
#include "store/keys.h"

#include <QComboBox>
#include <QDateTime>
#include <QHBoxLayout>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QShortcut>

namespace app {

namespace {

fl::RenderResult markup(const std::string& html) {
    return fl::takeRender(html);
}

} // namespace

FormelkortPage::FormelkortPage(PageHost* h, QWidget* parent) : Page(parent), host(h) {
    now = [] { return double(QDateTime::currentMSecsSinceEpoch()); };
    confirmReset = [this] {
        QMessageBox box(QMessageBox::Question, QStringLiteral("Formelkort"),
                        QStringLiteral("Vil du nulstille kortene i denne bunke? "), QMessageBox::NoButton, this);
        QPushButton* yes = box.addButton(QStringLiteral("Nulstil"), QMessageBox::DestructiveRole);
        box.addButton(QStringLiteral("Annullér"), QMessageBox::RejectRole);
        box.exec();
        return box.clickedButton() == yes;
    };

    auto* heading = new QLabel(QStringLiteral("Formelkort"), inner);
    setClass(heading, QStringLiteral("h2"));
    addWidget(heading);

    Card* controls = addCard();
    controls->addLabel(QStringLiteral("Lær formlerne udenad. Se på kortet, sig eller skriv svaret, og vend kortet "
                                      "(mellemrum). Svar ærligt: kort du ikke kan, kommer igen"),
                       QStringLiteral("hint"));
    deckChoice = new QComboBox(controls);
    for (const fl::Deck& d : fl::decks())
        deckChoice->addItem(QString::fromStdString(d.label), QString::fromStdString(d.key));
    controls->addRow(QStringLiteral("Bunke"), deckChoice);
    directionChoice = new QComboBox(controls);
    directionChoice->addItem(QStringLiteral("Navn → formel"), QStringLiteral("nf"));
    directionChoice->addItem(QStringLiteral("Formel → navn"), QStringLiteral("fn"));
    QHBoxLayout* dirRow = controls->addRow(QStringLiteral("Retning"), directionChoice);
    resetBtn = makeButton(QStringLiteral("Nulstil kortene"), controls, QStringLiteral("danger"));
    dirRow->insertWidget(dirRow->count() - 1, resetBtn);
    boxes = new SheetView(controls);
    controls->layout->addWidget(boxes);

    Card* deskCard = addCard();
    status = new QLabel(deskCard);
    setClass(status, QStringLiteral("crumb"));
    deskCard->layout->addWidget(status);
    card = new SheetView(deskCard);
    card->setMinimumHeight(150);
    deskCard->layout->addWidget(card);
    QHBoxLayout* buttons = deskCard->addButtonRow();
    startBtn = deskCard->addButton(buttons, QStringLiteral("Start"), QStringLiteral("primary"));
    nextRoundBtn = deskCard->addButton(buttons, QStringLiteral("Næste runde"), QStringLiteral("primary"));
    anywayBtn = deskCard->addButton(buttons, QStringLiteral("Øv alligevel"));
    flipBtn = deskCard->addButton(buttons, QStringLiteral("Vend kortet  [mellemrum]"), QStringLiteral("primary"));
    skipBtn = deskCard->addButton(buttons, QStringLiteral("Spring over"));
    rateBtns[fl::Wrong] = deskCard->addButton(buttons, QStringLiteral("✗ Kunne ikke  [1]"));
    rateBtns[fl::Almost] = deskCard->addButton(buttons, QStringLiteral("~ Næsten  [2]"));
    rateBtns[fl::Right] = deskCard->addButton(buttons, QStringLiteral("✓ Kunne den  [3]"), QStringLiteral("primary"));

    connect(deckChoice, &QComboBox::activated, this, [this] {
        storeChoice();
        drawStart();
    });
    connect(directionChoice, &QComboBox::activated, this, [this] {
        storeChoice();
        current.direction = fl::directionFromKey(directionChoice->currentData().toString().toStdString());
        if (shown == Screen::Front || shown == Screen::Back) showCard();
    });
    connect(resetBtn, &QPushButton::clicked, this, &FormelkortPage::resetDeck);
    connect(startBtn, &QPushButton::clicked, this, [this] { startRound(false); });
    connect(nextRoundBtn, &QPushButton::clicked, this, [this] { startRound(false); });
    connect(anywayBtn, &QPushButton::clicked, this, [this] { startRound(true); });
    connect(flipBtn, &QPushButton::clicked, this, &FormelkortPage::flip);
    connect(skipBtn, &QPushButton::clicked, this, &FormelkortPage::skipCard);
    for (int g = 0; g < 3; ++g)
        connect(rateBtns[g], &QPushButton::clicked, this, [this, g] { rateCard(g); });
    for (SheetView* v : {boxes, card})
        connect(v, &SheetView::action, this, [this](const QString& href) {
            if (host) host->openLink(href);
        });

    // The keys work wherever the focus is on the page.
    auto key = [this](int k, std::function<void()> fn) {
        auto* s = new QShortcut(QKeySequence(k), this, nullptr, nullptr, Qt::WidgetWithChildrenShortcut);
        connect(s, &QShortcut::activated, this, std::move(fn));
    };
    key(Qt::Key_Space, [this] {
        if (shown == Screen::Front) flip();
    });
    for (int g = 0; g < 3; ++g)
        key(Qt::Key_1 + g, [this, g] {
            if (shown == Screen::Back) rateCard(g);
        });

    chooseFromStore();
    drawStart();
}

std::string FormelkortPage::deckKey() const {
    return deckChoice->currentData().toString().toStdString();
}

void FormelkortPage::chooseFromStore() {
    const Json opt = storeGet(key::FcOpt);
    const int deck = deckChoice->findData(QString::fromStdString(opt.at("deck").asString()));
    deckChoice->setCurrentIndex(deck >= 0 ? deck : 0);
    const int mode = directionChoice->findData(QString::fromStdString(opt.at("mode").asString()));
    directionChoice->setCurrentIndex(mode >= 0 ? mode : 0);
}

void FormelkortPage::storeChoice() {
    Json opt = Json::object();
    opt["deck"] = Json(deckKey());
    opt["mode"] = Json(directionChoice->currentData().toString().toStdString());
    storeSet(key::FcOpt, opt);
}

void FormelkortPage::showBoxes() {
    const std::string html = fl::boxesHtml(deckKey(), fl::cardStates(), now());
    boxes->setProvider([html] { return markup(html); });
}

void FormelkortPage::showScreen(Screen s) {
    shown = s;
    startBtn->setVisible(s == Screen::Start);
    nextRoundBtn->setVisible(s == Screen::End);
    anywayBtn->setVisible(s == Screen::End || (s == Screen::Start && !startBtn->isEnabled()));
    flipBtn->setVisible(s == Screen::Front);
    skipBtn->setVisible(s == Screen::Front || s == Screen::Back);
    for (QPushButton* b : rateBtns)
        b->setVisible(s == Screen::Back);
}

void FormelkortPage::drawStart() {
    current = {};
    showBoxes();
    const int ready = fl::countDue(deckKey(), fl::cardStates(), now());
    const std::string html = "<p class=\"fcq center\">" + std::to_string(ready) + " kort er klar.</p>" +
                             (ready == 0 ? "<p class=\"center hint\">Du har været alle kortene igennem for nu. De "
                                           "kommer igen, når det er tid.</p>"
                                         : "");
    card->setProvider([html] { return markup(html); });
    status->clear();
    startBtn->setEnabled(ready > 0);
    showScreen(Screen::Start);
}

void FormelkortPage::startRound(bool all) {
    current = fl::startRound(deckKey(), fl::directionFromKey(directionChoice->currentData().toString().toStdString()),
                             fl::cardStates(), now(), all);
    if (current.finished()) {
        drawStart();
        return;
    }
    showScreen(Screen::Front);
    showCard();
    flipBtn->setFocus();
}

void FormelkortPage::showCard() {
    if (current.finished()) return;
    status->setText(QStringLiteral("Kort %1 af %2").arg(current.pos + 1).arg(current.queue.size()));
    const std::string key = current.card();
    const fl::Direction d = current.direction;
    const bool back = current.flipped;
    card->setProvider([key, d, back] {
        std::string html = fl::cardFrontHtml(key, d);
        if (back) html += "<hr>" + fl::cardBackHtml(key, d);
        return markup(html);
    });
}

void FormelkortPage::flip() {
    if (shown != Screen::Front || current.finished()) return;
    current.flipped = true;
    showScreen(Screen::Back);
    showCard();
    rateBtns[fl::Right]->setFocus();
}

void FormelkortPage::rateCard(int grade) {
    if (shown != Screen::Back || current.finished()) return;
    fl::rate(current, fl::cardStates(), grade, now());
    fl::saveCardStates();
    showBoxes();
    advance();
}

void FormelkortPage::advance() {
    if (current.finished()) {
        const std::string html = fl::roundEndHtml(current);
        card->setProvider([html] { return markup(html); });
        status->clear();
        showScreen(Screen::End);
        nextRoundBtn->setFocus();
        return;
    }
    showScreen(Screen::Front);
    showCard();
    flipBtn->setFocus();
}

void FormelkortPage::skipCard() {
    if ((shown != Screen::Front && shown != Screen::Back) || current.finished()) return;
    fl::skip(current);
    advance();
}

void FormelkortPage::resetDeck() {
    if (confirmReset && !confirmReset()) return;
    fl::resetDeck(deckKey());
    drawStart();
}

void FormelkortPage::onEnter() {
    const std::string before = deckKey();
    const QString direction = directionChoice->currentData().toString();
    chooseFromStore();
    // A link chose another deck: its start screen. A round under way stays.
    if (deckKey() != before || directionChoice->currentData().toString() != direction || shown == Screen::Start)
        drawStart();
    else
        showBoxes();
}

void FormelkortPage::onSettings() {
    boxes->refresh();
    card->refresh();
}

void FormelkortPage::onTheme() {
    onSettings();
}

} // namespace app
