#include "eventlog.h"
#include "messagestatisticscoordinator.h"
#include "messagestatisticswidget.h"
#include "testbase.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QFile>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPluginLoader>
#include <QTreeWidget>
#include <QtUiPlugin/QDesignerCustomWidgetCollectionInterface>
#include <QUiLoader>

#include <memory>

/** The widgets in a form, as the plugin for Qt Designer makes them. */
class FormWidgetsTest : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void formHasEveryWidget()
    {
        const std::unique_ptr<QWidget> form = load();
        QStringList actual;
        for (const QObject* widget : form->children())
            if (widget->isWidgetType())
                actual << QLatin1String(widget->metaObject()->className()) + QLatin1String(": ") + tell(widget);
        const QStringList expected = {QStringLiteral("MessageTreeWidget: Name, Type, Value"),
                                      QStringLiteral("MessageStatisticsWidget: Message, Count, Current rate/interval"),
                                      QStringLiteral("EventLogTableWidget: Time, Message"),
                                      QStringLiteral("MessageWidget: "),
                                      QStringLiteral("FieldValueLabel: N/A"),
                                      QStringLiteral("PathExpressionLabel: No path expression set!"),
                                      QStringLiteral("PathExpressionLineEdit: No path expression set!"),
                                      QStringLiteral("PathExpressionComboBox: Null path expression set!"),
                                      QStringLiteral("PathExpressionListWidget: ")};
        QCOMPARE(actual, expected);
    }

    void viewsShowTheirOwnLogAndCoordinator()
    {
        const std::unique_ptr<QWidget> form = load();
        QAbstractItemView* const events = form->findChild<QAbstractItemView*>(QLatin1String("eventLogTableWidget"));
        events->findChild<EventLog*>()->append(CorvelEvent(CorvelEvent::OtherEvent, QLatin1String("low")), QDateTime());
        QCOMPARE(events->model()->rowCount(), 1);

        MessageStatisticsWidget* const statistics = form->findChild<MessageStatisticsWidget*>();
        QObject* const child = statistics->findChild<QObject*>(QLatin1String("coordinator"));
        MessageStatisticsCoordinator* const coordinator = dynamic_cast<MessageStatisticsCoordinator*>(child);
        QVERIFY(coordinator);
        coordinator->countEvent(CorvelEvent::CrcError);
        statistics->updateTree();
        QCOMPARE(statistics->topLevelItemCount(), 1);
    }

    void designerFindsNoColumnsToSave()
    {
        const std::unique_ptr<QObject> plugin(QPluginLoader(QLatin1String(PLUGIN_FILE)).instance());
        QDesignerCustomWidgetCollectionInterface* const collection =
            qobject_cast<QDesignerCustomWidgetCollectionInterface*>(plugin.get());
        QVERIFY(collection);
        QStringList columns;
        for (QDesignerCustomWidgetInterface* type : collection->customWidgets()) {
            type->initialize(nullptr);
            const std::unique_ptr<QWidget> widget(type->createWidget(nullptr));
            const QAbstractItemView* const view = qobject_cast<const QAbstractItemView*>(widget.get());
            if (view && !qobject_cast<const QListView*>(view))
                columns << QString::number(view->model()->columnCount());
            else if (view)
                columns << QString::number(view->model()->rowCount());
        }
        QCOMPARE(columns,
                 QStringList() << QLatin1String("0") << QLatin1String("0") << QLatin1String("0") << QLatin1String("0"));
    }

private:
    static std::unique_ptr<QWidget> load()
    {
        QUiLoader loader;
        loader.clearPluginPaths();
        loader.addPluginPath(QLatin1String(PLUGIN_DIR));
        QFile file(QLatin1String(FORM_FILE));
        if (!file.open(QIODevice::ReadOnly))
            return nullptr;
        return std::unique_ptr<QWidget>(loader.load(&file));
    }

    static QString tell(const QObject* widget)
    {
        if (const QLabel* const label = qobject_cast<const QLabel*>(widget))
            return label->text();
        if (const QLineEdit* const edit = qobject_cast<const QLineEdit*>(widget))
            return edit->text();
        if (const QComboBox* const box = qobject_cast<const QComboBox*>(widget))
            return box->currentText();
        QStringList headers;
        const QHeaderView* header = widget->findChild<QHeaderView*>();
        for (const QHeaderView* other : widget->findChildren<QHeaderView*>())
            if (other->orientation() == Qt::Horizontal)
                header = other;
        for (int column = 0; header && column < header->count(); ++column)
            if (!header->isSectionHidden(column))
                headers << header->model()->headerData(column, Qt::Horizontal).toString();
        return headers.join(QLatin1String(", "));
    }
};

QTEST_MAIN(FormWidgetsTest)
#include "tst_formwidgets.moc"
