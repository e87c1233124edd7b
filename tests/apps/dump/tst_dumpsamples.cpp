#include "shellrun.h"
#include "testbase.h"

#include <QFile>

/** corvel-dump on recordings of real devices. */
class TestDumpSamples : public TestBase
{
    Q_OBJECT

private:
    const QString m_samples = qEnvironmentVariable("CORVEL_SAMPLES_DIR");

private Q_SLOTS:
    void thePageOfPathExpressionsNamesWhatThereIs()
    {
        QFile page(CORVEL_DOCUMENTS "/path-expressions.md");
        QVERIFY(page.open(QIODevice::ReadOnly));
        const QString text = QString::fromUtf8(page.readAll());
        static const QRegularExpression example("(?:^|`)((?:corvel|protobuf|\\*)/[^\\s`]+)",
                                                QRegularExpression::MultilineOption);
        QStringList of[2]; // MAVLink, Protocol Buffers
        for (QRegularExpressionMatchIterator found = example.globalMatch(text); found.hasNext();) {
            const QString expression = found.next().captured(1);
            of[expression.startsWith("protobuf")] << QString("--select '%1'").arg(expression);
        }
        QCOMPARE(of[0].size(), qsizetype(11));
        QCOMPARE(of[1].size(), qsizetype(3));
        const char* const files[] = {"mavlink/capture.mav2.battery_status.tlog",
                                     "protobuf/MovingHostWithStopLine.mcap"};
        for (const int i : {0, 1}) {
            const ShellRun run(QString("corvel-dump %1 %2").arg(of[i].join(' '), files[i]), m_samples);
            QVERIFY2(run.status == 0 && !run.output.isEmpty(), qPrintable(run.errors));
        }
    }

