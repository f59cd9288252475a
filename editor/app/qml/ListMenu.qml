import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQml 2.15
import Kyr.SceneOutline 1.0

// A submenu of texts that come and go, such as files.
EditorMenu {
    id: menu

    property var texts: []
    property string emptyText

    signal chosen(int index)

    Instantiator {
        model: menu.texts.length > 0 ? menu.texts : [menu.emptyText]
        delegate: Action {
            // An ampersand in a name is no mnemonic.
            text: DisplayText.oneLine(modelData).replace(/&/g, "&&")
            enabled: menu.texts.length > 0
            onTriggered: menu.chosen(index)
        }
        onObjectAdded: menu.insertAction(index, object)
        onObjectRemoved: menu.removeAction(object)
    }
}
