#ifndef PROTOCTREE_H
#define PROTOCTREE_H

#include "fieldinfo.h"
#include "message.h"
#include "messageinfo.h"

#include <QProcess>
#include <QStringList>

#include <algorithm>
#include <memory>
#include <vector>

/** A run of the compiler of Protocol Buffers as encoder or decoder; empty bytes when it fails. */
inline QByteArray runProtoc(const QStringList& arguments, const QByteArray& input)
{
    QProcess process;
    process.start(QStringLiteral(CORVEL_PROTOC), arguments);
    process.write(input);
    process.closeWriteChannel();
    if (!process.waitForFinished(60000) || process.exitCode() != 0)
        return QByteArray();
    return process.readAllStandardOutput();
}

/** What the compiler's decoder prints, as a tree. */
struct ProtocNode
{
    QByteArray name;
    QByteArray value; ///< as printed, a text without its quotes and escapes
    std::vector<ProtocNode> children;
    bool isMessage = false;
    mutable bool isCompared = false;

    static ProtocNode parse(const QByteArray& text)
    {
        const QList<QByteArray> lines = text.split('\n');
        ProtocNode root;
        root.isMessage = true;
        int line = 0;
        root.parseChildren(lines, &line);
        return root;
    }

    std::vector<const ProtocNode*> named(const QByteArray& wanted) const
    {
        std::vector<const ProtocNode*> found;
        for (const ProtocNode& child : children)
            // A group is printed by the name of its type.
            if (child.name == wanted || (child.isMessage && child.name.toLower() == wanted))
                found.push_back(&child);
        return found;
    }

private:
    void parseChildren(const QList<QByteArray>& lines, int* line)
    {
        while (*line < lines.size()) {
            const QByteArray text = lines.at((*line)++).trimmed();
            if (text.isEmpty())
                continue;
            if (text == "}")
                return;
            ProtocNode child;
            child.isMessage = text.endsWith(" {");
            const int mark = static_cast<int>(child.isMessage ? text.size() - 2 : text.indexOf(": "));
            child.name = text.left(mark);
            if (child.isMessage)
                child.parseChildren(lines, line);
            else
                child.value = unescaped(text.mid(mark + 2));
            children.push_back(child);
        }
    }

    static QByteArray unescaped(const QByteArray& text)
    {
        if (!text.startsWith('"'))
            return text;
        QByteArray result;
        for (int i = 1; i + 1 < text.size(); ++i) {
            if (text.at(i) != '\\') {
                result += text.at(i);
                continue;
            }
            const char next = text.at(++i);
            if (next >= '0' && next <= '7') {
                result += static_cast<char>(text.mid(i, 3).toInt(nullptr, 8));
                i += 2;
            } else {
                result += next == 'n' ? '\n' : next == 'r' ? '\r' : next == 't' ? '\t' : next;
            }
        }
        return result;
    }
};

/** Holds the fields of a message against what the compiler's decoder prints of the same bytes. */
class ProtocComparison
{
public:
    ProtocComparison(const Message* message, const QByteArray& printed)
    {
        const ProtocNode root = ProtocNode::parse(printed);
        compareMessage(message, root, QStringLiteral("message"));
    }

    QStringList differences;
    int valuesCompared = 0;

private:
    void differ(const QString& path, const QString& ours, const QString& theirs)
    {
        differences.append(path + QStringLiteral(": ") + ours + QStringLiteral(" instead of ") + theirs);
    }

    void compareMessage(const Message* message, const ProtocNode& node, const QString& path)
    {
        for (const FieldInfo* field : message->getInfo()->getFieldInfos())
            compareField(field, message, node, path + QLatin1Char('/') + field->getName());
        for (const ProtocNode& child : node.children)
            if (!child.isCompared)
                differ(path, QStringLiteral("nothing"), QString::fromUtf8(child.name));
    }

