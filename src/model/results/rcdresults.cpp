#include <Vesmar/rcdresults.h>

namespace Vesmar
{

RCDResults::RCDResults(float re, float ia, float ta)
    : MeasurementResults(MeasurementType::RCD, nullptr), _re(re), _ia(ia), _ta(ta)
{
}

RCDResults::~RCDResults() = default;

} // namespace Vesmar
