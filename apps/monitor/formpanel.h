#ifndef FORMPANEL_H
#define FORMPANEL_H

#include <QScrollArea>
#include <QVector>

class LatestMessageSource;
class MessageInfo;
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

private:
    struct Form
    {
        const MessageInfo* info;
        QWidget* box;
    };

    QWidget* createForm(const MessageInfo* info);

    LatestMessageSource* m_source;
    QVBoxLayout* m_layout;
    QLabel* m_hint;
    QVector<Form> m_forms;
};

#endif
