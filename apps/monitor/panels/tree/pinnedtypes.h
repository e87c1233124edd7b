#ifndef PINNEDTYPES_H
#define PINNEDTYPES_H

#include "subject.h"

#include <QIcon>
#include <QStringList>

class MessageTreeWidget;
class QSettings;
class QTreeWidgetItem;

/** The message types and senders that stay on top of the message tree. */
class PinnedTypes
{
public:
    /** @param tree  borrowed */
    explicit PinnedTypes(MessageTreeWidget* tree);

    /** A name that lasts: a path expression that names the type, and its sender behind it, if there is one. */
    static QString getName(const Subject& subject);
    /** Whether such a name is of this sender. */
    static bool isOf(const QString& name, const QString& sender);
    /** Such a name, with another sender. */
    static QString rename(const QString& name, const QString& sender);

    /** Whether it is pinned, or its type is, whoever sends it. */
    bool isPinned(const Subject& subject) const;
    void setPinned(const Subject& subject, bool pinned);
    void renameSender(const QString& before, const QString& now);

    /** Shows a row as pinned, or not, in the tree's colours. */
    void mark(QTreeWidgetItem* row, bool pinned);
    /** The palette is another one now. */
    void followPalette() { m_icon = QIcon(); }

    void saveSettings(QSettings& settings) const;
    /** To be called before rows are made. */
    void restoreSettings(QSettings& settings);

private:
    MessageTreeWidget* m_tree;
    QStringList m_pinned; // getName() of each
    QIcon m_icon;
};

#endif
