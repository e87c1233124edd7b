#include "messagewidget.h"

#include "diagnostics.h"
#include "fieldinfo.h"
#include "fieldvaluelabel.h"
#include "message.h"
#include "messageinfo.h"

#include <QGridLayout>
#include <QLabel>
#include <QPointer>

CORVEL_DIAGNOSTICS("MessageWidget");

MessageWidget::MessageWidget(QWidget* parent, const MessageInfo* messageInfo)
    : QWidget(parent)
{
    CORVEL_DEBUG_HOOK();
    CORVEL_ALLOCATED("MessageWidget");
    m_layout = nullptr;
    setMessageInfo(messageInfo);
}

MessageWidget::~MessageWidget()
{
    CORVEL_DEBUG_HOOK();
    CORVEL_DEALLOCATED("MessageWidget");
}

const MessageInfo* MessageWidget::getMessageInfo() const
{
    CORVEL_DEBUG_HOOK();
    return m_messageInfo;
}

void MessageWidget::setMessageInfo(const MessageInfo* messageInfo)
{
    CORVEL_DEBUG_HOOK();
    m_messageInfo = messageInfo;
    if (m_layout) {
        delete m_layout;
        m_layout = nullptr;
        // The list holds nested widgets too, which go with their parents: each is deleted only if it is still there.
        QList<QPointer<QWidget>> descendants;
        Q_FOREACH (QWidget* widget, findChildren<QWidget*>())
            descendants.append(widget);
        Q_FOREACH (const QPointer<QWidget>& widget, descendants)
            delete widget.data();
    }
    m_fieldValueLabels.clear();
    if (!messageInfo) {
        setWindowTitle(tr("No message type set"));
        return;
    }
    m_layout = new QGridLayout(this);
    int row = 0;
    Q_FOREACH (const FieldInfo* fieldInfo, messageInfo->getFieldInfos()) {
        QLabel* nameLabel = new QLabel(fieldInfo->getName());
        FieldValueLabel* valueLabel = new FieldValueLabel(fieldInfo, nullptr, true, -1);
        m_layout->addWidget(nameLabel, row, 0);
        m_layout->addWidget(valueLabel, row, 1);
        m_fieldValueLabels.append(valueLabel);
        ++row;
    }
    setWindowTitle(messageInfo->getName());
}

void MessageWidget::displayMessage(const Message* message)
{
    CORVEL_DEBUG_HOOK();
    if (!message) {
        setMessageInfo(nullptr);
        return;
    }
    if (message->getInfo() != getMessageInfo())
        setMessageInfo(message->getInfo());
    Q_FOREACH (FieldValueLabel* label, m_fieldValueLabels)
        label->processMessage(message);
}

void MessageWidget::processMessage(const Message* message)
{
    CORVEL_DEBUG_HOOK();
    if (getMessageInfo() == message->getInfo())
        displayMessage(message);
}

void MessageWidget::clearValues()
{
    CORVEL_DEBUG_HOOK();
    Q_FOREACH (FieldValueLabel* label, m_fieldValueLabels)
        label->clearValue();
}
