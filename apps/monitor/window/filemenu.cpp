#include "filemenu.h"

#include "connectdialog.h"
#include "desk.h"
#include "filefilters.h"
#include "opener.h"
#include "outputkind.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QFileDialog>
#include <QSettings>

static const char RecentKey[] = "recentFiles";
static const int MostRecent = 10;
static const int SaidMilliseconds = 5000;

FileMenu::FileMenu(Desk* desk, Opener* opener, QWidget* window)
    : QMenu(tr("&File"), window)
    , m_desk(desk)
    , m_opener(opener)
{
    addAction(tr("&Open Recording..."), this, &FileMenu::openRecordings)->setShortcut(QKeySequence::Open);
    addAction(tr("Open &Folder..."), this, &FileMenu::openFolder);
    m_recentMenu = addMenu(tr("Open &Recent"));
    connect(m_recentMenu, &QMenu::aboutToShow, this, &FileMenu::fillRecent);
    addAction(tr("Co&nnect..."), this, &FileMenu::connectSource)->setShortcut(QKeySequence(tr("Ctrl+K")));
    for (const Demonstration& each : Demonstration::getAll())
        addAction(QCoreApplication::translate("Demonstration", each.menuText), opener,
                  [opener, &each]() { opener->openSimulation(false, &each); });
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
    connect(opener, &Opener::opened, this, &FileMenu::remember);
    connect(desk, &Desk::connectRequested, this, &FileMenu::connectSource);
    connect(desk, &Desk::recordRequested, this, &FileMenu::record);
    connect(desk, &Desk::chosenSourceChanged, this, &FileMenu::refresh);
}

void FileMenu::refresh()
{
    const SourceSession* const session = m_desk->getChosenSource();
    m_record->setEnabled(session && !session->getRecorder().isRecording());
    m_stopRecording->setEnabled(session && session->getRecorder().isRecording());
    m_closeSource->setEnabled(session);
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

void FileMenu::remember(const SourceSession* session)
{
    if (session->getPath().isEmpty())
        return;
    m_recent.removeAll(session->getPath());
    m_recent.prepend(session->getPath());
    while (m_recent.size() > MostRecent)
        m_recent.removeLast();
}

void FileMenu::fillRecent()
{
    m_recentMenu->clear();
    for (const QString& path : std::as_const(m_recent))
        m_recentMenu->addAction(path, this, [this, path]() { m_opener->openAll({path}); });
    if (m_recent.isEmpty())
        m_recentMenu->addAction(tr("No recordings yet"))->setEnabled(false);
}

void FileMenu::connectSource()
{
    ConnectDialog dialog(
        m_desk->getFactory(),
        [this](const SourceOptions& options, QString* error) { return m_opener->open(options, error) != nullptr; },
        parentWidget());
    if (!m_lastOptions.isSimulation())
        dialog.setOptions(m_lastOptions);
    if (dialog.exec() == QDialog::Accepted)
        m_lastOptions = dialog.getOptions();
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
    if (!path.isEmpty() && !m_desk->getSources()->startRecording(session, path, &error))
        Q_EMIT m_desk->failed(error);
}

void FileMenu::askDefinitions()
{
    const QString path =
        QFileDialog::getOpenFileName(parentWidget(), tr("Load Definitions"), QString(),
                                     FileFilters::definitions(*m_desk->getFactory()->getDefinitions()));
    if (!path.isEmpty() && m_opener->loadDialect(path, QString()))
        Q_EMIT m_desk->said(tr("The definitions are used from here on, also for what is open."), SaidMilliseconds);
}

void FileMenu::saveSettings(QSettings& settings) const
{
    settings.setValue(QLatin1String(RecentKey), m_recent);
}

void FileMenu::restoreSettings(QSettings& settings)
{
    m_recent = settings.value(QLatin1String(RecentKey)).toStringList();
}
