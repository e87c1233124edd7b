#include "retranslator.h"

#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QFile>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMetaProperty>
#include <QRegularExpression>
#include <QTabBar>
#include <QTableWidget>
#include <QTreeWidget>
#include <QXmlStreamReader>

#include <algorithm>

static const int LeastLetters = 3;          // that a text with values has, to be told from others
static const int LeastLettersOfOthers = 12; // where it is not a text of the label's own classes

namespace
{

const QRegularExpression& places()
{
    static const QRegularExpression expression(QStringLiteral("%L?([1-9])"));
    return expression;
}

int lettersOf(const QString& text)
{
    const QString rest = QString(text).remove(places());
    return int(std::count_if(rest.begin(), rest.end(), [](QChar letter) { return letter.isLetter(); }));
}

// What a text reads where an action or a label stands for something else: without its mnemonic, and what follows it.
QString plain(QString text)
{
    text.replace(QLatin1String("&&"), QString(QChar(0)));
    text.remove(QLatin1Char('&'));
    text.replace(QChar(0), QLatin1Char('&'));
    for (const char* const end : {"...", ":"})
        if (text.endsWith(QLatin1String(end)))
            text.chop(int(qstrlen(end)));
    return text.trimmed();
}

/** Whether a device could say this, too: what has more words is ours. */
bool mayBeValue(const QString& text)
{
    return text.simplified().count(QLatin1Char(' ')) < 2;
}

QSet<QString> classesOf(const QObject* object)
{
    QSet<QString> classes;
    for (; object; object = object->parent())
        for (const QMetaObject* type = object->metaObject(); type; type = type->superClass())
            classes.insert(QString::fromLatin1(type->className()).section(QLatin1String("::"), -1));
    return classes;
}

// The widgets of the library know themselves what they say, and what a form consists of comes from descriptions.
bool isOfTheLibrary(const QObject* object)
{
    for (const char* const type :
         {"FieldValueLabel", "PathExpressionLabel", "MessageTreeWidget", "MessageStatisticsWidget"})
        if (object->inherits(type))
            return true;
    while (object && !object->inherits("MessageWidget"))
        object = object->parent();
    return object;
}

} // namespace

Retranslator::Retranslator()
{
    static const char* const ofQt[][2] = {
        {"QDockWidget", "Close"},   {"QDockWidget", "Closes the dock widget"},
        {"QDockWidget", "Float"},   {"QDockWidget", "Undocks and re-attaches the dock widget"},
        {"QTabBar", "Scroll Left"}, {"QTabBar", "Scroll Right"}};
    for (const auto& text : ofQt)
        m_texts.append({QString::fromLatin1(text[0]), text[1], QByteArray(),
                        QCoreApplication::translate(text[0], text[1]), QString()});
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (const QWidget* const window : windows) {
        const QList<QAction*> actions = window->findChildren<QAction*>();
        for (const QAction* const action : actions)
            if (!action->shortcut().isEmpty())
                m_keys.insert(action->shortcut().toString(QKeySequence::NativeText), action->shortcut());
    }
    for (const char* const name : {"programs", "corvel"}) {
        QFile file(QLatin1String(":/corvel/sources/") + QLatin1String(name) + QLatin1String(".ts"));
        if (!file.open(QIODevice::ReadOnly))
            continue;
        QXmlStreamReader reader(&file);
        Text text;
        while (!reader.atEnd()) {
            const auto token = reader.readNext();
            if (token == QXmlStreamReader::StartElement) {
                if (reader.name() == QLatin1String("name"))
                    text.context = reader.readElementText();
                else if (reader.name() == QLatin1String("source"))
                    text.source = reader.readElementText().toUtf8();
                else if (reader.name() == QLatin1String("comment"))
                    text.comment = reader.readElementText().toUtf8();
            } else if (token == QXmlStreamReader::EndElement && reader.name() == QLatin1String("message") &&
                       text.context != QLatin1String("StreamSource")) { // what went wrong stays as it was logged
                text.before = QCoreApplication::translate(text.context.toUtf8().constData(), text.source.constData(),
                                                          text.comment.isEmpty() ? nullptr : text.comment.constData());
                m_texts.append(text);
                text.comment.clear();
            }
        }
    }
}

