import QtQuick 2.15

NumberInput {
    value: line.value
    mixed: line.mixed
    readOnly: line.readOnly
    unit: line.unit
    step: integral ? Math.max(1, line.step) : line.step
    decimals: integral ? 0 : 3
    description: line.label

    function edit() {
        beginTyping();
    }

    onTyped: session.inspector.typeNumber(row, -1, text)
    onStepped: session.inspector.stepNumber(row, -1, amount)
    onDragged: session.inspector.dragNumber(row, -1, amount)
    onDragStarted: session.inspector.beginChange(row)
    onDragEnded: session.inspector.endChange()
}
