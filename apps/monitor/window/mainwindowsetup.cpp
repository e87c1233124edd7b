// How the window is put together: its views, docks, actions and status bar.

#include "mainwindow.h"

#include "celldelegate.h"
#include "columngrower.h"
#include "connectdialog.h"
#include "emptyhint.h"
#include "eventlogtablewidget.h"
#include "formpanel.h"
#include "latestmessagesource.h"
#include "messageinfo.h"
#include "messagestatisticswidget.h"
#include "messagetreewidget.h"
#include "messagetypemodel.h"
#include "plotpanel.h"
#include "sourcemodel.h"
#include "sourcepanel.h"
#include "statisticscsv.h"
#include "theme.h"
#include "treeactions.h"
#include "treetools.h"
#include "watchbar.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDockWidget>
#include <QFileDialog>
#include <QHeaderView>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QSaveFile>
#include <QScrollBar>
#include <QSortFilterProxyModel>
#include <QStatusBar>
#include <QToolBar>
#include <QTreeView>
#include <QVBoxLayout>

static const int MostRecentFiles = 10;
static const int SaidMilliseconds = 4000;

namespace
{

class StatisticsCells : public CellDelegate
{
public:
    explicit StatisticsCells(QObject* parent)
        : CellDelegate(parent)
    {
        setName(0);
        setNumeric(1);
    }

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override
    {
        CellDelegate::initStyleOption(option, index);
        if (index.column() == 0 && index.parent().parent().parent().isValid())
            option->textElideMode = Qt::ElideLeft; // of a time, the date is what can be spared
    }
};

/** Whoever sees the newest row goes on seeing the newest; whoever scrolled back is left where he is. */
void followNewest(const QAbstractItemView* view)
{
    QScrollBar* const bar = view->verticalScrollBar();
    QObject::connect(bar, &QScrollBar::rangeChanged, bar, [bar, end = bar->maximum()](int, int maximum) mutable {
        if (bar->value() >= end)
            bar->setValue(maximum);
        end = maximum;
    });
}

} // namespace

void MainWindow::createTree()
{
    m_tree = new MessageTreeWidget(this);
    m_tree->setAccessibleName(tr("Message tree"));
    m_tree->setAlternatingRowColors(true);
    m_tree->header()->resizeSection(0, 260);
    m_tree->header()->resizeSection(1, 90);
    connect(m_latest, SIGNAL(newMessage(const Message*)), m_tree, SLOT(processMessage(const Message*)));

    m_treeHint = new QLabel(m_tree->viewport());
    Theme::makeHint(m_treeHint);
    m_treeHint->setAttribute(Qt::WA_TransparentForMouseEvents);
    QVBoxLayout* layout = new QVBoxLayout(m_tree->viewport());
    layout->addWidget(m_treeHint);

    m_tools = new TreeTools(m_tree, m_latest, m_tap, this);

    m_pauseBanner = new QWidget;
    QWidget* central = new QWidget;
    QVBoxLayout* centralLayout = new QVBoxLayout(central);
    centralLayout->setContentsMargins(0, 0, 0, 0);
    centralLayout->setSpacing(0);
    centralLayout->addWidget(m_pauseBanner);
    centralLayout->addWidget(m_tools->createTreePane(), 1);
    setCentralWidget(central);
    connect(m_tools->getActions(), &TreeActions::said, this,
            [this](const QString& text) { statusBar()->showMessage(text, SaidMilliseconds); });
    connect(m_tools->getPlot(), &PlotPanel::failed, this, &MainWindow::showError);
    connect(m_latest, &LatestMessageSource::forgotten, this, &MainWindow::forgetInTree);
    connect(m_tools, &TreeTools::annotationsRequested, this, &MainWindow::loadAnnotations);
}

