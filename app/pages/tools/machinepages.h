// The machine tools' pages: compensation, motor, transformer and
// three-phase load. Each declares its form, hands the form map to its
// function in fl/tools/machines.h, and (motor, transformer, three-phase)
// redraws a live figure from the typed values on every change, computing
// nothing.
#pragma once

#include "app/pages/tools/toolpage.h"

#include <string>

class QComboBox;

namespace app {

class FigureView;

class KompPage : public ToolPage {
    Q_OBJECT
  public:
    explicit KompPage(PageHost* host, QWidget* parent = nullptr);
    fl::ToolOut compute(const fl::FormMap& form) const override;

    QComboBox* netChoice() const { return net; }

  private:
    // 230 V for one phase and 400 V for three, unless the student typed another.
    void netChanged();

    QComboBox* net = nullptr;
};

class MotorPage : public ToolPage {
    Q_OBJECT
  public:
    explicit MotorPage(PageHost* host, QWidget* parent = nullptr);
    fl::ToolOut compute(const fl::FormMap& form) const override;
    // U_N and f back to the net's values.
    void afterClear() override;
    // "Eksempel": a plate from the book, then Beregn.
    void thirdAction() override;
    void live() override;

    QComboBox* phaseChoice() const { return phases; }
    QComboBox* startChoice() const { return start; }
    FigureView* figure() const { return fig; }

  private:
    bool threePhase() const;
    bool starDelta() const;
    void phaseChanged();
    void remember();

    QComboBox* phases = nullptr;
    QComboBox* start = nullptr;
    FigureView* fig = nullptr;
};

class TrafoPage : public ToolPage {
    Q_OBJECT
  public:
    explicit TrafoPage(PageHost* host, QWidget* parent = nullptr);
    fl::ToolOut compute(const fl::FormMap& form) const override;
    // The remembered values go with the form.
    void afterClear() override;
    void live() override;

    FigureView* figure() const { return fig; }

  private:
    void remember();

    FigureView* fig = nullptr;
};

class TrefasePage : public ToolPage {
    Q_OBJECT
  public:
    explicit TrefasePage(PageHost* host, QWidget* parent = nullptr);
    fl::ToolOut compute(const fl::FormMap& form) const override;
    void live() override;

    QComboBox* connectionChoice() const { return connection; }
    FigureView* figure() const { return fig; }

  private:
    bool star() const;

    QComboBox* connection = nullptr;
    FigureView* fig = nullptr;
};

} // namespace app
