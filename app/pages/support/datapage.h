// "Gem og hent mine data": all of the student's data as one file to carry to
// another computer, and the file read back in place of what is here; beside
// it the consent to the anonymous reports. The store does the reading and
// writing; this page asks, tells and restarts.
#pragma once

#include "app/widgets/page.h"

#include <QDate>
#include <QString>

#include <functional>
#include <string>

class QCheckBox;
class QLabel;
class QPushButton;

namespace app {

class PageHost;

// A real data file is well under a megabyte; anything this large is not one,
// and is not read whole into memory to find out.
inline constexpr qint64 kMaxBundleBytes = 32 * 1024 * 1024;

// "<documents>/Ostrovalden data yyyy-MM-dd.json".
QString exportFileName(const QString& documents, const QDate& today);

// A file read and checked as a data bundle: its text, "saved" in Danish form
// and the number of entries; or the Danish reason it can't be used.
struct BundleFile {
    bool ok = false;
    QString error;
    std::string text;
    std::string date;
    int count = 0;
};
BundleFile readBundleFile(const QString& path);

class DataPage : public Page {
    Q_OBJECT
  public:
    explicit DataPage(PageHost* host, QWidget* parent = nullptr);
    void onEnter() override;

    // The two flows, as the buttons run them.
    void exportData();
    void importData();

    // What the flows ask and tell through dialogs; tests replace them. An
    // empty name is a cancel.
    std::function<QString(const QString& proposed)> askSaveName;
    std::function<QString(const QString& folder)> askOpenName;
    std::function<bool(const QString& question)> confirm;
    std::function<void(const QString& text)> inform;
    std::function<void()> restart;

    QPushButton* exportButton = nullptr;
    QPushButton* importButton = nullptr;
    QLabel* status = nullptr;
    QCheckBox* consent = nullptr;

  private:
    void showStatus(const QString& html, bool bad);
    PageHost* host;
};

} // namespace app
