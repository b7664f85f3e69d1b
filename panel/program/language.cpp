#include "panel/program/language.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

namespace Panel
{

namespace
{

void install(const QLocale& locale, const char* file, const QString& folder)
{
    auto* const translator = new QTranslator(QCoreApplication::instance());
    if (translator->load(locale, QLatin1String(file), QStringLiteral("_"), folder)) {
        QCoreApplication::installTranslator(translator);
    }
}

} // namespace

void speak(const std::string& language)
{
    const QLocale locale = language.empty() ? QLocale::system() : QLocale(QString::fromStdString(language));
    QLocale::setDefault(locale);
    install(locale, "qtbase", QLibraryInfo::location(QLibraryInfo::TranslationsPath));
    for (const char* const file : {"vesmar-client", "vesmar-decode", "vesmar-panel"}) {
        install(locale, file, QStringLiteral(":/vesmar/translations"));
    }
}

} // namespace Panel
