import QtQuick 2.15
import QtQuick.Controls 2.15
import Kyr.SceneOutline 1.0

// One of several names.
ComboBox {
    id: field

    function shownIndex() {
        return line.mixed ? -1 : line.choices.indexOf(line.value);
    }

    implicitHeight: 22
    leftPadding: 6
    font.pixelSize: 12
    enabled: !line.readOnly
    model: line.choices
    displayText: line.mixed ? "–" : line.value
    currentIndex: shownIndex()
    // Scrolling the inspector must not change what happens to pass under the pointer.
    wheelEnabled: false

    Accessible.name: line.label

    contentItem: Text {
        text: field.displayText
        color: theme.text
        font: field.font
        elide: Text.ElideRight
        verticalAlignment: Text.AlignVCenter
        textFormat: Text.PlainText
    }
    background: FieldBackground {
        focused: field.visualFocus || field.down || field.hovered
    }
    indicator: PanelIcon {
        x: field.width - width - 4
        anchors.verticalCenter: parent.verticalCenter
        name: "arrow"
        rotation: 90
        color: theme.dimText
    }

    onActivated: {
        session.inspector.setText(row, line.choices[index]);
        currentIndex = Qt.binding(shownIndex);
    }
}
