import QtQuick 2.15
import QtQuick.Controls 2.15

ScrollBar {
    id: bar

    property QtObject style

    policy: size < 1 ? ScrollBar.AlwaysOn : ScrollBar.AlwaysOff
    minimumSize: 0.04
    padding: 2
    implicitWidth: 11
    implicitHeight: 11

    contentItem: Rectangle {
        implicitWidth: 7
        implicitHeight: 7
        radius: 3
        color: bar.pressed ? bar.style.dimText : bar.hovered ? bar.style.faintText
                                                             : bar.style.faintIcon
    }
    background: null
}
