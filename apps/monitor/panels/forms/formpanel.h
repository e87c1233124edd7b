#ifndef FORMPANEL_H
#define FORMPANEL_H

#include "panel.h"

#include <QScrollArea>
#include <QVector>

class MessageWidget;
class QLabel;
class QVBoxLayout;

/** Shows a form for each of the message types that are chosen, one below the other. */
class FormPanel : public QScrollArea, public ::Panel // and not that of QFrame
{
    Q_OBJECT

public:
    explicit FormPanel(Desk* desk, QWidget* parent = nullptr);

    QWidget* getWidget() override { return this; }
    /** Builds all forms anew: the fields of their types, or how values are written, are others now. */
    void renew() override;
    void forget(const MessageInfo* info) override;

private:
    struct Form
    {
        const MessageInfo* info;
        QWidget* box;
        MessageWidget* widget;
    };

    Form createForm(const MessageInfo* info);
    void fill(const Form& form);
    void followChoice();

    Desk* m_desk;
    QVBoxLayout* m_layout;
    QLabel* m_hint;
    QVector<Form> m_forms;
};

#endif
