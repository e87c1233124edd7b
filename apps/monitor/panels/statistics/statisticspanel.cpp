#include "statisticspanel.h"

#include "celldelegate.h"
#include "csvfile.h"
#include "desk.h"
#include "messagestatistics.h"
#include "messagestatisticscoordinator.h"
#include "messagestatisticswidget.h"
#include "namecolumn.h"
#include "recordingoverview.h"
#include "statisticscsv.h"
#include "statisticsfilter.h"
#include "theme.h"
#include "words.h"

#include <QEvent>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QSettings>
#include <QShortcut>
#include <QSignalBlocker>
#include <QStackedWidget>
#include <QTabBar>
#include <QVBoxLayout>

static const int NamePercent = 50;

enum Tab
{
    WholeTab,
    PlayedTab
};

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

    // Types of several senders are told apart by what stands behind their names.
    QString getKept(const QModelIndex& index) const override
    {
        const bool isType = index.column() == 0 && index.parent().isValid() && !index.parent().parent().isValid();
        const QString name = isType ? index.data().toString() : QString();
        return name.endsWith(QLatin1Char(')')) ? name.mid(name.lastIndexOf(QLatin1String(" ("))) : QString();
    }
};

} // namespace

StatisticsPanel::StatisticsPanel(Desk* desk)
    : m_desk(desk)
    , m_page(new QWidget)
    , m_tabs(new QTabBar)
    , m_filter(new QLineEdit)
    , m_stack(new QStackedWidget)
    , m_widget(createWidget(desk->getCoordinator()))
    , m_shownRows(new StatisticsFilter(m_widget, [this]() { return getSenders(); }))
    , m_progress(new QLabel)
{
    m_widget->setAccessibleName(tr("Message statistics"));
    m_widget->installEventFilter(this);
    m_tabs->addTab(QString());
    m_tabs->addTab(tr("Played"));
    m_tabs->setTabToolTip(PlayedTab, tr("What was played since the recording was opened, or since the last jump"));
    m_tabs->setDrawBase(false);
    m_tabs->setExpanding(false);
    m_tabs->setAccessibleName(tr("What the statistics are about"));
    m_filter->setPlaceholderText(tr("Type or sender"));
    m_filter->setAccessibleName(tr("Show only the statistics of these types"));
    m_filter->setClearButtonEnabled(true);
    connect(m_filter, &QLineEdit::textChanged, this, &StatisticsPanel::filter);
    m_progress->setAlignment(Qt::AlignCenter);
    m_progress->setWordWrap(true);
    Theme::makeHint(m_progress);
    m_stack->addWidget(m_widget);
    m_stack->addWidget(m_progress);
    QVBoxLayout* const layout = new QVBoxLayout(m_page.get());
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    layout->addWidget(m_tabs);
    layout->addWidget(m_filter);
    layout->addWidget(m_stack, 1);
    connect(m_tabs, &QTabBar::tabBarClicked, this, &StatisticsPanel::choose);
    connect(m_tabs, &QTabBar::currentChanged, this, &StatisticsPanel::choose);

    desk->offerTypeUse(
        {[](const Subject&) { return tr("Show &Statistics"); }, [this](const Subject& subject) { reveal(subject); }});
    // Before new statistics can be taken for those that are gone.
    connect(desk->getSources(), &SourceModel::sessionRemoved, this, &StatisticsPanel::update);
    connect(desk, &Desk::chosenSourceChanged, this, &StatisticsPanel::followOverview);
    connect(desk, &Desk::overviewGrown, this, &StatisticsPanel::followOverview);
    connect(desk, &Desk::overviewEnded, this, &StatisticsPanel::followOverview);
    connect(desk->getSources(), &SourceModel::sessionRemoved, this, &StatisticsPanel::followOverview);
    followOverview();
}

StatisticsPanel::~StatisticsPanel() = default;

MessageStatisticsWidget* StatisticsPanel::createWidget(MessageStatisticsCoordinator* coordinator)
{
    MessageStatisticsWidget* const widget = new MessageStatisticsWidget(coordinator, nullptr);
    widget->setMinimumHeight(2 * widget->fontMetrics().lineSpacing()); // on a small screen
    widget->setUniformRowHeights(true); // or each change of a thousand rows would look for its place
    widget->header()->setStretchLastSection(false);
    new NameColumn(widget, NamePercent);
    widget->header()->resizeSection(1, widget->fontMetrics().horizontalAdvance(QLatin1String(" 0000000 ")));
    widget->resizeColumnToContents(2);
    widget->headerItem()->setTextAlignment(1, Qt::AlignRight | Qt::AlignVCenter);
    widget->setItemDelegate(new StatisticsCells(widget));
    connect(widget, &QTreeWidget::itemExpanded, this, &StatisticsPanel::listGaps);
    connect(widget, &QTreeWidget::itemDoubleClicked, this, &StatisticsPanel::jumpToGap);
    QShortcut* const enter = new QShortcut(Qt::Key_Return, widget, nullptr, nullptr, Qt::WidgetShortcut);
    connect(enter, &QShortcut::activated, this, [this, widget]() { jumpToGap(widget->currentItem()); });
    return widget;
}

QWidget* StatisticsPanel::getWidget()
{
    return m_page.get();
}

void StatisticsPanel::setWhole(bool whole)
{
    m_wantsWhole = whole;
    followOverview();
}

void StatisticsPanel::choose(int tab)
{
    if (tab >= 0 && m_wantsWhole != (tab == WholeTab))
        setWhole(tab == WholeTab);
}