    // The numbers were counted by scripts that take the files apart by themselves.
    void recordings()
    {
        static const TextRow rows[] = {
            {"corvel-dump --dialect mavlink/dialects/ardupilotmega.xml --stats mavlink/dronekit-flight.tlog 2>&1"
             " | sed 's/\"senders\":{\"[^}]*}//g' | grep -o -e '^{\"input.*\"types\"' -e '\"checksumF.*\"uns[^,]*' "
             "-e '\"sender\":\"1:1\",\"id\":0,[^]]*gapCount\":[0-9]*,[^}]*}[^}]*}' -e '\"1:1\":{[^}]*}' -e "
             "'\"events.*'",
             "{'input':'mavlink/dronekit-flight.tlog','messages':75477,'types'\n"
             "'checksumFailures':{'142':1314},'unknownIds':{},'unsupportedFrames':0\n"
             "'sender':'1:1','id':0,'messages':1047,...,'gapCount':15,...},"
             "{'start':'2015-07-05T00:30:39.275444Z','missingEpochs':6,'interval':1000}\n"
             "'1:1':{'messages':70977,'lost':450,...}\n"
             "'events':{'CRC error':1314,'Truncated message':1}}"},
            {"corvel-dump --dialect mavlink/dialects/ardupilotmega.xml --stats mavlink/dronekit-flight.tlog 2>/dev/null"
             " | grep -o -e '\"id\":\\(66\\|109\\|150\\),\"mess[^]]*gapCount\":[0-9]*' -e "
             "'\"\\(51:68\\|255:0\\)\":{\"m[^}]*'",
             "'id':66,'messages':92,'noTime':0,'unknownInterval':0,'intervals':{'15000':92},'gapCount':0\n"
             "'id':109,'messages':1370,'noTime':0,'unknownInterval':2,'intervals':{'1000':1368},'gapCount':4\n"
             "'id':150,'messages':260,'noTime':0,'unknownInterval':2,'intervals':{'3900':258},'gapCount':2\n"
             "'255:0':{'messages':1760,'lost':1314,'repeated':0,'late':0,'restarts':0,'failed':1314\n"
             "'51:68':{'messages':2740,'lost':4,'repeated':1370,'late':0,'restarts':0,'failed':0"},
            {"corvel-dump --dialect mavlink/dialects/ardupilotmega.xml --stats mavlink/dronekit-flight.tlog 2>/dev/null"
             " | grep -o '\"id\":[0-9]*,\"format\":\"ardupilotmega\"' | wc -l",
             "35"},
            {"corvel-dump --dialect mavlink/dialects/ardupilotmega.xml mavlink/dronekit-flight.tlog 2>&1 >/dev/null"
             " | grep -c 'checksum failure, id 142, sender 255:0'",
             "1314"},
            {"corvel-dump --dialect mavlink/dialects/ardupilotmega.xml mavlink/dronekit-flight.tlog 2>/dev/null"
             " | sed -n '1p;$='",
             "{'time':'2015-07-05T00:26:43.484195Z','format':'ardupilotmega','sender':'255:0','type':'HEARTBEAT',"
             "'sequence':0,'fields':{'type':6,'autopilot':8,'base_mode':0,'custom_mode':0,'system_status':0,"
             "'mavlink_version':3}}\n"
             "75477"},

            // A stream that ends inside a frame. Through a pipe it is recognised too.
            {"corvel-dump --dialect mavlink/dialects/ardupilotmega.xml --stats mavlink/data.mavlink"
             " | grep -o -e '\"messages\":[0-9]*,\"types' -e '\"trunc[^,]*' -e '\"format\":' | uniq -c | sed 's/^ *//'",
             "1 'messages':1476,'types\n24 'format':\n1 'truncatedFrames':1\n1 'truncatedBytes':11\n! ..."},
            {"cat mavlink/data.mavlink"
             " | corvel-dump --dialect mavlink/dialects/ardupilotmega.xml --stats - | cut -d , -f 2",
             "'messages':1476\n! ..."},

            // Simulators.
            {"corvel-dump --select '*/osi3.SensorView/timestamp' protobuf/MovingHostWithStopLine.mcap | sed -n "
             "'1p;$p;$='",
             "{'time':'1970-01-01T00:00:00.000000000Z',...,'sender':'/osi3/"
             "sensor_view',...,'fields':{'timestamp':{...}}}\n"
             "{'time':'1970-01-01T00:00:06.040000000Z',...}\n152"},
            {"corvel-dump --stats protobuf/MovingHostWithStopLine.mcap",
             "{...'messages':152,...'intervals':{'40':152},...}"},
            {"corvel-dump --select '*/osi3.SensorView/timestamp' protobuf/disappearingVehicle.mcap | sed -n '1p;$p;$='",
             "{'time':'1970-01-01T00:00:00.300000000Z',...,'sender':'/"
             "PMSF.SensorView',...,'fields':{'timestamp':{...}}}\n"
             "{'time':'1970-01-01T00:00:18.449999999Z',...}\n364"},
            {"corvel-dump --stats protobuf/disappearingVehicle.mcap",
             "{...'messages':364,...'intervals':{'50':364},...}"},
            {"corvel-dump --type osi3.SensorView --schema protobuf/proto-osi-3.7.0/osi_sensorview.proto"
             " --import-path protobuf/proto-osi-3.7.0 --stats protobuf/*.osi",
             "{...'messages':20,...'sender':'',...'intervals':{},...}"},

            // ROS. What the packages of its makers read in the same files was compared value by value.
            {"for f in ros/*.mcap ros/wbag/*_4.mcap; do corvel-dump $f 2>/dev/null | grep -v problems"
             " | sed 's/.*\"type\":\"\\([^\"]*\\).*/\\1/' | sort | uniq -c | sed 's/^ *//'; done",
             "4 test_msgs/msg/Arrays\n3 test_msgs/msg/BasicTypes\n7 rcl_interfaces/msg/ParameterEvent\n"
             "25 test_msgs/msg/Empty\n50 test_msgs/msg/Strings\n10 rcl_interfaces/msg/Log\n10 std_msgs/msg/String\n"
             "1108 std_msgs/msg/String"},
            {"corvel-dump ros/only_topics.mcap 2>/dev/null | sed -n 1p | cut -d , -f 6-",
             "'fields':{'stamp':{'sec':1697521620,'nanosec':31223993},'node':'/introspection_client','new_parameters':"
             "[{'name':'use_sim_time','value':{'type':1,'bool_value':false,'integer_value':0,'double_value':0,"
             "'string_value':'','byte_array_value':'','bool_array_value':[],'integer_array_value':[],"
             "'double_array_value':[],'string_array_value':[]}}],'changed_parameters':[],'deleted_parameters':[]}}"},
            {"corvel-dump --interpreted --select '*/*/stamp' ros/talker.mcap 2>/dev/null | sed -n 1p | cut -d , -f 6-",
             "'fields':{'stamp':'2020-04-02T22:23:55.112130688Z'}}"},
            // A recording in several files, counted as its metadata.yaml has it.
            {"corvel-dump --stats ros/wbag | grep -o -e '\"messages\":[0-9]*,\"types' -e '\"senders\":{\"AAA[^}]*'",
             "'messages':6074,'types\n'senders':{'AAA':804,'BBB':742,'CCC':742,'DDD':753,'EEE':804,'FFF':772,'GGG':731,"
             "'HHH':726"},
            {"corvel-dump --select '*/*/data @ DDD' ros/wbag | sed -n '1s/.*fields//p;$s/.*fields//p;$='",
             "':{'data':'Hello, world! 6 - 0'}}\n':{'data':'Hello, world! 1998 - 3'}}\n753"},
            {"corvel-dump ros/wrong_rmw_test_0.mcap 2>&1 | cut -d : -f 2-",
             " not decodable: /test_topic (wrong_format, not decodable)\n"
             " not decodable: /array_topic (wrong_format, not decodable)"},

            // Through a pipe, and one that was cut.
            {"cd protobuf; f=MovingHostWithStopLine.mcap;"
             " [ \"$(cat $f | corvel-dump - | cksum)\" = \"$(corvel-dump $f | cksum)\" ] && echo the same",
             "the same"},
            {"cd protobuf; f=MovingHostWithStopLine.mcap; [ \"$(head -c 20000 $f | corvel-dump - | cksum)\" = "
             "\"$(corvel-dump $f | head -n 82 | cksum)\" ] && echo the same",
             "the same\n! standard input at byte 42: stream ends inside a frame, after 19958 bytes: inside a chunk, of "
             "which "
             "82 messages can be read"},
        };
        check(rows, m_samples);
    }

    void everyLineIsAnObject()
    {
        const ShellRun run("corvel-dump mavlink/dronekit-flight.tlog", m_samples);
        const QList<QByteArray> lines = run.output.trimmed().split('\n');
        for (const QByteArray& line : lines)
            QVERIFY2(QJsonDocument::fromJson(line).isObject(), line);
    }
};

QTEST_GUILESS_MAIN(TestDumpSamples)
#include "tst_dumpsamples.moc"
