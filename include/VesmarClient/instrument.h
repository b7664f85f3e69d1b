#pragma once

#include <QDateTime>
#include <QObject>
#include <QVariantMap>

#include <memory>

#include <VesmarClient/datejobs.h>
#include <VesmarClient/failure.h>
#include <VesmarClient/identity.h>
#include <VesmarClient/linkstatistics.h>
#include <VesmarClient/measurement.h>
#include <VesmarClient/plainjobs.h>
#include <VesmarClient/result.h>
#include <VesmarClient/settings.h>
#include <VesmarClient/updatejob.h>

namespace VesmarClient
{

struct InstrumentState;

/// The instrument at the serial line. An application creates one, opens it, and asks it for jobs, of which
/// one is carried out at a time.
///
/// The driver works on a thread of its own: nothing here blocks the caller, and an application that hangs
/// neither prolongs a measurement nor delays an abort that it has asked for. All signals are emitted on the
/// thread that has created the object, which needs an event loop.
class VESMARCLIENT_EXPORT Instrument : public QObject
{
    Q_OBJECT
    Q_PROPERTY(VesmarClient::LinkState linkState READ linkState NOTIFY linkStateChanged)
    Q_PROPERTY(VesmarClient::Identity identity READ identity NOTIFY identityChanged)
    Q_PROPERTY(VesmarClient::Mode mode READ mode NOTIFY modeChanged)
    Q_PROPERTY(QDateTime clock READ clock NOTIFY clockChanged)
    Q_PROPERTY(QDateTime calibrationDate READ calibrationDate NOTIFY calibrationDateChanged)
    Q_PROPERTY(VesmarClient::Error error READ error NOTIFY errorChanged)
    Q_PROPERTY(VesmarClient::Function activeFunction READ activeFunction NOTIFY activeFunctionChanged)
    Q_PROPERTY(VesmarClient::FunctionState functionState READ functionState NOTIFY functionStateChanged)
    Q_PROPERTY(
        VesmarClient::StartTestResult startTestResult READ startTestResult NOTIFY startTestResultChanged)
    Q_PROPERTY(VesmarClient::Result mains READ mains NOTIFY mainsChanged)
    Q_PROPERTY(VesmarClient::LinkStatistics statistics READ statistics NOTIFY statisticsChanged)
    Q_PROPERTY(bool isBusy READ isBusy NOTIFY isBusyChanged)
    Q_PROPERTY(bool isUnattended READ isUnattended NOTIFY isUnattendedChanged)
    Q_PROPERTY(
        VesmarClient::GuardPolicy guardPolicy READ guardPolicy WRITE setGuardPolicy NOTIFY guardPolicyChanged)

public:
    /// How many milliseconds the instrument may take for what a job asks of it.
    static constexpr int UsualTimeLimit = 30000;

    /// An instrument that is not opened yet.
    explicit Instrument(QObject* parent = nullptr);
    /// Closes the line first, which waits for a measurement that is under way to be stopped, and for an
    /// update to be sent. Call `close` and wait for `LinkState::Closed` to avoid that.
    ~Instrument() override;

    /// What the line is doing. Default `LinkState::Closed`.
    LinkState linkState() const;
    /// Which instrument is at the line; empty until it has been read.
    Identity identity() const;
    /// The mode that the instrument is in, as it was read last. Default `Mode::Normal`.
    Mode mode() const;
    /// The instrument's clock when it was read last, in its own fields, as a time in UTC; invalid until then.
    QDateTime clock() const;
    /// The date of the last calibration; invalid until it has been read.
    QDateTime calibrationDate() const;
    /// What is wrong at present. Default `Error::NoErrors`.
    Error error() const;
    /// What runs at the instrument, whoever has started it; `Function::None` until it is known.
    Function activeFunction() const;
    /// The state of the active function; `FunctionState::Unknown` while none is active.
    FunctionState functionState() const;
    /// The instrument's start test, as it was reported last. Default `StartTestResult::Unknown`.
    StartTestResult startTestResult() const;
    /// The latest readings of the mains; empty until there are some.
    Result mains() const;
    /// How good the line is, as of the last second. It counts while a `TraceRouter` is there.
    LinkStatistics statistics() const;
    /// Whether a job is under way. While one is, all others but `stop` fail with the name "busy".
    bool isBusy() const;
    /// Whether a function runs at the instrument that no job has started, or that has outlived its
    /// application. The driver stops it by itself; `stop` proves it.
    bool isUnattended() const;

