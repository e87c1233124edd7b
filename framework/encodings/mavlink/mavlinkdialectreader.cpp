#include "mavlinkdialectreader.h"

#include "mavlinkcrc.h"
#include "mavlinkdefinitionparser.h"
#include "mavlinkdialect.h"
#include "mavlinkfieldbuilder.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSet>

#include <algorithm>
#include <memory>

namespace
{

const int GreatestPayload = 255;

QString textOf(const MavlinkPlace& place)
{
    return place.file + QLatin1Char(':') + QString::number(place.line);
}

// The first sentence: one that ends before a capital letter, so that "e.g. this" is none.
QString firstSentence(const QString& text)
{
    static const QRegularExpression end(QStringLiteral("[.!?](?=\\s+[A-Z])"));
    const QRegularExpressionMatch match = end.match(text);
    return match.hasMatch() ? text.left(match.capturedEnd()) : text;
}

// Indices of the fields as they are transmitted.
QVector<int> wireOrder(const QVector<MavlinkFieldDefinition>& fields)
{
    QVector<int> order;
    for (int i = 0; i < fields.size(); ++i)
        order.append(i);
    std::stable_sort(order.begin(), order.end(), [&fields](int left, int right) {
        const MavlinkFieldDefinition& a = fields.at(left);
        const MavlinkFieldDefinition& b = fields.at(right);
        if (a.extension || b.extension)
            return !a.extension && b.extension;
        return a.size > b.size;
    });
    return order;
}

quint16 addText(quint16 crc, const QString& text)
{
    const QByteArray bytes = text.toUtf8() + ' ';
    return MavlinkCrc::calculate(bytes.constData(), static_cast<int>(bytes.size()), crc);
}

} // namespace

MavlinkDialect* MavlinkDialectReader::read(const QString& path, QStringList* errors)
{
    QByteArray bytes;
    QString error;
    if (readFile(path, &bytes, &error))
        return readBytes(path, bytes, errors);
    errors->append(path + QLatin1String(":1: ") + error);
    return nullptr;
}

MavlinkDialect* MavlinkDialectReader::readBytes(const QString& path, const QByteArray& bytes, QStringList* errors)
{
    MavlinkDialectReader reader;
    const QString identity = QFileInfo(path).canonicalFilePath();
    reader.parseFile(path, identity.isEmpty() ? path : identity, bytes);
    reader.parseIncludes();
    return reader.build(errors);
}

bool MavlinkDialectReader::readFile(const QString& path, QByteArray* bytes, QString* error)
{
    // A pipe or a device could keep the reader waiting for ever.
    if (QFileInfo::exists(path) && !QFileInfo(path).isFile()) {
        *error = QCoreApplication::translate("MavlinkDialect", "cannot be read: not a file");
        return false;
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        *error = QCoreApplication::translate("MavlinkDialect", "cannot be read: %1").arg(file.errorString());
        return false;
    }
    if (file.size() > GreatestFileSize) {
        *error =
            QCoreApplication::translate("MavlinkDialect", "cannot be read: larger than %1 bytes").arg(GreatestFileSize);
        return false;
    }
    *bytes = file.readAll();
    return true;
}

void MavlinkDialectReader::parseFile(const QString& path, const QString& identity, const QByteArray& bytes)
{
    m_open.append({static_cast<int>(m_files.size()), 0});
    m_indices.insert(identity, static_cast<int>(m_files.size()));
    m_totalSize += bytes.size();
    m_files.append(MavlinkDefinitionParser(path, bytes, &m_errors).parse());
}

// Depth first, so that included definitions come first, with a stack of its own: includes may nest as deep as they
// like.
void MavlinkDialectReader::parseIncludes()
{
    while (!m_open.isEmpty()) {
        OpenFile& current = m_open.last();
        const MavlinkDefinitionFile& file = m_files.at(current.index);
        if (current.nextInclude < file.includes.size()) {
            const MavlinkIncludeDefinition include = file.includes.at(current.nextInclude++);
            parseInclude(include);
        } else {
            m_order.append(current.index);
            m_open.removeLast();
        }
    }
}

void MavlinkDialectReader::parseInclude(const MavlinkIncludeDefinition& include)
{
    const QString path = QDir::cleanPath(QFileInfo(include.place.file).dir().filePath(include.name));
    const QString canonical = QFileInfo(path).canonicalFilePath();
    const QString identity = canonical.isEmpty() ? path : canonical;
    const int known = m_indices.value(identity, -1);
    if (known >= 0) {
        if (isOpen(known))
            m_errors.add(include.place, QCoreApplication::translate("MavlinkDialect", "files include each other: %1")
                                            .arg(describeCycle(known)));
        return;
    }
    QByteArray bytes;
    QString error;
    if (!readFile(path, &bytes, &error))
        m_errors.add(
            include.place,
            QCoreApplication::translate("MavlinkDialect", "the included file \"%1\" %2").arg(include.name, error));
    else if (m_files.size() >= GreatestFileCount)
        m_errors.add(include.place,
                     QCoreApplication::translate("MavlinkDialect", "more than %1 files").arg(GreatestFileCount));
    else if (m_totalSize + bytes.size() > GreatestTotalSize)
        m_errors.add(
            include.place,
            QCoreApplication::translate("MavlinkDialect", "more than %1 bytes in all files").arg(GreatestTotalSize));
    else
        parseFile(path, identity, bytes);
}

bool MavlinkDialectReader::isOpen(int index) const
{
    for (const OpenFile& file : m_open)
        if (file.index == index)
            return true;
    return false;
}

