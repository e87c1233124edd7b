#include "placeslider.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QStyle>
#include <QStyleOptionSlider>

PlaceSlider::PlaceSlider(QWidget* parent)
    : QSlider(Qt::Horizontal, parent)
{
    setFocusPolicy(Qt::StrongFocus);
}

void PlaceSlider::mousePressEvent(QMouseEvent* event)
{
    QStyleOptionSlider option;
    initStyleOption(&option);
    const QRect handle = style()->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle, this);
    if (event->button() == Qt::LeftButton && !handle.contains(event->pos())) {
        const int length = style()->pixelMetric(QStyle::PM_SliderLength, &option, this);
        // The handle is below the mouse then, and what follows is a drag.
        setSliderPosition(QStyle::sliderValueFromPosition(minimum(), maximum(), event->pos().x() - length / 2,
                                                          width() - length, option.upsideDown));
    }
    QSlider::mousePressEvent(event);
}

void PlaceSlider::keyPressEvent(QKeyEvent* event)
{
    if (event->modifiers() & ~Qt::KeypadModifier) {
        QSlider::keyPressEvent(event);
        return;
    }
    switch (event->key()) {
    case Qt::Key_Space:
        if (!event->isAutoRepeat())
            Q_EMIT playWanted();
        break;
    case Qt::Key_Right:
        Q_EMIT stepWanted();
        break;
    case Qt::Key_Left:
        Q_EMIT stepBackWanted();
        break;
    default:
        QSlider::keyPressEvent(event); // up and down by a little, pages by more
        break;
    }
}
