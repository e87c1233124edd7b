#include "senderchoice.h"

#include "desk.h"

#include <QAbstractItemView>
#include <QSet>
#include <QSignalBlocker>

static const int LeastCharacters = 14;

SenderChoice::SenderChoice(Desk* desk, QWidget* parent)
    : QComboBox(parent)
    , m_desk(desk)
{
    addItem(tr("All senders"), QString());
    setAccessibleName(tr("Sender shown"));
    setSizeAdjustPolicy(AdjustToMinimumContentsLengthWithIcon); // a topic can be longer than the tool bar
    setMinimumContentsLength(LeastCharacters);
    view()->setTextElideMode(Qt::ElideMiddle);
    const QString toolTip = tr("Whose messages the tree, the forms and the values show");
    setToolTip(toolTip);
    connect(this, QOverload<int>::of(&QComboBox::currentIndexChanged), this, [this, toolTip]() {
        const QString sender = currentData().toString();
        m_desk->getLatest()->setSender(sender);
        setToolTip(sender.isEmpty() ? toolTip : sender + QLatin1Char('\n') + toolTip);
    });
    connect(desk, &Desk::senderRenamed, this, &SenderChoice::rename);
    connect(desk->getSources(), &SourceModel::sessionRemoved, this, &SenderChoice::refresh);
}

void SenderChoice::rename(const QString& before, const QString& now)
{
    const int index = findData(before);
    if (index <= 0)
        return;
    const QSignalBlocker blocker(this); // it is chosen already
    m_senders.clear();
    setItemText(index, now);
    setItemData(index, now);
}

void SenderChoice::refresh()
{
    const QStringList senders = m_desk->getTypes()->getSenders();
    if (senders == m_senders)
        return;
    m_senders = senders;
    if (!senders.contains(currentData().toString()))
        setCurrentIndex(0); // and not whoever stands beside the one that goes
    const QSet<QString> wanted(senders.begin(), senders.end());
    QSet<QString> offered; // findData() looks through all of them
    for (int i = count() - 1; i > 0; --i) {
        if (wanted.contains(itemData(i).toString()))
            offered.insert(itemData(i).toString());
        else
            removeItem(i);
    }
    for (int i = 0; i < senders.size(); ++i) // in the order of names, whoever came first; behind the entry for all
        if (!offered.contains(senders.at(i)))
            insertItem(i + 1, senders.at(i), senders.at(i));
}
