#include "fieldinfo.h"
#include "mavlinkcrc.h"
#include "mavlinkdialect.h"
#include "mavlinkdialectreader.h"
#include "testbase.h"

#include <QTemporaryDir>

#include <memory>

class tst_MavlinkDialect : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void checksum();
    void builtInDialectHasThePublicChecksums();
    void fieldsKeepTheOrderOfTheFile();
    void wireOrderGoesByElementSize();
    void includesAreReadOnceAndComeFirst();
    void thousandNestedIncludes();
    void enumsOfSeveralFilesMerge();
    void enumValues_data();
    void enumValues();
    void unknownEnumLeavesANumber();
    void malformed_data();
    void malformed();
    void malformedIncludes_data();
    void malformedIncludes();
    void allErrorsAreReported();
    void floodOfErrorsIsCounted();
    void unreadableFiles();
};

namespace
{

/** Definition files in a folder of their own. */
class Files
{
public:
    Files() { Q_ASSERT(m_folder.isValid()); }

    QString path(const QString& name) const { return m_folder.filePath(name); }

    void write(const QString& name, const QByteArray& text)
    {
        QFile file(path(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
            qWarning("cannot write %s", qPrintable(name));
    }

    /** Loads one of the files; afterwards errors() are those of this, without the folder. */
    std::unique_ptr<MavlinkDialect> load(const QString& name)
    {
        m_errors.clear();
        return std::unique_ptr<MavlinkDialect>(MavlinkDialect::load(path(name), &m_errors));
    }

    QStringList errors() const
    {
        QStringList texts = m_errors;
        return texts.replaceInStrings(m_folder.path() + QLatin1Char('/'), QString());
    }

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

QString messageRow(const MavlinkMessageInfo* info)
{
    if (!info)
        return QStringLiteral("none");
    return QStringLiteral("%1 %2 crc %3, %4 of %5 bytes")
        .arg(info->getId())
        .arg(info->getName())
        .arg(info->getCrcExtra())
        .arg(info->getBaseLength())
        .arg(info->getFullLength());
}

QString fieldNames(const MessageInfo* info)
{
    QStringList names;
    for (const FieldInfo* field : info->getFieldInfos())
        names.append(field->getName());
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

void tst_MavlinkDialect::checksum()
{
    // The check value of CRC-16/MCRF4XX.
    QCOMPARE(MavlinkCrc::calculate("123456789", 9), quint16(0x6f91));
    QByteArray bytes;
    quint16 bytewise = 0xffff;
    for (int size = 0; size < 40; ++size) {
        QCOMPARE(MavlinkCrc::calculate(bytes.constData(), size), bytewise);
        QCOMPARE(MavlinkCrc::calculate(bytes.constData() + size / 3, size - size / 3,
                                       MavlinkCrc::calculate(bytes.constData(), size / 3)),
                 bytewise);
        bytes.append(static_cast<char>(size * 37));
        bytewise = MavlinkCrc::add(bytewise, static_cast<quint8>(size * 37));
    }
}

void tst_MavlinkDialect::builtInDialectHasThePublicChecksums()
{
    const std::unique_ptr<MavlinkDialect> dialect(MavlinkDialect::loadBuiltIn());
    QCOMPARE(dialect->getName(), QStringLiteral("corvel"));
    QCOMPARE(messageRow(dialect->find(0)), QStringLiteral("0 HEARTBEAT crc 50, 9 of 9 bytes"));
    QCOMPARE(messageRow(dialect->find(30)), QStringLiteral("30 ATTITUDE crc 39, 28 of 28 bytes"));
    QCOMPARE(messageRow(dialect->find(24)), QStringLiteral("24 GPS_RAW_INT crc 24, 30 of 52 bytes"));
    QCOMPARE(messageRow(dialect->find(1)), QStringLiteral("1 SYS_STATUS crc 124, 31 of 43 bytes"));
    QVERIFY(!dialect->find(16777215));
    QVERIFY(dialect->getMessageInfos().size() >= 40);
    for (const MessageInfo* info : dialect->getMessageInfos()) {
        QCOMPARE(static_cast<const MessageInfo*>(dialect->find(static_cast<const MavlinkMessageInfo*>(info)->getId())),
                 info);
        QVERIFY2(!info->getShortDescriptiveText().isEmpty(), qPrintable(info->getName()));
        QCOMPARE(info->getFormatInfo(), static_cast<const FormatInfo*>(dialect.get()));
    }
}

void tst_MavlinkDialect::fieldsKeepTheOrderOfTheFile()
{
    Files files;
    files.write(QStringLiteral("a.b.xml"),
                dialectText("<message id=\"7\" name=\"M\"><wip/><description>One  line\n e.g. this. And\n another."
                            "</description><field type=\"uint8_t\" name=\"a\">first <b>bold</b>\n text</field>"
                            "<field type=\"uint32_t\" name=\"b\" minValue=\"1\" maxValue=\"5\"/>"
                            "<extensions/><field type=\"double[2]\" name=\"c\"/></message>"));
    const auto dialect = files.load(QStringLiteral("a.b.xml"));
    QCOMPARE(files.errors(), QStringList());
    QCOMPARE(dialect->getName(), QStringLiteral("a.b"));
    QCOMPARE(dialect->getFiles(), QStringList(files.path(QStringLiteral("a.b.xml"))));
    const MessageInfo* info = dialect->getMessageInfo(QStringLiteral("M"));
    QCOMPARE(fieldNames(info), QStringLiteral("a b c"));
    QCOMPARE(info->getShortDescriptiveText(), QStringLiteral("One line e.g. this."));
    QCOMPARE(info->getFieldInfo(QStringLiteral("a"))->getDescription(), QStringLiteral("first bold text"));
    QCOMPARE(info->getFieldInfo(QStringLiteral("b"))->getRangeText(), QStringLiteral("1 to 5"));
}

void tst_MavlinkDialect::wireOrderGoesByElementSize()
{
    Files files;
    const QByteArray sorted = "<field type=\"uint64_t\" name=\"d\"/><field type=\"uint32_t[3]\" name=\"c\"/>"
                              "<field type=\"float\" name=\"e\"/><field type=\"uint16_t\" name=\"b\"/>"
                              "<field type=\"uint8_t\" name=\"a\"/>";
    const QByteArray mixed = "<field type=\"uint8_t_mavlink_version\" name=\"a\"/>"
                             "<field type=\"uint32_t[3]\" name=\"c\"/><field type=\"uint16_t\" name=\"b\"/>"
                             "<field type=\"float\" name=\"e\"/><field type=\"uint64_t\" name=\"d\"/>"
                             "<extensions/><field type=\"uint64_t\" name=\"x\"/>";
    files.write(QStringLiteral("sorted.xml"), dialectText(messageText(1, "M", sorted)));
    files.write(QStringLiteral("mixed.xml"), dialectText(messageText(1, "M", mixed)));
    const auto one = files.load(QStringLiteral("sorted.xml"));
    const auto other = files.load(QStringLiteral("mixed.xml"));
    QCOMPARE(one->find(1)->getCrcExtra(), other->find(1)->getCrcExtra());
    QCOMPARE(one->find(1)->getFullLength(), 27);
    QCOMPARE(other->find(1)->getBaseLength(), 27);
    QCOMPARE(other->find(1)->getFullLength(), 35);
}

void tst_MavlinkDialect::includesAreReadOnceAndComeFirst()
{
    Files files;
    QVERIFY(QDir(files.path(QString())).mkdir(QStringLiteral("sub")));
    files.write(QStringLiteral("top.xml"),
                dialectText(messageText(1, "TOP"), "", includeText("left.xml") + includeText("sub/right.xml")));
    files.write(QStringLiteral("left.xml"), dialectText(messageText(2, "LEFT"), "", includeText(" base.xml\n")));
    files.write(QStringLiteral("sub/right.xml"), dialectText(messageText(3, "RIGHT"), "", includeText("../base.xml")));
    files.write(QStringLiteral("base.xml"), dialectText(messageText(4, "BASE")));
    const auto dialect = files.load(QStringLiteral("top.xml"));
    QCOMPARE(files.errors(), QStringList());
    QStringList names;
    for (const MessageInfo* info : dialect->getMessageInfos())
        names.append(info->getName());
    QCOMPARE(names.join(QLatin1Char(' ')), QStringLiteral("BASE LEFT RIGHT TOP"));
    names.clear();
    for (const QString& file : dialect->getFiles())
        names.append(QFileInfo(file).fileName());
    QCOMPARE(names.join(QLatin1Char(' ')), QStringLiteral("top.xml left.xml base.xml right.xml"));
}

void tst_MavlinkDialect::thousandNestedIncludes()
{
    Files files;
    const int count = 1000;
    for (int i = 0; i < count; ++i)
        files.write(QStringLiteral("%1.xml").arg(i),
                    dialectText(messageText(i, "M" + QByteArray::number(i)), "",
                                i + 1 < count ? includeText(QByteArray::number(i + 1) + ".xml") : QByteArray()));
    const auto dialect = files.load(QStringLiteral("0.xml"));
    QCOMPARE(files.errors(), QStringList());
    QCOMPARE(int(dialect->getMessageInfos().size()), count);

    files.write(QStringLiteral("999.xml"), dialectText("", "", "\n" + includeText("0.xml")));
    QVERIFY(!files.load(QStringLiteral("0.xml")));
    QCOMPARE(files.errors(), QStringList(QStringLiteral("999.xml:2: files include each other: 0.xml > 1.xml > 2.xml > "
                                                        "%1 > 998.xml > 999.xml > 0.xml")
                                             .arg(QChar(0x2026))));
}

void tst_MavlinkDialect::enumsOfSeveralFilesMerge()
{
    Files files;
    files.write(QStringLiteral("top.xml"),
                dialectText(messageText(1, "TOP", "<field type=\"uint8_t\" name=\"f\" enum=\"E\"/>"),
                            "<enum name=\"E\"><description>x</description><entry name=\"NEXT\"/>"
                            "<entry name=\"TWENTY\" value=\"20\"/></enum>",
                            includeText("base.xml")));
    files.write(
        QStringLiteral("base.xml"),
        dialectText(messageText(2, "BASE", "<field type=\"int16_t\" name=\"f\" enum=\"E\"/>"),
                    "<enum name=\"E\"><entry name=\"TEN\" value=\"10\"><deprecated/><description>about\n it"
                    "</description><param index=\"1\">p</param></entry><entry name=\"TWO\" value=\"2\"/></enum>"));
    const auto dialect = files.load(QStringLiteral("top.xml"));
    QCOMPARE(files.errors(), QStringList());
    for (quint32 id = 1; id <= 2; ++id) {
        const FieldInfo* field = dialect->find(id)->getFieldInfo(QStringLiteral("f"));
        QCOMPARE(enumeratorTexts(field), QStringLiteral("TEN=10 TWO=2 NEXT=11 TWENTY=20"));
        QCOMPARE(field->getEnumerators().at(0).description, QStringLiteral("about it"));
        QVERIFY(!field->isBitmask());
    }
}

void tst_MavlinkDialect::enumValues_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<quint64>("value");
    QTest::newRow("decimal") << QByteArray("12") << quint64(12);
    QTest::newRow("decimal, not octal") << QByteArray("012") << quint64(12);
    QTest::newRow("hexadecimal") << QByteArray("0x1F") << quint64(31);
    QTest::newRow("binary") << QByteArray("0b101") << quint64(5);
    QTest::newRow("power") << QByteArray("2**63") << (quint64(1) << 63);
    QTest::newRow("greatest") << QByteArray("18446744073709551615") << ~quint64(0);
    QTest::newRow("negative") << QByteArray("-1") << ~quint64(0);
}

void tst_MavlinkDialect::enumValues()
{
    QFETCH(QByteArray, text);
    QFETCH(quint64, value);
    QStringList errors;
    const QByteArray bytes = dialectText(messageText(1, "M", "<field type=\"uint64_t\" name=\"f\" enum=\"E\"/>"),
                                         "<enum name=\"E\"><entry name=\"V\" value=\"" + text + "\"/></enum>");
    const std::unique_ptr<MavlinkDialect> dialect(
        MavlinkDialectReader::readBytes(QStringLiteral("values.xml"), bytes, &errors));
    QCOMPARE(errors, QStringList());
    QCOMPARE(dialect->find(1)->getFieldInfos().first()->getEnumerators().first().value, value);
}

void tst_MavlinkDialect::unknownEnumLeavesANumber()
{
    QStringList errors;
    const std::unique_ptr<MavlinkDialect> dialect(MavlinkDialectReader::readBytes(
        QStringLiteral("x.xml"), dialectText(messageText(1, "M", "<field type=\"uint8_t\" name=\"f\" enum=\"GONE\"/>")),
        &errors));
    QCOMPARE(errors, QStringList());
    const FieldInfo* field = dialect->find(1)->getFieldInfos().first();
    QCOMPARE(field->getInterpretedString(FieldValue::fromUnsigned(3, 1), true), QStringLiteral("3"));
}

void tst_MavlinkDialect::malformed_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("error");
    const auto messages = [](const char* name, const QByteArray& text, const char* error) {
        QTest::newRow(name) << dialectText(text) << QString::fromLatin1(error);
    };
    const auto field = [&messages](const char* name, const QByteArray& attributes, const char* error) {
        messages(name, messageText(1, "M", "\n<field " + attributes + "/>"), error);
    };
    QTest::newRow("empty") << QByteArray() << QStringLiteral("x.xml:1: malformed XML: Premature end of document.");
    QTest::newRow("other root") << QByteArray("<html/>")
                                << QStringLiteral("x.xml:1: no message definitions: the outermost element is <html> "
                                                  "instead of <mavlink>");
    QTest::newRow("unclosed") << QByteArray("<mavlink>\n<messages>\n")
                              << QStringLiteral("x.xml:3: malformed XML: Premature end of document.");
    QTest::newRow("after the end") << QByteArray("<mavlink/>\n<mavlink/>")
                                   << QStringLiteral("x.xml:2: malformed XML: Extra content at end of document.");
    messages("id missing", "<message name=\"M\"/>", "x.xml:1: M: the id \"\" is not a number from 0 to 16777215");
    messages("id too great", messageText(16777216, "M"),
             "x.xml:1: M: the id \"16777216\" is not a number from 0 to 16777215");
    messages("id negative", messageText(-1, "M"), "x.xml:1: M: the id \"-1\" is not a number from 0 to 16777215");
    messages("nameless message", "\n<message id=\"1\"/>", "x.xml:2: a message without a name");
    messages("same id", messageText(5, "A") + '\n' + messageText(5, "B"),
             "x.xml:2: B: the id 5 is already that of A at x.xml:1");
    messages("same name", messageText(5, "A") + '\n' + messageText(6, "A"),
             "x.xml:2: A: the name is already taken at x.xml:1");
    messages("same message", messageText(5, "A") + '\n' + messageText(5, "A"),
             "x.xml:2: A: the id 5 is already that of A at x.xml:1");
    field("nameless field", "type=\"uint8_t\"", "x.xml:2: a field without a name");
    field("unknown type", "name=\"f\" type=\"uint128_t\"", "x.xml:2: f: unknown type \"uint128_t\"");
    field("no type", "name=\"f\"", "x.xml:2: f: unknown type \"\"");
    field("empty array", "name=\"f\" type=\"char[0]\"",
          "x.xml:2: f: the array length of \"char[0]\" is not a number from 1 to 255");
    field("negative array", "name=\"f\" type=\"char[-1]\"",
          "x.xml:2: f: the array length of \"char[-1]\" is not a number from 1 to 255");
    field("absurd array", "name=\"f\" type=\"double[99999999999]\"",
          "x.xml:2: f: the array length of \"double[99999999999]\" is not a number from 1 to 255");
    field("open array", "name=\"f\" type=\"char[4\"",
          "x.xml:2: f: the array length of \"char[4\" is not a number from 1 to 255");
    field("payload too long", "name=\"f\" type=\"double[32]\"",
          "x.xml:2: M: the payload is longer than 255 bytes with the field f");
    messages("field twice", messageText(1, "M", "<field name=\"f\" type=\"char\"/>\n<field name=\"f\" type=\"char\"/>"),
             "x.xml:2: M: the field f is there twice");
    QTest::newRow("entry value") << dialectText("", "<enum name=\"E\">\n<entry name=\"V\" value=\"1x\"/></enum>")
                                 << QStringLiteral("x.xml:2: V: the value \"1x\" is not a number");
    QTest::newRow("power of entry") << dialectText("", "<enum name=\"E\">\n<entry name=\"V\" value=\"2**64\"/></enum>")
                                    << QStringLiteral("x.xml:2: V: the value \"2**64\" is not a number");
    QTest::newRow("nameless enum") << dialectText("", "<enum/>") << QStringLiteral("x.xml:1: an enum without a name");
    QTest::newRow("entry twice")
        << dialectText("", "<enum name=\"E\"><entry name=\"V\" value=\"1\"/>\n<entry name=\"V\" value=\"2\"/></enum>")
        << QStringLiteral("x.xml:2: the entry V of E is already defined at x.xml:1");
}

void tst_MavlinkDialect::malformed()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, error);
    QStringList errors;
    QVERIFY(!MavlinkDialectReader::readBytes(QStringLiteral("x.xml"), text, &errors));
    QCOMPARE(errors, QStringList(error));
}

void tst_MavlinkDialect::malformedIncludes_data()
{
    QTest::addColumn<QByteArray>("included");
    QTest::addColumn<QByteArray>("other");
    QTest::addColumn<QString>("error");
    const QByteArray good = dialectText(messageText(1, "A"));
    QTest::newRow("itself") << QByteArray("top.xml") << good
                            << "top.xml:2: files include each other: top.xml > top.xml";
    QTest::newRow("each other") << QByteArray("other.xml") << dialectText("", "", includeText("./top.xml"))
                                << "other.xml:1: files include each other: top.xml > other.xml > top.xml";
    QTest::newRow("missing") << QByteArray("gone.xml") << good
                             << "top.xml:2: the included file \"gone.xml\" cannot be read: No such file or directory";
    QTest::newRow("no name") << QByteArray() << good << "top.xml:2: the included file \"\" cannot be read: not a file";
    QTest::newRow("folder") << QByteArray(".") << good
                            << "top.xml:2: the included file \".\" cannot be read: not a file";
    QTest::newRow("endless device") << QByteArray("/dev/zero") << good
                                    << "top.xml:2: the included file \"/dev/zero\" cannot be read: not a file";
    QTest::newRow("same id") << QByteArray("other.xml") << dialectText(messageText(9, "B"))
                             << "top.xml:3: TOP: the id 9 is already that of B at other.xml:1";
    QTest::newRow("error within") << QByteArray("other.xml") << QByteArray("<mavlink>\n</mavlonk>")
                                  << "other.xml:2: malformed XML: Opening and ending tag mismatch.";
}

void tst_MavlinkDialect::malformedIncludes()
{
    QFETCH(QByteArray, included);
    QFETCH(QByteArray, other);
    QFETCH(QString, error);
    Files files;
    files.write(QStringLiteral("top.xml"), dialectText('\n' + messageText(9, "TOP"), "", '\n' + includeText(included)));
    files.write(QStringLiteral("other.xml"), other);
    QVERIFY(!files.load(QStringLiteral("top.xml")));
    QCOMPARE(files.errors(), QStringList(error));
}

void tst_MavlinkDialect::allErrorsAreReported()
{
    Files files;
    files.write(QStringLiteral("top.xml"), dialectText('\n' + messageText(1, "A") + '\n' + messageText(1, "B"), "",
                                                       includeText("gone.xml") + includeText("other.xml")));
    files.write(QStringLiteral("other.xml"), dialectText(messageText(2, "C", "<field name=\"f\" type=\"int\"/>") +
                                                         "<message id=\"x\" name=\"D\"/>"));
    QVERIFY(!files.load(QStringLiteral("top.xml")));
    QCOMPARE(files.errors().join(QLatin1Char('\n')),
             QStringLiteral("top.xml:1: the included file \"gone.xml\" cannot be read: No such file or directory\n"
                            "other.xml:1: f: unknown type \"int\"\n"
                            "other.xml:1: D: the id \"x\" is not a number from 0 to 16777215\n"
                            "top.xml:3: B: the id 1 is already that of A at top.xml:2"));
}

void tst_MavlinkDialect::floodOfErrorsIsCounted()
{
    QByteArray text;
    for (int i = 0; i < 1000; ++i)
        text += "<message/>";
    QStringList errors;
    QVERIFY(!MavlinkDialectReader::readBytes(QStringLiteral("x.xml"), dialectText(text), &errors));
    QVERIFY(errors.size() < 1000);
    QVERIFY2(errors.last().endsWith(QStringLiteral("more errors")), qPrintable(errors.last()));
}

void tst_MavlinkDialect::unreadableFiles()
{
    Files files;
    QVERIFY(!files.load(QStringLiteral("gone.xml")));
    QCOMPARE(files.errors(), QStringList(QStringLiteral("gone.xml:1: cannot be read: No such file or directory")));

    QFile large(files.path(QStringLiteral("large.xml")));
    QVERIFY(large.open(QIODevice::WriteOnly));
    QVERIFY(large.resize(qint64(4) << 30)); // sparse
    large.close();
    QVERIFY(!files.load(QStringLiteral("large.xml")));
    QCOMPARE(files.errors(), QStringList(QStringLiteral("large.xml:1: cannot be read: larger than 16777216 bytes")));
}

QTEST_GUILESS_MAIN(tst_MavlinkDialect)

#include "tst_mavlinkdialect.moc"
