#include "filemenu.h"

#include "connectdialog.h"
#include "desk.h"
#include "filefilters.h"
#include "icons.h"
#include "opener.h"
#include "outputkind.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QFileDialog>
#include <QPointer>
#include <QSettings>
#include <QToolBar>

static const int SaidMilliseconds = 5000;

FileMenu::FileMenu(Desk* desk, Opener* opener, QWidget* window)
    : QMenu(tr("&File"), window)
    , m_desk(desk)
    , m_opener(opener)
{
    m_open = addAction(tr("&Open Recording..."), this, &FileMenu::openRecordings);
    m_open->setShortcut(QKeySequence::Open);
    m_open->setIcon(Icons::create(Icons::Open));
    m_open->setIconText(tr("Open"));
    addAction(tr("Open &Folder..."), this, &FileMenu::openFolder);
    m_recentMenu = addMenu(tr("O&pen Recent"));
    m_connect = addAction(tr("Co&nnect..."), this, [this]() { ask(m_lastOptions, QString(), nullptr); });
    m_connect->setShortcut(QKeySequence(tr("Ctrl+K")));
    m_connect->setIcon(Icons::create(Icons::Connect));
    m_connect->setIconText(tr("Connect"));
    for (const Demonstration& each : Demonstration::getAll())
        m_demonstrations.append(addAction(Icons::create(Icons::Flask, Theme::Simulated),
                                          QCoreApplication::translate("Demonstration", each.menuText), opener,
                                          [opener, &each]() { opener->openSimulation(false, &each); }));
    addSeparator();
    m_record = addAction(tr("&Record..."), this, [this]() { record(true); });
    m_record->setShortcut(QKeySequence(tr("Ctrl+R")));
    m_stopRecording = addAction(tr("S&top Recording"), this, [this]() { record(false); });
    m_closeSource =
        addAction(tr("C&lose Source"), desk, [desk]() { desk->getSources()->close(desk->getChosenSource()); });
    m_closeSource->setShortcut(QKeySequence(tr("Ctrl+W")));
    addSeparator();
    addAction(tr("Load &Definitions..."), this, &FileMenu::askDefinitions);
    addSeparator();
    connect(opener, &Opener::opened, &m_recents, &Recents::remember);
    connect(&m_recents, &Recents::changed, this, &FileMenu::fillRecent);
    fillRecent();
    connect(opener, &Opener::schemaMissing, this, [this](SourceSession* session) {
        ask(session->getOptions(),
            session->getErrorText() + QLatin1Char('\n') +
                tr("A file of definitions says what it means; choose it here."),
            session);
    });
    connect(desk, &Desk::chosenSourceChanged, this, &FileMenu::refresh);
    connect(desk, &Desk::definitionsWanted, this, &FileMenu::askDefinitions);

    m_recording = new QAction(Icons::create(Icons::Record, Theme::Bad), tr("Record"), this);
    m_recording->setCheckable(true);
    connect(m_recording, &QAction::triggered, this, [this](bool checked) {
        refresh(); // it is pressed when there is a recording, and that is still to come
        record(checked);
    });
    const auto tell = [](QAction* action, const QString& text) {
        action->setToolTip(text.arg(action->shortcut().toString(QKeySequence::NativeText)));
    };
    tell(m_open, tr("Open recordings (%1)"));
    tell(m_connect, tr("Listen to a device: UDP, TCP, a serial port, a broker (%1)"));
}

void FileMenu::addActionsTo(QToolBar* bar)
{
    bar->addActions({m_open, m_connect});
    bar->addSeparator();
    bar->addAction(m_recording);
    bar->addSeparator();
}

void FileMenu::refresh()
{
    const SourceSession* const session = m_desk->getChosenSource();
    m_record->setEnabled(session && !session->getRecorder().isRecording());
    const bool isRecording = session && session->getRecorder().isRecording();
    m_stopRecording->setEnabled(isRecording);
    m_closeSource->setEnabled(session);
    m_recording->setEnabled(session);
    m_recording->setChecked(isRecording);
    m_recording->setToolTip(isRecording ? tr("Finish the recording in %1").arg(session->getRecorder().getPath())
                                        : tr("Write down what the chosen source brings, byte for byte"));
}

