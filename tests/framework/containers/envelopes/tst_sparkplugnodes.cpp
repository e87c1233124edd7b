#include "container.h"
#include "definitions.h"
#include "envelope.h"
#include "fieldinfo.h"
#include "formatinfo.h"
#include "messagereference.h"
#include "sparkplugscript.h"
#include "streamdecoder.h"
#include "testbase.h"
#include "textrows.h"
#include "transcript.h"

#include <memory>

/** What becomes of the messages of nodes and devices. */
class tst_SparkplugNodes : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void messagesHaveTheNewestValues();
    void valuesAreReadByTheirTypes();
    void typesSayWhatBirthsSay();

private:
    QString decode(const QString& given);
    static QByteArray envelopes(const QString& given);

    Definitions m_definitions;
};

/** A payload that lies compressed in another one, of the number 9. */
static QByteArray packed(const QByteArray& body, const QByteArray& algorithm)
{
    using namespace SparkplugScript;
    return payload("9 algorithm,,12,s" + algorithm) + part(4, "SPBV1.0_COMPRESSED") + part(5, body);
}

/** "KIND[/DEVICE][*ALGORITHM[=BODY]] PAYLOAD | ...": envelopes of a node "n" in the group "g". */
QByteArray tst_SparkplugNodes::envelopes(const QString& given)
{
    QByteArray bytes;
    for (const QString& one : given.split(text(" | "))) {
        const QByteArray place = one.section(QLatin1Char(' '), 0, 0).section(QLatin1Char('*'), 0, 0).toLatin1();
        const QString packing = one.section(QLatin1Char(' '), 0, 0).section(QLatin1Char('*'), 1);
        const QByteArray device = place.mid(place.indexOf('/'));
        const QByteArray topic =
            "spBv1.0/g/" + place.split('/').constFirst() + "/n" + (place.contains('/') ? device : QByteArray());
        QByteArray payload = SparkplugScript::payload(one.section(QLatin1Char(' '), 1).toUtf8());
        if (packing == text("DEFLATE=bomb"))
            payload = QByteArray(17 * 1024 * 1024, 0);
        const bool isGiven = packing.contains(text("=1f"));
        const QByteArray body = isGiven ? QByteArray::fromHex(packing.section(QLatin1Char('='), 1).toLatin1())
                                        : qCompress(payload).mid(packing == text("raw") ? 6 : 4);
        if (!packing.isEmpty())
            payload = packed(body, packing == text("raw") ? QByteArray()
                                                          : packing.section(QLatin1Char('='), 0, 0).toLatin1());
        Envelope envelope;
        envelope.topic = std::string_view(topic.constData(), std::size_t(topic.size()));
        envelope.payload = std::string_view(payload.constData(), std::size_t(payload.size()));
        EnvelopeWriter(&bytes).write(envelope);
    }
    return bytes;
}

/** What is told, each message with what is in it. */
QString tst_SparkplugNodes::decode(const QString& given)
{
    StreamOptions options;
    options.definitions = &m_definitions;
    StreamHead head;
    head.isLive = true;
    const std::unique_ptr<StreamDecoder> decoder = Container::find(text("envelopes"))->open(head, options).decoder;
    Transcript found(decoder.get(), false);
    feedAll(decoder.get(), envelopes(given), &found);
    int message = 0;
    for (QString& line : found.lines) {
        if (message >= found.messages.size() || line != found.messages.at(message))
            continue;
        if (found.infos.at(message))
            line += QLatin1Char(' ') + QString::fromUtf8(found.payloads.at(message));
        ++message;
    }
    return found.told().remove(text(" sent 7000000"));
}

