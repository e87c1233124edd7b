#include "messagetreewidgetitem.h"

#include "diagnostics.h"
#include "fieldinfo.h"
#include "message.h"
#include "messageinfo.h"
#include "repeatedfieldtreewidgetitem.h"
#include "singlesubmessagefieldtreewidgetitem.h"
#include "singlevaluefieldtreewidgetitem.h"
#include "stringfieldtreewidgetitem.h"

#include <QFont>

CORVEL_DIAGNOSTICS("MessageTreeWidgetItem");

// The types whose field rows are being created, outermost first.
static QVector<const MessageInfo*> s_infosInCreation;

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
    setDisplayedMessage(nullptr);
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
    if (info == m_messageInfo)
        return;
    setDisplayedMessage(nullptr);
    m_messageInfo = info;
    forgetPlaceInTree(); // the tree remembers which types its rows wait for
    m_messageNeed.setMessageNeeded(info);
    deleteAllChildItems();
    // A type can contain itself: below a row of the same type, rows are created only when there is something to show.
    if (info && !isInsideOwnType())
        createChildItems();
    setNameText();
    setValueText();
    setRawValueText();
}

void MessageTreeWidgetItem::displayMessage(const Message* message)
{
    CORVEL_DEBUG_HOOK();
    if (!message)
        setMessageInfo(nullptr);
    else if (message->getInfo() != m_messageInfo)
        setMessageInfo(message->getInfo());
    if (message && childCount() == 0 && isInsideOwnType())
        createChildItems();
    setDisplayedMessage(message);
    setValueText();
    setRawValueText();
    // A hash has no order of its own, so that any is its order: that of the fields is the one in which the rows lie in
    // memory, and with many types the time goes into waiting for memory.
    Q_FOREACH (AbstractFieldTreeWidgetItem* row, m_childRowsInOrder)
        row->processMessage(message);
}

void MessageTreeWidgetItem::clearValues()
{
    CORVEL_DEBUG_HOOK();
    setDisplayedMessage(nullptr);
    setValueText();
    setRawValueText();
    Q_FOREACH (AbstractFieldTreeWidgetItem* row, m_childRows)
        row->clearValues();
}

void MessageTreeWidgetItem::processMessage(const Message* message)
{
    CORVEL_DEBUG_HOOK();
    if (!message)
        clearValues();
    else if (message->getInfo() == m_messageInfo)
        displayMessage(message);
}

void MessageTreeWidgetItem::configureInTreeWidget()
{
    CORVEL_DEBUG_HOOK();
    const MessageInfo* info = m_messageInfo;
    if (info && info->isMain()) {
        const Message* message = m_displayedMessage;
        if (message)
            message->addReference();
        setMessageInfo(nullptr);
        setMessageInfo(info);
        if (message) {
            displayMessage(message);
            message->removeReference();
        }
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
    if (!m_messageInfo)
        return;
    bool someFieldHidden = false;
    s_infosInCreation.append(m_messageInfo);
    Q_FOREACH (const FieldInfo* field, m_messageInfo->getFieldInfos()) {
        if (!mustShowField(field)) {
            if (field && field->isConfidential())
                someFieldHidden = true;
            continue;
        }
        if (field->getParentFieldInfo())
            continue;
        AbstractFieldTreeWidgetItem* row = createFieldRow(field);
        if (field->isVirtual())
            setNameItalic(row);
        addChild(row);
        m_childRows.insert(field, row);
        m_childRowsInOrder.append(row);
        if (treeWidget())
            row->configureInTreeWidget();
    }
    s_infosInCreation.pop_back();
    if (someFieldHidden)
        showConfidentialityMessage();
    else
        hideConfidentialityMessage();
}

void MessageTreeWidgetItem::deleteAllChildItems()
{
    CORVEL_DEBUG_HOOK();
    MessageTreeWidget* tree = getMessageTreeWidget();
    if (tree)
        tree->deleteRows(takeChildren());
    else
        qDeleteAll(takeChildren());
    m_childRows = QHash<const FieldInfo*, AbstractFieldTreeWidgetItem*>();
    m_childRowsInOrder.clear();
    m_confidentialityRow = nullptr;
}

void MessageTreeWidgetItem::showConfidentialityMessage()
{
    CORVEL_DEBUG_HOOK();
    if (m_confidentialityRow)
        return;
    m_confidentialityRow = new QTreeWidgetItem;
    MessageTreeWidget* tree = getMessageTreeWidget();
    const int column = tree ? tree->getColumnIndex(MessageTreeWidget::NameColumn) : -1;
    if (column >= 0) {
        m_confidentialityRow->setData(column, Qt::DisplayRole, tr("Hidden data"));
        m_confidentialityRow->setData(column, Qt::ToolTipRole,
                                      tr("Due to confidentiality, the data in this message has been (partly) hidden."));
    }
    insertChild(0, m_confidentialityRow);
}

void MessageTreeWidgetItem::hideConfidentialityMessage()
{
    CORVEL_DEBUG_HOOK();
    delete m_confidentialityRow;
    m_confidentialityRow = nullptr;
}

AbstractFieldTreeWidgetItem* MessageTreeWidgetItem::createFieldRow(const FieldInfo* field)
{
    CORVEL_DEBUG_HOOK();
    MessageTreeWidget* tree = getMessageTreeWidget();
    if (!field->isRepeated()) {
        if (field->getType().getTypeCode() == FieldType::SubMessageType)
            return new SingleSubMessageFieldTreeWidgetItem(tree, field, 0);
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

bool MessageTreeWidgetItem::isInsideOwnType() const
{
    CORVEL_DEBUG_HOOK();
    if (s_infosInCreation.contains(m_messageInfo))
        return true;
    if (!dynamic_cast<const AbstractFieldTreeWidgetItem*>(this))
        return false;
    for (const QTreeWidgetItem* item = QTreeWidgetItem::parent(); item; item = item->parent()) {
        const MessageTreeWidgetItem* row = dynamic_cast<const MessageTreeWidgetItem*>(item);
        if (row && row->m_messageInfo == m_messageInfo)
            return true;
    }
    return false;
}
