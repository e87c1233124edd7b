#include "bytesview.h"

#include "theme.h"

#include <QClipboard>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>

#include <algorithm>

static const int MostInLine = 32;
static const int LeastInLine = 4;
static const int InGroup = 8;
static const int Margin = 4;

BytesView::BytesView(QWidget* parent)
    : QAbstractScrollArea(parent)
{
    setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    setFocusPolicy(Qt::StrongFocus);
    viewport()->setBackgroundRole(QPalette::Base);
    viewport()->setCursor(Qt::IBeamCursor);
    layOut();
}

void BytesView::setBytes(const QByteArray& bytes)
{
    const bool isOfSameSize = bytes.size() == m_bytes.size();
    m_bytes = bytes;
    const qint64 last = qMax<qint64>(0, bytes.size() - 1);
    m_current = qMin(m_current, last);
    m_anchor = qMin(m_anchor, last);
    if (!isOfSameSize)
        layOut();
    viewport()->update();
}

void BytesView::setHint(const QString& hint)
{
    m_hint = hint;
    viewport()->update();
}

void BytesView::setMarks(const QVector<FieldBytes::Range>& marks)
{
    m_marks = marks;
    viewport()->update();
}

quint8 BytesView::getMarksOf(qint64 byte) const
{
    const auto isBefore = [](const FieldBytes::Range& range, qint64 bit) { return range.end <= bit; };
    quint8 bits = 0;
    for (auto mark = std::lower_bound(m_marks.cbegin(), m_marks.cend(), 8 * byte, isBefore);
         mark != m_marks.cend() && mark->begin < 8 * byte + 8; ++mark)
        for (qint64 bit = qMax(mark->begin, 8 * byte); bit < qMin(mark->end, 8 * byte + 8); ++bit)
            bits = quint8(bits | 1 << (bit - 8 * byte));
    return bits;
}

int BytesView::getAddressDigits() const
{
    int digits = 4;
    for (qint64 size = m_bytes.size() >> 16; size > 0; size >>= 8)
        digits += 2;
    return digits;
}

int BytesView::hexPlace(int column) const
{
    return Margin + (getAddressDigits() + 2 + 3 * column + column / InGroup) * m_letter;
}

int BytesView::textPlace(int column) const
{
    return hexPlace(m_inLine) + (1 + column) * m_letter;
}

int BytesView::getLinesOnScreen() const
{
    return qMax(1, viewport()->height() / m_line);
}

// As many bytes as there is room for, but as one who counts in hexadecimal expects it.
void BytesView::layOut()
{
    m_letter = qMax(1, fontMetrics().horizontalAdvance(QLatin1Char('0')));
    m_line = fontMetrics().height() + 1;
    const qint64 first = qint64(verticalScrollBar()->value()) * m_inLine;
    for (m_inLine = MostInLine; m_inLine > LeastInLine; m_inLine /= 2)
        if (textPlace(m_inLine) + Margin <= viewport()->width())
            break;
    const qint64 lines = (m_bytes.size() + m_inLine - 1) / m_inLine;
    verticalScrollBar()->setPageStep(getLinesOnScreen());
    verticalScrollBar()->setRange(0, int(qMax<qint64>(0, lines - getLinesOnScreen())));
    verticalScrollBar()->setValue(int(first / m_inLine));
    horizontalScrollBar()->setPageStep(viewport()->width());
    horizontalScrollBar()->setRange(0, qMax(0, textPlace(m_inLine) + Margin - viewport()->width()));
    viewport()->update();
}

void BytesView::resizeEvent(QResizeEvent* event)
{
    QAbstractScrollArea::resizeEvent(event);
    layOut();
}

void BytesView::changeEvent(QEvent* event)
{
    QAbstractScrollArea::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        layOut();
}

void BytesView::focusInEvent(QFocusEvent* event)
{
    QAbstractScrollArea::focusInEvent(event);
    viewport()->update();
}

void BytesView::focusOutEvent(QFocusEvent* event)
{
    QAbstractScrollArea::focusOutEvent(event);
    viewport()->update();
}

void BytesView::paintLine(QPainter* painter, qint64 line, int top) const
{
    QColor marked = Theme::accent(palette(), Theme::Waiting);
    QColor selected = palette().color(QPalette::Highlight);
    selected.setAlpha(130);
    const QColor faint = Theme::faintText(palette());
    const QColor plain = palette().color(QPalette::Text);
    const qint64 first = line * m_inLine;
    painter->setPen(faint);
    painter->drawText(Margin, top + fontMetrics().ascent(),
                      QString::number(first, 16).rightJustified(getAddressDigits(), QLatin1Char('0')));
    const qint64 begin = qMin(m_anchor, m_current);
    const qint64 end = qMax(m_anchor, m_current);
    for (int column = 0; column < m_inLine && first + column < m_bytes.size(); ++column) {
        const qint64 byte = first + column;
        const uchar value = uchar(m_bytes.at(int(byte)));
        const QRect hex(hexPlace(column) - m_letter / 2, top, 3 * m_letter, m_line);
        const QRect letter(textPlace(column), top, m_letter, m_line);
        const quint8 marks = getMarksOf(byte);
        const bool isSelected = begin != end && byte >= begin && byte <= end;
        marked.setAlpha(marks == 0xff ? 110 : 50);
        for (const QRect& place : {hex, letter}) {
            if (marks)
                painter->fillRect(place, marked);
            if (isSelected)
                painter->fillRect(place, selected);
        }
        if (marks && marks != 0xff) { // a part of it
            marked.setAlpha(255);
            painter->fillRect(hex.left(), hex.bottom() - 1, hex.width(), 2, marked);
        }
        const bool isLetter = value >= 0x20 && value < 0x7f;
        painter->setPen(plain);
        painter->drawText(hexPlace(column), top + fontMetrics().ascent(),
                          QString::number(value, 16).rightJustified(2, QLatin1Char('0')));
        painter->setPen(isLetter ? plain : faint);
        painter->drawText(textPlace(column), top + fontMetrics().ascent(),
                          QString(QLatin1Char(isLetter ? char(value) : '.')));
        if (byte == m_current) {
            painter->setPen(hasFocus() ? Theme::accent(palette(), Theme::Waiting) : faint);
            painter->drawRect(hex.adjusted(0, 0, -1, -1));
        }
    }
}

