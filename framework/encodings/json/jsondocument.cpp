#include "jsondocument.h"

#include "jsoncheck.h"
#include "jsonscalar.h"

#include <QCoreApplication>

#include <simdjson.h>

#include <algorithm>
#include <memory>
#include <utility>

namespace ondemand = simdjson::ondemand;

namespace
{

// Where values stand can take ten times the memory of their bytes.
const int GreatestSize = 64 * 1024 * 1024;

// The parser keeps the memory that the greatest text took, so that of great ones is not kept.
const int GreatestKept = 256 * 1024;

const char Mark[] = "\xef\xbb\xbf";

JsonNode::Kind kindOf(std::string_view token)
{
    switch (token.front()) {
    case '{':
        return JsonNode::Object;
    case '[':
        return JsonNode::Array;
    case '"':
        return JsonNode::String;
    default:
        return token == "true"                                                      ? JsonNode::True
               : token == "false"                                                   ? JsonNode::False
               : token == "null"                                                    ? JsonNode::Null
               : JsonScalar::isNumber(token) || JsonScalar::isNoFiniteNumber(token) ? JsonNode::Number
                                                                                    : JsonNode::Odd;
    }
}

std::string_view trimmed(std::string_view token)
{
    while (!token.empty() && JsonScalar::isSpace(token.back()))
        token.remove_suffix(1);
    return token;
}

/** Names of one object, of which two may be the same. */
class NameSieve
{
public:
    /** Whether the name may have been there before. */
    bool add(const char* begin, const char* end)
    {
        // Of a few names hardly two have the same length and ends.
        const auto size = static_cast<unsigned>(end - begin);
        const unsigned first = size == 0 ? 0 : static_cast<unsigned char>(*begin);
        const unsigned last = size == 0 ? 0 : static_cast<unsigned char>(end[-1]);
        const unsigned middle = size == 0 ? 0 : static_cast<unsigned char>(begin[size / 2]);
        const unsigned bit = (size * 7 + first * 31 + last * 13 + middle * 5) % 256;
        quint64& word = m_words[bit / 64];
        const quint64 mask = quint64(1) << bit % 64;
        const bool known = word & mask;
        word |= mask;
        return known;
    }

private:
    quint64 m_words[4] = {};
};

} // namespace

/** Notes where the values are. */
class JsonWalker
{
public:
    explicit JsonWalker(JsonDocument* document)
        : m_document(document)
        , m_start(document->m_bytes.constData())
        , m_size(static_cast<std::size_t>(document->m_bytes.size()))
        , m_nodes(document->m_nodes)
    {
    }

    bool walk(ondemand::parser* parser)
    {
        const auto capacity = static_cast<std::size_t>(m_document->m_bytes.capacity());
        ondemand::document document;
        if (parser->iterate(simdjson::padded_string_view(m_start, m_size, capacity)).get(document))
            return false;
        std::string_view token;
        if (document.raw_json_token().get(token) || token.empty())
            return false;
        if (token.front() != '{' && token.front() != '[') {
            // Nothing is known of where a single value ends but that the bytes do.
            m_document->m_isSuspect = true;
            return addScalar(std::string_view(token.data(), m_size - offsetOf(token.data())));
        }
        ondemand::value value;
        if (document.get_value().get(value) || !add(value, 1))
            return false;
        std::size_t end = m_nodes.front().end;
        while (end < m_size && JsonScalar::isSpace(m_start[end]))
            ++end;
        m_document->m_isSuspect = m_document->m_isSuspect || end < m_size;
        return true;
    }

private:
    std::size_t offsetOf(const char* place) const { return static_cast<std::size_t>(place - m_start); }

    std::size_t append(const char* begin, const char* end, JsonNode::Kind kind)
    {
        const std::size_t number = m_nodes.size();
        m_last = number;
        m_nodes.push_back({static_cast<quint32>(offsetOf(begin)), static_cast<quint32>(offsetOf(end)),
                           static_cast<quint32>(number + 1), 0, kind});
        return number;
    }

    bool addScalar(std::string_view token)
    {
        token = trimmed(token);
        const JsonNode::Kind kind = kindOf(token);
        append(token.data(), token.data() + token.size(), kind);
        const bool isString = kind == JsonNode::String;
        if (isString && (token.size() < 2 || token.back() != '"'))
            return false;
        m_document->m_isSuspect =
            m_document->m_isSuspect || kind == JsonNode::Odd || (isString && !JsonScalar::hasOnlyPlainEscapes(token));
        return true;
    }

    bool add(ondemand::value& value, int depth)
    {
        const std::string_view token = value.raw_json_token();
        if (token.empty())
            return false;
        const JsonNode::Kind kind =
            kindOf(token.front() == '{' || token.front() == '[' ? token.substr(0, 1) : trimmed(token));
        if (kind != JsonNode::Object && kind != JsonNode::Array)
            return addScalar(token);
        const bool isObject = kind == JsonNode::Object;
        if (depth > JsonDocument::DeepestLevel)
            return addDeep(value, isObject);
        const std::size_t number = append(token.data(), token.data() + 1, kind);
        quint32 count = 0;
        if (isObject ? !addMembers(value, depth, &count) : !addElements(value, depth, &count))
            return false;
        // Where the last value in it ended.
        const char* end = count == 0 ? token.data() + 1 : m_start + m_nodes[m_last].end;
        while (JsonScalar::isSpace(*end))
            ++end;
        if (*end != (isObject ? '}' : ']'))
            return false;
        JsonNode& node = m_nodes[number];
        node.end = static_cast<quint32>(offsetOf(end)) + 1;
        node.next = static_cast<quint32>(m_nodes.size());
        node.count = count;
        m_last = number;
        return true;
    }

