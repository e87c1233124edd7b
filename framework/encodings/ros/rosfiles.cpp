#include "rosfiles.h"

#include "idlscanner.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>

using Ros::Fault;

// Behind the file itself come those that it needs, in recordings as well.
static const char Separator[] = "================================================================================";

RosFiles::RosFiles(const QStringList& importPaths)
    : m_importPaths(importPaths)
    , m_line(1)
{
}

bool RosFiles::read(const QString& path, Fault* fault)
{
    const QFileInfo file(path);
    QDir folder = file.absoluteDir();
    static const QStringList kinds{QStringLiteral("msg"), QStringLiteral("srv"), QStringLiteral("action")};
    // A file that is in no such folder is taken as one of the package that is called like its folder.
    const bool isInKind = kinds.contains(folder.dirName());
    const QString kind = isInKind ? folder.dirName() : kinds.constFirst();
    if (isInKind)
        folder.cdUp();
    const QString name = folder.dirName() + QLatin1Char('/') + kind + QLatin1Char('/') + file.completeBaseName();
    folder.cdUp();
    m_root = folder.path();
    if (file.suffix().toLower() != QLatin1String("idl")) {
        m_encoding = "ros2msg";
        m_names.append(name);
        return addMessage(path, name, fault);
    }
    m_encoding = isInKind ? "ros2idl" : "omgidl";
    QString text;
    if (!load(path, &text, fault))
        return false;
    try {
        m_names = structsOf(text);
    } catch (const Fault& found) {
        *fault = found;
        append(path, QString(), QString());
        return false;
    }
    if (isInKind)
        m_names.replaceInStrings(QStringLiteral("::"), QStringLiteral("/"));
    if (m_names.isEmpty())
        fault->text = QCoreApplication::translate("RosSchema", "there is no struct in it");
    m_failed = m_names.isEmpty() ? path : QString();
    return !m_names.isEmpty() && addIdl(path, name, fault);
}

bool RosFiles::load(const QString& path, QString* text, Fault* fault)
{
    QFile file(path);
    m_failed = path;
    m_known.insert(QFileInfo(path).canonicalFilePath());
    if (!file.open(QIODevice::ReadOnly)) {
        fault->text = file.errorString();
        return false;
    }
    if (m_schema.size() + file.size() > Ros::GreatestSchemaSize) {
        fault->text = QCoreApplication::translate("RosSchema", "the schema is too large: %1 bytes")
                          .arg(m_schema.size() + file.size());
        return false;
    }
    *text = Ros::decodeSchema(file.readAll());
    text->replace(QLatin1String("\r\n"), QLatin1String("\n"));
    if (!text->endsWith(QLatin1Char('\n')))
        text->append(QLatin1Char('\n'));
    m_failed.clear();
    return true;
}

/** @param title  what stands before it: "MSG: a/B", or nothing */
void RosFiles::append(const QString& path, const QString& title, const QString& text)
{
    if (!title.isEmpty()) {
        m_schema += Separator + QByteArray("\n") + title.toUtf8() + '\n';
        m_line += 2;
    }
    m_parts.push_back({path, m_line});
    m_schema += text.toUtf8();
    m_line += static_cast<int>(text.count(QLatin1Char('\n')));
}

/** The first of these that is there, beside the file that needs it or where imports are. */
QString RosFiles::find(const QStringList& names, const QString& from) const
{
    QStringList folders{QFileInfo(from).absolutePath(), m_root};
    for (const QString& folder : m_importPaths)
        folders << folder << folder + QLatin1String("/share") << folder + QLatin1String("/..");
    for (const QString& folder : std::as_const(folders)) {
        for (const QString& name : names) {
            const QString path = folder + QLatin1Char('/') + name;
            if (QFileInfo(path).isFile())
                return QDir::cleanPath(path);
        }
    }
    return QString();
}

