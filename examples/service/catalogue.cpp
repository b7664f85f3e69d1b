#include "catalogue.h"

#include <QDebug>
#include <VesmarClient/functions.h>

using namespace VesmarClient;

namespace
{

void printOption(const Option& option)
{
    QStringList values;
    for (const Choice& choice : option.choices) {
        values << choice.identifier;
    }
    if (option.kind == OptionKind::Integer || option.kind == OptionKind::Decimal) {
        values << QString("%1 to %2 %3").arg(option.minimum).arg(option.maximum).arg(option.unit);
    }
    qInfo().noquote() << "   " << option.identifier << values.join(", ") << option.defaultValue.toString();
}

} // namespace

void printCatalogue()
{
    // The readings have no units unless a file names them.
    if (const Failure failure = Functions::unitsFailure(); failure.isFailure()) {
        qWarning().noquote() << failure.whatHappened;
    }
    const QVector<FunctionInfo> functions = Functions::all();
    for (const FunctionInfo& function : functions) {
        qInfo().noquote() << function.identifier << function.title
                          << (function.isDangerous ? "(dangerous)" : "");
        for (const Option& option : function.options) {
            printOption(option);
        }
        for (const ReadingInfo& reading : function.readings) {
            qInfo().noquote() << "    gives" << reading.title << reading.unit;
        }
    }
}

bool check(const Settings& settings)
{
    const QVector<SettingsProblem> problems = settings.validate();
    for (const SettingsProblem& problem : problems) {
        qWarning().noquote() << problem.option << problem.message;
    }
    return problems.isEmpty();
}
