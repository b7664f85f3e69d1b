import QtQuick 2.15
import QtTest 1.2
import Vesmar 1.0

TestCase {
    id: testCase

    name: "Instrument"

    Instrument {
        id: instrument
    }

    SignalSpy {
        id: readings
        signalName: "reading"
    }

    SignalSpy {
        id: units
        signalName: "unitsChanged"
    }

    function init() {
        instrument.open()
        tryCompare(instrument, "linkState", Vesmar.LinkState.Up, 20000)
    }

    function cleanup() {
        instrument.close()
        tryCompare(instrument, "linkState", Vesmar.LinkState.Closed, 20000)
    }

    function test_identity() {
        compare(instrument.identity.deviceName, "PAT")
        compare(instrument.mode, Vesmar.Mode.Normal)
        verify(instrument.clock.getFullYear() > 2000)
    }

    function test_theMainsAreRead() {
        tryVerify(() => !instrument.mains.isEmpty, 20000)
        compare(instrument.mains.function, Vesmar.Function.Monitoring)
        verify(instrument.mains.readings.length > 0)
        verify(instrument.mains.readings[0].isPresent)
    }

    function test_aMeasurementEndsByItself() {
        const measurement = instrument.measure("rpe", { time: 1 })
        readings.target = measurement
        tryCompare(measurement, "isFinished", true, 30000)
        const hasGap = measurement.gaps.length > 0 // On a busy machine.
        compare(measurement.outcome, hasGap ? Vesmar.Outcome.Interrupted : Vesmar.Outcome.Completed)
        verify(measurement.isStopConfirmed)
        verify(readings.count > 0)
        compare(readings.signalArguments[0][0].readings[0].name, "resistance")
        measurement.discard()
    }

    function test_anAbortStops() {
        const measurement = instrument.measure("hv", { time: "unlimited" })
        tryCompare(measurement, "phase", Vesmar.Phase.Running, 20000)
        measurement.abort()
        tryCompare(measurement, "isFinished", true, 30000)
        compare(measurement.outcome, Vesmar.Outcome.Aborted)
        verify(measurement.isStopConfirmed)
    }

    function test_wrongSettingsAreRefused() {
        const measurement = instrument.measure("rpe", { time: 0 })
        tryCompare(measurement, "isFinished", true, 20000)
        compare(measurement.outcome, Vesmar.Outcome.Failed)
        compare(measurement.failure.name, "invalid-settings")
        compare(Catalogue.validate("rpe", { time: 0 })[0].option, "time")
    }

    function test_stop() {
        const job = instrument.stop()
        tryCompare(job, "isFinished", true, 30000)
        compare(job.outcome, Vesmar.Outcome.Completed)
    }

    function test_unitsComeFromAFile() {
        const path = name => Qt.resolvedUrl(name).toString().replace("file://", "")
        verify(!Catalogue.unitsFailure.isFailure)
        compare(Catalogue.readUnits(path("tst_instrument.qml")).name, "units-damaged")
        compare(Catalogue.find("rpe").readings[0].unit, "")
        units.target = Catalogue
        verify(!Catalogue.readUnits(path("units.json")).isFailure)
        compare(units.count, 1)
        compare(Catalogue.find("rpe").readings[0].unit, "Ω")
    }

    function test_catalogue() {
        compare(Catalogue.functions.length, 12)
        const rpe = Catalogue.find("rpe")
        compare(rpe.function, Vesmar.Function.RPE)
        compare(rpe.kind, Vesmar.FunctionKind.Continuous)
        verify(!rpe.isDangerous)
        compare(rpe.readings[0].identifier, "resistance")
        const current = rpe.options.find(option => option.identifier === "current")
        compare(current.kind, Vesmar.OptionKind.Choice)
        compare(current.choices.map(choice => choice.identifier), ["0", "1", "2", "3"])
        verify(Catalogue.find("hv").isDangerous)
    }
}
