// The only top-level window: header, sidebar with search, notice bar, the
// stack of pages, the results strip and the status bar. navigate() is the one
// way to a page; links from any result end in openLink() and navigate().
// Pages are made by the factory in routes.cpp and kept for the whole run;
// they see the window only as the PageHost it implements.
#pragma once

#include "app/shell/pagehost.h"

#include <QDateTime>
#include <QLineEdit>
#include <QMainWindow>
#include <QPointer>

#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

class QComboBox;
class QCheckBox;
class QFrame;
class QLabel;
class QPushButton;
class QStackedWidget;
class QTimer;
class QTreeWidget;
class QTreeWidgetItem;
class QWidget;

namespace app {

class FlowLayout;
class Page;
class SettingsPanel;

struct ResultRecord {
    QString name;  // may hold <sub> markup
    double value = 0;
    QString unit;
};

class MainWindow : public QMainWindow, public PageHost {
    Q_OBJECT
public:
    explicit MainWindow(QWidget* parent = nullptr);
    ~MainWindow() override;

    void navigate(const QString& route) override;
    void openLink(const QString& href) override;
    void addResult(const QString& name, double value, const QString& unit) override;
    void showNotice(const QString& html, const QString& id) override;
    QString previousRoute() const override { return previous; }
    bool stepMode() const override;
    HostSignals* hostSignals() override { return hub; }
    // After a change of the teacher's profile: drops the pages and moves off
    // what is now closed (or back to what was reopened).
    void applyProfile();
    // Starts the class service's job on "↻  Opdatér".
    // The button stays disabled and reads "Henter…" until refreshFinished().
    void setRefresh(std::function<void()> refresh);
    void refreshFinished();
    void setAboutHandler(std::function<void()> about);
    QPushButton* refreshButton() const { return refreshBtn; }

    const QString& currentRoute() const { return current; }
    Page* page(const QString& route) const;
    Page* currentPage() const;
    QLineEdit* lastUsedField() const { return lastField; }
    const std::vector<ResultRecord>& resultRecords() const { return results; }
    const std::map<QString, bool>& sectionsOpen() const { return sectionOpen; }
    QTreeWidget* sidebar() const { return tree; }
    QLineEdit* searchBox() const { return search; }
    QWidget* resultStrip() const { return strip; }
    QFrame* noticeBar() const { return notice; }
    QLabel* noticeLabel() const { return noticeText; }
    QLabel* statusText() const { return status; }
    QLabel* savedMark() const { return saved; }
    SettingsPanel* settingsPanel() const { return panel; }

    void rebuildSidebar();
    // To `previous`, the page shown before this one (Alt+←, the mouse's back button).
    void goBack();
    void rebuildResults();
    QPushButton* resultButton(const ResultRecord& record);
    void fitStrip();
    void dropStripItem(int index);
    void updateStatus();
    // Goes where Enter in the search box goes.
    void openFirstHit();
    // The settings panel under the gear.
    void showSettings();
    // Shows "✓ gemt HH:mm" when "data.json" has changed since the last look,
    // and a warning in its place while saves fail; a timer calls it every two
    // seconds.
    void checkSaved();

signals:
    void navigated(const QString& id);

protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget* buildHeader();
    QWidget* buildSidebar();
    QWidget* buildNotice();
    QWidget* buildResults();
    QWidget* buildStatus();
    void sidebarClicked(QTreeWidgetItem* item);
    // "go:", "gl:" and "it:", with their scheme still on.
    void openOwnLink(const QString& href);
    void systemSchemeChanged();
    // The few frames the application stylesheet doesn't reach, and the
    // sidebar's width for the text size.
    void styleFrames();
    void styleSavedMark();

    HostSignals* hub = nullptr;
    std::map<QString, Page*> pages;
    QString current;
    QString previous;
    std::map<QString, bool> sectionOpen;
    QPointer<QLineEdit> lastField;
    std::vector<ResultRecord> results;
    QString noticeId;
    std::function<void()> refresh;
    std::function<void()> about;
    std::set<std::string> shownOff;
    std::string shownProfile;
    QDateTime lastSaved;
    bool saveFailingShown = false;

    QStackedWidget* stack = nullptr;
    QWidget* sideWidget = nullptr;
    QTreeWidget* tree = nullptr;
    QLineEdit* search = nullptr;
    QFrame* notice = nullptr;
    QLabel* noticeText = nullptr;
    QWidget* strip = nullptr;
    FlowLayout* stripLayout = nullptr;
    QLabel* status = nullptr;
    QLabel* saved = nullptr;
    QLabel* tag = nullptr;
    QPushButton* refreshBtn = nullptr;
    QPushButton* gear = nullptr;
    SettingsPanel* panel = nullptr;
    QTimer* saveWatch = nullptr;
    QTimer* savedHide = nullptr;
    bool paintReported = false;
};

}  // namespace app
