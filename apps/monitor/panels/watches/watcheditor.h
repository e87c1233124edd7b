#ifndef WATCHEDITOR_H
#define WATCHEDITOR_H

#include "pathexpression.h"
#include "watchedfield.h"

#include <QWidget>

class FieldValueLabel;
class LatestMessageSource;
class QLabel;
class QPushButton;
class PathExpressionLineEdit;

/** Chooses a field: by three boxes of which each narrows the next, or by typing, and shows its value at once. */
class WatchEditor : public QWidget
{
    Q_OBJECT

public:
    /** @param source  whose messages to show; borrowed */
    explicit WatchEditor(LatestMessageSource* source, QWidget* parent = nullptr);
    ~WatchEditor() override;

    /** Shows @p expression in the boxes and the line. */
    void setExpression(const QString& expression);
    QString getExpression() const;
    /** Writes the value anew, as it is to be written now. */
    void renew() { m_watched.renew(); }
    /** The sender has another name now. */
    void renameSender(const QString& before, const QString& now) { m_watched.renameSender(before, now); }

Q_SIGNALS:
    /** The user wants to keep these fields in sight. */
    void pinRequested(const QStringList& expressions);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void narrow(PathExpression::Parts changed);
    void resolve();
    void pin();

    PathExpression m_expression;
    PathExpression m_formats; // what the boxes offer
    PathExpression m_messages;
    PathExpression m_fields;
    PathExpressionLineEdit* m_line;
    FieldValueLabel* m_value;
    WatchedField m_watched;
    QLabel* m_status;
    QPushButton* m_pin;
};

#endif
