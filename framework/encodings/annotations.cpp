#include "annotations.h"
#include "annotationfile.h"

#include "fieldinfo.h"
#include "formatinfo.h"
#include "jsonlocator.h"
#include "messageinfo.h"
#include "virtualfieldinfo.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace
{

const qint64 GreatestFileSize = 16 * 1024 * 1024;
const int GreatestDecimals = 17;

/** Goes through a parsed file. A path is the keys and indices that lead to a place. */
class AnnotationReader
{
public:
    AnnotationReader(const JsonLocator& locator, const QVector<const MessageInfo*>& infos,
                     AnnotationFile::Extent extent)
        : m_locator(locator)
        , m_infos(infos)
        , m_isComplete(extent == AnnotationFile::AllTypes)
    {
    }

    void apply(const QJsonObject& root);

    /** As "line: text", in the order of the file. */
    QStringList getErrors();

private:
    struct Error
    {
        int line;
        QString text;
    };
    /** What can be said of any field; what is not said is left as it is. */
    struct Properties
    {
        bool hasRole = false;
        FieldInfo::Role role = FieldInfo::UnspecifiedRole;
        bool hasConfidential = false;
        bool confidential = false;

        void applyTo(FieldInfo* field) const;
    };

    void fail(const QStringList& path, const QString& subject, const QString& text);
    QJsonObject object(const QJsonValue& value, const QStringList& path, const QString& subject);
    void checkKeys(const QJsonObject& members, const QStringList& known, const QStringList& path,
                   const QString& subject);
    void applyToEveryMessage(const QJsonObject& members, const QStringList& path);
    void applyToFields(const MessageInfo* info, const QJsonObject& fields, const QStringList& path);
    Properties properties(const QJsonObject& members, const QStringList& path, const QString& subject);
    void addVirtualFields(const MessageInfo* info, const QJsonValue& value, const QStringList& path);
    void addVirtualField(const MessageInfo* info, const QJsonObject& members, const QStringList& path);
    QString string(const QJsonObject& members, const QString& key, const QStringList& path, const QString& subject);

    QVector<const MessageInfo*> infosNamed(const QString& name) const;

    JsonLocator m_locator;
    QVector<const MessageInfo*> m_infos;
    bool m_isComplete;
    bool m_isAboutOthers = false; // also about types of Protocol Buffers, which are never all there
    QVector<Error> m_errors;
};

const QLatin1String messagesKey("messages");
const QLatin1String fieldsKey("fields");
const QLatin1String virtualKey("virtual");
const QLatin1String everyMessage("*");
const QLatin1String nameKey("name");
const QLatin1String expressionKey("expression");
const QLatin1String unitKey("unit");
const QLatin1String descriptionKey("description");
const QLatin1String decimalsKey("decimals");
const QLatin1String roleKey("role");
const QLatin1String confidentialKey("confidential");

QStringList operator/(QStringList path, const QString& key)
{
    path.append(key);
    return path;
}

// The descriptions of a format are handed out as constant, but belong to it, and it was given to be changed.
template <typename Info>
Info* changeable(const Info* info)
{
    return const_cast<Info*>(info);
}

// One file can be for several formats; only Protocol Buffers have names with packages.
bool isOfProtobuf(const QString& name)
{
    return name.contains(QLatin1Char('.'));
}

// A format can have several types of one name.
QVector<const MessageInfo*> AnnotationReader::infosNamed(const QString& name) const
{
    QVector<const MessageInfo*> named;
    for (const MessageInfo* info : m_infos)
        if (info->getName() == name)
            named.append(info);
    return named;
}

void AnnotationReader::apply(const QJsonObject& root)
{
    for (const JsonLocator::Duplicate& duplicate : m_locator.getDuplicates())
        m_errors.append(
            {duplicate.line,
             QCoreApplication::translate("Annotations", "the key \"%1\" is there twice").arg(duplicate.key)});
    checkKeys(root, {messagesKey}, QStringList(), QString());
    const QStringList path{messagesKey};
    const QJsonObject messages = object(root.value(messagesKey), path, QString());
    const QStringList names = messages.keys();
    if (std::any_of(names.begin(), names.end(), isOfProtobuf))
        m_isAboutOthers = true;
    applyToEveryMessage(object(messages.value(everyMessage), path / everyMessage, everyMessage), path / everyMessage);

    // All plain fields first: what is computed from confidential fields is confidential.
    QVector<const MessageInfo*> infos;
    for (const QString& name : names) {
        if (name == everyMessage)
            continue;
        const QVector<const MessageInfo*> named = infosNamed(name);
        if (named.isEmpty()) {
            if (m_isComplete && !isOfProtobuf(name))
                fail(path / name, name, QCoreApplication::translate("Annotations", "unknown message type"));
            continue;
        }
        infos += named;
        const QJsonObject members = object(messages.value(name), path / name, name);
        checkKeys(members, {fieldsKey, virtualKey}, path / name, name);
        const QJsonObject fields = object(members.value(fieldsKey), path / name / fieldsKey, name);
        for (const MessageInfo* info : named)
            applyToFields(info, fields, path / name / fieldsKey);
    }
    for (const MessageInfo* info : infos)
        addVirtualFields(info, messages.value(info->getName()).toObject().value(virtualKey),
                         path / info->getName() / virtualKey);
}

QStringList AnnotationReader::getErrors()
{
    std::stable_sort(m_errors.begin(), m_errors.end(),
                     [](const Error& left, const Error& right) { return left.line < right.line; });
    QStringList texts;
    for (const Error& error : m_errors)
        texts.append(QString::number(error.line) + QLatin1String(": ") + error.text);
    return texts;
}

void AnnotationReader::fail(const QStringList& path, const QString& subject, const QString& text)
{
    m_errors.append({m_locator.getLine(path), subject.isEmpty() ? text : subject + QLatin1String(": ") + text});
}

// Nothing at all is as good as an empty object.
QJsonObject AnnotationReader::object(const QJsonValue& value, const QStringList& path, const QString& subject)
{
    if (!value.isObject() && !value.isUndefined())
        fail(path, subject,
             path.isEmpty() ? QCoreApplication::translate("Annotations", "not an object")
                            : QCoreApplication::translate("Annotations", "\"%1\" is not an object").arg(path.last()));
    return value.toObject();
}

void AnnotationReader::checkKeys(const QJsonObject& members, const QStringList& known, const QStringList& path,
                                 const QString& subject)
{
    for (const QString& key : members.keys())
        if (!known.contains(key))
            fail(path / key, subject, QCoreApplication::translate("Annotations", "unknown key \"%1\"").arg(key));
}

void AnnotationReader::applyToEveryMessage(const QJsonObject& members, const QStringList& path)
{
    checkKeys(members, {fieldsKey}, path, everyMessage);
    const QStringList fieldsPath = path / fieldsKey;
    const QJsonObject fields = object(members.value(fieldsKey), fieldsPath, everyMessage);
    for (const QString& name : fields.keys()) {
        const QString subject = everyMessage + QLatin1Char('.') + name;
        const QJsonObject fieldMembers = object(fields.value(name), fieldsPath / name, subject);
        checkKeys(fieldMembers, {roleKey, confidentialKey}, fieldsPath / name, subject);
        const Properties common = properties(fieldMembers, fieldsPath / name, subject);
        bool found = false;
        for (const MessageInfo* info : m_infos) {
            if (const FieldInfo* field = info->getFieldInfo(name)) {
                common.applyTo(changeable(field));
                found = true;
            }
        }
        if (!found && m_isComplete && !m_isAboutOthers)
            fail(fieldsPath / name, subject,
                 QCoreApplication::translate("Annotations", "no message type has that field"));
    }
}

void AnnotationReader::applyToFields(const MessageInfo* info, const QJsonObject& fields, const QStringList& path)
{
    for (const QString& name : fields.keys()) {
        const QString subject = info->getName() + QLatin1Char('.') + name;
        const QJsonObject members = object(fields.value(name), path / name, subject);
        checkKeys(members, {roleKey, confidentialKey}, path / name, subject);
        const Properties own = properties(members, path / name, subject);
        if (const FieldInfo* field = info->getFieldInfo(name))
            own.applyTo(changeable(field));
        else
            fail(path / name, subject, QCoreApplication::translate("Annotations", "unknown field"));
    }
}

AnnotationReader::Properties AnnotationReader::properties(const QJsonObject& members, const QStringList& path,
                                                          const QString& subject)
{
    Properties result;
    const QString role = string(members, roleKey, path, subject);
    result.hasRole = true;
    if (role == QLatin1String("primary")) {
        result.role = FieldInfo::PrimaryRole;
    } else if (role == QLatin1String("secondary")) {
        result.role = FieldInfo::SecondaryRole;
    } else {
        result.hasRole = false;
        if (!role.isEmpty())
            fail(path / roleKey, subject,
                 QCoreApplication::translate("Annotations", "the role \"%1\" is neither \"primary\" nor \"secondary\"")
                     .arg(role));
    }
    const QJsonValue confidential = members.value(confidentialKey);
    result.hasConfidential = confidential.isBool();
    result.confidential = confidential.toBool();
    if (!confidential.isBool() && !confidential.isUndefined())
        fail(path / confidentialKey, subject,
             QCoreApplication::translate("Annotations", "\"confidential\" is neither true nor false"));
    return result;
}

void AnnotationReader::Properties::applyTo(FieldInfo* field) const
{
    if (hasRole)
        field->setRole(role);
    if (hasConfidential)
        field->setConfidential(confidential);
}

void AnnotationReader::addVirtualFields(const MessageInfo* info, const QJsonValue& value, const QStringList& path)
{
    if (!value.isArray() && !value.isUndefined())
        fail(path, info->getName(),
             QCoreApplication::translate("Annotations", "\"%1\" is not an array").arg(virtualKey));
    const QJsonArray elements = value.toArray();
    for (int i = 0; i < elements.size(); ++i) {
        const QStringList elementPath = path / QString::number(i);
        if (elements.at(i).isObject())
            addVirtualField(info, elements.at(i).toObject(), elementPath);
        else
            fail(elementPath, info->getName(),
                 QCoreApplication::translate("Annotations", "a virtual field is not an object"));
    }
}

void AnnotationReader::addVirtualField(const MessageInfo* info, const QJsonObject& members, const QStringList& path)
{
    const QString name = string(members, nameKey, path, info->getName());
    if (name.isEmpty()) {
        fail(path, info->getName(), QCoreApplication::translate("Annotations", "a virtual field without a name"));
        return;
    }
    const QString subject = info->getName() + QLatin1Char('.') + name;
    checkKeys(members, {nameKey, expressionKey, unitKey, descriptionKey, decimalsKey, roleKey, confidentialKey}, path,
              subject);
    const Properties own = properties(members, path, subject);
    const QString unit = string(members, unitKey, path, subject);
    const QString description = string(members, descriptionKey, path, subject);
    const QString expression = string(members, expressionKey, path, subject);
    const QJsonValue decimals = members.value(decimalsKey);
    const int digits = decimals.toInt(-1);
    if (!decimals.isUndefined() && (digits < 0 || digits > GreatestDecimals))
        fail(path / decimalsKey, subject,
             QCoreApplication::translate("Annotations", "\"decimals\" is not a number from 0 to %1")
                 .arg(GreatestDecimals));
    if (info->getFieldInfo(name)) {
        fail(path / nameKey, subject,
             QCoreApplication::translate("Annotations", "there already is a field of that name"));
        return;
    }
    if (expression.isEmpty()) {
        fail(path, subject, QCoreApplication::translate("Annotations", "a virtual field without an expression"));
        return;
    }
    QString error;
    VirtualFieldInfo* field = VirtualFieldInfo::create(name, expression, info, &error);
    if (!field) {
        fail(path / expressionKey, subject, error);
        return;
    }
    field->setUnit(unit);
    field->setDescription(description.isEmpty() ? expression : description);
    if (digits >= 0 && digits <= GreatestDecimals)
        field->setScale(1, digits);
    own.applyTo(field);
    changeable(info)->addField(field);
}

QString AnnotationReader::string(const QJsonObject& members, const QString& key, const QStringList& path,
                                 const QString& subject)
{
    const QJsonValue value = members.value(key);
    if (!value.isString() && !value.isUndefined())
        fail(path / key, subject, QCoreApplication::translate("Annotations", "\"%1\" is not a text").arg(key));
    return value.toString();
}

} // namespace