void MainWindow::createTypeList()
{
    m_sortedTypes = new QSortFilterProxyModel(this);
    m_sortedTypes->setSourceModel(m_types);
    m_sortedTypes->setSortRole(MessageTypeModel::SortRole);
    m_sortedTypes->setDynamicSortFilter(true);
    m_typeView = new QTreeView;
    m_typeView->setModel(m_sortedTypes);
    m_typeView->setRootIsDecorated(false);
    m_typeView->setUniformRowHeights(true);
    m_typeView->setSortingEnabled(true);
    m_typeView->sortByColumn(MessageTypeModel::TypeColumn, Qt::AscendingOrder);
    m_typeView->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_typeView->setAccessibleName(tr("Message types"));
    m_typeView->header()->setStretchLastSection(false);
    m_typeView->header()->setSectionResizeMode(MessageTypeModel::TypeColumn, QHeaderView::Stretch);
    // Widths of their own would let the columns jump with every number that grows.
    const QFontMetrics metrics = m_typeView->fontMetrics();
    m_typeView->header()->resizeSection(MessageTypeModel::SenderColumn,
                                        metrics.horizontalAdvance(QLatin1String(" Sender  ^ ")));
    for (const int column : {MessageTypeModel::CountColumn, MessageTypeModel::RateColumn})
        m_typeView->header()->resizeSection(column, metrics.horizontalAdvance(QLatin1String(" 000,000 ")));
    CellDelegate* const cells = new CellDelegate(m_typeView);
    cells->setName(MessageTypeModel::TypeColumn);
    cells->setName(MessageTypeModel::SenderColumn);
    m_typeView->setItemDelegate(cells);
    new ColumnGrower(m_typeView, MessageTypeModel::SenderColumn, 25);
    connect(m_typeView->selectionModel(), &QItemSelectionModel::selectionChanged, this, &MainWindow::updateForms);
    connect(m_types, &QAbstractItemModel::modelReset, this, &MainWindow::updateForms);
}

void MainWindow::createDocks()
{
    m_watches = new WatchBar(m_latest);
    QDockWidget* watchDock = new QDockWidget(tr("Watches"), this);
    watchDock->setObjectName(QLatin1String("watches"));
    watchDock->setWidget(m_watches);
    addDockWidget(Qt::TopDockWidgetArea, watchDock);
    connect(m_tools, &TreeTools::renewed, m_watches, &WatchBar::renew);
    connect(m_tools, &TreeTools::preferencesChanged, m_watches,
            [this]() { m_watches->setTimeOut(m_tools->getPreferences().watchTimeOut); });

    m_sourcePanel = new SourcePanel(m_sources);
    QDockWidget* sourceDock = new QDockWidget(tr("Sources"), this);
    sourceDock->setObjectName(QLatin1String("sources"));
    sourceDock->setWidget(m_sourcePanel);
    addDockWidget(Qt::LeftDockWidgetArea, sourceDock);
    connect(m_sourcePanel, &SourcePanel::connectRequested, this, &MainWindow::askSource);
    connect(m_sourcePanel, &SourcePanel::recordRequested, this, &MainWindow::record);
    connect(m_sourcePanel, &SourcePanel::currentChanged, this, &MainWindow::updateStatus);

    QDockWidget* typeDock = new QDockWidget(tr("Message Types"), this);
    typeDock->setObjectName(QLatin1String("types"));
    typeDock->setWidget(m_typeView);
    addDockWidget(Qt::LeftDockWidgetArea, typeDock);

    m_forms = new FormPanel(m_latest);
    connect(m_tools, &TreeTools::renewed, m_forms, &FormPanel::renew);
    QDockWidget* formDock = new QDockWidget(tr("Forms"), this);
    formDock->setObjectName(QLatin1String("forms"));
    formDock->setWidget(m_forms);
    addDockWidget(Qt::RightDockWidgetArea, formDock);

    m_statistics = new MessageStatisticsWidget(&m_coordinator, this);
    m_statistics->setAccessibleName(tr("Message statistics"));
    m_statistics->header()->setStretchLastSection(false);
    m_statistics->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    m_statistics->header()->resizeSection(1, m_statistics->fontMetrics().horizontalAdvance(QLatin1String(" 0000000 ")));
    m_statistics->resizeColumnToContents(2);
    m_statistics->headerItem()->setTextAlignment(1, Qt::AlignRight | Qt::AlignVCenter);
    m_statistics->setItemDelegate(new StatisticsCells(m_statistics));
    QDockWidget* statisticsDock = new QDockWidget(tr("Statistics"), this);
    statisticsDock->setObjectName(QLatin1String("statistics"));
    statisticsDock->setWidget(m_statistics);
    addDockWidget(Qt::BottomDockWidgetArea, statisticsDock);
    connect(statisticsDock, &QDockWidget::visibilityChanged, m_statistics, [this](bool visible) {
        if (visible)
            m_statistics->updateTree();
    });

    m_events = new EventLogTableWidget(&m_shownLog, this);
    m_events->setAccessibleName(tr("Events"));
    m_events->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    m_events->verticalHeader()->hide();
    m_events->verticalHeader()->setDefaultSectionSize(m_events->fontMetrics().height() + 4);
    m_events->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    m_events->horizontalHeader()->resizeSection(
        0, m_events->fontMetrics().horizontalAdvance(QLatin1String(" 0000-00-00T00:00:00Z  ")));
    m_events->setWordWrap(false); // else a long word hides all behind it
    m_events->setItemDelegate(new CellDelegate(m_events));
    m_events->horizontalHeader()->setStretchLastSection(true);
    followNewest(m_events);
    QDockWidget* eventDock = new QDockWidget(tr("Events"), this);
    eventDock->setObjectName(QLatin1String("events"));
    eventDock->setWidget(m_events);
    addDockWidget(Qt::BottomDockWidgetArea, eventDock);
    splitDockWidget(statisticsDock, eventDock, Qt::Horizontal);

    QDockWidget* plotDock = new QDockWidget(tr("Plot"), this);
    plotDock->setObjectName(QLatin1String("plot"));
    plotDock->setWidget(m_tools->getPlot());
    addDockWidget(Qt::BottomDockWidgetArea, plotDock);
    tabifyDockWidget(eventDock, plotDock);
    eventDock->raise();
    const auto showPlot = [plotDock]() {
        plotDock->show();
        plotDock->raise();
    };
    connect(m_tools->getActions(), &TreeActions::plotRequested, plotDock, showPlot);
    connect(m_tools, &TreeTools::plotWished, plotDock, showPlot);
    connect(m_tools->getActions(), &TreeActions::watchRequested, m_watches,
            [this, watchDock](const QString& expression) {
                m_watches->pin(expression);
                watchDock->show();
            });

    new EmptyHint(m_typeView, tr("Message types appear here as they are received."));
    new EmptyHint(m_sourcePanel->findChild<QAbstractItemView*>(),
                  tr("Connect to a device, or drop a recording on the window."));
    new EmptyHint(m_statistics, tr("How often and how regularly messages come is told here once some were received."));
    new EmptyHint(m_events, tr("Nothing happened yet: losses, checksum failures and changes of sources appear here."));

    setCorner(Qt::BottomLeftCorner, Qt::LeftDockWidgetArea);
}

