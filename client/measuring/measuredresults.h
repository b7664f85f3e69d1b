#pragma once

#include <QPointer>

#include <Vesmar/tester.h>

namespace VesmarClient
{

/// Picks the results of what is measured out of all that the driver publishes.
class MeasuredResults
{
public:
    /// What the driver has published until now belongs to earlier measurements.
    explicit MeasuredResults(const Vesmar::Tester& tester);

    /// The driver's present results where they are new ones of this function, which the instrument reports as
    /// `active`; otherwise null.
    Vesmar::MeasurementResults* Accept(Vesmar::MeasurementType function, Vesmar::MeasurementType active);

private:
    const Vesmar::Tester& _tester;
    QPointer<Vesmar::MeasurementResults> _seen; ///< Those of the function that were seen last.
};

} // namespace VesmarClient
