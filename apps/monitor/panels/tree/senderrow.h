#ifndef SENDERROW_H
#define SENDERROW_H

#include "messagegrouptreewidgetitem.h"
#include "subject.h"

#include <QCoreApplication>
#include <QVector>

/** The row of a sender, with rows of its types below, which are made when it is unfolded. */
class SenderRow : public MessageGroupTreeWidgetItem
{
    Q_DECLARE_TR_FUNCTIONS(SenderRow)

public:
    SenderRow(MessageTreeWidget* tree, const QString& sender);

    const QString& getSender() const { return getName(); }
    void setPinned(bool pinned) { m_isPinned = pinned; }
    bool isPinned() const { return m_isPinned; }

    /** The types that are in the tree. */
    const QVector<const MessageInfo*>& getTypes() const { return m_types; }
    void addType(const MessageInfo* info);
    void removeType(const MessageInfo* info);

    /** Whether its types have rows. */
    bool isFilled() const { return m_isFilled; }
    void setFilled() { m_isFilled = true; }

    QString getNameText() override;
    QString getTypeText() override;
    QString getValueText() override;
    /** Its rows get their messages from whoever owns the tree. */
    void processMessage(const Message*) override {}

private:
    QVector<const MessageInfo*> m_types;
    bool m_isFilled = false;
    bool m_isPinned = false;
};

#endif
