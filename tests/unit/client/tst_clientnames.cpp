#include "client/words/names.h"

#include <QtTest>

using Vesmar::Error;
using Vesmar::FunctionState;
using Vesmar::MeasurementState;
using Vesmar::MeasurementType;
using Vesmar::OperationMode;
using Vesmar::OperationState;
using Vesmar::StartTestResult;

namespace
{

template <typename Enumeration>
QString Told(int number)
{
    return VesmarClient::NameAndNumber(static_cast<Enumeration>(number));
}

/// "NUMBER NAME" of every value in the range that has a name, in order.
template <typename Enumeration>
QStringList Named(int first, int last)
{
    QStringList named;
    for (int number = first; number <= last; ++number) {
        const QString name = VesmarClient::Name(static_cast<Enumeration>(number));
        if (!name.isEmpty()) {
            named.append(QStringLiteral("%1 %2").arg(number).arg(name));
        }
    }
    return named;
}

QStringList List(const char* comma)
{
    return QString::fromLatin1(comma).split(QStringLiteral(", "));
}

} // namespace

class TestClientNames : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void EveryNamedValueHasItsName();
    void EveryErrorHasItsName();
    void NameAndNumberTogether();
    void UnnamedValueIsItsNumber();
    void EveryErrorHasAMeaning_data();
    void EveryErrorHasAMeaning();
    void UnnamedErrorIsUnknown();
};

void TestClientNames::EveryNamedValueHasItsName()
{
    QCOMPARE(Named<OperationMode>(-5, 100), List("0 Normal, 1 Calibration, 2 Mode2, 3 Update"));
    QCOMPARE(Named<MeasurementType>(-5, 100),
             List("-1 None, 0 Monitoring, 1 RLN, 2 RPE, 3 RISO, 4 ISUB, 5 IPE, 6 IDELTA, 7 IT, 8 POWER, "
                  "9 HVTest, 10 RCD, 11 RCDIEC, 97 IEC"));
    QCOMPARE(Named<StartTestResult>(-5, 100),
             List("-1 Unknown, 0 Status0, 1 Status1, 2 Status2, 3 Status3, 4 Status4, 5 Status5, "
                  "6 Status6, 7 Status7, 8 Status8, 9 Status9, 10 Status10, 11 Status11, 12 Status12, "
                  "13 Status13, 14 Status14, 15 Status15"));
    QCOMPARE(Named<FunctionState>(-5, 100),
             List("-1 Unknown, 0 Idle, 1 Preparing, 2 Completed, 3 PrepareError, 4 Prepared, 5 Starting, "
                  "6 StartError, 7 Running, 8 Stopping, 9 Terminated"));
    QCOMPARE(Named<OperationState>(-5, 100), List("0 Idle, 1 Started, 2 InProgress, 3 Finished"));
    QCOMPARE(Named<MeasurementState>(-5, 100),
             List("-1 Unknown, 0 Idle, 1 Preparing, 2 Prepared, 3 Starting, 4 Running, 5 Measuring, "
                  "6 Stopping, 7 Stopped"));
}

