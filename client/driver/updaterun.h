#pragma once

#include <QByteArray>
#include <QTimer>

#include <memory>

#include <Vesmar/tester.h>

#include "client/driver/run.h"
#include "client/sessions/readiness.h"
#include "client/sessions/updatesession.h"

namespace VesmarClient
{

/// Sends the instrument its firmware, and lets a session observe it.
class UpdateRun : public Run
{
    Q_OBJECT

public:
    /// The number of bytes in each of the pieces in which the instrument receives its firmware.
    static constexpr int SectorSize = 512;

    /// How the firmware reaches the instrument.
    enum class Way {
        Usual,
        Blind ///< Without the driver's state machine, over a link that need not be up.
    };

    UpdateRun(QByteArray image, QByteArray confirmation, std::chrono::milliseconds limit, Way way);

    bool MayBegin(LinkState state) const override;
    void Begin() override;
    /// Does nothing while an end would leave the instrument without firmware.
    void Abort() override;

Q_SIGNALS:
    /// At least so many sectors are confirmed.
    void Progressed(int sectors);
    /// The version with which the instrument is back.
    void VersionAfter(const QString& version);

private:
    using SessionPhase = UpdateSession::Phase;

    void WatchInstrument();
    void LeaveMachine();
    void SendBlindly();
    UpdatePicture Picture() const;
    void ReceiveIdentity();
    void ObserveInstrument();
    void EnterPhase();
    void AwaitMode();
    void End();
    void WithdrawRequest();
    void AwaitReadiness();
    void AwaitLink();
    void Conclude();

    Vesmar::Tester& Instrument() const { return *Vesmar::Tester::Instance(); }

    QByteArray _image;
    QByteArray _confirmation;
    std::chrono::milliseconds _timeLimit;
    Way _way;
    UpdateSession _session;
    SessionPhase _phase = SessionPhase::Connecting;
    int _sectors = 0; ///< That were told last.
    std::unique_ptr<QTimer> _limit;
    std::unique_ptr<QTimer> _modeCheck;
    std::unique_ptr<QTimer> _linkCheck;
    std::unique_ptr<Readiness> _readiness;
};

} // namespace VesmarClient
