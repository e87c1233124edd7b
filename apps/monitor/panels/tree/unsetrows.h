#ifndef UNSETROWS_H
#define UNSETROWS_H

#include <QHash>
#include <QObject>
#include <QStringList>

class LatestMessageSource;
class Message;
class MessageInfo;
class QSettings;
class QTreeWidgetItem;
class ReadingTree;
class TreeFilter;
class TreeRows;

/**
 * Takes rows out of sight that have nothing to say: what is seldom in messages while it is not there, sub-messages that
 * are absent, which are folded, and if that is wanted every field that is not set. Small vectors start folded, as they
 * are read in one line then.
 *
 * While something is looked for, that alone decides which rows can be seen.
 */
class UnsetRows : public QObject
{
    Q_OBJECT

public:
    /** All borrowed. @p rows has to be connected to @p latest before. */
    UnsetRows(ReadingTree* tree, TreeRows* rows, const TreeFilter* filter, LatestMessageSource* latest,
              QObject* parent);

    /** Whether fields that are not set have no rows that can be seen. */
    void setHidden(bool hidden);
    bool isHidden() const { return m_isHidden; }

    /** Looks at all rows that are unfolded. */
    void followAll();

    void saveSettings(QSettings& settings) const;
    /** To be called before rows are made. */
    void restoreSettings(QSettings& settings);

private Q_SLOTS:
    void processMessage(const Message* message);

private:
    void follow(QTreeWidgetItem* item);
    void followRow(QTreeWidgetItem* item);
    void noteVector(QTreeWidgetItem* item);
    bool isConcerned(const MessageInfo* info);

    ReadingTree* m_tree;
    TreeRows* m_rows;
    const TreeFilter* m_filter;
    bool m_isHidden = false;
    QHash<const MessageInfo*, bool> m_concerned; // whether some of its rows may be hidden or folded
    QHash<const MessageInfo*, bool> m_vectors;   // those that were met, and whether they are to be unfolded
    QStringList m_unfolded;                      // vectors that the user had unfolded
};

#endif
