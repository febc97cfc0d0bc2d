// The page "formelkort": flashcards of formulas, quantities, glossary terms
// and installation facts in five boxes. Four screens: the start with the
// deck's boxes, the card's front, its back with the three ratings, and the
// end of a round. Space flips, 1–3 rate. The schedule, the decks and the
// stored states are fl/practice/cards.h's.
#pragma once

#include "app/widgets/page.h"
#include "fl/practice/cards.h"

#include <functional>

class QComboBox;
class QLabel;
class QPushButton;

namespace app {

class PageHost;
class SheetView;

class FormelkortPage : public Page {
    Q_OBJECT
  public:
    explicit FormelkortPage(PageHost* host, QWidget* parent = nullptr);

    enum class Screen { Start, Front, Back, End };

    void drawStart();
    // A round of the ready cards, or of the whole deck.
    void startRound(bool all);
    void flip();
    // 0 "Kunne ikke", 1 "Næsten", 2 "Kunne den".
    void rateCard(int grade);
    void skipCard();
    // Asks, then forgets the deck's progress.
    void resetDeck();

    // Re-reads the deck and direction ("cards:" links write them).
    void onEnter() override;
    void onSettings() override;
    void onTheme() override;

    // Milliseconds since the epoch; tests move it by hand.
    std::function<double()> now;
    // Asked before a reset; true resets.
    std::function<bool()> confirmReset;

    Screen screen() const { return shown; }
    const fl::Round& round() const { return current; }
    QComboBox* deckBox() const { return deckChoice; }
    QComboBox* directionBox() const { return directionChoice; }
    SheetView* boxesView() const { return boxes; }
    SheetView* cardView() const { return card; }
    QLabel* statusLabel() const { return status; }
    QPushButton* startButton() const { return startBtn; }
    QPushButton* anywayButton() const { return anywayBtn; }
    QPushButton* flipButton() const { return flipBtn; }
    QPushButton* skipButton() const { return skipBtn; }
    QPushButton* rateButton(int grade) const { return rateBtns[grade]; }
    QPushButton* nextRoundButton() const { return nextRoundBtn; }
    QPushButton* resetButton() const { return resetBtn; }

  private:
    void showCard();
    void showBoxes();
    // The next card's front, or the end of the round.
    void advance();
    void showScreen(Screen s);
    std::string deckKey() const;
    void chooseFromStore();
    void storeChoice();

    PageHost* host;
    fl::Round current;
    Screen shown = Screen::Start;

    QComboBox* deckChoice = nullptr;
    QComboBox* directionChoice = nullptr;
    QPushButton* resetBtn = nullptr;
    SheetView* boxes = nullptr;
    QLabel* status = nullptr;
    SheetView* card = nullptr;
    QPushButton* startBtn = nullptr;
    QPushButton* anywayBtn = nullptr;
    QPushButton* flipBtn = nullptr;
    QPushButton* skipBtn = nullptr;
    QPushButton* rateBtns[3] = {nullptr, nullptr, nullptr};
    QPushButton* nextRoundBtn = nullptr;
};

} // namespace app
