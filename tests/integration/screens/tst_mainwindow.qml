import QtQuick 2.15
import QtTest 1.2

TestCase {
    name: "MainWindow"

    function test_closingStopsTheMeasurement() {
        const window = Qt.createComponent("../../../examples/quick/main.qml").createObject()
        const find = name => findChild(window.contentItem, name)
        const box = find("function")
        box.currentIndex = box.model.findIndex(each => each.identifier === "hv")
        tryCompare(find("start"), "enabled", true, 30000)
        find("start").clicked()
        tryVerify(() => find("readings").count > 0, 30000)
        window.close()
        verify(window.visible)
        tryCompare(window, "visible", false, 30000)
        compare(find("message").text, "Aborted. The instrument has stopped.")
        window.destroy()
    }
}
