// The sidebar of the main window: sections from the constant list, the
// search filter over names and search words, and the search box's keys.
#include "app/shell/locks.h"
#include "app/shell/mainwindow.h"
#include "app/shell/theme.h"
#include "fl/formulas/lists.h"
#include "fl/formulas/routes.h"
#include "store/datastore.h"
#include "store/keys.h"

#include <QApplication>
#include <QHeaderView>
#include <QLineEdit>
#include <QRegularExpression>
#include <QScrollBar>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>
#include <QVBoxLayout>

namespace app {

namespace {

constexpr int RouteRole = Qt::UserRole;

// The circuit sections already say which current; their entries needn't.
QString withoutCurrentSuffix(QString name) {
    for (const char* suffix : {" – jævnstrøm", ", jævnstrøm", " – vekselstrøm", ", vekselstrøm"}) {
        const QString s = QString::fromUtf8(suffix);
        if (name.endsWith(s)) return name.left(name.size() - s.size());
    }
    return name;
}

QString plain(const std::string& html) {
    static const QRegularExpression tags(QStringLiteral("<[^>]+>"));
    return QString::fromStdString(html).remove(tags);
}

}  // namespace

QWidget* MainWindow::buildSidebar() {
    sideWidget = new QWidget;
    sideWidget->setObjectName("sidebar");
    sideWidget->setAttribute(Qt::WA_StyledBackground);
    sideWidget->setFixedWidth(qRound(280 * textScale()));
    auto* column = new QVBoxLayout(sideWidget);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);

    search = new QLineEdit;
    search->setPlaceholderText(QStringLiteral("Søg i formler…  (Ctrl+F)"));
    search->setToolTip(QStringLiteral("Søg i formler og værktøjer (Ctrl+F). Enter åbner første hit."));
    auto* searchBox = new QVBoxLayout;
    searchBox->setContentsMargins(12, 12, 12, 8);
    searchBox->addWidget(search);
    column->addLayout(searchBox);

    tree = new QTreeWidget;
    tree->setColumnCount(2);
    tree->setHeaderHidden(true);
    tree->setIndentation(4);
    tree->setRootIsDecorated(false);
    tree->setExpandsOnDoubleClick(false);
    tree->setUniformRowHeights(false);
    tree->setFocusPolicy(Qt::StrongFocus);
    tree->header()->setStretchLastSection(false);
    tree->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    tree->header()->setSectionResizeMode(1, QHeaderView::Fixed);
    tree->header()->resizeSection(1, 22);
    tree->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    column->addWidget(tree, 1);

    connect(search, &QLineEdit::textChanged, this, &MainWindow::rebuildSidebar);
    connect(search, &QLineEdit::returnPressed, this, &MainWindow::openFirstHit);
    connect(tree, &QTreeWidget::itemClicked, this, [this](QTreeWidgetItem* item) { sidebarClicked(item); });
    connect(tree, &QTreeWidget::itemActivated, this, [this](QTreeWidgetItem* item) {
        // A double click has already been taken as a click.
        if (QApplication::mouseButtons() == Qt::NoButton) sidebarClicked(item);
    });
    return sideWidget;
}

