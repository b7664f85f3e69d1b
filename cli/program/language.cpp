#include "cli/program/language.h"

#include <QCoreApplication>
#include <QLocale>
#include <QTranslator>

#include <algorithm>
#include <clocale>
#include <string>

namespace Cli
{

namespace
{

void Install(const QLocale& locale, const char* file)
{
    auto* const translator = new QTranslator(QCoreApplication::instance());
    if (translator->load(locale, QLatin1String(file), QStringLiteral("_"),
                         QStringLiteral(":/vesmar/translations"))) {
        QCoreApplication::installTranslator(translator);
    }
}

} // namespace

void ChooseLanguage(int argumentCount, const char* const* arguments)
{
    std::setlocale(LC_NUMERIC, "C"); // Numbers are the same in all languages.
    if (std::find(arguments, arguments + argumentCount, std::string("--json")) != arguments + argumentCount) {
        std::setlocale(LC_MESSAGES, "C"); // The system's own texts, too.
        return;
    }
    // Only the first: whoever likes English best has it.
    const QLocale locale(QLocale::system().uiLanguages().value(0));
    for (const char* const file : {"vesmar-client", "vesmar-decode", "vesmar"}) {
        Install(locale, file);
    }
}

} // namespace Cli
