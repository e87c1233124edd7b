#include "language.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

static void install(const QLocale& locale, const QString& name, const QString& folder)
{
    QTranslator* const translator = new QTranslator(QCoreApplication::instance());
    if (translator->load(locale, name, QLatin1String("_"), folder))
        QCoreApplication::installTranslator(translator);
    else
        delete translator;
}

void installLanguage(const QLocale& locale)
{
#if QT_VERSION >= 0x060000
    const QString ofQt = QLibraryInfo::path(QLibraryInfo::TranslationsPath);
#else
    const QString ofQt = QLibraryInfo::location(QLibraryInfo::TranslationsPath);
#endif
    install(locale, QLatin1String("qtbase"), ofQt);
    install(locale, QLatin1String("corvel"), QLatin1String(":/translations"));
}