void Retranslator::add(Text text, const QString& before, const QString& after, bool isWhole)
{
    text.isWhole = isWhole;
    text.before = before;
    text.after = after;
    QVector<int>& known = m_byText[before];
    for (const int number : std::as_const(known))
        if (m_texts.at(number).context == text.context && m_texts.at(number).after == after)
            return;
    known.append(int(m_texts.size()));
    m_texts.append(text);
}

void Retranslator::apply()
{
    const QVector<Text> texts = std::exchange(m_texts, QVector<Text>());
    for (const Text& text : texts) {
        const QString after = QCoreApplication::translate(text.context.toUtf8().constData(), text.source.constData(),
                                                          text.comment.isEmpty() ? nullptr : text.comment.constData());
        add(text, text.before, after);
    }
    const qsizetype whole = m_texts.size();
    for (qsizetype i = 0; i < whole; ++i) {
        const Text text = m_texts.at(i);
        if (plain(text.before) != text.before)
            add(text, plain(text.before), plain(text.after), false);
    }
    for (int i = 0; i < m_texts.size(); ++i)
        addTemplate(i);
    std::stable_sort(m_templates.begin(), m_templates.end(), [this](const Template& left, const Template& right) {
        return lettersOf(m_texts.at(left.text).before) > lettersOf(m_texts.at(right.text).before);
    });

    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget* const window : windows) {
        change(window);
        const QList<QObject*> objects = window->findChildren<QObject*>();
        for (QObject* const object : objects)
            change(object);
    }
}

void Retranslator::addTemplate(int number)
{
    const QString& before = m_texts.at(number).before;
    if (!before.contains(places()) || lettersOf(before) < LeastLetters)
        return;
    Template added{number, QRegularExpression(), {}};
    QString pattern;
    qsizetype end = 0;
    for (auto it = places().globalMatch(before); it.hasNext();) {
        const QRegularExpressionMatch place = it.next();
        pattern += QRegularExpression::escape(before.mid(end, place.capturedStart() - end)) + QLatin1String("(.*)");
        added.order.append(place.captured(1).toInt());
        end = place.capturedEnd();
    }
    pattern += QRegularExpression::escape(before.mid(end));
    added.expression = QRegularExpression(QRegularExpression::anchoredPattern(pattern),
                                          QRegularExpression::DotMatchesEverythingOption);
    m_templates.append(added);
}

QString Retranslator::translate(const QString& text, const QObject* owner, bool isOwn) const
{
    if (text.isEmpty())
        return text;
    const Classes classes = classesOf(owner);
    const QString found = find(text, classes, isOwn);
    if (!found.isNull())
        return found;
    // Several in one.
    for (const QString& between : {QStringLiteral("\n"), QStringLiteral(" \u00b7 ")}) {
        if (!text.contains(between))
            continue;
        QStringList parts = text.split(between);
        for (QString& part : parts) {
            const QString foundPart = part.isEmpty() ? QString() : find(part, classes, isOwn);
            if (!foundPart.isNull())
                part = foundPart;
        }
        return parts.join(between);
    }
    return text;
}

QString Retranslator::find(const QString& text, const Classes& classes, bool isOwn) const
{
    const Text* const exact = findExact(text, classes, isOwn);
    return exact ? exact->after : fill(text, classes, isOwn);
}

const Retranslator::Text* Retranslator::findExact(const QString& text, const Classes& classes, bool isOwn) const
{
    const QVector<int> numbers = m_byText.value(text);
    for (const int number : numbers)
        if (m_texts.at(number).isWhole && classes.contains(m_texts.at(number).context))
            return &m_texts.at(number);
    if (!isOwn && !numbers.isEmpty() && m_texts.at(numbers.first()).isWhole)
        return &m_texts.at(numbers.first());
    for (const int number : numbers)
        if (classes.contains(m_texts.at(number).context))
            return &m_texts.at(number);
    return numbers.isEmpty() || (isOwn && mayBeValue(text)) ? nullptr : &m_texts.at(numbers.first());
}

