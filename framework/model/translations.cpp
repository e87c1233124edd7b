#include "translations.h"

#include <QCoreApplication>
#include <QDir>
#include <QPointer>
#include <QTranslator>

static QPointer<QTranslator> s_installed;
static QString s_language;

static QLatin1String folder()
{
    return QLatin1String(":/corvel/translations");
}

static QLatin1String english()
{
    return QLatin1String("en");
}

QString Translations::find(const QLocale& locale)
{
    // English has no file, and yet comes before others that the user likes less.
    const QStringList languages = getLanguages();
    Q_FOREACH (QString preferred, locale.uiLanguages()) {
        preferred.replace(QLatin1Char('-'), QLatin1Char('_'));
        for (; !preferred.isEmpty(); preferred.truncate(qMax(0, int(preferred.lastIndexOf(QLatin1Char('_')))))) {
            if (languages.contains(preferred))
                return preferred;
        }
    }
    return english();
}

QString Translations::install(const QLocale& locale)
{
    QCoreApplication* application = QCoreApplication::instance();
    if (!application) {
        qWarning("Translations::install: there is no application object yet");
        return english();
    }
    const QString language = find(locale);
    if (s_installed && language == s_language)
        return language;
    delete s_installed; // which tells the widgets, too
    s_language = language;
    if (language == english())
        return language;
    s_installed = new QTranslator(application);
    if (!s_installed->load(QLatin1String("corvel_") + language, folder()))
        qFatal("The built-in translation %s is damaged", qPrintable(language));
    application->installTranslator(s_installed);
    return language;
}

QStringList Translations::getLanguages()
{
    QStringList languages(english());
    Q_FOREACH (const QString& name, QDir(folder()).entryList(QStringList(QLatin1String("corvel_*.qm"))))
        languages.append(name.section(QLatin1Char('_'), 1).section(QLatin1Char('.'), 0, 0));
    languages.sort();
    return languages;
}
