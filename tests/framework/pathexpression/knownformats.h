#ifndef KNOWNFORMATS_H
#define KNOWNFORMATS_H

#include "flagfieldinfo.h"
#include "pathfixtures.h"
#include "textrows.h"

typedef PathExpression::Parts Parts;

/** Two formats of one name, two types of one name, flags, sub-messages, repeated fields. */
class Formats
{
public:
    Formats()
        : link(text("link"))
        , sense(text("sense"))
        , again(text("link"))
    {
        MessageInfo* attitude = addTestType(&link, "ATTITUDE", "time roll rollspeed pitch");
        Q_UNUSED(attitude);
        MessageInfo* battery = addTestType(&link, "BATTERY", "time Roll");
        battery->addField(new TestFieldInfo(text("voltages"), TestFieldInfo::Repeated));
        TestFieldInfo* mode = new TestFieldInfo(text("mode"));
        QVector<FieldInfo::Enumerator> flags;
        flags << FieldInfo::Enumerator(1, text("ARMED")) << FieldInfo::Enumerator(2, text("AUTO"));
        mode->setEnumerators(flags, true);
        FlagFieldInfo::addFlagsTo(mode);
        battery->addField(mode);
        addTestType(&link, "ATTITUDE", "roll roll");
        addTestType(&link, "PING", "");

        MessageInfo* vector = addTestType(&sense, "Vector", "x y", false);
        MessageInfo* base = addTestType(&sense, "Base", "", false);
        addSub(base, "position", vector);
        addSub(base, "speed", vector);
        MessageInfo* view = addTestType(&sense, "View", "time");
        addSub(view, "object", base, TestFieldInfo::Repeated);
        addSub(view, "host", base);

        addTestType(&again, "ATTITUDE", "roll");
        FormatRegistry::getInstance()->addFormat(&link);
        FormatRegistry::getInstance()->addFormat(&sense);
        FormatRegistry::getInstance()->addFormat(&again);
    }

    static void addSub(MessageInfo* info, const char* name, const MessageInfo* type, int flags = 0)
    {
        info->addField(new TestFieldInfo(text(name), flags, FieldType(type)));
    }

    FormatInfo link;
    FormatInfo sense;
    FormatInfo again;
};

/** "0.ATTITUDE.roll": the number of the format in the registry, the type and the field. */
inline QString nameOf(const MessageInfo* info)
{
    const int format = FormatRegistry::getInstance()->getFormatInfos().indexOf(info->getFormatInfo());
    return QString::number(format) + QLatin1Char('.') + info->getName();
}

inline QString nameOf(const FieldInfo* info)
{
    const FieldInfo* parent = info->getParentFieldInfo();
    return (parent ? nameOf(parent) : nameOf(info->getMessageInfos().first())) + QLatin1Char('.') + info->getName();
}

template <typename Info>
QString namesOf(const QVector<const Info*>& infos)
{
    QStringList names;
    Q_FOREACH (const Info* info, infos)
        names << nameOf(info);
    return names.join(QLatin1String(" "));
}

inline QString matchesOf(const PathExpression& expression)
{
    return namesOf(expression.getMatchingMessageInfos()) + QLatin1String(" | ") +
           namesOf(expression.getMatchingFieldInfos());
}

/** Takes the parts off @p given, a number and a blank before the text of an expression. */
inline Parts takeParts(QString* given)
{
    const int blank = given->indexOf(QLatin1Char(' '));
    const Parts parts(given->left(blank).toInt());
    given->remove(0, blank + 1);
    return parts;
}

inline QString optionsOf(const PathExpression& expression, int parts)
{
    return expression.getMatchingExpressionsStringList(Parts(parts)).join(QLatin1String(" "));
}

#endif
