#include "simulationbanner.h"

#include "desk.h"
#include "icons.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

SimulationBanner::SimulationBanner(Desk* desk, QWidget* parent)
    : QWidget(parent)
    , m_desk(desk)
    , m_sign(new QLabel)
    , m_text(new QLabel(tr("Simulation: none of this comes from a device.")))
{
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::AlternateBase);
    m_text->setWordWrap(true);
    QFont font = m_text->font();
    font.setBold(true);
    m_text->setFont(font);
    QPushButton* const end = new QPushButton(tr("End Simulation"));
    end->setToolTip(tr("Close it, and go to the start page"));
    connect(end, &QPushButton::clicked, this, &SimulationBanner::close);
    QHBoxLayout* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(6, 3, 6, 3);
    layout->addWidget(m_sign);
    layout->addWidget(m_text, 1);
    layout->addWidget(end);
    connect(desk->getSources(), &SourceModel::sessionAdded, this, &SimulationBanner::follow);
    connect(desk->getSources(), &SourceModel::sessionRemoved, this, &SimulationBanner::follow);
    color();
    follow();
}

void SimulationBanner::follow()
{
    const SourceModel* const sources = m_desk->getSources();
    bool isSimulated = sources->getCount() > 0;
    for (int i = 0; i < sources->getCount(); ++i)
        isSimulated = isSimulated && sources->getSession(i)->getOptions().isSimulation();
    setVisible(isSimulated);
}

void SimulationBanner::color()
{
    const int side = fontMetrics().height();
    m_sign->setPixmap(Icons::create(Icons::Flask, Theme::Simulated).pixmap(side, side));
    QPalette colors = palette();
    colors.setColor(QPalette::WindowText, Theme::accent(colors, Theme::Simulated));
    m_text->setPalette(colors);
}

void SimulationBanner::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        color();
}

void SimulationBanner::close()
{
    m_desk->getSources()->closeAll();
}
