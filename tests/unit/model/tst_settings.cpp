#include <memory>
#include <type_traits>
#include <typeinfo>

#include <QtTest>

#include "numbers.h"
#include "settingsclasses.h"

using SettingsClasses::Class;
using SettingsClasses::Field;
using SettingsClasses::Find;
using Vesmar::ContinuousMeasurementSettings;
using Vesmar::MeasurementSettings;
using Vesmar::MeasurementType;

namespace
{

/// Adds a row for each code. The rows give the last field of the description the values from `first` on, and
/// the code stands in the payload where the star is.
void AddCodes(const QByteArray& description, qint64 first, const QByteArray& payload, const QByteArray& codes)
{
    qint64 value = first;
    for (const QByteArray& code : codes.split(' ')) {
        QTest::newRow(description + '=' + QByteArray::number(value++))
            << QByteArray::fromHex(QByteArray(payload).replace('*', code));
    }
}

void AddPayload(const QByteArray& description, const char* payload)
{
    QTest::newRow(description) << QByteArray::fromHex(payload);
}

/// The payload tells whether a time is set, and never the time itself.
void AddTimes(const QByteArray& name, const QByteArray& payload)
{
    AddCodes(name + " time", -2, payload, "05 FF 05 05 05 05 05 05");
    AddCodes(name + " time", 2147483647, payload, "05");
    AddCodes(name + " time", -2147483648, payload, "05");
}

void AddDefaults()
{
    AddPayload("RLN", "01 FF 01 00 FF FF FF FF");
    AddPayload("RPE", "02 05 00 00 FF FF FF FF");
    AddPayload("RISO", "03 05 00 00 FF FF FF FF");
    AddPayload("ISUB", "04 05 00 00 FF FF FF FF");
    AddPayload("IPE", "05 05 00 00 FF FF FF FF");
    AddPayload("IDELTA", "06 05 00 00 FF FF FF FF");
    AddPayload("IT", "07 05 00 00 FF FF FF FF");
    AddPayload("POWER", "08 05 00 00 FF FF FF FF");
    AddPayload("HVTest", "09 05 02 00 FF FF FF FF");
    AddPayload("RCD", "0A 00 00 00 00 00 00 00");
    AddPayload("RCDIEC", "0B 00 00 00 00 00 00 00");
    AddPayload("IEC", "01 FF 02 00 FF FF FF FF");
}

void AddMethods()
{
    const QByteArray payload("02 05 * 00 FF FF FF FF");
    AddCodes("RPE method=-1 current", -1, payload, "00 00 00 04 06 00");
    AddCodes("RPE method=0 current", -1, payload, "00 00 00 00 00 00");
    AddCodes("RPE method=1 current", -1, payload, "00 00 00 04 06 00");
    AddCodes("RPE method=2 current", -1, payload, "01 01 01 05 07 01");
    AddCodes("RPE method=3 current", -1, payload, "08 08 08 0C 0E 08");
    AddCodes("RPE method=4 current", -1, payload, "00 00 00 04 06 00");
}

void AddVoltages()
{
    // A voltage that is not one of 0 to 3 runs into the bits of the mode.
    const QByteArray payload("03 05 * 00 FF FF FF FF");
    AddCodes("RISO mode=-1 voltage", -1, payload, "FF 00 01 02 03 04");
    AddCodes("RISO mode=0 voltage", -1, payload, "FF 00 01 02 03 04");
    AddCodes("RISO mode=1 voltage", -1, payload, "FF 04 05 06 07 04");
    AddCodes("RISO mode=2 voltage", -1, payload, "FF 08 09 0A 0B 0C");
    AddCodes("RISO mode=3 voltage", -1, payload, "FF 00 01 02 03 04");
    AddCodes("RISO mode=4 voltage", -1, payload, "FF 10 11 12 13 14");
    AddCodes("RISO mode=5 voltage", -1, payload, "FF 00 01 02 03 04");
    AddPayload("RISO mode=1 voltage=9", "03 05 0D 00 FF FF FF FF");
    AddPayload("RISO mode=2 voltage=28", "03 05 1C 00 FF FF FF FF");
    AddPayload("RISO mode=4 voltage=259", "03 05 13 00 FF FF FF FF");
}

void AddModesWithConfigurations(const QByteArray& name, const QByteArray& payload)
{
    AddCodes(name + " mode=-1 configuration", -1, payload, "00 00 00 04 00");
    AddCodes(name + " mode=0 configuration", -1, payload, "00 00 00 04 00");
    AddCodes(name + " mode=1 configuration", -1, payload, "00 00 00 04 00");
    AddCodes(name + " mode=2 configuration", -1, payload, "01 01 01 05 01");
    AddCodes(name + " mode=3 configuration", -1, payload, "00 00 00 04 00");
}

void AddModesOrConfigurations()
{
    AddCodes("IT configuration", -1, "07 05 * 00 FF FF FF FF", "00 00 00 04 00");
    AddCodes("POWER mode", -1, "08 05 * 00 FF FF FF FF", "00 00 00 01 00");
    AddCodes("HVTest mode", -1, "09 05 * 00 FF FF FF FF", "02 02 02 05 02");
    AddPayload("HVTest offset=12.5", "09 05 02 00 FF FF FF FF");
}

/// The options of an RCD test stand side by side and are not masked. Only -1 counts as not set.
void AddRcdOptions(const QByteArray& name, const QByteArray& function)
{
    AddCodes(name + " type", -1, function + " 00 * 00 00 00 00 00", "00 00 40 80 C0 00 40");
    const QByteArray payload = function + " 00 00 * 00 00 00 00";
    AddCodes(name + " mode", 1, payload, "40 80 C0 00 40");
    AddCodes(name + " phase", -1, payload, "00 00 10 20 30 40 50");
    AddCodes(name + " quantity", -1, payload, "00 00 04 08 0C 10 14 18");
    AddCodes(name + " current", -1, payload, "00 00 01 02 03 04");
    AddCodes(name + " quantity", 16, payload, "40");
    AddCodes(name + " current", 255, payload, "FF 00");
    const auto add = [&](const char* options, const char* bytes) {
        AddPayload(name + options, function + bytes + " 00 00 00 00");
    };
    add(" mode=1 quantity=2 phase=3 current=0 type=2", " 00 80 78");
    add(" mode=3 quantity=3 phase=3 current=3 type=3", " 00 C0 FF");
    add(" quantity=1 phase=2 current=3 type=1", " 00 40 27");
    add(" mode=1 quantity=1 current=1 type=1", " 00 40 45");
    add(" mode=1 phase=1 current=1 type=1", " 00 40 51");
    add(" mode=1 quantity=1 phase=1 type=1", " 00 40 54");
    add(" mode=1 quantity=1 phase=1 current=1", " 00 00 55");
    add(" current=-2 type=-2", " 00 80 FE");
}

void AddRcdSpecials()
{
    AddPayload("RCD mode=0", "0A 00 00 00 FF FF FF FF");
    AddPayload("RCD mode=0 Re=100", "0A 00 00 00 FF FF FF FF");
    AddPayload("RCD mode=1 Re=100", "0A 00 00 40 00 00 C8 42");
    AddPayload("RCD mode=2 Re=-2.5", "0A 00 00 80 00 00 20 C0");
    AddPayload("RCD mode=3 Re=0.5", "0A 00 00 C0 00 00 00 3F");
    AddPayload("RCD Re=1", "0A 00 00 00 00 00 80 3F");
    AddPayload("RCD mode=1 quantity=2 phase=0 current=3 type=1 Re=100", "0A 00 40 4B 00 00 C8 42");
    AddPayload("RCDIEC mode=0", "0B 00 00 00 00 00 00 00");
    AddCodes("RCDIEC swapped=1 type", -1, "0B 00 * 00 00 00 00 00", "80 80 C0 80 C0");
    AddCodes("RCDIEC swapped=0 type", -1, "0B 00 * 00 00 00 00 00", "00 00 40 80 C0");
}

template <typename Base>
void VerifyBase()
{
    static_assert(std::has_virtual_destructor_v<Base>);
    static_assert(std::is_constructible_v<Base, Base&>);
    static_assert(!std::is_constructible_v<Base, const Base&>);
    QCOMPARE(static_cast<int>(Base(MeasurementType(55), nullptr).GetMeasurementType()), 55);

    QObject parent;
    Base settings(MeasurementType::POWER, &parent);
    QVERIFY(settings.parent() == nullptr);
    QVERIFY(parent.children().isEmpty());
    QCOMPARE(static_cast<int>(settings.GetMeasurementType()), 8);
    QCOMPARE(settings.metaObject()->className(), "Vesmar::MeasurementSettings");
    QVERIFY(settings.CreateMeasurementFrame() == nullptr);

    settings.setParent(&parent);
    const Base copy(settings);
    QCOMPARE(static_cast<int>(copy.GetMeasurementType()), 8);
    QVERIFY(copy.parent() == nullptr);
    const std::unique_ptr<MeasurementSettings> clone(settings.Clone());
    const MeasurementSettings& cloned = *clone;
    QVERIFY(typeid(cloned) == typeid(Base));
    QVERIFY(clone.get() != &settings);
    QCOMPARE(static_cast<int>(clone->GetMeasurementType()), -1);
    QVERIFY(clone->parent() == nullptr);
}

template <typename Current>
void VerifyFourCurrents()
{
    QCOMPARE(Numbers({Current::Current0, Current::Current1, Current::Current2, Current::Current3}),
             Range(0, 3));
}

template <typename Quantity, typename Phase, typename Current, typename Type>
void VerifyRcdOptions()
{
    QCOMPARE(Numbers({Quantity::Quantity0, Quantity::Quantity1, Quantity::Quantity2, Quantity::Quantity3}),
             Range(0, 3));
    QCOMPARE(Numbers({Phase::Phase0, Phase::Phase1, Phase::Phase2, Phase::Phase3}), Range(0, 3));
    QCOMPARE(Numbers({Type::Type0, Type::Type1, Type::Type2, Type::Type3}), Range(0, 3));
    VerifyFourCurrents<Current>();
}

template <typename Mode>
void VerifyTwoModes()
{
    QCOMPARE(Numbers({Mode::Mode1, Mode::Mode2}), Range(1, 2));
}

template <typename Configuration>
void VerifyTwoConfigurations()
{
    QCOMPARE(Numbers({Configuration::Configuration1, Configuration::Configuration2}), Range(1, 2));
}

} // namespace

