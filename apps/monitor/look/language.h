#ifndef LANGUAGE_H
#define LANGUAGE_H

#include <QString>
#include <QVector>

/** The languages that the program speaks. */
namespace Language
{

struct Choice
{
    QString code; ///< empty for that of the system
    QString name; ///< in the language itself
};

/** All there are to choose from, English among them; not that of the system. */
QVector<Choice> getChoices();

/**
 * Shows all texts in the language with @p code, as far as there are translations, and English otherwise; empty takes
 * that of the system. Windows that are there follow at once.
 */
void install(const QString& code);

} // namespace Language

#endif
