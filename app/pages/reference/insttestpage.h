// The page "insttest": the eight tests of verification in four tabs – what
// and why, how, the limits with their sources, and a calculator for the
// limits that depend on the circuit. The tab is kept in "insttest_tab"; "it:"
// links open "hvad", "tab:" links switch, "#t-" links scroll to a test.
#pragma once

#include "app/widgets/page.h"

#include <QString>

#include <vector>

class QComboBox;
class QPushButton;

namespace app {

class PageHost;
class SheetView;

class InstTestPage : public Page {
    Q_OBJECT
  public:
    explicit InstTestPage(PageHost* host, QWidget* parent = nullptr);

    void onEnter() override;
    void onSettings() override;
    void onTheme() override;

    void setTab(const QString& tab);
    // Recomputes the calculator from its fields.
    void compute();
    const QString& tab() const { return current; }
    SheetView* view() const { return sheet; }
    SheetView* resultView() const { return result; }
    Card* calculatorCard() const { return calcCard; }
    QComboBox* characteristicBox() const { return characteristic; }

  private:
    void draw();
    void follow(const QString& href);
    void scrollToAnchor(const QString& name);

    PageHost* host;
    std::vector<std::pair<QString, QPushButton*>> tabs;
    SheetView* sheet = nullptr;
    Card* calcCard = nullptr;
    QComboBox* characteristic = nullptr;
    SheetView* result = nullptr;
    QString current;
};

} // namespace app
