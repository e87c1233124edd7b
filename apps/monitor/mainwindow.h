#ifndef MAINWINDOW_H
#define MAINWINDOW_H

#include "byteinput.h"
#include "eventlog.h"
#include "messagestatisticscoordinator.h"
#include "streamsource.h"

#include <QElapsedTimer>
#include <QMainWindow>
#include <QStringList>
#include <QTimer>
#include <QVector>

#include <memory>

class EventLogTableWidget;
class FieldInfo;
class FormatInfo;
class FormPanel;
class LatestMessageSource;
class MavlinkDialect;
class MessageInfo;
class MessageStatisticsWidget;
class MessageTreeWidget;
class MessageTreeWidgetItem;
class MessageTypeModel;
class QComboBox;
class QLabel;
class QMenu;
class QSettings;
class QSortFilterProxyModel;
class QTreeView;
class ReceptionMonitor;
class WatchBar;

/** The monitor's window: one input at a time, and its types, message tree, forms, watches, statistics and events. */
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

    /** Opens @p address in place of what is open. False after showing why not. */
    bool openAddress(const QString& address);
    /** Shows a simulated vehicle, in place of what is open. */
    void openSimulation();

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
    const LatestMessageSource* getLatestMessages() const { return m_latest; }
    const StreamSource* getSource() const { return m_source.get(); }
    /** What the status bar says of the last problem; empty when there was none. */
    QString getLastProblem() const { return m_lastProblem; }

    /** Says something that went wrong in a box that does not block, and in the status bar. */
    void showError(const QString& text);

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
    void createStatusBar();

    void openFile();
    void askAddress(const QString& title, const QString& label, const QString& suggestion);
    void askDialect();
    bool annotate(const QString& path, FormatInfo* format);
    void saveEvents();
    void rememberFile(const QString& path);
    void fillRecentFiles();
    void startSource(ByteInput* input, StreamDecoder* decoder, const QString& name);
    void closeSource();

    void refresh();
    void arrangeDocks();
    void followVisibility();
    void updateStatus();
    void noteProblem(const QString& text);
    void processTypeSeen(const MessageInfo* info);
    void setInTree(const MessageInfo* info, bool inTree);
    void addAllTypes();
    void removeAllTypes();
    MessageTreeWidgetItem* findRow(const MessageInfo* info) const;
    void updateForms();
    void updateSenders();
    void updateHint();
    void showTreeMenu(const QPoint& position);
    void setShowConfidential(bool show);
    const FieldInfo* currentField() const;

    MessageTreeWidget* m_tree;
    QLabel* m_treeHint;
    QTreeView* m_typeView;
    MessageTypeModel* m_types;
    QSortFilterProxyModel* m_sortedTypes;
    LatestMessageSource* m_latest;
    FormPanel* m_forms;
    WatchBar* m_watches;
    MessageStatisticsWidget* m_statistics;
    EventLogTableWidget* m_events;
    QAction* m_addAutomatically;
    QAction* m_virtualFields;
    QAction* m_primaryOnly;
    QMenu* m_recentMenu;
    QComboBox* m_senders;
    QLabel* m_inputStatus;
    QLabel* m_rateStatus;
    QLabel* m_problemStatus;
    QTimer m_refreshTimer;
    QElapsedTimer m_sinceRate;
    quint64 m_lastMessages = 0;
    quint64 m_lastBytes = 0;

    const MavlinkDialect* m_dialect; ///< for the next input
    MessageStatisticsCoordinator m_coordinator;
    EventLog m_log;
    std::unique_ptr<StreamSource> m_source;
    std::unique_ptr<ReceptionMonitor> m_reception; // follows m_source, and goes first
    std::unique_ptr<QSettings> m_settings;
    QString m_dialectPath; // empty for the built-in definitions
    QStringList m_recentFiles;
    StreamSource::Playback m_playback;
    QString m_inputName;
    QString m_lastProblem;
    quint64 m_problems = 0;
    bool m_arranged = false; // docks have sizes, their first or restored ones
    QStringList m_wantedForms;
};

#endif
