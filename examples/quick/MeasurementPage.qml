import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Vesmar 1.0

// Everything of a measurement on one page.
Page {
    id: page

    property Measurement measurement: null
    readonly property var chosen: Catalogue.functions[functionBox.currentIndex]
    readonly property bool isMeasuring: measurement !== null && !measurement.isFinished
    property string message: ""
    property bool isClosing: false

    signal closed

    // Whether the page may go now. Otherwise `closed` follows.
    function close() {
        isClosing = true
        instrument.close()
        return instrument.linkState === Vesmar.LinkState.Closed
    }

    function start() {
        const options = {}
        for (let i = 0; i < fields.count; ++i) {
            const field = fields.itemAt(i)
            if (field.value !== undefined) {
                options[field.option.identifier] = field.value
            }
        }
        if (measurement !== null) {
            measurement.discard()
        }
        message = ""
        measurement = instrument.measure(chosen.identifier, options)
    }

    function showEnd(outcome) {
        const words = outcome === Vesmar.Outcome.Completed ? qsTr("Completed. ")
                    : outcome === Vesmar.Outcome.Aborted ? qsTr("Aborted. ")
                    : [measurement.failure.whatHappened].concat(measurement.failure.causes).join(" ") + " "
        message = words + (measurement.isStopConfirmed ? qsTr("The instrument has stopped.")
                                                       : qsTr("It is not confirmed that the instrument has stopped."))
    }

    Instrument {
        id: instrument
        onOpenFailed: failure => page.message = failure.whatHappened + " " + failure.nextStep
        onLinkStateChanged: if (page.isClosing && linkState === Vesmar.LinkState.Closed) page.closed()
        Component.onCompleted: open()
    }

    Connections {
        target: page.measurement
        function onFinished(outcome) { page.showEnd(outcome) }
    }

    ColumnLayout {
        anchors.fill: parent
        anchors.margins: 8

        Label {
            objectName: "link"
            text: instrument.linkState === Vesmar.LinkState.Up
                  ? qsTr("Connected to %1").arg(instrument.identity.serialNumber) : qsTr("Not connected")
        }
        ComboBox {
            id: functionBox
            objectName: "function"
            Layout.fillWidth: true
            implicitHeight: 44
            enabled: !page.isMeasuring
            textRole: "title"
            model: Catalogue.functions
        }
        GridLayout {
            columns: 2
            enabled: !page.isMeasuring
            Repeater {
                model: page.chosen.options
                Label {
                    text: modelData.title
                    Layout.row: index
                    Layout.column: 0
                }
            }
            Repeater {
                id: fields
                model: page.chosen.options
                OptionField {
                    option: modelData
                    Layout.row: index
                    Layout.column: 1
                }
            }
        }
        Flow {
            Layout.fillWidth: true
            spacing: 16
            Repeater {
                objectName: "readings"
                model: page.measurement !== null ? page.measurement.latest.readings : []
                Label {
                    font.pixelSize: 28
                    text: modelData.name + " " + modelData.text
                }
            }
        }
        Item { Layout.fillHeight: true }
        Label {
            objectName: "message"
            Layout.fillWidth: true
            wrapMode: Text.WordWrap
            text: page.message
        }
        RowLayout {
            Button {
                objectName: "start"
                text: qsTr("Start")
                implicitHeight: 60
                Layout.fillWidth: true
                enabled: instrument.linkState === Vesmar.LinkState.Up && !instrument.isBusy
                onClicked: page.start()
            }
            Button {
                objectName: "stop"
                text: qsTr("Stop")
                implicitHeight: 60
                Layout.fillWidth: true
                enabled: page.isMeasuring
                onClicked: page.measurement.abort()
            }
        }
    }
}
