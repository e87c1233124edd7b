#ifndef PROTOCLINES_H
#define PROTOCLINES_H

#include "fieldinfo.h"
#include "message.h"
#include "messageinfo.h"

#include <QHash>
#include <QProcess>
#include <QSet>
#include <QStringList>

#include <algorithm>

/** A run of the compiler of Protocol Buffers as encoder or decoder; empty bytes when it fails. */
inline QByteArray runProtoc(const QStringList& arguments, const QByteArray& input = QByteArray())
{
    QProcess process;
    process.start(QStringLiteral(CORVEL_PROTOC), arguments);
    process.write(input);
    process.closeWriteChannel();
    if (!process.waitForFinished(60000) || process.exitCode() != 0)
        return QByteArray();
    return process.readAllStandardOutput();
}

/** What the compiler's decoder prints, a line a value: "/child[0]/numbers[1]: 0.5", "/child[0] {"; sorted. */
class ProtocLines : public QStringList
{
public:
    ProtocLines() = default;

    /** Of what it has printed, in which @p ours tells what is a float. */
    explicit ProtocLines(const QByteArray& printed, const ProtocLines& ours = ProtocLines())
    {
        struct Level
        {
            QString path;
            QHash<QByteArray, int> counts;
        };
        QVector<Level> levels(1);
        for (const QByteArray& whole : printed.split('\n')) {
            const QByteArray line = whole.trimmed();
            if (line.endsWith(" {")) {
                // A group is printed by the name of its type.
                const QByteArray name = line.chopped(2).toLower();
                const QString path = placeOf(levels.last().path, QString::fromUtf8(name), levels.last().counts[name]++);
                append(path + QStringLiteral(" {"));
                levels.append(Level{path, {}});
            } else if (line == "}") {
                levels.removeLast();
            } else if (!line.isEmpty()) {
                const QByteArray name = line.left(line.indexOf(": "));
                const QString path = placeOf(levels.last().path, QString::fromUtf8(name), levels.last().counts[name]++);
                append(path + valueText(line.mid(name.size() + 2), ours.m_floats.contains(path)));
            }
        }
        sort();
    }

    /** Of what it would print of a message. */
    explicit ProtocLines(const Message* message)
    {
        addFields(message, QString());
        sort();
    }

private:
    static QString placeOf(const QString& path, const QString& name, int index)
    {
        return path + QStringLiteral("/%1[%2]").arg(name).arg(index);
    }

    // Real numbers count as the same when they read back the same.
    static QString valueText(const QByteArray& text, bool isFloat)
    {
        bool isReal = text.contains('.') || text.contains('e') || isFloat;
        const double number = isReal ? text.toDouble(&isReal) : 0;
        return QStringLiteral(": ") + (!isReal   ? QString::fromUtf8(text)
                                       : isFloat ? QString::number(double(float(number)), 'g', 17)
                                                 : QString::number(number, 'g', 17));
    }

    static QString quoted(const QByteArray& bytes)
    {
        QString text(QLatin1Char('"'));
        for (const char byte : bytes) {
            const int special = int(QByteArray("\n\r\t\"'\\").indexOf(byte));
            if (special >= 0)
                text += QStringLiteral("\\%1").arg(QLatin1Char("nrt\"'\\"[special]));
            else if (byte < ' ' || byte == 0x7f)
                text += QStringLiteral("\\%1").arg(static_cast<unsigned char>(byte), 3, 8, QLatin1Char('0'));
            else
                text += QLatin1Char(byte);
        }
        return text + QLatin1Char('"');
    }

    static QString valueText(const FieldInfo* field, const FieldValue& value)
    {
        if (value.getKind() == FieldValue::TextKind || value.getKind() == FieldValue::BytesKind)
            return QStringLiteral(": ") +
                   quoted(value.getKind() == FieldValue::TextKind ? value.toText().toUtf8() : value.toBytes());
        if (!field->getEnumerators().isEmpty()) // "NAME (3)"
            return QStringLiteral(": ") + field->getInterpretedString(value, false).section(QLatin1Char(' '), 0, 0);
        return valueText(field->getRawString(value).toUtf8(), value.getKind() == FieldValue::FloatKind);
    }

    void addFields(const Message* message, const QString& path)
    {
        for (const FieldInfo* field : message->getInfo()->getFieldInfos()) {
            QVector<FieldValue> values = field->getValues(message);
            const MessageInfo* const type = field->getType().getSubMessageInfo();
            const FieldInfo* const key = type ? type->getFieldInfo(QStringLiteral("key")) : nullptr;
            if (key) // the entries of a map
                std::sort(values.begin(), values.end(), [key](const FieldValue& left, const FieldValue& right) {
                    return key->getRawString(key->getValue(left.getSubMessage(), 0)) <
                           key->getRawString(key->getValue(right.getSubMessage(), 0));
                });
            for (int i = 0; i < values.size(); ++i)
                addValue(field, values.at(i), message, i, placeOf(path, field->getName(), i));
        }
    }

    void addValue(const FieldInfo* field, const FieldValue& value, const Message* message, int index,
                  const QString& path)
    {
        if (value.getSubMessage()) {
            append(path + QStringLiteral(" {"));
            addFields(value.getSubMessage(), path);
        } else if (!field->getSubFieldInfos().isEmpty()) {
            append(path + QStringLiteral(" {"));
            for (const FieldInfo* part : field->getSubFieldInfos())
                if (part->getValue(message, static_cast<unsigned int>(index)).toSigned() != 0)
                    append(placeOf(path, part->getName(), 0) +
                           valueText(part, part->getValue(message, static_cast<unsigned int>(index))));
        } else if (field->isOptional() || field->isRepeated() ||
                   message->getInfo()->getFieldInfo(QStringLiteral("key")) ||
                   (value.isNumber() ? value.toDouble() != 0
                                     : !value.toText().isEmpty() || !value.toBytes().isEmpty())) {
            append(path + valueText(field, value)); // else the default, which is not printed
            if (value.getKind() == FieldValue::FloatKind)
                m_floats.insert(path);
        }
    }

    QSet<QString> m_floats;
};

#endif
