#include "treerows.h"

#include "desk.h"
#include "messagetreewidget.h"
#include "messagetreewidgetitem.h"
#include "pinnedtypes.h"

#include <QSettings>

TreeRows::TreeRows(MessageTreeWidget* tree, PinnedTypes* pins, Desk* desk, QObject* parent)
    : QObject(parent)
    , m_tree(tree)
    , m_pins(pins)
    , m_desk(desk)
{
    MessageTypeModel* const types = desk->getTypes();
    connect(types, &MessageTypeModel::typeSeen, this, &TreeRows::processTypeSeen);
    connect(types, &MessageTypeModel::typeGone, this, [this](const MessageInfo* info) { set(info, false); });
    connect(types, &MessageTypeModel::inTreeRequested, this, &TreeRows::choose);
}

MessageTreeWidgetItem* TreeRows::find(const MessageInfo* info) const
{
    for (int i = 0; i < m_tree->topLevelItemCount(); ++i) {
        MessageTreeWidgetItem* const row = dynamic_cast<MessageTreeWidgetItem*>(m_tree->topLevelItem(i));
        if (row && row->getMessageInfo() == info)
            return row;
    }
    return nullptr;
}

void TreeRows::forget(const MessageInfo* info)
{
    if (MessageTreeWidgetItem* const row = find(info))
        row->processMessage(nullptr);
}

void TreeRows::set(const MessageInfo* info, bool inTree)
{
    MessageTreeWidgetItem* row = find(info);
    if (inTree && !row) {
        row = new MessageTreeWidgetItem(m_tree, info);
        m_tree->insertTopLevelItem(m_pins->placeFor(info), row);
        row->configureInTreeWidget();
        const MessageReference latest = m_desk->getLatest()->getLatest(info);
        if (!latest.isNull())
            row->processMessage(latest.get());
    } else if (!inTree) {
        delete row;
    }
    m_desk->getTypes()->setInTree(info, inTree);
    Q_EMIT changed();
}

void TreeRows::processTypeSeen(const MessageInfo* info)
{
    if (m_choices.value(PinnedTypes::getName(info), m_addAutomatically))
        set(info, true);
}

// What the user chose holds over jumps, other definitions and restarts.
void TreeRows::choose(const MessageInfo* info, bool inTree)
{
    m_choices.insert(PinnedTypes::getName(info), inTree);
    set(info, inTree);
}

void TreeRows::chooseAll(bool inTree)
{
    const MessageTypeModel* const types = m_desk->getTypes();
    for (int row = 0; row < types->rowCount(); ++row)
        if (const MessageInfo* info = types->getMessageInfo(row))
            choose(info, inTree);
}

void TreeRows::saveSettings(QSettings& settings) const
{
    settings.setValue(QLatin1String("addAutomatically"), m_addAutomatically);
    settings.setValue(QLatin1String("added"), QStringList(m_choices.keys(true)));
    settings.setValue(QLatin1String("removed"), QStringList(m_choices.keys(false)));
}

void TreeRows::restoreSettings(QSettings& settings)
{
    m_addAutomatically = settings.value(QLatin1String("addAutomatically"), true).toBool();
    for (const bool isAdded : {true, false}) {
        const QStringList names = settings.value(QLatin1String(isAdded ? "added" : "removed")).toStringList();
        for (const QString& name : names)
            m_choices.insert(name, isAdded);
    }
}
