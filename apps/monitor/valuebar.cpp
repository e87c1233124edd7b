#include "valuebar.h"

#include "fieldinfo.h"
#include "fieldvaluelabel.h"
#include "latestmessagesource.h"
#include "messageinfo.h"

#include <QDoubleSpinBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QScrollArea>
#include <QToolButton>

#include <algorithm>

static const double DefaultTimeOutSeconds = 3;

ValueBar::ValueBar(LatestMessageSource* source, QWidget* parent)
    : QWidget(parent)
    , m_source(source)
    , m_menu(new QMenu(this))
{
    QHBoxLayout* outer = new QHBoxLayout(this);
    outer->setContentsMargins(6, 2, 6, 2);

    QWidget* content = new QWidget;
    m_layout = new QHBoxLayout(content);
    m_layout->setContentsMargins(0, 0, 0, 0);
    m_hint = new QLabel(tr("Values you add stand here in large."));
    m_hint->setEnabled(false);
    m_layout->addWidget(m_hint);
    m_layout->addStretch(1);
    QScrollArea* scroller = new QScrollArea;
    scroller->setWidget(content);
    scroller->setWidgetResizable(true);
    scroller->setFrameShape(QFrame::NoFrame);
    scroller->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroller->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    scroller->setMinimumHeight(4 * fontMetrics().height());
    scroller->setMaximumHeight(5 * fontMetrics().height());
    outer->addWidget(scroller, 1);

    QToolButton* add = new QToolButton;
    add->setText(tr("Add Value"));
    add->setToolTip(tr("Choose a field to show here"));
    add->setPopupMode(QToolButton::InstantPopup);
    add->setMenu(m_menu);
    connect(m_menu, &QMenu::aboutToShow, this, &ValueBar::fillMenu);
    outer->addWidget(add);

    m_timeOut = new QDoubleSpinBox;
    m_timeOut->setRange(0, 3600);
    m_timeOut->setDecimals(1);
    m_timeOut->setSuffix(tr(" s"));
    m_timeOut->setSpecialValueText(tr("never"));
    m_timeOut->setValue(DefaultTimeOutSeconds);
    m_timeOut->setAccessibleName(tr("Time-out of values"));
    m_timeOut->setToolTip(tr("How long a value stays when no message brings a new one"));
    connect(m_timeOut, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this, &ValueBar::applyTimeOut);
    QLabel* timeOutLabel = new QLabel(tr("&Time-out:"));
    timeOutLabel->setBuddy(m_timeOut);
    outer->addWidget(timeOutLabel);
    outer->addWidget(m_timeOut);
}

ValueBar::~ValueBar()
{
    removeAll();
}

int ValueBar::timeOutMilliseconds() const
{
    return m_timeOut->value() > 0 ? int(m_timeOut->value() * 1000) : -1;
}

void ValueBar::addField(const FieldInfo* field)
{
    if (!field || getFields().contains(field))
        return;
    QFrame* box = new QFrame;
    box->setFrameShape(QFrame::StyledPanel);
    QGridLayout* grid = new QGridLayout(box);
    grid->setContentsMargins(6, 2, 2, 2);
    grid->setVerticalSpacing(0);
    const QVector<const MessageInfo*> infos = field->getMessageInfos();
    const QString name =
        infos.isEmpty() ? field->getName() : infos.first()->getName() + QLatin1Char('.') + field->getName();
    QLabel* caption = new QLabel(name);
    caption->setEnabled(false);
    FieldValueLabel* label = new FieldValueLabel(field, m_source, true, timeOutMilliseconds());
    QFont large = label->font();
    large.setPointSizeF(large.pointSizeF() * 1.5);
    label->setFont(large);
    label->setMinimumWidth(label->fontMetrics().horizontalAdvance(QLatin1String("-0000.000 m/s")));
    label->setAccessibleName(name);
    label->setToolTip(field->getDescription());
    QToolButton* remove = new QToolButton;
    remove->setText(QString(QChar(0xd7)));
    remove->setAutoRaise(true);
    remove->setToolTip(tr("Remove %1").arg(name));
    remove->setAccessibleName(remove->toolTip());
    connect(remove, &QToolButton::clicked, this, [this, field]() { removeField(field); });
    grid->addWidget(caption, 0, 0);
    grid->addWidget(remove, 0, 1);
    grid->addWidget(label, 1, 0, 1, 2);
    m_layout->insertWidget(int(m_values.size()), box);
    m_values.append({field, box, label});
    m_hint->hide();
    if (!infos.isEmpty()) {
        const MessageReference latest = m_source->getLatest(infos.first());
        if (!latest.isNull())
            label->processMessage(latest.get());
    }
}

void ValueBar::removeField(const FieldInfo* field)
{
    for (int i = 0; i < m_values.size(); ++i) {
        if (m_values.at(i).field == field) {
            release(m_values.takeAt(i));
            break;
        }
    }
    m_hint->setVisible(m_values.isEmpty());
}

void ValueBar::removeAll()
{
    for (const Value& value : std::as_const(m_values))
        release(value);
    m_values.clear();
    m_hint->show();
}

void ValueBar::release(const Value& value)
{
    value.label->setTimeOut(-1); // a label leaves its timer behind unless told so
    value.box->hide();
    value.box->deleteLater(); // it may be its own button that asks for it
}

QVector<const FieldInfo*> ValueBar::getFields() const
{
    QVector<const FieldInfo*> fields;
    for (const Value& value : m_values)
        fields.append(value.field);
    return fields;
}

void ValueBar::fillMenu()
{
    m_menu->clear();
    QVector<const MessageInfo*> infos = m_offered;
    std::sort(infos.begin(), infos.end(),
              [](const MessageInfo* a, const MessageInfo* b) { return a->getName() < b->getName(); });
    for (const MessageInfo* info : std::as_const(infos)) {
        QMenu* fields = m_menu->addMenu(info->getName());
        // Filled only when it opens: hundreds of types with dozens of fields are too many actions to make in advance.
        connect(fields, &QMenu::aboutToShow, this, [this, fields, info]() {
            fields->clear();
            for (const FieldInfo* field : info->getFieldInfos()) {
                QAction* action = fields->addAction(field->getName());
                connect(action, &QAction::triggered, this, [this, field]() { addField(field); });
            }
        });
    }
    if (infos.isEmpty())
        m_menu->addAction(tr("No message types yet"))->setEnabled(false);
}

void ValueBar::applyTimeOut()
{
    for (const Value& value : std::as_const(m_values))
        value.label->setTimeOut(timeOutMilliseconds());
}