class TestSettings : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void BeginWithTheirFunctionAndDefaults_data() { AddClasses(); }

    void BeginWithTheirFunctionAndDefaults()
    {
        QFETCH(const QByteArray, name);
        const Class& tested = Find(SettingsClasses::All(), name);
        const auto settings = tested.create();
        QCOMPARE(static_cast<int>(settings->GetMeasurementType()), tested.function);
        const bool isContinuous = dynamic_cast<ContinuousMeasurementSettings*>(settings.get()) != nullptr;
        QCOMPARE(isContinuous, tested.function >= 2 && tested.function <= 9);
        QVERIFY(settings->parent() == nullptr);
        QCOMPARE(settings->metaObject()->className(), "Vesmar::MeasurementSettings");
        for (const Field& field : tested.fields) {
            QVERIFY2(field.get(*settings) == field.initial, field.name);
        }
    }

    void KeepEveryFieldInClonesAndCopies_data() { AddClasses(); }

    void KeepEveryFieldInClonesAndCopies()
    {
        QFETCH(const QByteArray, name);
        const Class& tested = Find(SettingsClasses::All(), name);
        QObject parent;
        const auto settings = tested.create();
        settings->setParent(&parent);
        for (const Field& field : tested.fields) {
            field.set(*settings, field.other);
        }
        const std::unique_ptr<MeasurementSettings> clone(settings->Clone());
        const auto copy = tested.copy(*settings);
        QVERIFY(clone.get() != settings.get());
        for (const MeasurementSettings* kept : {settings.get(), clone.get(), copy.get()}) {
            QVERIFY(typeid(*kept) == typeid(*settings));
            QCOMPARE(static_cast<int>(kept->GetMeasurementType()), tested.function);
            QVERIFY(kept == settings.get() || kept->parent() == nullptr);
            for (const Field& field : tested.fields) {
                QVERIFY2(field.get(*kept) == field.other, field.name);
            }
        }
    }

    void StoreAnyValueAndBuildThePayload_data()
    {
        QTest::addColumn<QByteArray>("payload");
        AddDefaults();
        AddTimes("RPE", "02 * 00 00 FF FF FF FF");
        AddTimes("RISO", "03 * 00 00 FF FF FF FF");
        AddTimes("ISUB", "04 * 00 00 FF FF FF FF");
        AddTimes("IPE", "05 * 00 00 FF FF FF FF");
        AddTimes("IDELTA", "06 * 00 00 FF FF FF FF");
        AddTimes("IT", "07 * 00 00 FF FF FF FF");
        AddTimes("POWER", "08 * 00 00 FF FF FF FF");
        AddTimes("HVTest", "09 * 02 00 FF FF FF FF");
        AddMethods();
        AddVoltages();
        AddModesWithConfigurations("IPE", "05 05 * 00 FF FF FF FF");
        AddModesWithConfigurations("IDELTA", "06 05 * 00 FF FF FF FF");
        AddModesOrConfigurations();
        AddRcdOptions("RCD", "0A");
        AddRcdOptions("RCDIEC", "0B");
        AddRcdSpecials();
    }

    void StoreAnyValueAndBuildThePayload()
    {
        QFETCH(const QByteArray, payload);
        QList<QByteArray> words = QByteArray(QTest::currentDataTag()).split(' ');
        const Class& tested = Find(SettingsClasses::All(), words.takeFirst());
        const auto settings = tested.create();
        for (const QByteArray& word : words) {
            const QList<QByteArray> sides = word.split('=');
            const Field& field = Find(tested.fields, sides.first());
            field.set(*settings, sides.last().toDouble());
            QVERIFY2(field.get(*settings) == sides.last().toDouble(), word);
        }
        const std::unique_ptr<QByteArray> built(settings->CreateMeasurementFrame());
        QCOMPARE(built->toHex(' '), payload.toHex(' '));
    }

    void BuildANewPayloadForEachCaller_data() { AddClasses(); }

    void BuildANewPayloadForEachCaller()
    {
        QFETCH(const QByteArray, name);
        const auto settings = Find(SettingsClasses::All(), name).create();
        const std::unique_ptr<QByteArray> first(settings->CreateMeasurementFrame());
        const std::unique_ptr<QByteArray> second(settings->CreateMeasurementFrame());
        QVERIFY(first.get() != second.get());
        QCOMPARE(*first, *second);
    }

    void NameTheInstrumentsNumbers()
    {
        using namespace Vesmar;
        VerifyFourCurrents<RPESettings::RPECurrent>();
        QCOMPARE(Numbers({RPESettings::RPEMethod::Method0, RPESettings::RPEMethod::Method1,
                          RPESettings::RPEMethod::Method2, RPESettings::RPEMethod::Method3}),
                 Range(0, 3));
        QCOMPARE(Numbers({RISOSettings::RISOVoltage::Voltage0, RISOSettings::RISOVoltage::Voltage1,
                          RISOSettings::RISOVoltage::Voltage2, RISOSettings::RISOVoltage::Voltage3}),
                 Range(0, 3));
        VerifyTwoModes<RISOSettings::RISOMode>();
        QCOMPARE(Numbers({RISOSettings::RISOMode::Mode4}), Range(4, 4));
        VerifyTwoModes<IPESettings::IPEMode>();
        VerifyTwoModes<IDELTASettings::IDELTAMode>();
        VerifyTwoModes<POWERSettings::POWERMode>();
        VerifyTwoModes<HVTestSettings::HVMode>();
        VerifyTwoConfigurations<IPESettings::IPEConfiguration>();
        VerifyTwoConfigurations<IDELTASettings::IDELTAConfiguration>();
        VerifyTwoConfigurations<ITSettings::ITConfiguration>();
        VerifyRcdOptions<RCDSettings::RCDQuantity, RCDSettings::RCDPhase, RCDSettings::RCDCurrent,
                         RCDSettings::RCDType>();
        VerifyRcdOptions<RCDIECSettings::RCDIECQuantity, RCDIECSettings::RCDIECPhase,
                         RCDIECSettings::RCDIECCurrent, RCDIECSettings::RCDIECType>();
        using Mode = RCDSettings::RCDMode;
        using ModeIEC = RCDIECSettings::RCDIECMode;
        QCOMPARE(Numbers({Mode::UbRe, Mode::IaTa1, Mode::IaTa2}), Range(0, 2));
        QCOMPARE(Numbers({ModeIEC::IaTa1, ModeIEC::IaTa2, ModeIEC::CleanUp}), Range(1, 3));
    }

    void BasesCloneToNoFunctionAndBuildNoPayload()
    {
        static_assert(std::is_base_of_v<MeasurementSettings, ContinuousMeasurementSettings>);
        VerifyBase<MeasurementSettings>();
        VerifyBase<ContinuousMeasurementSettings>();
    }

    void ContinuousBaseCopiesButDoesNotCloneTheTime()
    {
        ContinuousMeasurementSettings settings(MeasurementType::IPE, nullptr);
        QCOMPARE(settings.GetTime(), 5);
        settings.SetTime(42);
        QCOMPARE(ContinuousMeasurementSettings(settings).GetTime(), 42);
        const std::unique_ptr<MeasurementSettings> clone(settings.Clone());
        QCOMPARE(static_cast<const ContinuousMeasurementSettings&>(*clone).GetTime(), 5);
    }

private:
    static void AddClasses();
};

void TestSettings::AddClasses()
{
    QTest::addColumn<QByteArray>("name");
    for (const Class& each : SettingsClasses::All()) {
        QTest::newRow(each.name) << QByteArray(each.name);
    }
}

QTEST_APPLESS_MAIN(TestSettings)
#include "tst_settings.moc"