void tst_SparkplugNodes::messagesHaveTheNewestValues()
{
    static const TextRow rows[] = {
        {"NBIRTH 0 a,,3,i1 b,,3,i2 | NDATA 1 b,,,i3 | NDATA 2 a,,,,null",
         "g/n g/n #0 {\"a\":1,\"b\":2}; g/n g/n #1 {\"a\":1,\"b\":3}; g/n g/n #2 {\"a\":null,\"b\":3}"},
        // By aliases, of the node and its device together; names with levels; times where there are any.
        {"NBIRTH 0 m/x,1,3,i1,@1500 m/y,2,3,i2 | DBIRTH/d 1 x,3,3,i4 | NDATA 2 ,2,,i7,@2000 | DDATA/d 3 ,3,,i5 ,1,,i9",
         "g/n g/n #0 {\"m\":{\"x\":1,\"y\":2},\"[times]\":{\"m\":{\"x\":{\"sec\":1,\"nsec\":500000000},\"y\":null}}}; "
         "g/n/d g/n #1 {\"x\":4}; "
         "g/n g/n #2 "
         "{\"m\":{\"x\":1,\"y\":7},\"[times]\":{\"m\":{\"x\":{\"sec\":1,\"nsec\":500000000},\"y\":{\"sec\":2,"
         "\"nsec\":0}}}}; g/n/d g/n #3 {\"x\":5}"},
        {"NBIRTH 0 a,,3,i1 a/b,,3,i2 /c//,,3,i3 a,,10,d4 | NDATA 1 a,,,i5",
         "g/n g/n #0 {\"a\":{\"[value]\":1,\"b\":2},\"c\":{\"\":3}}; g/n g/n #1 "
         "{\"a\":{\"[value]\":5,\"b\":2},\"c\":{\"\":3}}"},
        {"NBIRTH 0 a,,3,i1 | NDATA 1 a,,,i3,old z,,,i9 ,77,,i9", "g/n g/n #0 {\"a\":1}; g/n g/n #1 {\"a\":1}"},
        // Numbers come round, are missed, and come late; a birth begins anew; what has died has a number, too.
        {"NBIRTH 254 a,,3,i1 | NDATA 255 | NDATA 0 | NDATA 3 | NDATA 2",
         "g/n g/n #254 {\"a\":1}; g/n g/n #255 {\"a\":1}; g/n g/n #256 {\"a\":1}; g/n g/n #259 {\"a\":1}; g/n g/n #258 "
         "{\"a\":1}"},
        {"NBIRTH 250 a,,3,i1 | DBIRTH/d 251 x,,3,i1 | DDEATH/d 252 | DDEATH/e 253 | NDATA 254 | NBIRTH 0 a,,3,i1",
         "g/n g/n #250 {\"a\":1}; g/n/d g/n #251 {\"x\":1}; g/n is gone: the device d has ended; g/n g/n #252 "
         "{\"a\":1}; "
         "g/n g/n #1099511627776 {\"a\":1}"},
        // The will of an earlier connection comes late.
        {"NBIRTH 0 bdSeq,,4,l5 | NDEATH  bdSeq,,4,l4 | NDEATH  bdSeq,,4,l5",
         "g/n g/n #0 {\"bdSeq\":5}; g/n is gone: its connection has ended"},
        {"NDATA 7 a,,3,i1 | NDATA 8 a,,3,i1 | NCMD  a,,3,i1 | NBIRTH 9 a,,3,i1",
         "not decodable: spBv1.0/g/NDATA/n: no birth yet; g/n (no birth yet) g/n #7; g/n (no birth yet) g/n #8; "
         "not decodable: spBv1.0/g/NCMD/n: it is a command; g/n (it is a command) g/n; g/n g/n #1099511627785 "
         "{\"a\":1}"},
        // A device that a new birth of its node does not mention is not known any more.
        {"NBIRTH 0 a,,3,i1 | DBIRTH/d 1 x,3,3,i4 | NBIRTH 2 a,3,3,i6 | DDATA/d 3 ,3,,i5 | NDATA 4 ,3,,i7",
         "g/n g/n #0 {\"a\":1}; g/n/d g/n #1 {\"x\":4}; g/n g/n #1099511627778 {\"a\":6}; not decodable: "
         "spBv1.0/g/DDATA/n/d: no birth yet; g/n/d (no birth yet) g/n #1099511627779; g/n g/n #1099511627780 "
         "{\"a\":7}"},
        {"NBIRTH 0", "g/n g/n #0 {}"},
        // Compressed, in several ways; its own number counts (5 comes late), or that of what it lies in.
        {"NBIRTH*DEFLATE 0 a,,3,i1 | NDATA*raw  a,,,i2 | "
         "NDATA*GZIP=1f8b0800000000000203e3b86126c4cec598a8c01cc028c10a0099e8a4f20e000000 ",
         "g/n g/n #0 {\"a\":1}; g/n g/n #9 {\"a\":2}; g/n g/n #5 {\"a\":1}"},
        {"NBIRTH*LZ4 0", "not decodable: spBv1.0/g/NBIRTH/n: it is compressed by \"LZ4\"; what can be read is GZIP and "
                         "DEFLATE; g/n (it is compressed by \"LZ4\"; what can be read is GZIP and DEFLATE) g/n"},
        {"NBIRTH*DEFLATE=bomb 0", "not decodable: spBv1.0/g/NBIRTH/n: decompressed it has more than 16 MiB; g/n "
                                  "(decompressed it has more than 16 MiB) g/n"},
        {"NBIRTH*GZIP=1f8b0800 0",
         "not decodable: spBv1.0/g/NBIRTH/n: it cannot be decompressed; g/n (it cannot be decompressed) g/n"},
    };
    const QString problem = differences(rows, [this](const QString& given) { return decode(given); });
    QVERIFY2(problem.isEmpty(), qPrintable(problem));
}

