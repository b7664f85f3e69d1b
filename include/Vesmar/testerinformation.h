#pragma once

#include <QObject>
#include <QString>

#include <Vesmar/export.h>

namespace Vesmar
{

/// The instrument's identity.
///
/// A record never changes once it is published: a new answer of the instrument makes a new record, and the
/// library then deletes the one before. Copy the texts in the handler of `Tester::DeviceInformationChanged`;
/// do not keep the pointer. Until the instrument has answered, the fields hold their defaults.
class VESMAR_EXPORT TesterInformation : public QObject
{
    Q_OBJECT

public:
    explicit TesterInformation(QObject* parent);
    ~TesterInformation() override;

    QString DeviceName;   ///< Default "PAT". Up to 3 characters.
    QString DeviceCode;   ///< Default "000". Up to 3 characters.
    QString SerialNumber; ///< Default "000000". Up to 6 characters.
    QString Version;      ///< Default "000". Firmware version: digit, point, two digits ("1.05").
    QString VersionCode;  ///< Default "000". Up to 2 characters from the instrument.
    QString RevisionCode; ///< Default "00". Up to 2 characters.
    QString BuildNumber;  ///< Default "0000". Decimal number of the firmware build.
};

} // namespace Vesmar
