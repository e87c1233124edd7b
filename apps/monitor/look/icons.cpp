#include "icons.h"

#include <QApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>
#include <QPixmap>

namespace
{

// In a square of 16. As in SVG, M moves, L draws a line, C a curve and Z closes; O is a circle with centre and radius.
struct Drawing
{
    const char* lines;
    const char* areas;
};

const Drawing drawings[] = {
    {"M 2 13 L 2 3.5 L 6.2 3.5 L 7.8 5.5 L 14 5.5 L 14 13 Z", ""},
    {"M 1.5 8 L 4.5 8 M 4.5 4.5 L 8 4.5 C 10.5 4.5 11 6.5 11 8 C 11 9.5 10.5 11.5 8 11.5 L 4.5 11.5 Z "
     "M 11 6.4 L 14 6.4 M 11 9.6 L 14 9.6",
     ""},
    {"", "O 8 8 5.2"},
    {"O 6.8 6.8 4.3 M 10 10 L 14 14", ""},
    {"", "M 3.6 3 L 6.6 3 L 6.6 13 L 3.6 13 Z M 9.4 3 L 12.4 3 L 12.4 13 L 9.4 13 Z"},
    {"", "M 4.5 2.8 L 13 8 L 4.5 13.2 Z"},
    {"", "M 4 4 L 12 4 L 12 12 L 4 12 Z"},
    {"", "O 3.2 8 1.5 O 8 8 1.5 O 12.8 8 1.5"},
    {"M 5 11 C 3.2 9.3 3.2 6.7 5 5 M 11 5 C 12.8 6.7 12.8 9.3 11 11 M 2.8 13 C -0.2 10.2 -0.2 5.8 2.8 3 "
     "M 13.2 3 C 16.2 5.8 16.2 10.2 13.2 13",
     "O 8 8 1.7"},
    {"M 8 2.2 L 8 9.6 M 4.6 6.4 L 8 9.8 L 11.4 6.4 M 3 13.2 L 13 13.2", ""},
    {"O 8 8 5.8 M 5.4 8 L 10.6 8", ""},
    {"O 8 8 5.8 M 5.8 5.8 L 10.2 10.2 M 10.2 5.8 L 5.8 10.2", ""},
    {"M 13.2 8.6 C 12.9 11.3 10.7 13.2 8 13.2 C 5.1 13.2 2.8 10.9 2.8 8 C 2.8 5.1 5.1 2.8 8 2.8 C 9.9 2.8 11.5 3.8 "
     "12.4 "
     "5.2 M 12.8 2 L 12.8 5.5 L 9.3 5.5",
     ""},
    {"M 6 2 L 10 2 M 6.7 2 L 6.7 6.2 L 3 13.4 L 13 13.4 L 9.3 6.2 L 9.3 2", "M 4.9 10 L 11.1 10 L 13 13.4 L 3 13.4 Z"},
    {"O 8 8 6", "O 8 8 3.4"},
    {"M 5.3 1.8 L 10.7 1.8 L 14.2 5.3 L 14.2 10.7 L 10.7 14.2 L 5.3 14.2 L 1.8 10.7 L 1.8 5.3 Z M 8 4.6 L 8 8.6",
     "O 8 11.4 1.1"},
    {"M 8 1.8 L 14.6 13.6 L 1.4 13.6 Z M 8 6.2 L 8 9.4", "O 8 11.6 1"},
    {"O 8 8 6 M 8 7.6 L 8 11.2", "O 8 4.9 1.1"},
    {"O 8 8 2.6", ""},
};

QPainterPath pathOf(const char* text)
{
    QPainterPath path;
    const QStringList words = QString::fromLatin1(text).split(QLatin1Char(' '));
    int next = 0;
    const auto number = [&]() { return words.value(next++).toDouble(); };
    const auto point = [&]() {
        const double x = number();
        return QPointF(x, number());
    };
    while (next < words.size()) {
        const QString word = words.at(next++);
        if (word == QLatin1String("M")) {
            path.moveTo(point());
        } else if (word == QLatin1String("L")) {
            path.lineTo(point());
        } else if (word == QLatin1String("C")) {
            const QPointF first = point();
            const QPointF second = point();
            path.cubicTo(first, second, point());
        } else if (word == QLatin1String("O")) {
            const QPointF center = point();
            const double radius = number();
            path.addEllipse(center, radius, radius);
        } else if (word == QLatin1String("Z")) {
            path.closeSubpath();
        }
    }
    return path;
}

class Engine : public QIconEngine
{
public:
    Engine(Icons::Shape shape, Theme::Accent accent)
        : m_shape(shape)
        , m_accent(accent)
    {
    }

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override
    {
        const QPalette palette = QApplication::palette();
        QColor color = Theme::accent(palette, m_accent);
        if (mode == QIcon::Disabled)
            color = palette.color(QPalette::Disabled, QPalette::ButtonText);
        else if (mode == QIcon::Selected)
            color = palette.color(QPalette::HighlightedText);
        const double side = qMin(rect.width(), rect.height());
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->translate(QRectF(rect).center() - QPointF(side, side) / 2);
        painter->scale(side / 16, side / 16);
        painter->fillPath(pathOf(drawings[m_shape].areas), color);
        painter->setPen(QPen(color, 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter->drawPath(pathOf(drawings[m_shape].lines));
        painter->restore();
    }

    // Not kept, so that it has the colours of the palette that is in use.
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override
    {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, QRect(QPoint(), size), mode, state);
        return pixmap;
    }

    QIconEngine* clone() const override { return new Engine(m_shape, m_accent); }

private:
    Icons::Shape m_shape;
    Theme::Accent m_accent;
};

} // namespace

QIcon Icons::create(Shape shape, Theme::Accent accent)
{
    return QIcon(new Engine(shape, accent));
}
