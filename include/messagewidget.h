#ifndef CORVEL_MESSAGEWIDGET_H
#define CORVEL_MESSAGEWIDGET_H

#include "corvelgui_export.h"

#include <QVector>
#include <QWidget>

class FieldValueLabel;
class Message;
class MessageInfo;
class QGridLayout;

/**
 * A form that shows every field of one message type: its name, and its value as a live label.
 *
 * The window title names the type. The owner feeds it.
 *
 * @code
 * MessageWidget* form = new MessageWidget(parent, dialect->getMessageInfo("ATTITUDE"));
 * QObject::connect(source, SIGNAL(newMessage(const Message*)), form, SLOT(processMessage(const Message*)));
 * @endcode
 */
class CORVELGUI_EXPORT MessageWidget : public QWidget
{
    Q_OBJECT

public:
    /**
     * @param parent       may be null
     * @param messageInfo  the type to show; null shows an empty form. Borrowed; when it goes, the form is empty.
     */
    explicit MessageWidget(QWidget* parent = 0, const MessageInfo* messageInfo = 0);
    virtual ~MessageWidget();

    /** The type shown; may be null. */
    const MessageInfo* getMessageInfo() const;

public Q_SLOTS:
    /**
     * Builds the form anew for this type, also when it is the one shown; null empties it. Deletes all child widgets.
     *
     * Whoever listens to the changes of the needs may call any operation meanwhile, of which the last one counts; but a
     * form whose labels are being deleted is to be deleted later.
     */
    void setMessageInfo(const MessageInfo* messageInfo);
    /** Shows @p message, of whatever type; null empties the form. */
    void displayMessage(const Message* message);
    /** Shows @p message, which must not be null, if it is of the type shown. */
    void processMessage(const Message* message);
    /** Shows "N/A" for every field. */
    void clearValues();

protected:
    void changeEvent(QEvent* event) override;

private:
    Q_DISABLE_COPY(MessageWidget)

    static void letGo(void* form, const QObject* object, bool show);

    const MessageInfo* m_messageInfo;
    QVector<FieldValueLabel*> m_fieldValueLabels;
    QGridLayout* m_layout;
};

#endif
