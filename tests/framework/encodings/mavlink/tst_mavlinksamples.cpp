#include "fieldinfo.h"
#include "mavlinkdialect.h"
#include "testbase.h"
#include "textrows.h"

#include <QDir>

#include <memory>

static std::unique_ptr<MavlinkDialect> loadSample(const QString& name)
{
    const QString folder = qEnvironmentVariable("CORVEL_SAMPLES_DIR") + text("/mavlink/dialects/");
    QStringList errors;
    std::unique_ptr<MavlinkDialect> dialect(MavlinkDialect::load(folder + name, &errors));
    if (!dialect || !errors.isEmpty())
        qWarning("%s", qPrintable(name + errors.join(QLatin1Char('\n'))));
    return dialect;
}

// What decides whether two sides understand each other's bytes, and texts that depend on it.
static QString summary(const MavlinkMessageInfo* info)
{
    if (!info)
        return text("none");
    QStringList parts;
    parts << QString::number(info->getId()) << info->getName() << QString::number(info->getCrcExtra())
          << QString::number(info->getBaseLength()) << QString::number(info->getFullLength());
    for (const FieldInfo* field : info->getFieldInfos()) {
        const FieldValue invalid = field->getInvalidValue();
        parts << QStringLiteral("%1:%2%3%4%5 %6 %7")
                     .arg(field->getName(), field->getType().toShortString(), text(field->isRepeated() ? "[]" : ""),
                          text(field->isOptional() ? "?" : ""), field->getUnit(),
                          invalid.isValid() ? QStringLiteral("not %1").arg(field->getRawString(invalid)) : QString())
                     .arg(field->getTimeUnit() * 10 + field->isBitmask());
    }
    return parts.join(QLatin1Char(' '));
}

/** Dialects as they are published, from the folder of samples. */
class tst_MavlinkSamples : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { m_published = loadSample(text("ardupilotmega.xml")); }
    void cleanupTestCase() { m_published.reset(); }

    void everyPublishedFileLoads()
    {
        const QDir folder(qEnvironmentVariable("CORVEL_SAMPLES_DIR") + text("/mavlink/dialects"));
        const QStringList names = folder.entryList(QStringList(text("*.xml")));
        QVERIFY(!names.isEmpty());
        for (const QString& name : names)
            QVERIFY2(loadSample(name), qPrintable(name));
    }

    void builtInDialectAgreesWithThePublished()
    {
        const std::unique_ptr<MavlinkDialect> builtIn(MavlinkDialect::loadBuiltIn());
        for (const MessageInfo* message : builtIn->getMessageInfos()) {
            const MavlinkMessageInfo* info = static_cast<const MavlinkMessageInfo*>(message);
            const MavlinkMessageInfo* other = m_published->find(info->getId());
            QCOMPARE(summary(info), summary(other));
            for (const FieldInfo* field : info->getFieldInfos()) {
                for (const FieldInfo::Enumerator& enumerator : field->getEnumerators()) {
                    const FieldValue value = FieldValue::fromUnsigned(enumerator.value);
                    QCOMPARE(field->getInterpretedString(value, true),
                             other->getFieldInfo(field->getName())->getInterpretedString(value, true));
                }
            }
        }
    }

    void timesAreRecognised()
    {
        const TextRow rows[] = {{"SYSTEM_TIME time_unix_usec 1414830600000001", "2014-11-01T08:30:00.000001Z"},
                                {"GPS_RAW_INT time_usec 1414830600000001", "2014-11-01T08:30:00.000001Z"},
                                {"GPS_RAW_INT time_usec 86400000000", "86400000000 us"},
                                {"SYSTEM_TIME time_boot_ms 1414830600", "1414830600 ms"},
                                {"LOG_ENTRY time_utc 1414830600", "2014-11-01T08:30:00Z"},
                                {"OPEN_DRONE_ID_LOCATION timestamp 1414830600", "1414830600 s"},
                                {"OPEN_DRONE_ID_SYSTEM timestamp 1414830600", "1414830600 s"},
                                {"UTM_GLOBAL_POSITION time 1414830600000001", "2014-11-01T08:30:00.000001Z"}};
        checkRows(rows, [this](const QString& given) {
            const QStringList words = given.split(QLatin1Char(' '));
            return m_published->getMessageInfo(words.at(0))
                ->getFieldInfo(words.at(1))
                ->getInterpretedString(FieldValue::fromUnsigned(words.at(2).toULongLong()), true);
        });
    }

private:
    std::unique_ptr<MavlinkDialect> m_published;
};

QTEST_GUILESS_MAIN(tst_MavlinkSamples)

#include "tst_mavlinksamples.moc"
