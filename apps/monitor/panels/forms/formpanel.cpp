#include "formpanel.h"

#include "corvel.h"
#include "desk.h"
#include "fieldinfo.h"
#include "fieldvaluelabel.h"
#include "messageinfo.h"
#include "messagewidget.h"
#include "theme.h"

#include <QGroupBox>
#include <QLabel>
#include <QLayout>
#include <QVBoxLayout>

FormPanel::FormPanel(Desk* desk, QWidget* parent)
    : QScrollArea(parent)
    , m_desk(desk)
{
    QWidget* content = new QWidget;
    m_layout = new QVBoxLayout(content);
    m_hint = new QLabel(tr("Select message types in the list to see them here as forms."));
    Theme::makeHint(m_hint);
    m_layout->addWidget(m_hint);
    m_layout->addStretch(1);
    setWidget(content);
    setWidgetResizable(true);
    setFrameShape(QFrame::NoFrame);
    setAccessibleName(tr("Message forms"));
    connect(desk, &Desk::chosenTypesChanged, this, &FormPanel::followChoice);
}

FormPanel::Form FormPanel::createForm(const MessageInfo* info)
{
    QGroupBox* box = new QGroupBox(info->getName());
    QVBoxLayout* layout = new QVBoxLayout(box);
    layout->setContentsMargins(0, 0, 0, 0);
    const Form form = {info, box, new MessageWidget(box, info)};
    layout->addWidget(form.widget);
    connect(m_desk->getLatest(), SIGNAL(newMessage(const Message*)), form.widget, SLOT(processMessage(const Message*)));
    fill(form);
    return form;
}

void FormPanel::fill(const Form& form)
{
    if (QGridLayout* grid = qobject_cast<QGridLayout*>(form.widget->layout()))
        grid->setColumnStretch(1, 1); // names as wide as they need, values the rest
    for (FieldValueLabel* label : form.widget->findChildren<FieldValueLabel*>()) {
        if (!Corvel::isHidden(label->getFieldInfo()))
            continue;
        label->setFieldInfo(nullptr); // so that no message fills it
        label->setText(tr("Hidden data"));
        label->setEnabled(false);
    }
    const MessageReference latest = m_desk->getLatest()->getLatest(form.info);
    if (!latest.isNull())
        form.widget->processMessage(latest.get());
}

void FormPanel::renew()
{
    for (const Form& form : std::as_const(m_forms)) {
        form.widget->setMessageInfo(form.info);
        fill(form);
    }
}

void FormPanel::forget(const MessageInfo* info)
{
    for (const Form& form : std::as_const(m_forms))
        for (FieldValueLabel* label : form.widget->findChildren<FieldValueLabel*>())
            if (form.info == info && label->getFieldInfo())
                label->clearValue();
}

// Forms of types that were shown before stay as they are.
void FormPanel::followChoice()
{
    QVector<Form> forms;
    for (const MessageInfo* info : m_desk->getChosenTypes()) {
        Form form = {info, nullptr, nullptr};
        for (Form& old : m_forms) {
            if (old.info == info && old.box) {
                form = old;
                old.box = nullptr;
            }
        }
        if (!form.box)
            form = createForm(info);
        forms.append(form);
    }
    for (const Form& old : std::as_const(m_forms))
        delete old.box;
    m_forms = forms;
    for (int i = 0; i < m_forms.size(); ++i)
        m_layout->insertWidget(i, m_forms.at(i).box);
    m_hint->setVisible(m_forms.isEmpty());
}
