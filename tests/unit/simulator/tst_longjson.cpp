#include <QtTest>

#include "simulator/faults/faultfile.h"
#include "simulator/line/recordingfile.h"
#include "simulator/text/jsonerror.h"

/// Texts that are longer or deeper than any file that is of use: each is refused, with its place.
class TestLongJson : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void Faults_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("brackets") << QByteArray(1000000, '[');
        QTest::newRow("braces") << QByteArray("{\"a\":").repeated(200000);
        QTest::newRow("closed") << QByteArray(1000, '[') + QByteArray(1000, ']');
        QTest::newRow("closed in a fault")
            << "{\"faults\":[{\"fault\":" + QByteArray(1000, '[') + QByteArray(1000, ']') + "}]}";
        QTest::newRow("keys, closed")
            << "{\"comment\":" + QByteArray("{\"a\":").repeated(1000) + '1' + QByteArray(1001, '}');
        QTest::newRow("wide") << "{\"faults\":[" + QByteArray("0,").repeated(500000) + "0]}";
        QTest::newRow("too long") << QByteArray(2000000, ' ');
    }

    void Faults()
    {
        QFETCH(QByteArray, text);
        VerifyRefusal(text, [&text] { Simulator::ParseFaults(text); });
    }

    void Recordings_data()
    {
        QTest::addColumn<QByteArray>("text");
        const QByteArray deep = QByteArray(1000, '[') + QByteArray(1000, ']') + ',';
        QTest::newRow("brackets") << QByteArray(16000000, '[');
        QTest::newRow("braces") << QByteArray("{\"a\":").repeated(3000000);
        QTest::newRow("deep and wide") << "{\"exchanges\":[" + deep.repeated(2000) + "0]}";
        QTest::newRow("numbers") << "{\"exchanges\":[" + QByteArray("0,").repeated(8000000) + "0]}";
        QTest::newRow("objects") << "{\"exchanges\":[" + QByteArray("{},").repeated(5000000) + "0]}";
        QTest::newRow("comment of numbers") << "{\"comment\":[" + QByteArray("0,").repeated(8000000) + "0]}";
        QTest::newRow("too long") << QByteArray(17000000, ' ');
    }

    void Recordings()
    {
        QFETCH(QByteArray, text);
        VerifyRefusal(text, [&text] { Simulator::ParseRecording(text); });
    }

private:
    template <typename Parse>
    static void VerifyRefusal(const QByteArray& text, const Parse& parse)
    {
        try {
            parse();
            QFAIL("no error");
        } catch (const Simulator::JsonError& error) {
            QVERIFY(error.Line() >= 1 && error.Line() <= text.count('\n') + 1);
            QVERIFY2(qstrlen(error.what()) < 1500, error.what());
        }
    }
};

QTEST_APPLESS_MAIN(TestLongJson)
#include "tst_longjson.moc"
