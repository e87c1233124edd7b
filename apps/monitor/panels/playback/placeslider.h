#ifndef PLACESLIDER_H
#define PLACESLIDER_H

#include <QSlider>

/** The slider of a recording: a click goes there, Space plays, and the arrow keys step from message to message. */
class PlaceSlider : public QSlider
{
    Q_OBJECT

public:
    explicit PlaceSlider(QWidget* parent = nullptr);

Q_SIGNALS:
    void playWanted();
    void stepWanted();
    void stepBackWanted();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
};

#endif
