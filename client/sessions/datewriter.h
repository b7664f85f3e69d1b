#pragma once

#include <QDateTime>
#include <QTimer>

#include <Vesmar/tester.h>

namespace VesmarClient
{

/// One of the two dates that the instrument keeps, as the library gives access to it.
struct InstrumentDate {
    QDateTime (Vesmar::Tester::*present)() const;
    void (Vesmar::Tester::*changed)(QDateTime);
    void (Vesmar::Tester::*configure)(const QDateTime&);
    void (Vesmar::Tester::*retrieve)();
};

/// Sets a date at the instrument, and waits until the instrument itself reports one.
///
/// The library shows a date that is to be set as the present one at once, and tells only of changes. So the
/// next date that it tells and that is not the value set comes from the instrument. The date must not be
/// asked for before it has been sent, because the answer would replace it. Of all that is asked for, the
/// library reads the identity first: its arrival tells that the date may be asked for.
class DateWriter : public QObject
{
    Q_OBJECT

public:
    /// The tester outlives this.
    DateWriter(Vesmar::Tester& tester, const InstrumentDate& date);

    /// Sends the date to the instrument. To be called once, when the link is up. The value must be one that
    /// the instrument does not report exactly: only another one counts as reported.
    void Set(const QDateTime& value);

Q_SIGNALS:
    /// The date has been sent, and the instrument is being asked for its own.
    void Asked();
    /// Emitted once.
    void Reported(const QDateTime& value);

private:
    void Ask();
    void ReceiveDate(const QDateTime& value);

    Vesmar::Tester& _tester;
    InstrumentDate _date;
    QDateTime _value;
    QTimer _askAgain;
};

} // namespace VesmarClient
