#ifndef TREEROWS_H
#define TREEROWS_H

#include <QHash>
#include <QObject>

class Desk;
class MessageInfo;
class MessageTreeWidget;
class MessageTreeWidgetItem;
class PinnedTypes;
class QSettings;

/** Which message types have rows in the tree: those that come, and those that the user ticks. */
class TreeRows : public QObject
{
    Q_OBJECT

public:
    /** All borrowed. */
    TreeRows(MessageTreeWidget* tree, PinnedTypes* pins, Desk* desk, QObject* parent = nullptr);

    /** Whether types get a row when they come, unless the user once took it away. */
    void setAddAutomatically(bool automatically) { m_addAutomatically = automatically; }
    bool mustAddAutomatically() const { return m_addAutomatically; }

    /** Gives all types a row that came, or takes all rows away, as the user's choice. */
    void chooseAll(bool inTree);
    /** Empties the row of a type. */
    void forget(const MessageInfo* info);

    void saveSettings(QSettings& settings) const;
    void restoreSettings(QSettings& settings);

Q_SIGNALS:
    void changed();

private:
    void set(const MessageInfo* info, bool inTree);
    void choose(const MessageInfo* info, bool inTree);
    void processTypeSeen(const MessageInfo* info);
    MessageTreeWidgetItem* find(const MessageInfo* info) const;

    MessageTreeWidget* m_tree;
    PinnedTypes* m_pins;
    Desk* m_desk;
    bool m_addAutomatically = true;
    QHash<QString, bool> m_choices; // by the names of types: whether the user wants them in the tree
};

#endif
