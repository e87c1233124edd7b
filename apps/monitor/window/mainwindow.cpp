#include "mainwindow.h"

#include "corvel.h"
#include "eventfeed.h"
#include "findbar.h"
#include "formpanel.h"
#include "latestmessagesource.h"
#include "messageinfo.h"
#include "messagestatisticswidget.h"
#include "messagetap.h"
#include "messagetreewidget.h"
#include "messagetreewidgetitem.h"
#include "messagetypemodel.h"
#include "pinnedtypes.h"
#include "playbackbar.h"
#include "plotpanel.h"
#include "plotseries.h"
#include "preferencesdialog.h"
#include "sourcemodel.h"
#include "sourcepanel.h"
#include "treefilter.h"
#include "treetools.h"
#include "watchbar.h"

#include <QAction>
#include <QComboBox>
#include <QDockWidget>
#include <QDragEnterEvent>
#include <QHeaderView>
#include <QLabel>
#include <QLocale>
#include <QMessageBox>
#include <QMimeData>
#include <QSettings>
#include <QSignalBlocker>
#include <QSortFilterProxyModel>
#include <QStatusBar>
#include <QTreeView>

static const int RefreshMilliseconds = 250;
// A window of fewer lines' heights than this in width has no room for docks on both sides.
static const int NarrowLines = 70;

MainWindow::MainWindow(QWidget* parent)
    : QMainWindow(parent)
    , m_types(new MessageTypeModel(this))
    , m_latest(new LatestMessageSource(this))
    , m_tap(new MessageTap(this))
    , m_eventFeed(new EventFeed(&m_log, &m_shownLog, this))
{
    setAcceptDrops(true);
    setWindowTitle(tr("Corvel Monitor"));
    createSources();
    createTree();
    createTypeList();
    createDocks();
    createPlayback();
    createStatusBar();
    createActions();
    updateStatus();
    connect(m_types, &MessageTypeModel::typeSeen, this, &MainWindow::processTypeSeen);
    connect(m_types, &MessageTypeModel::typeGone, this, &MainWindow::processTypeGone);
    connect(m_types, &MessageTypeModel::inTreeRequested, this, &MainWindow::chooseInTree);
    connect(m_types, &MessageTypeModel::typesAboutToChange, this, &MainWindow::rememberForms);
    m_refreshTimer.setInterval(RefreshMilliseconds);
    connect(&m_refreshTimer, &QTimer::timeout, this, &MainWindow::refresh);
    resize(1280, 800);
}

MainWindow::~MainWindow()
{
    m_sources->closeAll(); // while there is what they report to
}

bool MainWindow::loadDialect(const QString& path, const QString& annotations)
{
    QStringList problems;
    const bool loaded = m_factory.loadDefinitions(path, &problems);
    if (!annotations.isEmpty())
        m_factory.annotate(annotations, &problems);
    if (!problems.isEmpty())
        showError((loaded ? tr("The annotations have faults; the rest of them is used.")
                          : tr("The definitions could not be loaded.")) +
                  QLatin1String("\n\n") + problems.join(QLatin1Char('\n')));
    for (int i = 0; loaded && i < m_sources->getCount(); ++i)
        m_sources->getSession(i)->useNewDefinitions();
    return loaded;
}

bool MainWindow::loadAnnotations(const QString& path)
{
    QStringList problems;
    const bool good = m_factory.annotate(path, &problems);
    m_tools->followConfidentiality(); // what is annotated may be shown already
    if (good)
        return true;
    showError(tr("The annotations have faults; the rest of them is used.") + QLatin1String("\n\n") +
              problems.join(QLatin1Char('\n')));
    return false;
}

void MainWindow::showError(const QString& text)
{
    // A message box that blocks would stop a script that only wants a picture, so it is shown and left to the user.
    QMessageBox* box = new QMessageBox(QMessageBox::Warning, windowTitle(), text, QMessageBox::Ok, this);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setModal(true);
    box->show();
    noteProblem(text.section(QLatin1String("\n\n"), -1));
}

bool MainWindow::openAll(const QStringList& addresses)
{
    QStringList errors;
    for (const QString& address : addresses) {
        if (address.endsWith(QLatin1String(".xml"), Qt::CaseInsensitive)) {
            loadDialect(address, QString()); // says itself what is wrong
            continue;
        }
        SourceOptions options = m_definitions;
        options.address = address;
        QString error;
        if (!openSource(options, &error))
            errors.append(error);
    }
    if (!errors.isEmpty())
        showError(errors.join(QLatin1Char('\n')));
    return errors.isEmpty();
}

