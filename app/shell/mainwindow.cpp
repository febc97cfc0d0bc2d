#include "app/shell/mainwindow.h"

#include "app/shell/locks.h"
#include "app/shell/options.h"
#include "app/shell/routes.h"
#include "app/shell/settingspanel.h"
#include "app/shell/startup.h"
#include "app/shell/theme.h"
#include "app/shell/visits.h"
#include "app/widgets/flowlayout.h"
#include "app/widgets/helpers.h"
#include "app/widgets/page.h"
#include "fl/expr/markup.h"
#include "fl/expr/numbers.h"
#include "fl/formulas/lists.h"
#include "fl/formulas/routes.h"
#include "store/datastore.h"
#include "store/keys.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QDesktopServices>
#include <QEasingCurve>
#include <QFileInfo>
#include <QGraphicsOpacityEffect>
#include <QHBoxLayout>
#include <QIcon>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPropertyAnimation>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QShortcut>
#include <QStackedWidget>
#include <QStyleHints>
#include <QTimer>
#include <QTreeWidget>
#include <QUrl>
#include <QVBoxLayout>
#include <QWindow>

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace app {

MainWindow::MainWindow(QWidget* parent) : QMainWindow(parent), hub(new HostSignals(this)) {
    setWindowTitle(QApplication::applicationName());
    setWindowIcon(QIcon(QStringLiteral(":/ostrovalden-skole.ico")));

    sectionOpen = {{"n_tools", true}, {"n_ov", true}, {"n_help", true}};
    const Json nav = storeGet(key::NavOpen);
    for (const auto& [id, open] : nav.asObject())
        sectionOpen[QString::fromStdString(id)] = open.asBool(false);
    shownOff = options().off;
    shownProfile = options().profile;

    auto* central = new QWidget;
    central->setObjectName("central");
    auto* outer = new QVBoxLayout(central);
    outer->setContentsMargins(0, 0, 0, 0);
    outer->setSpacing(0);
    outer->addWidget(buildHeader());

    auto* body = new QHBoxLayout;
    body->setContentsMargins(0, 0, 0, 0);
    body->setSpacing(0);
    body->addWidget(buildSidebar());
    auto* right = new QVBoxLayout;
    right->setContentsMargins(0, 0, 0, 0);
    right->setSpacing(0);
    right->addWidget(buildNotice());
    stack = new QStackedWidget;
    right->addWidget(stack, 1);
    right->addWidget(buildResults());
    body->addLayout(right, 1);
    outer->addLayout(body, 1);
    outer->addWidget(buildStatus());
    setCentralWidget(central);

    panel = new SettingsPanel(this, this);
    panel->hide();
    connect(panel, &SettingsPanel::classCodeChanged, this, [this] {
        if (refresh && refreshBtn->isEnabled()) refreshBtn->click();
    });
    styleFrames();

    // Alt+← and the mouse's back button go to the page shown before this one.
    auto* back = new QShortcut(QKeySequence::Back, this);
    connect(back, &QShortcut::activated, this, &MainWindow::goBack);
    auto* find = new QShortcut(QKeySequence::Find, this);
    connect(find, &QShortcut::activated, this, [this] {
        search->setFocus(Qt::ShortcutFocusReason);
        search->selectAll();
    });
    // Made before any page, so the window's own frames are up to date when
    // the pages hear the same signal.
    connect(hub, &HostSignals::settingsChanged, this, &MainWindow::updateStatus);
    // The strip's buttons show their values in the number format.
    connect(hub, &HostSignals::settingsChanged, this, &MainWindow::rebuildResults);
    connect(hub, &HostSignals::stepModeChanged, this, &MainWindow::updateStatus);
    connect(hub, &HostSignals::themeChanged, this, &MainWindow::styleFrames);
    // The sidebar's rows have the muted colour and the scaled sizes baked in.
    connect(hub, &HostSignals::themeChanged, this, &MainWindow::rebuildSidebar);
#if QT_VERSION >= QT_VERSION_CHECK(6, 5, 0)
    connect(QGuiApplication::styleHints(), &QStyleHints::colorSchemeChanged, this,
            &MainWindow::systemSchemeChanged);
#endif
    qApp->installEventFilter(this);

    const QByteArray geometry =
        QByteArray::fromBase64(QByteArray::fromStdString(storeGetString(key::WinGeom)));
    if (geometry.isEmpty() || !restoreGeometry(geometry)) {
        QSize size(1280, 800);
        if (const QScreen* screen = QGuiApplication::primaryScreen())
            size = size.boundedTo(screen->availableGeometry().size());
        resize(size);
    }

    updateStatus();
    rebuildResults();
    saveWatch = new QTimer(this);
    saveWatch->setInterval(2000);
    connect(saveWatch, &QTimer::timeout, this, &MainWindow::checkSaved);
    savedHide = new QTimer(this);
    savedHide->setSingleShot(true);
    savedHide->setInterval(4000);
    connect(savedHide, &QTimer::timeout, saved, &QLabel::hide);
    checkSaved();
    saveWatch->start();

    navigate(QLatin1String(fl::route::Home));
    // Once, at the start that moved the file aside: the next start reads the new file.
    if (const QString damaged = damagedDataNotice(); !damaged.isEmpty()) showNotice(damaged, QString());
}

MainWindow::~MainWindow() {
    if (qApp) qApp->removeEventFilter(this);
}

QWidget* MainWindow::buildHeader() {
    auto* header = new QFrame;
    header->setObjectName("header");
    auto* row = new QHBoxLayout(header);
    row->setContentsMargins(16, 8, 12, 8);
    row->setSpacing(10);

    auto* logo = new QLabel;
    QPixmap pixmap(QStringLiteral(":/logo-skole.png"));
    const qreal ratio = devicePixelRatioF();
    pixmap = pixmap.scaled(QSize(36, 36) * ratio, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    pixmap.setDevicePixelRatio(ratio);
    logo->setPixmap(pixmap);
    row->addWidget(logo);

    auto* names = new QVBoxLayout;
    names->setSpacing(0);
    auto* brand = new QLabel(QStringLiteral("Ostrovalden Skole"));
    brand->setObjectName("brand");
    auto* mark = new QLabel(QStringLiteral("Formler, kredsløb og øvelser til elektrikeruddannelsen · version 1.0.30"));
    mark->setObjectName("mark");
    names->addWidget(brand);
    names->addWidget(mark);
    row->addLayout(names);

    tag = new QLabel(QStringLiteral("Skoleudgave"));
    tag->setObjectName("tag");
    row->addWidget(tag, 0, Qt::AlignVCenter);
    row->addStretch(1);

    refreshBtn = makeButton(QStringLiteral("↻  Opdatér"));
    refreshBtn->setToolTip(QStringLiteral("Hent lærerens indstillinger, opgaver og beskeder"));
    refreshBtn->setEnabled(false);
    connect(refreshBtn, &QPushButton::clicked, this, [this] {
        if (!refresh) return;
        refreshBtn->setEnabled(false);
        refreshBtn->setText(QStringLiteral("Henter…"));
        refresh();
    });
    row->addWidget(refreshBtn);

    gear = makeButton(QStringLiteral("⚙"));
    gear->setObjectName("gear");
    gear->setFixedSize(36, 32);
    gear->setToolTip(QStringLiteral("Indstillinger"));
    connect(gear, &QPushButton::clicked, this, &MainWindow::showSettings);
    row->addWidget(gear);

    auto* aboutBtn = makeButton(QStringLiteral("Om"));
    aboutBtn->setMinimumWidth(52);
    connect(aboutBtn, &QPushButton::clicked, this, [this] {
        if (about) {
            about();
            return;
        }
        QMessageBox::about(this, QStringLiteral("Om Ostrovalden Skole"),
                           QStringLiteral("<b>Ostrovalden Skole</b> 1.0.30<br>Formler, kredsløb, udregnere og "
                                          "øvelser til elektrikeruddannelsen."));
    });
    row->addWidget(aboutBtn);
    return header;
}

QWidget* MainWindow::buildNotice() {
    notice = new QFrame;
    notice->setObjectName("notice");
    auto* row = new QHBoxLayout(notice);
    row->setContentsMargins(18, 8, 10, 8);
    row->setSpacing(10);
    noticeText = new QLabel;
    noticeText->setTextFormat(Qt::RichText);
    noticeText->setWordWrap(true);
    noticeText->setTextInteractionFlags(Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard);
    connect(noticeText, &QLabel::linkActivated, this, &MainWindow::openLink);
    row->addWidget(noticeText, 1);
    auto* close = makeButton(QStringLiteral("×"));
    close->setToolTip(QStringLiteral("Luk"));
    close->setObjectName("noticeClose");
    connect(close, &QPushButton::clicked, this, [this] {
        notice->hide();
        if (noticeId.isEmpty()) return;
        Json seen = storeGet(key::NoticeSeen);
        if (!seen.isArray()) seen = Json::array();
        seen.push(Json(noticeId.toStdString()));
        storeSet(key::NoticeSeen, seen);
    });
    row->addWidget(close, 0, Qt::AlignTop);
    notice->hide();
    return notice;
}

QWidget* MainWindow::buildResults() {
    strip = new QWidget;
    strip->setObjectName("results");
    strip->setAttribute(Qt::WA_StyledBackground);
    stripLayout = new FlowLayout(strip, 6, 6);
    stripLayout->setContentsMargins(18, 8, 18, 8);
    auto* label = new QLabel(QStringLiteral("Resultater (klik for at indsætte i det sidste felt, du brugte):"));
    label->setProperty("class", "crumb");
    label->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    stripLayout->addWidget(label);
    strip->hide();
    return strip;
}

QWidget* MainWindow::buildStatus() {
    auto* bar = new QFrame;
    bar->setObjectName("statusbar");
    auto* row = new QHBoxLayout(bar);
    row->setContentsMargins(18, 4, 18, 4);
    status = new QLabel;
    status->setProperty("class", "crumb");
    saved = new QLabel;
    saved->setProperty("class", "crumb");
    saved->hide();
    row->addWidget(status);
    row->addStretch(1);
    row->addWidget(saved);
    return bar;
}

void MainWindow::styleFrames() {
    sideWidget->setFixedWidth(qRound(280 * textScale()));
    const ThemeColors& c = colors();
    tag->setStyleSheet(QStringLiteral("QLabel#tag { background: %1; color: %2; border: 1px solid %3; "
                                      "border-radius: 9px; padding: 1px 9px; font-size: %4pt; font-weight: 600; }")
                           .arg(qstr(c.soft), qstr(c.accent), qstr(c.accent))
                           .arg(scaledPt(8.5), 0, 'f', 1));
    sideWidget->setStyleSheet(QStringLiteral("QWidget#sidebar { background: %1; border-right: 1px solid %2; }"
                                             "QWidget#sidebar QTreeWidget { border-right: 0; }")
                                  .arg(qstr(c.panel), qstr(c.line)));
    strip->setStyleSheet(QStringLiteral("QWidget#results { background: %1; border-top: 1px solid %2; }")
                             .arg(qstr(c.panel), qstr(c.line)));
    styleSavedMark();
}

void MainWindow::styleSavedMark() {
    const ThemeColors& c = colors();
    saved->setStyleSheet(QStringLiteral("color: %1;").arg(qstr(saveFailingShown ? c.bad : c.ok)));
}

void MainWindow::systemSchemeChanged() {
    if (themeMode() != ThemeAuto) return;
    const bool wasDark = colors().dark;
    applyTheme();
    if (colors().dark == wasDark) return;
    emit hub->themeChanged();
}

Page* MainWindow::page(const QString& route) const {
    auto it = pages.find(route);
    return it == pages.end() ? nullptr : it->second;
}

Page* MainWindow::currentPage() const { return page(current); }

void MainWindow::navigate(const QString& requested) {
    // Unknown routes and routes the teacher has closed never show.
    QString route = requested;
    if (!fl::findFamilyOrTile(route.toStdString())) route = QLatin1String(fl::route::Home);
    const std::string reason = offReason(route.toStdString());
    if (!reason.empty()) {
        storeSet(key::LockedFeature, Json(reason));
        storeSet(key::LockedPage, Json(route.toStdString()));
        route = QLatin1String(fl::route::Locked);
    }

    Page* target = page(route);
    if (!target) {
        target = createPage(route.toStdString(), this);
        if (!target && route != QLatin1String(fl::route::Home)) {
            route = QLatin1String(fl::route::Home);
            target = page(route);
            if (!target) target = createPage(route.toStdString(), this);
        }
        if (!target) return;
        if (!pages.count(route)) {
            pages[route] = target;
            stack->addWidget(target);
            connect(hub, &HostSignals::settingsChanged, target, &Page::onSettings);
            connect(hub, &HostSignals::themeChanged, target, &Page::onTheme);
        }
    }

    if (route != current) previous = current;
    current = route;
    recordVisit(route.toStdString());

    // The title bar shows no markup: "U_N" reads "UN" there, as the stripped display form.
    const QString title = QString::fromStdString(fl::stripTags(fl::symbolHtml(pageTitle(route.toStdString()))));
    const QString app = QApplication::applicationName();
    setWindowTitle(title.isEmpty() ? app : title + QStringLiteral(" – ") + app);

    if (stack->currentWidget() != target) {
        auto* effect = new QGraphicsOpacityEffect(target);
        effect->setOpacity(0);
        target->setGraphicsEffect(effect);
        auto* fade = new QPropertyAnimation(effect, "opacity", target);
        fade->setDuration(170);
        fade->setStartValue(0.0);
        fade->setEndValue(1.0);
        fade->setEasingCurve(QEasingCurve::OutCubic);
        QPointer<QGraphicsOpacityEffect> mine(effect);
        connect(fade, &QPropertyAnimation::finished, target, [target, mine] {
            if (mine && target->graphicsEffect() == mine) target->setGraphicsEffect(nullptr);
        });
        fade->start(QAbstractAnimation::DeleteWhenStopped);
    }

    stack->setCurrentWidget(target);
    target->onEnter();
    target->scrollToTop();
    rebuildSidebar();
    emit navigated(route);
}

void MainWindow::goBack() {
    if (!previous.isEmpty() && previous != current) navigate(previous);
}

void MainWindow::openOwnLink(const QString& href) {
    const QString scheme = href.left(3);
    const QString rest = href.mid(3);
    if (scheme == QLatin1String("go:")) {
        navigate(rest);
    } else if (scheme == QLatin1String("gl:")) {
        storeSet(key::OrdlisteQ, Json(rest.toStdString()));
        navigate(QLatin1String(fl::route::Glossary));
    } else if (scheme == QLatin1String("it:")) {
        storeSet(key::InsttestTab, Json("hvad"));
        navigate(QLatin1String(fl::route::InstTest));
    }
}

void MainWindow::openLink(const QString& href) {
    if (href.startsWith(QLatin1String("go:")) || href.startsWith(QLatin1String("gl:")) ||
        href.startsWith(QLatin1String("it:"))) {
        openOwnLink(href);
        return;
    }
    QDesktopServices::openUrl(QUrl(href));
}

void MainWindow::addResult(const QString& name, double value, const QString& unit) {
    if (!std::isfinite(value)) return;
    results.insert(results.begin(), ResultRecord{name, value, unit});
    // One new button in front and the oldest gone: a tool that hands over
    // eight results must not make eighty buttons.
    stripLayout->insertWidget(1, resultButton(results.front()));
    if (results.size() > 10) {
        results.resize(10);
        dropStripItem(stripLayout->count() - 1);
    }
    fitStrip();
}

QPushButton* MainWindow::resultButton(const ResultRecord& record) {
    QString name = record.name;
    name.remove(QStringLiteral("<sub>")).remove(QStringLiteral("</sub>"));
    const QString text =
        name + QStringLiteral(" = ") + QString::fromStdString(fl::fmtWithUnit(record.value, record.unit.toStdString()));
    QPushButton* button = makeButton(text, strip, QStringLiteral("chip"));
    button->setStyleSheet(QStringLiteral("font-size: %1pt;").arg(scaledPt(10), 0, 'f', 1));
    button->setFocusPolicy(Qt::NoFocus);
    const double value = record.value;
    connect(button, &QPushButton::clicked, this, [this, value] {
        if (!lastField) return;
        lastField->setText(QString::fromStdString(fl::fmtValue10(value)));
        lastField->setFocus(Qt::OtherFocusReason);
    });
    return button;
}

void MainWindow::dropStripItem(int index) {
    QLayoutItem* item = stripLayout->takeAt(index);
    if (QWidget* w = item->widget()) {
        w->hide();
        w->deleteLater();
    }
    delete item;
}

void MainWindow::fitStrip() {
    // The label sits on the buttons' middle line.
    if (stripLayout->count() > 1)
        stripLayout->itemAt(0)->widget()->setMinimumHeight(stripLayout->itemAt(1)->sizeHint().height());
    strip->setVisible(!results.empty());
}

void MainWindow::rebuildResults() {
    // The label stays; the buttons are made anew in the present number format.
    while (stripLayout->count() > 1) dropStripItem(1);
    for (const ResultRecord& record : results) stripLayout->addWidget(resultButton(record));
    fitStrip();
}

void MainWindow::showNotice(const QString& html, const QString& id) {
    if (!id.isEmpty()) {
        const std::string key = id.toStdString();
        const Json seenIds = storeGet(key::NoticeSeen);
        for (const Json& seen : seenIds.asArray())
            if (seen.isString() && seen.str == key) return;
    }
    noticeId = id;
    noticeText->setText(html);
    notice->show();
}

bool MainWindow::stepMode() const {
    return options().trinvis;
}

void MainWindow::updateStatus() {
    const AppOptions& o = options();
    QString text = QStringLiteral("Afrunding: ") +
                   (o.rund == "d2" ? QStringLiteral("som formelsamlingen") : QStringLiteral("præcis")) +
                   QStringLiteral(" · ") + (o.komma ? QStringLiteral("decimalkomma") : QStringLiteral("decimalpunktum"));
    if (o.trinvis) text += QStringLiteral(" · ét trin ad gangen");
    status->setText(text);
}

void MainWindow::checkSaved() {
    // A failed save stands until a save gets through: the student's work is
    // only in memory meanwhile.
    const bool failing = DataStore::instance().saveFailing();
    if (failing != saveFailingShown) {
        saveFailingShown = failing;
        styleSavedMark();
        savedHide->stop();
        saved->setText(failing
                           ? QStringLiteral("⚠ Kunne ikke gemme dine data – prøver igen ved næste ændring")
                           : QString());
        saved->setVisible(failing);
    }
    if (failing) return;
    const std::string& path = DataStore::instance().path();
    const QFileInfo file(QString::fromStdString(path));
    const QDateTime modified = path.empty() || !file.exists() ? QDateTime() : file.lastModified();
    if (modified == lastSaved) return;
    if (lastSaved.isValid() && modified.isValid()) {
        saved->setText(QStringLiteral("✓ gemt ") + modified.toString(QStringLiteral("HH:mm")));
        saved->show();
        savedHide->start();
    }
    lastSaved = modified;
}

void MainWindow::setRefresh(std::function<void()> fn) {
    refresh = std::move(fn);
    refreshBtn->setEnabled(bool(refresh));
}

void MainWindow::refreshFinished() {
    refreshBtn->setText(QStringLiteral("↻  Opdatér"));
    refreshBtn->setEnabled(bool(refresh));
}

void MainWindow::setAboutHandler(std::function<void()> fn) { about = std::move(fn); }

void MainWindow::showSettings() { panel->popUpUnder(gear); }

void MainWindow::applyProfile() {
    const AppOptions& o = options();
    const bool changed = o.off != shownOff || o.profile != shownProfile;
    shownOff = o.off;
    shownProfile = o.profile;
    if (changed) {
        // A running exam is the one page that survives a change.
        for (auto it = pages.begin(); it != pages.end();) {
            if (it->first == current && current == QLatin1String(fl::route::Exam)) {
                ++it;
                continue;
            }
            // Gone from the window at once, so that it no longer hears its signals.
            disconnect(hub, nullptr, it->second, nullptr);
            stack->removeWidget(it->second);
            it->second->deleteLater();
            it = pages.erase(it);
        }
    }
    rebuildSidebar();
    emit hub->settingsChanged();

    QString target = current;
    if (current == QLatin1String(fl::route::Locked)) {
        const std::string locked = storeGetString(key::LockedPage);
        if (!locked.empty() && isOpen(locked)) target = QString::fromStdString(locked);
    }
    if (!isOpen(target.toStdString())) target = QLatin1String(fl::route::Home);
    if (!changed && target == current) return;
    navigate(target);
}

void MainWindow::closeEvent(QCloseEvent* event) {
    storeSet(key::WinGeom, Json(saveGeometry().toBase64().toStdString()));
    DataStore::instance().save();
    QMainWindow::closeEvent(event);
}

bool MainWindow::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::FocusIn:
        if (auto* edit = qobject_cast<QLineEdit*>(watched); edit && edit != search && stack->isAncestorOf(edit))
            lastField = edit;
        break;
    case QEvent::Enter:
        if (auto* w = qobject_cast<QWidget*>(watched);
            w && (qobject_cast<QAbstractButton*>(w) || qobject_cast<QComboBox*>(w)) &&
            w->cursor().shape() == Qt::ArrowCursor)
            w->setCursor(Qt::PointingHandCursor);
        break;
    case QEvent::KeyPress:
        if (watched == search) {
            const int key = static_cast<QKeyEvent*>(event)->key();
            if (key == Qt::Key_Down) {
                tree->setFocus(Qt::TabFocusReason);
                if (!tree->currentItem() && tree->topLevelItemCount() > 0)
                    tree->setCurrentItem(tree->topLevelItem(0));
                return true;
            }
            if (key == Qt::Key_Escape) {
                search->clear();
                return true;
            }
        }
        break;
    case QEvent::MouseButtonPress:
        if (static_cast<QMouseEvent*>(event)->button() == Qt::BackButton) {
            if (auto* w = qobject_cast<QWidget*>(watched); w && w->window() == this) {
                goBack();
                return true;
            }
        }
        break;
    case QEvent::Paint:
        // For the start-up benchmark: one line once the window has been painted.
        if (!paintReported && watched == centralWidget() && qEnvironmentVariableIsSet("OSTROVALDEN_FIRST_PAINT")) {
            paintReported = true;
            QTimer::singleShot(0, this, [] {
                std::fputs("ostrovalden: first paint\n", stderr);
                std::fflush(stderr);
            });
        }
        break;
    case QEvent::ThemeChange:
        if (watched == windowHandle()) systemSchemeChanged();
        break;
    default:
        break;
    }
    return QMainWindow::eventFilter(watched, event);
}

}  // namespace app
