#include "definitions.h"
#include "formatregistry.h"
#include "protobufkinds.h"
#include "testbase.h"

#include <QTemporaryDir>

#include <google/protobuf/descriptor.pb.h>

#include <string>

using namespace ProtobufKinds;

/** Schemas from files and from recordings, good and bad ones, and annotations of their types. */
class tst_ProtobufSchema : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void typesAreTheSameForTheSameSchema();
    void annotationsReachTypesThatComeLater();
    void schemaErrorsTellThePlace_data();
    void schemaErrorsTellThePlace();
    void brokenSchemasInRecordings();
    void schemasThatNoSystemHasAreRefused();
};

void tst_ProtobufSchema::typesAreTheSameForTheSameSchema()
{
    QTemporaryDir folder;
    const QString set = folder.filePath(QStringLiteral("all.desc"));
    runProtoc({QStringLiteral("-o") + set, QStringLiteral("-I") + dataFolder(), QStringLiteral("-I") + importFolder(),
               fileOf(QStringLiteral("kinds3.All"))},
              QByteArray());
    QFile file(set);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll(); // without the imported files
    ProtobufFormat format;
    FormatRegistry::getInstance()->addFormat(&format);
    const QString type = QStringLiteral("kinds3.All");
    QString error;
    QCOMPARE(format.addSchema(bytes, type, &error), nullptr);
    QVERIFY2(error.contains(QStringLiteral("options.proto")), qPrintable(error));

    runProtoc({QStringLiteral("--include_imports"), QStringLiteral("-o") + set, QStringLiteral("-I") + dataFolder(),
               QStringLiteral("-I") + importFolder(), fileOf(type)},
              QByteArray());
    QStringList errors;
    QVERIFY(format.loadSchema(set, QStringList(), &errors));
    const MessageInfo* const info = format.findType(type, &error);
    QVERIFY(info);
    QCOMPARE(info->getFormatInfo(), nullptr);
    const quint64 revision = FormatRegistry::getInstance()->getRevision(&format);
    format.publish();
    QCOMPARE(info->getFormatInfo(), &format);
    QCOMPARE(format.getMessageInfo(type), info);
    QVERIFY(FormatRegistry::getInstance()->getRevision(&format) != revision);

    QFile again(set);
    QVERIFY(again.open(QIODevice::ReadOnly));
    QCOMPARE(format.addSchema(again.readAll(), type, &error), info);
    const int published = static_cast<int>(format.getMessageInfos().size());
    format.publish();
    QCOMPARE(static_cast<int>(format.getMessageInfos().size()), published);
    // With comments, which the other one does not have.
    QVERIFY(format.loadSchema(fileOf(type), QStringList(importFolder()), &errors));
    QVERIFY(format.findType(type, &error) != info);
}

void tst_ProtobufSchema::annotationsReachTypesThatComeLater()
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.json"));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("{ \"messages\": {\n"
               "\"*\": { \"fields\": { \"a_int32\": { \"role\": \"secondary\" } } },\n"
               "\"kinds2.All\": { \"fields\": { \"a_string\": { \"confidential\": true } },\n"
               "\"virtual\": [ { \"name\": \"sum\", \"expression\": \"child.a_int32 + children_1.child.a_int64 + 0.5\" "
               "} ] },\n"
               "\"kinds3.All\": { \"fields\": { \"nothing\": { \"confidential\": true } } },\n"
               "\"other.Type\": { \"fields\": { \"nothing\": { \"confidential\": true } } } } }\n");
    file.close();
    Definitions definitions;
    QStringList errors;
    QVERIFY(definitions.annotate(path, &errors));
    for (const char* type : {"kinds2.All", "kinds3.All"})
        definitions.load(fileOf(QLatin1String(type)), QStringList(importFolder()), &errors);
    QString error;
    const MessageInfo* const info = definitions.findType(QStringLiteral("kinds2.All"), &error);
    const MessageReference decoded = MessageReference::adopt(info->newMessage(
        encode(info->getName(), "child { a_int32: 3 } children {} children { child { a_int64: 4 } } a_string: 's'")));
    definitions.publish(&errors);
    QCOMPARE(errors, QStringList());
    QCOMPARE(rowText(info->getFieldInfo(QStringLiteral("a_int32"))),
             QStringLiteral("a_int32 | int32 | 1 | optional secondary |  | "));
    QVERIFY(info->getFieldInfo(QStringLiteral("a_string"))->isConfidential());
    QCOMPARE(shown(decoded.get(), QStringLiteral("sum")), QStringLiteral("7.5"));
    QCOMPARE(shown(decoded.get(), QStringLiteral("child/sum")), QStringLiteral("absent"));

    QVERIFY(definitions.findType(QStringLiteral("kinds3.All"), &error));
    definitions.publish(&errors);
    QCOMPARE(errors, QStringList(path + QStringLiteral(":5: kinds3.All.nothing: unknown field")));
}

