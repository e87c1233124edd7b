#ifndef BYTESVIEW_H
#define BYTESVIEW_H

#include "fieldbytes.h"

#include <QAbstractScrollArea>

/**
 * Bytes in hexadecimal and as characters, some bits of them marked. Only what can be seen is looked at.
 *
 * One byte is the current one; Shift extends a selection from there, which is copied as hexadecimal.
 */
class BytesView : public QAbstractScrollArea
{
    Q_OBJECT

public:
    explicit BytesView(QWidget* parent = nullptr);

    /** Shows these bytes from now on; where somebody is in them stays, as far as it is there. */
    void setBytes(const QByteArray& bytes);
    const QByteArray& getBytes() const { return m_bytes; }
    /** What stands there in place of bytes; empty for nothing. */
    void setHint(const QString& hint);
    const QString& getHint() const { return m_hint; }

    /** In the order of the bytes. */
    void setMarks(const QVector<FieldBytes::Range>& marks);
    const QVector<FieldBytes::Range>& getMarks() const { return m_marks; }
    /** The bits of a byte that are marked. */
    quint8 getMarksOf(qint64 byte) const;

    /** Makes a byte the current one, without telling it, and lets it be seen. */
    void setCurrent(qint64 byte);
    qint64 getCurrent() const { return m_current; }
    /** How many bytes there are in a line now. */
    int getBytesInLine() const { return m_inLine; }

    /** The bytes that are selected, or the current one, in hexadecimal. */
    QString getSelectedText() const;
    void copy() const;

Q_SIGNALS:
    /** The user went to a byte. */
    void byteChosen(qint64 byte);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void changeEvent(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void layOut();
    void goTo(qint64 byte, bool isExtended);
    void scrollTo(qint64 byte);
    int getLinesOnScreen() const;
    int getAddressDigits() const;
    int hexPlace(int column) const;
    int textPlace(int column) const;
    qint64 byteAt(const QPoint& place) const;
    void paintLine(QPainter* painter, qint64 line, int top) const;

    QByteArray m_bytes;
    QString m_hint;
    QVector<FieldBytes::Range> m_marks;
    qint64 m_current = 0;
    qint64 m_anchor = 0; // the other end of what is selected
    int m_inLine = 16;
    int m_letter = 1; // its width
    int m_line = 1;   // its height
};

#endif
