#ifndef PINNEDTYPES_H
#define PINNEDTYPES_H

#include <QObject>
#include <QStringList>

class MessageInfo;
class MessageTreeWidget;
class MessageTreeWidgetItem;
class QSettings;
class QTreeWidgetItem;

/** The message types that stay on top of the message tree; all rows stand in the order of their names. */
class PinnedTypes : public QObject
{
    Q_OBJECT

public:
    /** @param tree  borrowed */
    explicit PinnedTypes(MessageTreeWidget* tree, QObject* parent = nullptr);

    /** A path expression that names the type, also in the next run. */
    static QString getName(const MessageInfo* info);

    bool isPinned(const MessageInfo* info) const;
    /** Pins the type, and moves its row, if it has one, to its place. */
    void setPinned(const MessageInfo* info, bool pinned);

    /** The place among the rows of the tree at which a row of the type belongs. */
    int placeFor(const MessageInfo* info) const;

    /** Draws the marks anew, in the tree's colours. */
    void followPalette();

    void saveSettings(QSettings& settings) const;
    /** To be called before rows are made. */
    void restoreSettings(QSettings& settings);

private:
    void processRows(const QModelIndex& parent, int first, int last);
    void mark(MessageTreeWidgetItem* row);

    MessageTreeWidget* m_tree;
    QStringList m_pinned; // getName() of each
};

#endif