void tst_SparkplugNodes::valuesAreReadByTheirTypes()
{
    static const TextRow rows[] = {
        {"1,i-1", "-1"},
        {"1,i255", "-1"},
        {"2,i65535", "-1"},
        {"3,i-5", "-5"},
        {"3,l-5", "-5"},
        {"4,l-5", "-5"},
        {"5,i300", "44"},
        {"7,i-1", "4294967295"},
        {"8,l-1", "18446744073709551615"},
        {"9,f0.1", "0.100000001"},
        {"10,d0.1", "0.10000000000000001"},
        {"10,fnan", "NaN"},
        {"10,d-inf", "-Infinity"},
        {"11,b1", "true"},
        {"12,sä\"\\\n", "\"ä\\\"\\\\\\u000a\""},
        {"13,l1500", "{\"sec\":1,\"nsec\":500000000}"},
        {"17,x00ff", "\"AP8=\""},
        {"12,i5", "null"},
        {"3,", "null"},
        {"22,xfe01", "[-2,1]"},
        {"28,x0100000002000000ff", "[1,2]"}, // a rest that is no element
        {"24,x0100000002000000", "[1,2]"},
        {"30,xa4709d3f", "[1.23000002]"},
        {"31,x", "[]"},
        {"32,x0c00000034d0", "[false,false,true,true,false,true,false,false,true,true,false,true]"},
        {"32,xffffffff80", "[true,false,false,false,false,false,false,false]"},
        {"33,x610062", "[\"a\",\"b\"]"},
        {"34,xdc05000000000000", "[{\"sec\":1,\"nsec\":500000000}]"},
        // a table of the columns k (Int8) and t (text), with a row of both and an empty one
        {"16,T12016b1201741801180c220a0a0308ff010a033201782200", "[{\"k\":-1,\"t\":\"x\"},{}]"},
        {"16,Tffff", "missing"},
        {"19,M12070a016120035005", "{\"a\":5}"},
        {"0,i5", "5"},
        {"99,i5", "missing"},
    };
    const QString problem = differences(rows, [this](const QString& given) {
        const QString told = decode(text("NBIRTH 0 v,,") + given);
        return told.endsWith(text("{}")) ? text("missing") : told.section(text("\"v\":"), 1).chopped(1);
    });
    QVERIFY2(problem.isEmpty(), qPrintable(problem));
}

void tst_SparkplugNodes::typesSayWhatBirthsSay()
{
    StreamOptions options;
    options.definitions = &m_definitions;
    const std::unique_ptr<StreamDecoder> decoder =
        Container::find(text("envelopes"))->open(StreamHead(), options).decoder;
    Transcript found(decoder.get());
    feedAll(decoder.get(), envelopes(text("NBIRTH 0 m/v,,10,d0.5,ukm/h,@1000 at,,13,l1000 list,,28,x01000000")),
            &found);
    QStringList errors;
    m_definitions.publish(&errors);
    const MessageInfo* const info = found.infos.at(0);
    QCOMPARE(info->getFormatInfo()->getName(), text("sparkplug"));
    const MessageReference message = MessageReference::adopt(info->newMessage(found.payloads.at(0)));
    QStringList fields;
    for (const FieldInfo* field : info->getFieldInfos()) {
        const FieldValue value = field->getValue(message.get(), 0);
        const Message* const sub = value.getSubMessage();
        const FieldInfo* const shown = sub ? sub->getInfo()->getFieldInfos().at(0) : field;
        fields.append(field->getName() + QLatin1Char(' ') +
                      shown->getInterpretedString(sub ? shown->getValue(sub, 0) : value, true));
    }
    QCOMPARE(
        fields.join(text("; ")),
        text("m 0.5 km/h; at 1970-01-01T00:00:01Z; list 1; [times] g/n.[times].m; [unknown fields] ; [problems] "));
    const TypeSchema schema = m_definitions.schemaOf(info);
    QCOMPARE(schema.name + QLatin1Char(' ') + QString::fromLatin1(schema.messageEncoding + ' ' + schema.encoding),
             text("g/n json jsonschema"));
}

QTEST_GUILESS_MAIN(tst_SparkplugNodes)

#include "tst_sparkplugnodes.moc"
