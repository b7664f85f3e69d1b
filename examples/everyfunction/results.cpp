#include "results.h"

#include <QStringList>
#include <Vesmar/hvtestresults.h>
#include <Vesmar/ideltaresults.h>
#include <Vesmar/iecresults.h>
#include <Vesmar/iperesults.h>
#include <Vesmar/isubresults.h>
#include <Vesmar/itresults.h>
#include <Vesmar/monitoringresults.h>
#include <Vesmar/powerresults.h>
#include <Vesmar/rcdiecresults.h>
#include <Vesmar/rcdresults.h>
#include <Vesmar/risoresults.h>
#include <Vesmar/rlnresults.h>
#include <Vesmar/rperesults.h>

using namespace Vesmar;

namespace
{

template <typename... Values>
QString Text(const char* title, Values... values)
{
    return QString("%1: %2").arg(title, QStringList{QString::number(values)...}.join(' '));
}

QString DescribeSafety(const MeasurementResults& results)
{
    if (const auto* rln = dynamic_cast<const RLNResults*>(&results)) {
        return Text("resistance", rln->_resistance);
    }
    if (const auto* iec = dynamic_cast<const IECResults*>(&results)) {
        return Text("result", iec->_result, iec->_voltage);
    }
    if (const auto* rpe = dynamic_cast<const RPEResults*>(&results)) {
        return Text("protective earth", rpe->_resistance, rpe->_voltage, rpe->_current);
    }
    if (const auto* riso = dynamic_cast<const RISOResults*>(&results)) {
        return Text("insulation", riso->_resistance, riso->_voltage, riso->_current);
    }
    if (const auto* test = dynamic_cast<const HVTestResults*>(&results)) {
        return Text("high voltage", test->_maxVoltage, test->_voltage, test->_current);
    }
    if (const auto* rcd = dynamic_cast<const RCDResults*>(&results)) {
        return Text("residual-current device", rcd->_re, rcd->_ia, rcd->_ta);
    }
    if (const auto* rcd = dynamic_cast<const RCDIECResults*>(&results)) {
        return Text("residual-current device", rcd->_ia, rcd->_ta);
    }
    return QString();
}

} // namespace

QString Describe(const MeasurementResults& results)
{
    if (const auto* mains = dynamic_cast<const MonitoringResults*>(&results)) {
        return Text("mains", mains->_uln, mains->_unpe, mains->_frequency);
    }
    if (const auto* substitute = dynamic_cast<const ISUBResults*>(&results)) {
        return Text("substitute leakage", substitute->_current, substitute->_voltage);
    }
    if (const auto* conductor = dynamic_cast<const IPEResults*>(&results)) {
        return Text("protective conductor", conductor->_current, conductor->_voltage);
    }
    if (const auto* difference = dynamic_cast<const IDELTAResults*>(&results)) {
        return Text("differential current", difference->_current, difference->_voltage);
    }
    if (const auto* touch = dynamic_cast<const ITResults*>(&results)) {
        return Text("touch current", touch->_current);
    }
    if (const auto* power = dynamic_cast<const POWERResults*>(&results)) {
        return Text("power", power->_power, power->_voltage, power->_current);
    }
    return DescribeSafety(results);
}
