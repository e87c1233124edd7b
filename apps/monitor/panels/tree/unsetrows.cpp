#include "unsetrows.h"

#include "fieldinfo.h"
#include "latestmessagesource.h"
#include "message.h"
#include "messageinfo.h"
#include "pinnedtypes.h"
#include "readingtree.h"
#include "rowstate.h"
#include "subjectrow.h"
#include "treefilter.h"
#include "treerows.h"

#include <QSettings>
#include <QSignalBlocker>

static const char HiddenKey[] = "unsetHidden";
static const char UnfoldedKey[] = "vectorsUnfolded";
static const int FoldedRole = Qt::UserRole + 20; // set while a row is folded because it is absent

UnsetRows::UnsetRows(ReadingTree* tree, TreeRows* rows, const TreeFilter* filter, LatestMessageSource* latest,
                     QObject* parent)
    : QObject(parent)
    , m_tree(tree)
    , m_rows(rows)
    , m_filter(filter)
{
    connect(latest, SIGNAL(newMessage(const Message*)), this, SLOT(processMessage(const Message*)));
    connect(tree, &QTreeWidget::itemExpanded, this, [this](QTreeWidgetItem* item) {
        noteVector(item);
        if (item->isExpanded() && !m_filter->isActive())
            follow(item);
    });
    connect(tree, &QTreeWidget::itemCollapsed, this, &UnsetRows::noteVector);
    connect(filter, &TreeFilter::matchCountChanged, this, &UnsetRows::followAll);
}

void UnsetRows::setHidden(bool hidden)
{
    m_isHidden = hidden;
    m_concerned.clear();
    followAll();
}

bool UnsetRows::isConcerned(const MessageInfo* info)
{
    const auto known = m_concerned.constFind(info);
    if (known != m_concerned.constEnd())
        return *known;
    m_concerned.insert(info, false); // a type can contain itself
    bool is = m_isHidden;
    const QVector<const FieldInfo*> fields = info->getFieldInfos();
    for (int i = 0; i < fields.size() && !is; ++i) {
        const MessageInfo* const inner = fields.at(i)->getType().getSubMessageInfo();
        is = RowState::isSeldom(fields.at(i)) || (inner && (fields.at(i)->isOptional() || isConcerned(inner)));
    }
    m_concerned.insert(info, is);
    return is;
}

void UnsetRows::processMessage(const Message* message)
{
    if (m_filter->isActive() || !isConcerned(message->getInfo()))
        return;
    SubjectRow* const row = m_rows->find(m_rows->getSubject(message->getInfo(), message->getSender()));
    if (row && row->isExpanded())
        follow(row);
}

void UnsetRows::followAll()
{
    if (m_filter->isActive())
        return;
    for (const QPointer<SubjectRow>& row : m_rows->getRows())
        if (row && row->isExpanded())
            follow(row);
}

/** Looks at what can be seen below @p item. */
void UnsetRows::follow(QTreeWidgetItem* item)
{
    for (int i = 0; i < item->childCount(); ++i)
        followRow(item->child(i));
}

void UnsetRows::followRow(QTreeWidgetItem* item)
{
    const auto* const row = dynamic_cast<const AbstractMessageTreeWidgetItem*>(item);
    const FieldInfo* const field = row ? row->getFieldInfo() : nullptr;
    if (!field)
        return;
    const bool isUnset = RowState::isUnset(item);
    const bool isHidden = isUnset && (m_isHidden || RowState::isSeldom(field));
    if (item->isHidden() != isHidden)
        item->setHidden(isHidden);
    const bool isSubMessage = dynamic_cast<const MessageTreeWidgetItem*>(item) != nullptr;
    if (isSubMessage && isUnset && item->isExpanded()) {
        const QSignalBlocker blocker(m_tree); // it is no wish about rows of this type
        item->setExpanded(false);
        item->setData(0, FoldedRole, true);
    } else if (isSubMessage && !isUnset && item->data(0, FoldedRole).toBool()) {
        const QSignalBlocker blocker(m_tree);
        item->setData(0, FoldedRole, QVariant());
        item->setExpanded(true);
    }
    if (item->isExpanded())
        follow(item);
}

// The tree unfolds sub-messages unless the user folded one of their type: this does it for him, once.
void UnsetRows::noteVector(QTreeWidgetItem* item)
{
    const auto* const row = dynamic_cast<const MessageTreeWidgetItem*>(item);
    const MessageInfo* const info = row && row->getFieldInfo() ? row->getMessageInfo() : nullptr;
    if (m_vectors.contains(info)) {
        m_vectors[info] = item->isExpanded();
    } else if (!RowState::getVector(info).isEmpty()) {
        m_vectors[info] = m_unfolded.contains(PinnedTypes::getName({info, QString()}));
        if (!m_vectors.value(info))
            item->setExpanded(false);
    }
}

void UnsetRows::saveSettings(QSettings& settings) const
{
    QStringList unfolded = m_unfolded;
    for (auto vector = m_vectors.constBegin(); vector != m_vectors.constEnd(); ++vector) {
        const QString name = PinnedTypes::getName({vector.key(), QString()});
        unfolded.removeAll(name);
        if (*vector)
            unfolded.append(name);
    }
    settings.setValue(QLatin1String(HiddenKey), m_isHidden);
    settings.setValue(QLatin1String(UnfoldedKey), unfolded);
}

void UnsetRows::restoreSettings(QSettings& settings)
{
    m_unfolded = settings.value(QLatin1String(UnfoldedKey)).toStringList();
    setHidden(settings.value(QLatin1String(HiddenKey)).toBool());
}