void MainWindow::createStatusBar()
{
    m_inputStatus = new QLabel;
    m_rateStatus = new QLabel;
    m_rateStatus->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_problemStatus = new QLabel;
    m_problemStatus->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_problemStatus->setContentsMargins(2 * fontMetrics().averageCharWidth(), 0, 0, 0);
    m_problemStatus->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_problemStatus->setAccessibleName(tr("Last problem"));
    statusBar()->addWidget(m_inputStatus);
    statusBar()->addWidget(m_problemStatus, 1);
    statusBar()->addPermanentWidget(m_rateStatus);
}

void MainWindow::createFileMenu()
{
    QMenu* file = menuBar()->addMenu(tr("&File"));
    file->addAction(tr("&Open Recording..."), this, &MainWindow::openFile)->setShortcut(QKeySequence::Open);
    m_recentMenu = file->addMenu(tr("Open &Recent"));
    connect(m_recentMenu, &QMenu::aboutToShow, this, &MainWindow::fillRecentFiles);
    file->addAction(tr("Co&nnect..."), this, &MainWindow::askSource)->setShortcut(QKeySequence(tr("Ctrl+K")));
    file->addAction(tr("&Simulated Vehicle"), this, [this]() { openSimulation(); });
    file->addSeparator();
    m_record = file->addAction(tr("&Record..."), this, [this]() { record(true); });
    m_record->setShortcut(QKeySequence(tr("Ctrl+R")));
    m_stopRecording = file->addAction(tr("S&top Recording"), this, [this]() { record(false); });
    m_closeSource =
        file->addAction(tr("C&lose Source"), this, [this]() { m_sources->close(m_sourcePanel->getCurrent()); });
    m_closeSource->setShortcut(QKeySequence(tr("Ctrl+W")));
    file->addSeparator();
    file->addAction(tr("Load &Definitions..."), this, &MainWindow::askDialect);
    file->addSeparator();
    file->addAction(tr("Save &Events as CSV..."), this, &MainWindow::saveEvents);
    file->addAction(tr("Save S&tatistics as CSV..."), this, &MainWindow::saveStatistics);
    file->addAction(tr("&Clear Events"), &m_log, &EventLog::clear);
    file->addSeparator();
    file->addAction(tr("&Quit"), this, &QWidget::close)->setShortcut(QKeySequence::Quit);
}

