#include "fieldinfo.h"
#include "mavlinkdialect.h"
#include "testbase.h"

#include <memory>

/** Dialects as they are published, from the folder of samples. */
class tst_MavlinkSamples : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void counts();
    void everyPublishedFileLoads_data();
    void everyPublishedFileLoads();
    void builtInDialectAgreesWithThePublished();
    void timesAreRecognised();
};

static std::unique_ptr<MavlinkDialect> loadSample(const QString& name, QStringList* errors)
{
    const QString folder = qEnvironmentVariable("CORVEL_SAMPLES_DIR") + QLatin1String("/mavlink/dialects/");
    return std::unique_ptr<MavlinkDialect>(MavlinkDialect::load(folder + name, errors));
}

// What decides whether two sides understand each other's bytes, and texts that depend on it.
static QString summary(const MavlinkMessageInfo* info)
{
    if (!info)
        return QStringLiteral("none");
    QStringList parts;
    parts << QString::number(info->getId()) << info->getName() << QString::number(info->getCrcExtra())
          << QString::number(info->getBaseLength()) << QString::number(info->getFullLength());
    for (const FieldInfo* field : info->getFieldInfos())
        parts << field->getName() + QLatin1Char(':') + field->getType().toShortString() +
                     (field->isRepeated() ? QLatin1String("[]") : QLatin1String("")) +
                     (field->isOptional() ? QLatin1String("?") : QLatin1String("")) + field->getUnit();
    return parts.join(QLatin1Char(' '));
}

void tst_MavlinkSamples::counts()
{
    QStringList errors;
    const auto dialect = loadSample(QStringLiteral("ardupilotmega.xml"), &errors);
    QCOMPARE(errors, QStringList());
    QCOMPARE(dialect->getName(), QStringLiteral("ardupilotmega"));
    int fields = 0;
    int texts = 0;
    int arrays = 0;
    int extensions = 0;
    int units = 0;
    int invalids = 0;
    for (const MessageInfo* info : dialect->getMessageInfos()) {
        for (const FieldInfo* field : info->getFieldInfos()) {
            ++fields;
            texts += field->isStringField();
            arrays += field->isRepeated() && !field->isStringField();
            extensions += field->isOptional();
            units += !field->getUnit().isEmpty();
            invalids += field->getInvalidValue().isValid();
        }
    }
    QCOMPARE(int(dialect->getMessageInfos().size()), 325);
    QCOMPARE(fields, 2487);
    QCOMPARE(texts, 73);
    QCOMPARE(arrays, 190);
    QCOMPARE(extensions, 185);
    QCOMPARE(units, 1207);
    // Six more are arrays of real numbers that are not available when all elements are zero.
    QCOMPARE(invalids, 399 - 6);
}

void tst_MavlinkSamples::everyPublishedFileLoads_data()
{
    QTest::addColumn<QString>("name");
    const QDir folder(qEnvironmentVariable("CORVEL_SAMPLES_DIR") + QLatin1String("/mavlink/dialects"));
    for (const QString& name : folder.entryList(QStringList(QStringLiteral("*.xml"))))
        QTest::newRow(qPrintable(name)) << name;
}

void tst_MavlinkSamples::everyPublishedFileLoads()
{
    QFETCH(QString, name);
    QStringList errors;
    const auto dialect = loadSample(name, &errors);
    QCOMPARE(errors, QStringList());
    QVERIFY(dialect);
}

void tst_MavlinkSamples::builtInDialectAgreesWithThePublished()
{
    QStringList errors;
    const auto published = loadSample(QStringLiteral("ardupilotmega.xml"), &errors);
    QVERIFY(published);
    const std::unique_ptr<MavlinkDialect> builtIn(MavlinkDialect::loadBuiltIn());
    for (const MessageInfo* message : builtIn->getMessageInfos()) {
        const MavlinkMessageInfo* info = static_cast<const MavlinkMessageInfo*>(message);
        const MavlinkMessageInfo* other = published->find(info->getId());
        QCOMPARE(summary(info), summary(other));
        for (const FieldInfo* field : info->getFieldInfos()) {
            const FieldInfo* twin = other->getFieldInfo(field->getName());
            QVERIFY2(field->getInvalidValue() == twin->getInvalidValue(), qPrintable(field->getName()));
            QCOMPARE(field->getTimeUnit(), twin->getTimeUnit());
            QCOMPARE(field->isBitmask(), twin->isBitmask());
            for (const FieldInfo::Enumerator& enumerator : field->getEnumerators()) {
                const FieldValue value = FieldValue::fromUnsigned(enumerator.value);
                QCOMPARE(field->getInterpretedString(value, true), twin->getInterpretedString(value, true));
            }
        }
    }
}

void tst_MavlinkSamples::timesAreRecognised()
{
    QStringList errors;
    const auto dialect = loadSample(QStringLiteral("ardupilotmega.xml"), &errors);
    QVERIFY(dialect);
    const auto text = [&dialect](const char* message, const char* field, quint64 value) {
        return dialect->getMessageInfo(QLatin1String(message))
            ->getFieldInfo(QLatin1String(field))
            ->getInterpretedString(FieldValue::fromUnsigned(value), true);
    };
    const QString date = QStringLiteral("2014-11-01T08:30:00.000001Z");
    QCOMPARE(text("SYSTEM_TIME", "time_unix_usec", 1414830600000001), date);
    QCOMPARE(text("GPS_RAW_INT", "time_usec", 1414830600000001), date);
    QCOMPARE(text("GPS_RAW_INT", "time_usec", 86400000000), QStringLiteral("86400000000 us"));
    QCOMPARE(text("SYSTEM_TIME", "time_boot_ms", 1414830600), QStringLiteral("1414830600 ms"));
    QCOMPARE(text("LOG_ENTRY", "time_utc", 1414830600), QStringLiteral("2014-11-01T08:30:00Z"));
    QCOMPARE(text("OPEN_DRONE_ID_LOCATION", "timestamp", 1414830600), QStringLiteral("1414830600 s"));
    QCOMPARE(text("OPEN_DRONE_ID_SYSTEM", "timestamp", 1414830600), QStringLiteral("1414830600 s"));
    QCOMPARE(text("UTM_GLOBAL_POSITION", "time", 1414830600000001), date);
}

QTEST_GUILESS_MAIN(tst_MavlinkSamples)

#include "tst_mavlinksamples.moc"
