#include "fieldsummary.h"

#include "corvel.h"
#include "fieldinfo.h"
#include "message.h"
#include "messageinfo.h"
#include "valuetext.h"

#include <QCoreApplication>
#include <QSet>
#include <QStringList>

static const int PositionDecimals = 7; // of a degree: a centimetre
static const int MostValues = 8;       // of a message
static const int MostElements = 4;     // of an array
static const int MostCharacters = 40;  // of a text
static const int DeepestLevel = 4;

// Five digits of a latitude are a hundred metres.
static bool isPosition(const FieldInfo* field)
{
    const QString name = field->getName().toLower();
    for (const char* const word : {"latitude", "longitude"})
        if (name.endsWith(QLatin1String(word)))
            return true;
    for (const char* const word : {"lat", "lon", "lng"})
        if (name == QLatin1String(word) || name.startsWith(QLatin1String(word) + QLatin1Char('_')))
            return true;
    return false;
}

QString FieldSummary::shorter(const QString& number, const FieldInfo* field, int digits)
{
    // Scaled ones have the digits that their description says, and where the user wants decimals these are all.
    const bool isExact = field->getScaleFactor() != 1 || Corvel::floatingPointDecimals() >= 0;
    return isExact ? number : ValueText::rounded(number, digits, isPosition(field) ? PositionDecimals : 0);
}

namespace
{

/** Gathers values until there are enough for a line. */
class Line
{
public:
    explicit Line(int digits)
        : m_digits(digits)
    {
    }

    void add(const Message* message, const QString& before, int level)
    {
        const QVector<const FieldInfo*> fields = message->getInfo()->getFieldInfos();
        QVector<const FieldInfo*> last;
        for (const FieldInfo* const field : fields) {
            // What every message has, and seldom says what it is about.
            const bool isHeader = field->getName() == QLatin1String("header") && field->getType().getSubMessageInfo();
            if (isHeader || field->getRole() == FieldInfo::SecondaryRole || field->getRole() == FieldInfo::AddressRole)
                last.append(field);
            else
                addField(message, field, before, level);
        }
        for (const FieldInfo* const field : std::as_const(last))
            addField(message, field, before, level);
    }

    QString toString() const
    {
        return m_texts.join(QStringLiteral("   ")) + (m_isFull ? QStringLiteral("   \u2026") : QString());
    }

private:
    void addField(const Message* message, const FieldInfo* field, const QString& before, int level)
    {
        const unsigned int count = m_isFull ? 0 : field->getValueCount(message);
        if (count == 0 || field->getName().startsWith(QLatin1Char('[')))
            return;
        const QString name = before + field->getName();
        if (Corvel::isHidden(field)) {
            append(name, QCoreApplication::translate("FieldSummary", "Hidden data"));
            return;
        }
        if (field->isStringField()) {
            append(name, shown(field->getStringValue(message)));
            return;
        }
        const FieldValue value = field->getValue(message, 0);
        const Message* const part = value.getSubMessage();
        if (part && field->isRepeated())
            append(name, QStringLiteral("\u00d7 %1").arg(count));
        else if (part && level < DeepestLevel)
            add(part, name + QLatin1Char('.'), level + 1);
        else if (field->isRepeated())
            append(name, elements(message, field, count));
        else if (value.isValid() && !part && !field->isNotAvailable(value))
            append(name, textOf(field, value));
    }

    QString elements(const Message* message, const FieldInfo* field, unsigned int count) const
    {
        QStringList texts;
        for (unsigned int i = 0; i < count && i < MostElements; ++i)
            texts.append(textOf(field, field->getValue(message, i)));
        if (count > MostElements)
            texts.append(QChar(0x2026));
        return QLatin1Char('[') + texts.join(QStringLiteral(", ")) + QLatin1Char(']');
    }

    QString textOf(const FieldInfo* field, const FieldValue& value) const
    {
        ValueText text = ValueText::split(field->getInterpretedString(value, true));
        text.number = FieldSummary::shorter(text.number, field, m_digits);
        if (text.number.isEmpty())
            return shown(text.unit);
        return text.unit.isEmpty() ? text.number : text.number + QLatin1Char(' ') + text.unit;
    }

    static QString shown(QString text)
    {
        if (text.size() > MostCharacters)
            text = text.left(MostCharacters) + QChar(0x2026);
        return text.replace(QLatin1Char('\n'), QChar(0x21b5));
    }

    void append(const QString& name, const QString& text)
    {
        m_isFull = m_texts.size() == MostValues;
        if (!m_isFull)
            m_texts.append(name + QLatin1Char(' ') + text);
    }

    const int m_digits;
    QStringList m_texts;
    bool m_isFull = false;
};

bool hasHiddenIn(const MessageInfo* info, QSet<const MessageInfo*>* known)
{
    if (!info || known->contains(info))
        return false;
    known->insert(info); // types can contain themselves
    const QVector<const FieldInfo*> fields = info->getFieldInfos();
    for (const FieldInfo* const field : fields) {
        const QVector<const FieldInfo*> parts = field->getSubFieldInfos();
        for (const FieldInfo* const part : parts)
            if (Corvel::isHidden(part))
                return true;
        if (Corvel::isHidden(field) || hasHiddenIn(field->getType().getSubMessageInfo(), known))
            return true;
    }
    return false;
}

} // namespace

QString FieldSummary::lineOf(const Message* message, int digits)
{
    Line line(digits);
    line.add(message, QString(), 0);
    return line.toString();
}

bool FieldSummary::hasHidden(const MessageInfo* info)
{
    QSet<const MessageInfo*> known;
    return !Corvel::confidentialInformationDisplayEnabled() && hasHiddenIn(info, &known);
}
