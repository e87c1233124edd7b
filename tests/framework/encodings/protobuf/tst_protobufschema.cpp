#include "definitions.h"
#include "formatregistry.h"
#include "protobufkinds.h"
#include "testbase.h"
#include "testfolder.h"
#include "textrows.h"

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
    void brokenSchemasAreRefused();
    void schemasThatNoSystemHasAreRefused();
};

void tst_ProtobufSchema::typesAreTheSameForTheSameSchema()
{
    TestFolder folder;
    const QString set = folder.filePath(text("all.desc"));
    const QString type = text("kinds3.All");
    QStringList arguments{text("-o") + set, text("-I") + dataFolder(), text("-I") + importFolder(), fileOf(type)};
    runProtoc(arguments);
    QFile file(set);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll(); // without the imported files
    ProtobufFormat format;
    FormatRegistry::getInstance()->addFormat(&format);
    QString error;
    QCOMPARE(format.addSchema(bytes, type, &error), nullptr);
    QVERIFY2(error.contains(text("options.proto")), qPrintable(error));

    runProtoc(arguments << text("--include_imports"));
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
    TestFolder folder;
    const QString path = folder.write(text("a.json"), R"({ "messages": {
"*": { "fields": { "a_int32": { "role": "secondary" } } },
"kinds2.All": { "fields": { "a_string": { "confidential": true } },
"virtual": [ { "name": "sum", "expression": "child.a_int32 + children_1.child.a_int64 + 0.5" } ] },
"kinds3.All": { "fields": { "nothing": { "confidential": true } } },
"other.Type": { "fields": { "nothing": { "confidential": true } } } } })");
    Definitions definitions;
    QStringList errors;
    QVERIFY(definitions.annotate(path, &errors));
    for (const char* type : {"kinds2.All", "kinds3.All"})
        definitions.load(fileOf(QLatin1String(type)), QStringList(importFolder()), &errors);
    QString error;
    const MessageInfo* const info = definitions.findType(text("kinds2.All"), &error);
    const MessageReference decoded = MessageReference::adopt(info->newMessage(
        encode(info->getName(), "child { a_int32: 3 } children {} children { child { a_int64: 4 } } a_string: 's'")));
    definitions.publish(&errors);
    QCOMPARE(errors, QStringList());
    QCOMPARE(rowText(info->getFieldInfo(text("a_int32"))), text("a_int32 | int32 | 1 | optional secondary |  | "));
    QVERIFY(info->getFieldInfo(text("a_string"))->isConfidential());
    QCOMPARE(shown(decoded.get(), text("sum")), text("7.5"));
    QCOMPARE(shown(decoded.get(), text("child/sum")), text("absent"));

    QVERIFY(definitions.findType(text("kinds3.All"), &error));
    definitions.publish(&errors);
    QCOMPARE(errors, QStringList(path + text(":5: kinds3.All.nothing: unknown field")));
}

void tst_ProtobufSchema::brokenSchemasAreRefused()
{
    static const TextRow rows[] = {
        {"message A {\n  int32 = 1;\n}\n", ":3:9: Expected field name."},
        {"message A {\n  Nothing b = 1;\n}\n", ":3:3: \"Nothing\" is not defined."},
        {"import \"nowhere.proto\";\n", ":2:1: Import \"nowhere.proto\" was not found or had errors."}};
    TestFolder folder;
    ProtobufFormat format;
    QStringList errors;
    for (const TextRow& row : rows) {
        errors.clear();
        const QString path = folder.write(text("a.proto"), QByteArray("syntax = \"proto3\";\n") + row.given);
        QVERIFY(!format.loadSchema(path, QStringList(), &errors));
        QVERIFY2(errors.contains(path + text(row.expected)), qPrintable(errors.join(QLatin1Char('\n'))));
        QCOMPARE(format.getLoadedTypeNames(), QStringList());
    }
    errors.clear();
    QVERIFY(!format.loadSchema(text("/nowhere/a.proto"), QStringList(), &errors));
    QCOMPARE(errors, QStringList(text("/nowhere/a.proto: there is no such file")));

    const auto errorOf = [&format](const QByteArray& bytes) {
        QString error;
        return format.addSchema(bytes, text("a.B"), &error) ? QString() : error;
    };
    QCOMPARE(errorOf(QByteArray()), text("the schema is empty"));
    QCOMPARE(errorOf("no schema"), text("the schema is no serialized FileDescriptorSet"));
    // "a.proto" and "b.proto", which import each other.
    const QByteArray circle =
        QByteArray::fromHex("0a12 0a07612e70726f746f 1a07622e70726f746f 0a12 0a07622e70726f746f 1a07612e70726f746f");
    QVERIFY2(errorOf(circle).startsWith(text("b.proto: a.proto: ")), qPrintable(errorOf(circle)));
}

// Every byte of these takes a hundred, or a step down in the library that reads it.
void tst_ProtobufSchema::schemasThatNoSystemHasAreRefused()
{
    ProtobufFormat format;
    const auto errorOf = [&format](const google::protobuf::FileDescriptorSet& set) {
        QString error;
        return format.addSchema(QByteArray::fromStdString(set.SerializeAsString()), text("a.T0"), &error) ? text("none")
                                                                                                          : error;
    };
    const auto name = [](const char* stem, int number) { return stem + std::to_string(number); };

    google::protobuf::FileDescriptorSet many;
    many.add_file()->set_name("a");
    for (int i = 0; i < 250000; ++i)
        many.mutable_file(0)->add_message_type()->set_name(name("T", i));
    QCOMPARE(errorOf(many), text("the schema is too large: 1 files, 250001 names"));

    // In either order: whoever needs a file first, or has it first.
    for (const bool forward : {true, false}) {
        google::protobuf::FileDescriptorSet imports;
        for (int i = 0; i < 1000; ++i) {
            google::protobuf::FileDescriptorProto* const file = imports.add_file();
            file->set_name(name("f", i));
            if (i + (forward ? 1 : -1) >= 0 && i + (forward ? 1 : -1) < 1000)
                file->add_dependency(name("f", i + (forward ? 1 : -1)));
        }
        QVERIFY2(errorOf(imports).contains(text("imports are nested more than 200 deep")),
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
        QCOMPARE(errorOf(chain),
                 length < 2000 ? text("none") : text("\"a.T0\" has parts nested more than 2000 types deep"));
    }
}

QTEST_GUILESS_MAIN(tst_ProtobufSchema)

#include "tst_protobufschema.moc"
