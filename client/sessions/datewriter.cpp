#include "client/sessions/datewriter.h"

namespace VesmarClient
{

namespace
{

constexpr std::chrono::milliseconds PauseBetweenQuestions{200};

/// The driver keeps its present date where the new one is the same instant in another time zone. No date of
/// the instrument has milliseconds, and none are sent.
QDateTime KeptApart(const QDateTime& value, const QDateTime& present)
{
    const bool hasSameFields = value.date() == present.date() && value.time() == present.time();
    return value == present && !hasSameFields ? value.addMSecs(1) : value;
}

} // namespace

using Vesmar::Tester;

DateWriter::DateWriter(Tester& tester, const InstrumentDate& date) : _tester(tester), _date(date)
{
    connect(&_askAgain, &QTimer::timeout, this, &DateWriter::Ask);
}

void DateWriter::Set(const QDateTime& value)
{
    _value = KeptApart(value, (_tester.*_date.present)());
    connect(&_tester, _date.changed, this, &DateWriter::ReceiveDate);
    connect(&_tester, &Tester::DeviceInformationChanged, this,
            [this] { _askAgain.start(PauseBetweenQuestions); });
    (_tester.*_date.configure)(_value);
    _tester.RetrieveDeviceInformation();
}

void DateWriter::Ask()
{
    (_tester.*_date.retrieve)();
    Q_EMIT Asked();
}

void DateWriter::ReceiveDate(const QDateTime& value)
{
    if (value == _value) {
        return;
    }
    _askAgain.stop();
    _tester.disconnect(this);
    Q_EMIT Reported(value);
}

} // namespace VesmarClient
