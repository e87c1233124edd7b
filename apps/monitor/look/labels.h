#ifndef LABELS_H
#define LABELS_H

#include <QLabel>

/** Gives a label a name, which screen readers say before its text; a name of Qt's own would be said in its place. */
void setToldName(QLabel* label, const QString& name);

/** A label that leaves out the middle of its text where there is no room for it, and tells it in a tool tip then. */
class ElidedLabel : public QLabel
{
    Q_OBJECT

public:
    explicit ElidedLabel(QWidget* parent = nullptr);

    QSize minimumSizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
};

#endif
