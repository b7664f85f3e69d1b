#pragma once

#include <chrono>
#include <optional>

#include <QByteArray>

#include "simulator/control/scenarios.h"

namespace Simulator
{

/// The properties of firmware updates.
struct UpdateOptions {
    /// The two bytes that confirm any firmware; empty when `ConfirmationOf()` decides.
    QByteArray confirmation;
    /// The version of the installed firmware, written as in `Identity`.
    QByteArray newVersion = QByteArrayLiteral("106");
    /// The time from the confirmation to the restart.
    std::chrono::milliseconds installTime{1500};
};

/// Returns the two bytes that confirm this image: its checksum, in the byte order of a frame.
QByteArray ConfirmationOf(const QByteArray& image);

/// The store of the firmware that the instrument receives, from the initialization of an update to its
/// confirmation.
class FirmwareUpdate
{
public:
    /// An empty confirmation stands for the one that belongs to the received firmware.
    explicit FirmwareUpdate(const QByteArray& confirmation);

    /// The sector is the one that the scenario affects, counted from 1.
    void SetScenario(Scenario scenario, int sector);

    bool RefusesUpdateMode() const { return _scenario == Scenario::RefusesUpdateMode; }

    /// Empties and opens the store. Returns false when the scenario refuses that.
    bool Initialize();

    /// Returns whether the next sector must neither be stored nor answered.
    bool LosesNextSector() const;

    /// Stores a sector behind the others. Returns false when the store is closed or the scenario refuses the
    /// sector.
    bool StoreSector(const QByteArray& sector);

    /// Returns how many bytes are stored.
    int Size() const { return _image.size(); }

    /// Closes the store. Returns its content if these two bytes confirm it, otherwise nothing.
    std::optional<QByteArray> Finish(const QByteArray& confirmation);

    /// Forgets what was stored, and refuses sectors until the next initialization.
    void Close();

    /// Returns whether confirmed firmware is installed.
    bool InstallsFirmware() const { return _scenario != Scenario::StaysInUpdateMode; }

    /// Returns the mode in which the instrument restarts once the firmware is confirmed.
    int ModeAfterwards() const;

private:
    bool IsConfirmedBy(const QByteArray& confirmation) const;
    int NextSector() const;

    QByteArray _confirmation;
    Scenario _scenario = Scenario::None;
    int _scenarioSector = 1;
    bool _isInitialized = false;
    QByteArray _image;
};

} // namespace Simulator
