#include "comparepanel.h"

#include "celldelegate.h"
#include "emptyhint.h"
#include "message.h"
#include "messageinfo.h"
#include "playbacktime.h"
#include "theme.h"

#include <QAction>
#include <QCheckBox>
#include <QClipboard>
#include <QGuiApplication>
#include <QHash>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QSet>
#include <QTreeWidget>
#include <QVBoxLayout>

static const int MostRows = 24; // that anybody sees beside one another
static const int SaidMilliseconds = 5000;
static const int LeastCharacters = 18; // of a column at first
static const int MostCharacters = 40;

enum
{
    FieldColumn,
    MarkColumn,
    FirstColumn // of the rows
};

ComparePanel::ComparePanel(Desk* desk, QWidget* parent)
    : QWidget(parent)
    , m_desk(desk)
    , m_onlyDiffering(new QCheckBox(tr("Only what differs")))
    , m_summary(new QLabel)
    , m_view(new QTreeWidget)
    , m_cells(new CellDelegate(m_view))
{
    m_view->setRootIsDecorated(false);
    m_view->setUniformRowHeights(true);
    m_view->setAlternatingRowColors(true);
    m_view->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_view->setAccessibleName(tr("Compared values"));
    m_view->header()->setStretchLastSection(false);
    m_cells->setName(FieldColumn);
    m_view->setItemDelegate(m_cells);
    new EmptyHint(m_view, tr("Choose two or more rows of the message tree, and Compare in their context menu."));
    connect(m_onlyDiffering, &QCheckBox::toggled, this, &ComparePanel::refresh);
    QAction* const copy = new QAction(tr("Copy"), m_view);
    copy->setShortcut(QKeySequence::Copy);
    copy->setShortcutContext(Qt::WidgetShortcut);
    connect(copy, &QAction::triggered, this, &ComparePanel::copy);
    m_view->addAction(copy);
    m_view->setContextMenuPolicy(Qt::ActionsContextMenu);

    QHBoxLayout* const bar = new QHBoxLayout;
    bar->addWidget(m_onlyDiffering);
    bar->addWidget(m_summary, 1);
    QVBoxLayout* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(2, 2, 2, 2);
    layout->addLayout(bar);
    layout->addWidget(m_view, 1);

    connect(desk, &Desk::senderRenamed, this, [this](const QString& before, const QString& now) {
        for (FieldUse::Row& row : m_rows)
            if (row.origin.sender == before)
                row.origin.sender = now;
        if (!m_rows.isEmpty())
            showTitles();
    });
    FieldUse use;
    use.name = QLatin1String("compare");
    use.action = new QAction(tr("C&ompare"), this);
    use.action->setShortcut(QKeySequence(tr("Ctrl+Shift+D")));
    use.action->setStatusTip(tr("Shows the rows that are chosen beside one another, two or more"));
    use.takeAll = [this](const QVector<FieldUse::Row>& rows) {
        compare(rows);
        Q_EMIT m_desk->wanted(this);
    };
    desk->offerUse(use);
}

void ComparePanel::compare(const QVector<FieldUse::Row>& rows)
{
    if (rows.size() > MostRows)
        Q_EMIT m_desk->said(tr("The first %1 rows are compared.").arg(MostRows), SaidMilliseconds);
    m_rows = rows.mid(0, MostRows);
    m_view->clear();
    showTitles();
    refresh();
    fitColumns();
}

// A sender stands below what it sends, so that neither is cut.
void ComparePanel::showTitles()
{
    QStringList titles{tr("Field"), QString(QChar(0x2260))};
    QStringList tips{titles.at(FieldColumn), tr("Marked where the values differ")};
    const QFontMetrics metrics = m_view->fontMetrics();
    for (const FieldUse::Row& row : std::as_const(m_rows)) {
        QStringList lines{row.path.getName(), row.origin.sender};
        lines.removeAll(QString());
        tips.append(lines.join(QLatin1Char(' ')));
        // A header cuts lines at their ends, where names differ most.
        for (QString& line : lines)
            line = metrics.elidedText(line, Qt::ElideMiddle, (MostCharacters - 2) * metrics.averageCharWidth());
        titles.append(lines.join(QLatin1Char('\n')));
    }
    m_view->setColumnCount(int(titles.size()));
    m_view->setHeaderLabels(titles);
    QTreeWidgetItem* const header = m_view->headerItem();
    for (int column = 0; column < titles.size(); ++column)
        header->setToolTip(column, tips.at(column));
    header->setData(MarkColumn, Qt::AccessibleTextRole, tr("Differs"));
}

// Once: what grows and shrinks while somebody reads is worse than what is cut.
void ComparePanel::fitColumns()
{
    const QAbstractItemView* const view = m_view; // for which the operation is public
    const int character = m_view->fontMetrics().averageCharWidth();
    for (int column = 0; column < m_view->columnCount(); ++column) {
        const int wanted = qMax(view->sizeHintForColumn(column), m_view->header()->sectionSizeHint(column));
        m_view->setColumnWidth(column,
                               qBound(LeastCharacters * character, wanted + character, MostCharacters * character));
    }
    m_view->setColumnWidth(MarkColumn, character * 4);
}

void ComparePanel::tick()
{
    if (isVisible() && !m_desk->isPaused())
        refresh();
}

