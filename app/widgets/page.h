// The base of every screen: a scroll area holding one centred column of at
// most 1,080 pixels, into which cards are stacked, with smooth wheel
// scrolling. Card is the framed block inside it that carries titles, text,
// value fields and button rows. What a page shows is its subclass's business.
#pragma once

#include <QFrame>
#include <QScrollArea>

#include <map>
#include <string>
#include <vector>

class QGridLayout;
class QHBoxLayout;
class QLabel;
class QPropertyAnimation;
class QPushButton;
class QVBoxLayout;

namespace app {

class Card;
class ValueField;

class Page : public QScrollArea {
    Q_OBJECT
public:
    explicit Page(QWidget* parent = nullptr);

    // Both insert before the final stretch, so that content stays on top.
    Card* addCard();
    void addWidget(QWidget* widget);

    // Animates the vertical bar to y, clamped to its range.
    void scrollToWidget(int y);
    // Jumps to the top at once, dropping any scroll still under way.
    void scrollToTop();

    QWidget* column() const { return inner; }

    virtual void onEnter() {}
    virtual void onSettings() {}
    virtual void onTheme() {}

protected:
    void wheelEvent(QWheelEvent* event) override;

    QWidget* inner = nullptr;
    QVBoxLayout* layout = nullptr;
    QPropertyAnimation* scrollAnim = nullptr;
    int scrollTarget = -1;

private:
    QPropertyAnimation* animation();
};

class Card : public QFrame {
    Q_OBJECT
public:
    explicit Card(QWidget* parent = nullptr);

    QLabel* addTitle(const QString& text);
    QLabel* addSubtitle(const QString& text);
    // Rich, word-wrapped text; links are left to the caller's linkActivated.
    QLabel* addLabel(const QString& text, const QString& cls = QString());
    ValueField* addField(const QString& key, const QString& label, const QString& unit,
                         const QString& def = QString(), const QString& desc = QString());
    // A grid row of a label and a box for free widgets (`widget` may be null).
    // The box ends in a stretch: insert further widgets before it.
    QHBoxLayout* addRow(const QString& label, QWidget* widget = nullptr);
    QHBoxLayout* addButtonRow();
    QPushButton* addButton(QHBoxLayout* row, const QString& text, const QString& cls = QString());

    // Each field's key with its text, in UTF-8.
    std::map<std::string, std::string> values() const;
    // The fields' grid, made on first use; free rows (headings) go into it.
    QGridLayout* grid();

    QVBoxLayout* layout = nullptr;
    QWidget* fieldArea = nullptr;
    QGridLayout* fieldGrid = nullptr;
    std::vector<ValueField*> fields;
};

}  // namespace app
