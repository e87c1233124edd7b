#ifndef BITSSTRIP_H
#define BITSSTRIP_H

#include <QWidget>

/** The bits of a byte, the highest first, some of them marked. A bit that somebody clicks on or goes to is told. */
class BitsStrip : public QWidget
{
    Q_OBJECT

public:
    explicit BitsStrip(QWidget* parent = nullptr);

    /** @param marks  a bit for each bit that is marked */
    void show(quint8 byte, quint8 marks);

    QSize sizeHint() const override;

Q_SIGNALS:
    /** 0 is the lowest. */
    void bitChosen(int bit);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool event(QEvent* event) override;

private:
    QRect placeOf(int bit) const;
    int bitAt(const QPoint& place) const;
    void choose(int bit);

    quint8 m_byte = 0;
    quint8 m_marks = 0;
    int m_current = 7;
};

#endif
