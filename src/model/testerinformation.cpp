#include <Vesmar/testerinformation.h>

namespace Vesmar
{

TesterInformation::TesterInformation(QObject* parent)
    : QObject(parent),
      DeviceName(QStringLiteral("PAT")),
      DeviceCode(QStringLiteral("000")),
      SerialNumber(QStringLiteral("000000")),
      Version(QStringLiteral("000")),
      VersionCode(QStringLiteral("000")),
      RevisionCode(QStringLiteral("00")),
      BuildNumber(QStringLiteral("0000"))
{
}

TesterInformation::~TesterInformation() = default;

} // namespace Vesmar