QString MavlinkDialectReader::describeCycle(int index) const
{
    const int most = 6;
    QStringList names;
    for (const OpenFile& file : m_open)
        if (!names.isEmpty() || file.index == index)
            names.append(QFileInfo(m_files.at(file.index).path).fileName());
    names.append(names.value(0));
    if (names.size() > most)
        names = names.mid(0, most / 2) + QStringList(QString(QChar(0x2026))) + names.mid(names.size() - most / 2);
    return names.join(QLatin1String(" > "));
}

MavlinkDialect* MavlinkDialectReader::build(QStringList* errors)
{
    for (int index : m_order)
        mergeEnums(m_files.at(index));
    std::unique_ptr<MavlinkDialect> dialect(new MavlinkDialect(QFileInfo(m_files.first().path).completeBaseName()));
    for (int index : m_order)
        for (const MavlinkMessageDefinition& message : m_files.at(index).messages)
            addMessage(message, dialect.get());
    for (const MavlinkDefinitionFile& file : m_files)
        dialect->m_files.append(file.path);
    if (m_errors.isEmpty())
        return dialect.release();
    errors->append(m_errors.toStringList());
    return nullptr;
}

void MavlinkDialectReader::mergeEnums(const MavlinkDefinitionFile& file)
{
    for (const MavlinkEnumDefinition& definition : file.enums) {
        Enum& merged = m_enums[definition.name];
        merged.bitmask = merged.bitmask || definition.bitmask;
        for (const MavlinkEntryDefinition& entry : definition.entries) {
            FieldInfo::Enumerator enumerator = entry.enumerator;
            if (!entry.hasValue)
                enumerator.value = merged.greatest + 1;
            merged.greatest = std::max(merged.greatest, enumerator.value);
            const QString key = definition.name + QLatin1Char(' ') + enumerator.name;
            const auto earlier = m_enumEntries.constFind(key);
            if (earlier != m_enumEntries.constEnd()) {
                m_errors.add(entry.place, QCoreApplication::translate("MavlinkDialect",
                                                                      "the entry %1 of %2 is already defined at %3")
                                              .arg(enumerator.name, definition.name, textOf(*earlier)));
                continue;
            }
            m_enumEntries.insert(key, entry.place);
            merged.enumerators.append(enumerator);
        }
    }
}

void MavlinkDialectReader::addMessage(const MavlinkMessageDefinition& message, MavlinkDialect* dialect)
{
    if (!checkMessage(message) || !m_errors.isEmpty())
        return; // the dialect will not be used: only what else is wrong is still of interest
    const MavlinkMessageInfo* info = createMessageInfo(message);
    dialect->m_byId.insert(info->getId(), info);
    dialect->addMessageInfo(const_cast<MavlinkMessageInfo*>(info));
}

bool MavlinkDialectReader::checkMessage(const MavlinkMessageDefinition& message)
{
    const auto sameId = m_byId.constFind(message.id);
    const auto sameName = m_byName.constFind(message.name);
    if (sameId != m_byId.constEnd())
        m_errors.add(message.place,
                     QCoreApplication::translate("MavlinkDialect", "%1: the id %2 is already that of %3 at %4")
                         .arg(message.name, QString::number(message.id), sameId->name, textOf(sameId->place)));
    else if (sameName != m_byName.constEnd())
        m_errors.add(message.place, QCoreApplication::translate("MavlinkDialect", "%1: the name is already taken at %2")
                                        .arg(message.name, textOf(sameName->place)));
    m_byId.insert(message.id, message);
    m_byName.insert(message.name, message);

    int length = 0;
    QSet<QString> names;
    for (const MavlinkFieldDefinition& field : message.fields) {
        if (names.contains(field.name))
            m_errors.add(field.place, QCoreApplication::translate("MavlinkDialect", "%1: the field %2 is there twice")
                                          .arg(message.name, field.name));
        names.insert(field.name);
        const bool fitted = length <= GreatestPayload;
        length += field.getLength();
        if (fitted && length > GreatestPayload)
            m_errors.add(field.place, QCoreApplication::translate(
                                          "MavlinkDialect", "%1: the payload is longer than %2 bytes with the field %3")
                                          .arg(message.name, QString::number(GreatestPayload), field.name));
    }
    return m_errors.isEmpty();
}

MavlinkMessageInfo* MavlinkDialectReader::createMessageInfo(const MavlinkMessageDefinition& message) const
{
    MavlinkMessageInfo* info = new MavlinkMessageInfo(message.name, message.id);
    info->setShortDescriptiveText(firstSentence(message.description));
    QVector<int> offsets(message.fields.size());
    quint16 crc = addText(0xffff, message.name);
    int length = 0;
    for (int index : wireOrder(message.fields)) {
        const MavlinkFieldDefinition& field = message.fields.at(index);
        offsets[index] = length;
        length += field.getLength();
        if (field.extension)
            continue;
        info->m_baseLength = length;
        crc = addText(addText(crc, field.typeName), field.name);
        if (field.count > 0)
            crc = MavlinkCrc::add(crc, static_cast<quint8>(field.count));
    }
    info->m_crcExtra = static_cast<quint8>((crc & 0xff) ^ (crc >> 8));
    info->m_fullLength = length;
    for (int i = 0; i < message.fields.size(); ++i) {
        const MavlinkFieldDefinition& field = message.fields.at(i);
        const Enum enumeration = m_enums.value(field.enumName);
        info->addField(MavlinkFieldBuilder::create(field, offsets.at(i), enumeration.enumerators, enumeration.bitmask));
    }
    return info;
}
