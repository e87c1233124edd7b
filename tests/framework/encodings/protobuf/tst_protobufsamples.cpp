#include "definitions.h"
#include "mcapstreamdecoder.h"
#include "messagereference.h"
#include "protobufformat.h"
#include "protobufstreamdecoder.h"
#include "protoctree.h"
#include "testbase.h"

#include <QDir>

/** Published recordings, from the folder of samples. */
class tst_ProtobufSamples : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void describesThePublishedDefinitions();
    void decodesAsTheCompilerDoes_data();
    void decodesAsTheCompilerDoes();

private:
    const QDir m_folder = QDir(qEnvironmentVariable("CORVEL_SAMPLES_DIR") + QStringLiteral("/protobuf"));
    const QDir m_definitions = QDir(m_folder.filePath(QStringLiteral("proto-osi-3.7.0")));
};

/** Holds what comes from a decoder against what the compiler makes of the same bytes. */
class Comparer : public StreamSink
{
public:
    Comparer(const QString& importPath, const QString& schema, int step)
        : m_importPath(importPath)
        , m_schema(schema)
        , m_step(step)
    {
    }

    void processReceived(const ReceivedMessage& received) override
    {
        if (count++ % m_step != 0)
            return;
        if (!received.info) {
            differences.append(QStringLiteral("a message of an unknown type"));
            return;
        }
        const MessageReference message = MessageReference::adopt(received.createMessage(QString()));
        const QByteArray printed = runProtoc(
            {QStringLiteral("--decode=") + received.info->getName(), QStringLiteral("-I") + m_importPath, m_schema},
            message.get()->getData());
        const ProtocComparison comparison(message.get(), printed);
        differences += comparison.differences;
        valuesCompared += comparison.valuesCompared;
    }

    void processProblem(const StreamProblem& problem) override { differences.append(problem.describe(QString())); }

    int count = 0;
    int valuesCompared = 0;
    QStringList differences;

private:
    QString m_importPath;
    QString m_schema;
    int m_step;
};

void tst_ProtobufSamples::describesThePublishedDefinitions()
{
    ProtobufFormat format;
    QStringList errors;
    for (const QString& name : m_definitions.entryList(QStringList(QStringLiteral("*.proto"))))
        QVERIFY(format.loadSchema(m_definitions.filePath(name), QStringList(), &errors));
    QCOMPARE(errors, QStringList());
    QString error;
    for (const QString& name : format.getLoadedTypeNames())
        QVERIFY2(format.findType(name, &error), qPrintable(name));
    const MessageInfo* const info = format.findType(QStringLiteral("osi3.MovingObject"), &error);
    const FieldInfo* const id = info->getFieldInfo(QStringLiteral("id"));
    QCOMPARE(id->getDescription().section(QLatin1Char('\n'), 0, 0), QStringLiteral("The ID of the object."));
    QVERIFY(info->getShortDescriptiveText().startsWith(QStringLiteral("\\brief")));
}

void tst_ProtobufSamples::decodesAsTheCompilerDoes_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("step"); // each run of the compiler takes its time

    QTest::newRow("delimited") << "20240618T122540Z_sv_370_244_20_minimal_valid_example.osi" << 20 << 1;
    QTest::newRow("vehicle") << "disappearingVehicle.mcap" << 364 << 60;
    QTest::newRow("stop line") << "MovingHostWithStopLine.mcap" << 152 << 50;
}

void tst_ProtobufSamples::decodesAsTheCompilerDoes()
{
    QFETCH(QString, file);
    QFETCH(int, count);
    QFETCH(int, step);
    Definitions definitions;
    QStringList errors;
    const QString schema = m_definitions.filePath(QStringLiteral("osi_sensorview.proto"));
    QVERIFY2(definitions.load(schema, QStringList(), &errors), qPrintable(errors.join(QLatin1Char('\n'))));
    QString error;
    const MessageInfo* const info = definitions.findType(QStringLiteral("osi3.SensorView"), &error);
    QVERIFY2(info, qPrintable(error));

    QFile input(m_folder.filePath(file));
    QVERIFY(input.open(QIODevice::ReadOnly));
    std::unique_ptr<StreamDecoder> decoder;
    if (file.endsWith(QLatin1String(".mcap")))
        decoder.reset(new McapStreamDecoder(&definitions));
    else
        decoder.reset(new ProtobufStreamDecoder(&definitions, info, ProtobufStreamDecoder::UInt32Framing));
    Comparer comparer(m_definitions.path(), schema, step);
    const QByteArray bytes = input.readAll();
    decoder->feed(bytes.constData(), static_cast<int>(bytes.size()), Message::NoTime, &comparer);
    decoder->finish(&comparer);
    QCOMPARE(comparer.differences, QStringList());
    QCOMPARE(comparer.count, count);
    QVERIFY2(comparer.valuesCompared > 200, qPrintable(QString::number(comparer.valuesCompared)));
}

QTEST_GUILESS_MAIN(tst_ProtobufSamples)

#include "tst_protobufsamples.moc"