    bool addMembers(ondemand::value& value, int depth, quint32* count)
    {
        ondemand::object object;
        if (value.get_object().get(object))
            return false;
        NameSieve names;
        const std::size_t first = m_nodes.size();
        for (auto result : object) {
            ondemand::field field;
            if (std::move(result).get(field))
                return false;
            const char* const name = field.key().raw();
            const char* end = name;
            while (*end != '"')
                end += *end == '\\' ? 2 : 1;
            const std::size_t node = append(name - 1, end + 1, JsonNode::String);
            m_document->m_isSuspect = m_document->m_isSuspect || (names.add(name, end) && isThere(first, node)) ||
                                      std::find(name, end, '\\') != end;
            ++*count;
            if (!add(field.value(), depth + 1))
                return false;
        }
        return true;
    }

    /** Whether a name stands before that node as well; of very many names this is only supposed. */
    bool isThere(std::size_t first, std::size_t node) const
    {
        const std::size_t greatestCompared = 1000;
        if (node - first > greatestCompared)
            return true;
        const std::string_view name = m_document->getRaw(static_cast<quint32>(node));
        for (std::size_t other = first; other < node; other = m_nodes[other + 1].next)
            if (m_document->getRaw(static_cast<quint32>(other)) == name)
                return true;
        return false;
    }

    bool addElements(ondemand::value& value, int depth, quint32* count)
    {
        ondemand::array array;
        if (value.get_array().get(array))
            return false;
        for (auto result : array) {
            ondemand::value element;
            if (std::move(result).get(element) || !add(element, depth + 1))
                return false;
            ++*count;
        }
        return true;
    }

    bool addDeep(ondemand::value& value, bool isObject)
    {
        std::string_view raw;
        ondemand::object object;
        ondemand::array array;
        if (isObject ? value.get_object().get(object) || object.raw_json().get(raw)
                     : value.get_array().get(array) || array.raw_json().get(raw))
            return false;
        m_document->m_isSuspect = true;
        raw = trimmed(raw);
        append(raw.data(), raw.data() + raw.size(), JsonNode::Odd);
        return true;
    }

    JsonDocument* m_document;
    const char* m_start;
    std::size_t m_size;
    std::vector<JsonNode>& m_nodes;
    std::size_t m_last = 0; // the value that was read to its end last
};

JsonDocument::JsonDocument(const QByteArray& bytes)
    : m_skipped(bytes.startsWith(Mark) ? int(sizeof(Mark)) - 1 : 0)
    , m_isSuspect(false)
{
    m_bytes = m_skipped > 0 ? bytes.mid(m_skipped) : bytes;
    if (m_bytes.size() > GreatestSize) {
        m_bytes.clear();
        m_problems.append(
            QCoreApplication::translate("JsonDocument", "not decoded: longer than %1 bytes").arg(GreatestSize));
        return;
    }
    if (read())
        return;
    m_isSuspect = false;
    m_skipped = -1;
    const JsonCheck check(m_bytes);
    m_problems = check.getProblems();
    m_bytes = check.getRepaired();
    if (m_problems.isEmpty() || (!m_bytes.isEmpty() && !read()))
        m_problems.append(QCoreApplication::translate("JsonDocument", "cannot be read to its end"));
    m_isSuspect = false;
}

bool JsonDocument::read()
{
    m_nodes.clear();
    // Whoever shares the bytes keeps them; the parser reads beyond their end.
    const int needed = int(m_bytes.size()) + int(simdjson::SIMDJSON_PADDING);
    if (m_bytes.capacity() < needed)
        m_bytes.reserve(needed);
    bool good = false;
    if (m_bytes.size() <= GreatestKept) {
        static thread_local ondemand::parser parser;
        good = JsonWalker(this).walk(&parser);
    } else {
        const std::unique_ptr<ondemand::parser> parser(new ondemand::parser);
        good = JsonWalker(this).walk(parser.get());
    }
    if (!good)
        m_nodes.clear();
    return good;
}

std::string_view JsonDocument::getRaw(quint32 node) const
{
    const JsonNode& found = m_nodes[node];
    return std::string_view(m_bytes.constData() + found.begin, found.end - found.begin);
}

QString JsonDocument::getText(quint32 node) const
{
    const std::string_view raw = getRaw(node);
    if (m_nodes[node].kind != JsonNode::String)
        return QString::fromUtf8(raw.data(), static_cast<int>(raw.size()));
    return JsonScalar::decode(raw.substr(1, raw.size() - 2));
}

std::string_view JsonDocument::getPlain(quint32 node) const
{
    const std::string_view raw = getRaw(node);
    return raw.find('\\') == raw.npos ? raw.substr(1, raw.size() - 2) : std::string_view();
}

quint32 JsonDocument::findMember(quint32 object, const char* name) const
{
    quint32 found = 0;
    if (isEmpty() || at(object).kind != JsonNode::Object)
        return found;
    const QString wanted = QString::fromUtf8(name);
    for (quint32 node = object + 1; node < at(object).next; node = at(node + 1).next)
        if (getText(node) == wanted)
            found = node + 1;
    return found;
}

const QStringList& JsonDocument::getProblems() const
{
    if (m_isSuspect) {
        m_isSuspect = false;
        m_problems = JsonCheck(m_bytes).getProblems();
    }
    return m_problems;
}