void BytesView::paintEvent(QPaintEvent*)
{
    QPainter painter(viewport());
    if (m_bytes.isEmpty()) {
        painter.setFont(QGuiApplication::font());
        painter.setPen(palette().color(QPalette::PlaceholderText));
        painter.drawText(viewport()->rect().adjusted(Margin, Margin, -Margin, -Margin),
                         Qt::AlignCenter | Qt::TextWordWrap, m_hint);
        return;
    }
    painter.translate(-horizontalScrollBar()->value(), 0);
    const qint64 first = verticalScrollBar()->value();
    for (int i = 0; i <= getLinesOnScreen() && (first + i) * m_inLine < m_bytes.size(); ++i)
        paintLine(&painter, first + i, i * m_line);
}

void BytesView::scrollTo(qint64 byte)
{
    const int line = int(byte / m_inLine);
    QScrollBar* const bar = verticalScrollBar();
    if (line < bar->value())
        bar->setValue(line);
    else if (line >= bar->value() + getLinesOnScreen())
        bar->setValue(line - getLinesOnScreen() + 1);
}

void BytesView::setCurrent(qint64 byte)
{
    m_current = m_anchor = qBound<qint64>(0, byte, qMax<qint64>(0, m_bytes.size() - 1));
    scrollTo(m_current);
    viewport()->update();
}

void BytesView::goTo(qint64 byte, bool isExtended)
{
    if (m_bytes.isEmpty())
        return;
    const qint64 anchor = m_anchor;
    setCurrent(byte);
    if (isExtended)
        m_anchor = anchor;
    else
        Q_EMIT byteChosen(m_current);
}

void BytesView::keyPressEvent(QKeyEvent* event)
{
    const bool isExtended = event->modifiers() & Qt::ShiftModifier;
    const bool isFar = event->modifiers() & Qt::ControlModifier;
    const qint64 page = qint64(m_inLine) * getLinesOnScreen();
    const qint64 begin = m_current - m_current % m_inLine;
    if (event->matches(QKeySequence::Copy)) {
        copy();
        return;
    }
    switch (event->key()) {
    case Qt::Key_Left:
        goTo(m_current - 1, isExtended);
        return;
    case Qt::Key_Right:
        goTo(m_current + 1, isExtended);
        return;
    case Qt::Key_Up:
        goTo(m_current >= m_inLine ? m_current - m_inLine : m_current, isExtended);
        return;
    case Qt::Key_Down:
        goTo(m_current + m_inLine < m_bytes.size() ? m_current + m_inLine : m_current, isExtended);
        return;
    case Qt::Key_PageUp:
        goTo(m_current - page, isExtended);
        return;
    case Qt::Key_PageDown:
        goTo(m_current + page, isExtended);
        return;
    case Qt::Key_Home:
        goTo(isFar ? 0 : begin, isExtended);
        return;
    case Qt::Key_End:
        goTo(isFar ? m_bytes.size() - 1 : begin + m_inLine - 1, isExtended);
        return;
    case Qt::Key_A:
        if (isFar && !m_bytes.isEmpty()) {
            m_anchor = 0;
            m_current = m_bytes.size() - 1;
            viewport()->update();
            return;
        }
        break;
    default:
        break;
    }
    QAbstractScrollArea::keyPressEvent(event);
}

/** Negative where there is none. */
qint64 BytesView::byteAt(const QPoint& place) const
{
    const int x = place.x() + horizontalScrollBar()->value();
    const qint64 line = verticalScrollBar()->value() + place.y() / m_line;
    for (int column = 0; column < m_inLine; ++column) {
        const int left = hexPlace(column) - m_letter / 2;
        const bool isThere =
            (x >= left && x < left + 3 * m_letter) || (x >= textPlace(column) && x < textPlace(column) + m_letter);
        if (isThere && line * m_inLine + column < m_bytes.size())
            return line * m_inLine + column;
    }
    return -1;
}

void BytesView::mousePressEvent(QMouseEvent* event)
{
    const qint64 byte = byteAt(event->pos());
    if (event->button() == Qt::LeftButton && byte >= 0)
        goTo(byte, event->modifiers() & Qt::ShiftModifier);
}

void BytesView::mouseMoveEvent(QMouseEvent* event)
{
    const qint64 byte = event->buttons() & Qt::LeftButton ? byteAt(event->pos()) : -1;
    if (byte >= 0 && byte != m_current)
        goTo(byte, true);
}

QString BytesView::getSelectedText() const
{
    const qint64 begin = qMin(m_anchor, m_current);
    return QString::fromLatin1(m_bytes.mid(int(begin), int(qMax(m_anchor, m_current) - begin + 1)).toHex(' '));
}

void BytesView::copy() const
{
    if (!m_bytes.isEmpty())
        QGuiApplication::clipboard()->setText(getSelectedText());
}
