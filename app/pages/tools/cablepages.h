// The cable tools' pages: each declares its form and hands the form map to
// its function in fl/tools/cable.h.
#pragma once

#include "app/pages/tools/toolpage.h"

class QComboBox;

namespace app {

class CablePick;

// The smallest standard cross-section within the voltage-drop limit.
class KabelPage : public ToolPage {
    Q_OBJECT
  public:
    explicit KabelPage(PageHost* host, QWidget* parent = nullptr);
    fl::ToolOut compute(const fl::FormMap& form) const override;

    QComboBox* systemChoice() const { return system; }
    QComboBox* conductorChoice() const { return conductor; }

  private:
    // 230 V for one phase and 400 V for three, unless the student typed another.
    void systemChanged();

    QComboBox* system = nullptr;
    QComboBox* conductor = nullptr;
};

// The voltage drop of a chosen cable, one page per system.
class DropPage : public ToolPage {
    Q_OBJECT
  public:
    DropPage(bool threePhase, PageHost* host, QWidget* parent = nullptr);
    fl::ToolOut compute(const fl::FormMap& form) const override;
    void afterClear() override;

    CablePick* cable() const { return pick; }

  private:
    bool three;
    CablePick* pick = nullptr;
};

class IkmaxPage : public ToolPage {
    Q_OBJECT
  public:
    explicit IkmaxPage(PageHost* host, QWidget* parent = nullptr);
    fl::ToolOut compute(const fl::FormMap& form) const override;
    void afterClear() override;

    CablePick* cable() const { return pick; }

  private:
    CablePick* pick = nullptr;
};

class IkminPage : public ToolPage {
    Q_OBJECT
  public:
    explicit IkminPage(PageHost* host, QWidget* parent = nullptr);
    fl::ToolOut compute(const fl::FormMap& form) const override;
    void afterClear() override;

    CablePick* serviceCable() const { return service; }
    CablePick* groupCable() const { return group; }

  private:
    CablePick* service = nullptr;
    CablePick* group = nullptr;
};

} // namespace app
