import QtQuick 2.15

// A field for each component.
Row {
    id: field

    readonly property var components: line.value
    readonly property var axes: ["X", "Y", "Z", "W"]
    readonly property var colors: theme.dark ? ["#e8807c", "#6cb860", "#6fa4ea", "#a8aeb6"]
                                             : ["#bf302c", "#2a7523", "#2a63b8", "#5b636c"]

    spacing: 3

    Repeater {
        model: field.components.length

        NumberInput {
            objectName: "component_" + index
            width: (field.width - field.spacing * (field.components.length - 1)) / field.components.length
            prefix: field.axes[index]
            prefixColor: field.colors[index]
            value: field.components[index] === null ? 0 : field.components[index]
            mixed: field.components[index] === null
            readOnly: line.readOnly
            step: line.step
            description: line.label + " " + field.axes[index]
            onTyped: session.inspector.typeNumber(row, index, text)
            onStepped: session.inspector.stepNumber(row, index, amount)
            onDragged: session.inspector.dragNumber(row, index, amount)
            onDragStarted: session.inspector.beginChange(row)
            onDragEnded: session.inspector.endChange()
        }
    }
}
