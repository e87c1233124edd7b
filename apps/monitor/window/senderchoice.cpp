#include "senderchoice.h"

#include "desk.h"

#include <QSignalBlocker>

SenderChoice::SenderChoice(Desk* desk, QWidget* parent)
    : QComboBox(parent)
    , m_desk(desk)
{
    addItem(tr("All senders"), QString());
    setAccessibleName(tr("Sender shown"));
    setToolTip(tr("Whose messages the tree, the forms and the values show"));
    connect(this, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            [this]() { m_desk->getLatest()->setSender(currentData().toString()); });
    connect(desk, &Desk::senderRenamed, this, &SenderChoice::rename);
    connect(desk->getSources(), &SourceModel::sessionRemoved, this, &SenderChoice::refresh);
}

void SenderChoice::rename(const QString& before, const QString& now)
{
    const int index = findData(before);
    if (index <= 0)
        return;
    const QSignalBlocker blocker(this); // it is chosen already
    setItemText(index, now);
    setItemData(index, now);
}

void SenderChoice::refresh()
{
    const QStringList senders = m_desk->getTypes()->getSenders();
    if (!senders.contains(currentData().toString()))
        setCurrentIndex(0); // and not whoever stands beside the one that goes
    for (int i = count() - 1; i > 0; --i)
        if (!senders.contains(itemData(i).toString()))
            removeItem(i);
    for (const QString& name : senders)
        if (findData(name) < 0)
            addItem(name, name);
}
