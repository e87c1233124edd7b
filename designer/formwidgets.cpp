#include "eventlog.h"
#include "eventlogtablewidget.h"
#include "fieldvaluelabel.h"
#include "formwidget.h"
#include "messagestatisticscoordinator.h"
#include "messagestatisticswidget.h"
#include "messagetreewidget.h"
#include "messagewidget.h"
#include "pathexpressioncombobox.h"
#include "pathexpressionlabel.h"
#include "pathexpressionlineedit.h"
#include "pathexpressionlistwidget.h"

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

QWidget* createValue(QWidget* parent)
{
    QWidget* const widget = new FieldValueLabel(nullptr);
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

} // namespace

FormWidgets::FormWidgets(QObject* parent)
    : QObject(parent)
{
    const QSize view(320, 200);
    const QSize line(160, 24);
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
        new FormWidget("FieldValueLabel", "QLabel", QStringLiteral("The live value of one field"), line, createValue),
        new FormWidget("PathExpressionLabel", "QLabel", QStringLiteral("Shows parts of a path expression"), line,
                       createEditor<PathExpressionLabel>),
        new FormWidget("PathExpressionLineEdit", "QLineEdit", QStringLiteral("Edits parts of a path expression"), line,
                       createEditor<PathExpressionLineEdit>),
        new FormWidget("PathExpressionComboBox", "QComboBox",
                       QStringLiteral("Chooses parts of a path expression from a box"), line,
                       createChooser<PathExpressionComboBox>),
        new FormWidget("PathExpressionListWidget", "QListWidget",
                       QStringLiteral("Chooses parts of a path expression from a list"), view,
                       createChooser<PathExpressionListWidget>),
    };
}

FormWidgets::~FormWidgets()
{
    qDeleteAll(m_widgets);
}
