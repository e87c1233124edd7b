// How the window follows recordings: playing, jumping to what the views show, and views that stand still.

#include "mainwindow.h"

#include "eventfeed.h"
#include "eventlogtablewidget.h"
#include "latestmessagesource.h"
#include "message.h"
#include "messagestatisticswidget.h"
#include "playbackbar.h"
#include "sourcemodel.h"
#include "sourcepanel.h"
#include "watchbar.h"

#include <QAction>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QShortcut>
#include <QStatusBar>

void MainWindow::createPlayback()
{
    m_playbackBar = new PlaybackBar(this);
    addToolBar(Qt::BottomToolBarArea, m_playbackBar);
    connect(m_playbackBar, &PlaybackBar::complained, this,
            [this](const QString& text) { statusBar()->showMessage(text, 8000); });
    const auto followChoice = [this]() { m_playbackBar->setSession(m_sourcePanel->getCurrent()); };
    connect(m_sourcePanel, &SourcePanel::currentChanged, this, followChoice);
    connect(m_sources, &SourceModel::sessionChanged, this, followChoice);

    m_pauseViews = new QAction(tr("Pause &Views"), this);
    m_pauseViews->setCheckable(true);
    m_pauseViews->setShortcut(QKeySequence(tr("F8")));
    m_pauseViews->setToolTip(tr("Let the views stand still while what arrives is counted and recorded (F8)"));
    connect(m_pauseViews, &QAction::toggled, this, &MainWindow::setViewsPaused);

    createPauseBanner();

    // Double-click and Return, wherever the style lets them mean something else.
    connect(m_events, &QAbstractItemView::doubleClicked, this, &MainWindow::jumpToEvent);
    QShortcut* const toEvent = new QShortcut(Qt::Key_Return, m_events, nullptr, nullptr, Qt::WidgetShortcut);
    connect(toEvent, &QShortcut::activated, this, [this]() { jumpToEvent(m_events->currentIndex()); });
    connect(m_statistics, &QTreeWidget::itemDoubleClicked, this, &MainWindow::jumpToGap);
    QShortcut* const toGap = new QShortcut(Qt::Key_Return, m_statistics, nullptr, nullptr, Qt::WidgetShortcut);
    connect(toGap, &QShortcut::activated, this, [this]() { jumpToGap(m_statistics->currentItem()); });
    m_events->setToolTip(tr("Double-click an event, or press Return, to go to its time in the recording"));
}

void MainWindow::createPauseBanner()
{
    m_pauseBanner->setBackgroundRole(QPalette::Highlight);
    m_pauseBanner->setAutoFillBackground(true);
    QLabel* const text = new QLabel(tr("The views are paused. What arrives is counted and recorded all the same."));
    text->setAlignment(Qt::AlignCenter);
    text->setWordWrap(true);
    text->setForegroundRole(QPalette::HighlightedText);
    text->setAccessibleName(tr("Paused views"));
    QPushButton* const resume =
        new QPushButton(tr("Resume (%1)").arg(m_pauseViews->shortcut().toString(QKeySequence::NativeText)));
    connect(resume, &QPushButton::clicked, this, [this]() { setViewsPaused(false); });
    QHBoxLayout* const layout = new QHBoxLayout(m_pauseBanner);
    layout->setContentsMargins(6, 3, 6, 3);
    layout->addWidget(text, 1);
    layout->addWidget(resume);
    m_pauseBanner->hide();
}

void MainWindow::createPlaybackMenu()
{
    QMenu* const menu = menuBar()->addMenu(tr("&Playback"));
    menu->addActions(m_playbackBar->getActions());
    menu->addSeparator();
    menu->addAction(m_pauseViews);
}

void MainWindow::setViewsPaused(bool paused)
{
    m_viewsPaused = paused;
    m_pauseBanner->setVisible(paused);
    m_pauseViews->setChecked(paused);
    m_eventFeed->setSuspended(paused);
    m_watches->setFrozen(paused || m_latest->isStandingStill());
    followVisibility();
    Q_EMIT viewsPausedChanged(paused);
}

/** The recording that has messages of @p time, the chosen one first; null when none has. */
SourceSession* MainWindow::findRecording(qint64 time) const
{
    QVector<SourceSession*> candidates;
    if (SourceSession* const current = m_sourcePanel->getCurrent())
        candidates.append(current);
    for (int i = 0; i < m_sources->getCount(); ++i)
        candidates.append(m_sources->getSession(i));
    for (SourceSession* const session : std::as_const(candidates)) {
        const StreamSource* const source = session->getSource();
        if (source->isSeekable() && time >= source->getStartTime() && time <= source->getEndTime())
            return session;
    }
    return nullptr;
}

void MainWindow::jumpTo(qint64 time)
{
    SourceSession* const session = time == Message::NoTime ? nullptr : findRecording(time);
    if (session)
        session->getSource()->seek(time);
    else
        statusBar()->showMessage(tr("No recording that is open has this time."), 5000);
}

void MainWindow::jumpToEvent(const QModelIndex& index)
{
    const QList<EventLog::Entry> entries = m_shownLog.getEntries();
    if (!index.isValid() || index.row() >= entries.size())
        return;
    const QDateTime time = entries.at(index.row()).time;
    jumpTo(time.isValid() ? time.toMSecsSinceEpoch() * 1000 : qint64(Message::NoTime));
}

void MainWindow::jumpToGap(QTreeWidgetItem* item)
{
    for (QTreeWidgetItem* parent = item; parent; parent = parent->parent())
        if (const auto* const row = dynamic_cast<MessageStatisticsTreeWidgetItem*>(parent))
            if (const MessageStatistics::Gap* const gap = row->getGap(item))
                jumpTo(qint64(gap->start));
}
