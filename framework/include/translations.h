#ifndef CORVEL_TRANSLATIONS_H
#define CORVEL_TRANSLATIONS_H

#include "corvelframework_export.h"

#include <QLocale>
#include <QStringList>

/**
 * What the libraries say, in other languages than English: texts of the widgets, of events, of what is wrong with a
 * stream or a file. The translations are compiled into the library; there are no files to be found.
 *
 * @code
 * Translations::install(); // behind the application object: in the language of the desktop
 * @endcode
 *
 * What an application shows of its own it translates itself, as ever. To be called on the GUI thread.
 */
class CORVELFRAMEWORK_EXPORT Translations
{
public:
    /**
     * Lets the libraries speak the language of @p locale, in place of the one installed before.
     *
     * Of the languages that the user prefers the first counts that there is; where there is none, it is English.
     * Widgets that are there follow as soon as the event loop comes round: headers, actions, rows. Entries of an
     * EventLog stay as they were logged. The translation belongs to the application object, which must exist; without
     * one nothing happens but a warning.
     *
     * @return the language, such as "de" or "en", for instance to load the application's own texts in
     */
    static QString install(const QLocale& locale = QLocale());

    /** The language that install() takes for @p locale; changes nothing. */
    static QString find(const QLocale& locale);

    /** The languages that there are, by their codes in alphabetical order; "en" always is one. */
    static QStringList getLanguages();

private:
    Translations();
};

#endif