void TestClientNames::EveryErrorHasItsName()
{
    QCOMPARE(Named<Error>(-5, 99),
             List("0 DeviceError0, 1 DeviceError1, 2 DeviceError2, 3 DeviceError3, 4 DeviceError4, "
                  "5 DeviceError5, 6 DeviceError6, 7 DeviceError7, 8 DeviceError8, 9 DeviceError9, "
                  "10 DeviceError10, 11 DeviceError11, 12 DeviceError12, 13 DeviceError13, "
                  "14 DeviceError14, 15 NoErrors"));
    QCOMPARE(Named<Error>(100, 499),
             List("100 NoResponse, 101 RequestRefused, 102 InvalidResponse, 103 CommunicationRecovery, "
                  "200 PrepareFailed, 201 StartFailed, 202 MeasurementFailed, "
                  "300 UpdateModeChangeFailed, 301 UpdateDataInvalid, "
                  "302 UpdateConfirmationDataInvalid, 303 UpdateInitializationFailed, "
                  "304 UpdateConfirmationFailed, 398 RCDFunctionMismatch, "
                  "400 RCDIdleStatusAttemptsExhausted, 401 RCDPreparedStatusAttemptsExhausted"));
    QCOMPARE(Named<Error>(500, 1000),
             List("500 RCDCheckObjectFailed, 501 RCDCheckObject2, 502 RCDCheckObject3, "
                  "503 RCDCheckObject4, 504 RCDCheckObject7, 505 RCDCheckObject8, 506 RCDCheckObject9, "
                  "507 RCDCheckObjectULNIECInvalid, 520 RCDDeviceError0, 521 RCDDeviceError1, "
                  "522 RCDDeviceError2, 523 RCDDeviceError3, 524 RCDDeviceError4, 525 RCDDeviceError5, "
                  "526 RCDDeviceError6, 527 RCDDeviceError7, 528 RCDDeviceError8, 529 RCDDeviceError9, "
                  "530 RCDDeviceError10, 531 RCDDeviceError11, 532 RCDDeviceError12, "
                  "533 RCDDeviceError13, 534 RCDDeviceError14"));
}

void TestClientNames::NameAndNumberTogether()
{
    QCOMPARE(Told<Error>(103), QStringLiteral("CommunicationRecovery (103)"));
    QCOMPARE(Told<MeasurementType>(-1), QStringLiteral("None (-1)"));
}

void TestClientNames::UnnamedValueIsItsNumber()
{
    QCOMPARE(Told<FunctionState>(12), QStringLiteral("12"));
    QCOMPARE(Told<OperationMode>(-7), QStringLiteral("-7"));
}

void TestClientNames::EveryErrorHasAMeaning_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("meaning");
    const auto row = [](int number, const char* meaning) {
        QTest::addRow("%d", number) << number << QString::fromLatin1(meaning);
    };
    row(0, "the instrument reports its error 0");
    row(14, "the instrument reports its error 14");
    row(15, "no error");
    row(100, "the link is lost: the instrument does not answer");
    row(101, "the link is lost: the instrument keeps refusing requests");
    row(102, "the link is lost: answers keep arriving damaged");
    row(103, "the link is being re-established");
    row(200, "the instrument could not prepare the measurement");
    row(201, "the instrument could not start the measurement");
    row(202, "the measurement ended without a result");
    row(300, "the instrument could not be switched to update mode");
    row(301, "the firmware image cannot be used");
    row(302, "the firmware's confirmation data is too short");
    row(303, "the instrument refused the update, or a part of the image was not transferred");
    row(304, "the instrument refused the closing confirmation of the update");
    row(398, "the instrument reports a function other than the RCD test");
    row(400, "the RCD test stayed idle for too long");
    row(401, "the RCD test stayed prepared for too long");
    row(500, "the check of the RCD failed");
    row(501, "the check of the RCD failed with the instrument's code 2");
    row(504, "the check of the RCD failed with the instrument's code 7");
    row(506, "the check of the RCD failed with the instrument's code 9");
    row(507, "the mains voltage does not suit the IEC RCD test");
    row(520, "the RCD test stayed silent, or the instrument reports its error 0 in it");
    row(521, "the RCD test ended without a result, or the instrument reports its error 1 in it");
    row(522, "the instrument reports its error 2 in an RCD test");
    row(534, "the instrument reports its error 14 in an RCD test");
}

void TestClientNames::EveryErrorHasAMeaning()
{
    QFETCH(int, number);
    QTEST(VesmarClient::Meaning(static_cast<Error>(number)), "meaning");
}

void TestClientNames::UnnamedErrorIsUnknown()
{
    QCOMPARE(VesmarClient::Meaning(static_cast<Error>(16)), QStringLiteral("unknown error"));
    QCOMPARE(VesmarClient::Meaning(static_cast<Error>(535)), QStringLiteral("unknown error"));
}

QTEST_GUILESS_MAIN(TestClientNames)
#include "tst_clientnames.moc"
