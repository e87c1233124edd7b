#include "dumprunner.h"
#include "testbase.h"

#include <QFile>
#include <QJsonArray>
#include <QRegularExpression>

/** corvel-dump on recordings of real devices. */
class TestDumpSamples : public TestBase
{
    Q_OBJECT

private:
    static QString sample(const QString& name)
    {
        return QString::fromLocal8Bit(qgetenv("CORVEL_SAMPLES_DIR")) + QLatin1String("/mavlink/") + name;
    }
    static QString protobuf(const QString& name)
    {
        return QString::fromLocal8Bit(qgetenv("CORVEL_SAMPLES_DIR")) + QLatin1String("/protobuf/") + name;
    }
    static QStringList arguments(const QStringList& rest)
    {
        return QStringList() << "--dialect" << sample("dialects/ardupilotmega.xml") << rest;
    }

private Q_SLOTS:
    void thePageOfPathExpressionsNamesWhatThereIs()
    {
        QFile page(QStringLiteral(CORVEL_DOCUMENTS "/path-expressions.md"));
        QVERIFY(page.open(QIODevice::ReadOnly));
        const QString text = QString::fromUtf8(page.readAll());
        static const QRegularExpression example(QStringLiteral("(?:^|`)((?:corvel|protobuf|\\*)/[^\\s`]+)"),
                                                QRegularExpression::MultilineOption);
        QStringList of[2]; // MAVLink, Protocol Buffers
        for (QRegularExpressionMatchIterator found = example.globalMatch(text); found.hasNext();) {
            const QString expression = found.next().captured(1);
            of[expression.startsWith(QLatin1String("protobuf"))] << "--select" << expression;
        }
        QCOMPARE(of[0].size() / 2, qsizetype(10));
        QCOMPARE(of[1].size() / 2, qsizetype(3));
        const QString files[] = {sample("capture.mav2.battery_status.tlog"), protobuf("MovingHostWithStopLine.mcap")};
        for (const int i : {0, 1}) {
            const DumpRun run(of[i] << files[i]);
            QVERIFY2(run.status == 0 && !run.output.isEmpty(), qPrintable(run.errors.join(QLatin1Char('\n'))));
        }
    }

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

    // The numbers were counted by a script that takes the files apart by itself.
    void recordingsOfASimulator_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<int>("messages");
        QTest::addColumn<QString>("sender");
        QTest::addColumn<QString>("first");
        QTest::addColumn<QString>("last");
        QTest::addColumn<int>("interval");
        const QString schemas = protobuf("proto-osi-3.7.0");
        const QStringList typed{"--type", "osi3.SensorView", "--import-path",
                                schemas,  "--schema",        schemas + "/osi_sensorview.proto"};
        QTest::newRow("40 ms") << QStringList{protobuf("MovingHostWithStopLine.mcap")} << 152 << "/osi3/sensor_view"
                               << "1970-01-01T00:00:00.000000000Z"
                               << "1970-01-01T00:00:06.040000000Z" << 40;
        QTest::newRow("50 ms") << QStringList{protobuf("disappearingVehicle.mcap")} << 364 << "/PMSF.SensorView"
                               << "1970-01-01T00:00:00.300000000Z"
                               << "1970-01-01T00:00:18.449999999Z" << 50;
        QTest::newRow("lengths between") << typed + QStringList{protobuf(
                                                        "20240618T122540Z_sv_370_244_20_minimal_valid_example.osi")}
                                         << 20 << ""
                                         << ""
                                         << "" << 0;
    }

    void recordingsOfASimulator()
    {
        QFETCH(QStringList, arguments);
        QFETCH(int, messages);
        QFETCH(QString, sender);
        QFETCH(QString, first);
        QFETCH(QString, last);
        QFETCH(int, interval);
        const DumpRun run(QStringList{"--select", "*/osi3.SensorView/timestamp"} + arguments);
        QCOMPARE(run.errors, QStringList());
        const QList<QByteArray> lines = run.lines();
        QCOMPARE(int(lines.size()), messages);
        const QJsonObject object = QJsonDocument::fromJson(lines.constLast()).object();
        QCOMPARE(QJsonDocument::fromJson(lines.constFirst()).object().value("time").toString(), first);
        QCOMPARE(object.value("time").toString(), last);
        QCOMPARE(object.value("sender").toString(), sender);
        QCOMPARE(object.value("fields").toObject().keys(), QStringList{"timestamp"});

        const DumpRun stats(QStringList{"--stats"} + arguments);
        QCOMPARE(stats.object().value("messages").toInt(), messages);
        const QJsonObject intervals =
            stats.object().value("statistics").toArray().at(0).toObject().value("intervals").toObject();
        QCOMPARE(intervals.value(QString::number(interval)).toInt(), interval > 0 ? messages : 0);
    }

    void aRecordingThroughAPipeAndOneThatWasCut()
    {
        QFile file(protobuf("MovingHostWithStopLine.mcap"));
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray bytes = file.readAll();
        const DumpRun whole({file.fileName()});
        QCOMPARE(DumpRun({"-"}, bytes).output, whole.output);
        const DumpRun cut({"-"}, bytes.left(20000));
        QCOMPARE(cut.status, 0);
        QCOMPARE(cut.errors, QStringList("standard input at byte 42: stream ends inside a frame, after 19958 bytes: "
                                         "inside a chunk, of which 82 messages can be read"));
        QVERIFY(whole.output.startsWith(cut.output));
        QCOMPARE(int(cut.lines().size()), 82);
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
