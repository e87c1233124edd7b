#include "abstractmessagetreewidgetitem.h"

#include "corvel.h"
#include "diagnostics.h"
#include "singlesubmessagefieldtreewidgetitem.h"
#include "singlevaluefieldtreewidgetitem.h"

#include <typeinfo>

CORVEL_DIAGNOSTICS("AbstractMessageTreeWidgetItem");

AbstractMessageTreeWidgetItem::AbstractMessageTreeWidgetItem(MessageTreeWidget* treeWidget)
    : QTreeWidgetItem()
    , m_messageTreeWidget(treeWidget)
{
    CORVEL_DEBUG_HOOK();
    CORVEL_ALLOCATED("AbstractMessageTreeWidgetItem");
    m_initialExpansionPolicy = CollapseInitially;
    m_ordinaryColumns = 0;
    m_writesOwnText = 0;
    m_screenNumber = 0;
    m_changedColumns = 0;
}

AbstractMessageTreeWidgetItem::~AbstractMessageTreeWidgetItem()
{
    CORVEL_DEBUG_HOOK();
    CORVEL_DEALLOCATED("AbstractMessageTreeWidgetItem");
    // Before the tree tells anybody of the removal: from here on this is no row any more.
    forgetPlaceInTree();
}

void AbstractMessageTreeWidgetItem::forgetPlaceInTree()
{
    CORVEL_DEBUG_HOOK();
    MessageTreeWidget* tree = parent() ? nullptr : dynamic_cast<MessageTreeWidget*>(treeWidget());
    if (tree)
        tree->forgetTopLevelRows();
}

QString AbstractMessageTreeWidgetItem::getNameText()
{
    CORVEL_DEBUG_HOOK();
    return QLatin1String("");
}

QString AbstractMessageTreeWidgetItem::getNameToolTip()
{
    CORVEL_DEBUG_HOOK();
    return QString();
}

QString AbstractMessageTreeWidgetItem::getTypeText()
{
    CORVEL_DEBUG_HOOK();
    return QLatin1String("");
}

QString AbstractMessageTreeWidgetItem::getValueText()
{
    CORVEL_DEBUG_HOOK();
    return QLatin1String("");
}

QString AbstractMessageTreeWidgetItem::getRawValueText()
{
    CORVEL_DEBUG_HOOK();
    return QLatin1String("");
}

void AbstractMessageTreeWidgetItem::configureInTreeWidget()
{
    CORVEL_DEBUG_HOOK();
    if (!treeWidget())
        return;
    for (int i = 0; i < childCount(); ++i) {
        if (AbstractMessageTreeWidgetItem* row = dynamic_cast<AbstractMessageTreeWidgetItem*>(child(i)))
            row->configureInTreeWidget();
    }
    setAllTexts();
    bool expanded = false;
    if (m_initialExpansionPolicy == ExpandInitially) {
        expanded = true;
    } else if (m_initialExpansionPolicy == RestoreExpansion) {
        MessageTreeWidget* tree = getMessageTreeWidget();
        expanded = tree && tree->mustInitiallyBeExpanded(this);
    }
    setExpanded(expanded);
}

static unsigned int bitOfColumn(int column)
{
    CORVEL_DEBUG_HOOK();
    return column >= 0 && column < 31 ? 1u << column : 0;
}

void AbstractMessageTreeWidgetItem::setData(int column, int role, const QVariant& value)
{
    CORVEL_DEBUG_HOOK();
    // Only this once: whoever listens to the change may write here, too.
    const bool isOwnText = m_writesOwnText;
    m_writesOwnText = 0;
    if (!isOwnText && (role == Qt::DisplayRole || role == Qt::EditRole))
        m_ordinaryColumns &= ~bitOfColumn(column);
    QTreeWidgetItem::setData(column, role, value);
}

static bool isOneOrdinaryLine(const QString& text)
{
    CORVEL_DEBUG_HOOK();
    // Latin characters, for which no font is substituted, and no breaks: whatever such a line says, it is as high as
    // its font. An empty text has no height of its own.
    const QChar* character = text.constData();
    const QChar* end = character + text.size();
    for (; character != end; ++character) {
        const unsigned int code = character->unicode();
        if (code - 0x20 > 0x5e && code - 0xa0 > 0x5f)
            return false;
    }
    return !text.isEmpty();
}

void AbstractMessageTreeWidgetItem::writeText(MessageTreeWidget* tree, int column, const QString& text)
{
    CORVEL_DEBUG_HOOK();
    const unsigned int bit = bitOfColumn(column);
    const bool wasOrdinary = m_ordinaryColumns & bit;
    const bool isOrdinary = isOneOrdinaryLine(text);
    m_ordinaryColumns = isOrdinary ? m_ordinaryColumns | bit : m_ordinaryColumns & ~bit;
    m_writesOwnText = 1;
    // Writing can lead to writing another row, when somebody listens.
    AbstractMessageTreeWidgetItem* outer = tree->m_rowBeingWritten;
    tree->m_rowBeingWritten = wasOrdinary && isOrdinary ? this : nullptr;
    setData(column, Qt::DisplayRole, QVariant(text));
    tree->m_rowBeingWritten = outer;
}

