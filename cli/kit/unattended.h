#pragma once

#include <QJsonObject>
#include <QObject>

#include <VesmarClient/instrument.h>

namespace Cli
{

/// Tells of a function that is active at the instrument and that no program attends. The driver tells it to
/// stop by itself.
class UnattendedWatch : public QObject
{
    Q_OBJECT

public:
    explicit UnattendedWatch(VesmarClient::Instrument& instrument);

Q_SIGNALS:
    /// Such a function was found, or is not active any more: for people, and the fields of the event.
    void Told(const QString& sentence, const QJsonObject& fields);

private:
    void ReceiveChange(bool isUnattended);
    void Tell(const QString& sentence, bool isActive);

    VesmarClient::Instrument& _instrument;
    VesmarClient::Function _function = VesmarClient::Function::None; ///< That was told last.
};

/// What is said of a function that is active while no program attends it; it has places for its name and its
/// state.
QString UnattendedText(VesmarClient::Function function);

} // namespace Cli
