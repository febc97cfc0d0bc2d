// Flashcards with five boxes: a card that is known comes back later and
// later, one that isn't goes back to box 1. Decks of formula families,
// quantities, glossary terms and installation facts; the state of every card
// ever rated; a round with its queue; the texts of the cards and the page.
// Core functions take the states and the time as arguments; the process-wide
// copy of the store's record is cardStates().
//
// Store "fc", an object by card key:
//   {"ohm": {"box": 2, "reps": 3, "good": 2, "due": 1741950000000}, …}
// `due` in milliseconds since the epoch. A member that isn't such an object
// is skipped, a count below 0 is clamped, and a box outside 1..5 is kept as
// it stands: the box counts take box 0 for new and leave any other out, and
// the next rating starts such a card in box 1. A damaged record costs at most
// that card's progress.
// Store "fc_opt": {"deck": "El-lære", "mode": "nf"}.
#pragma once

#include "store/json.h"

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace fl {

struct CardState {
    int32_t box = 1; // 1..5; anything else only from a damaged record
    int32_t reps = 0;
    int32_t good = 0;
    double due = 0; // ms since the epoch from which the card is ready; 0 for a new card
};

using CardStates = std::map<std::string, CardState>;

inline constexpr double kDayMs = 86'400'000.0;
// Days until a card of that box is ready again, by box 1..5.
double boxDays(int box);

// Card keys: a family's key, "gl:" + a glossary term, an installation fact's
// key ("inst:…"), or kSymbolCard + a quantity's symbol.
inline constexpr const char* kSymbolCard = "__SYM:";

struct Deck {
    std::string key;
    std::string label;
};
// "alle", the catalogue's groups, "gl", "inst", then the installation decks
// ("inst:farver", …) that the reference pages open.
const std::vector<Deck>& decks();
const Deck* findDeck(const std::string& key);
// The deck's cards in a fixed order; empty for an unknown deck.
std::vector<std::string> deckCards(const std::string& deck);

enum class Direction { NameToFormula, FormulaToName };
// "nf" and "fn"; anything else reads as "nf".
Direction directionFromKey(const std::string& key);
const char* directionKey(Direction d);

// Ready when it has no record or its time has come.
bool isDue(const CardStates& states, const std::string& key, double nowMs);
int countDue(const std::string& deck, const CardStates& states, double nowMs);

enum Grade { Wrong = 0, Almost = 1, Right = 2 };

struct Round {
    std::string deck;
    Direction direction = Direction::NameToFormula;
    std::vector<std::string> queue;
    size_t pos = 0;
    bool flipped = false;
    int wrong = 0, almost = 0, right = 0; // ratings given, by grade
    std::set<std::string> requeued;        // got their one "almost" repetition

    bool finished() const { return pos >= queue.size(); }
    const std::string& card() const { return queue.at(pos); }
};

// The ready cards of the deck, shuffled; every card with `all`.
Round startRound(const std::string& deck, Direction direction, const CardStates& states, double nowMs,
                 bool all = false);
// Rates the card at `pos` and moves on. ✓ moves it a box up, ~ keeps its box
// at half the interval and shows it once more 6 cards later, ✗ sends it to
// box 1 and shows it again 4 cards later. Returns the card's new state.
CardState rate(Round& round, CardStates& states, int grade, double nowMs);
// Moves on without a rating.
void skip(Round& round);

CardStates cardStatesFromJson(const Json& value);
Json cardStatesToJson(const CardStates& states);

// The process-wide states, read from the store on first use.
CardStates& cardStates();
// Writes them to the store.
void saveCardStates();
// Forgets the copy, so the next use reads the store again (a new start, an import).
void reloadCardStates();
// Removes the states of the deck's cards and saves.
void resetDeck(const std::string& deck);

// The texts of a card and of the page.
std::string cardFrontHtml(const std::string& key, Direction direction);
std::string cardBackHtml(const std::string& key, Direction direction);
// The row of box counts with the totals under it.
std::string boxesHtml(const std::string& deck, const CardStates& states, double nowMs);
std::string roundEndHtml(const Round& round);

} // namespace fl
