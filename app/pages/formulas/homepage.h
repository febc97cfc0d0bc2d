// The home page: one sheet of tiles and chips, written again each time the
// page is entered, so that "recently used" and what the teacher has switched
// off are always fresh. The markup is fl::homeMarkup; links go to the window.
#pragma once

#include "app/widgets/page.h"
#include "fl/expr/markup.h"
#include "fl/formulas/home.h"

namespace app {

class PageHost;
class SheetView;

// The tile colours of the present theme.
fl::TileLook tileLook();
// Routes and families the teacher hasn't switched off.
fl::OpenRoute openRoutes();
// The document rule that lets a sheet of tiles stand on the page's background.
QString tilePageCss();

class HomePage : public Page {
    Q_OBJECT
  public:
    explicit HomePage(PageHost* host, QWidget* parent = nullptr);

    // The view's provider: the markup for what is stored and open now.
    static fl::RenderResult render();

    void onEnter() override;
    void onSettings() override;
    void onTheme() override;

    SheetView* view() const { return sheet; }

  private:
    PageHost* host;
    SheetView* sheet = nullptr;
};

} // namespace app
