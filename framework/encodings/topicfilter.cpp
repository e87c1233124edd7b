#include "topicfilter.h"

#include <QCoreApplication>
#include <QStringList>

namespace
{

struct Style
{
    QChar separator;
    QString one;      // level
    QString rest;     // levels
    bool isRestEmpty; // whether the rest can be nothing
};

Style styleOf(const QString& filter)
{
    const bool isSubject = filter.contains(QLatin1Char('*')) || filter.contains(QLatin1Char('>'));
    return isSubject ? Style{QLatin1Char('.'), QStringLiteral("*"), QStringLiteral(">"), false}
                     : Style{QLatin1Char('/'), QStringLiteral("+"), QStringLiteral("#"), true};
}

} // namespace

bool TopicFilter::matches(const QString& filter, const QString& topic)
{
    const Style style = styleOf(filter);
    const QStringList wanted = filter.split(style.separator);
    const QStringList levels = topic.split(style.separator);
    // What a server says of itself is not meant by "everything".
    if (topic.startsWith(QLatin1Char('$')) && (wanted.constFirst() == style.one || wanted.constFirst() == style.rest))
        return false;
    for (int i = 0; i < wanted.size(); ++i) {
        if (wanted.at(i) == style.rest)
            return style.isRestEmpty || i < levels.size();
        if (i >= levels.size() || (wanted.at(i) != style.one && wanted.at(i) != levels.at(i)))
            return false;
    }
    return wanted.size() == levels.size();
}

QString TopicFilter::describeFault(const QString& filter)
{
    const Style style = styleOf(filter);
    const QStringList levels = filter.split(style.separator);
    if (filter.isEmpty())
        return QCoreApplication::translate("TopicFilter", "the filter of topics is empty");
    for (int i = 0; i < levels.size(); ++i) {
        const QString& level = levels.at(i);
        if ((level.contains(style.one) && level != style.one) || (level.contains(style.rest) && level != style.rest))
            return QCoreApplication::translate("TopicFilter", "\"%1\": a wildcard stands for whole levels").arg(level);
        if (level == style.rest && i + 1 < levels.size())
            return QCoreApplication::translate("TopicFilter", "\"%1\" stands only at the end").arg(level);
    }
    return QString();
}