void tst_ProtobufSchema::schemaErrorsTellThePlace_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("expected");

    QTest::newRow("grammar") << QByteArray("syntax = \"proto3\";\nmessage A {\n  int32 = 1;\n}\n")
                             << ":3:9: Expected field name.";
    QTest::newRow("unknown type") << QByteArray("syntax = \"proto3\";\nmessage A {\n  Nothing b = 1;\n}\n")
                                  << ":3:3: \"Nothing\" is not defined.";
    QTest::newRow("import") << QByteArray("syntax = \"proto3\";\nimport \"nowhere.proto\";\n")
                            << ":2:1: Import \"nowhere.proto\" was not found or had errors.";
}

void tst_ProtobufSchema::schemaErrorsTellThePlace()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, expected);
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.proto"));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(text);
    file.close();
    ProtobufFormat format;
    QStringList errors;
    QVERIFY(!format.loadSchema(path, QStringList(), &errors));
    QVERIFY2(errors.contains(path + expected), qPrintable(errors.join(QLatin1Char('\n'))));
    QCOMPARE(format.getLoadedTypeNames(), QStringList());
}

void tst_ProtobufSchema::brokenSchemasInRecordings()
{
    ProtobufFormat format;
    const auto errorOf = [&format](const QByteArray& bytes) {
        QString error;
        return format.addSchema(bytes, QStringLiteral("a.B"), &error) ? QString() : error;
    };
    QCOMPARE(errorOf(QByteArray()), QStringLiteral("the schema is empty"));
    QCOMPARE(errorOf("no schema"), QStringLiteral("the schema is no serialized FileDescriptorSet"));
    // "a.proto" and "b.proto", which import each other.
    const QByteArray circle = QByteArray::fromHex("0a12"
                                                  "0a07612e70726f746f"
                                                  "1a07622e70726f746f"
                                                  "0a12"
                                                  "0a07622e70726f746f"
                                                  "1a07612e70726f746f");
    QVERIFY2(errorOf(circle).startsWith(QStringLiteral("b.proto: a.proto: ")), qPrintable(errorOf(circle)));
    QStringList errors;
    QVERIFY(!format.loadSchema(QStringLiteral("/nowhere/a.proto"), QStringList(), &errors));
    QCOMPARE(errors, QStringList(QStringLiteral("/nowhere/a.proto: there is no such file")));
}

// Every byte of these takes a hundred, or a step down in the library that reads it.
void tst_ProtobufSchema::schemasThatNoSystemHasAreRefused()
{
    ProtobufFormat format;
    const auto errorOf = [&format](const google::protobuf::FileDescriptorSet& set) {
        QString error;
        return format.addSchema(QByteArray::fromStdString(set.SerializeAsString()), QStringLiteral("a.T0"), &error)
                   ? QStringLiteral("none")
                   : error;
    };
    const auto name = [](const char* stem, int number) { return stem + std::to_string(number); };

    google::protobuf::FileDescriptorSet many;
    many.add_file()->set_name("a");
    for (int i = 0; i < 250000; ++i)
        many.mutable_file(0)->add_message_type()->set_name(name("T", i));
    QCOMPARE(errorOf(many), QStringLiteral("the schema is too large: 1 files, 250001 names"));

    // In either order: whoever needs a file first, or has it first.
    for (const bool forward : {true, false}) {
        google::protobuf::FileDescriptorSet imports;
        for (int i = 0; i < 1000; ++i) {
            google::protobuf::FileDescriptorProto* const file = imports.add_file();
            file->set_name(name("f", i));
            if (i + (forward ? 1 : -1) >= 0 && i + (forward ? 1 : -1) < 1000)
                file->add_dependency(name("f", i + (forward ? 1 : -1)));
        }
        QVERIFY2(errorOf(imports).contains(QStringLiteral("imports are nested more than 200 deep")),
                 qPrintable(errorOf(imports)));
    }

    for (const int length : {1900, 60000}) {
        google::protobuf::FileDescriptorSet chain;
        google::protobuf::FileDescriptorProto* const file = chain.add_file();
        file->set_name("chain" + std::to_string(length));
        file->set_package("a");
        for (int i = 0; i <= length; ++i) {
            google::protobuf::DescriptorProto* const type = file->add_message_type();
            type->set_name(name("T", i));
            if (i == length)
                break;
            google::protobuf::FieldDescriptorProto* const field = type->add_field();
            field->set_name("next");
            field->set_number(1);
            field->set_label(google::protobuf::FieldDescriptorProto::LABEL_OPTIONAL);
            field->set_type(google::protobuf::FieldDescriptorProto::TYPE_MESSAGE);
            field->set_type_name(".a." + name("T", i + 1));
        }
        QCOMPARE(errorOf(chain), length < 2000 ? QStringLiteral("none")
                                               : QStringLiteral("\"a.T0\" has parts nested more than 2000 types deep"));
    }
}

QTEST_GUILESS_MAIN(tst_ProtobufSchema)

#include "tst_protobufschema.moc"