SourceSession* MainWindow::openSource(const SourceOptions& options, QString* error)
{
    const QPointer<SourceSession> demonstration = m_demonstration;
    SourceSession* const session = m_sources->open(options, m_playback, error);
    if (!session)
        return nullptr;
    // One that somebody records has become more than a demonstration.
    if (demonstration && !demonstration->getRecorder().isRecording())
        m_sources->close(demonstration.data());
    m_demonstration = nullptr;
    if (!session->getPath().isEmpty())
        rememberFile(session->getPath());
    refresh();
    return session;
}

void MainWindow::openSimulation(bool untilAnother)
{
    QString error;
    SourceSession* const session = openSource(SourceOptions(), &error);
    if (untilAnother)
        m_demonstration = session;
}

const StreamSource* MainWindow::getSource() const
{
    const SourceSession* const session = m_sourcePanel->getCurrent();
    return session ? session->getSource() : nullptr;
}

void MainWindow::createSources()
{
    m_sources = new SourceModel(&m_factory, {&m_coordinator, &m_log, m_latest, m_tap}, this);
    connect(m_sources, &SourceModel::sessionAdded, this, &MainWindow::addSession);
    connect(m_sources, &SourceModel::sessionAboutToBeRemoved, m_types, &MessageTypeModel::removeSession);
    connect(m_sources, &SourceModel::sessionRemoved, this, [this]() {
        m_statistics->updateTree(); // before new statistics can be taken for those that are gone
        updateSenders();
        refresh();
    });
}

void MainWindow::addSession(SourceSession* session)
{
    m_types->addSession(session);
    connect(session, &SourceSession::formatChanged, m_sources, &SourceModel::followFormats);
    connect(session, &SourceSession::recordingFailed, this, &MainWindow::showError);
    connect(session, &SourceSession::problem, this, &MainWindow::noteProblem);
    connect(session, &SourceSession::changed, this, &MainWindow::refresh);
    connect(session, &SourceSession::senderRenamed, this, &MainWindow::renameSender);
}

// A sender that was chosen or plotted stays so when its name tells its source, or tells it no longer.
void MainWindow::renameSender(const QString& before, const QString& now)
{
    const int index = m_senders->findData(before);
    if (index > 0) {
        const QSignalBlocker blocker(m_senders);
        m_senders->setItemText(index, now);
        m_senders->setItemData(index, now);
    }
    m_latest->renameSender(before, now);
    m_tools->getPlot()->renameSender(before, now);
}

// Views are brought up to date only while somebody can see them; what arrives is counted all the same.
void MainWindow::followVisibility()
{
    const bool visible = isVisible() && !isMinimized();
    m_latest->setSuspended(!visible || m_viewsPaused);
    if (visible) {
        refresh();
        m_refreshTimer.start();
    } else {
        m_refreshTimer.stop();
    }
}

void MainWindow::arrangeDocks()
{
    QHash<QString, QDockWidget*> docks;
    for (QDockWidget* dock : findChildren<QDockWidget*>())
        docks.insert(dock->objectName(), dock);
    QDockWidget* const types = docks.value(QLatin1String("types"));
    QDockWidget* const forms = docks.value(QLatin1String("forms"));
    QDockWidget* const statistics = docks.value(QLatin1String("statistics"));
    // On a small screen the tree needs the room: what else there is lies behind tabs, or waits for its first watch.
    const bool isSmall = width() < NarrowLines * fontMetrics().height();
    if (isSmall) {
        tabifyDockWidget(types, forms);
        types->raise();
        tabifyDockWidget(statistics, docks.value(QLatin1String("events")));
        tabifyDockWidget(statistics, docks.value(QLatin1String("plot")));
        if (m_tools->getPlot()->getSeries().empty())
            statistics->raise();
        docks.value(QLatin1String("watches"))->setVisible(!m_watches->isEmpty());
    }
    resizeDocks({types}, {width() * 3 / 10}, Qt::Horizontal);
    if (!isSmall)
        resizeDocks({forms}, {width() / 5}, Qt::Horizontal);
    resizeDocks({statistics}, {height() / (isSmall ? 5 : 4)}, Qt::Vertical);
    resizeDocks({docks.value(QLatin1String("sources")), types}, {height() / 6, height() / 2}, Qt::Vertical);
    if (!isSmall)
        resizeDocks({statistics, docks.value(QLatin1String("events"))}, {width() * 5 / 9, width() * 4 / 9},
                    Qt::Horizontal);
    // Once the docks have left the tree what it gets.
    QTimer::singleShot(0, m_tree, [this]() {
        m_tree->header()->resizeSection(0, m_tree->width() * 2 / 5);
        m_tree->header()->resizeSection(1, m_tree->width() / 6);
    });
}

