#include <Vesmar/rcdiecresults.h>

namespace Vesmar
{

RCDIECResults::RCDIECResults(float ia, float ta)
    : MeasurementResults(MeasurementType::RCDIEC, nullptr), _ia(ia), _ta(ta)
{
}

RCDIECResults::~RCDIECResults() = default;

} // namespace Vesmar
