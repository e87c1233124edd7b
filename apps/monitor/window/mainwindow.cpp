#include "mainwindow.h"

#include "confidentialaction.h"
#include "corvel.h"
#include "filemenu.h"
#include "icons.h"
#include "layoutmenu.h"
#include "pausebanner.h"
#include "preferencesdialog.h"
#include "senderchoice.h"
#include "simulationbanner.h"
#include "startpage.h"
#include "statusline.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QDockWidget>
#include <QDragEnterEvent>
#include <QFile>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QScreen>
#include <QSettings>
#include <QStackedWidget>
#include <QTabBar>
#include <QToolBar>
#include <QVBoxLayout>

static const int RefreshMilliseconds = 250;
static const int MostSkipped = 1000; // controls behind tabs

MainWindow::MainWindow(QWidget* parent)
    : QMainWindow(parent)
    , m_panels(&m_desk)
    , m_opener(&m_desk)
    , m_docks(new DockLayout(this, &m_panels))
    , m_layouts(new LayoutMenu(m_docks, this))
    , m_status(new StatusLine(&m_desk))
    , m_fileMenu(new FileMenu(&m_desk, &m_opener, this))
    , m_senders(new SenderChoice(&m_desk))
    , m_middle(new QStackedWidget)
{
    setAcceptDrops(true);
    setStatusBar(m_status);
    createActions();
    createMenus();
    QWidget* const central = new QWidget;
    QVBoxLayout* const layout = new QVBoxLayout(central);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(new PauseBanner(m_pauseViews));
    layout->addWidget(new SimulationBanner(&m_desk));
    m_middle->addWidget(new StartPage(m_fileMenu));
    m_middle->addWidget(m_panels.getPanel(PanelPlace::Center)->getWidget());
    layout->addWidget(m_middle, 1);
    setCentralWidget(central);
    refresh();

    connect(&m_desk, &Desk::failed, this, &MainWindow::showError);
    connect(&m_desk, &Desk::preferencesChanged, this, &MainWindow::refresh);
    connect(&m_desk, &Desk::wanted, m_docks, &DockLayout::show);
    connect(m_desk.getSources(), &SourceModel::sessionChanged, this, &MainWindow::refresh);
    connect(m_desk.getSources(), &SourceModel::sessionRemoved, this, &MainWindow::refresh);
    connect(&m_opener, &Opener::opened, this, &MainWindow::refresh);
    m_refreshTimer.setInterval(RefreshMilliseconds);
    connect(&m_refreshTimer, &QTimer::timeout, this, &MainWindow::refresh);
    resize(1280, 800);
}

MainWindow::~MainWindow()
{
    m_desk.getSources()->closeAll(); // while there are panels to follow
}

void MainWindow::createActions()
{
    m_confidential = new ConfidentialAction(&m_desk, this);
    m_pauseViews = new QAction(tr("Pause &Views"), this);
    m_pauseViews->setCheckable(true);
    m_pauseViews->setShortcut(QKeySequence(tr("F8")));
    m_pauseViews->setIcon(Icons::create(Icons::Pause));
    m_pauseViews->setIconText(tr("Pause"));
    m_pauseViews->setToolTip(tr("Let the views stand still while what arrives is counted and recorded (F8)"));
    connect(m_pauseViews, &QAction::toggled, this, &MainWindow::setViewsPaused);
}

void MainWindow::createMenus()
{
    menuBar()->addMenu(m_fileMenu);
    QMenu* const edit = menuBar()->addMenu(tr("&Edit"));
    QMenu* const tree = menuBar()->addMenu(tr("&Tree"));
    QMenu* const view = menuBar()->addMenu(tr("&View"));
    QMenu* const playback = menuBar()->addMenu(tr("&Playback"));
    QMenu* const help = menuBar()->addMenu(tr("&Help"));
    QToolBar* const bar = addToolBar(tr("Tool Bar"));
    bar->setObjectName(QLatin1String("tools"));
    bar->setMovable(false);
    bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    bar->setIconSize(QSize(fontMetrics().height(), fontMetrics().height()));
    m_fileMenu->addActionsTo(bar);
    m_panels.addActionsTo({m_fileMenu, edit, tree, view, playback, bar});

    m_fileMenu->addSeparator();
    m_fileMenu->addAction(tr("&Quit"), this, &QWidget::close)->setShortcut(QKeySequence::Quit);
    edit->addSeparator();
    QAction* const settings = edit->addAction(tr("&Settings..."), this, &MainWindow::showPreferences);
    settings->setShortcut(QKeySequence(tr("Ctrl+,")));
    settings->setMenuRole(QAction::PreferencesRole);
    view->addAction(m_confidential);
    view->addSeparator();
    view->addAction(bar->toggleViewAction());
    m_docks->addActionsTo(view);
    view->addSeparator();
    view->addMenu(m_layouts);
    playback->addSeparator();
    playback->addAction(m_pauseViews);
    help->addAction(tr("&About Corvel Monitor"), this, &MainWindow::showAbout);
    help->addAction(tr("About &Qt"), qApp, &QApplication::aboutQt);

    bar->addAction(m_pauseViews);
    bar->addSeparator();
    bar->addWidget(m_senders);
}

