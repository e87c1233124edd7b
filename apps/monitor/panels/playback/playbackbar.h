#ifndef PLAYBACKBAR_H
#define PLAYBACKBAR_H

#include "panel.h"
#include "streamsource.h"
#include "timeline.h"

#include <QColor>
#include <QPointer>
#include <QToolBar>

class QComboBox;
class QLabel;
class QLineEdit;
class QProgressBar;
class RateChoice;
class PlaceSlider;
class MessageStatistics;
class RecordingOverview;
class SourceSession;

/** Plays the recording that is chosen: play and pause, steps, its speed, and a slider with the clock and a time line.
 */
class PlaybackBar : public QToolBar, public Panel
{
    Q_OBJECT

public:
    explicit PlaybackBar(Desk* desk, QWidget* parent = nullptr);

    QWidget* getWidget() override { return this; }
    void addActionsTo(const PanelMenus& menus) override;
    /** Shows where the recording is. */
    void tick() override;
    void renew() override { showOverview(); }

private:
    void createControls();
    void followChoice();
    void jumpTo(qint64 time);
    QList<QAction*> getActions() const { return {m_back, m_play, m_step, m_loop, m_go}; }
    void togglePlay();
    void step();
    void stepBack();
    static bool isOver(const StreamSource* stream);
    void playOnFromStart();
    void showOverview();
    static void addEvents(const RecordingOverview& overview, TimeLine::Contents* contents);
    static void addGaps(const MessageStatistics* statistics, const QString& name, TimeLine::Contents* contents);
    void applyRate();
    void goToTyped();
    void applySpeed();
    void showSpeed();
    void updateIcons(bool isPlaying);
    void followSlider(int value);
    StreamSource* source() const;

    Desk* m_desk;
    QPointer<SourceSession> m_session; // a live one, or none, hides the bar
    QAction* m_play;
    QAction* m_back;
    QAction* m_step;
    QAction* m_loop;
    QAction* m_go;
    QAction* m_stop;
    QComboBox* m_speed;
    RateChoice* m_rate; // of a recording without times
    QAction* m_rateAction;
    QAction* m_speedAction;
    PlaceSlider* m_slider;
    TimeLine* m_timeLine;
    QProgressBar* m_progress;
    QAction* m_progressAction;
    QAction* m_sliderAction;
    QLabel* m_clock;
    QLineEdit* m_time;
    QColor m_iconColour; // of the pictures that are shown
    bool m_playingIcon = false;
};

#endif
