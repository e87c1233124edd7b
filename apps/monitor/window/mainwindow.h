#ifndef MAINWINDOW_H
#define MAINWINDOW_H

#include "eventlog.h"
#include "messagestatisticscoordinator.h"
#include "sourcefactory.h"
#include "streamsource.h"

#include <QHash>
#include <QMainWindow>
#include <QPointer>
#include <QStringList>
#include <QTimer>
#include <QVector>

#include <memory>

class EventFeed;
class EventLogTableWidget;
class FormPanel;
class LatestMessageSource;
class MessageInfo;
class MessageTap;
class MessageStatisticsWidget;
class MessageTreeWidget;
class MessageTreeWidgetItem;
class MessageTypeModel;
class PlaybackBar;
class QComboBox;
class QLabel;
class QMenu;
class QSettings;
class QSortFilterProxyModel;
class QTreeView;
class QTreeWidgetItem;
class SourceModel;
class SourcePanel;
class SourceSession;
class TreeTools;
class WatchBar;

/** The monitor's window: the sources that are open, and their types, message tree, forms, watches, statistics and
 * events. */
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit MainWindow(QWidget* parent = nullptr);
    ~MainWindow() override;

    /** Uses the definition file @p path from the next input on; @p annotations may be empty. False after showing why
     * not. */
    bool loadDialect(const QString& path, const QString& annotations);

    /** Adds the annotations in @p path to the definitions in use. False after showing what is wrong with them. */
    bool loadAnnotations(const QString& path);

    void setPlayback(const StreamSource::Playback& playback) { m_playback = playback; }

    /** What addresses are opened with that come without any of it: the schema, type and framing of @p definitions. */
    void setSourceDefinitions(const SourceOptions& definitions) { m_definitions = definitions; }

    /** Opens @p address beside what is open. False after showing why not. */
    bool openAddress(const QString& address) { return openAll(QStringList(address)); }
    /** Opens all of them, definitions among them too. False after showing in one box what could not be opened. */
    bool openAll(const QStringList& addresses);
    /** Opens what @p options describe beside what is open; null with the reason in @p error. */
    SourceSession* openSource(const SourceOptions& options, QString* error);
    /** Shows a simulated vehicle. @p untilAnother closes it as soon as another source is opened. */
    void openSimulation(bool untilAnother = false);

    /** Message types to be shown as forms once they are received. */
    void showFormsWhenSeen(const QStringList& types) { m_wantedForms = types; }

    /** Writes what should survive a restart. */
    void saveSettings(QSettings& settings);
    /** Takes over what was written; anything that is missing or makes no sense stays as it is. */
    void restoreSettings(QSettings& settings);
    /** Saves to @p settings when the window is closed; null does not. Owned from now on. */
    void setSettings(std::unique_ptr<QSettings> settings);

    MessageTreeWidget* getTree() const { return m_tree; }
    MessageStatisticsWidget* getStatistics() const { return m_statistics; }
    EventLogTableWidget* getEvents() const { return m_events; }
    WatchBar* getWatches() const { return m_watches; }
    TreeTools* getTreeTools() const { return m_tools; }
    const LatestMessageSource* getLatestMessages() const { return m_latest; }
    SourceModel* getSources() const { return m_sources; }
    /** The stream of the source that is chosen; null while none is open. */
    const StreamSource* getSource() const;
    /** What the status bar says of the last problem; empty when there was none. */
    QString getLastProblem() const { return m_lastProblem; }

    /** Lets all views stand still, or catch up; what arrives is counted and recorded all the same. */
    void setViewsPaused(bool paused);
    bool areViewsPaused() const { return m_viewsPaused; }

    /** Goes to @p time, microseconds since 1970, in the recording that has it. */
    void jumpTo(qint64 time);

    /** Says something that went wrong in a box that does not block, and in the status bar. */
    void showError(const QString& text);

Q_SIGNALS:
    void viewsPausedChanged(bool paused);

protected:
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void createTree();
    void createTypeList();
    void createDocks();
    void createFileMenu();
    void createActions();
    void createPlayback();
    void createPauseBanner();
    void createPlaybackMenu();
    void createStatusBar();

    void showAbout();
    void openFile();
    void askSource();
    void record(bool on);
    void askDialect();
    void saveEvents();
    void saveStatistics();
    void saveCsv(const QString& title, const QString& name, const QByteArray& csv);
    void rememberFile(const QString& path);
    void fillRecentFiles();
    void createSources();
    void addSession(SourceSession* session);
    void renameSender(const QString& before, const QString& now);
    SourceSession* findRecording(qint64 time) const;
    void jumpToEvent(const QModelIndex& index);
    void jumpToGap(QTreeWidgetItem* item);

    void refresh();
    void arrangeDocks();
    void followVisibility();
    void updateStatus();
    void noteProblem(const QString& text);
    void processTypeSeen(const MessageInfo* info);
    void processTypeGone(const MessageInfo* info);
    void setInTree(const MessageInfo* info, bool inTree);
    void chooseInTree(const MessageInfo* info, bool inTree);
    void rememberForms();
    void forgetInTree(const MessageInfo* info);
    void addAllTypes();
    void removeAllTypes();
    MessageTreeWidgetItem* findRow(const MessageInfo* info) const;
    void updateForms();
    void updateSenders();
    void updateHint();
    void setShowConfidential(bool show);
    void warnOfConfidential(bool shown);

    MessageTreeWidget* m_tree;
    QLabel* m_treeHint;
    QTreeView* m_typeView;
    MessageTypeModel* m_types;
    QSortFilterProxyModel* m_sortedTypes;
    LatestMessageSource* m_latest;
    MessageTap* m_tap;
    TreeTools* m_tools;
    FormPanel* m_forms;
    WatchBar* m_watches;
    MessageStatisticsWidget* m_statistics;
    EventLogTableWidget* m_events;
    QAction* m_addAutomatically;
    QAction* m_virtualFields;
    QAction* m_primaryOnly;
    QAction* m_confidential;
    QMenu* m_recentMenu;
    QAction* m_record;
    QAction* m_stopRecording;
    QAction* m_closeSource;
    QComboBox* m_senders;
    QLabel* m_inputStatus;
    QLabel* m_rateStatus;
    QLabel* m_problemStatus;
    QTimer m_refreshTimer;
    PlaybackBar* m_playbackBar;
    QAction* m_pauseViews;
    QWidget* m_pauseBanner;
    bool m_viewsPaused = false;

    SourceFactory m_factory;
    MessageStatisticsCoordinator m_coordinator;
    EventLog m_log;
    EventLog m_shownLog; // what the event table follows
    EventFeed* m_eventFeed;
    SourceModel* m_sources;
    SourcePanel* m_sourcePanel;
    QPointer<SourceSession> m_demonstration; // goes when another source comes
    std::unique_ptr<QSettings> m_settings;
    QStringList m_recentFiles;
    SourceOptions m_lastOptions; // of the dialog
    SourceOptions m_definitions; // of the command line
    StreamSource::Playback m_playback;
    QString m_lastProblem;
    bool m_arranged = false; // docks have sizes, their first or restored ones
    QStringList m_wantedForms;
    QHash<QString, bool> m_treeChoices; // by the names of types: whether the user wants them in the tree
};

#endif
