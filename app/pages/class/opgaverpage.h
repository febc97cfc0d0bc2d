// "Opgaver fra læreren": the class code and the student's name, the tasks
// the teacher has sent (kept in the store, so the page works offline with
// what came last), each with its text, its circuit as a drawing and buttons
// into the circuit page, and a line to hand in or ask. Fetching at start is
// the background job's; this page fetches only on "Hent opgaver igen", and
// hands in on the interface thread.
#pragma once

#include "app/widgets/page.h"
#include "net/http.h"
#include "store/json.h"

#include <memory>
#include <string>
#include <vector>

class QLabel;
class QLineEdit;
class QPushButton;

namespace fl {
struct Circuit;
}

namespace app {

class PageHost;
class SheetView;

class OpgaverPage : public Page {
    Q_OBJECT
  public:
    explicit OpgaverPage(PageHost* host, QWidget* parent = nullptr);
    ~OpgaverPage() override;

    void onEnter() override;
    void onTheme() override;

    // What a task card holds; buttons the task doesn't offer are null.
    struct TaskCard {
        Card* card = nullptr;
        std::string id;
        QLabel* notice = nullptr; // the unreadable circuit, or the closed circuit page
        QPushButton* drawingButton = nullptr;
        QPushButton* openButton = nullptr;
        QPushButton* guideButton = nullptr;
        SheetView* drawing = nullptr;
        QLineEdit* answer = nullptr;
        QPushButton* doneButton = nullptr;
        QPushButton* questionButton = nullptr;
        QLabel* state = nullptr;
        std::shared_ptr<fl::Circuit> circuit;
    };
    const std::vector<TaskCard>& cards() const { return taskCards; }
    Card* emptyCard() const { return empty; }
    QLineEdit* codeField() const { return code; }
    QLineEdit* nameField() const { return name; }
    QPushButton* refetchButton() const { return refetch; }
    QLabel* statusLine() const { return status; }

    // The network; tests count or refuse calls through it.
    net::Poster poster = net::post;

  private:
    void rebuild();
    void addTaskCard(const Json& task);
    void fetchAgain();
    void send(size_t index, const std::string& status);
    void openCircuit(size_t index, const QString& route);
    void keepFields();
    void drawCircuit(TaskCard& card);

    PageHost* host;
    QLineEdit* code = nullptr;
    QLineEdit* name = nullptr;
    QPushButton* refetch = nullptr;
    QLabel* status = nullptr;
    Card* empty = nullptr;
    std::vector<TaskCard> taskCards;
    double drawn = -1; // "tasks_updated" when the cards were built
};

// "Afleveret 3.12.2026 10:15", "Sendt som spørgsmål …" or "Ikke afleveret",
// from the stored answer record (null for none).
QString answerState(const Json& record);
// How the teacher lets the student use an attached circuit, for the card's
// "Kredsløb vedhæftet (…)" line; a mode that isn't a text counts as "both".
QString circuitUse(const std::string& mode);

} // namespace app
