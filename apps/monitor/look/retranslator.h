#ifndef RETRANSLATOR_H
#define RETRANSLATOR_H

#include <QHash>
#include <QKeySequence>
#include <QRegularExpression>
#include <QSet>
#include <QString>
#include <QVector>

class QObject;
class QWidget;

/**
 * Brings windows that are there into another language.
 *
 * Nearly every text of a window was set once, when its part was made. Each is found by what it reads in the language
 * before and written anew, so that no part needs a function of its own for that: actions, labels, buttons, boxes, tool
 * tips, what screen readers tell, headers and the entries of lists to choose from. Also with values in it, such as a
 * number. What could as well come from a device, such as one or two words of a label, counts as ours only if it is a
 * text of a class that the widget is a part of.
 */
class Retranslator
{
public:
    /** Notes what all texts read now: to be made before the language changes. */
    Retranslator();

    /** Changes what all windows and what they consist of say, to what the same texts read now. */
    void apply();

    /** The same for one text of @p owner, and only texts of its own classes with @p isOwn; as it is if it is unknown.
     */
    QString translate(const QString& text, const QObject* owner, bool isOwn) const;

private:
    struct Text
    {
        QString context;
        QByteArray source;
        QByteArray comment;
        QString before;
        QString after;
        bool isWhole = true; // with the mark for its key
    };
    struct Template
    {
        int text;
        QRegularExpression expression;
        QVector<int> order; // of its values
    };
    using Classes = QSet<QString>;

    void add(Text text, const QString& before, const QString& after, bool isWhole = true);
    void addTemplate(int number);
    const Text* findExact(const QString& text, const Classes& classes, bool isOwn) const;
    QString fill(const QString& text, const Classes& classes, bool isOwn) const;
    QString find(const QString& text, const Classes& classes, bool isOwn) const;
    void change(QObject* object) const;
    void changeProperty(QObject* object, const char* name, bool isOwn) const;
    void changeEntries(QWidget* widget) const;

    QVector<Text> m_texts;
    QHash<QString, QKeySequence> m_keys;
    QHash<QString, QVector<int>> m_byText; // by what they read before
    QVector<Template> m_templates;         // those with values in them, longest first
};

#endif
