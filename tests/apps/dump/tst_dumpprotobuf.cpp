#include "protoclines.h"
#include "shellrun.h"
#include "testbase.h"

#include <QDir>
#include <QJsonArray>
#include <QtEndian>

/** What corvel-dump prints of a published recording, field for field against what the compiler's decoder prints. */
class tst_DumpProtobuf : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void printsWhatTheCompilerPrints();
};

static bool isSame(const QString& ours, const QString& theirs)
{
    // An enum is printed as "NAME (3)" here and as NAME there, a text in quotation marks.
    return ours == theirs || ours.startsWith(theirs + " (") || '"' + ours + '"' == theirs ||
           (!theirs.isEmpty() && ours.toDouble() == theirs.toDouble() && ours.toDouble() != 0);
}

static void addLines(const QJsonObject& fields, const QString& path, QStringList* lines)
{
    for (auto member = fields.begin(); member != fields.end(); ++member) {
        const QJsonArray values = member->isArray() ? member->toArray() : QJsonArray{*member};
        for (int i = 0; i < values.size(); ++i) {
            const QString place = QString("%1/%2[%3]").arg(path, member.key()).arg(i);
            lines->append(values.at(i).isObject() ? place + " {" : place + ": " + values.at(i).toString());
            addLines(values.at(i).toObject(), place, lines);
        }
    }
}

void tst_DumpProtobuf::printsWhatTheCompilerPrints()
{
    const QDir folder(qEnvironmentVariable("CORVEL_SAMPLES_DIR") + "/protobuf");
    const QString schema = "proto-osi-3.7.0/osi_sensorview.proto";
    const ShellRun run("corvel-dump --interpreted --type osi3.SensorView --schema " + schema + " *.osi", folder.path());
    QCOMPARE(run.errors, QString());
    QFile file(folder.filePath(folder.entryList({"*.osi"}).value(0)));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    const QList<QByteArray> lines = run.output.trimmed().split('\n');
    QCOMPARE(int(lines.size()), 20);
    int place = 0;
    for (const QByteArray& line : lines) {
        const int size = static_cast<int>(qFromLittleEndian<quint32>(bytes.constData() + place));
        const QByteArray printed =
            runProtoc({"--decode=osi3.SensorView", "-I" + folder.filePath("proto-osi-3.7.0"), folder.filePath(schema)},
                      bytes.mid(place + 4, size));
        place += 4 + size;
        const QJsonObject fields = QJsonDocument::fromJson(line).object().value("fields").toObject();
        QVERIFY(fields.size() > 3);
        QStringList ours;
        addLines(fields, QString(), &ours);
        ours.sort();
        const ProtocLines theirs(printed);
        QCOMPARE(ours.size(), theirs.size());
        for (int i = 0; i < ours.size(); ++i) {
            const QString value = ours.at(i).section(": ", 1);
            QVERIFY2(ours.at(i).section(": ", 0, 0) == theirs.at(i).section(": ", 0, 0) &&
                         isSame(value, theirs.at(i).section(": ", 1)),
                     qPrintable(ours.at(i) + " instead of " + theirs.at(i)));
        }
    }
}

QTEST_GUILESS_MAIN(tst_DumpProtobuf)

#include "tst_dumpprotobuf.moc"
