#pragma once

#include <QObject>
#include <QTimer>

#include <memory>

#include <Vesmar/tester.h>

#include "client/guard/application.h"
#include "client/line/device.h"
#include "client/sessions/readiness.h"

namespace VesmarClient
{

/// Takes the line over from an application that has ended, has the driver stop what runs at the instrument,
/// and waits for the proof.
///
/// The driver stops by itself whatever is active when it has come up. The proof is that no function is active
/// after an answer that was asked for then.
class Takeover : public QObject
{
    Q_OBJECT

public:
    enum class Outcome {
        Stopped,      ///< It is proved that no function is active.
        UpdateMode,   ///< The instrument waits for firmware, and measures nothing.
        NotConfirmed, ///< There was no proof in time.
    };

    /// Both outlive this. The tester is not enabled yet.
    Takeover(Vesmar::Tester& tester, const Application& application);

    /// To be called once.
    void Begin();

    /// What was found active, and stopped: `None` where there was nothing.
    Vesmar::MeasurementType StoppedFunction() const { return _function; }

Q_SIGNALS:
    /// Emitted once. The driver goes on, and the line stays locked as long as this lives.
    void Finished(VesmarClient::Takeover::Outcome outcome);

private:
    void LockLine();
    bool IsLineFree(const Device& device) const;
    void Connect();
    void ReceiveIdentity();
    void ReceiveError(Vesmar::Error error);
    void Observe();
    void End(Outcome outcome);

    Vesmar::Tester& _tester;
    const Application& _application;
    std::unique_ptr<Device> _device; ///< Locked; null until the line is free.
    QTimer _limit;
    QTimer _nextTry;
    ReadinessSteps _readiness;
    bool _isUp = false;
    bool _isOver = false;
    Vesmar::MeasurementType _function = Vesmar::MeasurementType::None;
};

} // namespace VesmarClient
