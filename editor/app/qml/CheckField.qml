import QtQuick 2.15
import QtQuick.Controls 2.15

CheckBox {
    id: field

    padding: 0
    implicitHeight: 22
    enabled: !line.readOnly
    tristate: line.mixed
    checkState: line.mixed ? Qt.PartiallyChecked : line.value === true ? Qt.Checked : Qt.Unchecked

    Accessible.name: line.label

    // The next state is what the model makes of the click; the binding above then shows it.
    nextCheckState: function () {
        const wanted = line.mixed || line.value !== true;
        session.inspector.setBoolean(row, wanted);
        return line.mixed ? Qt.PartiallyChecked : line.value === true ? Qt.Checked : Qt.Unchecked;
    }
    onClicked: checkState = Qt.binding(function () {
        return line.mixed ? Qt.PartiallyChecked : line.value === true ? Qt.Checked : Qt.Unchecked;
    })
}
