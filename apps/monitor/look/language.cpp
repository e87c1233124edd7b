#include "language.h"

#include "retranslator.h"
#include "translations.h"

#include <QApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QPointer>
#include <QTranslator>

#include <memory>

static void replace(QPointer<QTranslator>* translator, const QString& language, const QString& name,
                    const QString& folder)
{
    delete translator->data();
    *translator = new QTranslator(QCoreApplication::instance());
    if ((*translator)->load(name + QLatin1Char('_') + language, folder))
        QCoreApplication::installTranslator(*translator);
    else
        delete translator->data();
}

QVector<Language::Choice> Language::getChoices()
{
    QVector<Choice> choices;
    const QStringList codes = Translations::getLanguages();
    for (const QString& code : codes) {
        QString name = QLocale(code).nativeLanguageName();
        if (code == QLatin1String("en"))
            name = QStringLiteral("English"); // whatever the country
        else if (!name.isEmpty())
            name[0] = name.at(0).toUpper();
        choices.append({code, name});
    }
    return choices;
}

void Language::install(const QString& code)
{
#if QT_VERSION >= 0x060000
    const QString ofQt = QLibraryInfo::path(QLibraryInfo::TranslationsPath);
#else
    const QString ofQt = QLibraryInfo::location(QLibraryInfo::TranslationsPath);
#endif
    const QLocale locale = Translations::getLanguages().contains(code) ? QLocale(code) : QLocale::system();
    const QString language = Translations::find(locale);
    static QPointer<QTranslator> translatorOfQt;
    static QPointer<QTranslator> translatorOfPrograms;
    static QString shown;
    if (translatorOfPrograms && language == shown)
        return;
    shown = language;
    const bool hasWindows =
        qobject_cast<QApplication*>(QCoreApplication::instance()) && !QApplication::topLevelWidgets().isEmpty();
    const std::unique_ptr<Retranslator> retranslator(hasWindows ? new Retranslator : nullptr);
    Translations::install(locale);
    replace(&translatorOfQt, language, QLatin1String("qtbase"), ofQt);
    replace(&translatorOfPrograms, language, QLatin1String("programs"), QLatin1String(":/corvel/translations"));
    if (!retranslator)
        return;
    QCoreApplication::sendPostedEvents(nullptr, QEvent::LanguageChange); // first what knows its texts itself
    retranslator->apply();
}
