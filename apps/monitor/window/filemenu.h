#ifndef FILEMENU_H
#define FILEMENU_H

#include "recents.h"

#include <QMenu>

class Desk;
class Opener;
class QSettings;
class QToolBar;
class SourceSession;

/** The menu that opens, records and closes sources, and remembers recordings. */
class FileMenu : public QMenu
{
    Q_OBJECT

public:
    /** Both borrowed. */
    FileMenu(Desk* desk, Opener* opener, QWidget* window);

    /** Allows what can be done with the source that is chosen. */
    void refresh();

    QAction* getOpenAction() const { return m_open; }
    QAction* getConnectAction() const { return m_connect; }
    const QList<QAction*>& getDemonstrationActions() const { return m_demonstrations; }
    Recents* getRecents() { return &m_recents; }
    /** What opens each of them again, in their order; there until they change. */
    const QList<QAction*>& getRecordingActions() const { return m_recordings; }
    const QList<QAction*>& getConnectionActions() const { return m_connections; }

    /** Adds what is used most. */
    void addActionsTo(QToolBar* bar);

    void saveSettings(QSettings& settings) const;
    void restoreSettings(QSettings& settings);

private:
    void openRecordings();
    void openFolder();
    void fillRecent();
    void openAgain(const Recents::Entry& entry);
    void ask(const SourceOptions& options, const QString& problem, SourceSession* instead);
    void record(bool on);
    void askDefinitions();

    Desk* m_desk;
    Opener* m_opener;
    QMenu* m_recentMenu;
    QAction* m_open;
    QAction* m_connect;
    QAction* m_recording; // in the tool bar: on and off
    QAction* m_record;
    QAction* m_stopRecording;
    QAction* m_closeSource;
    QList<QAction*> m_demonstrations;
    Recents m_recents;
    QList<QAction*> m_recordings;
    QList<QAction*> m_connections;
    SourceOptions m_lastOptions; // of the dialog
};

#endif
