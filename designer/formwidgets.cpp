#include "eventlog.h"
#include "eventlogtablewidget.h"
#include "fieldvaluelabel.h"
#include "formwidget.h"
#include "messagestatisticscoordinator.h"
#include "messagestatisticswidget.h"
#include "messagetreewidget.h"
#include "messagewidget.h"
#include "pathexpressionassistant.h"
#include "pathexpressioncombobox.h"
#include "pathexpressionlabel.h"
#include "pathexpressionlineedit.h"
#include "pathexpressionlistwidget.h"
#include "pathfieldinfo.h"

namespace
{

QWidget* createTree(QWidget* parent)
{
    return new MessageTreeWidget(parent);
}

QWidget* createStatistics(QWidget* parent)
{
    MessageStatisticsCoordinator* const coordinator = new MessageStatisticsCoordinator;
    QWidget* const widget = new MessageStatisticsWidget(coordinator, parent);
    coordinator->setObjectName(QStringLiteral("coordinator"));
    coordinator->setParent(widget);
    return widget;
}

QWidget* createEvents(QWidget* parent)
{
    EventLog* const log = new EventLog;
    QWidget* const widget = new EventLogTableWidget(log, parent);
    log->setObjectName(QStringLiteral("eventLog"));
    log->setParent(widget);
    return widget;
}

/** Takes the time-out away before it goes, which labels leave to those who gave it. */
class FormValueLabel : public FieldValueLabel
{
public:
    FormValueLabel()
        : FieldValueLabel(nullptr)
    {
    }
    ~FormValueLabel() override { setTimeOut(-1); }
};

QWidget* createValue(QWidget* parent)
{
    QWidget* const widget = new FormValueLabel;
    widget->setParent(parent);
    return widget;
}

QWidget* createForm(QWidget* parent)
{
    return new MessageWidget(parent);
}

template <typename Editor>
QWidget* createEditor(QWidget* parent)
{
    return new Editor(nullptr, PathExpression::AllParts, parent);
}

template <typename Chooser>
QWidget* createChooser(QWidget* parent)
{
    return new Chooser(nullptr, PathExpression::AllParts, nullptr, parent);
}

/** The expression that a form gives @p widget under @p name; made when it is first asked for. */
PathExpression* expressionOf(QWidget* widget, const char* name, const QVariant& path)
{
    PathExpression* expression = widget->findChild<PathExpression*>(QLatin1String(name), Qt::FindDirectChildrenOnly);
    if (!expression) {
        expression = new PathExpression(widget);
        expression->setObjectName(QLatin1String(name));
        expression->setConsiderSubMessages(true);
    }
    expression->setString(path.toString());
    return expression;
}

template <typename Editor>
void setPath(QWidget* widget, const QVariant& path)
{
    static_cast<Editor*>(widget)->setPathExpression(expressionOf(widget, "expression", path));
}

template <typename Chooser>
void setOptionsPath(QWidget* widget, const QVariant& path)
{
    static_cast<Chooser*>(widget)->setOptionsSourcePathExpression(expressionOf(widget, "options", path));
}

template <typename Editor>
void setParts(QWidget* widget, const QVariant& parts)
{
    static_cast<Editor*>(widget)->setParts(PathExpression::Parts(QFlag(parts.toInt())));
}

void setFieldPath(QWidget* widget, const QVariant& path)
{
    FieldValueLabel* const label = static_cast<FieldValueLabel*>(widget);
    QObject* const former = label->findChild<QObject*>(QStringLiteral("field"), Qt::FindDirectChildrenOnly);
    QObject* const owner = new QObject(label);
    owner->setObjectName(QStringLiteral("field"));
    label->setFieldInfo(path.toString().isEmpty() ? nullptr : new PathFieldInfo(path.toString(), owner));
    label->clearValue();
    delete former;
}

void setInterpreted(QWidget* widget, const QVariant& interpreted)
{
    static_cast<FieldValueLabel*>(widget)->setShowInterpretedString(interpreted.toBool());
}

void setTimeOut(QWidget* widget, const QVariant& milliseconds)
{
    static_cast<FieldValueLabel*>(widget)->setTimeOut(milliseconds.toInt());
}

void setAssisted(QWidget* widget, const QVariant& assisted)
{
    PathExpressionAssistant* const former = widget->findChild<PathExpressionAssistant*>();
    if (assisted.toBool() && !former)
        new PathExpressionAssistant(static_cast<PathExpressionLineEdit*>(widget));
    else if (!assisted.toBool())
        delete former;
}

template <typename Editor>
QVector<FormProperty> editorProperties()
{
    return {{"path", QString(), QStringLiteral("The path expression, such as corvel/ATTITUDE/roll"), &setPath<Editor>},
            {"parts", int(PathExpression::AllParts),
             QStringLiteral("Which of its parts: the sum of 1 for the format, 2 for the message type, 4 for the field "
                            "and 8 for the index"),
             &setParts<Editor>}};
}

template <typename Chooser>
QVector<FormProperty> chooserProperties()
{
    return editorProperties<Chooser>() +
           QVector<FormProperty>{{"options", QString(),
                                  QStringLiteral("The path expression whose matches can be chosen, such as corvel"),
                                  &setOptionsPath<Chooser>}};
}

} // namespace

