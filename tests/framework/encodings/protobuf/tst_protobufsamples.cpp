#include "definitions.h"
#include "mcapstreamdecoder.h"
#include "messagereference.h"
#include "protobufformat.h"
#include "protobufstreamdecoder.h"
#include "protoclines.h"
#include "testbase.h"
#include "textrows.h"
#include "transcript.h"

#include <QDir>

/** Published recordings, from the folder of samples. */
class tst_ProtobufSamples : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void describesThePublishedDefinitions();
    void decodesAsTheCompilerDoes();

private:
    const QDir m_folder = QDir(qEnvironmentVariable("CORVEL_SAMPLES_DIR") + text("/protobuf"));
    const QDir m_definitions = QDir(m_folder.filePath(text("proto-osi-3.7.0")));
};

void tst_ProtobufSamples::describesThePublishedDefinitions()
{
    ProtobufFormat format;
    QStringList errors;
    for (const QString& name : m_definitions.entryList(QStringList(text("*.proto"))))
        QVERIFY(format.loadSchema(m_definitions.filePath(name), QStringList(), &errors));
    QCOMPARE(errors, QStringList());
    QString error;
    for (const QString& name : format.getLoadedTypeNames())
        QVERIFY2(format.findType(name, &error), qPrintable(name));
    const MessageInfo* const info = format.findType(text("osi3.MovingObject"), &error);
    const FieldInfo* const id = info->getFieldInfo(text("id"));
    QCOMPARE(id->getDescription().section(QLatin1Char('\n'), 0, 0), text("The ID of the object."));
    QVERIFY(info->getShortDescriptiveText().startsWith(text("\\brief")));
}

void tst_ProtobufSamples::decodesAsTheCompilerDoes()
{
    static const struct
    {
        const char* file;
        int count;
        int step; // each run of the compiler takes its time
    } rows[] = {{"20240618T122540Z_sv_370_244_20_minimal_valid_example.osi", 20, 1},
                {"disappearingVehicle.mcap", 364, 60},
                {"MovingHostWithStopLine.mcap", 152, 50}};
    Definitions definitions;
    QStringList errors;
    const QString schema = m_definitions.filePath(text("osi_sensorview.proto"));
    QVERIFY2(definitions.load(schema, QStringList(), &errors), qPrintable(errors.join(QLatin1Char('\n'))));
    QString error;
    const MessageInfo* const info = definitions.findType(text("osi3.SensorView"), &error);
    QVERIFY2(info, qPrintable(error));
    for (const auto& row : rows) {
        QFile input(m_folder.filePath(text(row.file)));
        QVERIFY(input.open(QIODevice::ReadOnly));
        std::unique_ptr<StreamDecoder> decoder;
        if (text(row.file).endsWith(text(".mcap")))
            decoder.reset(new McapStreamDecoder(&definitions));
        else
            decoder.reset(new ProtobufStreamDecoder(&definitions, info, ProtobufStreamDecoder::UInt32Framing));
        Transcript found(decoder.get());
        feedAll(decoder.get(), input.readAll(), &found);
        QCOMPARE(found.problems, QStringList());
        QCOMPARE(int(found.infos.size()), row.count);
        int compared = 0;
        for (int i = 0; i < row.count; i += row.step) {
            const MessageReference message =
                MessageReference::adopt(found.infos.at(i)->newMessage(found.payloads.at(i)));
            const ProtocLines ours(message.get());
            const ProtocLines theirs(runProtoc({text("--decode=") + message->getInfo()->getName(),
                                                text("-I") + m_definitions.path(), schema},
                                               found.payloads.at(i)),
                                     ours);
            QCOMPARE(static_cast<const QStringList&>(ours), static_cast<const QStringList&>(theirs));
            compared += int(ours.size());
        }
        QVERIFY2(compared > 200, qPrintable(QString::number(compared)));
    }
}

QTEST_GUILESS_MAIN(tst_ProtobufSamples)

#include "tst_protobufsamples.moc"
