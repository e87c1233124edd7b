#ifndef MAINWINDOW_H
#define MAINWINDOW_H

#include "byteinput.h"
#include "streamsource.h"

#include <QElapsedTimer>
#include <QMainWindow>
#include <QStringList>
#include <QTimer>
#include <QVector>

#include <memory>

class AbstractMessageTreeWidgetItem;
class FieldInfo;
class FormPanel;
class LatestMessageSource;
class MavlinkDialect;
class MessageTreeWidget;
class MessageTreeWidgetItem;
class MessageTypeModel;
class QComboBox;
class QLabel;
class QSortFilterProxyModel;
class QTreeView;
class ValueBar;

/** The monitor's window: the types received, the message tree, forms and picked values of one input at a time. */
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit MainWindow(QWidget* parent = nullptr);
    ~MainWindow() override;

    /** Uses the definition file @p path from the next input on; @p annotations may be empty. False after showing why
     * not. */
    bool loadDialect(const QString& path, const QString& annotations);

    void setPlayback(const StreamSource::Playback& playback) { m_playback = playback; }

    /** Opens @p address in place of what is open. False after showing why not. */
    bool openAddress(const QString& address);
    /** Shows a simulated vehicle, in place of what is open. */
    void openSimulation();

    /** Types, and fields as "TYPE.FIELD", to be shown as forms and as large values once they are received. */
    void showWhenSeen(const QStringList& forms, const QStringList& values);

    MessageTreeWidget* getTree() const { return m_tree; }
    const StreamSource* getSource() const { return m_source.get(); }
    /** What the status bar says of the last problem; empty when there was none. */
    QString getLastProblem() const { return m_lastProblem; }

protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void createTree();
    void createTypeList();
    void createDocks();
    void createActions();
    void createStatusBar();

    void openFile();
    void askAddress(const QString& title, const QString& label, const QString& suggestion);
    void askDialect();
    void showError(const QString& text);
    void startSource(ByteInput* input, StreamDecoder* decoder, const QString& name);
    void closeSource();

    void refresh();
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
    ValueBar* m_values;
    QAction* m_addAutomatically;
    QComboBox* m_senders;
    QLabel* m_inputStatus;
    QLabel* m_rateStatus;
    QLabel* m_problemStatus;
    QTimer m_refreshTimer;
    QElapsedTimer m_sinceRate;
    quint64 m_lastMessages = 0;
    quint64 m_lastBytes = 0;

    const MavlinkDialect* m_dialect; ///< for the next input
    std::unique_ptr<StreamSource> m_source;
    StreamSource::Playback m_playback;
    QString m_inputName;
    QString m_lastProblem;
    quint64 m_problems = 0;
    QStringList m_wantedForms;
    QStringList m_wantedValues;
};

#endif
