import QtQuick 2.15
import QtQuick.Controls 2.15

ApplicationWindow {
    id: window

    width: 800
    height: 480
    visible: true
    title: "Vesmar"

    // The window stays until the line is given back: until then a measurement may still be being stopped.
    onClosing: function (close) {
        close.accepted = page.close()
    }

    MeasurementPage {
        id: page
        anchors.fill: parent
        onClosed: window.close()
    }
}
