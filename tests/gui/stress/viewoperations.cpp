#include "desk.h"

#include "eventlogtablewidget.h"
#include "fieldvaluelabel.h"
#include "messagereference.h"
#include "messagestatistics.h"
#include "messagestatisticswidget.h"
#include "messagetreewidget.h"
#include "messagetreewidgetitem.h"
#include "messagewidget.h"
#include "shown.h"

#include <QHeaderView>

// What can be done with the views that are not the message tree, and with what they show.

void Desk::operateOnItemView(QAbstractItemView* view)
{
    m_choiceDepth = m_depth;
    const QModelIndex index = view->indexAt(QPoint(m_chance.below(200), m_chance.below(200)));
    const Operations operations = {
        [&] { view->selectAll(); },
        [&] { view->clearSelection(); },
        [&] { view->setCurrentIndex(index); },
        [&] { view->scrollToBottom(); },
        [&] { view->setSelectionMode(QAbstractItemView::SelectionMode(m_chance.below(4))); },
        [&] { view->doItemsLayout(); },
    };
    doOneOf(nullptr, 6, operations);
}

void Desk::receive(int stream)
{
    // A burst of one type: regular, but for a gap now and then, a time that is not known, or one of the past.
    const int row = m_chance.below(4);
    const int sender = m_chance.percent(5);
    const MessageStatisticsCoordinator::Origin origin(m_world.getInfos().value(row), sender, QString::number(sender),
                                                      QLatin1String("Unknown"));
    MessageStatistics* statistics = m_coordinator.findOrCreate(stream, 2 * row + sender, origin);
    for (int i = m_chance.below(40); i > 0; --i) {
        const int step = m_chance.below(100);
        m_time += step < 10 ? 100000 * m_chance.below(20) : step < 12 ? -3000000 : 100000;
        statistics->addReception(m_chance.percent(3) ? qint64(Message::NoTime) : m_time);
    }
    m_coordinator.setCurrentTime(stream, m_time);
}

void Desk::operateOnSources()
{
    const int choice = choose("sources", 16);
    const int stream = m_chance.pick(m_streams);
    const auto event = [](const QString& message) { return CorvelEvent(CorvelEvent::OtherEvent, message); };
    const std::function<void()> send = [&] { m_source.deliver(m_world.createMessage(m_world.pickMainInfo()).get()); };
    const Operations operations = {
        [&] {
            if (m_streams.size() < 3)
                m_streams.append(m_coordinator.addStream());
        },
        [&] {
            if (m_streams.size() > 1)
                m_coordinator.removeStream(m_streams.takeLast());
        },
        [&] { m_coordinator.clearStream(stream); },
        [&] { m_coordinator.setStreamLabel(stream, QLatin1String(m_chance.coin() ? "north" : "")); },
        [&] {
            if (m_chance.percent(20))
                m_coordinator.clear();
        },
        [&] { m_coordinator.countEvent(CorvelEvent::CrcError, 1, stream); },
        [&] {
            const QDateTime time = m_chance.coin() ? QDateTime() : QDateTime(QDate(2020, 1, 1), QTime(1, 2));
            m_log.append(event(QString::fromLatin1("event %1").arg(m_chance.below(100))), time);
        },
        [&] { m_otherLog.append(event(QLatin1String("other")), QDateTime()); },
        [&] {
            if (m_chance.percent(30))
                m_log.clear();
        },
        send,
        send,
        [&] { receive(stream); },
    };
    perform(choice, operations);
}

void Desk::operateOnStatistics(MessageStatisticsWidget* statistics)
{
    const std::function<void()> items = [&] { operateOnItems(statistics); };
    const Operations operations = {
        items,
        items,
        items,
        [&] { operateOnStatisticsCells(statistics); },
        [&] { statistics->writeSettings(m_settings); },
        [&] { statistics->readSettings(m_settings); },
        [&] { statistics->updateTree(); },
    };
    doOneOf("statistics", 10, operations);
}

void Desk::operateOnStatisticsCells(MessageStatisticsWidget* statistics)
{
    note("statistics cells");
    QTreeWidgetItem* item = pickItem(statistics);
    if (!item)
        return;
    MessageStatisticsTreeWidgetItem* row = dynamic_cast<MessageStatisticsTreeWidgetItem*>(item);
    if (row) {
        if (m_chance.coin())
            row->fullExpand();
        else
            row->updateContents();
        return;
    }
    // An application may write into the counts, and may delete rows of gaps.
    QTreeWidgetItem* parent = item->parent();
    const bool isGap = parent && parent->toolTip(0) == QObject::tr("Gaps, with time and duration");
    // A text in the column by which Qt's model sorts is not for others to change: of rows that read alike it then moves
    // one without telling views, and does not survive that rows change in answer.
    m_answers = 0;
    const bool sortsByCount = statistics->isSortingEnabled() && statistics->header()->sortIndicatorSection() == 1;
    if (isGap)
        delete item;
    else if (!sortsByCount && parent && parent->parent() && parent->parent()->parent())
        item->setText(1, QString::number(m_chance.below(9)));
}

void Desk::operateOnTable(EventLogTableWidget* table)
{
    const Operations operations = {
        [&] {
            m_choiceDepth = m_depth;
            table->setCurrentCell(m_chance.below(table->rowCount()), m_chance.below(2));
        },
        [&] { table->scrollToBottom(); },
        [&] {
            if (m_depth == 1 && m_chance.percent(10))
                table->setEventLog(&m_otherLog);
        },
        [&] { table->resizeColumnsToContents(); },
        [&] { operateOnItemView(table); },
        [&] { operateOnSources(); },
    };
    doOneOf("table", 8, operations);
}

void Desk::operateOnForm(MessageWidget* form)
{
    const int choice = choose("form", 8);
    const MessageReference message = m_world.createMessage(m_chance.pick(m_world.getInfos()));
    const Operations operations = {
        [&] { form->setMessageInfo(m_world.pickInfo()); },
        [&] { form->displayMessage(m_chance.percent(20) ? nullptr : message.get()); },
        [&] { form->clearValues(); },
        [&] { form->displayMessage(message.get()); },
        [&] { form->processMessage(message.get()); },
    };
    perform(choice, operations);
}

void Desk::operateOnValueLabel(FieldValueLabel* label)
{
    const Operations operations = {
        [&] { label->setFieldInfo(m_chance.percent(10) ? nullptr : m_chance.pick(m_world.getFields())); },
        [&] { label->setIndex(static_cast<unsigned int>(m_chance.below(4))); },
        [&] { label->clearIndex(); },
        [&] { label->setShowInterpretedString(m_chance.coin()); },
        [&] { label->setTimeOut(m_chance.below(2) - 1); },
        [&] { label->clearValue(); },
        [&] { label->processMessage(m_world.createMessage(m_world.pickMainInfo()).get()); },
    };
    doOneOf("value label", 10, operations);
}

void Desk::readFrom(QObject* target)
{
    note("read");
    if (Tree* tree = qobject_cast<Tree*>(target)) {
        tree->getTopLevelAbstractMessageTreeWidgetItems();
        tree->getColumns();
        rowTexts(*tree);
        tree->saveExpansionState(m_settings);
    } else if (QTreeWidget* other = qobject_cast<QTreeWidget*>(target)) {
        rowTexts(*other);
    } else if (MessageWidget* form = qobject_cast<MessageWidget*>(target)) {
        form->clearValues();
    }
}
