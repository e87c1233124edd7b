#include "messagetreewidgetitem.h"

#include "borrowed.h"
#include "diagnostics.h"
#include "fieldinfo.h"
#include "message.h"
#include "messageinfo.h"
#include "repeatedfieldtreewidgetitem.h"
#include "rowguard.h"
#include "singlesubmessagefieldtreewidgetitem.h"
#include "singlevaluefieldtreewidgetitem.h"
#include "stringfieldtreewidgetitem.h"

#include <QFont>

CORVEL_DIAGNOSTICS("MessageTreeWidgetItem");

// Needs that are stated and withdrawn, and texts that change, are told to others, who may come back to the same row
// before it goes on. What is under way with a row is guarded by names:
//   m_messageNeed       a change of the type whose rows of fields are not made yet
//   m_childRows         the creation of the rows of fields
//   m_messageInfo       a row that is configured and shows its message again, unless somebody else showed something
//   m_displayedMessage  a message that is shown, unless a newer one, or none, was shown meanwhile
//   m_confidentialityRow  the end

namespace
{

/** A row that is being configured and has no type for a moment, with the message that it is to show afterwards. */
struct Configuration
{
    const MessageTreeWidgetItem* row;
    const MessageInfo* info;
    const Message* message; // with a reference, as its type is a main type
    Configuration* outer;
};

} // namespace

static Configuration* s_innermostConfiguration = nullptr;

/** Lets a row that has no type for a moment show @p message, or none, afterwards. */
static void showAfterConfiguration(const MessageTreeWidgetItem* row, const Message* message)
{
    CORVEL_DEBUG_HOOK();
    for (Configuration* configuration = s_innermostConfiguration; configuration; configuration = configuration->outer) {
        if (configuration->row != row || (message && message->getInfo() != configuration->info))
            continue;
        if (message)
            message->addReference();
        if (configuration->message)
            configuration->message->removeReference();
        configuration->message = message;
    }
}

MessageTreeWidgetItem::MessageTreeWidgetItem(MessageTreeWidget* treeWidget, const MessageInfo* info)
    : AbstractMessageTreeWidgetItem(treeWidget)
    , m_messageInfo(nullptr)
    , m_messageNeed(nullptr)
    , m_displayedMessage(nullptr)
    , m_confidentialityRow(nullptr)
{
    CORVEL_DEBUG_HOOK();
    CORVEL_ALLOCATED("MessageTreeWidgetItem");
    setMessageInfo(info);
    setInitialExpansionPolicy(RestoreExpansion);
}

MessageTreeWidgetItem::~MessageTreeWidgetItem()
{
    CORVEL_DEBUG_HOOK();
    CORVEL_DEALLOCATED("MessageTreeWidgetItem");
    Borrowed::leaveAll(this);
    retire();
    RowGuard::breakAll(&m_messageNeed);
    RowGuard::breakAll(&m_childRows);
    AbstractFieldTreeWidgetItem::releaseAll(&m_childRowsInOrder);
    setDisplayedMessage(nullptr);
    m_messageInfo = nullptr;
    // While the row is whole, for whoever is told of it.
    const RowGuard end(&m_confidentialityRow);
    m_messageNeed.setMessageNeeded(nullptr);
}

QString MessageTreeWidgetItem::getNameText()
{
    CORVEL_DEBUG_HOOK();
    return m_messageInfo ? m_messageInfo->getName() : tr("No message type set");
}

QString MessageTreeWidgetItem::getNameToolTip()
{
    CORVEL_DEBUG_HOOK();
    return m_messageInfo ? m_messageInfo->getShortDescriptiveText() : QString();
}

QString MessageTreeWidgetItem::getTypeText()
{
    CORVEL_DEBUG_HOOK();
    return tr("Message");
}

QString MessageTreeWidgetItem::getValueText()
{
    CORVEL_DEBUG_HOOK();
    return isMessageDisplayed() ? QString::fromLatin1("") : tr("No message");
}

const MessageInfo* MessageTreeWidgetItem::getMessageInfo() const
{
    CORVEL_DEBUG_HOOK();
    return m_messageInfo;
}

