#include "eventlog.h"
#include "fieldvaluelabel.h"
#include "messagestatisticscoordinator.h"
#include "messagestatisticswidget.h"
#include "pathexpressionassistant.h"
#include "pathexpressionlineedit.h"
#include "pathwidgetfixtures.h"
#include "testbase.h"
#include "waitfor.h"

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
                                      QStringLiteral("PathExpressionLineEdit: A/x"),
                                      QStringLiteral("PathExpressionComboBox: No options"),
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

    void pathsOfTheFormHold()
    {
        const LetterFormat format;
        const std::unique_ptr<QWidget> form = load();
        FieldValueLabel* const label = form->findChild<FieldValueLabel*>();
        const MessageInfo* const type = format.info.getMessageInfo(text("B"));
        const MessageReference message = MessageReference::adopt(
            (new TestMessage(type))->set(type->getFieldInfo(text("x")), 1)->set(type->getFieldInfo(text("y")), 2));
        label->processMessage(message.get());
        QCOMPARE(label->text(), text("2"));
        QVERIFY(waitFor([label] { return label->text() == text("N/A"); }));
        for (const char* path : {"f/B/x", ""}) {
            label->setProperty("path", text(path));
            label->processMessage(message.get());
            QCOMPARE(label->text(), text(*path ? "1" : "N/A"));
        }
        QVERIFY(!MessageNeedManager::getInstance()->isNeeded(type));

        QCOMPARE(entriesText(*form->findChild<QComboBox*>()), text("All, A, <B>, C"));
        QCOMPARE(entriesText(*form->findChild<QListWidget*>()), text("<B>, C"));
        PathExpressionLineEdit* const edit = form->findChild<PathExpressionLineEdit*>();
        PathExpressionAssistant* const assistant = edit->findChild<PathExpressionAssistant*>();
        QVERIFY(assistant && assistant->getProblem().isEmpty());
        edit->setProperty("path", text("f/A/z"));
        QVERIFY(waitFor([assistant] { return !assistant->getProblem().isEmpty(); }));
        edit->setProperty("assisted", false);
        QVERIFY(!edit->findChild<PathExpressionAssistant*>());
    }

    void designerFindsNothingToSave()
    {
        const std::unique_ptr<QObject> plugin(QPluginLoader(QLatin1String(PLUGIN_FILE)).instance());
        QDesignerCustomWidgetCollectionInterface* const collection =
            qobject_cast<QDesignerCustomWidgetCollectionInterface*>(plugin.get());
        QVERIFY(collection);
        QStringList counts;
        for (QDesignerCustomWidgetInterface* type : collection->customWidgets()) {
            type->initialize(nullptr);
            const std::unique_ptr<QWidget> widget(type->createWidget(nullptr));
            const QAbstractItemView* const view = qobject_cast<const QAbstractItemView*>(widget.get());
            if (const QComboBox* const box = qobject_cast<const QComboBox*>(widget.get()))
                counts << QString::number(box->count());
            else if (view && !qobject_cast<const QListView*>(view))
                counts << QString::number(view->model()->columnCount());
            else if (view)
                counts << QString::number(view->model()->rowCount());
            widget->setProperty("path", text("f/A"));
            if (const QLabel* const label = qobject_cast<const QLabel*>(widget.get()))
                counts << label->text();
        }
        QCOMPARE(counts.join(text(", ")), text("0, 0, 0, f/A, f/A, 0, 0"));
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
