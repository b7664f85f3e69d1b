#pragma once

#include <QVector>

#include <VesmarClient/gap.h>
#include <VesmarClient/job.h>
#include <VesmarClient/result.h>
#include <VesmarClient/settings.h>

namespace VesmarClient
{

struct MeasurementState;

/// A measurement, from the instrument that is up to the proof that it has stopped.
class VESMARCLIENT_EXPORT Measurement : public Job
{
    Q_OBJECT
    Q_PROPERTY(VesmarClient::Settings settings READ settings CONSTANT)
    Q_PROPERTY(VesmarClient::Result latest READ latest NOTIFY reading)
    Q_PROPERTY(qint64 age READ age NOTIFY ageChanged)
    Q_PROPERTY(QVector<VesmarClient::Gap> gaps READ gaps NOTIFY gapsChanged)
    Q_PROPERTY(qint64 remaining READ remaining NOTIFY remainingChanged)
    Q_PROPERTY(bool isStopConfirmed READ isStopConfirmed NOTIFY isStopConfirmedChanged)
    Q_PROPERTY(int keepAliveInterval READ keepAliveInterval WRITE setKeepAliveInterval NOTIFY
                   keepAliveIntervalChanged)

public:
    ~Measurement() override;

    /// What is measured.
    Settings settings() const;
    /// The latest result; empty before the first one.
    Result latest() const;
    /// How old the latest result is, in milliseconds; -1 before the first one.
    qint64 age() const;
    /// The times without a reading so far, the present one included.
    QVector<Gap> gaps() const;
    /// How many milliseconds the measurement goes on; -1 where that is not known.
    qint64 remaining() const;
    /// Whether it is proved that nothing runs at the instrument any more. Known when `finished` is emitted.
    /// Where it is false, treat the instrument as if it still ran: a dangerous voltage may be present.
    bool isStopConfirmed() const;

    /// How often the application has to call `keepAlive`, in milliseconds, at the least 100. A measurement
    /// that does not hear from it in time is aborted, with the failure "keep-alive-missed". Default 0: it
    /// need not.
    int keepAliveInterval() const;
    void setKeepAliveInterval(int milliseconds);

public Q_SLOTS:
    /// Says that the application, and whoever holds its button, is still there.
    void keepAlive();

Q_SIGNALS:
    /// A result has been read.
    void reading(const VesmarClient::Result& result);
    /// Emitted about once a second.
    void ageChanged(qint64 milliseconds);
    /// A gap has begun, has become longer by about a second, or is over.
    void gapsChanged();
    /// Emitted about once a second while it is known.
    void remainingChanged(qint64 milliseconds);
    /// Emitted before `finished` where the stop is confirmed.
    void isStopConfirmedChanged(bool isStopConfirmed);
    void keepAliveIntervalChanged(int milliseconds);

private:
    friend class Instrument;

    Measurement(const Settings& settings, QObject* parent);

    std::unique_ptr<MeasurementState> _measurement;
};

} // namespace VesmarClient