const Message* MessageTreeWidgetItem::getDisplayedMessage() const
{
    CORVEL_DEBUG_HOOK();
    return m_displayedMessage;
}

bool MessageTreeWidgetItem::isMessageDisplayed() const
{
    CORVEL_DEBUG_HOOK();
    return m_displayedMessage;
}

void MessageTreeWidgetItem::setMessageInfo(const MessageInfo* info)
{
    CORVEL_DEBUG_HOOK();
    if (info == m_messageInfo || RowGuard::isWatched(&m_confidentialityRow))
        return;
    const TreeUpdate update(getTreeAround());
    RowGuard::breakAll(&m_messageNeed);
    RowGuard::breakAll(&m_displayedMessage);
    setDisplayedMessage(nullptr);
    Borrowed::leave(m_messageInfo, this);
    m_messageInfo = info;
    if (info)
        Borrowed::watch(info, this, info->isMain() ? &letGoOfMainType : &letGoOfOtherType);
    beginType();
}

void MessageTreeWidgetItem::beginType()
{
    CORVEL_DEBUG_HOOK();
    forgetPlaceInTree(); // the tree remembers which types its rows wait for
    {
        const RowGuard change(&m_messageNeed);
        m_messageNeed.setMessageNeeded(m_messageInfo);
        if (change.isBroken())
            return;
    }
    createRowsOfType();
}

void MessageTreeWidgetItem::letGoOfMainType(void* row, const QObject*, bool show)
{
    CORVEL_DEBUG_HOOK();
    MessageTreeWidgetItem* const self = static_cast<MessageTreeWidgetItem*>(row);
    // The type cannot be asked any more whether its messages are referenced.
    if (!show && self->m_displayedMessage)
        self->m_displayedMessage->removeReference();
    self->letGo(show);
}

void MessageTreeWidgetItem::letGoOfOtherType(void* row, const QObject*, bool show)
{
    CORVEL_DEBUG_HOOK();
    static_cast<MessageTreeWidgetItem*>(row)->letGo(show);
}

void MessageTreeWidgetItem::letGo(bool show)
{
    CORVEL_DEBUG_HOOK();
    if (show) {
        const TreeUpdate update(getTreeAround());
        if (!m_messageInfo)
            beginType();
        return;
    }
    RowGuard::breakAll(&m_messageNeed);
    RowGuard::breakAll(&m_displayedMessage);
    AbstractFieldTreeWidgetItem::forgetFields(&m_childRowsInOrder);
    m_displayedMessage = nullptr;
    m_messageInfo = nullptr;
    forgetPlaceInTree();
}

void MessageTreeWidgetItem::createRowsOfType()
{
    CORVEL_DEBUG_HOOK();
    const RowGuard self(this);
    {
        const RowGuard change(&m_messageNeed);
        deleteAllChildItems();
        if (change.isBroken())
            return;
    }
    // A type can contain itself: below a row of the same type, rows are created only when there is something to show.
    if (m_messageInfo && !isInsideOwnType())
        createChildItems();
    if (!self.isBroken())
        writeTexts(NameText | ValueText | RawValueText);
}

void MessageTreeWidgetItem::displayMessage(const Message* message)
{
    CORVEL_DEBUG_HOOK();
    const TreeUpdate update(getTreeAround());
    const MessageInfo* info = message ? message->getInfo() : nullptr;
    RowGuard::breakAll(&m_messageInfo);
    RowGuard::breakAll(&m_displayedMessage);
    const RowGuard self(this);
    setMessageInfo(info);
    if (self.isBroken() || m_messageInfo != info)
        return;
    // Told of a need, somebody delivers the message for whose rows the row is just making room.
    if (RowGuard::breakAll(&m_messageNeed))
        createRowsOfType();
    else if (RowGuard::breakAll(&m_childRows) || (message && m_childRowsInOrder.isEmpty() && isInsideOwnType()))
        createChildItems();
    if (self.isBroken() || m_messageInfo != info)
        return;
    const RowGuard newest(&m_displayedMessage);
    setDisplayedMessage(message);
    // A hash has no order of its own, so that any is its order: that of the fields is the one in which the rows lie in
    // memory, and with many types the time goes into waiting for memory.
    if (writeTexts(ValueText | RawValueText) && !newest.isBroken())
        AbstractFieldTreeWidgetItem::deliver(&m_childRowsInOrder, message);
}

