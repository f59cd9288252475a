import QtQuick 2.15
import QtQuick.Controls 2.15

ComboBox {
    id: field

    function shownIndex() {
        return line.mixed ? -1 : line.choices.indexOf(line.value);
    }

    implicitHeight: 22
    font.pixelSize: 12
    enabled: !line.readOnly
    model: line.choices
    displayText: line.mixed ? "–" : line.value
    currentIndex: shownIndex()
    // Scrolling the inspector must not change what happens to pass under the pointer.
    wheelEnabled: false

    Accessible.name: line.label

    onActivated: {
        session.inspector.setText(row, line.choices[index]);
        currentIndex = Qt.binding(shownIndex);
    }
}
