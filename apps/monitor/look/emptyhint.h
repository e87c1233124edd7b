#ifndef EMPTYHINT_H
#define EMPTYHINT_H

#include <QLabel>

class QAbstractItemView;

/** Says in a view that is empty what to do next; away as soon as there is a row. */
class EmptyHint : public QLabel
{
    Q_OBJECT

public:
    /** Lives in @p view. */
    EmptyHint(QAbstractItemView* view, const QString& text);

    /** Whether there are rows and none of them is shown, which is as if there were none. */
    void setAllHidden(bool hidden);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void follow();

    QAbstractItemView* m_view;
    bool m_isAllHidden = false;
};

#endif
