// The resistor colour code, both ways: rings chosen by colour (drawn on a
// resistor as they are picked) to a value, or a wanted value to the nearest
// standard value and its rings. The computing is in fl/tools/resistors.h.
#pragma once

#include "app/pages/tools/toolpage.h"

#include <vector>

class QComboBox;
class QHBoxLayout;

namespace app {

class SvgView;

class FarvePage : public ToolPage {
    Q_OBJECT
  public:
    explicit FarvePage(PageHost* host, QWidget* parent = nullptr);
    fl::ToolOut compute(const fl::FormMap& form) const override;
    // The resistor of the rings as they stand, without computing.
    void live() override;
    void onTheme() override;

    QComboBox* directionChoice() const { return direction; }
    QComboBox* countChoice() const { return count; }
    QComboBox* seriesChoice() const { return series; }
    QComboBox* ringChoice(int place) const { return rings.at(static_cast<size_t>(place - 1)); }
    SvgView* preview() const { return picture; }

  private:
    // Shows the rings or the value field.
    void directionChanged();
    // Each ring offers the colours its place allows, starting from a typical resistor.
    void countChanged();
    int ringCount() const;

    QComboBox* direction = nullptr;
    QComboBox* count = nullptr;
    QComboBox* series = nullptr;
    std::vector<QComboBox*> rings;
    QHBoxLayout* ringRow = nullptr;
    QWidget* ringLabel = nullptr; // the empty label cell of the rings' row
    SvgView* picture = nullptr;
};

} // namespace app
