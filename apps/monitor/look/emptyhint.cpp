#include "emptyhint.h"

#include "theme.h"

#include <QAbstractItemModel>
#include <QAbstractItemView>
#include <QEvent>

static const int Margin = 12;

EmptyHint::EmptyHint(QAbstractItemView* view, const QString& text)
    : QLabel(text, view->viewport())
    , m_view(view)
{
    Theme::makeHint(this);
    setContentsMargins(Margin, 0, Margin, 0);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    view->viewport()->installEventFilter(this);
    QAbstractItemModel* const model = view->model();
    connect(model, &QAbstractItemModel::rowsInserted, this, &EmptyHint::follow);
    connect(model, &QAbstractItemModel::rowsRemoved, this, &EmptyHint::follow);
    connect(model, &QAbstractItemModel::modelReset, this, &EmptyHint::follow);
    connect(model, &QAbstractItemModel::layoutChanged, this, &EmptyHint::follow);
    follow();
}

void EmptyHint::setAllHidden(bool hidden)
{
    m_isAllHidden = hidden;
    follow();
}

void EmptyHint::follow()
{
    const QRect place = m_view->viewport()->rect();
    setGeometry(place);
    const bool isWhole = heightForWidth(place.width()) <= place.height(); // part of a text says nothing
    setVisible(isWhole && (m_isAllHidden || m_view->model()->rowCount() == 0));
}

bool EmptyHint::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Resize)
        follow();
    return QLabel::eventFilter(watched, event);
}
