#include "mavlinkdefinitionparser.h"

#include <QCoreApplication>

#include <iterator>

namespace
{

const quint32 GreatestId = (1U << 24) - 1;
const int GreatestArray = 255; // its length has to fit into one byte for the checksum, and into a payload anyway

struct ElementType
{
    const char* name;
    const char* checksumName;
    FieldType::TypeCode code;
    int size;
};

const ElementType elementTypes[] = {
    {"char", "char", FieldType::CharType, 1},
    {"uint8_t", "uint8_t", FieldType::UnsignedType, 1},
    {"int8_t", "int8_t", FieldType::SignedType, 1},
    {"uint16_t", "uint16_t", FieldType::UnsignedType, 2},
    {"int16_t", "int16_t", FieldType::SignedType, 2},
    {"uint32_t", "uint32_t", FieldType::UnsignedType, 4},
    {"int32_t", "int32_t", FieldType::SignedType, 4},
    {"uint64_t", "uint64_t", FieldType::UnsignedType, 8},
    {"int64_t", "int64_t", FieldType::SignedType, 8},
    {"float", "float", FieldType::FloatType, 4},
    {"double", "double", FieldType::FloatType, 8},
    {"uint8_t_mavlink_version", "uint8_t", FieldType::UnsignedType, 1},
};

// Decimal, 0x hexadecimal, 0b binary, or 2**n.
quint64 entryValue(const QString& text, bool* ok)
{
    if (text.startsWith(QLatin1String("2**"))) {
        const uint exponent = text.mid(3).toUInt(ok);
        *ok = *ok && exponent < 64;
        return *ok ? quint64(1) << exponent : 0;
    }
    if (text.startsWith(QLatin1String("0x"), Qt::CaseInsensitive))
        return text.mid(2).toULongLong(ok, 16);
    if (text.startsWith(QLatin1String("0b"), Qt::CaseInsensitive))
        return text.mid(2).toULongLong(ok, 2);
    if (text.startsWith(QLatin1Char('-')))
        return static_cast<quint64>(text.toLongLong(ok));
    return text.toULongLong(ok);
}

} // namespace

void MavlinkDefinitionErrors::add(const MavlinkPlace& place, const QString& text)
{
    const int most = 500;
    if (m_texts.size() < most)
        m_texts.append(place.file + QLatin1Char(':') + QString::number(place.line) + QLatin1String(": ") + text);
    else
        ++m_more;
}

QStringList MavlinkDefinitionErrors::toStringList() const
{
    QStringList texts = m_texts;
    if (m_more > 0)
        texts.append(QCoreApplication::translate("MavlinkDialect", "%1 more errors").arg(m_more));
    return texts;
}

MavlinkDefinitionParser::MavlinkDefinitionParser(const QString& path, const QByteArray& bytes,
                                                 MavlinkDefinitionErrors* errors)
    : m_xml(bytes)
    , m_errors(errors)
{
    m_file.path = path;
}

MavlinkDefinitionFile MavlinkDefinitionParser::parse()
{
    if (m_xml.readNextStartElement()) {
        if (atElement("mavlink")) {
            while (m_xml.readNextStartElement()) {
                if (atElement("include")) {
                    const MavlinkPlace place = here();
                    m_file.includes.append({readText(), place});
                } else if (atElement("enums")) {
                    parseEnums();
                } else if (atElement("messages")) {
                    parseMessages();
                } else {
                    m_xml.skipCurrentElement();
                }
            }
        } else {
            fail(QCoreApplication::translate(
                     "MavlinkDialect", "no message definitions: the outermost element is <%1> instead of <mavlink>")
                     .arg(m_xml.name().toString()));
            return m_file;
        }
    }
    while (!m_xml.atEnd())
        m_xml.readNext(); // what follows the definitions must be well-formed too
    if (m_xml.hasError())
        fail(QCoreApplication::translate("MavlinkDialect", "malformed XML: %1").arg(m_xml.errorString()));
    return m_file;
}

MavlinkPlace MavlinkDefinitionParser::here() const
{
    return {m_file.path, static_cast<int>(m_xml.lineNumber())};
}

void MavlinkDefinitionParser::fail(const QString& text)
{
    m_errors->add(here(), text);
}

bool MavlinkDefinitionParser::atElement(const char* name) const
{
    return m_xml.name() == QLatin1String(name);
}

QString MavlinkDefinitionParser::attribute(const char* name) const
{
    return m_xml.attributes().value(QLatin1String(name)).toString().trimmed();
}

// Collects in a loop what QXmlStreamReader::readElementText() would in a recursion as deep as the file wants.
QString MavlinkDefinitionParser::readText()
{
    QString text;
    for (int depth = 1; depth > 0 && !m_xml.atEnd();) {
        switch (m_xml.readNext()) {
        case QXmlStreamReader::StartElement:
            ++depth;
            break;
        case QXmlStreamReader::EndElement:
            --depth;
            break;
        case QXmlStreamReader::Characters:
            text += m_xml.text();
            break;
        default:
            break;
        }
    }
    return text.simplified();
}

