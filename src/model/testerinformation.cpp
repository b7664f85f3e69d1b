#include <Vesmar/testerinformation.h>

namespace Vesmar
{

TesterInformation::TesterInformation(QObject* parent) : QObject(parent) {}

TesterInformation::~TesterInformation() = default;

} // namespace Vesmar
