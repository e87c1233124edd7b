#include "fieldvaluelabel.h"

#include "borrowed.h"
#include "diagnostics.h"
#include "fieldinfo.h"
#include "fieldvalue.h"
#include "message.h"
#include "messageinfo.h"
#include "messageneed.h"
#include "messagesource.h"

#include <QEvent>
#include <QTimer>

CORVEL_DIAGNOSTICS("FieldValueLabel");

FieldValueLabel::FieldValueLabel(const FieldInfo* fieldInfo, MessageSource* source, bool showInterpretedString,
                                 int timeOut)
    : QLabel()
{
    CORVEL_DEBUG_HOOK();
    CORVEL_ALLOCATED("FieldValueLabel");
    setTextFormat(Qt::PlainText); // a device could send markup, with pictures to be fetched
    m_hasIndex = false;
    m_index = 0;
    m_showInterpretedString = showInterpretedString;
    m_messageNeed = new MessageNeed(nullptr);
    setFieldInfo(fieldInfo);
    if (source)
        connect(source, SIGNAL(newMessage(const Message*)), this, SLOT(processMessage(const Message*)));
    clearValue();
    m_timer = nullptr;
    if (timeOut > 0)
        setTimeOut(timeOut);
}

FieldValueLabel::~FieldValueLabel()
{
    CORVEL_DEBUG_HOOK();
    CORVEL_DEALLOCATED("FieldValueLabel");
    Borrowed::leaveAll(this);
    // The timer is deliberately left alone: only setTimeOut() with a negative time deletes it.
    delete m_messageNeed;
}

void FieldValueLabel::letGo(void* label, const QObject*, bool show)
{
    CORVEL_DEBUG_HOOK();
    FieldValueLabel* const self = static_cast<FieldValueLabel*>(label);
    if (!show) {
        self->m_fieldInfo = nullptr;
    } else if (!self->m_fieldInfo) {
        self->clearValue();
        self->setFieldInfo(nullptr);
    }
}

const FieldInfo* FieldValueLabel::getFieldInfo() const
{
    CORVEL_DEBUG_HOOK();
    return m_fieldInfo;
}

void FieldValueLabel::setFieldInfo(const FieldInfo* fieldInfo)
{
    CORVEL_DEBUG_HOOK();
    m_fieldInfo = fieldInfo;
    Borrowed::leaveAll(this);
    if (fieldInfo) {
        // A field goes with its type.
        Q_FOREACH (const MessageInfo* info, fieldInfo->getMessageInfos())
            Borrowed::watch(info, this, &letGo);
    }
    if (!fieldInfo)
        m_messageNeed->clearMessagesNeeded(false);
    else
        m_messageNeed->setMessagesNeeded(fieldInfo->getMessageInfos());
}

bool FieldValueLabel::getShowInterpretedString() const
{
    CORVEL_DEBUG_HOOK();
    return m_showInterpretedString;
}

void FieldValueLabel::setShowInterpretedString(bool showInterpretedString)
{
    CORVEL_DEBUG_HOOK();
    m_showInterpretedString = showInterpretedString;
}

unsigned int FieldValueLabel::getIndex() const
{
    CORVEL_DEBUG_HOOK();
    return m_index;
}

bool FieldValueLabel::hasIndex() const
{
    CORVEL_DEBUG_HOOK();
    return m_hasIndex;
}

void FieldValueLabel::setIndex(unsigned int index)
{
    CORVEL_DEBUG_HOOK();
    m_hasIndex = true;
    m_index = index;
}

void FieldValueLabel::clearIndex()
{
    CORVEL_DEBUG_HOOK();
    m_hasIndex = false;
    m_index = 0;
}

void FieldValueLabel::setTimeOut(int milliseconds)
{
    CORVEL_DEBUG_HOOK();
    if (milliseconds < 0) {
        delete m_timer;
        m_timer = nullptr;
        return;
    }
    if (!m_timer) {
        m_timer = new QTimer;
        connect(m_timer, SIGNAL(timeout()), this, SLOT(onTimeout()));
        m_timer->setSingleShot(true);
    }
    m_timer->setInterval(milliseconds);
    m_timer->start();
}

void FieldValueLabel::clearValue()
{
    CORVEL_DEBUG_HOOK();
    m_isCleared = true;
    setText(tr("N/A"));
}

void FieldValueLabel::processMessage(const Message* message)
{
    CORVEL_DEBUG_HOOK();
    if (!m_fieldInfo)
        return;
    if (!m_fieldInfo->occursIn(message->getInfo()))
        return;
    const unsigned int count = m_fieldInfo->getValueCount(message);
    if (count <= getIndex()) {
        clearValue();
        return;
    }
    QString text;
    if (m_fieldInfo->isStringField() && !hasIndex()) {
        text = m_fieldInfo->getStringValue(message);
    } else {
        const FieldValue value = m_fieldInfo->getValue(message, getIndex());
        if (m_showInterpretedString)
            text = m_fieldInfo->getInterpretedString(value, true);
        else
            text = value.toString(false, -1, FieldValue::RepresentationMode(0), false);
        if (!hasIndex() && count > 1)
            text += tr(" [...]");
    }
    m_isCleared = false;
    setText(text);
    if (m_timer)
        m_timer->start();
}

void FieldValueLabel::changeEvent(QEvent* event)
{
    CORVEL_DEBUG_HOOK();
    QLabel::changeEvent(event);
    if (event->type() == QEvent::LanguageChange && m_isCleared)
        clearValue();
}

void FieldValueLabel::onTimeout()
{
    CORVEL_DEBUG_HOOK();
    clearValue();
}
