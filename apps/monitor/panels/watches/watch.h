#ifndef WATCH_H
#define WATCH_H

#include "desk.h"
#include "pathexpression.h"
#include "watchedfield.h"

#include <QFrame>

class FieldValueLabel;
class QToolButton;

/**
 * One value that the user watches: what a path expression names, in large, under a name.
 *
 * A watch whose field is not known now waits: when a format that has it comes, it shows its values.
 */
class Watch : public QFrame
{
    Q_OBJECT

public:
    /**
     * @param expression  names one field, and an index perhaps
     * @param name        what to call it; empty for that of the field
     * @param origin      whose values to show; those of the first sender when it is empty
     * @param desk        has the messages; borrowed
     */
    Watch(const QString& expression, const QString& name, const Origin& origin, Desk* desk);
    ~Watch() override;

    QString getExpression() const;
    const Origin& getOrigin() const { return m_origin; }
    /** The sender has another name now. */
    void renameSender(const QString& before, const QString& now);
    QString getName() const { return m_name; }
    /** The name that the user gave it; empty where it has the one of its field. */
    QString getGivenName() const { return m_isNamed ? m_name : QString(); }
    void setName(const QString& name);

    /** The text of the value, as it is shown. */
    QString getText() const;

    /** Writes the value anew, as it is to be written now. */
    void renew() { m_field.renew(); }

    /** Milliseconds after which a value that was not refreshed goes; negative means never. */
    void setTimeOut(int milliseconds);

Q_SIGNALS:
    void removeRequested();

protected:
    bool event(QEvent* event) override;

private:
    void resolve();
    void showSender();
    QString shortName() const;
    QString getShownSender() const;
    void rename();

    PathExpression m_expression;
    Desk* m_desk;
    Origin m_origin;
    QString m_name;
    bool m_isNamed = false; // by the user
    QToolButton* m_caption;
    FieldValueLabel* m_label;
    WatchedField m_field;
};

#endif
