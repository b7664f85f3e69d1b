#pragma once

#include <map>
#include <memory>

#include <QByteArrayList>
#include <QObject>

#include <Vesmar/tester.h>

#include "support/logcapture.h"

/// The application's side in one test: a tester of its own, and all that it signals, recorded in the
/// thread in which the signal came. The library's trace is collected meanwhile.
class WatchedTester : public QObject
{
public:
    WatchedTester();
    ~WatchedTester() override;

    Vesmar::Tester* operator->() const { return _tester.get(); }

    /// What the property's signal has brought so far: an enumerator's number, a date and time, the texts of
    /// an identity, the readings of results.
    QByteArrayList Signalled(const char* property) const { return _signalled.at(property); }
    /// The latest of them; empty when there is none.
    QByteArray LastSignalled(const char* property) const
    {
        return Signalled(property).value(Signalled(property).size() - 1);
    }
    QByteArrayList Errors() const { return Signalled("ErrorCode"); }
    /// The error as it stands, also while its signal is still on its way.
    QByteArray ErrorCode() const { return QByteArray::number(static_cast<int>(_tester->ErrorCode())); }

    /// The states that the library has entered so far, as its trace calls them.
    QByteArrayList EnteredStates() const;
    /// Those that it has left so far.
    QByteArrayList LeftStates() const;
    /// How many lines of the trace have this part.
    int CountTraced(const QString& part) const;

    /// Whether the property's signals, but for the first ones, are as many as these values and brought them
    /// in their order. A signal that comes late has a later value already.
    bool HasSignalled(const char* property, const QByteArrayList& values, int first = 0) const;

    /// Whether every signal came on the thread in which the tester was made.
    bool HasStayedOnItsThread() const { return !_hasLeftItsThread; }

private:
    template <typename Value>
    void Watch(const char* property, void (Vesmar::Tester::*changed)(Value));
    void WatchEverything();
    QByteArrayList StatesOf(const char* event) const;

    LogCapture _trace;
    std::unique_ptr<Vesmar::Tester> _tester;
    std::map<QByteArray, QByteArrayList> _signalled;
    bool _hasLeftItsThread = false;
};

/// Readings, as `WatchedTester` records them, from the bytes of the instrument's answer.
QByteArray ReadingsText(const QByteArray& answer);

/// A date and time, as `WatchedTester` records it, from the bytes of the instrument's answer.
QByteArray DateText(const QByteArray& answer);
