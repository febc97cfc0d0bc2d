#include "app/pages/class/opgaverpage.h"

#include "app/sheet/sheetview.h"
#include "app/shell/locks.h"
#include "app/shell/pagehost.h"
#include "app/widgets/helpers.h"
#include "fl/circuit/json.h"
#include "fl/circuit/model.h"
#include "fl/expr/markup.h"
#include "fl/fig/schematic.h"
#include "fl/formulas/routes.h"
#include "net/api.h"
#include "net/tasks.h"
#include "store/datastore.h"
#include "store/keys.h"

#include <QApplication>
#include <QDateTime>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include <cmath>

namespace app {

namespace {

QString qs(const std::string& s) { return QString::fromStdString(s); }

std::string taskMode(const Json& task) {
    const Json& mode = task.at("mode");
    return mode.isString() ? mode.str : "both";
}

QLineEdit* lineEdit(const QString& placeholder) {
    auto* edit = new QLineEdit;
    edit->setPlaceholderText(placeholder);
    edit->setClearButtonEnabled(true);
    return edit;
}

} // namespace

QString answerState(const Json& record) {
    const std::string& at = record.at("at").asString();
    const std::string& status = record.at("status").asString();
    if (status == "done") return QStringLiteral("Afleveret ") + qs(at);
    if (status == "question") return QStringLiteral("Sendt som spørgsmål ") + qs(at);
    return QStringLiteral("Ikke afleveret");
}

QString circuitUse(const std::string& mode) {
    if (mode == "view") return QStringLiteral("kun som tegning");
    if (mode == "guide") return QStringLiteral("med fremgangsmåden");
    if (mode == "full") return QStringLiteral("frit i Tegn et kredsløb");
    return QStringLiteral("frit eller med fremgangsmåden");
}

OpgaverPage::OpgaverPage(PageHost* h, QWidget* parent) : Page(parent), host(h) {
    auto* heading = new QLabel(QStringLiteral("Opgaver fra læreren"));
    heading->setProperty("class", "h2");
    addWidget(heading);

    Card* top = addCard();
    top->addLabel(QStringLiteral("Klassekoden får du af din lærer. Du skriver den og dit navn én gang – så henter "
                                 "programmet opgaverne, når det starter, og du kan aflevere herfra."),
                  QStringLiteral("hint"));
    code = lineEdit(QStringLiteral("fx KLAS-2345"));
    code->setMaxLength(40);
    code->setMinimumWidth(240);
    top->addRow(QStringLiteral("Klassekode"), code);
    name = lineEdit(QStringLiteral("Dit for- og efternavn"));
    name->setMaxLength(80);
    name->setMinimumWidth(240);
    top->addRow(QStringLiteral("Dit navn"), name);
    connect(code, &QLineEdit::editingFinished, this, &OpgaverPage::keepFields);
    connect(name, &QLineEdit::editingFinished, this, &OpgaverPage::keepFields);

    QHBoxLayout* row = top->addButtonRow();
    refetch = top->addButton(row, QStringLiteral("Hent opgaver igen"));
    connect(refetch, &QPushButton::clicked, this, &OpgaverPage::fetchAgain);
    status = new QLabel;
    status->setProperty("class", "crumb");
    status->setWordWrap(true);
    row->insertWidget(row->count() - 1, status, 1);

    onEnter();
}

OpgaverPage::~OpgaverPage() = default;

void OpgaverPage::keepFields() {
    const std::string typedCode = code->text().trimmed().toStdString();
    if (typedCode != storeGetString(key::ClassKey)) storeSet(key::ClassKey, Json(typedCode));
    const std::string typedName = name->text().trimmed().toStdString();
    if (!typedName.empty() && typedName != storeGetString(key::StudentName))
        storeSet(key::StudentName, Json(typedName));
}

void OpgaverPage::onEnter() {
    if (!code->hasFocus()) code->setText(qs(storeGetString(key::ClassKey)));
    if (!name->hasFocus()) name->setText(qs(storeGetString(key::StudentName)));
    if (storeGet(key::TasksUpdated).asNumber(0) != drawn) rebuild();

    Json seen = storeGet(key::TasksSeen);
    if (!seen.isObject()) seen = Json::object();
    bool changed = false;
    const Json list = storeGet(key::ClassTasks);
    for (const Json& task : list.at("tasks").asArray()) {
        const std::string& id = task.at("id").asString();
        if (seen.has(id)) continue;
        seen[id] = Json(true);
        changed = true;
    }
    if (changed) storeSet(key::TasksSeen, seen);
}

void OpgaverPage::onTheme() {
    // The drawing has the theme's colours baked in; one never shown waits for its first showing.
    for (TaskCard& card : taskCards)
        if (card.drawing && card.drawing->hasContent()) drawCircuit(card);
}

void OpgaverPage::rebuild() {
    for (TaskCard& card : taskCards) card.card->deleteLater();
    taskCards.clear();
    if (empty) empty->deleteLater();
    empty = nullptr;

    const double updated = storeGet(key::TasksUpdated).asNumber(0);
    drawn = updated;
    const Json tasks = storeGet(key::ClassTasks).at("tasks");
    if (tasks.asArray().empty()) {
        empty = addCard();
        empty->addLabel(updated > 0 ? QStringLiteral("Din lærer har ikke sendt nogen opgaver lige nu.")
                                    : QStringLiteral("Ingen opgaver endnu. Opgaverne hentes, når programmet starter "
                                                     "med internet – eller tryk \"Hent opgaver igen\"."));
        return;
    }
    for (const Json& task : tasks.asArray()) addTaskCard(task);
}

void OpgaverPage::addTaskCard(const Json& task) {
    TaskCard tc;
    tc.card = addCard();
    tc.id = task.at("id").asString();
    Card* card = tc.card;
    card->addTitle(qs(task.at("title").asString()).toHtmlEscaped());
    if (const std::string& due = task.at("due").asString(); !due.empty())
        card->addLabel(QStringLiteral("Afleveres ") + qs(due).toHtmlEscaped(), QStringLiteral("crumb"));

    const std::string mode = taskMode(task);
    const Json& circuitJson = task.at("circuit");
    fl::Circuit circuit;
    const bool hasCircuit = circuitJson.isObject();
    const bool readable = hasCircuit && fl::fromJson(circuitJson, circuit);
    if (readable)
        card->addLabel(QStringLiteral("Kredsløb vedhæftet (") +
                           (circuit.mode == "ac" ? QStringLiteral("vekselstrøm") : QStringLiteral("jævnstrøm")) +
                           QStringLiteral(" · ") + circuitUse(mode) + QStringLiteral(")"),
                       QStringLiteral("crumb"));

    QString text = qs(task.at("text").asString()).toHtmlEscaped();
    text.replace(QLatin1Char('\n'), QStringLiteral("<br>"));
    if (!text.isEmpty()) card->addLabel(text);

    const size_t index = taskCards.size();
    if (hasCircuit && !readable) {
        tc.notice = card->addLabel(QStringLiteral("Kredsløbet kunne ikke læses."), QStringLiteral("hint"));
    } else if (readable) {
        tc.circuit = std::make_shared<fl::Circuit>(circuit);
        const QString suffix = circuit.mode == "ac" ? QStringLiteral("ac") : QString();
        const QString openRoute = QLatin1String(fl::route::Circuit) + suffix;
        const QString guideRoute = QLatin1String(fl::route::CircuitGuide) + suffix;
        QHBoxLayout* buttons = card->addButtonRow();
        tc.drawingButton = card->addButton(buttons, QStringLiteral("Vis tegningen"),
                                           mode == "view" ? QStringLiteral("primary") : QString());
        if (mode != "guide" && mode != "view" && isOpen(openRoute.toStdString())) {
            tc.openButton = card->addButton(buttons, QStringLiteral("Åbn i Tegn et kredsløb"), QStringLiteral("primary"));
            connect(tc.openButton, &QPushButton::clicked, this,
                    [this, index, openRoute] { openCircuit(index, openRoute); });
        }
        if (mode != "full" && mode != "view" && isOpen(guideRoute.toStdString())) {
            tc.guideButton = card->addButton(buttons, QStringLiteral("Åbn fremgangsmåden"),
                                             mode == "guide" ? QStringLiteral("primary") : QString());
            connect(tc.guideButton, &QPushButton::clicked, this,
                    [this, index, guideRoute] { openCircuit(index, guideRoute); });
        }
        if (mode != "view" && !tc.openButton && !tc.guideButton)
            tc.notice = card->addLabel(QStringLiteral("Din lærer har slået ") +
                                           (circuit.mode == "ac" ? QStringLiteral("vekselstrøm")
                                                                 : QStringLiteral("jævnstrøm")) +
                                           QStringLiteral(" i Tegn et kredsløb fra lige nu, så kredsløbet kan kun "
                                                          "vises som tegning."),
                                       QStringLiteral("hint"));
        tc.drawing = new SheetView(card);
        tc.drawing->hide();
        card->layout->addWidget(tc.drawing);
        connect(tc.drawingButton, &QPushButton::clicked, this, [this, index] {
            TaskCard& c = taskCards[index];
            const bool show = c.drawing->isHidden();
            if (show && !c.drawing->hasContent()) drawCircuit(c);
            c.drawing->setVisible(show);
            c.drawingButton->setText(show ? QStringLiteral("Skjul tegningen") : QStringLiteral("Vis tegningen"));
        });
    }

    tc.answer = new QLineEdit;
    tc.answer->setPlaceholderText(QStringLiteral("Dit svar, eller et spørgsmål til læreren"));
    tc.answer->setMaxLength(4000);
    card->layout->addWidget(tc.answer);
    QHBoxLayout* answerRow = card->addButtonRow();
    tc.doneButton = card->addButton(answerRow, QStringLiteral("Aflever som løst"), QStringLiteral("primary"));
    tc.questionButton = card->addButton(answerRow, QStringLiteral("Send som spørgsmål"));
    tc.state = new QLabel(answerState(storeGet(key::TaskAnswers).at(tc.id)));
    tc.state->setProperty("class", "crumb");
    tc.state->setWordWrap(true);
    answerRow->insertWidget(answerRow->count() - 1, tc.state, 1);
    connect(tc.doneButton, &QPushButton::clicked, this, [this, index] { send(index, "done"); });
    connect(tc.questionButton, &QPushButton::clicked, this, [this, index] { send(index, "question"); });
    connect(tc.answer, &QLineEdit::returnPressed, this, [this, index] { send(index, "done"); });

    taskCards.push_back(std::move(tc));
}

void OpgaverPage::drawCircuit(TaskCard& card) {
    if (!card.drawing || !card.circuit) return;
    fl::Circuit copy = *card.circuit;
    double w = 0, h = 0;
    fl::resetFigures();
    const std::string svg = fl::schematic(copy, {}, fl::SchematicOptions{}, nullptr, &w, &h);
    const std::string src = fl::addFigure(svg);
    // The sheet view finds a figure by exactly this tag.
    const std::string tag = "<p class=\"fig\"><img src=\"" + src + "\" width=\"" +
                            std::to_string(static_cast<int>(std::ceil(w))) + "\" height=\"" +
                            std::to_string(static_cast<int>(std::ceil(h))) + "\"></p>";
    card.drawing->setContent(fl::takeRender(tag));
}

void OpgaverPage::openCircuit(size_t index, const QString& route) {
    if (index >= taskCards.size() || !taskCards[index].circuit) return;
    // Into the working circuit of its kind, where the circuit page picks it up.
    fl::switchMode(taskCards[index].circuit->mode);
    fl::setCircuit(*taskCards[index].circuit);
    fl::saveCircuit();
    host->navigate(route);
}

void OpgaverPage::fetchAgain() {
    keepFields();
    status->setText(QStringLiteral("Sender…"));
    QApplication::processEvents();
    std::string error;
    if (!net::refetchTasks(poster, error)) {
        status->setText(error == net::kUnexpectedReply ? qs(error)
                                                       : QStringLiteral("Kunne ikke hente opgaverne: ") + qs(error));
        return;
    }
    rebuild();
    onEnter();
    status->setText(QStringLiteral("Opgaverne er hentet ") + QTime::currentTime().toString(QStringLiteral("HH:mm")) +
                    QStringLiteral("."));
}

void OpgaverPage::send(size_t index, const std::string& kind) {
    if (index >= taskCards.size()) return;
    keepFields();
    const std::string typedName = name->text().trimmed().toStdString();
    const bool canSend = !net::classKey().empty() && !typedName.empty();
    QLabel* state = taskCards[index].state;
    if (canSend) {
        state->setText(QStringLiteral("Sender…"));
        QApplication::processEvents();
        // The cards may have been rebuilt meanwhile.
        if (index >= taskCards.size() || taskCards[index].state != state) return;
    }
    const TaskCard& card = taskCards[index];
    const QString at = QDateTime::currentDateTime().toString(QStringLiteral("d.M.yyyy HH:mm"));
    std::string error;
    if (!net::sendAnswer(poster, card.id, kind, card.answer->text().trimmed().toStdString(), typedName,
                         at.toStdString(), error)) {
        state->setText(canSend ? QStringLiteral("Kunne ikke sende: ") + qs(error) : qs(error));
        return;
    }
    state->setText((kind == "question" ? QStringLiteral("Sendt som spørgsmål ") : QStringLiteral("Afleveret ")) + at);
}

} // namespace app
