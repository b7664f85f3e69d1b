#pragma once

#include <QVector>

#include <VesmarClient/gap.h>
#include <VesmarClient/job.h>
#include <VesmarClient/result.h>
#include <VesmarClient/settings.h>

namespace VesmarClient
{

struct MeasurementState;

/// How long a measurement may keep one waiting, in milliseconds.
struct MeasurementTimeouts {
    int prepare = 10000; ///< For preparing, and then again for starting.
    int stop = 15000;    ///< For stopping, and then again for its proof.
};

/// A measurement, from the instrument that is up to the proof that it has stopped. Its time is counted on the
/// driver's thread: an application that hangs does not prolong it.
///
/// A measurement in two phases, such as Ub/Re and then Ia/Ta with its Re, is one job, whose phases come
/// twice. A link that is lost in the middle ends it with `Outcome::LinkLost`: the driver gives it up and,
/// once the link is back, stops the function. A link that falls silent for a while, and comes back before the
/// driver counts it as lost (up to about 12 s), leaves a gap, with which a measurement that is completed ends
/// as `Outcome::Interrupted`.
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
    /// The latest result; empty before the first one, and when the instrument has given the measurement up
    /// for another function, whose readings might be in it.
    Result latest() const;
    /// How old the latest result is, in milliseconds; -1 before the first one.
    qint64 age() const;
    /// The times of a second or longer without a reading so far, the present one included. Only a continuous
    /// function has gaps: the others have one result, or none.
    QVector<Gap> gaps() const;
    /// How many milliseconds the measurement goes on once it runs, 0 after that; -1 where that is not known.
    qint64 remaining() const;
    /// Whether it is proved that nothing runs at the instrument any more. Known when `finished` is emitted.
    /// Where it is false, treat the instrument as if it still ran: a dangerous voltage may be present.
    bool isStopConfirmed() const;

    /// How often the application has to call `keepAlive`, in milliseconds, at the least 100. A measurement
    /// that does not hear from it in time is aborted: its outcome is `Outcome::Aborted`, its failure
    /// "keep-alive-missed". The time counts on the driver's thread, from when it is set. Default 0: it need
    /// not.
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
