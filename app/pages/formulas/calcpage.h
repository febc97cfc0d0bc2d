// The page "calc": the pocket calculator in its large form, whose finished
// lines go into the window's results strip.
#pragma once

#include "app/widgets/page.h"

namespace app {

class CalcPanel;
class PageHost;

class CalcPage : public Page {
    Q_OBJECT
  public:
    explicit CalcPage(PageHost* host, QWidget* parent = nullptr);

    void onEnter() override;
    void onSettings() override;
    void onTheme() override;

    CalcPanel* panel() const { return calc; }

  private:
    PageHost* host;
    CalcPanel* calc = nullptr;
};

} // namespace app
