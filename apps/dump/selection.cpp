#include "selection.h"

#include "fieldinfo.h"
#include "formatregistry.h"

#include <QSet>

#include <utility>

static QString keyOf(const PathExpression::Match& match)
{
    QStringList names;
    for (int i = 0; i < match.fieldInfos.size(); ++i) {
        QString name = match.fieldInfos.at(i)->getName();
        if (match.indexes.at(i) >= 0)
            name += QStringLiteral("[%1]").arg(match.indexes.at(i));
        names.append(name);
    }
    return names.join(QLatin1Char('/'));
}

bool Selection::setUp(const QStringList& expressions, const FormatInfo* format, QString* error)
{
    FormatRegistry::getInstance()->addFormat(format);
    QSet<const MessageInfo*> whole;
    for (const QString& text : expressions) {
        PathExpression expression;
        expression.setConsiderSubMessages(true);
        expression.setString(text);
        if (!expression.errorString().isEmpty()) {
            *error = QStringLiteral("--select \"%1\": %2").arg(text, expression.errorString());
            return false;
        }
        const bool named = !expression.getString(PathExpression::FieldPart | PathExpression::IndexPart).isEmpty();
        const QVector<const MessageInfo*> infos = expression.getMatchingMessageInfos();
        if (infos.isEmpty()) {
            *error = QStringLiteral("--select \"%1\" names nothing in the definitions").arg(text);
            return false;
        }
        if (named) {
            const QVector<PathExpression::Match> matches = expression.getMatches();
            for (const PathExpression::Match& match : matches)
                m_fields[match.messageInfo].append(Field{match, keyOf(match)});
        }
        for (const MessageInfo* info : infos) {
            m_fields[info];
            if (!named)
                whole.insert(info);
        }
    }
    // A type that is also named without a field is printed with all its fields.
    for (const MessageInfo* info : std::as_const(whole))
        m_fields[info].clear();
    m_all = expressions.isEmpty();
    return true;
}
