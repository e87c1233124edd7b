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
    setMargin(Margin);
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
    setVisible(m_isAllHidden || m_view->model()->rowCount() == 0);
    setGeometry(m_view->viewport()->rect());
}

bool EmptyHint::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Resize)
        setGeometry(m_view->viewport()->rect());
    return QLabel::eventFilter(watched, event);
}
