import QtQuick 2.15

NumberInput {
    value: line.value
    mixed: line.mixed
    readOnly: line.readOnly
    unit: line.unit
    minimum: line.minimum
    maximum: line.maximum
    step: integral ? Math.max(1, line.step) : line.step
    decimals: integral ? 0 : 3
    description: line.label

    function edit() {
        beginTyping();
    }

    onCommitted: session.inspector.setNumber(row, number)
    onDragStarted: session.inspector.beginChange(row)
    onDragEnded: session.inspector.endChange()
}