AnnotationFile::AnnotationFile(const QString& path, const QByteArray& text, const QJsonObject& root)
    : m_path(path)
    , m_locator(text)
    , m_root(root)
{
}

std::unique_ptr<AnnotationFile> AnnotationFile::read(const QString& path, QStringList* errors)
{
    const QString first = path + QLatin1String(":1: ");
    QFile file(path);
    if (QFileInfo::exists(path) && !QFileInfo(path).isFile()) {
        errors->append(first + QCoreApplication::translate("Annotations", "cannot be read: not a file"));
        return nullptr;
    }
    if (!file.open(QIODevice::ReadOnly)) {
        errors->append(first +
                       QCoreApplication::translate("Annotations", "cannot be read: %1").arg(file.errorString()));
        return nullptr;
    }
    if (file.size() > GreatestFileSize) {
        errors->append(
            first +
            QCoreApplication::translate("Annotations", "cannot be read: larger than %1 bytes").arg(GreatestFileSize));
        return nullptr;
    }
    const QByteArray text = file.readAll();
    QJsonParseError parseError;
    const QJsonDocument document = QJsonDocument::fromJson(text, &parseError);
    if (parseError.error != QJsonParseError::NoError) {
        const int line = JsonLocator::lineAt(text, parseError.offset);
        errors->append(QStringLiteral("%1:%2: ").arg(path).arg(line) +
                       QCoreApplication::translate("Annotations", "malformed JSON: %1").arg(parseError.errorString()));
        return nullptr;
    }
    if (document.isArray()) {
        errors->append(first + QCoreApplication::translate("Annotations", "not an object"));
        return nullptr;
    }
    return std::unique_ptr<AnnotationFile>(new AnnotationFile(path, text, document.object()));
}

void AnnotationFile::apply(const QVector<const MessageInfo*>& infos, Extent extent, QStringList* errors)
{
    AnnotationReader reader(m_locator, infos, extent);
    reader.apply(m_root);
    const QStringList found = reader.getErrors();
    for (const QString& error : found) {
        if (m_told.contains(error))
            continue;
        m_told.insert(error);
        errors->append(m_path + QLatin1Char(':') + error);
    }
}

bool Annotations::apply(const QString& path, FormatInfo* format, QStringList* errors)
{
    const int before = static_cast<int>(errors->size());
    if (const std::unique_ptr<AnnotationFile> file = AnnotationFile::read(path, errors))
        file->apply(format->getMessageInfos(), AnnotationFile::AllTypes, errors);
    return errors->size() == before;
}

QString Annotations::pathBeside(const QString& definitionPath)
{
    const QFileInfo file(definitionPath);
    return file.dir().filePath(file.completeBaseName() + QLatin1String(".annotations.json"));
}
