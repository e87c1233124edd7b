#include "definitions.h"
#include "encoding.h"
#include "fieldbytes.h"
#include "fieldinfo.h"
#include "mavlinkdialect.h"
#include "mavlinkdialectreader.h"
#include "messagereference.h"
#include "schemafile.h"
#include "testbase.h"
#include "textrows.h"

#include <memory>

namespace
{

// In wire order.
const char dialect[] = R"(<mavlink><enums>
  <enum name="FLAGS" bitmask="true"><entry name="A" value="1"/><entry name="B" value="6"/>
  <entry name="C" value="512"/></enum></enums>
<messages><message id="300" name="ALL">
  <field type="uint32_t" name="u32"/><field type="uint16_t[2]" name="pair"/>
  <field type="uint16_t" name="flags" enum="FLAGS"/><field type="char[4]" name="word"/>
  <extensions/><field type="uint8_t" name="extra"/>
</message></messages></mavlink>)";

const char proto[] = R"(syntax = "proto3"; package t;
import "google/protobuf/timestamp.proto";
message All {
  int32 a = 1; string s = 2; repeated int32 packed = 3; repeated fixed32 wide = 4; All child = 5;
  repeated All children = 6; google.protobuf.Timestamp time = 7; repeated string names = 8; optional int32 maybe = 9;
})";

const char msg[] = R"(
uint8 a
float64 b
string s
P[] ps
int16[3] shorts
builtin_interfaces/Time t
string[] names
uint8[] blob
==
MSG: p/P
uint8 x
uint32 y
)";

const char json[] = R"({"a": 1.5, "list": [1, 22], "part": {"x": true, "far": [{"y": 1}, {"y": "ä"}]}})";

const char mavlinkHex[] = "fd0c0000000101012c010001020304050607080302776fcccc";
const char protobufHex[] = "0805 12026869 1a03019601 1807 22080100000002000000 2a0608062a020807 32020801 3200 "
                           "3a0408051009 7801 42016e 2a020809";
const char cdrHex[] = "00010000 0100000000000000 000000000000f03f 0300000068690000 02000000 0500000006000000 "
                      "0700000008000000 0100020003000000 0a0000000b000000 01000000020000006e000000 03000000010203";
const char ros1Hex[] = "01 000000000000f03f 020000006869 02000000 0506000000 0708000000 010002000300 "
                       "0a0000000b000000 01000000010000006e 01000000ff";

/** "4-7 9" of whole bytes, "8.2-3" of bits; why there are none in words. */
QString shown(const FieldBytes& found)
{
    static const char* const ends[] = {"", "absent", "left off", "computed", "untold"};
    QStringList texts;
    for (const FieldBytes::Range& range : found.getRanges()) {
        const bool isWhole = range.begin % 8 == 0 && range.end % 8 == 0;
        const qint64 begin = isWhole ? range.begin / 8 : range.begin % 8;
        const qint64 last = isWhole ? range.end / 8 - 1 : (range.end - 1) % 8;
        texts.append((isWhole ? QString() : QString::number(range.begin / 8) + QLatin1Char('.')) +
                     QString::number(begin) + (last > begin ? QLatin1Char('-') + QString::number(last) : QString()));
    }
    return found.getEnd() == FieldBytes::Found ? texts.join(QLatin1Char(' ')) : text(ends[found.getEnd()]);
}

/** "part.far[1].y", from a type. */
FieldPath pathOf(const MessageInfo* info, const QString& steps)
{
    FieldPath path(info);
    for (const QString& step : steps.split(QLatin1Char('.'))) {
        const int bracket = step.endsWith(QLatin1Char(']')) ? int(step.lastIndexOf(QLatin1Char('['))) : -1;
        const int number = bracket > 0 ? step.mid(bracket + 1).chopped(1).toInt() : -1;
        if (!path.append(bracket > 0 ? step.left(bracket) : step, number))
            return FieldPath();
    }
    return path;
}

bool leadsThrough(const FieldPath& path, const FieldPath& other)
{
    bool isSo = path.getSteps().size() >= other.getSteps().size();
    for (int i = 0; i < other.getSteps().size() && isSo; ++i)
        isSo = path.getSteps().at(i).field == other.getSteps().at(i).field &&
               (other.getSteps().at(i).number < 0 || path.getSteps().at(i).number == other.getSteps().at(i).number);
    return isSo;
}

} // namespace

