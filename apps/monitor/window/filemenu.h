#ifndef FILEMENU_H
#define FILEMENU_H

#include "sourcefactory.h"

#include <QMenu>
#include <QStringList>

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

    /** Adds what is used most. */
    void addActionsTo(QToolBar* bar);

    void saveSettings(QSettings& settings) const;
    void restoreSettings(QSettings& settings);

private:
    void openRecordings();
    void openFolder();
    void remember(const SourceSession* session);
    void fillRecent();
    void connectSource();
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
    QStringList m_recent;
    SourceOptions m_lastOptions; // of the dialog
};

#endif
