#ifndef SUBJECTROW_H
#define SUBJECTROW_H

#include "messagetreewidgetitem.h"
#include "subject.h"

/**
 * The row of a message type, as one sender sends it or whoever does.
 *
 * It has no rows of fields until it is filled, so that a thousand senders cost no more than their names. Whoever owns
 * the tree gives it the messages of its sender.
 */
class SubjectRow : public MessageTreeWidgetItem
{
    Q_OBJECT

public:
    /** @param subject  has a type */
    SubjectRow(MessageTreeWidget* tree, const Subject& subject);

    const Subject& getSubject() const { return m_subject; }
    /** The sender has another name now. */
    void setSender(const QString& sender);
    /** Whether the name of the row tells the sender as well. */
    void setSenderShown(bool shown);
    bool isSenderShown() const { return m_isSenderShown; }
    void setPinned(bool pinned) { m_isPinned = pinned; }
    bool isPinned() const { return m_isPinned; }

    bool isFilled() const { return getMessageInfo() != nullptr; }
    /** Makes the rows of the fields, with the values of @p latest, which may be null. */
    void fill(const Message* latest);

    /** What is told of its messages beside the name: who sent the newest one, how often they come and since when. */
    void setStatus(const QString& status);
    /** Shows nothing, also of what fields said of the message that was shown. */
    void clear();

    QString getNameText() override;
    QString getNameToolTip() override;
    QString getValueText() override;
    /** Unfolds the row, or not, as the user left rows of its type. */
    void restoreExpansion();
    /** It was folded or unfolded; the view forgets it when columns go. */
    void noteExpansion() { m_isUnfolded = isExpanded(); }
    /** What is unfolded stays so, whatever the user did with other rows of the type since. */
    void configureInTreeWidget() override;

private:
    void showName();

    Subject m_subject;
    QString m_status;
    bool m_isSenderShown = false;
    bool m_isPinned = false;
    bool m_isUnfolded = false;
};

#endif
