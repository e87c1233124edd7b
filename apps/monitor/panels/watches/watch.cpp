#include "watch.h"

#include "celldelegate.h"
#include "fieldinfo.h"
#include "fieldvaluelabel.h"
#include "labels.h"

#include <QEvent>
#include <QInputDialog>
#include <QMenu>
#include <QToolButton>
#include <QVBoxLayout>

static const int WidestCaption = 40; // characters

// Under a large value the whole expression would be long: the type and the field are what tells watches apart.
QString Watch::shortName() const
{
    const FieldPath& path = m_field.getPath();
    QString name = path.getName();
    // Of a type that is not known yet nobody can tell where its name ends. The number that tells types of one name
    // apart is in the tool tip.
    if (name.isEmpty())
        name = m_expression.getString(PathExpression::Parts(PathExpression::MessagePart)) + QLatin1Char('.') +
               m_expression.getString(PathExpression::FieldPart | PathExpression::IndexPart);
    const QString told = getShownSender();
    return told.isEmpty() ? name : name + QLatin1Char(' ') + told;
}

// Only where there are several.
QString Watch::getShownSender() const
{
    const FieldPath& path = m_field.getPath();
    const QString& sender = m_field.getSender();
    const bool isTold = !sender.isEmpty() && !path.isNull() && m_desk->getTypes()->isFromSeveral(path.getMessageInfo());
    return isTold ? sender : m_origin.isTold ? m_origin.sender : QString();
}

Watch::Watch(const QString& expression, const QString& name, const Origin& origin, Desk* desk)
    : m_desk(desk)
    , m_origin(origin)
    , m_caption(new QToolButton)
    , m_label(new FieldValueLabel(nullptr, nullptr, true, -1))
    , m_field(m_label, desk->getLatest())
{
    m_expression.setConsiderSubMessages(true);
    m_expression.setString(expression);
    setFrameShape(QFrame::StyledPanel);
    QVBoxLayout* layout = new QVBoxLayout(this);
    layout->setContentsMargins(6, 2, 6, 4);
    layout->setSpacing(0);

    QMenu* menu = new QMenu(m_caption);
    menu->addAction(tr("&Rename..."), this, &Watch::rename);
    menu->addAction(tr("Re&move"), this, &Watch::removeRequested);
    m_caption->setMenu(menu);
    m_caption->setPopupMode(QToolButton::InstantPopup);
    m_caption->setAutoRaise(true);
    QFont large = m_label->font();
    large.setPointSizeF(large.pointSizeF() * 1.5);
    m_label->setFont(large);
    m_label->setMinimumWidth(m_label->fontMetrics().horizontalAdvance(QLatin1String("-0000.00 m/s")));
    m_label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    layout->addWidget(m_caption, 0, Qt::AlignLeft);
    layout->addWidget(m_label);

    setName(name);
    connect(&m_expression, &PathExpression::matchesMayHaveChanged, this, &Watch::resolve);
    connect(&m_field, &WatchedField::senderChanged, this, &Watch::showSender);
    connect(desk->getTypes(), &MessageTypeModel::seen, this, &Watch::showSender);
    connect(desk->getTypes(), &MessageTypeModel::gone, this, &Watch::showSender);
    resolve();
}

Watch::~Watch()
{
    m_label->setTimeOut(-1); // a label leaves its timer behind unless told so
}

bool Watch::event(QEvent* event)
{
    // Grows with its values, as one that is cut off is another number; and does not shrink, or all behind it would
    // move.
    if (event->type() == QEvent::LayoutRequest && m_label->sizeHint().width() > m_label->minimumWidth())
        m_label->setMinimumWidth(m_label->sizeHint().width());
    return QFrame::event(event);
}

QString Watch::getExpression() const
{
    return m_expression.getString(PathExpression::AllParts);
}

void Watch::setName(const QString& name)
{
    const QString own = shortName();
    m_isNamed = !name.isEmpty() && name != own;
    m_name = m_isNamed ? name : own;
    const QFontMetrics metrics = m_caption->fontMetrics();
    const QString sender = m_isNamed ? QString() : getShownSender();
    const QString caption = CellDelegate::fit(m_name.left(m_name.size() - sender.size()), sender, metrics,
                                              WidestCaption * metrics.averageCharWidth());
    m_caption->setText(QString(caption).replace(QLatin1Char('&'), QLatin1String("&&")));
    // The value begins where its name does.
    const int inset = (m_caption->sizeHint().width() - metrics.horizontalAdvance(caption)) / 2;
    m_label->setContentsMargins(qMax(0, inset), 0, 0, 0);
    m_caption->setAccessibleName(tr("Watch %1").arg(m_name));
    setToldName(m_label, m_name);
}

QString Watch::getText() const
{
    return m_label->text();
}

void Watch::setTimeOut(int milliseconds)
{
    m_field.setTimeOut(milliseconds);
}

void Watch::resolve()
{
    m_field.follow(m_expression, m_origin.sender);
    showSender();
}

void Watch::renameSender(const QString& before, const QString& now)
{
    m_field.renameSender(before, now);
    if (!before.isEmpty() && m_origin.sender == before)
        m_origin.sender = now;
    showSender();
}

// In the name only where there are several, and where it is not the user's.
void Watch::showSender()
{
    if (!m_isNamed && m_name != shortName())
        setName(QString());
    const FieldInfo* const field = m_label->getFieldInfo();
    QString toolTip = getExpression();
    if (!m_field.getSender().isEmpty())
        toolTip += QLatin1Char('\n') + tr("Sender: %1").arg(m_field.getSender());
    if (!field && m_expression.getMatchingFieldInfos().isEmpty())
        toolTip += QLatin1Char('\n') + tr("No loaded definition has this field.");
    else if (!field)
        toolTip += QLatin1Char('\n') + tr("More than one field has this name.");
    else if (!field->getDescription().isEmpty())
        toolTip += QLatin1Char('\n') + field->getDescription();
    m_caption->setToolTip(toolTip);
    m_label->setToolTip(toolTip);
}

void Watch::rename()
{
    bool accepted = false;
    const QString name = QInputDialog::getText(this, tr("Rename Watch"), tr("&Name of %1:").arg(getExpression()),
                                               QLineEdit::Normal, m_name, &accepted);
    if (accepted)
        setName(name.trimmed());
}
