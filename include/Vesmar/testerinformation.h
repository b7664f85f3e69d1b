#pragma once

#include <QObject>
#include <QString>

#include <Vesmar/export.h>

namespace Vesmar
{

/// The instrument's identity, as texts.
///
/// The library never changes a record that it has published. It makes a new record from every version answer
/// of the instrument and deletes the one before. Copy the texts in the handler of
/// `Tester::DeviceInformationChanged` and do not keep the pointer. Until the instrument has answered, the
/// fields hold their defaults.
class VESMAR_EXPORT TesterInformation : public QObject
{
    Q_OBJECT

public:
    /// A record with the default texts.
    explicit TesterInformation(QObject* parent);
    ~TesterInformation() override;

    QString DeviceName;   ///< The name of the device, up to 3 characters. Default "PAT".
    QString DeviceCode;   ///< The code of the device, up to 3 characters. Default "000".
    QString SerialNumber; ///< The serial number, up to 6 characters. Default "000000".
    QString Version;      ///< The version of the firmware, such as "1.05". Default "000".
    QString VersionCode;  ///< The code of the version, up to 2 characters. Default "000".
    QString RevisionCode; ///< The code of the revision, up to 2 characters. Default "00".
    QString BuildNumber;  ///< The number of the firmware's build, in decimal. Default "0000".
};

} // namespace Vesmar
