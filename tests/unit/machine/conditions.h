#pragma once

#include <type_traits>

#include <QByteArrayList>

#include <Vesmar/iecresults.h>
#include <Vesmar/rcdiecsettings.h>
#include <Vesmar/rcdsettings.h>

#include "context/replaceowned.h"
#include "support/cells.h"

/// Sets one cell by its name. "Settings", "Results", "RCD", "RCDIEC" and "IECResult" put objects into
/// `TestSettings` and `TestResults`: settings or results of this function, settings with this mode, or
/// results with this first value.
inline void SetCell(Vesmar::StateMachineContext& context, const QByteArray& name, float value)
{
    const int number = static_cast<int>(value);
    if (name == "Settings") {
        Vesmar::ReplaceOwned(
            context.TestSettings,
            new Vesmar::MeasurementSettings(static_cast<Vesmar::MeasurementType>(number), nullptr));
    } else if (name == "RCD") {
        auto* settings = new Vesmar::RCDSettings;
        settings->SetMode(static_cast<Vesmar::RCDSettings::RCDMode>(number));
        Vesmar::ReplaceOwned<Vesmar::MeasurementSettings>(context.TestSettings, settings);
    } else if (name == "RCDIEC") {
        auto* settings = new Vesmar::RCDIECSettings;
        settings->SetMode(static_cast<Vesmar::RCDIECSettings::RCDIECMode>(number));
        Vesmar::ReplaceOwned<Vesmar::MeasurementSettings>(context.TestSettings, settings);
    } else if (name == "Results") {
        Vesmar::ReplaceOwned(context.TestResults, new Vesmar::MeasurementResults(
                                                      static_cast<Vesmar::MeasurementType>(number), nullptr));
    } else if (name == "IECResult") {
        auto* results = new Vesmar::IECResults(value, 0.0F, 0.0F, 0.0F, 0.0F);
        results->_values[0] = value;
        Vesmar::ReplaceOwned<Vesmar::MeasurementResults>(context.TestResults, results);
    } else {
        bool isFound = false;
        ForEachCell(context, [&](const char* cellName, auto& cell) {
            using Value = decltype(cell.Get());
            if constexpr (std::is_integral_v<Value> || std::is_enum_v<Value>) {
                if (name == cellName) {
                    cell.Set(static_cast<Value>(number));
                    isFound = true;
                }
            }
        });
        Q_ASSERT_X(isFound, "SetCell", name.constData());
    }
}

/// Sets cells as a text names them, in order: "TesterMode=3 UpdateRequested" sets the second one to 1.
inline void SetCells(Vesmar::StateMachineContext& context, const QByteArray& text)
{
    for (const QByteArray& part : text.split(' ')) {
        if (part.isEmpty()) {
            continue;
        }
        const QByteArrayList sides = part.split('=');
        SetCell(context, sides.constFirst(), sides.size() == 2 ? sides.constLast().toFloat() : 1.0F);
    }
}