void FileMenu::openRecordings()
{
    m_opener->openAll(
        QFileDialog::getOpenFileNames(parentWidget(), tr("Open Recordings"), QString(), FileFilters::recordings()));
}

void FileMenu::openFolder()
{
    const QString folder = QFileDialog::getExistingDirectory(parentWidget(), tr("Open the Folder of a Recording"));
    if (!folder.isEmpty())
        m_opener->openAll({folder});
}

void FileMenu::fillRecent()
{
    m_recentMenu->clear();
    // One of them may be what is triggered now.
    for (QList<QAction*>* const actions : {&m_recordings, &m_connections}) {
        for (QAction* const action : std::as_const(*actions))
            action->deleteLater();
        actions->clear();
    }
    const auto add = [this](const QVector<Recents::Entry>& entries, Icons::Shape shape, QList<QAction*>* actions) {
        for (const Recents::Entry& entry : entries) {
            const QString title = entry.getTitle();
            QAction* const action =
                new QAction(Icons::create(shape), QString(title).replace(QLatin1Char('&'), QLatin1String("&&")), this);
            action->setToolTip(entry.getDescription());
            connect(action, &QAction::triggered, this, [this, entry]() { openAgain(entry); });
            actions->append(action);
        }
        m_recentMenu->addActions(*actions);
    };
    add(m_recents.getRecordings(), Icons::Open, &m_recordings);
    m_recentMenu->addSeparator();
    add(m_recents.getConnections(), Icons::Connect, &m_connections);
    if (m_recordings.isEmpty() && m_connections.isEmpty())
        m_recentMenu->addAction(tr("Nothing yet"))->setEnabled(false);
}

void FileMenu::openAgain(const Recents::Entry& entry)
{
    QString error;
    if (entry.hadPassword)
        ask(entry.options, QString(), nullptr);
    else if (!m_opener->open(entry.options, &error))
        Q_EMIT m_desk->failed(error);
}

// It does not block, because a script may be what opens something.
void FileMenu::ask(const SourceOptions& options, const QString& problem, SourceSession* instead)
{
    const QPointer<SourceSession> replaced = instead;
    const auto open = [this, replaced](const SourceOptions& chosen, QString* error) {
        if (!m_opener->open(chosen, error))
            return false;
        if (replaced)
            m_desk->getSources()->close(replaced.data());
        return true;
    };
    ConnectDialog* const dialog = new ConnectDialog(m_desk->getFactory(), open, parentWidget());
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    QVector<SourceOptions> recent;
    for (const Recents::Entry& entry : m_recents.getConnections())
        recent.append(entry.options);
    dialog->offer(recent);
    if (!options.isSimulation())
        dialog->setOptions(options);
    dialog->showError(problem);
    connect(dialog, &QDialog::accepted, this, [this, dialog]() { m_lastOptions = dialog->getOptions(); });
    dialog->open();
}

void FileMenu::record(bool on)
{
    SourceSession* const session = m_desk->getChosenSource();
    if (!session)
        return;
    if (!on) {
        session->stopRecording();
        return;
    }
    const OutputKind& kind = OutputKind::findFor(session->getSource()->getDecoder());
    const QString suggestion =
        QDateTime::currentDateTime().toString(QLatin1String("yyyy-MM-dd-HHmmss.")) + QLatin1String(kind.fileEnding);
    const QString path = QFileDialog::getSaveFileName(parentWidget(), tr("Record"), suggestion, kind.getFileFilter());
    QString error;
    if (path.isEmpty())
        return;
    if (m_desk->getSources()->startRecording(session, path, &error))
        Q_EMIT m_desk->recovered();
    else
        Q_EMIT m_desk->failed(error);
}

void FileMenu::askDefinitions()
{
    const QString path =
        QFileDialog::getOpenFileName(parentWidget(), tr("Load Definitions"), QString(),
                                     FileFilters::definitions(*m_desk->getFactory()->getDefinitions()));
    if (path.isEmpty() || !m_opener->loadDialect(path, QString()))
        return;
    Q_EMIT m_desk->recovered();
    Q_EMIT m_desk->said(tr("The definitions are used from here on, also for what is open."), SaidMilliseconds);
}

void FileMenu::saveSettings(QSettings& settings) const
{
    m_recents.saveSettings(settings);
}

void FileMenu::restoreSettings(QSettings& settings)
{
    m_recents.restoreSettings(settings);
}