    void compareField(const FieldInfo* field, const Message* message, const ProtocNode& node, const QString& path)
    {
        std::vector<const ProtocNode*> theirs = node.named(field->getName().toUtf8());
        if (field->getName() == QLatin1String("[unknown fields]"))
            for (const ProtocNode& child : node.children)
                if (child.name.at(0) >= '0' && child.name.at(0) <= '9')
                    theirs.push_back(&child);
        for (const ProtocNode* child : theirs)
            child->isCompared = true;
        const unsigned int count = field->getValueCount(message);
        std::vector<FieldValue> ours;
        for (unsigned int i = 0; i < count; ++i)
            ours.push_back(field->getValue(message, i));
        sortMap(field, &ours);
        if (count == 1 && theirs.empty() && !field->isOptional() && !field->isRepeated()) {
            // Where absence is not told apart, the default is not printed.
            const FieldValue& value = ours[0];
            const bool isDefault =
                value.isNumber() ? value.toDouble() == 0 : value.toText().isEmpty() && value.toBytes().isEmpty();
            if (!isDefault)
                differ(path, value.toString(false, -1, FieldValue::PlainRepresentation, false),
                       QStringLiteral("nothing"));
            return;
        }
        if (count != theirs.size()) {
            differ(path, QString::number(count), QString::number(theirs.size()) + QStringLiteral(" values"));
            return;
        }
        for (unsigned int i = 0; i < count; ++i)
            compareValue(field, ours[i], message, i, *theirs[i], path);
    }

    void compareValue(const FieldInfo* field, const FieldValue& value, const Message* message, unsigned int index,
                      const ProtocNode& node, const QString& path)
    {
        ++valuesCompared;
        if (field->getName() == QLatin1String("[unknown fields]"))
            return;
        if (node.isMessage != (value.getSubMessage() || !field->getSubFieldInfos().isEmpty())) {
            differ(path, QStringLiteral("another kind"), QString::fromUtf8(node.name));
        } else if (value.getSubMessage()) {
            compareMessage(value.getSubMessage(), node, path);
        } else if (node.isMessage) {
            for (const FieldInfo* part : field->getSubFieldInfos()) {
                const std::vector<const ProtocNode*> theirs = node.named(part->getName().toUtf8());
                const QByteArray number = theirs.empty() ? QByteArray("0") : theirs[0]->value;
                if (part->getRawString(part->getValue(message, index)).toUtf8() != number)
                    differ(path, part->getName(), QString::fromUtf8(number));
            }
        } else if (textOf(field, value, node.value) != node.value) {
            differ(path, QString::fromUtf8(textOf(field, value, node.value)), QString::fromUtf8(node.value));
        }
    }

    // The value as the decoder prints it; real numbers count as the same when they read back the same.
    static QByteArray textOf(const FieldInfo* field, const FieldValue& value, const QByteArray& theirs)
    {
        switch (value.getKind()) {
        case FieldValue::TextKind:
            return value.toText().toUtf8();
        case FieldValue::BytesKind:
            return value.toBytes();
        case FieldValue::FloatKind:
            if (static_cast<float>(theirs.toDouble()) == static_cast<float>(value.toDouble()))
                return theirs;
            break;
        case FieldValue::DoubleKind:
            if (theirs.toDouble() == value.toDouble())
                return theirs;
            break;
        default:
            break;
        }
        QByteArray text = field->getInterpretedString(value, false).toUtf8();
        if (!field->getEnumerators().isEmpty() && text.contains(" ("))
            text.truncate(text.indexOf(" ("));
        return text;
    }

    static void sortMap(const FieldInfo* field, std::vector<FieldValue>* values)
    {
        const MessageInfo* const entry = field->getType().getSubMessageInfo();
        if (!entry || !field->isRepeated() || !entry->getName().endsWith(QLatin1String("Entry")))
            return;
        const FieldInfo* const key = entry->getFieldInfo(QStringLiteral("key"));
        std::stable_sort(values->begin(), values->end(), [key](const FieldValue& left, const FieldValue& right) {
            const FieldValue a = key->getValue(left.getSubMessage(), 0);
            const FieldValue b = key->getValue(right.getSubMessage(), 0);
            return a.isNumber() ? a.toSigned() < b.toSigned() : a.toText() < b.toText();
        });
    }
};

#endif
