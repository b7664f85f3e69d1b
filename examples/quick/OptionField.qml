import QtQuick 2.15
import QtQuick.Controls 2.15
import Vesmar 1.0

// The field of one option of the catalogue. `value` is undefined while the option is not set.
Loader {
    id: field

    property var option
    property var value: item ? item.value : undefined

    sourceComponent: {
        switch (option.kind) {
        case Vesmar.OptionKind.Choice:
            return choice
        case Vesmar.OptionKind.Flag:
            return flag
        default:
            return number
        }
    }

    Component {
        id: choice
        ComboBox {
            readonly property var value: currentIndex > 0 ? currentValue : undefined
            implicitHeight: 44
            textRole: "title"
            valueRole: "identifier"
            model: [{ identifier: "", title: qsTr("not set") }].concat(field.option.choices)
        }
    }
    Component {
        id: flag
        Switch {
            readonly property var value: checked ? true : undefined
            implicitHeight: 44
        }
    }
    Component {
        id: number
        TextField {
            readonly property var value: text.length > 0 ? text : undefined
            implicitHeight: 44
            placeholderText: field.option.defaultValue !== undefined ? field.option.defaultValue : ""
        }
    }
}
