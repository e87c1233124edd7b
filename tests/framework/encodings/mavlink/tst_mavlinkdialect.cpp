#include "fieldinfo.h"
#include "mavlinkcrc.h"
#include "mavlinkdialect.h"
#include "mavlinkdialectreader.h"
#include "testbase.h"
#include "textrows.h"

#include <QTemporaryDir>

#include <memory>

namespace
{

/** Definition files in a folder of their own. */
class Files
{
public:
    QString path(const char* name) const { return m_folder.filePath(text(name)); }

    void write(const QByteArray& name, const QByteArray& content)
    {
        QFile file(path(name.constData()));
        if (!QFileInfo(file).dir().mkpath(QStringLiteral(".")) || !file.open(QIODevice::WriteOnly) ||
            file.write(content) != content.size())
            qWarning("cannot write %s", name.constData());
    }

    /** Loads one of the files; afterwards errors() are those of this, without the folder. */
    std::unique_ptr<MavlinkDialect> load(const char* name)
    {
        m_errors.clear();
        return std::unique_ptr<MavlinkDialect>(MavlinkDialect::load(path(name), &m_errors));
    }

    QString errors() const { return m_errors.join(QLatin1Char('\n')).remove(m_folder.path() + QLatin1Char('/')); }

private:
    QTemporaryDir m_folder;
    QStringList m_errors;
};

QByteArray dialectText(const QByteArray& messages, const QByteArray& enums = QByteArray(),
                       const QByteArray& includes = QByteArray())
{
    return "<mavlink>" + includes + "<enums>" + enums + "</enums><messages>" + messages + "</messages></mavlink>";
}

QByteArray includeText(const QByteArray& name)
{
    return "<include>" + name + "</include>";
}

QByteArray messageText(int id, const QByteArray& name, const QByteArray& fields = QByteArray())
{
    return "<message id=\"" + QByteArray::number(id) + "\" name=\"" + name + "\">" + fields + "</message>";
}

std::unique_ptr<MavlinkDialect> read(const QByteArray& content, QStringList* errors)
{
    return std::unique_ptr<MavlinkDialect>(MavlinkDialectReader::readBytes(QStringLiteral("x.xml"), content, errors));
}

/** "2: f: unknown type ''": the errors without the name of the file, with ' for ". */
QString errorsOf(const QString& content)
{
    QStringList errors;
    if (read(content.toUtf8(), &errors))
        errors += text("no error");
    return errors.join(QLatin1Char('\n')).remove(text("x.xml:")).replace(QLatin1Char('"'), QLatin1Char('\''));
}

QString errorsOfMessage(const QString& content)
{
    return errorsOf(QString::fromUtf8(dialectText(content.toUtf8())));
}

QString errorsOfField(const QString& attributes)
{
    return errorsOfMessage(QStringLiteral("<message id='1' name='M'>\n<field %1/></message>").arg(attributes));
}

/** "7 M crc 12, 3 of 5 bytes" */
QString messageRow(const MavlinkMessageInfo* info)
{
    return QStringLiteral("%1 %2 crc %3, %4 of %5 bytes")
        .arg(info->getId())
        .arg(info->getName())
        .arg(info->getCrcExtra())
        .arg(info->getBaseLength())
        .arg(info->getFullLength());
}

template <typename Info>
QString namesOf(const QVector<const Info*>& infos)
{
    QStringList names;
    for (const Info* info : infos)
        names.append(info->getName());
    return names.join(QLatin1Char(' '));
}

QString enumeratorTexts(const FieldInfo* field)
{
    QStringList texts;
    for (const FieldInfo::Enumerator& enumerator : field->getEnumerators())
        texts.append(QStringLiteral("%1=%2").arg(enumerator.name).arg(enumerator.value));
    return texts.join(QLatin1Char(' '));
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

    void fieldsKeepTheOrderOfTheFile()
    {
        Files files;
        files.write("a.b.xml",
                    dialectText("<message id='7' name='M'><wip/><description>One  line\n e.g. this. And\n another."
                                "</description><field type='uint8_t' name='a'>first <b>bold</b>\n text</field>"
                                "<field type='uint32_t' name='b' minValue='1' maxValue='5'/><extensions/>"
                                "<field type='double[2]' name='c'/></message>"));
        const auto dialect = files.load("a.b.xml");
        QCOMPARE(files.errors(), QString());
        QCOMPARE(dialect->getName(), text("a.b"));
        const MessageInfo* info = dialect->getMessageInfo(text("M"));
        QCOMPARE(namesOf(info->getFieldInfos()), text("a b c"));
        QCOMPARE(info->getShortDescriptiveText(), text("One line e.g. this."));
        QCOMPARE(info->getFieldInfo(text("a"))->getDescription(), text("first bold text"));
        QCOMPARE(info->getFieldInfo(text("b"))->getRangeText(), text("1 to 5"));
    }

    void wireOrderGoesByElementSize()
    {
        const auto info = [](const QByteArray& fields) {
            QStringList errors;
            const auto dialect = read(dialectText(messageText(1, "M", fields)), &errors);
            return dialect ? messageRow(dialect->find(1)) : errors.join(QLatin1Char('\n'));
        };
        const QByteArray b = "<field type='uint16_t' name='b'/>";
        const QByteArray c = "<field type='uint32_t[3]' name='c'/>";
        const QByteArray d = "<field type='uint64_t' name='d'/>";
        const QByteArray e = "<field type='float' name='e'/>";
        const QString row = info(d + c + e + b + "<field type='uint8_t' name='a'/>");
        QVERIFY2(row.endsWith(text("27 of 27 bytes")), qPrintable(row));
        QCOMPARE(info("<field type='uint8_t_mavlink_version' name='a'/>" + c + b + e + d +
                      "<extensions/><field type='uint64_t' name='x'/>"),
                 row.chopped(8) + text("35 bytes"));
    }

    void includesAreReadOnceAndComeFirst()
    {
        Files files;
        files.write("top.xml",
                    dialectText(messageText(1, "TOP"), "", includeText("left.xml") + includeText("sub/right.xml")));
        files.write("left.xml", dialectText(messageText(2, "LEFT"), "", includeText(" base.xml\n")));
        files.write("sub/right.xml", dialectText(messageText(3, "RIGHT"), "", includeText("../base.xml")));
        files.write("base.xml", dialectText(messageText(4, "BASE")));
        const auto dialect = files.load("top.xml");
        QCOMPARE(files.errors(), QString());
        QCOMPARE(namesOf(dialect->getMessageInfos()), text("BASE LEFT RIGHT TOP"));
        QStringList names;
        for (const QString& file : dialect->getFiles())
            names.append(QFileInfo(file).fileName());
        QCOMPARE(names.join(QLatin1Char(' ')), text("top.xml left.xml base.xml right.xml"));
    }

    void thousandNestedIncludes()
    {
        Files files;
        for (int i = 0; i < 1000; ++i)
            files.write(QByteArray::number(i) + ".xml",
                        dialectText(messageText(i, "M" + QByteArray::number(i)), "",
                                    i < 999 ? includeText(QByteArray::number(i + 1) + ".xml") : QByteArray()));
        const auto dialect = files.load("0.xml");
        QCOMPARE(files.errors(), QString());
        QCOMPARE(int(dialect->getMessageInfos().size()), 1000);

        files.write("999.xml", dialectText("", "", "\n" + includeText("0.xml")));
        QVERIFY(!files.load("0.xml"));
        QCOMPARE(files.errors(), text("999.xml:2: files include each other: 0.xml > 1.xml > 2.xml > \xe2\x80\xa6 > "
                                      "998.xml > 999.xml > 0.xml"));
    }

    void enumsOfSeveralFilesMerge()
    {
        Files files;
        files.write("top.xml", dialectText(messageText(1, "TOP",
                                                       "<field type='uint8_t' name='f' enum='E'/>"
                                                       "<field type='uint8_t' name='g' enum='GONE'/>"),
                                           "<enum name='E'><description>x</description><entry name='NEXT'/>"
                                           "<entry name='TWENTY' value='20'/></enum>",
                                           includeText("base.xml")));
        files.write("base.xml", dialectText(messageText(2, "BASE", "<field type='int16_t' name='f' enum='E'/>"),
                                            "<enum name='E'><entry name='TEN' value='10'><deprecated/><description>"
                                            "about\n it</description><param index='1'>p</param></entry>"
                                            "<entry name='TWO' value='2'/></enum>"));
        const auto dialect = files.load("top.xml");
        QCOMPARE(files.errors(), QString());
        for (quint32 id = 1; id <= 2; ++id) {
            const FieldInfo* field = dialect->find(id)->getFieldInfo(text("f"));
            QCOMPARE(enumeratorTexts(field), text("TEN=10 TWO=2 NEXT=11 TWENTY=20"));
            QCOMPARE(field->getEnumerators().at(0).description, text("about it"));
            QVERIFY(!field->isBitmask());
        }
        const FieldInfo* withoutNames = dialect->find(1)->getFieldInfo(text("g"));
        QCOMPARE(withoutNames->getInterpretedString(FieldValue::fromUnsigned(3, 1), true), text("3"));
    }

    void enumValues()
    {
        const TextRow rows[] = {{"12", "V=12"},
                                {"012", "V=12"},
                                {"0x1F", "V=31"},
                                {"0b101", "V=5"},
                                {"2**63", "V=9223372036854775808"},
                                {"18446744073709551615", "V=18446744073709551615"},
                                {"-1", "V=18446744073709551615"},
                                {"1x", "2: V: the value '1x' is not a number"},
                                {"2**64", "2: V: the value '2**64' is not a number"}};
        QCOMPARE(differences(rows,
                             [](const QString& value) {
                                 const QByteArray content = dialectText(
                                     messageText(1, "M", "<field type='char' name='f' enum='E'/>"),
                                     "<enum name='E'>\n<entry name='V' value='" + value.toLatin1() + "'/></enum>");
                                 QStringList errors;
                                 const auto dialect = read(content, &errors);
                                 return dialect ? enumeratorTexts(dialect->find(1)->getFieldInfos().first())
                                                : errorsOf(QString::fromUtf8(content));
                             }),
                 QString());
    }

    void malformed()
    {
        const TextRow documents[] = {
            {"", "1: malformed XML: Premature end of document."},
            {"<html/>", "1: no message definitions: the outermost element is <html> instead of <mavlink>"},
            {"<mavlink>\n<messages>\n", "3: malformed XML: Premature end of document."},
            {"<mavlink/>\n<mavlink/>", "2: malformed XML: Extra content at end of document."},
            {"<mavlink><enums><enum/></enums></mavlink>", "1: an enum without a name"},
            {"<mavlink><enums><enum name='E'><entry name='V'/>\n<entry name='V'/></enum></enums></mavlink>",
             "2: the entry V of E is already defined at 1"}};
        QCOMPARE(differences(documents, errorsOf), QString());
        const TextRow messages[] = {
            {"<message name='M'/>", "1: M: the id '' is not a number from 0 to 16777215"},
            {"<message id='16777216' name='M'/>", "1: M: the id '16777216' is not a number from 0 to 16777215"},
            {"<message id='-1' name='M'/>", "1: M: the id '-1' is not a number from 0 to 16777215"},
            {"\n<message id='1'/>", "2: a message without a name"},
            {"<message id='5' name='A'/>\n<message id='5' name='B'/>", "2: B: the id 5 is already that of A at 1"},
            {"<message id='5' name='A'/>\n<message id='6' name='A'/>", "2: A: the name is already taken at 1"},
            {"<message id='1' name='M'><field name='f' type='char'/>\n<field name='f' type='char'/></message>",
             "2: M: the field f is there twice"}};
        QCOMPARE(differences(messages, errorsOfMessage), QString());
        const TextRow fields[] = {
            {"type='uint8_t'", "2: a field without a name"},
            {"name='f' type='uint128_t'", "2: f: unknown type 'uint128_t'"},
            {"name='f'", "2: f: unknown type ''"},
            {"name='f' type='char[0]'", "2: f: the array length of 'char[0]' is not a number from 1 to 255"},
            {"name='f' type='char[256]'", "2: f: the array length of 'char[256]' is not a number from 1 to 255"},
            {"name='f' type='char[45'", "2: f: the array length of 'char[45' is not a number from 1 to 255"},
            {"name='f' type='double[32]'", "2: M: the payload is longer than 255 bytes with the field f"}};
        QCOMPARE(differences(fields, errorsOfField), QString());
    }

    void malformedIncludes()
    {
        Files files;
        const auto errorsWith = [&files](const QByteArray& included, const QByteArray& other) {
            files.write("top.xml", dialectText('\n' + messageText(9, "TOP"), "", '\n' + includeText(included)));
            files.write("other.xml", other);
            return files.load("top.xml") ? text("no error") : files.errors();
        };
        QCOMPARE(errorsWith("other.xml", dialectText("", "", includeText("./top.xml"))),
                 text("other.xml:1: files include each other: top.xml > other.xml > top.xml"));
        QCOMPARE(errorsWith("other.xml", dialectText(messageText(9, "B"))),
                 text("top.xml:3: TOP: the id 9 is already that of B at other.xml:1"));
        QCOMPARE(errorsWith("other.xml", "<mavlink>\n</mavlonk>"),
                 text("other.xml:2: malformed XML: Opening and ending tag mismatch."));
        const TextRow rows[] = {
            {"top.xml", "top.xml:2: files include each other: top.xml > top.xml"},
            {"gone.xml", "top.xml:2: the included file \"gone.xml\" cannot be read: No such file or directory"},
            {"", "top.xml:2: the included file \"\" cannot be read: not a file"},
            {"/dev/zero", "top.xml:2: the included file \"/dev/zero\" cannot be read: not a file"}};
        QCOMPARE(differences(rows, [&](const QString& name) { return errorsWith(name.toUtf8(), ""); }), QString());
    }

    void allErrorsAreReported()
    {
        Files files;
        files.write("top.xml", dialectText('\n' + messageText(1, "A") + '\n' + messageText(1, "B"), "",
                                           includeText("gone.xml") + includeText("other.xml")));
        files.write("other.xml", dialectText(messageText(2, "C", "<field name=\"f\" type=\"int\"/>") +
                                             "<message id=\"x\" name=\"D\"/>"));
        QVERIFY(!files.load("top.xml"));
        QCOMPARE(files.errors(),
                 text("top.xml:1: the included file \"gone.xml\" cannot be read: No such file or directory\n"
                      "other.xml:1: f: unknown type \"int\"\n"
                      "other.xml:1: D: the id \"x\" is not a number from 0 to 16777215\n"
                      "top.xml:3: B: the id 1 is already that of A at top.xml:2"));
        // A flood of them is counted.
        const QString flood = errorsOfMessage(text("<message/>").repeated(1000));
        QVERIFY2(flood.count(QLatin1Char('\n')) < 1000 && flood.endsWith(text("more errors")), qPrintable(flood));
    }

    void unreadableFiles()
    {
        Files files;
        QVERIFY(!files.load("gone.xml"));
        QCOMPARE(files.errors(), text("gone.xml:1: cannot be read: No such file or directory"));
        QFile large(files.path("large.xml"));
        QVERIFY(large.open(QIODevice::WriteOnly) && large.resize(qint64(4) << 30)); // sparse
        QVERIFY(!files.load("large.xml"));
        QCOMPARE(files.errors(), text("large.xml:1: cannot be read: larger than 16777216 bytes"));
    }
};

QTEST_GUILESS_MAIN(tst_MavlinkDialect)

#include "tst_mavlinkdialect.moc"
