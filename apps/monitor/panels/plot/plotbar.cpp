#include "plotbar.h"

#include <QAction>
#include <QComboBox>
#include <QMenu>
#include <QToolButton>

static const int DefaultSpan = 60;

PlotBar::PlotBar(QWidget* parent)
    : QToolBar(parent)
    , m_span(new QComboBox)
{
    m_pause = add(tr("Pause"), tr("Let the picture stay; what comes is kept (Space)"), nullptr);
    m_pause->setCheckable(true);
    m_pause->setShortcut(QKeySequence(Qt::Key_Space));
    m_pause->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    const int spans[] = {5, 10, 30, DefaultSpan, 120, 300, 600, 1800};
    for (const int span : spans)
        m_span->addItem(span < 120 ? tr("%1 s").arg(span) : tr("%1 min").arg(span / 60), span);
    m_span->addItem(tr("All"), 0);
    m_span->setCurrentIndex(m_span->findData(DefaultSpan));
    m_span->setAccessibleName(tr("Time that is shown"));
    m_span->setToolTip(tr("How much time is shown"));
    connect(m_span, QOverload<int>::of(&QComboBox::activated), this, [this]() {
        m_isSpanChosen = true;
        Q_EMIT spanChosen();
    });
    addWidget(m_span);
    addZoom(tr("Zoom In"), QStringLiteral("+"), tr("Show less time (turn the wheel; Shift and drag shows a rectangle)"),
            0.5, QKeySequence::ZoomIn);
    addZoom(tr("Zoom Out"), QChar(0x2212), tr("Show more time"), 2, QKeySequence::ZoomOut);
    add(tr("Show All"), tr("Show all the time that is kept, and pause"), &PlotBar::everythingWanted);
    m_sinceStart =
        add(tr("Since Start"), tr("Draw recordings over one another, by the time since their start"), nullptr);
    m_sinceStart->setCheckable(true);
    addSeparator();
    // What is rarer lies in menus, so that the bar fits a narrow dock.
    QMenu* const removal = new QMenu(this);
    m_needSeries.append(removal->addAction(tr("Remove All"), this, &PlotBar::removalOfAllWanted));
    add(tr("Remove"), tr("Remove the chosen series (Del)"), &PlotBar::removalWanted)->setMenu(removal);
    QMenu* const saving = new QMenu(this);
    saving->addAction(tr("Save Picture..."), this, &PlotBar::pictureWanted);
    saving->addAction(tr("Save Values..."), this, &PlotBar::valuesWanted);
    QAction* const save = add(tr("Save"), tr("Save the plot as a picture, or its values"), nullptr);
    save->setMenu(saving);
    if (QToolButton* const button = qobject_cast<QToolButton*>(widgetForAction(save)))
        button->setPopupMode(QToolButton::InstantPopup);
    const QList<QAction*> all = actions();
    for (QAction* action : all)
        if (QWidget* const button = widgetForAction(action))
            if (!action->text().isEmpty())
                button->setAccessibleName(action->text());
}

QAction* PlotBar::add(const QString& text, const QString& toolTip, void (PlotBar::*signal)())
{
    QAction* const action = addAction(text);
    action->setToolTip(toolTip);
    if (signal)
        connect(action, &QAction::triggered, this, signal);
    m_needSeries.append(action);
    return action;
}

void PlotBar::addZoom(const QString& text, const QString& sign, const QString& toolTip, double factor,
                      QKeySequence::StandardKey key)
{
    QAction* const action = add(text, toolTip, nullptr);
    connect(action, &QAction::triggered, this, [this, factor]() { Q_EMIT zoomWanted(factor); });
    action->setShortcut(key);
    action->setIconText(sign);
}

int PlotBar::getSpan() const
{
    return m_span->currentData().toInt();
}

void PlotBar::suggestAll(bool all)
{
    if (!m_isSpanChosen)
        m_span->setCurrentIndex(m_span->findData(all ? 0 : DefaultSpan));
}

void PlotBar::setFilled(bool filled)
{
    for (QAction* const action : std::as_const(m_needSeries))
        action->setEnabled(filled);
}
