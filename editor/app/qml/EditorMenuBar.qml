import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Controls.impl 2.15

// The menus of the editor's commands.
MenuBar {
    id: bar

    function openFirst() {
        itemAt(0).triggered();
    }

    function menuNamed(name) {
        return menuAt(session.actions.menus.findIndex(menu => menu.name === name));
    }

    font.pixelSize: 12

    // A bar whose open item counts as hovered stays in its menu mode when Escape closes the menu, and
    // the next click only ends that mode.
    delegate: MenuBarItem {
        id: item

        hoverEnabled: !(menu && menu.visible)
        contentItem: MnemonicLabel {
            text: item.text
            font: item.font
            color: item.highlighted ? theme.palette.highlightedText : theme.text
            textFormat: Text.PlainText
        }
    }

    Component {
        id: menuComponent

        EditorMenu {}
    }
    Component {
        id: setsComponent

        ListMenu {
            title: qsTr("S&elect Set")
            texts: session.build.selectionSets
            emptyText: qsTr("No sets yet")
            onChosen: session.build.recallSelectionSet(index)
        }
    }
    Component {
        id: recentComponent

        ListMenu {
            title: qsTr("Open Re&cent")
            texts: session.recent.titles
            emptyText: qsTr("No files yet")
            onChosen: session.files.openFile(session.recent.paths[index])
        }
    }
    Component.onCompleted: {
        for (const menu of session.actions.menus)
            addMenu(menuComponent.createObject(bar, {
                objectName: menu.name + "_menu", title: menu.title, entries: menu.entries
            }));
        menuNamed("file").insertMenu(2, recentComponent.createObject(bar));
        menuNamed("select").addMenu(setsComponent.createObject(bar));
    }
}
