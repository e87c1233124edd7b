#include "selection.h"

#include "fieldinfo.h"
#include "formatregistry.h"
#include "messageinfo.h"
#include "pathexpression.h"

#include <algorithm>
#include <utility>

static QString keyOf(const FieldPath& path)
{
    QStringList names;
    for (const FieldPath::Step& step : path.getSteps()) {
        const bool isNumbered = step.index >= 0 && step.field->isRepeated();
        names.append(step.field->getName() + (isNumbered ? QStringLiteral("[%1]").arg(step.index) : QString()));
    }
    return names.join(QLatin1Char('/'));
}

// What is printed under one key is the same for "[*]" as for no index.
static bool contains(const QVector<Selection::Field>& fields, const Selection::Field& field)
{
    const auto isSame = [](const FieldPath::Step& one, const FieldPath::Step& other) {
        return one.field == other.field;
    };
    return std::any_of(fields.begin(), fields.end(), [&](const Selection::Field& other) {
        const QVector<FieldPath::Step>& steps = other.path.getSteps();
        return other.key == field.key && std::equal(steps.begin(), steps.end(), field.path.getSteps().begin(),
                                                    field.path.getSteps().end(), isSame);
    });
}

bool Selection::setUp(const QStringList& expressions, const QVector<const FormatInfo*>& formats, bool complete,
                      QString* error)
{
    for (const FormatInfo* format : formats)
        FormatRegistry::getInstance()->addFormat(format);
    m_expressions = expressions;
    m_all = expressions.isEmpty();
    if (!resolve(error))
        return false;
    if (complete)
        *error = m_complaint;
    return !complete || m_complaint.isEmpty();
}

bool Selection::has(const MessageInfo* info)
{
    if (m_all)
        return true;
    if (!m_seen.contains(info)) {
        m_seen.insert(info);
        FormatRegistry::getInstance()->addFormat(info->getFormatInfo()); // ignores one that it knows
        QString error;                                                   // was looked for when it was set up
        resolve(&error);
    }
    return m_fields.contains(info);
}

/** Finds what the expressions name among the types that there are now; false when one is malformed. */
bool Selection::resolve(QString* error)
{
    m_fields.clear();
    m_complaint.clear();
    QSet<const MessageInfo*> whole;
    for (const QString& text : std::as_const(m_expressions)) {
        PathExpression expression;
        expression.setConsiderSubMessages(true);
        expression.setString(text);
        if (!expression.errorString().isEmpty()) {
            *error = QStringLiteral("--select \"%1\": %2").arg(text, expression.errorString());
            return false;
        }
        const bool named = !expression.getString(PathExpression::FieldPart | PathExpression::IndexPart).isEmpty();
        const QVector<const MessageInfo*> infos = expression.getMatchingMessageInfos();
        if (infos.isEmpty() && m_complaint.isEmpty())
            m_complaint = QStringLiteral("--select \"%1\" names nothing in the definitions").arg(text);
        if (named) {
            const QVector<FieldPath> paths = expression.getMatches();
            for (const FieldPath& path : paths) {
                const Field field{path, keyOf(path)};
                QVector<Field>& fields = m_fields[path.getMessageInfo()];
                if (!contains(fields, field))
                    fields.append(field);
            }
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
    return true;
}
