#include "playbackbar.h"

#include "desk.h"
#include "labels.h"
#include "message.h"
#include "messageinfo.h"
#include "placeslider.h"
#include "playbacktime.h"
#include "ratechoice.h"
#include "recordingoverview.h"

#include <QAbstractItemView>
#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QMenu>
#include <QProgressBar>
#include <QSignalBlocker>
#include <QStyle>
#include <QVBoxLayout>
#include <QWidgetAction>

#include <algorithm>

// Fine enough for a slider as wide as a screen, and far from where integers end.
static const int SliderSteps = 10000;

static const int ComplaintMilliseconds = 8000;
static const qint64 Second = 1000 * 1000;

static const double Speeds[] = {0.1, 0.2, 0.5, 1, 2, 5, 10, 20, 50, 100};

static const int MostNamed = 3;     // types in a line
static const int MostGaps = 100000; // more than any screen tells apart

PlaybackBar::PlaybackBar(Desk* desk, QWidget* parent)
    : QToolBar(parent)
    , m_desk(desk)
{
    setMovable(false);
    setLayoutDirection(Qt::LeftToRight); // as time runs in plots, and on recorders, whatever one reads
    createControls();
    followChoice();
    connect(desk, &Desk::chosenSourceChanged, this, &PlaybackBar::followChoice);
    connect(desk->getSources(), &SourceModel::sessionChanged, this, &PlaybackBar::followChoice);
    connect(desk, &Desk::chosenTypesChanged, this, &PlaybackBar::showOverview);
    const auto follow = [this](const SourceSession* session) {
        if (session == m_session)
            showOverview();
    };
    connect(desk, &Desk::overviewGrown, this, follow);
    connect(desk, &Desk::overviewEnded, this, follow);
}

void PlaybackBar::createControls()
{
    m_back =
        addAction(style()->standardIcon(QStyle::SP_MediaSkipBackward), tr("Step &Back"), this, &PlaybackBar::stepBack);
    m_back->setShortcut(QKeySequence(tr("Ctrl+Shift+.")));
    m_play =
        addAction(style()->standardIcon(QStyle::SP_MediaPause), tr("&Play or Pause"), this, &PlaybackBar::togglePlay);
    m_play->setShortcut(QKeySequence(tr("Ctrl+Space")));
    m_step = addAction(style()->standardIcon(QStyle::SP_MediaSkipForward), tr("&Step One Message"), this,
                       &PlaybackBar::step);
    m_step->setShortcut(QKeySequence(tr("Ctrl+.")));
    m_loop = addAction(style()->standardIcon(QStyle::SP_BrowserReload), tr("&Loop"));
    m_loop->setCheckable(true);
    m_loop->setToolTip(tr("Play from the beginning again when the end is reached"));
    m_stop = addAction(style()->standardIcon(QStyle::SP_MediaStop), tr("Stop &Reading"), this, [this]() {
        if (source())
            source()->stop();
    });
    m_stop->setToolTip(tr("End reading here; what was read stays"));

    m_speed = new QComboBox;
    m_speed->setSizeAdjustPolicy(QComboBox::AdjustToContents); // which are longer in another language
    for (const double speed : Speeds)
        m_speed->addItem(tr("%1 x", "speed of playback").arg(QLocale().toString(speed, 'g', 3)), speed);
    m_speed->addItem(tr("As fast as possible"), 0.0);
    m_speed->setAccessibleName(tr("Speed of playback"));
    m_speed->setToolTip(tr("How fast the recording is played"));
    connect(m_speed, QOverload<int>::of(&QComboBox::activated), this, &PlaybackBar::applySpeed);
    m_speedAction = addWidget(m_speed);

    m_rate = new RateChoice;
    connect(m_rate, QOverload<int>::of(&QComboBox::activated), this, &PlaybackBar::applyRate);
    m_rateAction = addWidget(m_rate);

    m_slider = new PlaceSlider;
    m_slider->setRange(0, SliderSteps);
    m_slider->setPageStep(SliderSteps / 20);
    m_slider->setSingleStep(SliderSteps / 200);
    m_slider->setTracking(false);
    m_slider->setAccessibleName(tr("Place in the recording"));
    m_slider->setToolTip(tr("Where the recording is; counts and statistics begin anew where you go"));
    connect(m_slider, &QSlider::valueChanged, this, &PlaybackBar::followSlider);
    connect(m_slider, &PlaceSlider::playWanted, this, &PlaybackBar::togglePlay);
    connect(m_slider, &PlaceSlider::stepWanted, this, &PlaybackBar::step);
    connect(m_slider, &PlaceSlider::stepBackWanted, this, &PlaybackBar::stepBack);
    m_timeLine = new TimeLine(m_slider);
    QWidget* const place = new QWidget;
    QVBoxLayout* const layout = new QVBoxLayout(place);
    layout->setContentsMargins(4, 0, 4, 2);
    layout->setSpacing(0);
    layout->addWidget(m_slider);
    layout->addWidget(m_timeLine);
    m_sliderAction = addWidget(place);

    m_progress = new QProgressBar;
    m_progress->setRange(0, SliderSteps);
    m_progress->setAccessibleName(tr("Part of the recording that was read"));
    m_progressAction = addWidget(m_progress);

    m_clock = new QLabel;
    setToldName(m_clock, tr("Time in the recording"));
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
    SourceSession* const before = m_session;
    m_session = m_desk->getChosenSource();
    if (m_session != before)
        showOverview();
    tick();
}