bool RosFiles::addMessage(const QString& path, const QString& title, Fault* fault)
{
    static const QRegularExpression word(QStringLiteral("^[ \\t]*([A-Za-z][A-Za-z0-9_/]*)"),
                                         QRegularExpression::MultilineOption);
    struct Needed
    {
        QString path;
        QString name;
    };
    std::vector<Needed> files{{path, title}};
    for (std::size_t i = 0; i < files.size(); ++i) {
        const Needed file = files[i];
        const QString package = file.name.section(QLatin1Char('/'), 0, 0);
        const QString shortName = package + QLatin1Char('/') + file.name.section(QLatin1Char('/'), -1);
        m_known.insert(shortName);
        QString text;
        if (!load(file.path, &text, fault))
            return false;
        append(file.path, i == 0 ? QString() : QStringLiteral("MSG: ") + shortName, text);
        for (QRegularExpressionMatchIterator found = word.globalMatch(text); found.hasNext();) {
            const QString type = found.next().captured(1);
            const bool isBare = !type.contains(QLatin1Char('/'));
            const QString other = isBare ? package : type.section(QLatin1Char('/'), 0, 0);
            const QString last = type.section(QLatin1Char('/'), -1);
            const QString key = other + QLatin1Char('/') + last;
            if (m_known.contains(key))
                continue;
            m_known.insert(key);
            QStringList names{other + QLatin1String("/msg/") + last + QLatin1String(".msg"),
                              key + QLatin1String(".msg")};
            if (isBare)
                names.prepend(last + QLatin1String(".msg"));
            // What is nowhere is told where it is needed, or is one of the language's own.
            const QString foundPath = find(names, file.path);
            if (!foundPath.isEmpty())
                files.push_back({foundPath, key});
        }
    }
    return true;
}

bool RosFiles::addIdl(const QString& path, const QString& title, Fault* fault)
{
    static const QRegularExpression include(QStringLiteral("^[ \\t]*(#)[ \\t]*include[ \\t]*[\"<]([^\">\\n]+)[\">]"),
                                            QRegularExpression::MultilineOption);
    /** One that is open until what it includes is done. */
    struct Open
    {
        QString path;
        QString title;
        QString text;
        int next; // where to look for an include
    };
    std::vector<Open> open(1, Open{path, title, QString(), 0});
    if (!load(path, &open.back().text, fault))
        return false;
    while (!open.empty()) {
        const QRegularExpressionMatch match = include.match(open.back().text, open.back().next);
        if (!match.hasMatch()) {
            const Open done = open.back();
            open.pop_back();
            append(done.path, m_encoding == "ros2idl" ? QStringLiteral("IDL: ") + done.title : QString(), done.text);
            continue;
        }
        const QString name = match.captured(2);
        // It stands before the others, and need not be looked for again.
        open.back().text.insert(match.capturedStart(1), QStringLiteral("//"));
        open.back().next = static_cast<int>(match.capturedEnd()) + 2;
        const QString found = find({name}, open.back().path);
        if (found.isEmpty() || m_known.contains(QFileInfo(found).canonicalFilePath()))
            continue;
        QString text;
        if (!load(found, &text, fault))
            return false;
        open.push_back({found, QString(name).remove(QRegularExpression(QStringLiteral("\\.idl$"))), text, 0});
    }
    return true;
}

/** The names of all structs, with their modules. Throws Fault. */
QStringList RosFiles::structsOf(const QString& text)
{
    const std::vector<IdlToken> tokens = IdlScanner::scan(text);
    QStringList names;
    QStringList scope; // what each bracket belongs to, empty for what is no module
    for (std::size_t i = 0; i + 2 < tokens.size(); ++i) {
        const bool isNamed = tokens[i + 1].kind == IdlToken::Name;
        if (tokens[i].is("module") && isNamed && tokens[i + 2].is("{")) {
            scope.append(tokens[i + 1].text);
            i += 2;
        } else if (tokens[i].is("struct") && isNamed && (tokens[i + 2].is("{") || tokens[i + 2].is(":"))) {
            names.append((scope + QStringList(tokens[i + 1].text)).join(QStringLiteral("::")));
        } else if (tokens[i].is("{")) {
            scope.append(QString());
        } else if (tokens[i].is("}") && !scope.isEmpty()) {
            scope.removeLast();
        }
    }
    return names;
}

QString RosFiles::textOf(const Fault& fault) const
{
    if (!m_failed.isEmpty() || m_parts.empty())
        return m_failed + QLatin1String(": ") + fault.text;
    const auto behind = std::find_if(m_parts.begin() + 1, m_parts.end(),
                                     [&](const Part& part) { return part.line > fault.place.line; });
    const Part& part = *(behind - 1);
    if (fault.place.line == 0)
        return m_parts.front().path + QLatin1String(": ") + fault.text;
    return QStringLiteral("%1:%2:%3: ").arg(part.path).arg(fault.place.line - part.line + 1).arg(fault.place.column) +
           fault.text;
}
