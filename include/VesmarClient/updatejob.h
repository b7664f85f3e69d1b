#pragma once

#include <VesmarClient/job.h>

namespace VesmarClient
{

struct UpdateState;

/// Replaces the instrument's firmware. It works from `LinkState::Up` and from `LinkState::UpdateMode`.
class VESMARCLIENT_EXPORT UpdateJob : public Job
{
    Q_OBJECT
    Q_PROPERTY(int sectors READ sectors CONSTANT)
    Q_PROPERTY(int sectorsConfirmed READ sectorsConfirmed NOTIFY progressChanged)
    Q_PROPERTY(qint64 timeLeft READ timeLeft NOTIFY progressChanged)
    Q_PROPERTY(QString versionBefore READ versionBefore CONSTANT)
    Q_PROPERTY(QString versionAfter READ versionAfter NOTIFY versionAfterChanged)

public:
    ~UpdateJob() override;

    /// How many sectors of 512 bytes the image has.
    int sectors() const;
    /// How many sectors the instrument has confirmed at the least: the driver counts in per cent.
    int sectorsConfirmed() const;
    /// About how long the sending goes on, in milliseconds; -1 while that is not known.
    qint64 timeLeft() const;
    /// The firmware's version when the update began; empty where the instrument did not tell it.
    QString versionBefore() const;
    /// The firmware's version when the instrument was back; empty before.
    QString versionAfter() const;

Q_SIGNALS:
    void progressChanged();
    void versionAfterChanged(const QString& version);

private:
    friend class Instrument;

    UpdateJob(int sectors, QObject* parent);

    std::unique_ptr<UpdateState> _update;
};

} // namespace VesmarClient
