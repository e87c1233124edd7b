#include "protobufimporter.h"

#include "protobuftext.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <google/protobuf/compiler/importer.h>
#include <google/protobuf/descriptor.pb.h>
#include <google/protobuf/descriptor_database.h>

#include <set>

using google::protobuf::compiler::DiskSourceTree;

namespace
{

/** Writes down errors with the names that files have on the disk. */
class ErrorList : public google::protobuf::compiler::MultiFileErrorCollector
{
public:
    ErrorList(DiskSourceTree* tree, QStringList* errors)
        : m_tree(tree)
        , m_errors(errors)
    {
    }

    void AddError(const std::string& file, int line, int column, const std::string& message) override
    {
        std::string name;
        if (!m_tree->VirtualFileToDiskFile(file, &name))
            name = file;
        QString text = QFile::decodeName(ProtobufText::toBytes(name));
        if (line >= 0)
            text += QStringLiteral(":%1:%2").arg(line + 1).arg(column + 1);
        m_errors->append(text + QStringLiteral(": ") + ProtobufText::fromUtf8(message));
    }

private:
    DiskSourceTree* m_tree;
    QStringList* m_errors;
};

void appendFile(const google::protobuf::FileDescriptor* file, google::protobuf::FileDescriptorSet* set,
                std::set<const google::protobuf::FileDescriptor*>* known)
{
    if (!known->insert(file).second)
        return;
    for (int i = 0; i < file->dependency_count(); ++i)
        appendFile(file->dependency(i), set, known);
    google::protobuf::FileDescriptorProto* const proto = set->add_file();
    file->CopyTo(proto);
    file->CopySourceCodeInfoTo(proto);
}

std::string diskName(const QString& path)
{
    return QFile::encodeName(path).toStdString();
}

} // namespace

QByteArray ProtobufImporter::read(const QString& path, const QStringList& importPaths, QStringList* errors)
{
    const QFileInfo info(path);
    if (!info.isFile() || !info.isReadable()) {
        errors->append(path + QStringLiteral(": ") +
                       (info.exists() ? QCoreApplication::translate("ProtobufFormat", "cannot be read")
                                      : QCoreApplication::translate("ProtobufFormat", "there is no such file")));
        return QByteArray();
    }
    DiskSourceTree tree;
    for (const QString& folder : importPaths) {
        if (!QFileInfo(folder).isDir())
            errors->append(folder + QStringLiteral(": ") +
                           QCoreApplication::translate("ProtobufFormat", "there is no such folder to import from"));
        tree.MapPath("", diskName(QDir(folder).absolutePath()));
    }
    tree.MapPath("", diskName(info.absolutePath()));
    std::string name;
    std::string shadowing;
    switch (tree.DiskFileToVirtualFile(diskName(info.absoluteFilePath()), &name, &shadowing)) {
    case DiskSourceTree::SUCCESS:
        break;
    case DiskSourceTree::SHADOWED:
        errors->append(path + QStringLiteral(": ") +
                       QCoreApplication::translate("ProtobufFormat", "an import path has another file of that name: %1")
                           .arg(ProtobufText::fromUtf8(shadowing)));
        break;
    case DiskSourceTree::CANNOT_OPEN:
    case DiskSourceTree::NO_MAPPING:
        errors->append(path + QStringLiteral(": ") + QCoreApplication::translate("ProtobufFormat", "cannot be read"));
        break;
    }
    if (!errors->isEmpty())
        return QByteArray();

    ErrorList list(&tree, errors);
    google::protobuf::DescriptorPoolDatabase ownFiles(*google::protobuf::DescriptorPool::generated_pool());
    google::protobuf::compiler::SourceTreeDescriptorDatabase database(&tree, &ownFiles);
    database.RecordErrorsTo(&list);
    google::protobuf::DescriptorPool pool(&database, database.GetValidationErrorCollector());
    pool.EnforceWeakDependencies(true);
    const google::protobuf::FileDescriptor* const file = pool.FindFileByName(name);
    if (!file) {
        if (errors->isEmpty())
            errors->append(path + QStringLiteral(": ") +
                           QCoreApplication::translate("ProtobufFormat", "cannot be understood"));
        return QByteArray();
    }
    google::protobuf::FileDescriptorSet set;
    std::set<const google::protobuf::FileDescriptor*> known;
    appendFile(file, &set, &known);
    return ProtobufText::toBytes(set.SerializeAsString());
}
