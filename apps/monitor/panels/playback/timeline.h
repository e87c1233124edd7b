#ifndef TIMELINE_H
#define TIMELINE_H

#include "recordingdensity.h"
#include "theme.h"

#include <QPixmap>
#include <QStringList>
#include <QVector>
#include <QWidget>

#include <vector>

class QPainter;
class QSlider;

/**
 * What there is when in a recording, under the slider that it is played by: how many messages come, of all types and of
 * those that are chosen, and where something was missing or damaged or happened.
 *
 * Pressing and dragging moves the slider, which has the keys.
 */
class TimeLine : public QWidget
{
    Q_OBJECT

public:
    /** A time in which something was missing, or at which something happened. */
    struct Mark
    {
        qint64 start; ///< microseconds since 1970
        qint64 end;   ///< not before it
        int text;     ///< number of what says which
        Theme::Accent accent = Theme::Waiting;
    };

    struct Contents
    {
        qint64 start = 0; ///< of the recording, microseconds since 1970
        qint64 end = 0;   ///< not before it
        RecordingDensity::Curve all;
        RecordingDensity::Curve chosen; ///< of what chosenName says
        QString chosenName;
        RecordingDensity::Curve damage;
        QVector<Mark> gaps;   ///< in the order of their starts; their texts name what was missing
        QVector<Mark> events; ///< likewise
        QStringList texts;    ///< of both
        int percent = 100;    ///< how much is known
    };

    /** @param slider  whose range is that of the recording; borrowed */
    explicit TimeLine(QSlider* slider, QWidget* parent = nullptr);

    void setContents(const Contents& contents);
    const Contents& getContents() const { return m_contents; }
    /** Where the recording is, microseconds since 1970. */
    void setPosition(qint64 time);

    /** What there is at a place, in lines. */
    QString describe(int x) const;

    QSize sizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    QRect ground() const;
    qint64 timeAt(double x) const;
    double placeOf(qint64 time, const QRect& area) const;
    void moveSlider(int x);
    void drawAll();
    /** How much of each pixel's time is in gaps, from 0 to 1 where all that has gaps is missing all the time. */
    std::vector<double> missing() const;
    std::vector<double> heights(const RecordingDensity::Curve& curve) const;
    void drawGaps(QPainter* painter, int y, int height, const QColor& colour) const;
    void drawMarks(QPainter* painter, const QVector<Mark>& marks, int y, int height, const QColor& colour) const;

    QSlider* m_slider;
    Contents m_contents;
    qint64 m_position = 0;
    QPixmap m_drawn; // all but the position; null when it is to be drawn anew
};

#endif
