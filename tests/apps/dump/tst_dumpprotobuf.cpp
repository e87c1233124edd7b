#include "protoctree.h"
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
    // An enum is printed as "NAME (3)" here and as NAME there.
    return ours == theirs || ours.startsWith(theirs + " (") ||
           (!theirs.isEmpty() && ours.toDouble() == theirs.toDouble() && ours.toDouble() != 0);
}

static void compare(const QJsonObject& ours, const ProtocNode& theirs, const QString& path, QStringList* differences)
{
    for (const ProtocNode& child : theirs.children)
        if (!ours.contains(QString::fromUtf8(child.name)))
            differences->append(path + '/' + QString::fromUtf8(child.name) + " is missing");
    for (auto member = ours.begin(); member != ours.end(); ++member) {
        const QString place = path + '/' + member.key();
        const QJsonArray values = member->isArray() ? member->toArray() : QJsonArray{*member};
        const std::vector<const ProtocNode*> nodes = theirs.named(member.key().toUtf8());
        if (values.size() != static_cast<int>(nodes.size())) {
            differences->append(place + QString(": %1 values").arg(values.size()));
            continue;
        }
        for (int i = 0; i < values.size(); ++i) {
            const ProtocNode& node = *nodes[static_cast<std::size_t>(i)];
            if (node.isMessage != values.at(i).isObject())
                differences->append(place + " is of another kind");
            else if (node.isMessage)
                compare(values.at(i).toObject(), node, place, differences);
            else if (!isSame(values.at(i).toString(), QString::fromUtf8(node.value)))
                differences->append(place + ": " + values.at(i).toString() + ", " + QString::fromUtf8(node.value));
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
        QStringList differences;
        compare(fields, ProtocNode::parse(printed), QString(), &differences);
        QCOMPARE(differences, QStringList());
    }
}

QTEST_GUILESS_MAIN(tst_DumpProtobuf)

#include "tst_dumpprotobuf.moc"
