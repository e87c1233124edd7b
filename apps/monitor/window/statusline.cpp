#include "statusline.h"

#include "desk.h"

#include <QLabel>
#include <QLocale>

StatusLine::StatusLine(Desk* desk, QWidget* parent)
    : QStatusBar(parent)
    , m_desk(desk)
    , m_input(new QLabel)
    , m_rate(new QLabel)
    , m_problem(new QLabel)
{
    m_rate->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_problem->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_problem->setContentsMargins(2 * fontMetrics().averageCharWidth(), 0, 0, 0);
    m_problem->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_problem->setAccessibleName(tr("Last problem"));
    addWidget(m_input);
    addWidget(m_problem, 1);
    addPermanentWidget(m_rate);
    connect(desk, &Desk::problem, this, &StatusLine::noteProblem);
    connect(desk, &Desk::said, this, &QStatusBar::showMessage);
}

void StatusLine::noteProblem(const QString& text)
{
    m_lastProblem = text;
    m_problem->setText(text.section(QLatin1Char('\n'), 0, 0));
    m_problem->setToolTip(text);
}

QString StatusLine::getSummary() const
{
    const int count = m_desk->getSources()->getCount();
    if (count < 2)
        return count == 0 ? QString() : m_desk->getSources()->getSession(0)->getName();
    return tr("%1 sources").arg(count);
}

QString StatusLine::inputText() const
{
    const SourceModel* const sources = m_desk->getSources();
    const int count = sources->getCount();
    if (count == 0)
        return tr("Nothing is open");
    if (count == 1)
        return tr("%1: %2").arg(getSummary(), SourceModel::stateText(sources->getSession(0)));
    int recordings = 0;
    for (int i = 0; i < count; ++i)
        recordings += sources->getSession(i)->getRecorder().isRecording() ? 1 : 0;
    return recordings > 0 ? tr("%1 sources, %2 recorded").arg(count).arg(recordings) : getSummary();
}

QString StatusLine::rateText() const
{
    const SourceModel* const sources = m_desk->getSources();
    quint64 messages = 0;
    quint64 failures = 0;
    for (int i = 0; i < sources->getCount(); ++i) {
        const ReceptionCounters& counters = sources->getSession(i)->getCounters();
        messages += counters.getMessageCount() + counters.getUnknownCount();
        failures += counters.getChecksumFailureCount();
    }
    const QLocale locale;
    return tr("%1 messages   %2 /s   %3 kB/s   %4 not displayed   %5 checksum failures")
        .arg(locale.toString(messages))
        .arg(locale.toString(sources->getMessageRate(), 'f', 0))
        .arg(locale.toString(sources->getByteRate() / 1000, 'f', 1))
        .arg(locale.toString(m_desk->getLatest()->getOvertakenCount()))
        .arg(locale.toString(failures));
}

void StatusLine::refresh()
{
    m_input->setText(inputText());
    if (m_desk->getSources()->getCount() == 0) {
        m_rate->clear();
        return;
    }
    m_rate->setText(rateText());
    m_rate->setMinimumWidth(m_rate->sizeHint().width()); // never less, or the text beside it moves
}
