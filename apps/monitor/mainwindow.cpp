#include "mainwindow.h"

#include "annotations.h"
#include "corvel.h"
#include "detectingdecoder.h"
#include "fieldinfo.h"
#include "formatregistry.h"
#include "formpanel.h"
#include "latestmessagesource.h"
#include "mavlinkdialect.h"
#include "mavlinkstreamdecoder.h"
#include "messageinfo.h"
#include "messagestatisticswidget.h"
#include "messagetreewidget.h"
#include "messagetreewidgetitem.h"
#include "messagetypemodel.h"
#include "receptionmonitor.h"
#include "simulatorinput.h"
#include "watchbar.h"

#include <QAction>
#include <QComboBox>
#include <QDockWidget>
#include <QDragEnterEvent>
#include <QFile>
#include <QFileInfo>
#include <QHeaderView>
#include <QLabel>
#include <QLocale>
#include <QMessageBox>
#include <QMimeData>
#include <QSettings>
#include <QSortFilterProxyModel>
#include <QStatusBar>
#include <QTreeView>

#include <memory>
#include <vector>

static const int RefreshMilliseconds = 250;
static const int HeadBytes = 4096;

// Dialects stay for as long as the program: trees remember by their types' addresses what was expanded.
static std::vector<std::unique_ptr<MavlinkDialect>>& dialects()
{
    static std::vector<std::unique_ptr<MavlinkDialect>> loaded;
    return loaded;
}

MainWindow::MainWindow(QWidget* parent)
    : QMainWindow(parent)
    , m_types(new MessageTypeModel(this))
    , m_latest(new LatestMessageSource(this))
{
    if (dialects().empty())
        dialects().emplace_back(MavlinkDialect::loadBuiltIn());
    m_dialect = dialects().front().get();
    FormatRegistry::getInstance()->addFormat(m_dialect);
    setAcceptDrops(true);
    setWindowTitle(tr("Corvel Monitor"));
    createTree();
    createTypeList();
    createDocks();
    createStatusBar();
    createActions();
    connect(m_types, &MessageTypeModel::typeSeen, this, &MainWindow::processTypeSeen);
    connect(m_types, &MessageTypeModel::inTreeRequested, this, &MainWindow::setInTree);
    m_refreshTimer.setInterval(RefreshMilliseconds);
    connect(&m_refreshTimer, &QTimer::timeout, this, &MainWindow::refresh);
    resize(1280, 800);
}

MainWindow::~MainWindow()
{
    closeSource();
    FormatRegistry::getInstance()->removeFormat(m_dialect);
}

bool MainWindow::loadDialect(const QString& path, const QString& annotations)
{
    QStringList errors;
    std::unique_ptr<MavlinkDialect> dialect(MavlinkDialect::load(path, &errors));
    if (!dialect) {
        showError(tr("The definitions could not be loaded.") + QLatin1String("\n\n") + errors.join(QLatin1Char('\n')));
        return false;
    }
    QString annotationPath = annotations;
    if (annotationPath.isEmpty() && QFile::exists(Annotations::pathBeside(path)))
        annotationPath = Annotations::pathBeside(path);
    if (!annotationPath.isEmpty())
        annotate(annotationPath, dialect.get());
    // Only the definitions in use are known by name: of two of a kind, every name would be ambiguous.
    FormatRegistry::getInstance()->removeFormat(m_dialect);
    m_dialect = dialect.get();
    m_dialectPath = path;
    dialects().push_back(std::move(dialect));
    FormatRegistry::getInstance()->addFormat(m_dialect);
    return true;
}

bool MainWindow::loadAnnotations(const QString& path)
{
    // The definitions are this program's own; that they are const elsewhere keeps views from changing them.
    const bool faultless = annotate(path, const_cast<MavlinkDialect*>(m_dialect));
    FormatRegistry::getInstance()->updateFormat(m_dialect);
    return faultless;
}