void MainWindow::createActions()
{
    createFileMenu();

    QAction* addAll = new QAction(tr("&Add All Types"), this);
    addAll->setShortcut(QKeySequence(tr("Ctrl+Shift+A")));
    connect(addAll, &QAction::triggered, this, &MainWindow::addAllTypes);
    QAction* removeAll = new QAction(tr("&Remove All Types"), this);
    connect(removeAll, &QAction::triggered, this, &MainWindow::removeAllTypes);
    m_addAutomatically = new QAction(tr("Add &New Types Automatically"), this);
    m_addAutomatically->setCheckable(true);
    m_addAutomatically->setChecked(true);
    QAction* collapse = new QAction(tr("&Collapse All"), this);
    connect(collapse, &QAction::triggered, m_tree, &QTreeView::collapseAll);
    QAction* expand = new QAction(tr("&Expand All"), this);
    connect(expand, &QAction::triggered, m_tree, &QTreeView::expandAll);

    m_virtualFields = new QAction(tr("&Virtual Fields"), this);
    m_virtualFields->setCheckable(true);
    m_virtualFields->setChecked(m_tree->mustShowVirtualFields());
    connect(m_virtualFields, SIGNAL(toggled(bool)), m_tree, SLOT(setShowVirtualFields(bool)));
    m_primaryOnly = new QAction(tr("&Primary Fields Only"), this);
    m_primaryOnly->setCheckable(true);
    connect(m_primaryOnly, SIGNAL(toggled(bool)), m_tree, SLOT(setShowPrimaryFieldsOnly(bool)));
    m_confidential = new QAction(tr("Con&fidential Data"), this);
    m_confidential->setCheckable(true);
    m_confidential->setToolTip(tr("Show fields that are marked as confidential"));
    connect(m_confidential, &QAction::toggled, this, &MainWindow::setShowConfidential);
    connect(m_confidential, &QAction::triggered, this, &MainWindow::warnOfConfidential); // the dialog warns by itself
    connect(m_tools, &TreeTools::confidentialRequested, m_confidential, &QAction::setChecked);

    m_tools->fillEditMenu(menuBar()->addMenu(tr("&Edit")));

    QMenu* tree = menuBar()->addMenu(tr("&Tree"));
    tree->addActions({addAll, removeAll, m_addAutomatically});
    tree->addSeparator();
    tree->addActions({expand, collapse});
    tree->addSeparator();
    m_tools->fillTreeMenu(tree);

    QMenu* view = menuBar()->addMenu(tr("&View"));
    QMenu* columns = view->addMenu(tr("&Columns"));
    m_tree->header()->setContextMenuPolicy(Qt::ActionsContextMenu);
    for (QAction* action : m_tree->getToggleColumnActions()) {
        columns->addAction(action);
        m_tree->header()->addAction(action);
    }
    view->addSeparator();
    view->addActions({m_virtualFields, m_primaryOnly, m_confidential});
    view->addSeparator();
    for (QDockWidget* dock : findChildren<QDockWidget*>())
        view->addAction(dock->toggleViewAction());

    createPlaybackMenu();
    QMenu* help = menuBar()->addMenu(tr("&Help"));
    help->addAction(tr("&About Corvel Monitor"), this, &MainWindow::showAbout);
    help->addAction(tr("About &Qt"), qApp, &QApplication::aboutQt);

    QToolBar* bar = addToolBar(tr("Tree"));
    bar->setObjectName(QLatin1String("tree"));
    bar->setMovable(false);
    bar->addAction(addAll);
    bar->addAction(collapse);
    bar->addAction(expand);
    bar->addSeparator();
    for (QAction* action : m_tree->getToggleColumnActions())
        bar->addAction(action);
    bar->addSeparator();
    bar->addActions({m_virtualFields, m_primaryOnly, m_confidential});
    bar->addSeparator();
    bar->addAction(m_pauseViews);
    bar->addSeparator();
    m_senders = new QComboBox;
    m_senders->addItem(tr("All senders"), QString());
    m_senders->setAccessibleName(tr("Sender shown"));
    m_senders->setToolTip(tr("Whose messages the tree, the forms and the values show"));
    connect(m_senders, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            [this]() { m_latest->setSender(m_senders->currentData().toString()); });
    bar->addWidget(m_senders);
}