void MainWindow::showEvent(QShowEvent* event)
{
    QMainWindow::showEvent(event);
    // Docks have no sizes before there is a layout to take them from.
    if (!m_arranged) {
        m_arranged = true;
        QTimer::singleShot(0, this, &MainWindow::arrangeDocks);
        m_tree->setFocus();
    }
    followVisibility();
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

void MainWindow::refresh()
{
    m_sources->refresh();
    m_playbackBar->refresh();
    updateStatus();
    m_watches->setFrozen(m_viewsPaused || m_latest->isStandingStill());
    if (m_viewsPaused) {
        updateHint(); // what is searched for can change all the same
        return;
    }
    m_types->refresh();
    if (m_statistics->isVisible())
        m_statistics->updateTree();
    updateSenders();
    updateHint();
}

void MainWindow::noteProblem(const QString& text)
{
    m_lastProblem = text;
    m_problemStatus->setText(text.section(QLatin1Char('\n'), 0, 0));
    m_problemStatus->setToolTip(text);
}

void MainWindow::updateStatus()
{
    const SourceSession* const session = m_sourcePanel->getCurrent();
    m_record->setEnabled(session && !session->getRecorder().isRecording());
    m_stopRecording->setEnabled(session && session->getRecorder().isRecording());
    m_closeSource->setEnabled(session);
    if (!session) {
        m_inputStatus->setText(tr("Nothing is open"));
        m_rateStatus->clear();
        setWindowTitle(tr("Corvel Monitor"));
        return;
    }
    const int count = m_sources->getCount();
    if (count == 1) {
        m_inputStatus->setText(tr("%1: %2").arg(session->getName(), SourceModel::stateText(session)));
        setWindowTitle(tr("%1 – Corvel Monitor").arg(session->getName()));
    } else {
        int recordings = 0;
        for (int i = 0; i < count; ++i)
            recordings += m_sources->getSession(i)->getRecorder().isRecording() ? 1 : 0;
        m_inputStatus->setText(recordings > 0 ? tr("%1 sources, %2 recorded").arg(count).arg(recordings)
                                              : tr("%1 sources").arg(count));
        setWindowTitle(tr("%1 sources – Corvel Monitor").arg(count));
    }
    quint64 messages = 0;
    quint64 failures = 0;
    for (int i = 0; i < count; ++i) {
        const ReceptionCounters& counters = m_sources->getSession(i)->getCounters();
        messages += counters.getMessageCount() + counters.getUnknownCount();
        failures += counters.getChecksumFailureCount();
    }
    const QLocale locale;
    m_rateStatus->setText(tr("%1 messages   %2 /s   %3 kB/s   %4 not displayed   %5 checksum failures")
                              .arg(locale.toString(messages))
                              .arg(locale.toString(m_sources->getMessageRate(), 'f', 0))
                              .arg(locale.toString(m_sources->getByteRate() / 1000, 'f', 1))
                              .arg(locale.toString(m_latest->getOvertakenCount()))
                              .arg(locale.toString(failures)));
    m_rateStatus->setMinimumWidth(m_rateStatus->sizeHint().width()); // never less, or the text beside it moves
}

void MainWindow::updateSenders()
{
    const QStringList senders = m_types->getSenders();
    if (!senders.contains(m_senders->currentData().toString()))
        m_senders->setCurrentIndex(0); // and not whoever stands beside the one that goes
    for (int i = m_senders->count() - 1; i > 0; --i)
        if (!senders.contains(m_senders->itemData(i).toString()))
            m_senders->removeItem(i);
    for (const QString& name : senders)
        if (m_senders->findData(name) < 0)
            m_senders->addItem(name, name);
}

void MainWindow::processTypeGone(const MessageInfo* info)
{
    setInTree(info, false);
}

void MainWindow::processTypeSeen(const MessageInfo* info)
{
    if (m_treeChoices.value(PinnedTypes::getName(info), m_addAutomatically->isChecked()))
        setInTree(info, true);
    if (m_wantedForms.removeAll(info->getName()) > 0) {
        for (int row = 0; row < m_types->rowCount(); ++row) {
            const QModelIndex index = m_sortedTypes->mapFromSource(m_types->index(row, 0));
            if (m_types->getMessageInfo(row) == info)
                m_typeView->selectionModel()->select(index, QItemSelectionModel::Select | QItemSelectionModel::Rows);
        }
    }
}

MessageTreeWidgetItem* MainWindow::findRow(const MessageInfo* info) const
{
    for (int i = 0; i < m_tree->topLevelItemCount(); ++i) {
        MessageTreeWidgetItem* row = dynamic_cast<MessageTreeWidgetItem*>(m_tree->topLevelItem(i));
        if (row && row->getMessageInfo() == info)
            return row;
    }
    return nullptr;
}

void MainWindow::forgetInTree(const MessageInfo* info)
{
    if (MessageTreeWidgetItem* const row = findRow(info))
        row->processMessage(nullptr);
}

void MainWindow::setInTree(const MessageInfo* info, bool inTree)
{
    MessageTreeWidgetItem* row = findRow(info);
    if (inTree && !row) {
        row = new MessageTreeWidgetItem(m_tree, info);
        m_tree->insertTopLevelItem(m_tools->getPins()->placeFor(info), row);
        row->configureInTreeWidget();
        const MessageReference latest = m_latest->getLatest(info);
        if (!latest.isNull())
            row->processMessage(latest.get());
    } else if (!inTree) {
        delete row;
    }
    m_types->setInTree(info, inTree);
    updateHint();
}

// What the user chose holds over jumps, other definitions and restarts.
void MainWindow::chooseInTree(const MessageInfo* info, bool inTree)
{
    m_treeChoices.insert(PinnedTypes::getName(info), inTree);
    setInTree(info, inTree);
}

void MainWindow::rememberForms()
{
    for (const MessageInfo* info : m_forms->getMessageInfos())
        if (!m_wantedForms.contains(info->getName()))
            m_wantedForms.append(info->getName());
}

void MainWindow::addAllTypes()
{
    for (int row = 0; row < m_types->rowCount(); ++row)
        if (const MessageInfo* info = m_types->getMessageInfo(row))
            chooseInTree(info, true);
}

void MainWindow::removeAllTypes()
{
    for (int row = 0; row < m_types->rowCount(); ++row)
        if (const MessageInfo* info = m_types->getMessageInfo(row))
            chooseInTree(info, false);
}

void MainWindow::updateForms()
{
    QVector<const MessageInfo*> infos;
    const QModelIndexList rows = m_typeView->selectionModel()->selectedRows();
    for (const QModelIndex& index : rows) {
        const MessageInfo* info = m_types->getMessageInfo(m_sortedTypes->mapToSource(index).row());
        if (info && !infos.contains(info))
            infos.append(info);
    }
    m_forms->setMessageInfos(infos);
}

void MainWindow::updateHint()
{
    const SourceSession* const session = m_sourcePanel->getCurrent();
    const TreeFilter* const filter = m_tools->getFindBar()->getFilter();
    const bool nothingFound = filter->isActive() && filter->getErrorString().isEmpty() && filter->getMatchCount() == 0;
    m_treeHint->setVisible(m_tree->topLevelItemCount() == 0 || nothingFound);
    if (m_tree->topLevelItemCount() > 0)
        m_treeHint->setText(tr("Nothing matches what is searched for; Esc shows everything again."));
    else if (m_types->rowCount() > 0)
        m_treeHint->setText(
            tr("Tick a message type in the list to see its fields here, or add all of them from the tool bar."));
    else if (session && !session->getErrorText().isEmpty())
        m_treeHint->setText(tr("%1: %2").arg(session->getName(), session->getErrorText()));
    else if (session && session->getSource()->getPreparedPercent() >= 0)
        m_treeHint->setText(tr("Looking through %1: %2 % are done. Close the source to cancel.")
                                .arg(session->getName())
                                .arg(session->getSource()->getPreparedPercent()));
    else if (session)
        m_treeHint->setText(tr("Waiting for messages from %1 ...").arg(session->getName()));
    else
        m_treeHint->setText(tr("Open a recording (Ctrl+O), connect to a device (Ctrl+K), or drop a recording here."));
}

void MainWindow::setShowConfidential(bool show)
{
    Corvel::setConfidentialInformationDisplayEnabled(show);
    m_tools->followConfidentiality();
}

void MainWindow::warnOfConfidential(bool shown)
{
    if (!shown)
        return;
    QMessageBox* const box =
        new QMessageBox(QMessageBox::Warning, windowTitle(), PreferencesDialog::getConfidentialWarning(),
                        QMessageBox::Ok | QMessageBox::Cancel, this);
    box->setAttribute(Qt::WA_DeleteOnClose);
    connect(box, &QDialog::rejected, m_confidential, [this]() { m_confidential->setChecked(false); });
    box->open();
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
