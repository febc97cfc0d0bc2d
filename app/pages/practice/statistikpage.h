// The page "statistik": the practice records as one sheet (totals, the last
// 14 days, topics weakest first, the formulas most often missed, topics not
// tried, recent exams), written by fl::statsHtml each time the page is shown.
// Its own links: "ov:" + topic opens the exercises on that topic, and
// "act:streset" clears the records after asking.
#pragma once

#include "app/widgets/page.h"

#include <functional>
#include <string>

namespace app {

class PageHost;
class SheetView;

class StatistikPage : public Page {
    Q_OBJECT
  public:
    explicit StatistikPage(PageHost* host, QWidget* parent = nullptr);

    void onEnter() override;
    void onSettings() override;
    void onTheme() override;

    SheetView* view() const { return sheet; }

    // Asks before the records are cleared; a test answers in its place.
    std::function<bool()> confirmReset;

  private:
    void link(const QString& href);
    // What the sheet is drawn from: the records, the day and the open topics.
    static std::string recordsState();

    PageHost* host;
    SheetView* sheet = nullptr;
    std::string drawn; // the records and topics the sheet shows
};

} // namespace app
