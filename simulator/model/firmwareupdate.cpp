#include "simulator/model/firmwareupdate.h"

#include "simulator/wire/frames.h"
#include "simulator/wire/statusword.h"

namespace Simulator
{

QByteArray ConfirmationOf(const QByteArray& image)
{
    return Sealed(image).mid(image.size());
}

FirmwareUpdate::FirmwareUpdate(const QByteArray& confirmation) : _confirmation(confirmation) {}

void FirmwareUpdate::SetScenario(Scenario scenario, int sector)
{
    _scenario = scenario;
    _scenarioSector = sector;
}

bool FirmwareUpdate::Initialize()
{
    Close();
    _isInitialized = _scenario != Scenario::RefusesInitialize;
    return _isInitialized;
}

bool FirmwareUpdate::LosesNextSector() const
{
    return _isInitialized && _scenario == Scenario::LosesSector && NextSector() == _scenarioSector;
}

bool FirmwareUpdate::StoreSector(const QByteArray& sector)
{
    if (!_isInitialized || (_scenario == Scenario::RefusesSector && NextSector() == _scenarioSector)) {
        return false;
    }
    _image.append(sector);
    return true;
}

std::optional<QByteArray> FirmwareUpdate::Finish(const QByteArray& confirmation)
{
    std::optional<QByteArray> confirmed;
    if (IsConfirmedBy(confirmation)) {
        confirmed = _image;
    }
    Close();
    return confirmed;
}

void FirmwareUpdate::Close()
{
    _isInitialized = false;
    _image.clear();
}

int FirmwareUpdate::ModeAfterwards() const
{
    switch (_scenario) {
    case Scenario::StaysInUpdateMode:
        return Mode::Update;
    case Scenario::ComesBackInMode2:
        return Mode::Service;
    default:
        return Mode::Normal;
    }
}

bool FirmwareUpdate::IsConfirmedBy(const QByteArray& confirmation) const
{
    if (_image.isEmpty() || _scenario == Scenario::RefusesConfirmation) {
        return false;
    }
    return confirmation == (_confirmation.isEmpty() ? ConfirmationOf(_image) : _confirmation);
}

int FirmwareUpdate::NextSector() const
{
    return _image.size() / SectorSize + 1;
}

} // namespace Simulator
