#ifndef CORVEL_FIELDVALUELABEL_H
#define CORVEL_FIELDVALUELABEL_H

#include "corvelgui_export.h"

#include <QLabel>

class FieldInfo;
class Message;
class MessageNeed;
class MessageSource;
class QTimer;

/**
 * A label that shows the current value of one field, live.
 *
 * It states its need of the message types that have the field, so that the framework delivers them, and shows "N/A"
 * until the first message, for a message that lacks the field, and after a time-out without messages.
 *
 * What a text says is never taken for markup, unless setTextFormat() has it so.
 *
 * A field of a sub-message occurs in no message that is received. What stands for one in this framework is a
 * PathFieldInfo.
 *
 * As any label, it asks its layout for the room of each text anew. With a least width of its own, nothing around it
 * moves when texts change.
 *
 * @code
 * FieldValueLabel* speed = new FieldValueLabel(info->getFieldInfo("groundspeed"), source, true, 2000);
 * speed->setMinimumWidth(speed->fontMetrics().boundingRect("-00.000000 m/s").width());
 * layout->addWidget(speed);
 * @endcode
 */
class CORVELGUI_EXPORT FieldValueLabel : public QLabel
{
    Q_OBJECT

public:
    /**
     * A label without a parent; a layout or setParent() gives it one.
     *
     * @param fieldInfo              the field to show; null shows "N/A" for good. Borrowed; when its type goes, there
     * is none.
     * @param source                 whose messages to show; null when processMessage() is called by other means
     * @param showInterpretedString  true shows the value as its description interprets it, with unit; false shows it
     * plain
     * @param timeOut                milliseconds after which a value that was not refreshed gives way to "N/A"; 0 and
     *                               below mean never
     */
    explicit FieldValueLabel(const FieldInfo* fieldInfo, MessageSource* source = 0, bool showInterpretedString = true,
                             int timeOut = -1);
    virtual ~FieldValueLabel();

    /** The field shown; may be null. */
    const FieldInfo* getFieldInfo() const;
    /** Shows another field, or none; the text stays until the next message. */
    void setFieldInfo(const FieldInfo* fieldInfo);

    bool getShowInterpretedString() const;
    /** Takes effect with the next message. */
    void setShowInterpretedString(bool showInterpretedString);

    /** The number (from 0) of the value shown of a repeated field; 0 without an index. */
    unsigned int getIndex() const;
    bool hasIndex() const;
    /** Shows this value of a repeated field alone, from the next message on. */
    void setIndex(unsigned int index);
    /** Shows the first value, followed by " [...]" when there are more, from the next message on. */
    void clearIndex();

    /**
     * Sets the time after which a value that was not refreshed gives way to "N/A", counted from now on.
     *
     * @param milliseconds  0 lets every value go with the next pass of the event loop; negative means never
     */
    void setTimeOut(int milliseconds);

public Q_SLOTS:
    /** Shows "N/A". */
    void clearValue();
    /** Shows the field's value in @p message, which must not be null; a message of a type without the field is ignored.
     */
    void processMessage(const Message* message);

protected:
    void changeEvent(QEvent* event) override;

private Q_SLOTS:
    void onTimeout();

private:
    Q_DISABLE_COPY(FieldValueLabel)

    static void letGo(void* label, const QObject* object, bool show);

    const FieldInfo* m_fieldInfo;
    bool m_hasIndex;
    unsigned int m_index;
    bool m_showInterpretedString;
    bool m_isCleared;
    MessageNeed* m_messageNeed;
    QTimer* m_timer;
};

#endif