void MainWindow::showAbout()
{
    QMessageBox::about(this, tr("About Corvel Monitor"),
                       tr("Corvel Monitor %1\n\nShows what a device says: every field of every message type, live; how "
                          "regularly messages arrive; what went missing, what went wrong, and when.")
                           .arg(QCoreApplication::applicationVersion()));
}

void MainWindow::openFile()
{
    const QStringList paths = QFileDialog::getOpenFileNames(
        this, tr("Open Recordings"), QString(), tr("Recordings (*.tlog *.mavlink *.mcap *.bin *.raw);;All files (*)"));
    openAll(paths);
}

void MainWindow::saveEvents()
{
    m_log.flushAll(); // what is still being counted belongs into the file
    saveCsv(tr("Save Events"), QLatin1String("events.csv"), m_log.toCsv());
}

void MainWindow::saveStatistics()
{
    saveCsv(tr("Save Statistics"), QLatin1String("statistics.csv"), StatisticsCsv::toCsv(m_coordinator));
}

void MainWindow::saveCsv(const QString& title, const QString& name, const QByteArray& csv)
{
    const QString path =
        QFileDialog::getSaveFileName(this, title, name, tr("Comma-separated values (*.csv);;All files (*)"));
    if (path.isEmpty())
        return;
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(csv) < 0 || !file.commit())
        showError(tr("%1 cannot be written: %2").arg(path, file.errorString()));
}

void MainWindow::rememberFile(const QString& path)
{
    m_recentFiles.removeAll(path);
    m_recentFiles.prepend(path);
    while (m_recentFiles.size() > MostRecentFiles)
        m_recentFiles.removeLast();
}

void MainWindow::fillRecentFiles()
{
    m_recentMenu->clear();
    for (const QString& path : std::as_const(m_recentFiles))
        m_recentMenu->addAction(path, this, [this, path]() { openAddress(path); });
    if (m_recentFiles.isEmpty())
        m_recentMenu->addAction(tr("No recordings yet"))->setEnabled(false);
}

void MainWindow::askSource()
{
    ConnectDialog dialog(
        &m_factory,
        [this](const SourceOptions& options, QString* error) { return openSource(options, error) != nullptr; }, this);
    if (!m_lastOptions.isSimulation())
        dialog.setOptions(m_lastOptions);
    if (dialog.exec() == QDialog::Accepted)
        m_lastOptions = dialog.getOptions();
}

void MainWindow::record(bool on)
{
    SourceSession* const session = m_sourcePanel->getCurrent();
    if (!session)
        return;
    if (!on) {
        session->stopRecording();
        return;
    }
    const bool isTlog = Recorder::kindFor(session->getSource()->getDecoder()) == Recorder::TlogKind;
    const QString suggestion = QDateTime::currentDateTime().toString(QLatin1String("yyyy-MM-dd-HHmmss")) +
                               (isTlog ? QLatin1String(".tlog") : QLatin1String(".mcap"));
    const QString path = QFileDialog::getSaveFileName(
        this, tr("Record"), suggestion, isTlog ? tr("MAVLink recordings (*.tlog)") : tr("MCAP recordings (*.mcap)"));
    QString error;
    if (!path.isEmpty() && !m_sources->startRecording(session, path, &error))
        showError(error);
}

void MainWindow::askDialect()
{
    const QString path = QFileDialog::getOpenFileName(this, tr("Load Definitions"), QString(),
                                                      tr("MAVLink dialects (*.xml);;All files (*)"));
    if (!path.isEmpty() && loadDialect(path, QString()))
        statusBar()->showMessage(tr("The definitions are used from here on, also for what is open."), 5000);
}
