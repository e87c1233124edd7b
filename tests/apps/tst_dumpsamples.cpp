#include "dumprunner.h"
#include "testbase.h"

#include <QJsonArray>

/** corvel-dump on recordings of real devices. */
class TestDumpSamples : public TestBase
{
    Q_OBJECT

private:
    static QString sample(const QString& name)
    {
        return QString::fromLocal8Bit(qgetenv("CORVEL_SAMPLES_DIR")) + QLatin1String("/mavlink/") + name;
    }
    static QStringList arguments(const QStringList& rest)
    {
        return QStringList() << "--dialect" << sample("dialects/ardupilotmega.xml") << rest;
    }

private Q_SLOTS:
    void aFlight()
    {
        const QString path = sample("dronekit-flight.tlog");
        const DumpRun run(arguments({"--stats", path}));
        QCOMPARE(run.status, 0);
        const QJsonObject stats = run.object();
        QCOMPARE(stats.value("messages").toInt(), 75477);
        QCOMPARE(stats.value("types").toObject().size(), 35);
        QCOMPARE(stats.value("checksumFailures").toObject(), (QJsonObject{{"142", 1314}}));
        QCOMPARE(stats.value("unknownIds").toObject(), QJsonObject());
        QCOMPARE(stats.value("events").toObject(), (QJsonObject{{"CRC error", 1314}, {"Truncated message", 1}}));
        QCOMPARE(stats.value("senders").toObject().value("1:1").toObject().value("lost").toInt(), 450);
        int gapsOfHeartbeat = 0;
        for (const QJsonValue& value : stats.value("statistics").toArray()) {
            const QJsonObject entry = value.toObject();
            if (entry.value("type") == "HEARTBEAT" && entry.value("sender") == "1:1") {
                gapsOfHeartbeat = int(entry.value("gaps").toArray().size());
                QCOMPARE(
                    entry.value("gaps").toArray().at(1).toObject(),
                    (QJsonObject{{"start", "2015-07-05T00:30:39.275444Z"}, {"missingEpochs", 6}, {"interval", 1000}}));
            }
        }
        QCOMPARE(gapsOfHeartbeat, 15);
        QCOMPARE(run.errors.filter("checksum failure, id 142, sender 255:0").size(), qsizetype(1314));

        const DumpRun messages(arguments({path}));
        const QList<QByteArray> lines = messages.lines();
        QCOMPARE(lines.size(), qsizetype(75477));
        QCOMPARE(lines.first(),
                 QByteArray("{\"time\":\"2015-07-05T00:26:43.484195Z\",\"format\":\"ardupilotmega\",\"sender\":"
                            "\"255:0\",\"type\":\"HEARTBEAT\",\"sequence\":0,\"fields\":{\"type\":6,\"autopilot\":8,"
                            "\"base_mode\":0,\"custom_mode\":0,\"system_status\":0,\"mavlink_version\":3}}"));
        for (const QByteArray& line : lines)
            QVERIFY2(QJsonDocument::fromJson(line).isObject(), line.constData());
    }

    void aStreamThatEndsInsideAFrame()
    {
        const QString path = sample("data.mavlink");
        const DumpRun run(arguments({"--stats", path}));
        QCOMPARE(run.status, 0);
        const QJsonObject stats = run.object();
        QCOMPARE(stats.value("messages").toInt(), 1476);
        QCOMPARE(stats.value("types").toObject().size(), 24);
        QCOMPARE(stats.value("truncatedFrames").toInt(), 1);
        QCOMPARE(stats.value("truncatedBytes").toInt(), 11);
        QCOMPARE(run.errors.size(), qsizetype(1));

        // Through a pipe it is recognised too.
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(DumpRun(arguments({"--stats", "-"}), file.readAll()).object().value("messages").toInt(), 1476);
    }
};

QTEST_GUILESS_MAIN(TestDumpSamples)
#include "tst_dumpsamples.moc"
