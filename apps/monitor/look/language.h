#ifndef LANGUAGE_H
#define LANGUAGE_H

class QLocale;

/** Shows all texts in the language of @p locale, as far as there are translations; English otherwise. Once. */
void installLanguage(const QLocale& locale);

#endif
