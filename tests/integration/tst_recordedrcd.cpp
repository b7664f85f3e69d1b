#include <QtTest>

#include "integration/recordedrun.h"

namespace
{

RecordedKinds Kinds()
{
    const QString ubRe = QStringLiteral("measure rcd --mode ub-re");
    const QString iaTa = QStringLiteral("measure rcd --mode ia-ta-1");
    const QString iecIaTa = QStringLiteral("measure rcd-iec --mode ia-ta-1");
    const char* const check2 = "RCDCheckObject2 (501)";
    const char* const check10 = "RCDCheckObjectULNIECInvalid (507)";
    const char* const error2 = "RCDDeviceError2 (522)";
    return {
        {"Ub/Re", NoFaults, ubRe, 0, "done", "sent unasked           RCD (10): Re "},
        {"Ia/Ta", NoFaults, iaTa, 0, "done", "sent unasked           RCD (10): Re "},
        {"IEC", NoFaults, iecIaTa, 0, "done", "sent unasked           RCDIEC (11): Ia "},
        {"check object 2", Scenario("501-rcd-check-object-2"), iecIaTa, 4, check2, check2},
        {"check object 10", Scenario("507-rcd-check-object-10"), ubRe, 4, check10, check10},
        {"silent", Scenario("520-rcd-silent"), ubRe, 4, "RCDDeviceError0 (520)", "start measurement"},
        {"device error 2", Scenario("522-rcd-device-error-2"), ubRe, 4, error2, error2},
        {"device error 2, from the middle", Scenario("522-rcd-device-error-2"), ubRe, 4, error2,
         "in an RCD test, RCDDeviceError2", true},
    };
}

} // namespace

/// A test of an RCD at an instrument that plays what it recorded of another one.
class TestRecordedRcd : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void EndsAsTheFirstOneDid_data() { _runs.AddRows(); }
    void EndsAsTheFirstOneDid();

private:
    RecordedRuns _runs{Kinds()};
};

void TestRecordedRcd::EndsAsTheFirstOneDid()
{
    QFETCH(const int, kind);
    const QByteArray problem = _runs.Problem(kind);
    QVERIFY2(problem.isEmpty(), problem.constData());
}

QTEST_GUILESS_MAIN(TestRecordedRcd)
#include "tst_recordedrcd.moc"
