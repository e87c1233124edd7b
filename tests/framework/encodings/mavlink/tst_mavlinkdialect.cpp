#include "fieldinfo.h"
#include "mavlinkcrc.h"
#include "mavlinkdialect.h"
#include "testbase.h"
#include "testfolder.h"
#include "textrows.h"

#include <memory>

namespace
{

/** "7 M crc 12, 3 of 5 bytes" */
QString messageRow(const MavlinkMessageInfo* info)
{
    return text("%1 %2 crc %3, %4 of %5 bytes")
        .arg(info->getId())
        .arg(info->getName())
        .arg(info->getCrcExtra())
        .arg(info->getBaseLength())
        .arg(info->getFullLength());
}

/** Behind that "; what it is; field: what that is, 1 to 5, ONE=1 TWO=2 (about two)". */
QString summary(const MavlinkMessageInfo* info)
{
    QStringList parts(messageRow(info));
    if (!info->getShortDescriptiveText().isEmpty())
        parts += info->getShortDescriptiveText();
    for (const FieldInfo* field : info->getFieldInfos()) {
        QStringList texts{field->getDescription(), field->getRangeText()};
        QStringList names;
        for (const FieldInfo::Enumerator& enumerator : field->getEnumerators())
            names += text("%1=%2").arg(enumerator.name).arg(enumerator.value) +
                     (enumerator.description.isEmpty() ? QString() : text(" (%1)").arg(enumerator.description));
        texts += names.join(QLatin1Char(' '));
        texts.removeAll(QString());
        parts += field->getName() + text(texts.isEmpty() ? "" : ": ") + texts.join(text(", "));
    }
    return parts.join(text("; "));
}

/** The content of a file: enums and messages of @p xml get what stands around them, and all of it, when it is to be. */
QByteArray whole(QString xml)
{
    if (xml.contains(text("<mavlink")) || xml.contains(text("<html")) || xml.isEmpty())
        return xml.toUtf8();
    const int messages = int(xml.indexOf(text("<message")));
    if (messages >= 0)
        xml = xml.left(messages) + text("<messages>") + xml.mid(messages) + text("</messages>");
    if (xml.contains(text("<enum ")))
        xml.replace(xml.lastIndexOf(text("</enum>")), 7, text("</enum></enums>"))
            .insert(xml.indexOf(text("<enum ")), text("<enums>"));
    return text("<mavlink>%1</mavlink>").arg(xml).toUtf8();
}

/** What becomes of "FILE ##NAME## FILE", of which the first is loaded: its errors, or the messages, a line each. */
QString loaded(const QString& given)
{
    const TestFolder folder;
    const QStringList parts = given.split(text("##"));
    const QString path = folder.write(text("top.xml"), whole(parts.at(0)));
    for (int i = 1; i < parts.size(); i += 2)
        folder.write(parts.at(i), whole(parts.at(i + 1)));
    QStringList lines;
    const std::unique_ptr<MavlinkDialect> dialect(MavlinkDialect::load(path, &lines));
    if (dialect.get() == nullptr ? lines.isEmpty() : !lines.isEmpty())
        lines.append(text("errors or none"));
    if (dialect)
        for (const MessageInfo* info : dialect->getMessageInfos())
            lines.append(summary(static_cast<const MavlinkMessageInfo*>(info)));
    return folder.relative(lines.join(QLatin1Char('\n'))).replace(QLatin1Char('"'), QLatin1Char('\''));
}

} // namespace

