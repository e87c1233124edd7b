#include "formpanel.h"

#include "corvel.h"
#include "desk.h"
#include "fieldinfo.h"
#include "fieldvaluelabel.h"
#include "message.h"
#include "messageinfo.h"
#include "messagewidget.h"
#include "theme.h"
#include "valuetext.h"

#include <QGroupBox>
#include <QLabel>
#include <QLayout>
#include <QVBoxLayout>

// Of a text; the tree and its copies have all of it.
static const int MostCharacters = 600;
static const int MostLines = 8;
static const int WidestText = 60; // characters, that need no second line

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
    connect(desk->getLatest(), SIGNAL(newMessage(const Message*)), this, SLOT(processMessage(const Message*)));
    connect(desk->getTypes(), &MessageTypeModel::seen, this, &FormPanel::showTitles);
    connect(desk->getTypes(), &MessageTypeModel::gone, this, &FormPanel::showTitles);
    connect(desk, &Desk::senderRenamed, this, [this](const QString& before, const QString& now) {
        for (Form& form : m_forms)
            if (form.subject.sender == before)
                form.subject.sender = now;
        showTitles();
    });
}

FormPanel::Form FormPanel::createForm(const Subject& subject)
{
    QGroupBox* box = new QGroupBox;
    QVBoxLayout* layout = new QVBoxLayout(box);
    layout->setContentsMargins(0, 0, 0, 0);
    Form form = {subject, box, new MessageWidget(box, subject.info), {}};
    layout->addWidget(form.widget);
    fill(&form);
    return form;
}

void FormPanel::fill(Form* form)
{
    if (QGridLayout* grid = qobject_cast<QGridLayout*>(form->widget->layout()))
        grid->setColumnStretch(1, 1); // names as wide as they need, values the rest
    form->labels = form->widget->findChildren<FieldValueLabel*>();
    for (FieldValueLabel* const label : std::as_const(form->labels)) {
        label->setTextFormat(Qt::PlainText); // a value says what it says
        if (!Corvel::isHidden(label->getFieldInfo()))
            continue;
        label->setFieldInfo(nullptr); // so that no message fills it
        label->setText(tr("Hidden data"));
        label->setEnabled(false);
    }
    const MessageReference latest = m_desk->getLatest()->getLatest(form->subject.info, form->subject.sender);
    if (!latest.isNull())
        display(*form, latest.get());
}

void FormPanel::display(const Form& form, const Message* message)
{
    form.widget->processMessage(message);
    for (FieldValueLabel* const label : form.labels) {
        const QString text = ValueText::bounded(label->text(), MostCharacters, MostLines);
        if (text.size() > WidestText)
            label->setWordWrap(true);
        if (text != label->text())
            label->setText(text);
    }
}

void FormPanel::renew()
{
    for (Form& form : m_forms) {
        form.widget->setMessageInfo(form.subject.info);
        fill(&form);
    }
}

void FormPanel::forget(const MessageInfo* info)
{
    for (const Form& form : std::as_const(m_forms))
        for (FieldValueLabel* label : form.widget->findChildren<FieldValueLabel*>())
            if (form.subject.info == info && label->getFieldInfo())
                label->clearValue();
}

// Forms of types that were shown before stay as they are.
void FormPanel::followChoice()
{
    QVector<Form> forms;
    for (const Subject& subject : m_desk->getChosenTypes()) {
        Form form = {subject, nullptr, nullptr, {}};
        for (Form& old : m_forms) {
            if (old.subject == subject && old.box) {
                form = old;
                old.box = nullptr;
            }
        }
        if (!form.box)
            form = createForm(subject);
        forms.append(form);
    }
    for (const Form& old : std::as_const(m_forms))
        delete old.box;
    m_forms = forms;
    for (int i = 0; i < m_forms.size(); ++i)
        m_layout->insertWidget(i, m_forms.at(i).box);
    m_hint->setVisible(m_forms.isEmpty());
    showTitles();
}

// Whose message it is has to be told where several send the type.
void FormPanel::showTitles()
{
    for (const Form& form : std::as_const(m_forms)) {
        const QString name = form.subject.info->getName();
        const bool isTold = m_desk->getTypes()->isFromSeveral(form.subject.info) && !form.subject.sender.isEmpty();
        form.box->setTitle(isTold ? name + QLatin1Char(' ') + form.subject.sender : name);
    }
}

void FormPanel::processMessage(const Message* message)
{
    for (const Form& form : std::as_const(m_forms))
        if (form.subject.covers(message->getInfo(), message->getSender()))
            display(form, message);
}