FormWidgets::FormWidgets(QObject* parent)
    : QObject(parent)
{
    const QSize view(320, 200);
    const QSize line(160, 24);
    const QVector<FormProperty> valueProperties = {
        {"path", QString(),
         QStringLiteral("The path to the field, also through sub-messages, such as corvel/ATTITUDE/roll"),
         &setFieldPath},
        {"showInterpretedString", true, QStringLiteral("Whether the value has its unit, or is plain"), &setInterpreted},
        {"timeOut", -1, QStringLiteral("Milliseconds until an old value gives way to \"N/A\"; -1 for never"),
         &setTimeOut},
    };
    const QVector<FormProperty> lineEditProperties =
        editorProperties<PathExpressionLineEdit>() +
        QVector<FormProperty>{{"assisted", false,
                               QStringLiteral("Whether names are completed, and what is wrong is marked"),
                               &setAssisted}};
    m_widgets = {
        new FormWidget(
            "MessageTreeWidget", "QTreeWidget",
            QStringLiteral("The latest message of each type, field by field; the application adds the types"), view,
            createTree),
        new FormWidget("MessageStatisticsWidget", "QTreeWidget",
                       QStringLiteral("How often and how regularly messages arrive, by its child \"coordinator\""),
                       view, createStatistics),
        new FormWidget("EventLogTableWidget", "QTableWidget",
                       QStringLiteral("Events with their times, of its child \"eventLog\" or of a log that is set"),
                       view, createEvents),
        new FormWidget("MessageWidget", "QWidget", QStringLiteral("A form of all fields of one message type"), view,
                       createForm),
        new FormWidget("FieldValueLabel", "QLabel", QStringLiteral("The live value of one field"), line, createValue,
                       valueProperties),
        new FormWidget("PathExpressionLabel", "QLabel", QStringLiteral("Shows parts of a path expression"), line,
                       createEditor<PathExpressionLabel>, editorProperties<PathExpressionLabel>()),
        new FormWidget("PathExpressionLineEdit", "QLineEdit", QStringLiteral("Edits parts of a path expression"), line,
                       createEditor<PathExpressionLineEdit>, lineEditProperties),
        new FormWidget("PathExpressionComboBox", "QComboBox",
                       QStringLiteral("Chooses parts of a path expression from a box"), line,
                       createChooser<PathExpressionComboBox>, chooserProperties<PathExpressionComboBox>()),
        new FormWidget("PathExpressionListWidget", "QListWidget",
                       QStringLiteral("Chooses parts of a path expression from a list"), view,
                       createChooser<PathExpressionListWidget>, chooserProperties<PathExpressionListWidget>()),
    };
}

FormWidgets::~FormWidgets()
{
    qDeleteAll(m_widgets);
}
