#pragma once

#include "integration/bench.h"

/// A firmware image of so many sectors, no two of them alike.
inline QByteArray ImageOf(int sectors, int seed = 0)
{
    QByteArray image(sectors * 512, '\0');
    for (int place = 0; place < image.size(); ++place) {
        image[place] = static_cast<char>(seed + place / 512 * 37 + place * place / 7);
    }
    return image;
}

/// The requests that update with the image.
inline QByteArrayList UpdateRequests(const QByteArray& image)
{
    QByteArrayList requests{Wire::InitializeUpdate};
    for (int offset = 0; offset < image.size(); offset += 512) {
        requests.append(WithChecksum('F' + image.mid(offset, 512)));
    }
    requests.append(WithChecksum('Z' + WithChecksum(image).right(2)));
    return requests;
}

/// What `OperationStatus` goes through in an update that succeeds.
inline const QByteArrayList WholeOperation{"1", "2", "3", "0"};

/// An application that updates the firmware of an instrument of its own.
class UpdateBench : public Bench
{
public:
    explicit UpdateBench(Simulator::Scenario scenario = Simulator::Scenario::None, int sector = 1)
    {
        instrument.SetScenario(scenario, sector);
    }

    /// Connects to the instrument, which is in update mode already.
    void ConnectInUpdateMode()
    {
        instrument.SetMode(3);
        tester->Enable();
        AwaitState(Trace::Awaiting);
    }

    void AwaitState(const char* state) const
    {
        AWAIT_EQUAL(tester.EnteredStates().value(tester.EnteredStates().size() - 1), QByteArray(state));
    }

    /// Waits for a signal of this property, the `number`th.
    void AwaitSignal(const char* property, int number) const
    {
        AWAIT(tester.Signalled(property).size() >= number);
    }

    /// Updates with the image, which any data confirm that end in its checksum.
    bool Update(const QByteArray& image) const { return tester->UpdateTester(image, WithChecksum(image)); }
};
