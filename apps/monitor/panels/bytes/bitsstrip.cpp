#include "bitsstrip.h"

#include "theme.h"

#include <QFontDatabase>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QToolTip>

static const int BitCount = 8;

BitsStrip::BitsStrip(QWidget* parent)
    : QWidget(parent)
{
    setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setAccessibleName(tr("Bits"));
}

void BitsStrip::show(quint8 byte, quint8 marks)
{
    if (byte == m_byte && marks == m_marks)
        return;
    m_byte = byte;
    m_marks = marks;
    setAccessibleDescription(QString::number(byte, 2).rightJustified(BitCount, QLatin1Char('0')));
    update();
}

QSize BitsStrip::sizeHint() const
{
    // A gap stands in the middle.
    const int width = fontMetrics().horizontalAdvance(QLatin1Char('0')) + 6;
    return QSize(BitCount * width + width / 2 + 2, fontMetrics().height() + 4);
}

QRect BitsStrip::placeOf(int bit) const
{
    const int width = fontMetrics().horizontalAdvance(QLatin1Char('0')) + 6;
    const int place = BitCount - 1 - bit;
    return QRect(1 + place * width + (place >= BitCount / 2 ? width / 2 : 0), 1, width, height() - 2);
}

int BitsStrip::bitAt(const QPoint& place) const
{
    for (int bit = 0; bit < BitCount; ++bit)
        if (placeOf(bit).contains(place))
            return bit;
    return -1;
}

void BitsStrip::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    for (int bit = 0; bit < BitCount; ++bit) {
        const QRect place = placeOf(bit);
        const bool isMarked = m_marks >> bit & 1;
        QColor ground = Theme::accent(palette(), Theme::Waiting);
        ground.setAlpha(isMarked ? 110 : 0);
        painter.fillRect(place.adjusted(1, 0, -1, 0), ground);
        const bool isSet = m_byte >> bit & 1;
        painter.setPen(isSet || isMarked ? palette().color(QPalette::Text) : Theme::faintText(palette()));
        painter.drawText(place, Qt::AlignCenter, QString(QLatin1Char(isSet ? '1' : '0')));
        if (hasFocus() && bit == m_current) {
            painter.setPen(Theme::accent(palette(), Theme::Waiting));
            painter.drawRect(place.adjusted(0, 0, -1, -1));
        }
    }
}

void BitsStrip::choose(int bit)
{
    m_current = bit;
    update();
    Q_EMIT bitChosen(bit);
}

void BitsStrip::mousePressEvent(QMouseEvent* event)
{
    const int bit = bitAt(event->pos());
    if (event->button() == Qt::LeftButton && bit >= 0)
        choose(bit);
}

void BitsStrip::keyPressEvent(QKeyEvent* event)
{
    const int step = event->key() == Qt::Key_Left ? 1 : event->key() == Qt::Key_Right ? -1 : 0;
    if (step != 0)
        choose(qBound(0, m_current + step, BitCount - 1));
    else
        QWidget::keyPressEvent(event);
}

bool BitsStrip::event(QEvent* event)
{
    if (event->type() == QEvent::ToolTip) {
        auto* const help = static_cast<QHelpEvent*>(event);
        const int bit = bitAt(help->pos());
        QToolTip::showText(help->globalPos(), bit < 0 ? QString() : tr("Bit %1").arg(bit), this);
        return true;
    }
    return QWidget::event(event);
}