/** Where fields stand in the bytes of messages, and which field stands at a place. */
class tst_FieldBytes : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase() { m_dialect.reset(); }
    void findsFieldsAndPlaces();
    void readsNothingBeyondTheBytes();
    void namesWhatIsNoField();

private:
    MessageReference message(const QString& type, const QByteArray& data) const
    {
        return MessageReference::adopt(m_types.value(type)->newMessage(data));
    }
    /** Of "type" with the bytes below, or "type bytes", in hexadecimal but for JSON. */
    MessageReference messageOf(const QString& given) const
    {
        static const QHash<QString, QByteArray> bytes{{text("mavlink"), QByteArray::fromHex(mavlinkHex)},
                                                      {text("protobuf"), QByteArray::fromHex(protobufHex)},
                                                      {text("cdr"), QByteArray::fromHex(cdrHex)},
                                                      {text("ros1"), QByteArray::fromHex(ros1Hex)},
                                                      {text("json"), json}};
        const QString type = given.section(QLatin1Char(' '), 0, 0);
        const QByteArray own = given.section(QLatin1Char(' '), 1).toUtf8();
        return message(type, own.isEmpty() ? bytes.value(type) : type == text("json") ? own : QByteArray::fromHex(own));
    }

    Definitions m_definitions;
    ProtobufFormat m_protobuf;
    std::unique_ptr<MavlinkDialect> m_dialect;
    QHash<QString, const MessageInfo*> m_types;
};

void tst_FieldBytes::initTestCase()
{
    QStringList errors;
    QString error;
    m_dialect.reset(MavlinkDialectReader::readBytes(QStringLiteral("x.xml"), dialect, &errors));
    m_types.insert(text("mavlink"), m_dialect->find(300));
    m_types.insert(text("protobuf"), SchemaFile(text("t.proto"), proto).load(&m_protobuf, text("t.All")));
    const auto make = [&](const char* name, const char* encoding, const TypeSchema& schema) {
        m_types.insert(text(name), m_definitions.find(text(encoding))->makeType(schema, &error));
    };
    make("cdr", "cdr", {text("p/msg/T"), "cdr", "ros2msg", msg});
    make("ros1", "ros1", {text("p/T"), "ros1", "ros1msg", QByteArray(msg).replace("builtin_interfaces/Time", "time")});
    TypeSchema sample{text("T"), "json", "", ""};
    sample.sample = json;
    make("json", "json", sample);
    for (const MessageInfo* const info : std::as_const(m_types))
        QVERIFY2(info, qPrintable(error));
}

void tst_FieldBytes::findsFieldsAndPlaces()
{
    // A type, bytes where they are not those above, and behind a sign fields. What stands at each place that was found
    // is that field again, or something in it.
    static const TextRow rows[] = {
        // A header of 10 bytes, and a payload that its sender cut in "word"; then version 1, with a header of 6.
        {"mavlink > u32; pair; pair[1]; flags; flags.A; flags.B; flags.C; word; extra",
         "10-13; 14-17; 16-17; 18-19; 18.0; 18.1-2; 19.1; 20-21; left off"},
        {"mavlink fe0e0001012c01020304050607080302776f7264cccc > word; extra", "16-19; absent"},
        {"mavlink fd020000000101012c01000102cccc > u32; pair[0]; flags.A", "10-11; left off; left off"},
        // The child comes twice, and is one then; of a number that comes again, the last one counts.
        {"protobuf > a; s; packed; packed[1]; packed[2]; wide[1]; child; child.a; child.child.a; children; "
         "children[1]; "
         "children[0].a; time; time.seconds; time.nanos; [unknown fields][0]; names[0]; child.s; maybe; names[1]",
         "0-1; 2-5; 6-12; 9-10; 11-12; 19-22; 23-30 48-51; 50-51; 29-30; 31-36; 35-36; 33-34; 37-42; 39-40; 41-42; "
         "43-44; 45-47; left off; absent; absent"},
        {"protobuf 0805 1a03 0196 > a; packed[0]; [problems][0]", "0-1; absent; untold"},
        {"cdr > a; b; s; ps; ps[1]; ps[1].y; shorts; shorts[1]; t; t.nanosec; names; names[0]; blob; names[1]",
         "4; 12-19; 20-26; 28-47; 40-47; 44-47; 48-53; 50-51; 56-63; 60-63; 64-73; 68-73; 76-82; absent"},
        {"ros1 > a; b; s; ps; ps[1].y; shorts[1]; t; names[0]; blob",
         "0; 1-8; 9-14; 15-28; 25-28; 31-32; 35-42; 47-51; 52-56"},
        {"cdr 77010000 01 > a", "absent"}, // written in a way that is not known
        {"json > a; list; list[1]; part; part.x; part.far[1]; part.far[1].y; part.far[1].z",
         "6-8; 19-25; 23-24; 36-78; 42-45; 66-76; 72-75; no path"},
        {"json \xef\xbb\xbf{\"a\": 1} > a; list", "9; absent"},
        {"json {\"a\": 1, > a", "untold"},
    };
    checkRows(rows, [this](const QString& given) {
        const MessageReference sent = messageOf(given.section(text(" > "), 0, 0));
        QStringList texts;
        for (const QString& name : given.section(text(" > "), 1).split(text("; "))) {
            const FieldPath path = pathOf(sent.get()->getInfo(), name);
            const FieldBytes found(path, sent.get());
            texts.append(path.isNull() ? text("no path") : shown(found));
            for (const FieldBytes::Range& range : found.getRanges()) {
                const FieldPath there = FieldBytes::at(sent.get(), range.begin, FieldBytes::Bits);
                if (!leadsThrough(there, path))
                    texts.append(there.getName());
            }
        }
        return texts.join(text("; "));
    });
}

