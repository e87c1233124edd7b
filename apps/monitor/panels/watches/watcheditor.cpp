#include "watcheditor.h"

#include "fieldinfo.h"
#include "fieldvaluelabel.h"
#include "labels.h"
#include "pathexpressionassistant.h"
#include "pathexpressioncombobox.h"
#include "pathexpressionlineedit.h"

#include <QAbstractItemView>
#include <QFocusEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QTimer>

static const int MostPinned = 50; // nobody means to pin more at once
static const int MostVisible = 15;

static const PathExpression::Parts Format(PathExpression::FormatPart);
static const PathExpression::Parts MessageType(PathExpression::MessagePart);
static const PathExpression::Parts Field(PathExpression::FieldPart);

static QString orAll(const QString& text)
{
    return text.isEmpty() ? QString(QLatin1Char('*')) : text;
}

WatchEditor::WatchEditor(LatestMessageSource* source, QWidget* parent)
    : QWidget(parent)
    , m_line(new PathExpressionLineEdit(&m_expression, PathExpression::AllParts, this))
    , m_value(new FieldValueLabel(nullptr, nullptr, true, -1))
    , m_watched(m_value, source)
    , m_status(new QLabel)
    , m_pin(new QPushButton(tr("P&in")))
{
    m_expression.setConsiderSubMessages(true);
    m_expression.setWildCard(Format | MessageType);
    narrow(PathExpression::AllParts);

    PathExpressionComboBox* formats = new PathExpressionComboBox(&m_expression, Format, &m_formats, this);
    PathExpressionComboBox* messages = new PathExpressionComboBox(&m_expression, MessageType, &m_messages, this);
    PathExpressionComboBox* fields = new PathExpressionComboBox(&m_expression, Field, &m_fields, this);
    const QList<QPair<PathExpressionComboBox*, QString>> boxes = {
        {formats, tr("Format")}, {messages, tr("Message type")}, {fields, tr("Field")}};
    QHBoxLayout* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(new QLabel(tr("Watch:")));
    for (const QPair<PathExpressionComboBox*, QString>& box : boxes) {
        box.first->setAllOptionEnabled(true, tr("All"));
        box.first->setAccessibleName(box.second);
        box.first->setToolTip(box.second);
        box.first->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        box.first->setMinimumContentsLength(box.first == messages ? 10 : 7);
        box.first->setMinimumWidth(box.first->fontMetrics().averageCharWidth() * (box.first == messages ? 13 : 10));
        box.first->setMaxVisibleItems(MostVisible);
        box.first->view()->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
        box.first->view()->setMinimumWidth(box.first->fontMetrics().averageCharWidth() * 36);
        layout->addWidget(box.first);
    }

    new PathExpressionAssistant(m_line);
    m_line->setAccessibleName(tr("Path expression"));
    m_line->setToolTip(tr("A path such as */ATTITUDE/roll; Return takes it"));
    m_line->setMinimumWidth(m_line->fontMetrics().averageCharWidth() * 12);
    m_line->installEventFilter(this);
    layout->addWidget(m_line, 1);

    m_value->setMinimumWidth(m_value->fontMetrics().horizontalAdvance(QLatin1String("-000.0000 m/s")));
    setToldName(m_value, tr("Value"));
    m_status->setEnabled(false);
    m_status->setMinimumWidth(1); // where there is no room, the boxes need it more
    m_pin->setToolTip(tr("Keep this value in sight below"));
    layout->addWidget(m_value);
    layout->addWidget(m_status);
    layout->addWidget(m_pin);
    const QWidgetList inOrder = {formats, messages, fields, m_line, m_pin};
    for (int i = 1; i < inOrder.size(); ++i)
        setTabOrder(inOrder.at(i - 1), inOrder.at(i));
    connect(m_pin, &QPushButton::clicked, this, &WatchEditor::pin);
    connect(&m_expression, &PathExpression::partsChanged, this, &WatchEditor::narrow);
    connect(&m_expression, &PathExpression::matchesMayHaveChanged, this, &WatchEditor::resolve);
    resolve();
}

WatchEditor::~WatchEditor() = default;

void WatchEditor::setExpression(const QString& expression)
{
    m_expression.setString(expression);
    m_line->updateText(); // also while it has the focus
}

QString WatchEditor::getExpression() const
{
    return m_expression.getString(PathExpression::AllParts);
}

bool WatchEditor::eventFilter(QObject* watched, QEvent* event)
{
    // What is typed into a line that a click led to is a new path, and not the end of the one that stood there.
    if (event->type() == QEvent::FocusIn && static_cast<QFocusEvent*>(event)->reason() == Qt::MouseFocusReason)
        QTimer::singleShot(0, m_line, &QLineEdit::selectAll);
    return QWidget::eventFilter(watched, event);
}

void WatchEditor::narrow(PathExpression::Parts changed)
{
    const QString format = orAll(m_expression.getString(Format));
    m_formats.setWildCard(Format);
    if (changed & Format) {
        m_messages.setString(format, Format);
        m_messages.setWildCard(MessageType);
    }
    if (changed & (Format | MessageType)) {
        m_fields.setString(format, Format);
        m_fields.setString(orAll(m_expression.getString(MessageType)), MessageType);
        m_fields.setWildCard(Field);
    }
}

void WatchEditor::resolve()
{
    const bool named = !m_expression.getString(Field).isEmpty();
    const QVector<const FieldInfo*> fields = named ? m_expression.getMatchingFieldInfos() : QVector<const FieldInfo*>();
    const FieldInfo* field = nullptr;
    if (named)
        field = m_watched.follow(m_expression);
    else
        m_watched.followNothing();
    if (!m_expression.errorString().isEmpty())
        m_status->setText(m_expression.errorString());
    else if (!named)
        m_status->setText(tr("Choose a field"));
    else
        m_status->setText(fields.size() == 1 ? tr("1 field") : tr("%1 fields").arg(fields.size()));
    m_value->setVisible(field);
    m_status->setVisible(!field);
    m_pin->setEnabled(!fields.isEmpty() && fields.size() <= MostPinned);
}

void WatchEditor::pin()
{
    Q_EMIT pinRequested(m_expression.getMatchingExpressionsStringList(PathExpression::AllParts));
}
