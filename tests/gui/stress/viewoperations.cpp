#include "desk.h"

#include "eventlogtablewidget.h"
#include "fieldvaluelabel.h"
#include "messageinfo.h"
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
    switch (m_chance.below(6)) {
    case 0:
        view->selectAll();
        break;
    case 1:
        view->clearSelection();
        break;
    case 2:
        view->setCurrentIndex(index);
        break;
    case 3:
        view->scrollToBottom();
        break;
    case 4:
        view->setSelectionMode(QAbstractItemView::SelectionMode(m_chance.below(4)));
        break;
    default:
        view->doItemsLayout();
        break;
    }
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
    const int choice = m_chance.below(16);
    note("sources", choice);
    const int stream = m_chance.pick(m_streams);
    switch (choice) {
    case 0:
        if (m_streams.size() < 3)
            m_streams.append(m_coordinator.addStream());
        break;
    case 1:
        if (m_streams.size() > 1)
            m_coordinator.removeStream(m_streams.takeLast());
        break;
    case 2:
        m_coordinator.clearStream(stream);
        break;
    case 3:
        m_coordinator.setStreamLabel(stream, QLatin1String(m_chance.coin() ? "north" : ""));
        break;
    case 4:
        if (m_chance.percent(20))
            m_coordinator.clear();
        break;
    case 5:
        m_coordinator.countEvent(CorvelEvent::CrcError, 1, stream);
        break;
    case 6:
        m_log.append(CorvelEvent(CorvelEvent::OtherEvent, QString::fromLatin1("event %1").arg(m_chance.below(100))),
                     m_chance.coin() ? QDateTime() : QDateTime(QDate(2020, 1, 1), QTime(1, 2)));
        break;
    case 7:
        m_otherLog.append(CorvelEvent(CorvelEvent::OtherEvent, QLatin1String("other")), QDateTime());
        break;
    case 8:
        if (m_chance.percent(30))
            m_log.clear();
        break;
    case 9:
    case 10:
        deliver(m_world.pickMainInfo());
        break;
    default:
        receive(stream);
        break;
    }
}

void Desk::operateOnStatistics(MessageStatisticsWidget* statistics)
{
    const int choice = m_chance.below(10);
    if (choice < 3) {
        operateOnItems(statistics);
        return;
    }
    if (choice == 3) {
        operateOnStatisticsCells(statistics);
        return;
    }
    note("statistics", choice);
    switch (choice) {
    case 4:
        statistics->writeSettings(m_settings);
        break;
    case 5:
        statistics->readSettings(m_settings);
        break;
    default:
        statistics->updateTree();
        break;
    }
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
    const int choice = m_chance.below(8);
    note("table", choice);
    switch (choice) {
    case 0:
        m_choiceDepth = m_depth;
        table->setCurrentCell(m_chance.below(table->rowCount()), m_chance.below(2));
        break;
    case 1:
        table->scrollToBottom();
        break;
    case 2:
        if (m_depth == 1 && m_chance.percent(10))
            table->setEventLog(&m_otherLog);
        break;
    case 3:
        table->resizeColumnsToContents();
        break;
    case 4:
        operateOnItemView(table);
        break;
    default:
        operateOnSources();
        break;
    }
}

void Desk::operateOnForm(MessageWidget* form)
{
    const int choice = m_chance.below(8);
    note("form", choice);
    const MessageReference message = MessageReference::adopt(m_world.createMessage(m_chance.pick(m_world.getInfos())));
    switch (choice) {
    case 0:
        form->setMessageInfo(m_world.pickInfo());
        break;
    case 1:
        form->displayMessage(m_chance.percent(20) ? nullptr : message.get());
        break;
    case 2:
        form->clearValues();
        break;
    case 3:
        form->displayMessage(message.get());
        break;
    default:
        form->processMessage(message.get());
        break;
    }
}

void Desk::operateOnValueLabel(FieldValueLabel* label)
{
    const int choice = m_chance.below(10);
    note("value label", choice);
    switch (choice) {
    case 0:
        label->setFieldInfo(m_world.getFields().isEmpty() || m_chance.percent(10) ? nullptr
                                                                                  : m_chance.pick(m_world.getFields()));
        break;
    case 1:
        label->setIndex(static_cast<unsigned int>(m_chance.below(4)));
        break;
    case 2:
        label->clearIndex();
        break;
    case 3:
        label->setShowInterpretedString(m_chance.coin());
        break;
    case 4:
        label->setTimeOut(m_chance.below(2) - 1);
        break;
    case 5:
        label->clearValue();
        break;
    default: {
        const MessageReference message = MessageReference::adopt(m_world.createMessage(m_world.pickMainInfo()));
        label->processMessage(message.get());
        break;
    }
    }
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
