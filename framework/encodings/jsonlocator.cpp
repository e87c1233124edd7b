#include "jsonlocator.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <cstring>

namespace
{

/** An object or array that the scan is within. */
struct Level
{
    bool isObject;
    bool expectsKey;  // of an object
    bool atNewMember; // of an array: the next character begins an element
    int index;
    QString key;

    QString name() const { return isObject ? key : QString::number(index); }
};

QString pathKey(const QStringList& path)
{
    return path.join(QChar(0x1f));
}

QString pathKey(const QVector<Level>& levels)
{
    QStringList path;
    for (const Level& level : levels)
        path.append(level.name());
    return pathKey(path);
}

// Takes care of escapes.
QString stringOf(const QByteArray& quoted)
{
    return QJsonDocument::fromJson('[' + quoted + ']').array().at(0).toString();
}

int endOfString(const QByteArray& text, int begin)
{
    int end = begin + 1;
    while (end < text.size() && text.at(end) != '"')
        end += text.at(end) == '\\' ? 2 : 1;
    return end;
}

} // namespace

JsonLocator::JsonLocator(const QByteArray& text)
{
    QVector<Level> levels;
    int line = 1;
    for (int i = 0; i < text.size(); ++i) {
        const char character = text.at(i);
        if (character == '\n')
            ++line;
        if (std::strchr(" \t\r\n", character))
            continue;
        if (!levels.isEmpty() && levels.last().atNewMember) {
            levels.last().atNewMember = false;
            m_lines.insert(pathKey(levels), line);
        }
        switch (character) {
        case '{':
            levels.append({true, true, false, 0, QString()});
            break;
        case '[':
            levels.append({false, false, true, 0, QString()});
            break;
        case '}':
        case ']':
            if (!levels.isEmpty())
                levels.removeLast();
            break;
        case ',':
            if (!levels.isEmpty()) {
                Level& level = levels.last();
                level.expectsKey = level.isObject;
                level.atNewMember = !level.isObject;
                ++level.index;
            }
            break;
        case '"': {
            const int end = endOfString(text, i);
            if (!levels.isEmpty() && levels.last().expectsKey) {
                levels.last().expectsKey = false;
                levels.last().key = stringOf(text.mid(i, end + 1 - i));
                const QString path = pathKey(levels);
                if (m_lines.contains(path))
                    m_duplicates.append({levels.last().key, line});
                else
                    m_lines.insert(path, line);
            }
            i = end;
            break;
        }
        default:
            break;
        }
    }
}

int JsonLocator::getLine(QStringList path) const
{
    for (; !path.isEmpty(); path.removeLast()) {
        const auto found = m_lines.constFind(pathKey(path));
        if (found != m_lines.constEnd())
            return *found;
    }
    return 1;
}

int JsonLocator::lineAt(const QByteArray& text, int offset)
{
    return 1 + static_cast<int>(text.left(offset).count('\n'));
}
