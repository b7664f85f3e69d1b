// An application as it meets the installed library: it includes every public header, makes an object of every
// class, and uses what the linker has to find in the library.
#include "everyheader.h"

#include <QCoreApplication>

#include <cstdlib>
#include <iostream>
#include <memory>

namespace
{

bool isEverythingAsExpected = true;

void Expect(bool isAsExpected, const char* what)
{
    if (!isAsExpected) {
        std::cerr << "not as expected: " << what << '\n';
        isEverythingAsExpected = false;
    }
}

template <typename Settings>
void ExpectSettings(Vesmar::MeasurementType type, const char* payload)
{
    Settings settings;
    const std::unique_ptr<Vesmar::MeasurementSettings> clone(settings.Clone());
    const std::unique_ptr<QByteArray> frame(clone->CreateMeasurementFrame());
    Expect(clone->GetMeasurementType() == type, payload);
    Expect(frame->toHex() == payload, payload);
}

void ExpectResults(const Vesmar::MeasurementResults& results, Vesmar::MeasurementType type, const char* what)
{
    Expect(results.GetMeasurementType() == type, what);
}

void UseSettings()
{
    using Vesmar::MeasurementType;
    ExpectSettings<Vesmar::RLNSettings>(MeasurementType::RLN, "01ff0100ffffffff");
    ExpectSettings<Vesmar::RPESettings>(MeasurementType::RPE, "02050000ffffffff");
    ExpectSettings<Vesmar::RISOSettings>(MeasurementType::RISO, "03050000ffffffff");
    ExpectSettings<Vesmar::ISUBSettings>(MeasurementType::ISUB, "04050000ffffffff");
    ExpectSettings<Vesmar::IPESettings>(MeasurementType::IPE, "05050000ffffffff");
    ExpectSettings<Vesmar::IDELTASettings>(MeasurementType::IDELTA, "06050000ffffffff");
    ExpectSettings<Vesmar::ITSettings>(MeasurementType::IT, "07050000ffffffff");
    ExpectSettings<Vesmar::POWERSettings>(MeasurementType::POWER, "08050000ffffffff");
    ExpectSettings<Vesmar::HVTestSettings>(MeasurementType::HVTest, "09050200ffffffff");
    ExpectSettings<Vesmar::RCDSettings>(MeasurementType::RCD, "0a00000000000000");
    ExpectSettings<Vesmar::RCDIECSettings>(MeasurementType::RCDIEC, "0b00000000000000");
    ExpectSettings<Vesmar::IECSettings>(MeasurementType::IEC, "01ff0200ffffffff");

    Vesmar::ContinuousMeasurementSettings continuous(MeasurementType::RPE, nullptr);
    Expect(continuous.GetTime() == 5, "the default time");
}

void UseResults()
{
    using Vesmar::MeasurementType;
    ExpectResults(Vesmar::MonitoringResults(1, 2, 3), MeasurementType::Monitoring, "monitoring results");
    ExpectResults(Vesmar::RLNResults(1, 2, 3, 4, 5), MeasurementType::RLN, "RLN results");
    ExpectResults(Vesmar::RPEResults(1, 2, 3), MeasurementType::RPE, "RPE results");
    ExpectResults(Vesmar::RISOResults(1, 2, 3), MeasurementType::RISO, "RISO results");
    ExpectResults(Vesmar::ISUBResults(1, 2), MeasurementType::ISUB, "ISUB results");
    ExpectResults(Vesmar::IPEResults(1, 2), MeasurementType::IPE, "IPE results");
    ExpectResults(Vesmar::IDELTAResults(1, 2), MeasurementType::IDELTA, "IDELTA results");
    ExpectResults(Vesmar::ITResults(1), MeasurementType::IT, "IT results");
    ExpectResults(Vesmar::POWERResults(1, 2, 3, 4, 5, 6), MeasurementType::POWER, "POWER results");
    ExpectResults(Vesmar::HVTestResults(1, 2, 3, 4, 5, 6), MeasurementType::HVTest, "HVTest results");
    ExpectResults(Vesmar::RCDResults(1, 2, 3), MeasurementType::RCD, "RCD results");
    ExpectResults(Vesmar::RCDIECResults(1, 2), MeasurementType::RCDIEC, "RCD IEC results");
    ExpectResults(Vesmar::IECResults(1, 2, 3, 4, 5), MeasurementType::IEC, "IEC results");
}

void UseTester()
{
    Vesmar::Tester* tester = Vesmar::Tester::Instance();
    Expect(!tester->IsEnabled(), "a new tester is disabled");
    Expect(tester->ErrorCode() == Vesmar::Error::NoErrors, "a new tester has no error");
    Expect(tester->TesterMode() == Vesmar::OperationMode::Normal, "the default mode");
    Expect(tester->OperationStatus() == Vesmar::OperationState::Idle, "the default operation");
    Expect(tester->MeasurementStatus() == Vesmar::MeasurementState::Idle, "the default measurement");
    Expect(tester->MeasurementFunctionStatus() == Vesmar::FunctionState::Unknown, "the default function");
    Expect(tester->StartTestStatus() == Vesmar::StartTestResult::Unknown, "the default start test");
    Expect(tester->DeviceInformation()->DeviceName == QLatin1String("PAT"), "the default name");
    Expect(QByteArray(Vesmar::SerialDevicePath) == "/dev/ttycommunication", "the path of the line");
    delete tester;
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    UseSettings();
    UseResults();
    UseTester();
    return isEverythingAsExpected ? EXIT_SUCCESS : EXIT_FAILURE;
}