void tst_FieldBytes::readsNothingBeyondTheBytes()
{
    for (const QString& type : m_types.keys()) {
        const QByteArray whole = messageOf(type).get()->getData();
        for (int i = 0; i < 2 * whole.size(); ++i) {
            // Cut off, or damaged.
            QByteArray data = i < whole.size() ? QByteArray(whole.constData(), i) : whole;
            if (i >= whole.size())
                data[i - int(whole.size())] = char(data.at(i - int(whole.size())) ^ 0xff);
            const MessageReference sent = message(type, data);
            for (qint64 bit = 0; bit < 8 * data.size(); bit += 3) {
                const FieldPath path = FieldBytes::at(sent.get(), bit, FieldBytes::Bits);
                const FieldBytes found(path, sent.get());
                bool isThere = false;
                for (const FieldBytes::Range& range : found.getRanges()) {
                    QVERIFY(range.begin >= 0 && range.begin < range.end && range.end <= 8 * data.size());
                    isThere = isThere || (range.begin <= bit && bit < range.end);
                }
                FieldBytes::getNameOfRest(sent.get(), bit / 8);
                QVERIFY2(isThere, qPrintable(type + text(" %1 %2 ").arg(i).arg(bit) + path.getName()));
            }
        }
    }
}

void tst_FieldBytes::namesWhatIsNoField()
{
    static const TextRow rows[] = {
        {"mavlink 0", "start of a frame"},
        {"mavlink 4", "sequence number"},
        {"mavlink 9", "number of the message type"},
        {"mavlink 22", "checksum"},
        {"mavlink fe0e0001012c01020304050607080302776f7264cccc55 2", "sequence number"},
        {"mavlink fe0e0001012c01020304050607080302776f7264cccc55 22", "signature"},
        {"cdr 3", "how the message is written"},
        {"cdr 5", "padding, which aligns what follows"}, // of a number of 8 bytes
        {"cdr 11", "padding, which aligns what follows"},
        {"cdr 54", "padding, which aligns what follows"},
        {"cdr 0001000001000000 5", ""}, // nobody knows where it goes on
        {"cdr 77010000 01 4", ""},
        {"ros1 3", ""},
        {"json 0", "between the values"},
        {"json 1", "name of a member"}, // with its quotation marks
        {"json 3", "name of a member"},
        {"json 4", "between the values"},
        {R"(json {"\"":"x","u":1} 4)", "name of a member"},
        {R"(json {"\"":"x","u":1} 8)", ""}, // what an unknown member says
        {R"(json {"a" 3)", ""},
    };
    checkRows(rows, [this](const QString& given) {
        const MessageReference sent = messageOf(given.section(QLatin1Char(' '), 0, -2));
        return FieldBytes::getNameOfRest(sent.get(), given.section(QLatin1Char(' '), -1).toInt());
    });
}

QTEST_GUILESS_MAIN(tst_FieldBytes)
#include "tst_fieldbytes.moc"
