// Rows and a column of an application's own in the message tree: a row for each sender with its message types below,
// each of which counts its messages, and a column that says of every kind of row what there is to say beside its value.
// It shows whatever sends MAVLink to UDP port 14550, or to the address given as argument.

#include "fieldinfo.h"
#include "mavlinkdialect.h"
#include "mavlinkstreamdecoder.h"
#include "message.h"
#include "messagegrouptreewidgetitem.h"
#include "messageneed.h"
#include "messagetreecolumn.h"
#include "messagetreewidgetitem.h"
#include "streamsource.h"

#include <QApplication>
#include <QHash>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QStatusBar>

#include <memory>

/** The row of a message type that counts its messages. */
class CountedRow : public MessageTreeWidgetItem
{
public:
    CountedRow(MessageTreeWidget* tree, const MessageInfo* info)
        : AbstractMessageTreeWidgetItem(tree) // a virtual base: only the class that is the whole row can initialise it
        , MessageTreeWidgetItem(tree, info)
    {
    }

    QString getValueText() override { return QString("%1 received").arg(m_count); }

    void processMessage(const Message* message) override
    {
        m_count += message && message->getInfo() == getMessageInfo();
        MessageTreeWidgetItem::processMessage(message); // writes the texts
    }

private:
    int m_count = 0;
};

/** The row of a sender. A type gets a row below it with its first message. */
class SenderRow : public MessageGroupTreeWidgetItem
{
public:
    SenderRow(MessageTreeWidget* tree, const QString& sender)
        : MessageGroupTreeWidgetItem(tree, sender)
    {
    }

    QString getTypeText() override { return "Sender"; }
    QString getValueText() override { return QString(childCount() == 1 ? "%1 type" : "%1 types").arg(childCount()); }
    qint64 getSize() const { return m_size; }

    void processMessage(const Message* message) override
    {
        if (message) {
            m_size += message->getData().size();
            MessageTreeWidgetItem* const added = findRow(message->getInfo()) ? nullptr : addRow(message->getInfo());
            if (added)
                added->setExpanded(false); // else all that a type has would be seen at once
        }
        MessageGroupTreeWidgetItem::processMessage(message);
    }

protected:
    MessageTreeWidgetItem* createRow(const MessageInfo* info) override
    {
        return new CountedRow(getMessageTreeWidget(), info);
    }

private:
    qint64 m_size = 0;
};

/** What there is to say beside the value: of a field what it means, else how many bytes came. */
class NotesColumn : public MessageTreeColumn
{
public:
    QString getHeaderText() const override { return "Notes"; }

    QString getMessageText(MessageTreeWidgetItem* row) override
    {
        return row->isMessageDisplayed() ? toText(row->getDisplayedMessage()->getData().size()) : QString();
    }

    QString getFieldText(AbstractMessageTreeWidgetItem*, const FieldInfo* field, const Message*) override
    {
        return field->getDescription();
    }

    QString getGroupText(AbstractMessageTreeWidgetItem* row) override
    {
        const SenderRow* const sender = dynamic_cast<SenderRow*>(row);
        return sender ? toText(sender->getSize()) : QString();
    }

private:
    static QString toText(qint64 bytes) { return QString("%1 bytes").arg(bytes); }
};

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    InputAddress address;
    QString error;
    if (!InputAddress::parse(application.arguments().value(1, "udp:"), &address, &error))
        return qCritical("%s", qPrintable(error)), 1;
    const std::unique_ptr<MavlinkDialect> dialect(MavlinkDialect::loadBuiltIn());
    StreamSource source(ByteInput::create(address),
                        new MavlinkStreamDecoder(dialect.get(), MavlinkStreamDecoder::RawLayout));
    // Rows state what they need; here they come with the first message, so all types are needed from the beginning.
    MessageNeed need(nullptr);
    need.setMessagesNeeded(dialect->getMessageInfos());

    QMainWindow window;
    MessageTreeWidget* const tree = new MessageTreeWidget(&window);
    tree->setCustomColumn(MessageTreeWidget::CustomColumn1, new NotesColumn);
    tree->addColumn(MessageTreeWidget::CustomColumn1, true);
    QHash<QString, SenderRow*> senders;
    QObject::connect(&source, &StreamSource::newMessage, tree, [&](const Message* message) {
        SenderRow*& row = senders[message->getSender()];
        if (!row) {
            row = new SenderRow(tree, message->getSender());
            tree->addTopLevelItem(row);
            row->configureInTreeWidget();
            row->setExpanded(true);
        }
        row->processMessage(message);
    });
    tree->setColumnWidth(0, 240);
    tree->setColumnWidth(1, 80);
    tree->setColumnWidth(2, 120);
    window.setCentralWidget(tree);

    QMenu* const columns = window.menuBar()->addMenu("&Columns");
    for (QAction* action : tree->getToggleColumnActions())
        columns->addAction(action);
    window.resize(800, 600);
    window.show();
    QObject::connect(&source, &StreamSource::stateChanged, &window, [&](int state) {
        if (state == StreamSource::Failed) // such as a file that is not there, or a port that is in use
            window.statusBar()->showMessage(source.getErrorString());
    });
    source.start();
    return application.exec();
}
