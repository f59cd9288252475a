import QtQuick 2.15

// One line of the inspector: a heading, or a label and the field that fits the property's kind.
Item {
    id: line

    property int rightMargin: 8
    readonly property string path: model.path
    readonly property int labelWidth: 92
    // Where three numbers beside a label would be cut off, they stand below it.
    readonly property bool stacked: model.kind === "vector" && width < 340
    readonly property var fields: ({
        "boolean": "CheckField.qml",
        "choice": "ChoiceField.qml",
        "color": "ColorField.qml",
        "integer": "NumberField.qml",
        "number": "NumberField.qml",
        "text": "TextEditField.qml",
        "vector": "VectorField.qml"
    })

    signal partMenuRequested(string path, string label)

    function edit() {
        if (loader.item && loader.item.edit)
            loader.item.edit();
    }

    objectName: "property_" + path
    visible: model.kind === "group" || model.shown
    height: !visible ? 0 : stacked ? 48 : 26

    InspectorGroup {
        anchors.fill: parent
        visible: model.kind === "group"
        title: model.label
        expanded: model.expanded
        onToggled: session.inspector.toggleGroup(index)
    }
    Text {
        x: 10
        y: line.stacked ? 3 : (line.height - height) / 2
        width: line.stacked ? line.width - x - line.rightMargin : line.labelWidth - x
        visible: model.kind !== "group"
        text: model.kind === "vector" && model.unit ? qsTr("%1 (%2)").arg(model.label).arg(model.unit)
                                                    : model.label
        color: theme.dimText
        font.pixelSize: 12
        elide: Text.ElideRight
        textFormat: Text.PlainText
    }
    MouseArea {
        width: model.kind === "group" ? line.width : line.labelWidth
        height: line.height
        acceptedButtons: Qt.RightButton
        onClicked: line.partMenuRequested(line.path, model.label)
    }
    Loader {
        id: loader

        // What every field reads; it writes through `session.inspector` with `row`.
        readonly property int row: index
        readonly property var line: model
        readonly property bool integral: model.kind === "integer"

        x: line.stacked ? 10 : line.labelWidth + 4
        y: line.stacked ? 22 : (line.height - height) / 2
        width: line.width - x - line.rightMargin
        source: line.fields[model.kind] || ""
    }
}
