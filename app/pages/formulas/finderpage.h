// The formula finder (mode 0, route "finder") and the list of calculators
// (mode 1, "udregnere"): a row of path buttons above one sheet that shows the
// subject at that path. "fm:" links walk the tree; the path is stored per
// mode and restored on entering. The markup is fl::finderMarkup.
#pragma once

#include "app/widgets/page.h"
#include "fl/expr/markup.h"

#include <string>
#include <vector>

class QHBoxLayout;
class QPushButton;

namespace app {

class PageHost;
class SheetView;

class FinderPage : public Page {
    Q_OBJECT
  public:
    FinderPage(int mode, PageHost* host, QWidget* parent = nullptr);

    // Shows the subject at `path` and stores it.
    void setPath(const std::string& path);
    const std::string& path() const { return current; }
    void draw();
    // Where a link in the sheet goes: "fm:" inside the finder, the rest to the window.
    void follow(const QString& href);

    void onEnter() override;
    void onSettings() override;
    void onTheme() override;

    SheetView* view() const { return sheet; }
    // The path row's buttons, left to right.
    const std::vector<QPushButton*>& pathButtons() const { return buttons; }

  private:
    std::string storeKey() const;
    // What the view depends on besides the theme and the settings.
    std::string viewState(const std::string& path) const;
    void rebuildPathRow();

    int mode;
    PageHost* host;
    std::string current;
    std::string drawnFor; // viewState() of what is drawn
    QWidget* pathRow = nullptr;
    QHBoxLayout* pathLayout = nullptr;
    std::vector<QPushButton*> buttons;
    SheetView* sheet = nullptr;
};

} // namespace app
