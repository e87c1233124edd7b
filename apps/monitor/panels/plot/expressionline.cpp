#include "expressionline.h"

#include "plotlegend.h"
#include "plotpanel.h"
#include "theme.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

ExpressionLine::ExpressionLine(PlotPanel* panel)
    : m_panel(panel)
    , m_edit(new QLineEdit)
    , m_text(new QLabel)
{
    QLabel* const label = new QLabel(tr("E&xpression:"));
    label->setBuddy(m_edit);
    m_edit->setAccessibleName(tr("Expression"));
    QPushButton* const draw = new QPushButton(tr("&Draw"));
    QPushButton* const cancel = new QPushButton(tr("Cancel"));
    m_text->setWordWrap(true);
    QHBoxLayout* const line = new QHBoxLayout;
    line->addWidget(label);
    line->addWidget(m_edit, 1);
    line->addWidget(draw);
    line->addWidget(cancel);
    QVBoxLayout* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->addLayout(line);
    layout->addWidget(m_text);
    connect(m_edit, &QLineEdit::textChanged, this, &ExpressionLine::check);
    connect(m_edit, &QLineEdit::returnPressed, this, &ExpressionLine::take);
    connect(draw, &QPushButton::clicked, this, &ExpressionLine::take);
    connect(cancel, &QPushButton::clicked, this, &ExpressionLine::close);
    hide();
}

void ExpressionLine::open()
{
    m_panel->setLettersShown(true);
    show();
    check();
    m_edit->selectAll();
    m_edit->setFocus();
}

void ExpressionLine::close()
{
    m_panel->setLettersShown(false);
    hide();
    m_panel->getLegend()->setFocus();
}

QString ExpressionLine::getText() const
{
    return m_text->text();
}

void ExpressionLine::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape)
        close();
    else
        QWidget::keyPressEvent(event);
}

/** Says what is wrong, as far as one can say that before it is all written. */
void ExpressionLine::check()
{
    Formula::Fault fault;
    const bool isEmpty = m_edit->text().trimmed().isEmpty();
    const bool isGood = !isEmpty && !PlotExpression::parse(m_edit->text(), m_panel->getSeries(), &fault).isNull();
    if (isEmpty)
        m_text->setText(tr("Lines by their letters, and fields by their paths: a - b, sqrt(a^2 + b^2), "
                           "deg(\"corvel/ATTITUDE/roll\")"));
    else if (isGood)
        m_text->setText(tr("Return draws it."));
    else if (fault.position < 0)
        m_text->setText(fault.text);
    else
        m_text->setText(tr("character %1: %2").arg(fault.position + 1).arg(fault.text));
    const bool isFaulty = !isEmpty && !isGood;
    QPalette colours = palette();
    colours.setColor(QPalette::WindowText,
                     isFaulty ? Theme::accent(palette(), Theme::Bad) : Theme::faintText(palette()));
    m_text->setPalette(colours);
}

void ExpressionLine::take()
{
    Formula::Fault fault;
    const PlotExpression expression = PlotExpression::parse(m_edit->text(), m_panel->getSeries(), &fault);
    if (!expression.isNull() && m_panel->addComputed(expression)) {
        m_edit->clear();
        close();
        return;
    }
    check();
    if (fault.position >= 0)
        m_edit->setCursorPosition(fault.position);
    m_edit->setFocus();
}
