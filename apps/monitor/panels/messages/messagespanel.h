#ifndef MESSAGESPANEL_H
#define MESSAGESPANEL_H

#include "messagetap.h"
#include "panel.h"
#include "subject.h"

#include <QSet>
#include <QTimer>
#include <QWidget>

class EmptyHint;
class MessageHistory;
class MessageList;
class QAction;
class QLabel;
class QTableView;
class QToolButton;

/**
 * The last messages of the types that are chosen in the list of types, every single one of them.
 *
 * It notes them while it can be seen, reads out of recordings what came before, and stands still while a message is
 * chosen in it, somebody looks back, or the views are paused.
 */
class MessagesPanel : public QWidget, public Panel
{
    Q_OBJECT

public:
    explicit MessagesPanel(Desk* desk, QWidget* parent = nullptr);

    QTableView* getView() const { return m_view; }
    /** What is said of the list below it; empty while there is nothing to say. */
    QString getNote() const;

    QWidget* getWidget() override { return this; }
    void saveSettings(QSettings& settings) override;
    void restoreSettings(QSettings& settings) override;
    void followPreferences(const Preferences& preferences) override;
    void setViewsPaused(bool paused) override;
    void renew() override;

    /** Shows what came, when it is to be shown; called by itself as often as views change. */
    void refresh();

protected:
    void contextMenuEvent(QContextMenuEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void createView();
    void createActions();
    QAction* addAction(const QString& text, const QKeySequence& key, void (MessagesPanel::*slot)());
    bool isWanted(const MessageInfo* info, const QString& sender) const;
    void followChosen();
    void listen();
    void read();
    void takeRead();
    void startWithNewest();
    void chooseCurrent();
    void followNewest();
    void setHeld(bool held);
    int getCurrentRow() const;
    void copy(const QString& text);
    void copyJson();
    void copyBytes();
    void goThere();
    void showBytes();

    Desk* m_desk;
    TapListener m_listener;
    MessageList* m_list;
    MessageHistory* m_history;
    QTableView* m_view;
    EmptyHint* m_hint;
    QWidget* m_bar; // below the list, while there is something to say
    QLabel* m_note;
    QToolButton* m_newest;
    QAction* m_showBytes;
    QAction* m_copyJson;
    QAction* m_copyBytes;
    QAction* m_goThere;
    QTimer m_timer;
    bool m_isListening = false;
    QSet<Subject> m_chosen;
    QString m_chosenSender;  // the only one, or empty
    bool m_mustRead = true;  // what came before, of recordings
    bool m_isHeld = false;   // because somebody reads there
    bool m_isMoving = false; // rows go, and with them what was chosen among them
};

#endif
