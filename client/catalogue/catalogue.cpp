#include "client/catalogue/catalogue.h"

#include <QCoreApplication>

#include "client/catalogue/options.h"

namespace VesmarClient
{

const Catalogue AllFunctions{{
    {Function::RLN, "rln", QT_TRANSLATE_NOOP("VesmarClient", "RLN"), FunctionKind::Single, Options::None},
    {Function::IEC, "iec", QT_TRANSLATE_NOOP("VesmarClient", "IEC"), FunctionKind::Single, Options::None},
    {Function::RPE, "rpe", QT_TRANSLATE_NOOP("VesmarClient", "Protective-earth resistance"),
     FunctionKind::Continuous, Options::Rpe},
    {Function::RISO, "riso", QT_TRANSLATE_NOOP("VesmarClient", "Insulation resistance"),
     FunctionKind::Continuous, Options::Riso},
    {Function::ISUB, "isub", QT_TRANSLATE_NOOP("VesmarClient", "Substitute leakage current"),
     FunctionKind::Continuous, Options::None},
    {Function::IPE, "ipe", QT_TRANSLATE_NOOP("VesmarClient", "Protective-conductor current"),
     FunctionKind::Continuous, Options::ModeAndConfiguration},
    {Function::IDELTA, "idelta", QT_TRANSLATE_NOOP("VesmarClient", "Differential current"),
     FunctionKind::Continuous, Options::ModeAndConfiguration},
    {Function::IT, "it", QT_TRANSLATE_NOOP("VesmarClient", "Touch current"), FunctionKind::Continuous,
     Options::Configuration},
    {Function::POWER, "power", QT_TRANSLATE_NOOP("VesmarClient", "Power"), FunctionKind::Continuous,
     Options::Mode},
    {Function::HVTest, "hv", QT_TRANSLATE_NOOP("VesmarClient", "High-voltage test"),
     FunctionKind::HighVoltage, Options::HvTest},
    {Function::RCD, "rcd", QT_TRANSLATE_NOOP("VesmarClient", "Residual-current device: Ub/Re, or Ia/Ta"),
     FunctionKind::Rcd, Options::Rcd},
    {Function::RCDIEC, "rcd-iec", QT_TRANSLATE_NOOP("VesmarClient", "Residual-current device, IEC variant"),
     FunctionKind::Rcd, Options::RcdIec},
    {Function::Monitoring, "monitoring", QT_TRANSLATE_NOOP("VesmarClient", "Mains"), FunctionKind::Continuous,
     Options::None},
}};

} // namespace VesmarClient
