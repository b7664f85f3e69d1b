#pragma once

#include <chrono>
#include <optional>

#include <QByteArray>

#include "simulator/control/scenarios.h"

namespace Simulator
{

/// How firmware updates go.
struct UpdateOptions {
    /// Two bytes; empty for those of `ConfirmationOf()`.
    QByteArray confirmation;
    /// What the installed firmware reports, as in `Identity`.
    QByteArray newVersion = QByteArrayLiteral("106");
    /// From the confirmation to the restart.
    std::chrono::milliseconds installTime{1500};
};

/// The two bytes that confirm this image: its checksum, in the order of a frame's.
QByteArray ConfirmationOf(const QByteArray& image);

/// The firmware that the instrument receives: the sectors of an update from its beginning to its
/// confirmation.
class FirmwareUpdate
{
public:
    /// An empty confirmation means the one that belongs to what was received.
    explicit FirmwareUpdate(const QByteArray& confirmation);

    /// The sector is the one that the scenario names; the first has number 1.
    void SetScenario(Scenario scenario, int sector);

    bool RefusesUpdateMode() const { return _scenario == Scenario::RefusesUpdateMode; }

    /// Empties the store. False when it is refused.
    bool Initialize();

    /// True when the sector that comes next must neither be stored nor answered.
    bool LosesNextSector() const;

    /// Stores a sector behind the others. False when it is refused: before the initialization.
    bool StoreSector(const QByteArray& sector);

    /// How much is stored, in bytes.
    int Size() const { return _image.size(); }

    /// What was stored if these two bytes confirm it, otherwise nothing; the store is closed either way.
    std::optional<QByteArray> Finish(const QByteArray& confirmation);

    /// Forgets what was stored and takes no sector before the next initialization.
    void Close();

    /// Whether confirmed firmware becomes the one that runs.
    bool InstallsFirmware() const { return _scenario != Scenario::StaysInUpdateMode; }

    /// The mode in which the instrument comes back once the firmware is confirmed.
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
