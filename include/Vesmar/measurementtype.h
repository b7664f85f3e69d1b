#pragma once

namespace Vesmar
{

/// A measurement function of the instrument; also the type tag of every settings and results object.
///
/// The status reports a function in five bits, so unnamed values up to 31 occur and are passed on unchanged.
enum class MeasurementType : int {
    None = -1,      ///< Nothing known yet; also the tag of the placeholder settings and results.
    Monitoring = 0, ///< No function is active; the tag of the mains readings taken while idle.
    RLN = 1,        ///< RLN, a single measurement.
    RPE = 2,        ///< Protective-earth resistance, continuous.
    RISO = 3,       ///< Insulation resistance, continuous.
    ISUB = 4,       ///< Substitute leakage current, continuous.
    IPE = 5,        ///< Protective-conductor current, continuous.
    IDELTA = 6,     ///< Differential current, continuous.
    IT = 7,         ///< Touch current, continuous.
    POWER = 8,      ///< Power, continuous.
    HVTest = 9,     ///< High-voltage test, continuous with a time offset.
    RCD = 10,       ///< Residual-current device.
    RCDIEC = 11,    ///< Residual-current device, IEC variant.
    IEC = 97        ///< IEC test, a single measurement; exists on the library's side only, never in a status.
};

} // namespace Vesmar
