#include "playbackbar.h"

#include "desk.h"
#include "message.h"
#include "playbacktime.h"

#include <QAbstractItemView>
#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QMenu>
#include <QProgressBar>
#include <QSignalBlocker>
#include <QSlider>
#include <QStyle>
#include <QWidgetAction>

// Fine enough for a slider as wide as a screen, and far from where integers end.
static const int SliderSteps = 10000;

static const int ComplaintMilliseconds = 8000;

static const double Speeds[] = {0.1, 0.2, 0.5, 1, 2, 5, 10, 20, 50, 100};

PlaybackBar::PlaybackBar(Desk* desk, QWidget* parent)
    : QToolBar(parent)
    , m_desk(desk)
{
    setMovable(false);
    createControls();
    followChoice();
    connect(desk, &Desk::chosenSourceChanged, this, &PlaybackBar::followChoice);
    connect(desk->getSources(), &SourceModel::sessionChanged, this, &PlaybackBar::followChoice);
}

void PlaybackBar::createControls()
{
    m_play =
        addAction(style()->standardIcon(QStyle::SP_MediaPause), tr("&Play or Pause"), this, &PlaybackBar::togglePlay);
    m_play->setShortcut(QKeySequence(tr("Ctrl+Space")));
    m_step = addAction(style()->standardIcon(QStyle::SP_MediaSkipForward), tr("&Step One Message"), this,
                       &PlaybackBar::step);
    m_step->setShortcut(QKeySequence(tr("Ctrl+.")));
    m_stop = addAction(style()->standardIcon(QStyle::SP_MediaStop), tr("Stop &Reading"), this, [this]() {
        if (source())
            source()->stop();
    });
    m_stop->setToolTip(tr("End reading here; what was read stays"));

    m_speed = new QComboBox;
    for (const double speed : Speeds)
        m_speed->addItem(tr("%1 x", "speed of playback").arg(QLocale().toString(speed, 'g', 3)), speed);
    m_speed->addItem(tr("As fast as possible"), 0.0);
    m_speed->setAccessibleName(tr("Speed of playback"));
    m_speed->setToolTip(tr("How fast the recording is played"));
    connect(m_speed, QOverload<int>::of(&QComboBox::activated), this, &PlaybackBar::applySpeed);
    addWidget(m_speed);

    m_slider = new QSlider(Qt::Horizontal);
    m_slider->setRange(0, SliderSteps);
    m_slider->setPageStep(SliderSteps / 20);
    m_slider->setSingleStep(SliderSteps / 200);
    m_slider->setTracking(false);
    m_slider->setAccessibleName(tr("Place in the recording"));
    m_slider->setToolTip(tr("Where the recording is; counts and statistics begin anew where you go"));
    connect(m_slider, &QSlider::valueChanged, this, &PlaybackBar::followSlider);
    m_sliderAction = addWidget(m_slider);

    m_progress = new QProgressBar;
    m_progress->setRange(0, SliderSteps);
    m_progress->setAccessibleName(tr("Part of the recording that was read"));
    m_progressAction = addWidget(m_progress);

    m_clock = new QLabel;
    m_clock->setAccessibleName(tr("Time in the recording"));
    m_clock->setMargin(4);
    addWidget(m_clock);

    m_time = new QLineEdit;
    m_time->setPlaceholderText(tr("Go to time"));
    m_time->setAccessibleName(tr("Time to go to"));
    m_time->setToolTip(tr("A time to go to: 14:05:30 (UTC), +1:30 since the start, or 2015-07-05 14:05:30"));
    m_time->setMaximumWidth(m_time->fontMetrics().averageCharWidth() * 18);
    connect(m_time, &QLineEdit::returnPressed, this, &PlaybackBar::goToTyped);
    addWidget(m_time);
    m_go = new QAction(tr("&Go to Time..."), this);
    m_go->setShortcut(QKeySequence(tr("Ctrl+G")));
    connect(m_go, &QAction::triggered, this, [this]() {
        m_time->setFocus(Qt::ShortcutFocusReason);
        m_time->selectAll();
    });
}

StreamSource* PlaybackBar::source() const
{
    return m_session ? m_session->getSource() : nullptr;
}

void PlaybackBar::addActionsTo(const PanelMenus& menus)
{
    menus.playback->addActions(getActions());
}

void PlaybackBar::followChoice()
{
    m_session = m_desk->getChosenSource();
    tick();
}

void PlaybackBar::updateIcons(bool isPlaying)
{
    const QColor colour = palette().color(QPalette::ButtonText);
    if (colour == m_iconColour && isPlaying == m_playingIcon)
        return;
    m_iconColour = colour;
    m_playingIcon = isPlaying;
    m_play->setIcon(style()->standardIcon(isPlaying ? QStyle::SP_MediaPause : QStyle::SP_MediaPlay));
    m_step->setIcon(style()->standardIcon(QStyle::SP_MediaSkipForward));
    m_stop->setIcon(style()->standardIcon(QStyle::SP_MediaStop));
}

