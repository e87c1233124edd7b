#include "jsoncheck.h"

#include "jsondocument.h"
#include "jsonscalar.h"
#include "utf8text.h"

namespace
{

const int GreatestProblemCount = 20;

// Of a name in what is told.
const int LongestName = 100;

bool endsScalar(char character)
{
    return JsonScalar::isSpace(character) || character == ',' || character == ':' || character == ']' ||
           character == '}' || character == '[' || character == '{' || character == '"';
}

} // namespace

JsonCheck::JsonCheck(const QByteArray& text)
    : m_text(text)
    , m_place(0)
    , m_state(AtValue)
    , m_isDone(false)
    , m_good(0)
    , m_firstPlace(-1)
{
    m_repaired.reserve(int(text.size()));
    while (!m_isDone && step()) {
    }
    m_repaired.truncate(m_good);
    if (m_isDone) {
        skipSpace();
        if (m_place < m_text.size())
            fail(m_place, tr("%1 bytes follow the end; they are not decoded").arg(m_text.size() - m_place));
        return;
    }
    for (int i = int(m_open.size()) - 1; i >= 0; --i)
        m_repaired.append(m_open.at(i) == '{' ? '}' : ']');
}

bool JsonCheck::step()
{
    skipSpace();
    if (m_place >= m_text.size())
        return fail(m_place, m_open.isEmpty() ? tr("there is nothing") : tr("it ends before what is open was closed"));
    switch (m_state) {
    case AtFirstElement:
        if (m_text.at(m_place) == ']')
            return close();
        if (!isDeep())
            m_levels.back().index = 0;
        return beginValue();
    case AtFirstName:
        if (m_text.at(m_place) == '}')
            return close();
        return readName();
    case AtName:
        return readName();
    case AtValue:
        return beginValue();
    case BehindValue:
        break;
    }
    return goOn();
}

bool JsonCheck::goOn()
{
    const char character = m_text.at(m_place);
    if (character == (isInObject() ? '}' : ']'))
        return close();
    if (character != ',')
        return fail(m_place, tr("a comma or the end of what is open was expected; the rest is not decoded"));
    m_repaired.append(',');
    ++m_place;
    if (!isInObject() && !isDeep())
        ++m_levels.back().index;
    m_state = isInObject() ? AtName : AtValue;
    return true;
}

bool JsonCheck::readName()
{
    const int begin = m_place;
    QString name;
    if (m_text.at(m_place) != '"')
        return fail(m_place, tr("the name of a member was expected; the rest is not decoded"));
    if (!readString(&name))
        return false;
    skipSpace();
    if (m_place >= m_text.size() || m_text.at(m_place) != ':')
        return fail(begin, tr("a name without a value; the rest is not decoded"));
    m_repaired.append(':');
    ++m_place;
    m_state = AtValue;
    if (isDeep())
        return true;
    Level& level = m_levels.back();
    level.name = name;
    if (level.names.contains(name))
        fail(begin, tr("the name is there more than once; the last value is shown"));
    level.names.insert(name);
    return true;
}

bool JsonCheck::beginValue()
{
    switch (m_text.at(m_place)) {
    case '{':
        return open(true);
    case '[':
        return open(false);
    case '"':
        return readString(nullptr) && endValue();
    default:
        return readScalar();
    }
}

bool JsonCheck::open(bool isObject)
{
    if (m_open.size() == JsonDocument::DeepestLevel)
        fail(m_place, tr("nested more than %1 deep; it is shown as it came").arg(int(JsonDocument::DeepestLevel)));
    m_repaired.append(isObject ? '{' : '[');
    m_good = int(m_repaired.size());
    m_open.append(isObject ? '{' : '[');
    if (m_open.size() <= JsonDocument::DeepestLevel)
        m_levels.push_back(Level{QSet<QString>(), QString(), -1});
    ++m_place;
    m_state = isObject ? AtFirstName : AtFirstElement;
    return true;
}

bool JsonCheck::close()
{
    m_repaired.append(m_text.at(m_place));
    ++m_place;
    if (!isDeep())
        m_levels.pop_back();
    m_open.chop(1);
    return endValue();
}

bool JsonCheck::endValue()
{
    m_good = int(m_repaired.size());
    m_state = BehindValue;
    m_isDone = m_open.isEmpty();
    return true;
}

bool JsonCheck::readScalar()
{
    const int begin = m_place;
    while (m_place < m_text.size() && !endsScalar(m_text.at(m_place)))
        ++m_place;
    if (m_place == begin)
        return fail(begin, tr("a value was expected; the rest is not decoded"));
    const std::string_view token(m_text.constData() + begin, std::size_t(m_place - begin));
    if (token != "true" && token != "false" && token != "null" && !JsonScalar::isNumber(token) &&
        !JsonScalar::isNoFiniteNumber(token))
        fail(begin, tr("no value of JSON, shown as it is"));
    copyString(begin, m_place);
    return endValue();
}

/** Goes behind a string and copies it; false when it does not end. */
bool JsonCheck::readString(QString* decoded)
{
    const int begin = m_place;
    int end = begin + 1;
    while (end < m_text.size() && m_text.at(end) != '"')
        end += m_text.at(end) == '\\' ? 2 : 1;
    if (end >= m_text.size())
        return fail(begin, tr("a text does not end; it is not decoded"));
    m_place = end + 1;
    QString problem;
    const QString text =
        JsonScalar::decode(std::string_view(m_text.constData() + begin + 1, std::size_t(end - begin - 1)), &problem);
    if (!problem.isEmpty())
        fail(begin, problem);
    if (decoded)
        *decoded = text;
    copyString(begin, m_place);
    return true;
}

/** Copies a string with its quotes, or a single value, so that a parser takes it. */
void JsonCheck::copyString(int begin, int end)
{
    bool isUtf8 = true;
    bool isPlain = true;
    for (int i = begin; i < end;) {
        const int size = Utf8Text::characterSize(m_text.constData() + i, end - i);
        const bool isControl = static_cast<unsigned char>(m_text.at(i)) < ' ';
        if (size == 0 && isUtf8)
            fail(i, tr("not valid UTF-8; wrong bytes are shown as question marks"));
        if (isControl && isPlain)
            fail(i, tr("a control character without an escape"));
        isUtf8 = isUtf8 && size != 0;
        isPlain = isPlain && !isControl;
        if (size == 0)
            m_repaired.append('?');
        else if (isControl)
            m_repaired.append("\\u00" + QByteArray::number(m_text.at(i), 16).rightJustified(2, '0'));
        else
            m_repaired.append(m_text.constData() + i, size);
        i += size == 0 ? 1 : size;
    }
}

void JsonCheck::skipSpace()
{
    while (m_place < m_text.size() && JsonScalar::isSpace(m_text.at(m_place)))
        ++m_place;
}

QString JsonCheck::where(int place) const
{
    QString path;
    for (const Level& level : m_levels) {
        if (!level.name.isEmpty())
            path += (path.isEmpty() ? QString() : QStringLiteral(".")) + level.name.left(LongestName);
        else if (level.index >= 0)
            path += QStringLiteral("[%1]").arg(level.index);
    }
    return path.isEmpty() ? tr("byte %1: ").arg(place) : tr("%1 at byte %2: ").arg(path).arg(place);
}

bool JsonCheck::fail(int place, const QString& text)
{
    if (m_problems.isEmpty())
        m_firstPlace = place;
    if (m_problems.size() < GreatestProblemCount)
        m_problems.append(where(place) + text);
    else if (m_problems.size() == GreatestProblemCount)
        m_problems.append(tr("and more"));
    return false;
}
