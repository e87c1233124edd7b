#ifndef PLAYBACKBAR_H
#define PLAYBACKBAR_H

#include "panel.h"
#include "streamsource.h"

#include <QColor>
#include <QPointer>
#include <QToolBar>

class QComboBox;
class QLabel;
class QLineEdit;
class QProgressBar;
class QSlider;
class SourceSession;

/** Plays the recording that is chosen: play and pause, a step, its speed, and a slider with the clock. */
class PlaybackBar : public QToolBar, public Panel
{
    Q_OBJECT

public:
    explicit PlaybackBar(Desk* desk, QWidget* parent = nullptr);

    QWidget* getWidget() override { return this; }
    void addActionsTo(const PanelMenus& menus) override;
    /** Shows where the recording is. */
    void tick() override;

private:
    void createControls();
    void followChoice();
    void jumpTo(qint64 time);
    QList<QAction*> getActions() const { return {m_play, m_step, m_go}; }
    void togglePlay();
    void step();
    void goToTyped();
    void applySpeed();
    void showSpeed();
    void updateIcons(bool isPlaying);
    void followSlider(int value);
    StreamSource* source() const;

    Desk* m_desk;
    QPointer<SourceSession> m_session; // a live one, or none, hides the bar
    QAction* m_play;
    QAction* m_step;
    QAction* m_go;
    QAction* m_stop;
    QComboBox* m_speed;
    QSlider* m_slider;
    QProgressBar* m_progress;
    QAction* m_progressAction;
    QAction* m_sliderAction;
    QLabel* m_clock;
    QLineEdit* m_time;
    QColor m_iconColour; // of the pictures that are shown
    bool m_playingIcon = false;
};

#endif