void ComparePanel::setViewsPaused(bool paused)
{
    if (!paused)
        tick();
}

/** The fields of all rows in one order: one that only another has stands behind the one that it follows there. */
QVector<ComparePanel::Line> ComparePanel::readLines(QStringList* times, QVector<bool>* hasMessage) const
{
    QVector<Line> lines;
    for (int i = 0; i < m_rows.size(); ++i) {
        const FieldUse::Row& row = m_rows.at(i);
        const MessageReference latest = m_desk->getLatest()->getLatest(row.path.getMessageInfo(), row.origin.sender);
        hasMessage->append(!latest.isNull());
        const bool hasTime = !latest.isNull() && latest->getTime() != Message::NoTime;
        times->append(hasTime ? PlaybackTime::clockText(latest->getTime()) : QString());
        if (latest.isNull())
            continue;
        QHash<QString, int> places;
        for (int place = 0; place < lines.size(); ++place)
            places.insert(lines.at(place).name, place);
        int last = -1;
        const QVector<ComparedRow::Value> values = ComparedRow::read(row.path, latest.get());
        for (const ComparedRow::Value& value : values) {
            const auto found = places.constFind(value.name);
            if (found == places.constEnd()) {
                last = qMin(last + 1, int(lines.size()));
                lines.insert(last, {value.name, QVector<ComparedRow::Value>(m_rows.size()),
                                    QVector<bool>(m_rows.size(), false)});
                for (int& place : places)
                    place += place >= last ? 1 : 0;
                places.insert(value.name, last);
            } else {
                last = *found;
            }
            lines[last].values[i] = value;
            lines[last].isThere[i] = true;
        }
    }
    return lines;
}

// What is hidden is not compared, or it would be told whether it is the same. Nor is a row of which nothing came.
static bool isDifferent(const QVector<ComparedRow::Value>& values, const QVector<bool>& isThere,
                        const QVector<bool>& hasMessage)
{
    int first = -1;
    bool differs = false;
    for (int i = 0; i < values.size(); ++i) {
        if (!hasMessage.at(i))
            continue;
        if (values.at(i).isHidden)
            return false;
        if (first < 0)
            first = i;
        differs = differs || isThere.at(i) != isThere.at(first) || values.at(i).exact != values.at(first).exact;
    }
    return differs;
}

void ComparePanel::refresh()
{
    QStringList times;
    QVector<bool> hasMessage;
    const QVector<Line> lines = readLines(&times, &hasMessage);
    const int before = times.join(QString()).isEmpty() ? 0 : 1; // the line of times
    while (m_view->topLevelItemCount() > lines.size() + before)
        delete m_view->takeTopLevelItem(m_view->topLevelItemCount() - 1);
    while (m_view->topLevelItemCount() < lines.size() + before)
        new QTreeWidgetItem(m_view);
    if (before > 0) {
        Line line = {tr("[time]"), {}, {}};
        QSet<QString> dates;
        for (const QString& time : std::as_const(times))
            if (!time.isEmpty())
                dates.insert(time.section(QLatin1Char(' '), 0, 0));
        for (const QString& time : std::as_const(times)) {
            // Of one day nobody needs the date.
            const QString shown = dates.size() > 1 ? time : time.section(QLatin1Char(' '), 1);
            line.values.append({QString(), shown, QString(), false});
            line.isThere.append(true);
        }
        showLine(m_view->topLevelItem(0), line, false);
        m_view->topLevelItem(0)->setHidden(false);
    }
    int differing = 0;
    for (int i = 0; i < lines.size(); ++i) {
        const bool differs = isDifferent(lines.at(i).values, lines.at(i).isThere, hasMessage);
        differing += differs ? 1 : 0;
        showLine(m_view->topLevelItem(i + before), lines.at(i), differs);
    }
    m_summary->setText(lines.isEmpty() ? tr("Nothing came of these yet.")
                                       : tr("%1 of %2 differ").arg(differing).arg(lines.size()));
}

void ComparePanel::showLine(QTreeWidgetItem* item, const Line& line, bool differs)
{
    item->setHidden(m_onlyDiffering->isChecked() && !differs);
    item->setText(FieldColumn, line.name.isEmpty() ? tr("Value") : line.name);
    item->setText(MarkColumn, differs ? QString(QChar(0x2260)) : QString());
    item->setData(MarkColumn, Qt::AccessibleTextRole, differs ? tr("differs") : QString());
    item->setTextAlignment(MarkColumn, Qt::AlignCenter);
    QFont font = m_view->font();
    font.setBold(differs);
    if (item->font(FieldColumn) != font)
        for (int column = 0; column < m_view->columnCount(); ++column)
            item->setFont(column, font);
    for (int i = 0; i < line.values.size(); ++i)
        item->setText(FirstColumn + i, line.isThere.at(i) ? line.values.at(i).text : QString());
}

void ComparePanel::copy()
{
    QStringList lines;
    const QList<QTreeWidgetItem*> chosen = m_view->selectedItems();
    for (const QTreeWidgetItem* const item : chosen) {
        QStringList cells;
        for (int column = 0; column < m_view->columnCount(); ++column)
            cells.append(item->text(column));
        lines.append(cells.join(QLatin1Char('\t')));
    }
    QGuiApplication::clipboard()->setText(lines.join(QLatin1Char('\n')));
}