bool MainWindow::annotate(const QString& path, FormatInfo* format)
{
    QStringList errors;
    if (Annotations::apply(path, format, &errors))
        return true;
    showError(tr("The annotations have faults; the rest of them is used.") + QLatin1String("\n\n") +
              errors.join(QLatin1Char('\n')));
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

bool MainWindow::openAddress(const QString& text)
{
    InputAddress address;
    QString error;
    if (!InputAddress::parse(text, &address, &error)) {
        showError(error);
        return false;
    }
    MavlinkStreamDecoder::Layout layout = MavlinkStreamDecoder::RawLayout;
    if (address.kind == InputAddress::File) {
        QFile file(address.path);
        if (!file.open(QIODevice::ReadOnly)) {
            showError(tr("%1 cannot be opened: %2").arg(address.path, file.errorString()));
            return false;
        }
        if (!MavlinkStreamDecoder::detectLayout(file.read(HeadBytes), &layout)) {
            showError(tr("%1 is no recording that this program knows: no MAVLink frames were found at its beginning.")
                          .arg(address.path));
            return false;
        }
    }
    const QString name = address.kind == InputAddress::File ? QFileInfo(address.path).fileName() : address.toString();
    if (address.kind == InputAddress::File)
        rememberFile(QFileInfo(address.path).absoluteFilePath());
    StreamDecoder* decoder = nullptr;
    if (address.kind == InputAddress::StandardInput)
        decoder = new DetectingDecoder(m_dialect);
    else
        decoder = new MavlinkStreamDecoder(m_dialect, layout);
    startSource(ByteInput::create(address), decoder, name);
    return true;
}

void MainWindow::openSimulation()
{
    startSource(new SimulatorInput, new MavlinkStreamDecoder(m_dialect, MavlinkStreamDecoder::RawLayout),
                tr("simulated vehicle"));
}

void MainWindow::startSource(ByteInput* input, StreamDecoder* decoder, const QString& name)
{
    closeSource();
    m_source.reset(new StreamSource(input, decoder));
    m_source->setPlayback(m_playback);
    m_inputName = name;
    m_problems = 0;
    m_lastProblem.clear();
    m_lastMessages = m_lastBytes = 0;
    m_sinceRate.start();
    m_rateStatus->clear();
    m_latest->setFormat(m_source->getFormatInfo());
    // Rows of the dialect that is in use stay, with their last values; those of another can never change again.
    for (int i = m_tree->topLevelItemCount() - 1; i >= 0; --i) {
        MessageTreeWidgetItem* row = dynamic_cast<MessageTreeWidgetItem*>(m_tree->topLevelItem(i));
        if (row && row->getMessageInfo() && row->getMessageInfo()->getFormatInfo() != m_source->getFormatInfo())
            setInTree(row->getMessageInfo(), false);
    }
    m_types->setSource(m_source.get());
    m_reception.reset(new ReceptionMonitor(&m_coordinator, &m_log));
    m_reception->follow(m_source.get(), name);
    connect(m_source.get(), &MessageSource::newMessage, m_latest, &LatestMessageSource::processMessage);
    connect(m_source.get(), &StreamSource::problem, this, &MainWindow::noteProblem);
    connect(m_source.get(), &StreamSource::stateChanged, this, &MainWindow::refresh);
    m_source->start();
    setWindowTitle(tr("%1 – Corvel Monitor").arg(name));
    refresh();
}

void MainWindow::closeSource()
{
    m_types->setSource(nullptr);
    m_reception.reset();
    m_source.reset();
    m_coordinator.clear();
    m_statistics->updateTree(); // while there is nothing, so that no row takes new statistics for its own
    while (m_senders->count() > 1)
        m_senders->removeItem(1);
}

// Views are brought up to date only while somebody can see them; what arrives is counted all the same.
void MainWindow::followVisibility()
{
    if (isVisible() && !isMinimized()) {
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
    resizeDocks({docks.value(QLatin1String("types")), docks.value(QLatin1String("forms"))}, {340, 300}, Qt::Horizontal);
    resizeDocks({docks.value(QLatin1String("statistics"))}, {190}, Qt::Vertical);
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
    m_types->refresh();
    if (m_reception)
        m_reception->refresh();
    if (m_statistics->isVisible())
        m_statistics->updateTree();
    updateSenders();
    updateStatus();
    updateHint();
}

void MainWindow::noteProblem(const QString& text)
{
    ++m_problems;
    m_lastProblem = text;
    m_problemStatus->setText(text.section(QLatin1Char('\n'), 0, 0));
    m_problemStatus->setToolTip(text);
}

void MainWindow::updateStatus()
{
    if (!m_source) {
        m_inputStatus->setText(tr("Nothing is open"));
        return;
    }
    QString state;
    switch (m_source->getState()) {
    case StreamSource::Idle:
    case StreamSource::Opening:
        state = tr("opening");
        break;
    case StreamSource::Running:
        state = tr("receiving");
        break;
    case StreamSource::Finished:
        state = tr("ended");
        break;
    case StreamSource::Failed:
        state = tr("failed: %1").arg(m_source->getErrorString());
        break;
    }
    m_inputStatus->setText(tr("%1: %2").arg(m_inputName, state));
    const ReceptionCounters& counters = m_source->getCounters();
    if (m_sinceRate.elapsed() < 1000)
        return;
    const double seconds = double(m_sinceRate.restart()) / 1000;
    const quint64 messages = counters.getMessageCount() + counters.getUnknownCount();
    QLocale locale;
    m_rateStatus->setText(
        tr("%1 messages   %2 /s   %3 kB/s   %4 checksum failures")
            .arg(locale.toString(messages))
            .arg(locale.toString(double(messages - m_lastMessages) / seconds, 'f', 0))
            .arg(locale.toString(double(counters.getByteCount() - m_lastBytes) / seconds / 1000, 'f', 1))
            .arg(locale.toString(counters.getChecksumFailureCount())));
    m_lastMessages = messages;
    m_lastBytes = counters.getByteCount();
}

void MainWindow::updateSenders()
{
    if (!m_source)
        return;
    for (const ReceptionCounters::Row& row : m_source->getCounters().getRows()) {
        const QString name = m_source->getSenderName(row.sender);
        if (!name.isEmpty() && m_senders->findData(name) < 0)
            m_senders->addItem(name, name);
    }
}

void MainWindow::processTypeSeen(const MessageInfo* info)
{
    if (m_addAutomatically->isChecked())
        setInTree(info, true);
    if (m_wantedForms.contains(info->getName())) {
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

void MainWindow::setInTree(const MessageInfo* info, bool inTree)
{
    MessageTreeWidgetItem* row = findRow(info);
    if (inTree && !row) {
        int place = 0; // rows stand in the order of their names
        while (place < m_tree->topLevelItemCount() && m_tree->topLevelItem(place)->text(0) < info->getName())
            ++place;
        row = new MessageTreeWidgetItem(m_tree, info);
        m_tree->insertTopLevelItem(place, row);
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

void MainWindow::addAllTypes()
{
    for (int row = 0; row < m_types->rowCount(); ++row)
        if (const MessageInfo* info = m_types->getMessageInfo(row))
            setInTree(info, true);
}

void MainWindow::removeAllTypes()
{
    for (int row = 0; row < m_types->rowCount(); ++row)
        if (const MessageInfo* info = m_types->getMessageInfo(row))
            setInTree(info, false);
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
    m_treeHint->setVisible(m_tree->topLevelItemCount() == 0);
    if (m_types->rowCount() > 0)
        m_treeHint->setText(
            tr("Tick a message type in the list to see its fields here, or add all of them from the tool bar."));
    else if (m_source && m_source->getState() == StreamSource::Failed)
        m_treeHint->setText(m_source->getErrorString());
    else if (m_source)
        m_treeHint->setText(tr("Waiting for messages from %1 ...").arg(m_inputName));
    else
        m_treeHint->setText(
            tr("Open a recording or connect to a vehicle from the File menu, or drop a recording here."));
}

void MainWindow::setShowConfidential(bool show)
{
    Corvel::setConfidentialInformationDisplayEnabled(show);
    m_tree->reconfigureTopLevelAbstractMessageTreeWidgetItems();
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event)
{
    if (event->mimeData()->hasUrls())
        event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent* event)
{
    const QList<QUrl> urls = event->mimeData()->urls();
    if (!urls.isEmpty() && urls.first().isLocalFile())
        openAddress(urls.first().toLocalFile());
}