void MavlinkDefinitionParser::parseEnums()
{
    while (m_xml.readNextStartElement()) {
        if (atElement("enum"))
            parseEnum();
        else
            m_xml.skipCurrentElement();
    }
}

void MavlinkDefinitionParser::parseEnum()
{
    MavlinkEnumDefinition definition;
    definition.name = attribute("name");
    definition.bitmask = attribute("bitmask") == QLatin1String("true");
    if (definition.name.isEmpty())
        fail(QCoreApplication::translate("MavlinkDialect", "an enum without a name"));
    while (m_xml.readNextStartElement()) {
        if (atElement("entry"))
            definition.entries.append(parseEntry());
        else
            m_xml.skipCurrentElement();
    }
    m_file.enums.append(definition);
}

MavlinkEntryDefinition MavlinkDefinitionParser::parseEntry()
{
    MavlinkEntryDefinition entry;
    entry.place = here();
    entry.enumerator.name = attribute("name");
    if (entry.enumerator.name.isEmpty())
        fail(QCoreApplication::translate("MavlinkDialect", "an enum entry without a name"));
    entry.hasValue = m_xml.attributes().hasAttribute(QLatin1String("value"));
    if (entry.hasValue) {
        bool ok = false;
        entry.enumerator.value = entryValue(attribute("value"), &ok);
        if (!ok)
            fail(QCoreApplication::translate("MavlinkDialect", "%1: the value \"%2\" is not a number")
                     .arg(entry.enumerator.name, attribute("value")));
    }
    while (m_xml.readNextStartElement()) {
        if (atElement("description"))
            entry.enumerator.description = readText();
        else
            m_xml.skipCurrentElement();
    }
    return entry;
}

void MavlinkDefinitionParser::parseMessages()
{
    while (m_xml.readNextStartElement()) {
        if (atElement("message"))
            parseMessage();
        else
            m_xml.skipCurrentElement();
    }
}

void MavlinkDefinitionParser::parseMessage()
{
    MavlinkMessageDefinition message;
    message.place = here();
    message.name = attribute("name");
    if (message.name.isEmpty())
        fail(QCoreApplication::translate("MavlinkDialect", "a message without a name"));
    bool ok = false;
    message.id = attribute("id").toUInt(&ok);
    if (!ok || message.id > GreatestId)
        fail(QCoreApplication::translate("MavlinkDialect", "%1: the id \"%2\" is not a number from 0 to %3")
                 .arg(message.name, attribute("id"), QString::number(GreatestId)));
    bool extension = false;
    while (m_xml.readNextStartElement()) {
        if (atElement("field")) {
            message.fields.append(parseField(extension));
        } else if (atElement("description")) {
            message.description = readText();
        } else {
            if (atElement("extensions"))
                extension = true;
            m_xml.skipCurrentElement();
        }
    }
    m_file.messages.append(message);
}

MavlinkFieldDefinition MavlinkDefinitionParser::parseField(bool extension)
{
    MavlinkFieldDefinition field;
    field.place = here();
    field.name = attribute("name");
    field.extension = extension;
    if (field.name.isEmpty())
        fail(QCoreApplication::translate("MavlinkDialect", "a field without a name"));
    parseType(attribute("type"), &field);
    field.displayAsBitmask = attribute("display") == QLatin1String("bitmask");
    field.units = attribute("units");
    field.enumName = attribute("enum");
    field.invalid = attribute("invalid");
    field.multiplier = attribute("multiplier");
    field.least = attribute("minValue");
    field.greatest = attribute("maxValue");
    field.description = readText();
    return field;
}

void MavlinkDefinitionParser::parseType(const QString& text, MavlinkFieldDefinition* field)
{
    const int bracket = static_cast<int>(text.indexOf(QLatin1Char('[')));
    const QString name = bracket < 0 ? text : text.left(bracket);
    for (const ElementType* type = std::begin(elementTypes); type != std::end(elementTypes); ++type) {
        if (name != QLatin1String(type->name))
            continue;
        field->typeName = QLatin1String(type->checksumName);
        field->typeCode = type->code;
        field->size = type->size;
        if (bracket < 0)
            return;
        bool ok = text.endsWith(QLatin1Char(']'));
        field->count = ok ? text.mid(bracket + 1, text.size() - bracket - 2).toInt(&ok) : 0;
        if (ok && field->count > 0 && field->count <= GreatestArray)
            return;
        field->count = 1;
        fail(
            QCoreApplication::translate("MavlinkDialect", "%1: the array length of \"%2\" is not a number from 1 to %3")
                .arg(field->name, text, QString::number(GreatestArray)));
        return;
    }
    fail(QCoreApplication::translate("MavlinkDialect", "%1: unknown type \"%2\"").arg(field->name, text));
}
