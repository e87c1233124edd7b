#include "addressform.h"

#include "filefilters.h"

#include <QComboBox>
#include <QFileDialog>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>

namespace
{

// The label of a field as a name, such as for readers of the screen.
QString plain(QString label)
{
    return label.remove(QLatin1Char('&')).remove(QLatin1Char(':'));
}

// A text that was typed stands for itself, and one that was chosen for what it is about.
QString valueOf(const QWidget* editor)
{
    if (const QComboBox* const list = qobject_cast<const QComboBox*>(editor)) {
        const int index = list->findText(list->currentText());
        return index >= 0 ? list->itemData(index).toString() : list->currentText().trimmed();
    }
    if (const QSpinBox* const number = qobject_cast<const QSpinBox*>(editor))
        return QString::number(number->value());
    const QLineEdit* const line = qobject_cast<const QLineEdit*>(editor);
    return line->echoMode() == QLineEdit::Normal ? line->text().trimmed() : line->text();
}

// What is typed into stays where it is when another kind is chosen.
int widestLabel(const QWidget* form)
{
    int widest = 0;
    for (const InputKind* kind : InputKind::getAll())
        for (const InputField& field : kind->getFields())
            widest = qMax(widest, form->fontMetrics().horizontalAdvance(field.getLabel().remove(QLatin1Char('&'))));
    return widest;
}

void fillList(QComboBox* list, const InputField& field, const QString& value)
{
    const QVector<InputField::Choice> choices = field.getChoices();
    list->clear();
    for (const InputField::Choice& choice : choices)
        list->addItem(choice.text, choice.value);
    const int index = list->findData(value);
    if (index >= 0)
        list->setCurrentIndex(index);
    else if (!value.isEmpty())
        list->setEditText(value);
    else if (!choices.isEmpty())
        list->setCurrentIndex(0);
    if (list->isEditable())
        list->lineEdit()->setPlaceholderText(choices.isEmpty() ? AddressForm::tr("none found; another can be typed")
                                                               : QString());
}

} // namespace

AddressForm::AddressForm(QWidget* parent)
    : QWidget(parent)
    , m_layout(new QFormLayout(this))
    , m_kind(new QComboBox)
    , m_shown(nullptr)
{
    m_layout->setContentsMargins(0, 0, 0, 0);
    for (const InputKind* kind : InputKind::getAll())
        m_kind->addItem(kind->getTitle());
    m_kind->setAccessibleName(tr("Kind of source"));
    m_kind->setToolTip(tr("Where the messages come from"));
    QLabel* const label = new QLabel(tr("&Kind:"));
    label->setBuddy(m_kind);
    label->setMinimumWidth(widestLabel(this));
    m_layout->addRow(label, m_kind);
    connect(m_kind, QOverload<int>::of(&QComboBox::currentIndexChanged), this, &AddressForm::showKind);
    showKind();
}

int AddressForm::getLabelWidth() const
{
    return widestLabel(this);
}

void AddressForm::showKind()
{
    if (m_shown)
        m_addresses.insert(m_shown, getAddress());
    const InputKind* const kind = InputKind::getAll().value(m_kind->currentIndex());
    InputAddress values;
    values.kind = kind;
    for (const InputField& field : kind->getFields())
        values.setValue(QLatin1String(field.name), QLatin1String(field.value));
    showFields(m_addresses.value(kind, values));
}

void AddressForm::showFields(const InputAddress& values)
{
    m_shown = values.kind;
    m_editors.clear();
    while (m_layout->rowCount() > 1)
        m_layout->removeRow(1);
    QWidget* before = m_kind;
    for (const InputField& field : m_shown->getFields()) {
        const QString name = QLatin1String(field.name);
        QLabel* const label = new QLabel(field.getLabel());
        m_layout->addRow(label, createEditor(field, values.getValue(name)));
        QWidget* const editor = m_editors.value(name);
        editor->setAccessibleName(plain(field.getLabel()));
        editor->setToolTip(field.getToolTip());
        label->setBuddy(editor);
        setTabOrder(before, editor);
        before = editor;
        if (QPushButton* const button = editor->parentWidget()->findChild<QPushButton*>(name)) {
            setTabOrder(before, button);
            before = button;
        }
    }
    Q_EMIT changed();
}

QWidget* AddressForm::createEditor(const InputField& field, const QString& value)
{
    if (field.editor == InputField::FileEditor)
        return createFileEditor(field, value);
    if (field.editor == InputField::ListEditor || field.editor == InputField::ChoiceEditor)
        return createListEditor(field, value);
    const QString name = QLatin1String(field.name);
    if (field.editor == InputField::PortEditor) {
        QSpinBox* const port = new QSpinBox;
        port->setRange(1, 65535);
        port->setValue(value.toInt());
        m_editors.insert(name, port);
        return port;
    }
    QLineEdit* const line = new QLineEdit(value);
    if (field.editor == InputField::PasswordEditor)
        line->setEchoMode(QLineEdit::Password);
    m_editors.insert(name, line);
    return line;
}

QWidget* AddressForm::createFileEditor(const InputField& field, const QString& value)
{
    QLineEdit* const line = new QLineEdit(value);
    QPushButton* const browse = new QPushButton(tr("&Browse..."));
    browse->setObjectName(QLatin1String(field.name));
    browse->setToolTip(tr("Choose a file"));
    const bool isRecording = !field.isParameter();
    connect(browse, &QPushButton::clicked, this, [this, line, isRecording]() {
        const QString path = isRecording ? QFileDialog::getOpenFileName(this, tr("Open Recording"), line->text(),
                                                                        FileFilters::recordings())
                                         : QFileDialog::getOpenFileName(this, tr("Choose a file"), line->text());
        if (path.isEmpty())
            return;
        line->setText(path);
        Q_EMIT changed();
    });
    connect(line, &QLineEdit::editingFinished, this, &AddressForm::changed);
    QWidget* const row = new QWidget;
    QHBoxLayout* const layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(line, 1);
    layout->addWidget(browse);
    m_editors.insert(QLatin1String(field.name), line);
    return row;
}

QWidget* AddressForm::createListEditor(const InputField& field, const QString& value)
{
    QComboBox* const list = new QComboBox;
    list->setEditable(field.editor == InputField::ListEditor);
    list->setInsertPolicy(QComboBox::NoInsert);
    fillList(list, field, value);
    m_editors.insert(QLatin1String(field.name), list);
    if (!field.choicesChange)
        return list;
    QPushButton* const refresh = new QPushButton(tr("R&efresh"));
    refresh->setObjectName(QLatin1String(field.name));
    refresh->setToolTip(tr("Look again what is there to choose from"));
    connect(refresh, &QPushButton::clicked, this, [list, field]() { fillList(list, field, valueOf(list)); });
    QWidget* const row = new QWidget;
    QHBoxLayout* const layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(list, 1);
    layout->addWidget(refresh);
    return row;
}

InputAddress AddressForm::getAddress() const
{
    InputAddress address;
    address.kind = m_shown;
    address.port = m_shown->defaultPort;
    for (const InputField& field : m_shown->getFields()) {
        const QString name = QLatin1String(field.name);
        const QString value = valueOf(m_editors.value(name));
        // What is as always makes an address only longer.
        if (!field.isParameter() || value != QLatin1String(field.value))
            address.setValue(name, value);
    }
    return address;
}

void AddressForm::setAddress(const InputAddress& address)
{
    m_addresses.insert(address.kind, address);
    const int index = int(InputKind::getAll().indexOf(address.kind));
    if (m_kind->currentIndex() == index)
        showFields(address);
    else
        m_kind->setCurrentIndex(index);
}
