#include "statusline.h"

#include "desk.h"
#include "labels.h"
#include "theme.h"

#include <QLabel>
#include <QLocale>

StatusLine::StatusLine(Desk* desk, QWidget* parent)
    : QStatusBar(parent)
    , m_desk(desk)
    , m_input(new ElidedLabel)
    , m_rate(new QLabel)
    , m_lost(new QLabel)
    , m_damaged(new QLabel)
    , m_problem(new QLabel)
{
    m_rate->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_problem->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_problem->setContentsMargins(2 * fontMetrics().averageCharWidth(), 0, 0, 0);
    m_problem->setTextInteractionFlags(Qt::TextSelectableByMouse);
    setToldName(m_problem, tr("Last problem"));
    addWidget(m_input);
    addWidget(m_problem, 1);
    for (QLabel* const label : {m_rate, m_lost, m_damaged}) {
        label->setContentsMargins(fontMetrics().averageCharWidth(), 0, 0, 0);
        addPermanentWidget(label);
    }
    connect(desk, &Desk::problem, this, &StatusLine::noteProblem);
    connect(desk, &Desk::recovered, this, [this]() { noteProblem(QString()); });
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

void StatusLine::showCounts()
{
    const SourceModel* const sources = m_desk->getSources();
    const QLocale locale;
    quint64 messages = 0;
    quint64 bytes = 0;
    quint64 failures = 0;
    quint64 cutOff = 0;
    for (int i = 0; i < sources->getCount(); ++i) {
        const ReceptionCounters& counters = sources->getSession(i)->getCounters();
        messages += counters.getMessageCount() + counters.getUnknownCount();
        bytes += counters.getByteCount();
        failures += counters.getChecksumFailureCount();
        cutOff += counters.getTruncatedFrames();
    }
    const QString count = messages == 1 ? tr("1 message") : tr("%1 messages").arg(locale.toString(messages));
    m_rate->setText(tr("%1   %2 /s   %3   %4/s", "messages, their rate, bytes, their rate")
                        .arg(count, locale.toString(sources->getMessageRate(), 'f', 0),
                             locale.formattedDataSize(qint64(bytes), 1, QLocale::DataSizeSIFormat),
                             locale.formattedDataSize(qint64(sources->getByteRate()), 1, QLocale::DataSizeSIFormat)));
    m_rate->setToolTip(tr("The views are brought up to date some times a second and show the newest message of each "
                          "type. %1 were overtaken before that; all are counted.")
                           .arg(locale.toString(m_desk->getLatest()->getOvertakenCount())));

    quint64 received = 0;
    quint64 lost = 0;
    const QList<MessageStatisticsCoordinator::SenderStatistics> senders =
        m_desk->getCoordinator()->getSenderStatistics();
    for (const MessageStatisticsCoordinator::SenderStatistics& sender : senders) {
        received += sender.numbered ? sender.received : 0;
        lost += sender.numbered ? sender.lost : 0;
    }
    const double percent = received + lost > 0 ? 100.0 * double(lost) / double(received + lost) : 0;
    // As long as anything was lost it does not say that nothing was.
    const bool isLittle = lost > 0 && percent < 0.05;
    m_lost->setText(isLittle ? tr("< 0.1 % lost") : tr("%1 % lost").arg(locale.toString(percent, 'f', 1)));
    m_lost->setToolTip(tr("Numbers that were skipped by those who number their messages: %1. It is a lower bound.")
                           .arg(locale.toString(lost)));
    m_lost->setVisible(received > 0);
    showAsWarning(m_lost, lost > 0);

    m_damaged->setText(tr("%1 damaged").arg(locale.toString(failures + cutOff)));
    m_damaged->setToolTip(tr("Checksum failures: %1. Cut off: %2. None of them is shown as a message.")
                              .arg(locale.toString(failures), locale.toString(cutOff)));
    showAsWarning(m_damaged, failures + cutOff > 0);
}

// The palette may be another one now.
void StatusLine::showAsWarning(QLabel* label, bool isWarning)
{
    QPalette colors = palette();
    if (isWarning)
        colors.setColor(QPalette::WindowText, Theme::accent(colors, Theme::Warning));
    if (label->palette() != colors)
        label->setPalette(colors);
    QFont font = this->font();
    font.setBold(isWarning);
    if (label->font() != font)
        label->setFont(font);
}

void StatusLine::refresh()
{
    m_input->setText(inputText());
    const bool isOpen = m_desk->getSources()->getCount() > 0;
    for (QLabel* const label : {m_rate, m_lost, m_damaged})
        label->setVisible(isOpen);
    if (!isOpen)
        return;
    showCounts();
    m_rate->setMinimumWidth(m_rate->sizeHint().width()); // never less, or the text beside it moves
}
