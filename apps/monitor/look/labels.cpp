#include "labels.h"

#include <QAccessibleWidget>
#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QToolTip>

static const char ToldProperty[] = "toldName";
static const int LeastCharacters = 8;

namespace
{

/** What screen readers have of a label with a name. */
class ToldLabel : public QAccessibleWidget
{
public:
    explicit ToldLabel(QLabel* label)
        : QAccessibleWidget(label, QAccessible::StaticText)
    {
    }

    QString text(QAccessible::Text which) const override
    {
        const QLabel* const label = qobject_cast<const QLabel*>(widget());
        if (which != QAccessible::Name || !label)
            return QAccessibleWidget::text(which);
        const QString name = label->accessibleName();
        return label->text().isEmpty() ? name : name + QLatin1String(": ") + label->text();
    }
};

QAccessibleInterface* createInterface(const QString& className, QObject* object)
{
    QLabel* const label = className == QLatin1String("QLabel") ? qobject_cast<QLabel*>(object) : nullptr;
    return label && label->property(ToldProperty).toBool() ? new ToldLabel(label) : nullptr;
}

} // namespace

void setToldName(QLabel* label, const QString& name)
{
    static bool isInstalled = false;
    if (!isInstalled)
        QAccessible::installFactory(createInterface);
    isInstalled = true;
    label->setProperty(ToldProperty, true);
    label->setAccessibleName(name);
}

ElidedLabel::ElidedLabel(QWidget* parent)
    : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
}

QSize ElidedLabel::minimumSizeHint() const
{
    const QSize whole = QLabel::minimumSizeHint();
    return QSize(qMin(whole.width(), LeastCharacters * fontMetrics().averageCharWidth()), whole.height());
}

bool ElidedLabel::event(QEvent* event)
{
    if (event->type() == QEvent::ToolTip && fontMetrics().horizontalAdvance(text()) > contentsRect().width()) {
        QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), text(), this);
        return true;
    }
    return QLabel::event(event);
}

void ElidedLabel::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const QRect place = contentsRect();
    style()->drawItemText(&painter, place, int(Qt::AlignLeft | Qt::AlignVCenter), palette(), isEnabled(),
                          fontMetrics().elidedText(text(), Qt::ElideMiddle, place.width()), foregroundRole());
}
