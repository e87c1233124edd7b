#ifndef PLAYBACKBAR_H
#define PLAYBACKBAR_H

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
class PlaybackBar : public QToolBar
{
    Q_OBJECT

public:
    explicit PlaybackBar(QWidget* parent = nullptr);

    /** The source to control; null or a live one hides the bar. */
    void setSession(SourceSession* session);
    /** Shows where the recording is. For a timer. */
    void refresh();

    /** Goes to @p time, microseconds since 1970. */
    void jumpTo(qint64 time);

    /** The actions, for a menu. */
    QList<QAction*> getActions() const { return {m_play, m_step, m_go}; }

Q_SIGNALS:
    /** What was typed is no time; one sentence. */
    void complained(const QString& text);

private:
    void createControls();
    void togglePlay();
    void step();
    void goToTyped();
    void applySpeed();
    void showSpeed();
    void updateIcons(bool isPlaying);
    void followSlider(int value);
    StreamSource* source() const;

    QPointer<SourceSession> m_session;
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