void MessageTreeWidgetItem::clearValues()
{
    CORVEL_DEBUG_HOOK();
    const TreeUpdate update(getTreeAround());
    RowGuard::breakAll(&m_messageInfo);
    RowGuard::breakAll(&m_displayedMessage);
    const RowGuard newest(&m_displayedMessage);
    setDisplayedMessage(nullptr);
    if (!m_messageInfo)
        showAfterConfiguration(this, nullptr);
    if (writeTexts(ValueText | RawValueText) && !newest.isBroken())
        AbstractFieldTreeWidgetItem::clearAll(&m_childRowsInOrder);
}

void MessageTreeWidgetItem::processMessage(const Message* message)
{
    CORVEL_DEBUG_HOOK();
    if (!message)
        clearValues();
    else if (message->getInfo() == m_messageInfo)
        displayMessage(message);
    else if (!m_messageInfo)
        showAfterConfiguration(this, message);
}

void MessageTreeWidgetItem::configureInTreeWidget()
{
    CORVEL_DEBUG_HOOK();
    const TreeUpdate update(getTreeAround());
    const RowGuard self(this);
    const MessageInfo* info = m_messageInfo;
    if (info && info->isMain()) {
        Configuration configuration = {this, info, m_displayedMessage, s_innermostConfiguration};
        s_innermostConfiguration = &configuration;
        if (m_displayedMessage)
            m_displayedMessage->addReference();
        setMessageInfo(nullptr);
        s_innermostConfiguration = configuration.outer;
        // Somebody who was told of a need may have given the row another type, or shown a newer message or none.
        if (!self.isBroken() && !m_messageInfo) {
            const RowGuard shown(&m_messageInfo);
            setMessageInfo(info);
            if (configuration.message && !self.isBroken() && !shown.isBroken() && m_messageInfo == info)
                displayMessage(configuration.message);
        }
        if (configuration.message)
            configuration.message->removeReference();
        if (self.isBroken())
            return;
    }
    AbstractMessageTreeWidgetItem::configureInTreeWidget();
}

void MessageTreeWidgetItem::setDisplayedMessage(const Message* message)
{
    CORVEL_DEBUG_HOOK();
    if (message == m_displayedMessage)
        return;
    // Deliberately not alike: letting go asks the row's type, taking hold asks the message's.
    if (m_messageInfo && m_messageInfo->isMain() && m_displayedMessage)
        m_displayedMessage->removeReference();
    if (message && message->getInfo()->isMain())
        message->addReference();
    m_displayedMessage = message;
}

void MessageTreeWidgetItem::createChildItems()
{
    CORVEL_DEBUG_HOOK();
    if (!m_messageInfo || !mayAddRows())
        return;
    bool someFieldHidden = false;
    // Whoever delivers a message meanwhile lets the rows that are still missing be created for it.
    RowGuard::breakAll(&m_childRows);
    const RowGuard creation(&m_childRows);
    Q_FOREACH (const FieldInfo* field, m_messageInfo->getFieldInfos()) {
        if (!mustShowField(field)) {
            if (field && field->isConfidential())
                someFieldHidden = true;
            continue;
        }
        if (field->getParentFieldInfo() || m_childRows.contains(field))
            continue;
        AbstractFieldTreeWidgetItem* row = createFieldRow(field);
        if (creation.isBroken()) {
            delete row;
            return;
        }
        if (field->isVirtual())
            setNameItalic(row);
        m_childRows.insert(field, row);
        AbstractFieldTreeWidgetItem::append(&m_childRowsInOrder, row);
        addChild(row);
        if (!creation.isBroken() && treeWidget())
            row->configureInTreeWidget();
        if (creation.isBroken())
            return;
    }
    if (someFieldHidden)
        showConfidentialityMessage();
    else
        hideConfidentialityMessage();
}

