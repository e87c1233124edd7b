#ifndef FORMPANEL_H
#define FORMPANEL_H

#include <QScrollArea>
#include <QVector>

class LatestMessageSource;
class MessageInfo;
class MessageWidget;
class QLabel;
class QVBoxLayout;

/** Shows a form for each of some message types, one below the other. */
class FormPanel : public QScrollArea
{
    Q_OBJECT

public:
    /** @param source  whose messages to show; borrowed */
    explicit FormPanel(LatestMessageSource* source, QWidget* parent = nullptr);

    /** Shows these types; forms of types that were shown before stay as they are. */
    void setMessageInfos(const QVector<const MessageInfo*>& infos);
    QVector<const MessageInfo*> getMessageInfos() const;

    /** Builds all forms anew: the fields of their types, or how values are written, are others now. */
    void renew();

private:
    struct Form
    {
        const MessageInfo* info;
        QWidget* box;
        MessageWidget* widget;
    };

    Form createForm(const MessageInfo* info);
    void fill(const Form& form);
    void forget(const MessageInfo* info);

    LatestMessageSource* m_source;
    QVBoxLayout* m_layout;
    QLabel* m_hint;
    QVector<Form> m_forms;
};

#endif
