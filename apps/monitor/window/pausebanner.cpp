#include "pausebanner.h"

#include <QAction>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

PauseBanner::PauseBanner(QAction* pause, QWidget* parent)
    : QWidget(parent)
{
    setBackgroundRole(QPalette::Highlight);
    setAutoFillBackground(true);
    QLabel* const text = new QLabel(tr("The views are paused. What arrives is counted and recorded all the same."));
    text->setAlignment(Qt::AlignCenter);
    text->setWordWrap(true);
    text->setForegroundRole(QPalette::HighlightedText);
    QPushButton* const resume =
        new QPushButton(tr("Resume (%1)").arg(pause->shortcut().toString(QKeySequence::NativeText)));
    connect(resume, &QPushButton::clicked, pause, [pause]() { pause->setChecked(false); });
    connect(pause, &QAction::toggled, this, &QWidget::setVisible);
    QHBoxLayout* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(6, 3, 6, 3);
    layout->addWidget(text, 1);
    layout->addWidget(resume);
    hide();
}
