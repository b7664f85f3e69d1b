#pragma once

#include <QDateTime>
#include <QTimer>

#include <Vesmar/tester.h>

namespace Cli
{

/// One of the two dates that the instrument keeps, as the library gives access to it.
struct InstrumentDate {
    void (Vesmar::Tester::*changed)(QDateTime);
    void (Vesmar::Tester::*configure)(const QDateTime&);
    void (Vesmar::Tester::*retrieve)();
};

/// Sets a date at the instrument, and waits until the instrument itself reports one.
///
/// The library takes a date that is to be set for the present one at once, and tells only of changes: what it
/// tells next that is not the value set comes from the instrument. The date must not be asked for before it
/// has been sent, because the answer would replace it. The identity, which the library reads first of all
/// that is asked of it, tells when it is safe.
class DateWriter : public QObject
{
    Q_OBJECT

public:
    /// The tester outlives this.
    DateWriter(Vesmar::Tester& tester, const InstrumentDate& date);

    /// When the link is up, and once only. The instrument must come to report another value than this one.
    void Set(const QDateTime& value);

Q_SIGNALS:
    /// Told once.
    void Reported(const QDateTime& value);

private:
    void Ask();
    void Follow(const QDateTime& value);

    Vesmar::Tester& _tester;
    InstrumentDate _date;
    QDateTime _value;
    QTimer _askAgain;
};

} // namespace Cli
