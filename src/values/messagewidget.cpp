#include "messagewidget.h"

#include "borrowed.h"
#include "diagnostics.h"
#include "fieldinfo.h"
#include "fieldvaluelabel.h"
#include "message.h"
#include "messageinfo.h"

#include <QEvent>
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
    m_messageInfo = nullptr;
    setMessageInfo(messageInfo);
}

MessageWidget::~MessageWidget()
{
    CORVEL_DEBUG_HOOK();
    CORVEL_DEALLOCATED("MessageWidget");
    Borrowed::leaveAll(this);
}

void MessageWidget::letGo(void* form, const QObject*, bool show)
{
    CORVEL_DEBUG_HOOK();
    MessageWidget* const self = static_cast<MessageWidget*>(form);
    if (!show)
        self->m_messageInfo = nullptr;
    else if (!self->m_messageInfo)
        self->setMessageInfo(nullptr);
}

const MessageInfo* MessageWidget::getMessageInfo() const
{
    CORVEL_DEBUG_HOOK();
    return m_messageInfo;
}

void MessageWidget::setMessageInfo(const MessageInfo* messageInfo)
{
    CORVEL_DEBUG_HOOK();
    // Labels that go and come withdraw and state needs, and whoever listens may come back to this form: its list holds
    // no label that is gone already, and what he builds meanwhile is newer and stays.
    Borrowed::leaveAll(this);
    m_messageInfo = messageInfo;
    Borrowed::watch(messageInfo, this, &letGo);
    m_fieldValueLabels.clear();
    const QPointer<MessageWidget> self(this);
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
    if (!self || m_layout || m_messageInfo != messageInfo)
        return;
    if (!messageInfo) {
        setWindowTitle(tr("No message type set"));
        return;
    }
    m_layout = new QGridLayout(this);
    const QPointer<QGridLayout> layout(m_layout);
    int row = 0;
    Q_FOREACH (const FieldInfo* fieldInfo, messageInfo->getFieldInfos()) {
        QLabel* name = new QLabel(fieldInfo->getName());
        FieldValueLabel* value = new FieldValueLabel(fieldInfo, nullptr, true, -1);
        if (!layout) {
            delete name;
            delete value;
            return;
        }
        layout->addWidget(name, row, 0);
        layout->addWidget(value, row, 1);
        m_fieldValueLabels.append(value);
        ++row;
    }
    setWindowTitle(messageInfo->getName());
}

void MessageWidget::changeEvent(QEvent* event)
{
    CORVEL_DEBUG_HOOK();
    QWidget::changeEvent(event);
    if (event->type() == QEvent::LanguageChange && !m_messageInfo)
        setWindowTitle(tr("No message type set"));
}

void MessageWidget::displayMessage(const Message* message)
{
    CORVEL_DEBUG_HOOK();
    if (!message) {
        setMessageInfo(nullptr);
        return;
    }
    // With labels missing, a form of the type is still being built by somebody who waits for whom he told.
    const QPointer<MessageWidget> self(this);
    const MessageInfo* info = message->getInfo();
    if (info != getMessageInfo() || m_fieldValueLabels.size() < info->getFieldInfos().size())
        setMessageInfo(info);
    if (!self)
        return;
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
