// The series RLC circuit on two pages: the calculator that works every
// quantity out with its steps, and the demonstration for the board, where
// sliders for R, L, C and f redraw the curves and phasors at every move.
// The numbers and pictures come from fl/tools/ac.h.
#pragma once

#include "app/pages/tools/toolpage.h"
#include "fl/tools/ac.h"

#include <array>

class QLabel;
class QPushButton;
class QSlider;

namespace app {

class FigureView;
class LiveText;

class AcPage : public ToolPage {
    Q_OBJECT
  public:
    explicit AcPage(PageHost* host, QWidget* parent = nullptr);
    fl::ToolOut compute(const fl::FormMap& form) const override;
};

class AcDemoPage : public Page {
    Q_OBJECT
  public:
    explicit AcDemoPage(PageHost* host, QWidget* parent = nullptr);

    enum Quantity { R, L, C, F };
    QSlider* slider(Quantity q) const { return sliders[q]; }
    FigureView* curves() const { return curveView; }
    FigureView* phasors() const { return phasorView; }
    FigureView* resonance() const { return resonanceView; }
    QLabel* readout() const;
    QPushButton* resonanceButton() const { return toResonance; }
    const fl::DemoSetting& setting() const { return now; }

    // Puts the sliders at a setting and redraws once.
    void show(const fl::DemoSetting& s);
    void onSettings() override;
    void onTheme() override;

  private:
    // One slider has moved: only its quantity changes, the others keep
    // their exact values.
    void moved(Quantity q);
    // Draws everything again from `now`.
    void redraw();

    PageHost* host = nullptr;
    std::array<QSlider*, 4> sliders{};
    std::array<LiveText*, 4> values{};
    LiveText* readoutText = nullptr;
    QPushButton* toResonance = nullptr;
    FigureView* curveView = nullptr;
    FigureView* phasorView = nullptr;
    FigureView* resonanceView = nullptr;
    fl::DemoSetting now;
    bool settling = false; // while show() moves all four sliders: one redraw at the end
};

} // namespace app