void MessageTreeWidgetItem::deleteAllChildItems()
{
    CORVEL_DEBUG_HOOK();
    RowGuard::breakAll(&m_childRows);
    AbstractFieldTreeWidgetItem::releaseAll(&m_childRowsInOrder);
    m_childRows = QHash<const FieldInfo*, AbstractFieldTreeWidgetItem*>();
    m_confidentialityRow = nullptr;
    deleteAllRows();
}

void MessageTreeWidgetItem::showConfidentialityMessage()
{
    CORVEL_DEBUG_HOOK();
    if (m_confidentialityRow && indexOfChild(m_confidentialityRow) >= 0)
        return;
    m_confidentialityRow = new QTreeWidgetItem;
    writeConfidentialityTexts(m_confidentialityRow);
    insertChild(0, m_confidentialityRow);
}

void MessageTreeWidgetItem::writeConfidentialityTexts(QTreeWidgetItem* row)
{
    CORVEL_DEBUG_HOOK();
    MessageTreeWidget* tree = getMessageTreeWidget();
    const int column = tree ? tree->getColumnIndex(MessageTreeWidget::NameColumn) : -1;
    if (column < 0)
        return;
    row->setData(column, Qt::ToolTipRole,
                 tr("Due to confidentiality, the data in this message has been (partly) hidden."));
    // Last: who is told of it may have the row deleted.
    row->setData(column, Qt::DisplayRole, tr("Hidden data"));
}

void MessageTreeWidgetItem::translateConfidentialityRow()
{
    CORVEL_DEBUG_HOOK();
    if (m_confidentialityRow && indexOfChild(m_confidentialityRow) >= 0)
        writeConfidentialityTexts(m_confidentialityRow);
}

void MessageTreeWidgetItem::hideConfidentialityMessage()
{
    CORVEL_DEBUG_HOOK();
    QTreeWidgetItem* row = m_confidentialityRow;
    m_confidentialityRow = nullptr;
    // Somebody else may have deleted it.
    if (row && indexOfChild(row) >= 0)
        deleteRows(QList<QTreeWidgetItem*>() << row);
}

AbstractFieldTreeWidgetItem* MessageTreeWidgetItem::createFieldRow(const FieldInfo* field)
{
    CORVEL_DEBUG_HOOK();
    MessageTreeWidget* tree = getMessageTreeWidget();
    if (!field->isRepeated()) {
        if (field->getType().getTypeCode() == FieldType::SubMessageType)
            return new SingleSubMessageFieldTreeWidgetItem(tree, field, 0, this);
        return new SingleValueFieldTreeWidgetItem(tree, field, 0);
    }
    if (field->isStringField())
        return new StringFieldTreeWidgetItem(tree, field);
    return new RepeatedFieldTreeWidgetItem(tree, field);
}

void MessageTreeWidgetItem::setNameItalic(QTreeWidgetItem* row)
{
    CORVEL_DEBUG_HOOK();
    MessageTreeWidget* tree = getMessageTreeWidget();
    const int column = tree ? tree->getColumnIndex(MessageTreeWidget::NameColumn) : -1;
    if (column < 0)
        return;
    const QVariant data = row->data(column, Qt::FontRole);
    QFont font;
    if (data.userType() == QMetaType::QFont)
        font = qvariant_cast<QFont>(data);
    font.setStyle(QFont::StyleItalic);
    row->setData(column, Qt::FontRole, QVariant(font));
}

/** The row above, also of a row that is not inserted yet, as its creator is still at it. */
static const QTreeWidgetItem* rowAbove(const QTreeWidgetItem* item)
{
    CORVEL_DEBUG_HOOK();
    const SingleSubMessageFieldTreeWidgetItem* row = dynamic_cast<const SingleSubMessageFieldTreeWidgetItem*>(item);
    return row ? row->getRowAbove() : item->parent();
}

bool MessageTreeWidgetItem::isInsideOwnType() const
{
    CORVEL_DEBUG_HOOK();
    if (!dynamic_cast<const AbstractFieldTreeWidgetItem*>(this))
        return false;
    for (const QTreeWidgetItem* item = rowAbove(this); item; item = rowAbove(item)) {
        const MessageTreeWidgetItem* row = dynamic_cast<const MessageTreeWidgetItem*>(item);
        if (row && row->m_messageInfo == m_messageInfo)
            return true;
    }
    return false;
}
