#pragma once

#include <QtTest>

#include "integration/frames.h"
#include "integration/lineinstrument.h"
#include "integration/patience.h"
#include "integration/watchedtester.h"
#include "support/scriptedpeer.h"

namespace Frames
{

constexpr char ChangeToUpdateMode[] = "780393b1";
constexpr char InitializeUpdate[] = "56333a";

} // namespace Frames

/// The states of the machine, as the trace calls them.
namespace Trace
{

constexpr char Awaiting[] = "AWAIT UPDATE ACTION";
constexpr char Updating[] = "UPDATING";
constexpr char Restarting[] = "RESTARTING TESTER";
constexpr char Monitoring[] = "MONITORING";

} // namespace Trace

/// A firmware image of so many sectors, no two of them alike.
inline QByteArray ImageOf(int sectors, int seed = 0)
{
    QByteArray image(sectors * 512, '\0');
    for (int place = 0; place < image.size(); ++place) {
        image[place] = static_cast<char>(seed + place / 512 * 37 + place * place / 7);
    }
    return image;
}

/// What confirms an image: any data that end in its checksum.
inline QByteArray ConfirmationOf(const QByteArray& image)
{
    return WithChecksum(image);
}

/// What goes over the line to update with the image, in hexadecimal.
inline QByteArrayList UpdateRequests(const QByteArray& image)
{
    QByteArrayList requests{Frames::InitializeUpdate};
    for (int offset = 0; offset < image.size(); offset += 512) {
        requests.append(WithChecksum('F' + image.mid(offset, 512)).toHex());
    }
    requests.append(WithChecksum('Z' + WithChecksum(image).right(2)).toHex());
    return requests;
}

/// Whether there was a signal for each of these values in their order. One that comes late has a later value
/// already.
inline bool TellOf(const QByteArrayList& signalled, const QByteArrayList& values)
{
    int reached = 0;
    for (int index = 0; index < signalled.size(); ++index) {
        const int value = values.indexOf(signalled.at(index));
        if (value < index || value < reached) {
            return false;
        }
        reached = value;
    }
    return signalled.size() == values.size();
}

/// What `OperationStatus` goes through in an update that succeeds.
inline const QByteArrayList WholeOperation{"1", "2", "3", "0"};

/// An application that updates the firmware of an instrument of its own.
class UpdateBench
{
public:
    explicit UpdateBench(Simulator::Scenario scenario = Simulator::Scenario::None, int sector = 1)
    {
        instrument.SetScenario(scenario, sector);
    }

    /// Enables, and waits until the instrument is being monitored.
    void Connect() const
    {
        tester->Enable();
        QTRY_VERIFY_WITH_TIMEOUT(!tester.Signalled("TestResults").isEmpty(), Patience);
    }

    /// The same at an instrument that is in update mode already.
    void ConnectInUpdateMode()
    {
        instrument.SetMode(3);
        tester->Enable();
        AwaitState(Trace::Awaiting);
    }

    void AwaitState(const char* state) const
    {
        QTRY_COMPARE_WITH_TIMEOUT(tester.EnteredStates().value(tester.EnteredStates().size() - 1),
                                  QByteArray(state), Patience);
    }

    /// Waits for a signal of this property, the `number`th.
    void AwaitSignal(const char* property, int number) const
    {
        QTRY_VERIFY_WITH_TIMEOUT(tester.Signalled(property).size() >= number, Patience);
    }

    bool Update(const QByteArray& image) const { return tester->UpdateTester(image, ConfirmationOf(image)); }

    /// The requests from the first of this kind on.
    QByteArrayList SentSince(const char* request) const
    {
        const QByteArrayList sent = instrument.Sent();
        const int first = sent.indexOf(request);
        return first < 0 ? QByteArrayList() : QByteArrayList(sent.mid(first));
    }

    int CountSent(const char* request) const { return static_cast<int>(instrument.Sent().count(request)); }

    LineInstrument instrument; // First: the line is the instrument's.
    WatchedTester tester;
};
