#include "streamidentities.h"

#include "messageinfo.h"
#include "testbase.h"
#include "textrows.h"

namespace
{

/** Knows what senders are called. */
class Names : public StreamDecoder
{
public:
    void feed(const char*, int, qint64, StreamSink*) override {}
    void finish(StreamSink*) override {}
    void restart(quint64) override {}
    bool hasTimes() const override { return false; }
    QString getSenderName(quint32 sender) const override { return senders.value(sender); }

    QHash<quint32, QString> senders;
};

/** One type after the other, by their letters; another "a" is another type of that name. */
const MessageInfo* typeOf(QChar letter)
{
    static const MessageInfo types[] = {MessageInfo(text("A")), MessageInfo(text("B")), MessageInfo(text("A"))};
    return letter == QLatin1Char('?') ? nullptr : &types[text("ABa").indexOf(letter)];
}

} // namespace

class TestStreamIdentities : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void rowsGoByNamesAndNotByNumbers()
    {
        // "7A 1p" is a message of the type A, which the decoder calls 7, from the sender p, which it calls 1; "|" is
        // a reconnection. What is told is the row and the sender of each, and then what the rows are called.
        const TextRow rows[] = {
            {"7A 1p, 8B 2q, 7A 1p, 7A 2q", "0.0 1.1 0.0 2.1: A p, B q, A q"},
            {"7A 1p, 8B 2q | 7B 1q, 8A 2p", "0.0 1.1 1.1 0.0: A p, B q"},
            {"7A 1p | 7B 1p, 8A 1p", "0.0 1.0 0.0: A p, B p"},
            // Two senders of one name, such as channels of one topic.
            {"7A 1p, 8B 2p | 7B 1p, 8A 2p", "0.0 1.1 1.1 0.0: A p, B p"},
            {"7A 1p, 7A 2p, 7A 1p | 7A 5p, 7A 6p, 7A 7p", "0.0 1.1 0.0 0.0 1.1 2.2: A p, A p, A p"},
            // Two types of one name, and one that is another now.
            {"7A 1p, 8a 1p | 7a 1p, 8A 1p", "0.0 1.0 1.0 0.0: A p, A p"},
            {"7A 1p | 7a 1p | 7A 1p", "0.0 0.0 0.0: A p"},
            // Unknown ones, of which one is known later.
            {"7? 1p, 8? 1p, 7? 2q | 7A 1p, 8? 1p", "0.0 1.0 2.1 0.0 1.0: A p, id 8 p, id 7 q"},
        };
        checkRows(rows, [](const QString& script) {
            StreamIdentities identities;
            QStringList told;
            Names decoder;
            for (const QString& connection : script.split(text(" | "))) {
                identities.setDecoder(&decoder);
                for (const QString& token : connection.split(text(", "))) {
                    ReceivedMessage message;
                    message.id = quint32(token.at(0).digitValue());
                    message.info = typeOf(token.at(1));
                    message.sender = quint32(token.at(3).digitValue());
                    decoder.senders[message.sender] = token.mid(4);
                    const int row = identities.rowOf(message);
                    told += text("%1.%2").arg(row).arg(identities.getRows().at(row).sender);
                    if (identities.getRows().at(row).info != message.info)
                        told += text("another type");
                }
            }
            QStringList names;
            for (const StreamIdentities::Row& row : identities.getRows())
                names += row.typeName + QLatin1Char(' ') + identities.getSenderName(row.sender);
            return told.join(QLatin1Char(' ')) + text(": ") + names.join(text(", "));
        });
    }
};

QTEST_GUILESS_MAIN(TestStreamIdentities)
#include "tst_streamidentities.moc"
