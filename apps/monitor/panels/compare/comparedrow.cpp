#include "comparedrow.h"

#include "fieldinfo.h"
#include "fieldwalk.h"
#include "messageinfo.h"
#include "valuetext.h"

#include <QStringList>

static const int MostLines = 2000; // below a row; more nobody compares by eye
static const int MostCompared = 1000;
static const int MostShown = 20;
static const int MostMessages = 20; // of a repeated sub-message
static const int MostCharacters = 200;
static const int MostDepth = 16;

namespace
{

class Reader
{
public:
    explicit Reader(const Message* message)
        : m_message(message)
    {
    }

    void add(const FieldPath& path, const QString& name, int depth);
    QVector<ComparedRow::Value> take() { return std::move(m_values); }

private:
    void addInner(const FieldPath& path, const FieldInfo* field, const QString& name, int depth);
    ComparedRow::Value readValue(const FieldPath& path, const QString& name) const;

    const Message* m_message;
    QVector<ComparedRow::Value> m_values;
};

const MessageInfo* innerType(const FieldPath& path)
{
    const FieldInfo* const field = path.getField();
    return field ? field->getType().getSubMessageInfo() : path.getMessageInfo();
}

void Reader::add(const FieldPath& path, const QString& name, int depth)
{
    const MessageInfo* const inner = path.isWholeRepeatedField() ? nullptr : innerType(path);
    const FieldWalk::End end = FieldWalk(path, m_message).getEnd();
    if (!inner || depth > MostDepth || (end != FieldWalk::OneValue && end != FieldWalk::WholeMessage)) {
        m_values.append(readValue(path, name));
        return;
    }
    const QVector<const FieldInfo*> fields = inner->getFieldInfos();
    for (const FieldInfo* const field : fields) {
        if (m_values.size() >= MostLines)
            return;
        addInner(path, field, name.isEmpty() ? field->getName() : name + QLatin1Char('.') + field->getName(), depth);
    }
}

void Reader::addInner(const FieldPath& path, const FieldInfo* field, const QString& name, int depth)
{
    FieldPath whole = path;
    whole.append(field);
    const unsigned int count = FieldWalk(whole, m_message).getCount();
    if (!field->isRepeated() || !field->getType().getSubMessageInfo() || count == 0) {
        add(whole, name, depth + 1);
        return;
    }
    for (unsigned int i = 0; i < count && i < MostMessages; ++i) {
        FieldPath one = path;
        one.append(field, int(i));
        add(one, QStringLiteral("%1[%2]").arg(name).arg(i), depth + 1);
    }
    if (count > MostMessages) // so that a longer one is another
        m_values.append({name, ComparedRow::tr("%1 in all").arg(count), QString::number(count), false});
}

ComparedRow::Value Reader::readValue(const FieldPath& path, const QString& name) const
{
    ComparedRow::Value value = {name, QString(QChar(0x2013)), QString(), false};
    const FieldWalk walk(path, m_message);
    const FieldInfo* const field = walk.getField();
    QStringList texts;
    QStringList raw;
    switch (walk.getEnd()) {
    case FieldWalk::Hidden:
        value.text = ComparedRow::tr("Hidden data");
        value.isHidden = true;
        break;
    case FieldWalk::OneValue:
        value.exact = field->getRawString(walk.getValue());
        value.text = field->getInterpretedString(walk.getValue(), true);
        break;
    case FieldWalk::AllValues:
        if (field->isStringField()) {
            value.exact = value.text = field->getStringValue(walk.getHolder());
            break;
        }
        for (unsigned int i = 0; i < walk.getCount() && i < MostCompared; ++i) {
            raw.append(field->getRawString(walk.getValue(i)));
            if (i < MostShown)
                texts.append(field->getInterpretedString(walk.getValue(i), true));
        }
        value.text = texts.join(QLatin1String(", "));
        if (walk.getCount() > MostShown)
            value.text += QStringLiteral(" \u2026 (%1)").arg(walk.getCount());
        value.exact = raw.join(QLatin1Char(' ')) + QStringLiteral(" (%1)").arg(walk.getCount());
        break;
    default:
        break;
    }
    value.text = ValueText::bounded(value.text, MostCharacters, MostCharacters);
    value.text.replace(QLatin1Char('\n'), QChar(0x21b5));
    return value;
}

} // namespace

QVector<ComparedRow::Value> ComparedRow::read(const FieldPath& path, const Message* message)
{
    Reader reader(message);
    reader.add(path, QString(), 0);
    return reader.take();
}