    /// For which measurements the guard watches; without it, they fail with "guard-missing". Default
    /// `GuardPolicy::Dangerous`; what is set holds from the next measurement on.
    GuardPolicy guardPolicy() const;
    void setGuardPolicy(GuardPolicy policy);

    /// Measures. Settings that are not valid, a line that is not up and a job that is under way are told as a
    /// failed job, before anything is sent.
    Measurement* measure(const Settings& settings, const MeasurementTimeouts& timeouts = {});
    /// The same, for QML.
    Q_INVOKABLE VesmarClient::Measurement* measure(const QString& function, const QVariantMap& options = {});
    /// Sets the instrument's clock to these fields, whatever their time zone. The time limit is in
    /// milliseconds here and below.
    Q_INVOKABLE VesmarClient::ClockJob* setClock(const QDateTime& value, int timeLimit = UsualTimeLimit);
    /// Sets the date of the calibration likewise.
    Q_INVOKABLE VesmarClient::CalibrationJob* setCalibrationDate(const QDateTime& value,
                                                                 int timeLimit = UsualTimeLimit);
    /// Restarts the instrument, and waits until it is back.
    Q_INVOKABLE VesmarClient::RestartJob* restart(int timeLimit = UsualTimeLimit);
    /// Replaces the firmware. The image is a multiple of 512 bytes, the confirmation at least 2 bytes; what
    /// cannot work is refused before anything is sent. The time limit is for the change of the mode, and then
    /// again for the way back.
    Q_INVOKABLE VesmarClient::UpdateJob* update(const QByteArray& image, const QByteArray& confirmation,
                                                int timeLimit = UsualTimeLimit);
    /// The same for an instrument that accepts firmware and tells nothing any more: the link need not be up.
    /// It is not aborted from its beginning on.
    Q_INVOKABLE VesmarClient::UpdateJob*
    updateBlindly(const QByteArray& image, const QByteArray& confirmation, int timeLimit = UsualTimeLimit);
    /// Ends whatever runs, a measurement of this application included, and proves it. It aborts the job under
    /// way and begins when that has ended.
    Q_INVOKABLE VesmarClient::StopJob* stop();

public Q_SLOTS:
    /// Takes the line and looks for the instrument. Returns at once; `linkStateChanged` or `openFailed`
    /// follows.
    void open();
    /// Ends what is under way, with the proof that it has stopped, and gives the line back. Returns at once;
    /// `LinkState::Closed` follows.
    void close();

Q_SIGNALS:
    /// The line cannot be taken: there is no device, no permission, or another program holds it.
    void openFailed(const VesmarClient::Failure& failure);
    void linkStateChanged(VesmarClient::LinkState state);
    void identityChanged(const VesmarClient::Identity& identity);
    void modeChanged(VesmarClient::Mode mode);
    void clockChanged(const QDateTime& value);
    void calibrationDateChanged(const QDateTime& value);
    void errorChanged(VesmarClient::Error error);
    void activeFunctionChanged(VesmarClient::Function function);
    void functionStateChanged(VesmarClient::FunctionState state);
    void startTestResultChanged(VesmarClient::StartTestResult result);
    void mainsChanged(const VesmarClient::Result& result);
    void statisticsChanged(const VesmarClient::LinkStatistics& statistics);
    void isBusyChanged(bool isBusy);
    void isUnattendedChanged(bool isUnattended);
    void guardPolicyChanged(VesmarClient::GuardPolicy policy);

private:
    UpdateJob* beginUpdate(const QByteArray& image, const QByteArray& confirmation, int timeLimit,
                           bool isBlind);

    std::unique_ptr<InstrumentState> _state;
};

} // namespace VesmarClient
