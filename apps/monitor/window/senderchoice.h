#ifndef SENDERCHOICE_H
#define SENDERCHOICE_H

#include <QComboBox>
#include <QStringList>

class Desk;

/** Lets the user choose whose messages the tree, the forms and the values show. */
class SenderChoice : public QComboBox
{
    Q_OBJECT

public:
    /** @param desk  borrowed */
    explicit SenderChoice(Desk* desk, QWidget* parent = nullptr);

    /** Offers the senders that there are now. */
    void refresh();

private:
    void rename(const QString& before, const QString& now);

    Desk* m_desk;
    QStringList m_senders; // that are offered
};

#endif