bool MainWindow::showPanel(const QString& id)
{
    for (const PanelSet::Entry& entry : m_panels.getEntries()) {
        if (QLatin1String(entry.row.id) != id)
            continue;
        m_docks->show(entry.panel->getWidget());
        return true;
    }
    return false;
}

void MainWindow::showAbout()
{
    QMessageBox::about(this, tr("About Corvel Monitor"), getAboutText());
}

QString MainWindow::getAboutText() const
{
    const QString own = QStringLiteral("BSD-3-Clause");
    QString licence = tr("Free software under the licence %1.").arg(own);
    for (const PanelSet::Entry& entry : m_panels.getEntries())
        if (entry.row.licence)
            licence = tr("Free software: its own source is under the licence %1; as a whole, with the library that "
                         "draws the plot, it is under %2.")
                          .arg(own, QLatin1String(entry.row.licence));
    return tr("Corvel Monitor %1\n\nShows what a device says: every field of every message type, live; how regularly "
              "messages arrive; what went missing, what went wrong, and when.")
               .arg(QCoreApplication::applicationVersion()) +
           QLatin1String("\n\n") + licence;
}

void MainWindow::showError(const QString& text)
{
    // A message box that blocks would stop a script that only wants a picture, so it is shown and left to the user.
    QMessageBox* box = new QMessageBox(QMessageBox::Warning, windowTitle(), text, QMessageBox::Ok, this);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setModal(true);
    box->show();
    m_status->noteProblem(text.section(QLatin1String("\n\n"), -1));
}

QString MainWindow::getLastProblem() const
{
    return m_status->getLastProblem();
}

void MainWindow::showPreferences()
{
    PreferencesDialog* const dialog =
        new PreferencesDialog(m_desk.getPreferences(), Corvel::confidentialInformationDisplayEnabled(), this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &PreferencesDialog::applied, this, [this, dialog]() {
        m_desk.setPreferences(dialog->getPreferences());
        if (dialog->isConfidentialShown() != Corvel::confidentialInformationDisplayEnabled())
            m_confidential->setChecked(dialog->isConfidentialShown());
    });
    dialog->open();
}

void MainWindow::setViewsPaused(bool paused)
{
    m_pauseViews->setChecked(paused);
    m_desk.setPaused(paused);
    followVisibility();
}

// Views are brought up to date only while somebody can see them; what arrives is counted all the same.
void MainWindow::followVisibility()
{
    const bool visible = isVisible() && !isMinimized();
    m_desk.setVisible(visible);
    if (visible) {
        refresh();
        m_refreshTimer.start();
    } else {
        m_refreshTimer.stop();
    }
}

void MainWindow::refresh()
{
    m_desk.refresh();
    m_panels.tick();
    m_status->refresh();
    m_fileMenu->refresh();
    const int page = m_desk.getSources()->getCount() > 0 ? 1 : 0;
    if (m_middle->currentIndex() != page) {
        const bool hadFocus = !focusWidget() || m_middle->isAncestorOf(focusWidget());
        m_middle->setCurrentIndex(page);
        if (hadFocus)
            focusMiddle();
    }
    if (!m_desk.isPaused())
        m_senders->refresh();
    const QString summary = m_status->getSummary();
    setWindowTitle(summary.isEmpty() ? tr("Corvel Monitor") : tr("%1 – Corvel Monitor").arg(summary));
}

