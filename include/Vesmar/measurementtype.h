#pragma once

namespace Vesmar
{

/// A measurement function of the instrument, and the type tag of every settings and results object.
///
/// The instrument's status reports the function in five bits. Values up to 31 that have no name are passed on
/// unchanged.
enum class MeasurementType : int {
    None = -1,      ///< No status has arrived yet; also the tag of the placeholders for settings and results.
    Monitoring = 0, ///< No function is active; also the tag of `MonitoringResults`.
    RLN = 1,        ///< RLN, a single measurement.
    RPE = 2,        ///< Protective-earth resistance, a continuous measurement.
    RISO = 3,       ///< Insulation resistance, a continuous measurement.
    ISUB = 4,       ///< Substitute leakage current, a continuous measurement.
    IPE = 5,        ///< Protective-conductor current, a continuous measurement.
    IDELTA = 6,     ///< Differential current, a continuous measurement.
    IT = 7,         ///< Touch current, a continuous measurement.
    POWER = 8,      ///< Power, a continuous measurement.
    HVTest = 9,     ///< High-voltage test, a continuous measurement whose first second is lengthened.
    RCD = 10,       ///< Test of a residual-current device.
    RCDIEC = 11,    ///< Test of a residual-current device, IEC variant.
    IEC = 97        ///< IEC, a single measurement. The instrument reports it as `RLN`; no status holds 97.
};

} // namespace Vesmar