/** The text with values that @p text is, with the same values in the other language; null if it is none. */
QString Retranslator::fill(const QString& text, const Classes& classes, bool isOwn) const
{
    for (const Template& candidate : m_templates) {
        const Text& known = m_texts.at(candidate.text);
        const bool isShort = mayBeValue(text) || lettersOf(known.before) < LeastLettersOfOthers;
        if (isOwn && isShort && !classes.contains(known.context))
            continue;
        const QRegularExpressionMatch match = candidate.expression.match(text);
        if (!match.hasMatch())
            continue;
        QString filled;
        qsizetype end = 0;
        for (auto it = places().globalMatch(known.after); it.hasNext();) {
            const QRegularExpressionMatch place = it.next();
            filled += known.after.mid(end, place.capturedStart() - end);
            const QString value = match.captured(int(candidate.order.indexOf(place.captured(1).toInt())) + 1);
            const auto key = m_keys.constFind(value);
            const Text* const ofValue = key == m_keys.constEnd() ? findExact(value, classes, false) : nullptr;
            filled +=
                ofValue ? ofValue->after : (key == m_keys.constEnd() ? value : key->toString(QKeySequence::NativeText));
            end = place.capturedEnd();
        }
        return filled + known.after.mid(end);
    }
    return QString();
}

void Retranslator::changeProperty(QObject* object, const char* name, bool isOwn) const
{
    const int index = object->metaObject()->indexOfProperty(name);
    if (index < 0 || !object->metaObject()->property(index).isWritable())
        return;
    const QString before = object->property(name).toString();
    const QString after = translate(before, object, isOwn);
    if (after != before)
        object->setProperty(name, after);
}

void Retranslator::change(QObject* object) const
{
    if (QAction* const action = qobject_cast<QAction*>(object)) {
        for (const char* const name : {"text", "statusTip", "whatsThis"})
            changeProperty(action, name, false);
        // What it makes of its text by itself it has made of the new one.
        for (const char* const name : {"toolTip", "iconText"})
            if (plain(action->property(name).toString()) != plain(action->text()))
                changeProperty(action, name, false);
        return;
    }
    QWidget* const widget = qobject_cast<QWidget*>(object);
    if (!widget) {
        changeProperty(object, "label", true); // of an axis
        return;
    }
    for (const char* const name : {"toolTip", "statusTip", "whatsThis", "placeholderText", "accessibleName",
                                   "accessibleDescription", "prefix", "suffix", "specialValueText"})
        changeProperty(widget, name, false);
    if (isOfTheLibrary(widget))
        return;
    const bool showsValues = qobject_cast<QLabel*>(widget) || qobject_cast<QGroupBox*>(widget);
    if (!qobject_cast<QLineEdit*>(widget))
        changeProperty(widget, "text", showsValues);
    changeProperty(widget, "title", showsValues);
    changeProperty(widget, "windowTitle", false);
    changeEntries(widget);
}

void Retranslator::changeEntries(QWidget* widget) const
{
    if (QComboBox* const box = qobject_cast<QComboBox*>(widget)) {
        for (int i = 0; i < box->count(); ++i) {
            const QString text = translate(box->itemText(i), box, true);
            if (text != box->itemText(i))
                box->setItemText(i, text);
        }
        return;
    }
    if (QTabBar* const tabs = qobject_cast<QTabBar*>(widget)) {
        for (int i = 0; i < tabs->count(); ++i)
            tabs->setTabText(i, translate(tabs->tabText(i), tabs, false));
        return;
    }
    const auto* const view = qobject_cast<QAbstractItemView*>(widget);
    if (!view || !view->model())
        return;
    const bool isKept = qobject_cast<const QTreeWidget*>(view) || qobject_cast<const QTableWidget*>(view);
    const int columns = view->model()->columnCount();
    for (int column = 0; isKept && column < columns; ++column)
        for (const int role : {int(Qt::DisplayRole), int(Qt::ToolTipRole)}) {
            const QString text = view->model()->headerData(column, Qt::Horizontal, role).toString();
            const QString translated = translate(text, view, true);
            if (translated != text)
                view->model()->setHeaderData(column, Qt::Horizontal, translated, role);
        }
    if (!isKept && columns > 0)
        Q_EMIT view->model()->headerDataChanged(Qt::Horizontal, 0, columns - 1);
    view->viewport()->update();
}