/** Tells the time line what there is in the recording, and of what is chosen. */
void PlaybackBar::showOverview()
{
    TimeLine::Contents contents;
    const StreamSource* const stream = source();
    RecordingOverview* const overview = m_desk->getOverview(m_session);
    if (overview && stream->isSeekable()) {
        contents.start = stream->getStartTime();
        contents.end = qMax(stream->getStartTime(), stream->getEndTime());
        contents.all = overview->getDensity();
        contents.damage = overview->getDamage();
        contents.percent = overview->getPercent();
        QStringList names;
        for (int row = 0; overview->isComplete() && row < overview->getRows().size(); ++row) {
            const OverviewRow& one = overview->getRows().at(row);
            const QString sender = m_session->qualifiedName(one.sender);
            bool isChosen = false;
            for (const Subject& subject : m_desk->getChosenTypes())
                isChosen = isChosen || (one.info && subject.covers(one.info, sender));
            if (!isChosen && !m_desk->getChosenTypes().isEmpty())
                continue;
            const QString name = sender.isEmpty() ? one.typeName : one.typeName + QLatin1Char(' ') + sender;
            addGaps(overview->getStatistics(row), name, &contents);
            if (!isChosen)
                continue;
            names.append(name);
            const RecordingDensity::Curve curve = overview->getDensity(row);
            if (contents.chosen.counts.empty())
                contents.chosen = curve;
            else
                for (std::size_t i = 0; i < curve.counts.size(); ++i)
                    contents.chosen.counts[i] += curve.counts[i];
        }
        if (names.size() > MostNamed)
            names = names.mid(0, MostNamed) + QStringList(QString(QChar(0x2026)));
        contents.chosenName = names.join(QLatin1String(", "));
        std::sort(contents.gaps.begin(), contents.gaps.end(),
                  [](const TimeLine::Mark& a, const TimeLine::Mark& b) { return a.start < b.start; });
        if (overview->isComplete())
            addEvents(*overview, &contents);
    }
    m_timeLine->setContents(contents);
}

static Theme::Accent accentOf(Severity severity)
{
    return severity <= Severity::Error ? Theme::Bad : severity == Severity::Warning ? Theme::Warning : Theme::Waiting;
}

/** Adds what happened, and what senders said. */
void PlaybackBar::addEvents(const RecordingOverview& overview, TimeLine::Contents* contents)
{
    const EventCauses* const causes = overview.getEvents();
    QHash<int, int> texts; // by row
    for (const EventMark& mark : overview.getEventMarks()) {
        const EventCauses::Cause& cause = causes->getRows().at(mark.row);
        if (!texts.contains(mark.row)) {
            const QString severity = nameOf(cause.newest.severity);
            const QString text = causes->textOf(cause);
            texts.insert(mark.row, int(contents->texts.size()));
            contents->texts.append(
                cause.newest.field < 0
                    ? tr("%1: %2", "severity, text").arg(severity, text)
                    : tr("%1 from %2: %3", "severity, sender, text").arg(severity, cause.newest.sender, text));
        }
        contents->events.append({mark.time, mark.time, texts.value(mark.row), accentOf(cause.newest.severity)});
    }
}

/** Adds the gaps of a type, if it has statistics. */
void PlaybackBar::addGaps(const MessageStatistics* statistics, const QString& name, TimeLine::Contents* contents)
{
    if (!statistics)
        return;
    for (const MessageStatistics::Gap& gap : statistics->getStoredGaps()) {
        if (contents->gaps.size() >= MostGaps)
            break;
        const qint64 length = qint64(gap.missingEpochs + 1) * qint64(gap.interval) * 1000;
        contents->gaps.append({qint64(gap.start), qint64(gap.start) + length, int(contents->texts.size())});
    }
    contents->texts.append(name);
}

