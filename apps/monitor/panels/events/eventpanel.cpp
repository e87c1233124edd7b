#include "eventpanel.h"

#include "celldelegate.h"
#include "csvfile.h"
#include "desk.h"
#include "emptyhint.h"
#include "eventlogtablewidget.h"
#include "message.h"

#include <QHeaderView>
#include <QMenu>
#include <QScrollBar>
#include <QShortcut>

/** Whoever sees the newest row goes on seeing the newest; whoever scrolled back is left where he is. */
static void followNewest(const QAbstractItemView* view)
{
    QScrollBar* const bar = view->verticalScrollBar();
    QObject::connect(bar, &QScrollBar::rangeChanged, bar, [bar, end = bar->maximum()](int, int maximum) mutable {
        if (bar->value() >= end)
            bar->setValue(maximum);
        end = maximum;
    });
}

EventPanel::EventPanel(Desk* desk)
    : m_desk(desk)
    , m_feed(desk->getLog(), &m_shown)
    , m_table(new EventLogTableWidget(&m_shown, nullptr))
{
    const QFontMetrics metrics = m_table->fontMetrics();
    m_table->setAccessibleName(tr("Events"));
    m_table->setToolTip(tr("Double-click an event, or press Return, to go to its time in the recording"));
    m_table->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    m_table->verticalHeader()->hide();
    m_table->verticalHeader()->setDefaultSectionSize(metrics.height() + 4);
    m_table->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    m_table->horizontalHeader()->resizeSection(0, metrics.horizontalAdvance(QLatin1String(" 0000-00-00T00:00:00Z  ")));
    m_table->setWordWrap(false); // else a long word hides all behind it
    m_table->setItemDelegate(new CellDelegate(m_table.get()));
    m_table->horizontalHeader()->setStretchLastSection(true);
    followNewest(m_table.get());
    new EmptyHint(m_table.get(),
                  tr("Nothing happened yet: losses, checksum failures and changes of sources appear here."));

    // Double-click and Return, wherever the style lets them mean something else.
    QObject::connect(m_table.get(), &QAbstractItemView::doubleClicked, m_table.get(),
                     [this](const QModelIndex& index) { jumpTo(index); });
    QShortcut* const enter = new QShortcut(Qt::Key_Return, m_table.get(), nullptr, nullptr, Qt::WidgetShortcut);
    QObject::connect(enter, &QShortcut::activated, m_table.get(), [this]() { jumpTo(m_table->currentIndex()); });
}

EventPanel::~EventPanel() = default;

QWidget* EventPanel::getWidget()
{
    return m_table.get();
}

void EventPanel::addActionsTo(const PanelMenus& menus)
{
    menus.file->addAction(tr("Save &Events as CSV..."), m_table.get(), [this]() { save(); });
    menus.file->addAction(tr("&Clear Events"), m_desk->getLog(), &EventLog::clear);
}

void EventPanel::save()
{
    m_desk->getLog()->flushAll(); // what is still being counted belongs into the file
    CsvFile::save(m_table.get(), m_desk, tr("Save Events"), QLatin1String("events.csv"), m_desk->getLog()->toCsv());
}

void EventPanel::jumpTo(const QModelIndex& index)
{
    const QList<EventLog::Entry> entries = m_shown.getEntries();
    if (!index.isValid() || index.row() >= entries.size())
        return;
    const QDateTime time = entries.at(index.row()).time;
    m_desk->jumpTo(time.isValid() ? time.toMSecsSinceEpoch() * 1000 : qint64(Message::NoTime));
}
