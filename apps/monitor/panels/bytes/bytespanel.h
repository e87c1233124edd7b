#ifndef BYTESPANEL_H
#define BYTESPANEL_H

#include "fieldbytes.h"
#include "messagereference.h"
#include "panel.h"
#include "subject.h"

#include <QWidget>

class BitsStrip;
class BytesView;
class QAction;
class QLabel;

/**
 * The bytes of a message, with those marked that the field has which is current in the tree, and the other way: the
 * field of a byte or bit that somebody goes to becomes current there.
 *
 * It shows the message that was chosen in the list of messages, or the newest one of the row that is current in the
 * tree, whichever was chosen last.
 */
class BytesPanel : public QWidget, public Panel
{
    Q_OBJECT

public:
    explicit BytesPanel(Desk* desk, QWidget* parent = nullptr);

    BytesView* getView() const { return m_view; }
    BitsStrip* getBits() const { return m_bits; }
    /** Which message is shown. */
    QString getTitle() const;
    /** What is marked, or why nothing is. */
    QString getText() const;

    QWidget* getWidget() override { return this; }
    void renew() override;
    void forget(const MessageInfo* info) override;

protected:
    void changeEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;

private Q_SLOTS:
    void processMessage(const Message* message);

private:
    void offerUse();
    void followMessage();
    void followField();
    void showNewest();
    void chooseAt(qint64 bit, FieldBytes::Grain grain);
    void showMessage(const MessageReference& message);
    void showMarks(bool mustBeSeen);
    void showBits();
    QString textOfMarks(const FieldBytes& found) const;

    Desk* m_desk;
    QLabel* m_title;
    BytesView* m_view;
    QLabel* m_text;
    BitsStrip* m_bits;
    MessageReference m_message;
    FieldPath m_path;        // what is marked
    QString m_rest;          // what the current byte is that is no field's
    Subject m_subject{};     // whose newest message is shown
    bool m_isOfList = false; // and not that
    bool m_isTelling = false;
};

#endif