void PlaybackBar::updateIcons(bool isPlaying)
{
    const QColor colour = palette().color(QPalette::ButtonText);
    if (colour == m_iconColour && isPlaying == m_playingIcon)
        return;
    m_iconColour = colour;
    m_playingIcon = isPlaying;
    m_play->setIcon(style()->standardIcon(isPlaying ? QStyle::SP_MediaPause : QStyle::SP_MediaPlay));
    m_back->setIcon(style()->standardIcon(QStyle::SP_MediaSkipBackward));
    m_step->setIcon(style()->standardIcon(QStyle::SP_MediaSkipForward));
    m_loop->setIcon(style()->standardIcon(QStyle::SP_BrowserReload));
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
    const bool hasRate =
        stream->getState() >= StreamSource::Running && !stream->isSeekable() && !stream->getDecoder()->hasTimes();
    m_rateAction->setVisible(hasRate);
    m_speedAction->setVisible(!hasRate);
    showSpeed();
    if (m_loop->isChecked() && stream->getState() == StreamSource::Finished && !stream->isPaused() &&
        !stream->isStopped())
        playOnFromStart();
    const bool isOver = PlaybackBar::isOver(stream);
    const bool isPlaying = !isOver && !stream->isPaused();
    updateIcons(isPlaying);
    m_play->setToolTip(isPlaying ? tr("Pause the recording (%1)").arg(m_play->shortcut().toString())
                                 : tr("Play the recording (%1)").arg(m_play->shortcut().toString()));
    m_step->setEnabled(!isOver || !stream->isSeekable());
    m_back->setEnabled(stream->isSeekable());
    m_back->setToolTip(tr("Go back to the message before, and stop there (%1)").arg(m_back->shortcut().toString()));
    m_step->setToolTip(tr("Show the next message and stop there (%1)").arg(m_step->shortcut().toString()));
    m_go->setEnabled(stream->isSeekable());
    m_time->setEnabled(stream->isSeekable());

    const bool readsAll = isPlaying && m_session->getPlayback().factor <= 0;
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
    // The date is what can be spared, and stands in the tool tip.
    m_clock->setText(tr("%1 UTC   %2 / %3")
                         .arg(PlaybackTime::clockText(now).section(QLatin1Char(' '), 1),
                              PlaybackTime::lengthText(now - start), PlaybackTime::lengthText(length)));
    m_clock->setToolTip(tr("%1 UTC").arg(PlaybackTime::clockText(now)));
    if (!m_slider->isSliderDown()) {
        m_timeLine->setPosition(now);
        const QSignalBlocker blocker(m_slider);
        m_slider->setValue(length > 0 ? int(double(now - start) / double(length) * SliderSteps) : 0);
    }
}

void PlaybackBar::showSpeed()
{
    const double factor = m_session->getPlayback().factor;
    if (!m_rate->view()->isVisible())
        m_rate->setRate(factor > 0 ? m_session->getPlayback().messagesPerSecond : 0.0);
    int index = m_speed->findData(factor);
    if (index < 0 && factor > 0) {
        m_speed->addItem(tr("%1 x", "speed of playback").arg(QLocale().toString(factor, 'g', 3)), factor);
        index = m_speed->count() - 1;
    }
    if (index >= 0 && !m_speed->view()->isVisible())
        m_speed->setCurrentIndex(index);
}

bool PlaybackBar::isOver(const StreamSource* stream)
{
    return stream->getState() == StreamSource::Finished || stream->getState() == StreamSource::Failed;
}

void PlaybackBar::togglePlay()
{
    StreamSource* const stream = source();
    if (!stream)
        return;
    if (isOver(stream))
        playOnFromStart();
    else
        stream->setPaused(!stream->isPaused());
    tick();
}

void PlaybackBar::playOnFromStart()
{
    StreamSource* const stream = source();
    stream->setPaused(false);
    if (stream->isSeekable() && stream->getState() == StreamSource::Finished && !stream->isStopped())
        stream->seek(stream->getStartTime());
    else
        m_session->reconnect();
}

void PlaybackBar::step()
{
    StreamSource* const stream = source();
    if (!stream || !m_session->isPlayback())
        return;
    if (isOver(stream) && !stream->isSeekable()) {
        m_session->reconnect(true); // what has no times has no other place to go to
    } else if (!isOver(stream)) {
        stream->setPaused(true);
        stream->step();
    }
    tick();
}

void PlaybackBar::stepBack()
{
    if (!m_session || !m_session->isPlayback())
        return;
    m_session->stepBack();
    tick();
}

void PlaybackBar::applyRate()
{
    if (!m_session)
        return;
    StreamSource::Playback playback = m_session->getPlayback();
    playback.messagesPerSecond = m_rate->getRate();
    playback.factor = 1;
    m_session->setPlayback(playback);
    if (playback.messagesPerSecond > 0 && source()->getState() == StreamSource::Finished)
        m_session->reconnect(); // nothing is left to see at that rate
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
    if (time < stream->getStartTime() && stream->getStartTime() - time < Second)
        time = stream->getStartTime(); // of which fractions were not typed
    if (time < stream->getStartTime() || time > stream->getEndTime()) {
        Q_EMIT m_desk->said(tr("\"%1\" is not in this recording, which goes from %2 to %3 UTC.")
                                .arg(m_time->text(), PlaybackTime::clockText(stream->getStartTime()),
                                     PlaybackTime::clockText(stream->getEndTime())),
                            ComplaintMilliseconds);
        return;
    }
    m_time->clear();
    Q_EMIT m_desk->said(QString(), 0); // no longer what was wrong before
    m_slider->setFocus();              // from where the keys go on
    jumpTo(time);
}

void PlaybackBar::jumpTo(qint64 time)
{
    StreamSource* const stream = source();
    if (!stream)
        return;
    if (m_session->getPlayback().factor <= 0)
        stream->setPaused(true); // or the end would be all there is to see
    stream->seek(time);
}