// Also what was restored before: sizes of docks hold for a window that is as large as it will be.
void MainWindow::arrange()
{
    if (!m_state.isEmpty() && m_docks->restore(m_state))
        return;
    m_docks->arrange();
    Q_EMIT m_desk.arranged();
}

void MainWindow::focusMiddle()
{
    QWidget* const tree = m_middle->currentWidget()->findChild<QAbstractItemView*>();
    (tree ? tree : m_middle->currentWidget())->setFocus();
}

void MainWindow::setVisible(bool visible)
{
    if (visible && !m_arranged)
        m_docks->prepare();
    QMainWindow::setVisible(visible);
}

void MainWindow::showEvent(QShowEvent* event)
{
    QMainWindow::showEvent(event);
    // Docks have no sizes before there is a layout to take them from.
    if (!m_arranged) {
        m_arranged = true;
        QTimer::singleShot(0, this, &MainWindow::arrange);
        focusMiddle();
    }
    followVisibility();
}

static bool isBehindATab(const QWidget* widget)
{
    for (; widget; widget = widget->parentWidget())
        if (qobject_cast<const QDockWidget*>(widget) || qobject_cast<const QTabBar*>(widget))
            return widget->visibleRegion().isEmpty();
    return false;
}

// What lies behind a tab is shown for Qt, and Tab would lead into it where nobody sees.
bool MainWindow::focusNextPrevChild(bool next)
{
    bool isMoved = QMainWindow::focusNextPrevChild(next);
    for (int i = 0; isMoved && i < MostSkipped && isBehindATab(focusWidget()); ++i)
        isMoved = QMainWindow::focusNextPrevChild(next);
    return isMoved;
}

void MainWindow::hideEvent(QHideEvent* event)
{
    QMainWindow::hideEvent(event);
    followVisibility();
}

void MainWindow::changeEvent(QEvent* event)
{
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::WindowStateChange)
        followVisibility();
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event)
{
    if (event->mimeData()->hasUrls())
        event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent* event)
{
    QStringList addresses;
    const QList<QUrl> urls = event->mimeData()->urls();
    for (const QUrl& url : urls)
        addresses.append(url.isLocalFile() ? url.toLocalFile() : url.toString());
    openAll(addresses);
}

void MainWindow::setSettings(std::unique_ptr<QSettings> settings)
{
    m_settings = std::move(settings);
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    if (m_settings) {
        saveSettings(*m_settings);
        m_settings->sync();
    }
    QMainWindow::closeEvent(event);
}

// What fills a large screen does not fit a small one, on which another arrangement is kept.
QString MainWindow::getStateKey() const
{
    return QLatin1String(m_docks->isLow() ? "stateWhenLow" : "state");
}

// Showing confidential data is left out on purpose: it is asked for anew each time.
void MainWindow::saveSettings(QSettings& settings)
{
    settings.beginGroup(QLatin1String("window"));
    settings.setValue(QLatin1String("geometry"), saveGeometry());
    settings.setValue(getStateKey(), m_arranged ? m_docks->save() : m_state);
    settings.endGroup();
    m_desk.getPreferences().save(settings);
    m_panels.saveSettings(settings);
    m_fileMenu->saveSettings(settings);
    m_layouts->saveSettings(settings);
    settings.setValue(QLatin1String("definitions"), m_desk.getFactory()->getDefinitionsPath());
}

void MainWindow::restoreSettings(QSettings& settings)
{
    // First, because what follows names types and fields of the definitions.
    const QString definitions = settings.value(QLatin1String("definitions")).toString();
    if (m_desk.getFactory()->getDefinitionsPath().isEmpty() && QFile::exists(definitions))
        loadDialect(definitions, QString());
    Preferences preferences = m_desk.getPreferences();
    preferences.restore(settings);
    m_desk.setPreferences(preferences);

    settings.beginGroup(QLatin1String("window"));
    if (restoreGeometry(settings.value(QLatin1String("geometry")).toByteArray()) &&
        size().boundedTo(screen()->availableSize()) != size()) {
        resize(size().boundedTo(screen()->availableSize())); // which was larger the last time
        move(screen()->availableGeometry().topLeft());
    }
    m_state = settings.value(getStateKey()).toByteArray();
    settings.endGroup();
    m_layouts->restoreSettings(settings);
    m_panels.restoreSettings(settings);
    m_fileMenu->restoreSettings(settings);
}
