#include <VesmarClient/instrument.h>

#include "client/instrument/instrumentstate.h"

namespace VesmarClient
{

Instrument::Instrument(QObject* parent) : QObject(parent), _state(std::make_unique<InstrumentState>(*this)) {}

Instrument::~Instrument() = default;

LinkState Instrument::linkState() const
{
    return _state->linkState;
}

Identity Instrument::identity() const
{
    return _state->identity;
}

Mode Instrument::mode() const
{
    return _state->mode;
}

QDateTime Instrument::clock() const
{
    return _state->clock;
}

QDateTime Instrument::calibrationDate() const
{
    return _state->calibrationDate;
}

Error Instrument::error() const
{
    return _state->error;
}

Function Instrument::activeFunction() const
{
    return _state->activeFunction;
}

FunctionState Instrument::functionState() const
{
    return _state->functionState;
}

StartTestResult Instrument::startTestResult() const
{
    return _state->startTestResult;
}

Result Instrument::mains() const
{
    return _state->mains;
}

LinkStatistics Instrument::statistics() const
{
    return _state->statistics;
}

bool Instrument::isBusy() const
{
    return _state->IsBusy();
}

bool Instrument::isUnattended() const
{
    return _state->isUnattended;
}

GuardPolicy Instrument::guardPolicy() const
{
    return _state->guardPolicy;
}

void Instrument::setGuardPolicy(GuardPolicy policy)
{
    if (policy != _state->guardPolicy) {
        _state->guardPolicy = policy;
        Q_EMIT guardPolicyChanged(policy);
    }
}

void Instrument::open()
{
    QMetaObject::invokeMethod(_state->host, &Host::Open, Qt::QueuedConnection);
}

void Instrument::close()
{
    QMetaObject::invokeMethod(_state->host, &Host::Close, Qt::QueuedConnection);
}

} // namespace VesmarClient
