// The page "install": conductor colours, IP codes with a field that explains
// any code, installation symbols and PoE classes, one tab at a time. The
// tab and the code are kept in the store ("inst_tab", "inst_ip").
#pragma once

#include "app/widgets/page.h"

#include <QString>

#include <vector>

class QLineEdit;
class QPushButton;

namespace app {

class PageHost;
class SheetView;

// "cards:" + deck from the reference pages: the flashcards open on the
// installation deck, name first.
void openInstallCards(PageHost* host, const QString& deck);

class InstallPage : public Page {
    Q_OBJECT
  public:
    explicit InstallPage(PageHost* host, QWidget* parent = nullptr);

    void onEnter() override;
    void onSettings() override;
    void onTheme() override;

    void setTab(const QString& tab);
    const QString& tab() const { return current; }
    QLineEdit* ipField() const { return ip; }
    SheetView* view() const { return sheet; }

  private:
    void draw();
    void follow(const QString& href);

    PageHost* host;
    std::vector<std::pair<QString, QPushButton*>> tabs;
    QWidget* ipRow = nullptr;
    QLineEdit* ip = nullptr;
    SheetView* sheet = nullptr;
    QString current;
};

} // namespace app
