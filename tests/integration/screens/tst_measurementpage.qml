import QtQuick 2.15
import QtTest 1.2
import "../../../examples/quick"

Item {
    width: 800
    height: 480

    MeasurementPage {
        id: page
        anchors.fill: parent
    }

    TestCase {
        name: "MeasurementPage"
        when: windowShown

        function click(name) {
            const button = findChild(page, name)
            tryCompare(button, "enabled", true, 30000)
            mouseClick(button)
        }

        function choose(identifier) {
            const box = findChild(page, "function")
            box.currentIndex = box.model.findIndex(each => each.identifier === identifier)
        }

        function awaitReadings() {
            tryVerify(() => findChild(page, "readings").count > 0, 30000)
        }

        function awaitMessage(words) {
            tryVerify(() => findChild(page, "message").text.indexOf(words) >= 0, 30000)
        }

        function test_aMeasurementIsAborted() {
            choose("rpe")
            click("start")
            awaitReadings()
            click("stop")
            awaitMessage("Aborted. The instrument has stopped.")
        }

        function test_whatIsMissingIsSaid() {
            choose("rcd")
            click("start")
            awaitMessage("ia-ta-1")
        }
    }
}
