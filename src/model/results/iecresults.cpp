#include <Vesmar/iecresults.h>

#include "model/truncate.h"

namespace Vesmar
{

IECResults::IECResults(float result, float voltage, float uln, float step, float delay)
    : MeasurementResults(MeasurementType::IEC, nullptr),
      _result(Truncate(result)),
      _voltage(voltage),
      _uln(uln),
      _step(step),
      _delay(delay / 1000.0F)
{
}

IECResults::~IECResults() = default;

} // namespace Vesmar
