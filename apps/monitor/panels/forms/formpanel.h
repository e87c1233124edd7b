#ifndef FORMPANEL_H
#define FORMPANEL_H

#include "panel.h"
#include "subject.h"

#include <QScrollArea>
#include <QVector>

class FieldValueLabel;
class Message;
class MessageWidget;
class QGroupBox;
class QLabel;
class QVBoxLayout;

/** Shows a form for each of the message types that are chosen, of its sender, one below the other. */
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
        Subject subject;
        QGroupBox* box;
        MessageWidget* widget;
        QList<FieldValueLabel*> labels; // of its values
    };

    Form createForm(const Subject& subject);
    void showTitles();
    void fill(Form* form);
    static void display(const Form& form, const Message* message);
    void followChoice();

private Q_SLOTS:
    void processMessage(const Message* message);

private:
    Desk* m_desk;
    QVBoxLayout* m_layout;
    QLabel* m_hint;
    QVector<Form> m_forms;
};

#endif
