#include "messagereference.h"
#include "protobufformat.h"
#include "protoctree.h"
#include "testbase.h"

#include <QDir>
#include <QtEndian>

/** Published recordings, from the folder of samples. */
class tst_ProtobufSamples : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void describesThePublishedDefinitions();
    void decodesAsTheCompilerDoes();

private:
    const QDir m_folder = QDir(qEnvironmentVariable("CORVEL_SAMPLES_DIR") + QStringLiteral("/protobuf"));
    const QDir m_definitions = QDir(m_folder.filePath(QStringLiteral("proto-osi-3.7.0")));
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

void tst_ProtobufSamples::decodesAsTheCompilerDoes()
{
    ProtobufFormat format;
    QStringList errors;
    const QString schema = m_definitions.filePath(QStringLiteral("osi_sensorview.proto"));
    QVERIFY2(format.loadSchema(schema, QStringList(), &errors), qPrintable(errors.join(QLatin1Char('\n'))));
    QString error;
    const MessageInfo* const info = format.findType(QStringLiteral("osi3.SensorView"), &error);
    QVERIFY2(info, qPrintable(error));

    QFile file(m_folder.filePath(m_folder.entryList(QStringList(QStringLiteral("*.osi"))).value(0)));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    int count = 0;
    int values = 0;
    for (int place = 0; place + 4 <= bytes.size(); ++count) {
        const int size = static_cast<int>(qFromLittleEndian<quint32>(bytes.constData() + place));
        const QByteArray data = bytes.mid(place + 4, size);
        place += 4 + size;
        const QByteArray printed = runProtoc(
            {QStringLiteral("--decode=osi3.SensorView"), QStringLiteral("-I") + m_definitions.path(), schema}, data);
        const MessageReference message = MessageReference::adopt(info->newMessage(data));
        const ProtocComparison comparison(message.get(), printed);
        QCOMPARE(comparison.differences, QStringList());
        values += comparison.valuesCompared;
    }
    QCOMPARE(count, 20);
    QVERIFY2(values > 1000, qPrintable(QString::number(values)));
}

QTEST_GUILESS_MAIN(tst_ProtobufSamples)

#include "tst_protobufsamples.moc"