MessageTreeWidget* AbstractMessageTreeWidgetItem::getMessageTreeWidget()
{
    CORVEL_DEBUG_HOOK();
    QTreeWidget* view = treeWidget();
    if (!view)
        return m_messageTreeWidget;
    // Asked for every text: nearly always the tree is of this very class, which is far quicker to see than to cast.
    if (typeid(*view) == typeid(MessageTreeWidget))
        return static_cast<MessageTreeWidget*>(view);
    return dynamic_cast<MessageTreeWidget*>(view);
}

// No virtual operations: the slots of the rows' classes are fixed.
const FieldInfo* AbstractMessageTreeWidgetItem::getFieldInfo() const
{
    CORVEL_DEBUG_HOOK();
    const AbstractFieldTreeWidgetItem* row = dynamic_cast<const AbstractFieldTreeWidgetItem*>(this);
    return row ? row->getFieldInfo() : nullptr;
}

int AbstractMessageTreeWidgetItem::getIndex() const
{
    CORVEL_DEBUG_HOOK();
    if (const SingleValueFieldTreeWidgetItem* row = dynamic_cast<const SingleValueFieldTreeWidgetItem*>(this))
        return static_cast<int>(row->getIndex());
    if (const SingleSubMessageFieldTreeWidgetItem* row = dynamic_cast<const SingleSubMessageFieldTreeWidgetItem*>(this))
        return static_cast<int>(row->getIndex());
    return -1;
}

AbstractMessageTreeWidgetItem::InitialExpansionPolicy AbstractMessageTreeWidgetItem::getInitialExpansionPolicy() const
{
    CORVEL_DEBUG_HOOK();
    return m_initialExpansionPolicy;
}

void AbstractMessageTreeWidgetItem::setInitialExpansionPolicy(InitialExpansionPolicy policy)
{
    CORVEL_DEBUG_HOOK();
    m_initialExpansionPolicy = policy;
}

void AbstractMessageTreeWidgetItem::setNameText()
{
    CORVEL_DEBUG_HOOK();
    MessageTreeWidget* tree = getMessageTreeWidget();
    if (!tree)
        return;
    const int column = tree->getColumnIndex(MessageTreeWidget::NameColumn);
    if (column < 0)
        return;
    writeText(tree, column, getNameText());
    setData(column, Qt::ToolTipRole, QVariant(getNameToolTip()));
}

void AbstractMessageTreeWidgetItem::setTypeText()
{
    CORVEL_DEBUG_HOOK();
    MessageTreeWidget* tree = getMessageTreeWidget();
    if (!tree)
        return;
    const int column = tree->getColumnIndex(MessageTreeWidget::TypeColumn);
    if (column >= 0)
        writeText(tree, column, getTypeText());
}

void AbstractMessageTreeWidgetItem::setValueText()
{
    CORVEL_DEBUG_HOOK();
    MessageTreeWidget* tree = getMessageTreeWidget();
    if (!tree)
        return;
    const int column = tree->getColumnIndex(MessageTreeWidget::ValueColumn);
    if (column >= 0)
        writeText(tree, column, getValueText());
}

void AbstractMessageTreeWidgetItem::setRawValueText()
{
    CORVEL_DEBUG_HOOK();
    MessageTreeWidget* tree = getMessageTreeWidget();
    if (!tree)
        return;
    const int column = tree->getColumnIndex(MessageTreeWidget::RawValueColumn);
    if (column >= 0)
        writeText(tree, column, getRawValueText());
}

void AbstractMessageTreeWidgetItem::setAllTexts()
{
    CORVEL_DEBUG_HOOK();
    MessageTreeWidget* tree = getMessageTreeWidget();
    if (!tree)
        return;
    const QVector<MessageTreeWidget::ColumnType> columns = tree->getColumns();
    for (int i = 0; i < columns.size(); ++i) {
        if (columns.at(i) != MessageTreeWidget::NoColumn)
            writeText(tree, i, getTextForColumn(columns.at(i)));
    }
}

QString AbstractMessageTreeWidgetItem::getTextForColumn(MessageTreeWidget::ColumnType type)
{
    CORVEL_DEBUG_HOOK();
    switch (type) {
    case MessageTreeWidget::NameColumn:
        return getNameText();
    case MessageTreeWidget::RawValueColumn:
        return getRawValueText();
    case MessageTreeWidget::ValueColumn:
        return getValueText();
    case MessageTreeWidget::TypeColumn:
        return getTypeText();
    default:
        return QObject::tr("Column %1").arg(MessageTreeWidget::getDefaultColumnName(type));
    }
}

bool AbstractMessageTreeWidgetItem::mustShowField(const FieldInfo* field)
{
    CORVEL_DEBUG_HOOK();
    if (!field)
        return false;
    if (field->isConfidential() && !Corvel::confidentialInformationDisplayEnabled())
        return false;
    MessageTreeWidget* tree = getMessageTreeWidget();
    if (field->isVirtual() && tree && !tree->mustShowVirtualFields())
        return false;
    if (!tree)
        return true;
    if (tree->mustShowFieldsWithRole(field->getRole()))
        return true;
    Q_FOREACH (const FieldInfo* subField, field->getSubFieldInfos()) {
        if (mustShowField(subField))
            return true;
    }
    return false;
}
