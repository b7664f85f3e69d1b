#include "integration/watchedtester.h"

#include <type_traits>

#include <QRegularExpression>
#include <QThread>
#include <QtEndian>

#include <Vesmar/monitoringresults.h>

namespace
{

using Vesmar::Tester;

constexpr char DateFormat[] = "yyyy-MM-dd HH:mm:ss";

QByteArray TextOf(float value)
{
    constexpr int EnoughDigits = 9; // Two floats that differ have different texts.
    return QByteArray::number(static_cast<double>(value), 'g', EnoughDigits);
}

QByteArray TextOf(const QDateTime& value)
{
    return value.toString(QLatin1String(DateFormat)).toLatin1();
}

QByteArray TextOf(const Vesmar::TesterInformation* value)
{
    return QStringList{value->DeviceName,  value->DeviceCode,   value->SerialNumber, value->Version,
                       value->VersionCode, value->RevisionCode, value->BuildNumber}
        .join(QLatin1Char(' '))
        .toLatin1();
}

QByteArray TextOf(const Vesmar::MeasurementSettings* value)
{
    return QByteArray::number(static_cast<int>(value->GetMeasurementType()));
}

QByteArray TextOf(const Vesmar::MeasurementResults* value)
{
    const auto* readings = dynamic_cast<const Vesmar::MonitoringResults*>(value);
    if (readings == nullptr) {
        return QByteArray::number(static_cast<int>(value->GetMeasurementType()));
    }
    return QByteArrayList{TextOf(readings->_uln), TextOf(readings->_unpe), TextOf(readings->_frequency)}.join(
        ' ');
}

/// Numbers, truth values and enumerators.
template <typename Value, std::enable_if_t<!std::is_pointer_v<Value>, int> = 0>
QByteArray TextOf(Value value)
{
    return QByteArray::number(static_cast<int>(value));
}

} // namespace

WatchedTester::WatchedTester() : _tester(Tester::Instance())
{
    WatchEverything();
}

WatchedTester::~WatchedTester() = default;

template <typename Value>
void WatchedTester::Watch(const char* property, void (Tester::*changed)(Value))
{
    _signalled[property] = {};
    connect(
        _tester.get(), changed, this,
        [this, property](Value value) {
            _hasLeftItsThread = _hasLeftItsThread || QThread::currentThread() != thread();
            _signalled[property].append(TextOf(value));
        },
        Qt::DirectConnection);
}

void WatchedTester::WatchEverything()
{
    Watch("DeviceInformation", &Tester::DeviceInformationChanged);
    Watch("TesterMode", &Tester::TesterModeChanged);
    Watch("CurrentDateTime", &Tester::CurrentDateTimeChanged);
    Watch("CalibrationDateTime", &Tester::CalibrationDateTimeChanged);
    Watch("StartTestStatus", &Tester::StartTestStatusChanged);
    Watch("MeasurementFunctionStatus", &Tester::MeasurementFunctionStatusChanged);
    Watch("ErrorCode", &Tester::ErrorCodeChanged);
    Watch("TestSettings", &Tester::TestSettingsChanged);
    Watch("TestResults", &Tester::TestResultsChanged);
    Watch("IsMeasurementRunning", &Tester::IsMeasurementRunningChanged);
    Watch("MeasurementStatus", &Tester::MeasurementStatusChanged);
    Watch("MeasurementTime", &Tester::MeasurementTimeChanged);
    Watch("OperationProgress", &Tester::OperationProgressChanged);
    Watch("CurrentMeasurementType", &Tester::CurrentMeasurementTypeChanged);
    Watch("OperationStatus", &Tester::OperationStatusChanged);
}

QByteArrayList WatchedTester::EnteredStates() const
{
    return StatesOf("ENTERING");
}

QByteArrayList WatchedTester::LeftStates() const
{
    return StatesOf("LEAVING");
}

QByteArrayList WatchedTester::StatesOf(const char* event) const
{
    const QRegularExpression entry(QStringLiteral("<<< +%1 (.*) STATE ").arg(QLatin1String(event)));
    QByteArrayList states;
    for (const QString& text : _trace.Texts()) {
        const QRegularExpressionMatch match = entry.match(text);
        if (match.hasMatch()) {
            states.append(match.captured(1).toLatin1());
        }
    }
    return states;
}

int WatchedTester::CountTraced(const QString& part) const
{
    return _trace.Texts().filter(part).size();
}

bool WatchedTester::HasSignalled(const char* property, const QByteArrayList& values, int first) const
{
    const QByteArrayList signalled = Signalled(property).mid(first);
    int reached = 0;
    for (int index = 0; index < signalled.size(); ++index) {
        reached = values.indexOf(signalled.at(index), qMax(index, reached));
        if (reached < 0) {
            return false;
        }
    }
    return signalled.size() == values.size();
}

QByteArray ReadingsText(const QByteArray& answer)
{
    const auto valueAt = [&answer](int position) {
        return TextOf(qFromLittleEndian<float>(answer.constData() + position));
    };
    return QByteArrayList{valueAt(0), valueAt(4), valueAt(8)}.join(' ');
}

QByteArray DateText(const QByteArray& answer)
{
    // The digits of a packed date are those of its hexadecimal form.
    const QString digits = QStringLiteral("20") + QString::fromLatin1(answer.left(6).toHex());
    return TextOf(QDateTime::fromString(digits, QStringLiteral("yyyyMMddHHmmss")));
}