class tst_MavlinkDialect : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void checksum()
    {
        // The check value of CRC-16/MCRF4XX.
        QCOMPARE(MavlinkCrc::calculate("123456789", 9), quint16(0x6f91));
        QByteArray bytes;
        quint16 bytewise = 0xffff;
        for (int size = 0; size < 40; ++size) {
            const quint16 first = MavlinkCrc::calculate(bytes.constData(), size / 3);
            QCOMPARE(MavlinkCrc::calculate(bytes.constData(), size), bytewise);
            QCOMPARE(MavlinkCrc::calculate(bytes.constData() + size / 3, size - size / 3, first), bytewise);
            bytes.append(static_cast<char>(size * 37));
            bytewise = MavlinkCrc::add(bytewise, static_cast<quint8>(size * 37));
        }
    }

    void builtInDialectHasThePublicChecksums()
    {
        const std::unique_ptr<MavlinkDialect> dialect(MavlinkDialect::loadBuiltIn());
        QCOMPARE(dialect->getName(), text("corvel"));
        const char* const rows[] = {"0 HEARTBEAT crc 50, 9 of 9 bytes", "30 ATTITUDE crc 39, 28 of 28 bytes",
                                    "24 GPS_RAW_INT crc 24, 30 of 52 bytes", "1 SYS_STATUS crc 124, 31 of 43 bytes"};
        for (const char* row : rows)
            QCOMPARE(messageRow(dialect->find(quint32(std::atoi(row)))), text(row));
        QVERIFY(!dialect->find(16777215) && dialect->getMessageInfos().size() >= 40);
        for (const MessageInfo* info : dialect->getMessageInfos())
            QVERIFY2(!info->getShortDescriptiveText().isEmpty(), qPrintable(info->getName()));
    }

    void filesDescribeMessages()
    {
        const TextRow rows[] = {
            {"<message id='7' name='M'><wip/><description>One  line\n e.g. this. And\n another.</description>"
             "<field type='uint8_t' name='a'>first <b>bold</b>\n text</field>"
             "<field type='uint32_t' name='b' minValue='1' maxValue='5'/><extensions/>"
             "<field type='double[2]' name='c'/></message>",
             "7 M crc 110, 5 of 21 bytes; One line e.g. this.; a: first bold text; b: 1 to 5; c"},
            // The order on the wire goes by the size of elements; both have the same checksum.
            {"<message id='1' name='M'><field type='uint64_t' name='d'/><field type='uint32_t[3]' name='c'/>"
             "<field type='float' name='e'/><field type='uint16_t' name='b'/><field type='uint8_t' "
             "name='a'/></message>",
             "1 M crc 161, 27 of 27 bytes; d; c; e; b; a"},
            {"<message id='1' name='M'><field type='uint8_t_mavlink_version' name='a'/>"
             "<field type='uint32_t[3]' name='c'/><field type='uint16_t' name='b'/><field type='float' name='e'/>"
             "<field type='uint64_t' name='d'/><extensions/><field type='uint64_t' name='x'/></message>",
             "1 M crc 161, 27 of 35 bytes; a; c; b; e; d; x"},
            // Included files are read once and come first.
            {"<include>left.xml</include><include>sub/right.xml</include><message id='1' name='TOP'/>"
             "##left.xml##<include> base.xml\n</include><message id='2' name='LEFT'/>"
             "##sub/right.xml##<include>../base.xml</include><message id='3' name='RIGHT'/>"
             "##base.xml##<message id='4' name='BASE'/>",
             "4 BASE crc 237, 0 of 0 bytes\n2 LEFT crc 251, 0 of 0 bytes\n3 RIGHT crc 114, 0 of 0 bytes\n"
             "1 TOP crc 133, 0 of 0 bytes"},
            // Enums of several files merge.
            {"<include>base.xml</include><enum name='E'><description>x</description><entry name='NEXT'/>"
             "<entry name='TWENTY' value='20'/></enum><message id='1' name='TOP'>"
             "<field type='uint8_t' name='f' enum='E'/><field type='uint8_t' name='g' enum='GONE'/></message>"
             "##base.xml##<enum name='E'><entry name='TEN' value='10'><deprecated/><description>about\n it"
             "</description><param index='1'>p</param></entry><entry name='TWO' value='2'/></enum>"
             "<message id='2' name='BASE'><field type='int16_t' name='f' enum='E'/></message>",
             "2 BASE crc 209, 2 of 2 bytes; f: TEN=10 (about it) TWO=2 NEXT=11 TWENTY=20\n"
             "1 TOP crc 36, 2 of 2 bytes; f: TEN=10 (about it) TWO=2 NEXT=11 TWENTY=20; g"},
        };
        checkRows(rows, loaded);
    }

    void enumValues()
    {
        const TextRow rows[] = {{"12", "f: V=12"},
                                {"012", "f: V=12"},
                                {"0x1F", "f: V=31"},
                                {"0b101", "f: V=5"},
                                {"2**63", "f: V=9223372036854775808"},
                                {"18446744073709551615", "f: V=18446744073709551615"},
                                {"-1", "f: V=18446744073709551615"},
                                {"1x", "top.xml:2: V: the value '1x' is not a number"},
                                {"2**64", "top.xml:2: V: the value '2**64' is not a number"}};
        checkRows(rows, [](const QString& value) {
            return loaded(text("<enum name='E'>\n<entry name='V' value='%1'/></enum><message id='1' "
                               "name='M'><field type='char' name='f' enum='E'/></message>")
                              .arg(value))
                .section(text("; "), -1);
        });
    }

    void malformed()
    {
        const TextRow documents[] = {
            {"", "top.xml:1: malformed XML: Premature end of document."},
            {"<html/>", "top.xml:1: no message definitions: the outermost element is <html> instead of <mavlink>"},
            {"<mavlink>\n<messages>\n", "top.xml:3: malformed XML: Premature end of document."},
            {"<mavlink/>\n<mavlink/>", "top.xml:2: malformed XML: Extra content at end of document."},
            {"<mavlink><enums><enum/></enums></mavlink>", "top.xml:1: an enum without a name"},
            {"<enum name='E'><entry name='V'/>\n<entry name='V'/></enum>",
             "top.xml:2: the entry V of E is already defined at top.xml:1"},
            {"<message name='M'/>", "top.xml:1: M: the id '' is not a number from 0 to 16777215"},
            {"<message id='16777216' name='M'/>", "top.xml:1: M: the id '16777216' is not a number from 0 to 16777215"},
            {"<message id='-1' name='M'/>", "top.xml:1: M: the id '-1' is not a number from 0 to 16777215"},
            {"\n<message id='1'/>", "top.xml:2: a message without a name"},
            {"<message id='5' name='A'/>\n<message id='5' name='B'/>",
             "top.xml:2: B: the id 5 is already that of A at top.xml:1"},
            {"<message id='5' name='A'/>\n<message id='6' name='A'/>",
             "top.xml:2: A: the name is already taken at top.xml:1"},
            {"<message id='1' name='M'><field name='f' type='char'/>\n<field name='f' type='char'/></message>",
             "top.xml:2: M: the field f is there twice"},
            // Included files.
            {"\n<include>other.xml</include>##other.xml##<include>./top.xml</include>",
             "other.xml:1: files include each other: top.xml > other.xml > top.xml"},
            {"<include>other.xml</include>\n<message id='9' name='TOP'/>##other.xml##<message id='9' name='B'/>",
             "top.xml:2: TOP: the id 9 is already that of B at other.xml:1"},
            {"<include>other.xml</include>##other.xml##<mavlink>\n</mavlonk>",
             "other.xml:2: malformed XML: Opening and ending tag mismatch."},
            {"\n<include>top.xml</include>", "top.xml:2: files include each other: top.xml > top.xml"},
            {"\n<include>gone.xml</include>",
             "top.xml:2: the included file 'gone.xml' cannot be read: No such file or directory"},
            {"\n<include></include>", "top.xml:2: the included file '' cannot be read: not a file"},
            {"\n<include>/dev/zero</include>", "top.xml:2: the included file '/dev/zero' cannot be read: not a file"},
            // All that is wrong is told.
            {"<include>gone.xml</include><include>other.xml</include>\n<message id='1' name='A'/>\n"
             "<message id='1' name='B'/>##other.xml##<message id='2' name='C'><field name='f' type='int'/></message>"
             "<message id='x' name='D'/>",
             "top.xml:1: the included file 'gone.xml' cannot be read: No such file or directory\n"
             "other.xml:1: f: unknown type 'int'\nother.xml:1: D: the id 'x' is not a number from 0 to 16777215\n"
             "top.xml:3: B: the id 1 is already that of A at top.xml:2"},
        };
        checkRows(documents, loaded);
        const TextRow fields[] = {
            {"type='uint8_t'", "a field without a name"},
            {"name='f' type='uint128_t'", "f: unknown type 'uint128_t'"},
            {"name='f'", "f: unknown type ''"},
            {"name='f' type='char[0]'", "f: the array length of 'char[0]' is not a number from 1 to 255"},
            {"name='f' type='char[256]'", "f: the array length of 'char[256]' is not a number from 1 to 255"},
            {"name='f' type='char[45'", "f: the array length of 'char[45' is not a number from 1 to 255"},
            {"name='f' type='double[32]'", "M: the payload is longer than 255 bytes with the field f"}};
        checkRows(fields, [](const QString& field) {
            return loaded(text("<message id='1' name='M'>\n<field %1/></message>").arg(field))
                .remove(text("top.xml:2: "));
        });
        // A flood of errors is counted.
        const QString flood = loaded(text("<message/>").repeated(1000));
        QVERIFY2(flood.count(QLatin1Char('\n')) < 1000 && flood.endsWith(text("more errors")), qPrintable(flood));
    }

    void filesOfAnySizeAndNumber()
    {
        const TestFolder folder;
        for (int i = 0; i < 1000; ++i)
            folder.write(text("%1.xml").arg(i), whole(text("<include>%1.xml</include><message id='%1' name='M%1'/>")
                                                          .arg(i + 1)
                                                          .remove(text("<include>1000.xml</include>"))));
        QStringList errors;
        const auto load = [&](const char* name) {
            return std::unique_ptr<MavlinkDialect>(MavlinkDialect::load(folder.filePath(text(name)), &errors));
        };
        const auto dialect = load("0.xml");
        QVERIFY2(dialect, qPrintable(errors.join(QLatin1Char('\n'))));
        QCOMPARE(dialect->getName(), text("0"));
        QCOMPARE(int(dialect->getMessageInfos().size()), 1000);
        QCOMPARE(dialect->getFiles().mid(0, 2),
                 QStringList({folder.filePath(text("0.xml")), folder.filePath(text("1.xml"))}));
        folder.write(text("999.xml"), whole(text("\n<include>0.xml</include>")));
        QVERIFY(!load("0.xml") && !load("gone.xml"));
        QFile large(folder.filePath(text("large.xml")));
        QVERIFY(large.open(QIODevice::WriteOnly) && large.resize(qint64(4) << 30)); // sparse
        QVERIFY(!load("large.xml"));
        QCOMPARE(folder.relative(errors.join(QLatin1Char('\n'))),
                 text("999.xml:2: files include each other: 0.xml > 1.xml > 2.xml > \xe2\x80\xa6 > 998.xml > 999.xml > "
                      "0.xml\ngone.xml:1: cannot be read: No such file or directory\n"
                      "large.xml:1: cannot be read: larger than 16777216 bytes"));
    }
};

QTEST_GUILESS_MAIN(tst_MavlinkDialect)

#include "tst_mavlinkdialect.moc"
