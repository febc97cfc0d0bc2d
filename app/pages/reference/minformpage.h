// The page "minform": the student pins formula families, writes a note to
// each, and prints the sheet as PDF. The list is kept in the store as
// "minform" (an array of {"key", "note"}) and the choices of what to show as
// "minform_opt" ({"forms", "legend"}).
#pragma once

#include "app/widgets/page.h"
#include "fl/glossary/minform.h"

#include <vector>

class QCheckBox;
class QLineEdit;
class QVBoxLayout;

namespace app {

class FlowLayout;
class PageHost;
class SheetView;

// The stored list, read leniently: entries that aren't objects with a known
// key are dropped.
std::vector<fl::MinformItem> loadMinform();
void saveMinform(const std::vector<fl::MinformItem>& items);

class MinformPage : public Page {
    Q_OBJECT
  public:
    explicit MinformPage(PageHost* host, QWidget* parent = nullptr);

    void onEnter() override;
    void onSettings() override;
    void onTheme() override;

    void pin(const std::string& key);
    void unpin(size_t index);
    void move(size_t index, int step);
    // Asks for a file and writes the sheet; false when nothing was written.
    bool exportPdf(const QString& path = QString());

    QLineEdit* searchBox() const { return search; }
    SheetView* preview() const { return sheet; }
    const std::vector<fl::MinformItem>& items() const { return pinned; }

  private:
    void rebuildCandidates();
    void rebuildList();
    void draw();
    void store();

    PageHost* host;
    std::vector<fl::MinformItem> pinned;
    QLineEdit* search = nullptr;
    QWidget* candidateBox = nullptr;
    FlowLayout* candidates = nullptr;
    QWidget* listBox = nullptr;
    QVBoxLayout* list = nullptr;
    QCheckBox* forms = nullptr;
    QCheckBox* legend = nullptr;
    SheetView* sheet = nullptr;
};

} // namespace app
