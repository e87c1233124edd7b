#include "selection.h"

#include "fieldinfo.h"
#include "formatregistry.h"
#include "messageinfo.h"
#include "pathexpression.h"

#include <algorithm>

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

/** The senders that @p pattern names: a star stands for any characters. */
static QRegularExpression sendersOf(const QString& pattern)
{
    QStringList pieces;
    for (const QString& piece : pattern.split(QLatin1Char('*')))
        pieces.append(QRegularExpression::escape(piece));
    return QRegularExpression(QStringLiteral("\\A%1\\z").arg(pieces.join(QLatin1String(".*"))),
                              QRegularExpression::DotMatchesEverythingOption);
}

bool Selection::setUp(const QStringList& expressions, const QVector<const FormatInfo*>& formats, bool complete,
                      QString* error)
{
    for (const FormatInfo* format : formats)
        FormatRegistry::getInstance()->addFormat(format);
    for (const QString& given : expressions) {
        Expression expression;
        expression.given = given;
        const QString mark = QStringLiteral(" @ ");
        const QString spaced = QLatin1Char(' ') + given; // also for a sender alone
        const int at = int(spaced.lastIndexOf(mark));
        expression.path = spaced.mid(1, at < 0 ? -1 : qMax(0, at - 1)).trimmed();
        if (at >= 0)
            expression.sender = sendersOf(spaced.mid(at + int(mark.size())).trimmed());
        m_expressions.append(expression);
    }
    if (!resolve(error))
        return false;
    if (complete)
        *error = m_complaint;
    return !complete || m_complaint.isEmpty();
}

Selection::Choice Selection::choose(const MessageInfo* info, const QString& sender)
{
    Choice choice;
    choice.isPrinted = m_expressions.isEmpty();
    if (choice.isPrinted)
        return choice;
    if (!m_seen.contains(info)) {
        m_seen.insert(info);
        FormatRegistry::getInstance()->addFormat(info->getFormatInfo()); // ignores one that it knows
        QString error;                                                   // was looked for when it was set up
        resolve(&error);
    }
    bool isWhole = false;
    for (const Named& named : m_named.value(info)) {
        Expression& expression = m_expressions[named.expression];
        if (!expression.sender.pattern().isEmpty() && !expression.sender.match(sender).hasMatch())
            continue;
        expression.isMet = true;
        choice.isPrinted = true;
        isWhole = isWhole || named.fields.isEmpty();
        for (const Field& field : named.fields)
            if (!contains(choice.fields, field))
                choice.fields.append(field);
    }
    // A type that is also named without a field is printed with all its fields.
    if (isWhole)
        choice.fields.clear();
    return choice;
}

QString Selection::getComplaint() const
{
    if (!m_complaint.isEmpty())
        return m_complaint;
    for (const Expression& expression : m_expressions)
        if (!expression.isMet && !expression.sender.pattern().isEmpty())
            return QStringLiteral("--select \"%1\": nothing of it came from such a sender").arg(expression.given);
    return QString();
}

/** Finds what the expressions name among the types that there are now; false when one is malformed. */
bool Selection::resolve(QString* error)
{
    m_named.clear();
    m_complaint.clear();
    for (int i = 0; i < m_expressions.size(); ++i) {
        const QString& text = m_expressions.at(i).given;
        PathExpression expression;
        expression.setConsiderSubMessages(true);
        expression.setString(m_expressions.at(i).path);
        if (!expression.errorString().isEmpty()) {
            *error = QStringLiteral("--select \"%1\": %2").arg(text, expression.errorString());
            return false;
        }
        const bool namesFields = !expression.getString(PathExpression::FieldPart | PathExpression::IndexPart).isEmpty();
        const QVector<const MessageInfo*> infos = expression.getMatchingMessageInfos();
        if (infos.isEmpty() && m_complaint.isEmpty())
            m_complaint = QStringLiteral("--select \"%1\" names nothing in the definitions").arg(text);
        for (const MessageInfo* info : infos)
            m_named[info].append(Named{i, {}});
        if (!namesFields)
            continue;
        const QVector<FieldPath> paths = expression.getMatches();
        for (const FieldPath& path : paths) {
            QVector<Named>& named = m_named[path.getMessageInfo()];
            if (named.isEmpty() || named.last().expression != i)
                named.append(Named{i, {}});
            named.last().fields.append(Field{path, keyOf(path)});
        }
    }
    return true;
}