/** Shows the overview of the chosen source as far as there is one. */
void StatisticsPanel::followOverview()
{
    RecordingOverview* const overview = m_desk->getOverview(m_desk->getChosenSource());
    const bool isComplete = overview && overview->isComplete();
    if (m_whole && (!isComplete || m_overview != overview)) {
        delete m_whole;
        m_whole = nullptr;
        m_shownWholeRows = nullptr;
    }
    if (isComplete && !m_whole) {
        m_overview = overview;
        m_whole = createWidget(overview->getCoordinator());
        m_whole->setAccessibleName(tr("Message statistics of the whole recording"));
        m_whole->header()->restoreState(m_widget->header()->saveState());
        m_whole->updateTree(); // once: nothing more comes
        m_shownWholeRows = new StatisticsFilter(m_whole, [this]() { return getWholeSenders(); });
        m_stack->addWidget(m_whole);
    }
    if (overview && !isComplete)
        m_progress->setText(tr("Looking through the recording: %1 %").arg(overview->getPercent()));
    const QSignalBlocker blocker(m_tabs);
    m_tabs->setVisible(overview);
    m_tabs->setTabText(WholeTab, overview && !isComplete ? tr("Whole Recording (%1 %)").arg(overview->getPercent())
                                                         : tr("Whole Recording"));
    m_tabs->setCurrentIndex(m_wantsWhole ? WholeTab : PlayedTab);
    QWidget* shown = m_widget;
    if (overview && m_wantsWhole)
        shown = m_whole ? static_cast<QWidget*>(m_whole) : m_progress;
    m_stack->setCurrentWidget(shown);
    filter();
}

QHash<const MessageStatistics*, QString> StatisticsPanel::getSenders() const
{
    QHash<const MessageStatistics*, QString> senders;
    const MessageTypeModel* const types = m_desk->getTypes();
    for (int row = 0; row < types->getCount(); ++row) {
        const Subject subject = types->getSubject(row);
        if (subject.info)
            senders.insert(types->findStatistics(subject), subject.sender);
    }
    return senders;
}

QHash<const MessageStatistics*, QString> StatisticsPanel::getWholeSenders() const
{
    QHash<const MessageStatistics*, QString> senders;
    for (int row = 0; m_overview && row < m_overview->getRows().size(); ++row)
        senders.insert(m_overview->getStatistics(row), m_overview->getRows().at(row).sender);
    return senders;
}

/** Only of what is seen, or each letter would be looked for twice. */
void StatisticsPanel::filter()
{
    const bool isWhole = m_whole && m_stack->currentWidget() == m_whole;
    (isWhole ? m_shownWholeRows : m_shownRows)->filter(Words::of(m_filter->text()));
}

void StatisticsPanel::addActionsTo(const PanelMenus& menus)
{
    menus.file->addAction(tr("Save St&atistics as CSV..."), this, [this]() {
        const bool isWhole = m_whole && m_wantsWhole;
        CsvFile::save(m_page.get(), m_desk, tr("Save Statistics"), QLatin1String("statistics.csv"),
                      StatisticsCsv::toCsv(isWhole ? *m_overview->getCoordinator() : *m_desk->getCoordinator()));
    });
}

void StatisticsPanel::saveSettings(QSettings& settings)
{
    settings.beginGroup(QLatin1String("statistics"));
    m_widget->writeSettings(settings);
    settings.setValue(QLatin1String("whole"), m_wantsWhole);
    settings.endGroup();
}

void StatisticsPanel::restoreSettings(QSettings& settings)
{
    settings.beginGroup(QLatin1String("statistics"));
    m_widget->readSettings(settings);
    setWhole(settings.value(QLatin1String("whole"), true).toBool());
    settings.endGroup();
}

void StatisticsPanel::tick()
{
    if (!m_desk->isPaused() && m_widget->isVisible())
        update();
}

void StatisticsPanel::update()
{
    m_widget->updateSome();
    filter();
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
    m_widget->updateTree();
    filter();
    const SourceSession* const session = m_desk->getChosenSource();
    const MessageStatistics* statistics = nullptr;
    if (m_whole && m_wantsWhole)
        for (int i = 0; i < m_overview->getRows().size() && !statistics; ++i)
            if (subject.covers(m_overview->getRows().at(i).info,
                               session->qualifiedName(m_overview->getRows().at(i).sender)))
                statistics = m_overview->getStatistics(i);
    MessageStatisticsWidget* const widget = statistics ? m_whole : m_widget;
    if (!statistics) {
        statistics = m_desk->getTypes()->findStatistics(subject);
        setWhole(m_wantsWhole && !statistics); // it is of another source
    }
    QTreeWidgetItem* const row = statistics ? findRow(widget->invisibleRootItem(), statistics) : nullptr;
    if (!row)
        return;
    Q_EMIT m_desk->wanted(m_page.get());
    if (row->isHidden())
        m_filter->clear();
    widget->setCurrentItem(row);
    row->setExpanded(true);
    widget->scrollToItem(row, QAbstractItemView::PositionAtTop);
}

/** Makes rows of all gaps below the one that was unfolded, if it is one of gaps. */
void StatisticsPanel::listGaps(QTreeWidgetItem* item)
{
    auto* const row = item ? dynamic_cast<MessageStatisticsTreeWidgetItem*>(item->parent()) : nullptr;
    if (!row || !row->getGap(item->child(0)))
        return;
    row->getMessageStatistics()->setGapsListed(true);
    row->updateContents();
}

void StatisticsPanel::jumpToGap(QTreeWidgetItem* item)
{
    const MessageStatistics::Gap* found = nullptr;
    for (QTreeWidgetItem* parent = item; parent; parent = parent->parent())
        if (const auto* const row = dynamic_cast<MessageStatisticsTreeWidgetItem*>(parent))
            if (const MessageStatistics::Gap* const gap = row->getGap(item))
                found = gap;
    if (!found)
        return;
    m_desk->jumpTo(qint64(found->start));
}