void MainWindow::rebuildSidebar() {
    if (!tree) return;
    const QString filter = search->text().trimmed().toLower();
    const ThemeColors& c = colors();
    const QBrush muted(qcolor(c.muted));
    const QSignalBlocker block(tree);
    // Refilling the tree scrolls it to the top; a chosen entry far down stays in view.
    const int scrolled = tree->verticalScrollBar()->value();
    QTreeWidgetItem* chosen = nullptr;
    tree->clear();

    auto* home = new QTreeWidgetItem(tree, {QStringLiteral("⌂ Forside")});
    home->setData(0, RouteRole, QString::fromLatin1(fl::route::Home));
    home->setFont(0, uiFont(10.5, QFont::Bold));
    home->setFirstColumnSpanned(true);
    home->setSelected(current == QLatin1String(fl::route::Home));

    QFont sectionFont = uiFont(8.5, QFont::Bold);
    sectionFont.setLetterSpacing(QFont::AbsoluteSpacing, 0.8);
    const QFont arrowFont = uiFont(10.5);

    for (const fl::Section& section : fl::sections()) {
        const QString id = QString::fromStdString(section.id);
        const bool circuit = id == QLatin1String("n_dc") || id == QLatin1String("n_ac");
        struct Entry {
            QString route, name;
        };
        std::vector<Entry> entries;
        bool holdsCurrent = false;
        for (const std::string& route : section.routes) {
            const fl::Tile* tile = fl::findTile(route);
            if (!tile || !isOpen(route)) continue;
            const QString name = QString::fromStdString(tile->name);
            if (!filter.isEmpty() &&
                !(name + QLatin1Char(' ') + QString::fromStdString(tile->search)).toLower().contains(filter))
                continue;
            const QString r = QString::fromStdString(route);
            holdsCurrent = holdsCurrent || r == current;
            const QString shown = plain(tile->name);
            entries.push_back({r, circuit ? withoutCurrentSuffix(shown) : shown});
        }
        if (entries.empty()) continue;
        if (holdsCurrent) sectionOpen[id] = true;
        const bool open = filter.isEmpty() ? sectionOpen[id] : true;

        auto* head = new QTreeWidgetItem(tree);
        head->setText(0, QString::fromStdString(section.title).toUpper());
        head->setText(1, open ? QStringLiteral("▾") : QStringLiteral("▸"));
        head->setData(0, RouteRole, QStringLiteral("sec:") + id);
        head->setFont(0, sectionFont);
        head->setFont(1, arrowFont);
        head->setForeground(0, muted);
        head->setForeground(1, muted);
        head->setTextAlignment(1, Qt::AlignRight | Qt::AlignVCenter);
        head->setSizeHint(0, QSize(0, 32));
        head->setFlags(Qt::ItemIsEnabled);

        for (const Entry& entry : entries) {
            auto* item = new QTreeWidgetItem(head, {entry.name});
            // No font of its own: the stylesheet sets the size and bolds the selected one.
            item->setData(0, RouteRole, entry.route);
            item->setFirstColumnSpanned(true);
            item->setSelected(entry.route == current);
            if (entry.route == current) chosen = item;
        }
        head->setExpanded(open);
    }
    tree->doItemsLayout();
    tree->verticalScrollBar()->setValue(scrolled);
    if (chosen) tree->scrollToItem(chosen, QAbstractItemView::EnsureVisible);
}

void MainWindow::sidebarClicked(QTreeWidgetItem* item) {
    if (!item) return;
    const QString data = item->data(0, RouteRole).toString();
    if (data.startsWith(QLatin1String("sec:"))) {
        const bool open = !item->isExpanded();
        sectionOpen[data.mid(4)] = open;
        item->setExpanded(open);
        item->setText(1, open ? QStringLiteral("▾") : QStringLiteral("▸"));
        Json nav = Json::object();
        for (const auto& [id, isOpen] : sectionOpen) nav[id.toStdString()] = Json(isOpen);
        storeSet(key::NavOpen, nav);
        return;
    }
    // Later: navigating rebuilds the tree, which must not happen inside its own signal.
    if (!data.isEmpty()) QMetaObject::invokeMethod(this, [this, data] { navigate(data); }, Qt::QueuedConnection);
}

void MainWindow::openFirstHit() {
    const bool filtered = !search->text().trimmed().isEmpty();
    for (QTreeWidgetItemIterator it(tree); *it; ++it) {
        const QTreeWidgetItem* item = *it;
        const QString data = item->data(0, RouteRole).toString();
        if (data.isEmpty() || data.startsWith(QLatin1String("sec:")) || item->isHidden() ||
            !(item->flags() & Qt::ItemIsSelectable))
            continue;
        if (filtered && data == QLatin1String(fl::route::Home)) continue;
        navigate(data);
        return;
    }
    navigate(QLatin1String(fl::route::Home));
}

}  // namespace app
