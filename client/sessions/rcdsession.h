#pragma once

#include "client/catalogue/rcdtest.h"
#include "client/sessions/measurementsession.h"

namespace VesmarClient
{

/// Leads one test of a residual-current device.
///
/// The library prepares and watches the Ub/Re test before it is started; only then does it report what is
/// wrong with the object under test. It leads the other tests to their end in one go. A test is over when
/// `MeasurementStatus` is `Stopped`, or `Unknown` a moment later. `ErrorCode` then says whether anything went
/// wrong: an error that was seen earlier may have been overcome.
class RcdSession : public MeasurementSession
{
public:
    explicit RcdSession(RcdTest test);

    Action TimeOver() override;

protected:
    Action FirstAction() const override;
    Action ObservePreparing(const MeasurementPicture& picture) override;
    Action ObserveMeasuring(const MeasurementPicture& picture) override;
    bool MayAbort() const override { return CurrentPhase() != Phase::AwaitingIdle; }

private:
    Action ObserveWatch(const MeasurementPicture& picture);
    Action ObserveCheck(const MeasurementPicture& picture);
    Action ObserveTest(const MeasurementPicture& picture);
    Action StartWatched();
    Phase PhaseOf(const MeasurementPicture& picture) const;
    void RecordProgress(Vesmar::MeasurementState status);
    bool IsOver(const MeasurementPicture& picture) const;
    Action End(const MeasurementPicture& picture);

    RcdTest _test;
    Vesmar::Error _objectError =
        Vesmar::Error::NoErrors; ///< What the last check of the object under test has found.
    bool _isStartAsked;
    bool _isUnderWay = false;    ///< A status `Unknown` is not from before the test.
    bool _wasStartTried = false; ///< The test has been prepared, and its start was tried.
};

} // namespace VesmarClient
