#include "statisticspanel.h"

#include "celldelegate.h"
#include "csvfile.h"
#include "desk.h"
#include "emptyhint.h"
#include "messagestatisticswidget.h"
#include "namecolumn.h"
#include "statisticscsv.h"

#include <QEvent>
#include <QHeaderView>
#include <QMenu>
#include <QSettings>
#include <QShortcut>

static const int LeastPause = 100; // between two updates, as a multiple of what one takes
static const int NamePercent = 50;

namespace
{

class StatisticsCells : public CellDelegate
{
public:
    explicit StatisticsCells(QObject* parent)
        : CellDelegate(parent)
    {
        setName(0);
        setNumeric(1);
    }

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override
    {
        CellDelegate::initStyleOption(option, index);
        if (index.column() == 0 && index.parent().parent().parent().isValid())
            option->textElideMode = Qt::ElideLeft; // of a time, the date is what can be spared
    }
};

} // namespace

StatisticsPanel::StatisticsPanel(Desk* desk)
    : m_desk(desk)
    , m_widget(new MessageStatisticsWidget(desk->getCoordinator(), nullptr))
{
    m_widget->setAccessibleName(tr("Message statistics"));
    m_widget->setUniformRowHeights(true); // or each change of a thousand rows would look for its place
    m_widget->header()->setStretchLastSection(false);
    new NameColumn(m_widget.get(), NamePercent);
    m_widget->header()->resizeSection(1, m_widget->fontMetrics().horizontalAdvance(QLatin1String(" 0000000 ")));
    m_widget->resizeColumnToContents(2);
    m_widget->headerItem()->setTextAlignment(1, Qt::AlignRight | Qt::AlignVCenter);
    m_widget->setItemDelegate(new StatisticsCells(m_widget.get()));
    m_widget->installEventFilter(this);
    new EmptyHint(m_widget.get(),
                  tr("How often and how regularly messages come is told here once some were received."));

    connect(m_widget.get(), &QTreeWidget::itemDoubleClicked, this, &StatisticsPanel::jumpToGap);
    QShortcut* const enter = new QShortcut(Qt::Key_Return, m_widget.get(), nullptr, nullptr, Qt::WidgetShortcut);
    connect(enter, &QShortcut::activated, this, [this]() { jumpToGap(m_widget->currentItem()); });
    desk->offerTypeUse(
        {[](const Subject&) { return tr("Show &Statistics"); }, [this](const Subject& subject) { reveal(subject); }});
    // Before new statistics can be taken for those that are gone.
    connect(desk->getSources(), &SourceModel::sessionRemoved, this, [this]() { m_widget->updateTree(); });
}

StatisticsPanel::~StatisticsPanel() = default;

QWidget* StatisticsPanel::getWidget()
{
    return m_widget.get();
}

void StatisticsPanel::addActionsTo(const PanelMenus& menus)
{
    menus.file->addAction(tr("Save S&tatistics as CSV..."), this, [this]() {
        CsvFile::save(m_widget.get(), m_desk, tr("Save Statistics"), QLatin1String("statistics.csv"),
                      StatisticsCsv::toCsv(*m_desk->getCoordinator()));
    });
}

void StatisticsPanel::saveSettings(QSettings& settings)
{
    settings.beginGroup(QLatin1String("statistics"));
    m_widget->writeSettings(settings);
    settings.endGroup();
}

void StatisticsPanel::restoreSettings(QSettings& settings)
{
    settings.beginGroup(QLatin1String("statistics"));
    m_widget->readSettings(settings);
    settings.endGroup();
}

void StatisticsPanel::tick()
{
    if (m_desk->isPaused() || !m_widget->isVisible())
        return;
    // Of thousands of senders, the other views come first.
    if (!m_sinceUpdate.isValid() || m_sinceUpdate.nsecsElapsed() >= LeastPause * m_updateTime)
        update();
}

void StatisticsPanel::update()
{
    m_sinceUpdate.start();
    m_widget->updateTree();
    m_updateTime = m_sinceUpdate.nsecsElapsed();
}

bool StatisticsPanel::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Show)
        update(); // of what came while nobody looked
    return QObject::eventFilter(watched, event);
}

static QTreeWidgetItem* findRow(QTreeWidgetItem* item, const MessageStatistics* statistics)
{
    auto* const row = dynamic_cast<MessageStatisticsTreeWidgetItem*>(item);
    if (row)
        return row->getMessageStatistics() == statistics ? row : nullptr;
    QTreeWidgetItem* found = nullptr;
    for (int i = 0; i < item->childCount() && !found; ++i)
        found = findRow(item->child(i), statistics);
    return found;
}

void StatisticsPanel::reveal(const Subject& subject)
{
    update();
    const MessageStatistics* const statistics = m_desk->getTypes()->findStatistics(subject);
    QTreeWidgetItem* const row = statistics ? findRow(m_widget->invisibleRootItem(), statistics) : nullptr;
    if (!row)
        return;
    Q_EMIT m_desk->wanted(m_widget.get());
    m_widget->setCurrentItem(row);
    row->setExpanded(true);
    m_widget->scrollToItem(row, QAbstractItemView::PositionAtTop);
}

void StatisticsPanel::jumpToGap(QTreeWidgetItem* item)
{
    for (QTreeWidgetItem* parent = item; parent; parent = parent->parent())
        if (const auto* const row = dynamic_cast<MessageStatisticsTreeWidgetItem*>(parent))
            if (const MessageStatistics::Gap* const gap = row->getGap(item))
                m_desk->jumpTo(qint64(gap->start));
}