void PlaybackBar::tick()
{
    const StreamSource* const stream = source();
    const bool isRecording = m_session && m_session->isPlayback();
    setVisible(isRecording);
    for (QAction* const action : getActions())
        action->setEnabled(isRecording);
    if (!isRecording)
        return;
    showSpeed();
    const bool isOver = stream->getState() == StreamSource::Finished || stream->getState() == StreamSource::Failed;
    const bool isPlaying = !isOver && !stream->isPaused();
    updateIcons(isPlaying);
    m_play->setToolTip(isPlaying ? tr("Pause the recording (%1)").arg(m_play->shortcut().toString())
                                 : tr("Play the recording (%1)").arg(m_play->shortcut().toString()));
    m_step->setEnabled(!isOver);
    m_step->setToolTip(tr("Show the next message and stop there (%1)").arg(m_step->shortcut().toString()));
    m_go->setEnabled(stream->isSeekable());
    m_time->setEnabled(stream->isSeekable());

    const bool readsAll = !isOver && m_session->getPlayback().factor <= 0;
    const double part = stream->getSize() > 0 ? double(stream->getPosition()) / double(stream->getSize()) : 0;
    m_progressAction->setVisible(readsAll || !stream->isSeekable());
    m_sliderAction->setVisible(!m_progressAction->isVisible());
    m_stop->setVisible(readsAll);
    m_progress->setValue(isOver ? SliderSteps : int(part * SliderSteps));

    const qint64 start = stream->getStartTime();
    const qint64 length = stream->getEndTime() - start;
    const qint64 now = stream->getCurrentTime();
    if (!stream->isSeekable() || now == Message::NoTime) {
        m_clock->setText(now == Message::NoTime ? QString() : tr("%1 UTC").arg(PlaybackTime::clockText(now)));
        return;
    }
    m_clock->setText(tr("%1 UTC   %2 / %3")
                         .arg(PlaybackTime::clockText(now), PlaybackTime::lengthText(now - start),
                              PlaybackTime::lengthText(length)));
    if (!m_slider->isSliderDown()) {
        const QSignalBlocker blocker(m_slider);
        m_slider->setValue(length > 0 ? int(double(now - start) / double(length) * SliderSteps) : 0);
    }
}

void PlaybackBar::showSpeed()
{
    const double factor = m_session->getPlayback().factor;
    int index = m_speed->findData(factor);
    if (index < 0 && factor > 0) {
        m_speed->addItem(tr("%1 x", "speed of playback").arg(QLocale().toString(factor, 'g', 3)), factor);
        index = m_speed->count() - 1;
    }
    if (index >= 0 && !m_speed->view()->isVisible())
        m_speed->setCurrentIndex(index);
}

void PlaybackBar::togglePlay()
{
    StreamSource* const stream = source();
    if (!stream)
        return;
    if (stream->getState() == StreamSource::Finished || stream->getState() == StreamSource::Failed) {
        stream->setPaused(false);
        if (stream->isSeekable() && stream->getState() == StreamSource::Finished && !stream->isStopped())
            stream->seek(stream->getStartTime());
        else
            m_session->reconnect();
    } else {
        stream->setPaused(!stream->isPaused());
    }
    tick();
}

void PlaybackBar::step()
{
    StreamSource* const stream = source();
    if (!stream)
        return;
    stream->setPaused(true);
    stream->step();
    tick();
}

void PlaybackBar::applySpeed()
{
    if (!m_session)
        return;
    StreamSource::Playback playback = m_session->getPlayback();
    playback.factor = m_speed->currentData().toDouble();
    m_session->setPlayback(playback);
    tick();
}

void PlaybackBar::followSlider(int value)
{
    const StreamSource* const stream = source();
    if (!stream || !stream->isSeekable())
        return;
    const double length = double(stream->getEndTime() - stream->getStartTime());
    jumpTo(stream->getStartTime() + qint64(length * value / SliderSteps));
}

void PlaybackBar::goToTyped()
{
    const StreamSource* const stream = source();
    if (!stream || !stream->isSeekable())
        return;
    qint64 time = 0;
    if (!PlaybackTime::parse(m_time->text(), stream->getStartTime(), &time)) {
        Q_EMIT m_desk->said(
            tr("\"%1\" is no time; a time is written as 14:05:30, +1:30 or 2015-07-05 14:05:30.").arg(m_time->text()),
            ComplaintMilliseconds);
        return;
    }
    m_time->clear();
    jumpTo(time);
}

void PlaybackBar::jumpTo(qint64 time)
{
    if (StreamSource* const stream = source())
        stream->seek(time);
}
