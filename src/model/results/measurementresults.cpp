#include <Vesmar/measurementresults.h>

namespace Vesmar
{

MeasurementResults::MeasurementResults(MeasurementType measurementType, QObject* parent)
    : QObject(parent), _measurementType(measurementType)
{
}

MeasurementResults::~MeasurementResults() = default;

} // namespace Vesmar
