// The small tools' pages: energy and price, the unit converter, resistors in
// series and parallel, the right-angled triangle and vectors. Each declares
// its form and hands the form map to its function in fl/tools/small.h or
// fl/tools/resistors.h.
#pragma once

#include "app/pages/tools/toolpage.h"

class QComboBox;

namespace app {

class Card;

// Shows or hides a choice of a tool form together with the label cell of its
// row, so that a hidden choice takes no room.
void showChoice(Card* form, QComboBox* combo, bool on);

class EnergiPage : public ToolPage {
    Q_OBJECT
  public:
    explicit EnergiPage(PageHost* host, QWidget* parent = nullptr);
    fl::ToolOut compute(const fl::FormMap& form) const override;
};

class EnhederPage : public ToolPage {
    Q_OBJECT
  public:
    explicit EnhederPage(PageHost* host, QWidget* parent = nullptr);
    fl::ToolOut compute(const fl::FormMap& form) const override;

    QComboBox* kindChoice() const { return kind; }
    QComboBox* fromChoice() const { return from; }
    QComboBox* unitChoice() const { return unit; }

  private:
    // The units of the chosen kind; the prefixes' unit only where it applies.
    void kindChanged();

    QComboBox* kind = nullptr;
    QComboBox* from = nullptr;
    QComboBox* unit = nullptr;
};

class ResPage : public ToolPage {
    Q_OBJECT
  public:
    explicit ResPage(PageHost* host, QWidget* parent = nullptr);
    fl::ToolOut compute(const fl::FormMap& form) const override;
    void onSettings() override;
    void onTheme() override;

  private:
    // The list field says how many values it read, not "kan ikke læses".
    void interpretList();
};

class TriPage : public ToolPage {
    Q_OBJECT
  public:
    explicit TriPage(PageHost* host, QWidget* parent = nullptr);
    fl::ToolOut compute(const fl::FormMap& form) const override;
};

class VecPage : public ToolPage {
    Q_OBJECT
  public:
    explicit VecPage(PageHost* host, QWidget* parent = nullptr);
    fl::ToolOut compute(const fl::FormMap& form) const override;

    QComboBox* formChoice() const { return shape; }

  private:
    // Shows the fields of the chosen form.
    void formChanged();

    QComboBox* shape = nullptr;
};

} // namespace app
