#pragma once

#include <memory>

#include <QByteArray>
#include <QDateTime>
#include <QObject>

#include <Vesmar/measurementsettings.h>
#include <Vesmar/operationmode.h>

namespace Vesmar
{

class CRC16;

/// Builds every request frame: the command code, its data, and the checksum.
///
/// The frames of the getters are the builder's own and never change. The frames of the `Create` operations
/// are new ones, which the caller deletes. Nothing is validated. The worker's thread uses the builder; during
/// a synchronous update the application's thread does.
class CommandBuilder : public QObject
{
    Q_OBJECT

public:
    CommandBuilder(CRC16* crc16, QObject* parent);
    ~CommandBuilder() override;

    QByteArray* GetStatusFrame() const { return _statusFrame.get(); }
    QByteArray* GetVersionFrame() const { return _versionFrame.get(); }
    QByteArray* GetStartMeasurementFrame() const { return _startMeasurementFrame.get(); }
    QByteArray* GetStopMeasurementFrame() const { return _stopMeasurementFrame.get(); }
    QByteArray* GetReadMeasurementFrame() const { return _readMeasurementFrame.get(); }
    QByteArray* GetReadCurrentDateFrame() const { return _readCurrentDateFrame.get(); }
    QByteArray* GetReadCalibrationDateFrame() const { return _readCalibrationDateFrame.get(); }
    QByteArray* GetInitializeUpdateFrame() const { return _initializeUpdateFrame.get(); }

    QByteArray* CreateProgramFlashSectorFrame(const QByteArray& sector) const;
    /// The data are the last two bytes of `confirmation`, which must have two.
    QByteArray* CreateFinishUpdateFrame(const QByteArray& confirmation) const;
    QByteArray* CreateChangeTesterModeFrame(OperationMode mode) const;
    /// The data are the settings' payload. Settings of a base class have none.
    QByteArray* CreatePrepareMeasurementFrame(MeasurementSettings& settings) const;
    QByteArray* CreateSetCurrentDateTimeFrame(const QDateTime& dateTime) const;
    /// Sends the date alone; the time of day goes out as zeros.
    QByteArray* CreateSetCalibrationDateTimeFrame(const QDateTime& dateTime) const;

private:
    QByteArray* CreateFrame(char command, const QByteArray& data = {}) const;

    CRC16* _crc16;
    std::unique_ptr<QByteArray> _statusFrame;
    std::unique_ptr<QByteArray> _versionFrame;
    std::unique_ptr<QByteArray> _startMeasurementFrame;
    std::unique_ptr<QByteArray> _stopMeasurementFrame;
    std::unique_ptr<QByteArray> _readMeasurementFrame;
    std::unique_ptr<QByteArray> _readCurrentDateFrame;
    std::unique_ptr<QByteArray> _readCalibrationDateFrame;
    std::unique_ptr<QByteArray> _initializeUpdateFrame;
};

} // namespace Vesmar
