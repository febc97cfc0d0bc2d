// The page "ordliste": the glossary with a search box that answers on every
// keystroke, a chip per section, and the entries as cards. "gl:" links arrive
// through the store key "ordliste_q"; "gls:" links open one entry.
#pragma once

#include "app/widgets/page.h"

#include <QString>

#include <vector>

class QHBoxLayout;
class QLineEdit;
class QPushButton;

namespace app {

class PageHost;
class SheetView;

class OrdlistePage : public Page {
    Q_OBJECT
  public:
    explicit OrdlistePage(PageHost* host, QWidget* parent = nullptr);

    void onEnter() override;
    void onSettings() override;
    void onTheme() override;

    // Shows one entry, as a "gls:" link does.
    void openEntry(const QString& key);
    void setSection(const QString& section);

    QLineEdit* searchBox() const { return search; }
    SheetView* view() const { return sheet; }
    const QString& section() const { return current; }
    const std::vector<QPushButton*>& sectionButtons() const { return buttons; }

  private:
    void draw();
    void follow(const QString& href);
    void rebuildSections();

    PageHost* host;
    QLineEdit* search = nullptr;
    QWidget* sectionRow = nullptr;
    QHBoxLayout* sectionLayout = nullptr;
    std::vector<QPushButton*> buttons;
    SheetView* sheet = nullptr;
    QString current;
    QString entry; // the key of the entry shown alone; empty for the list
};

} // namespace app
