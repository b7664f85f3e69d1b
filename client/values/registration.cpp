#include "client/values/registration.h"

#include <QDebug>

#include <VesmarClient/functions.h>
#include <VesmarClient/gap.h>
#include <VesmarClient/identity.h>
#include <VesmarClient/linkstatistics.h>
#include <VesmarClient/result.h>
#include <VesmarClient/settings.h>

#include "client/values/valueoperators.h"

namespace VesmarClient
{

namespace
{

template <typename... Enumeration>
void RegisterEnumerations()
{
    (qRegisterMetaType<Enumeration>(), ...);
}

/// A list of the values reaches QML as a sequence.
template <typename Value>
void RegisterValue()
{
    qRegisterMetaType<Value>();
    qRegisterMetaType<QVector<Value>>();
    RegisterOperators<Value>();
}

template <typename... Value>
void RegisterValues()
{
    (RegisterValue<Value>(), ...);
}

bool RegisterAll()
{
    RegisterEnumerations<Error, Function, FunctionKind, FunctionState, GuardPolicy, LinkState, Mode,
                         OptionKind, Outcome, Phase, StartTestResult>();
    RegisterValues<Choice, Failure, FunctionInfo, Gap, Identity, LinkStatistics, Option, Reading, ReadingInfo,
                   Result, Settings, SettingsProblem>();
    return true;
}

} // namespace

void RegisterTypes()
{
    static const bool isDone = RegisterAll();
    Q_UNUSED(isDone)
}

} // namespace VesmarClient
