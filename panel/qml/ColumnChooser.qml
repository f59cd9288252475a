import QtQuick 2.15
import QtQuick.Controls 2.15
import Kyr.SceneOutline 1.0

// Lets the user choose the columns of a Scene Browser: all of them to check at the left, the chosen
// ones at the right. An editor opens it when the browser asks for it:
//
//     ColumnChooser { id: chooser; browser: sceneBrowser }     // chooser.open()
Popup {
    id: chooser

    property QtObject browser: null
    property PanelStyle style: PanelStyle {}

    property QtObject checkableModel: null
    property QtObject selectedModel: null

    // The browser makes new models when its columns change, and tells that alone.
    function readModels() {
        checkableModel = browser ? browser.checkableColumnsModel : null;
        selectedModel = browser ? browser.selectedColumnsModel : null;
        Qt.callLater(openGroups);
    }
    function openGroups() {
        columns.expandAll();
    }
    function toggle(row) {
        const checked = columns.data(columns.index(row, 0), columns.sourceRole("checked"));
        if (!columns.rowHasChildren(row) && checked !== undefined)
            columns.setData(columns.index(row, 0), checked ? Qt.Unchecked : Qt.Checked,
                            columns.sourceRole("checked"));
    }
    function removeRow(row) {
        browser.removeFromSelectedColumns([selectedModel.index(row, 0)]);
    }

    // All of it shows in a small window, too.
    width: Math.min(560, parent ? parent.width - 2 * style.spacing : 560)
    height: Math.min(420, parent ? parent.height - 2 * style.spacing : 420)
    padding: style.spacing * 3
    modal: true
    focus: true
    anchors.centerIn: Overlay.overlay

    onBrowserChanged: readModels()
    onAboutToShow: {
        readModels();
        search.clear();
        search.textEdited();
    }
    onOpened: search.forceActiveFocus()

    Connections {
        target: chooser.browser

        function onColumnsModelChanged() { chooser.readModels(); }
    }
    OutlineModel {
        id: columns

        sourceModel: chooser.checkableModel
        onRowsInserted: Qt.callLater(chooser.openGroups)
    }

    background: Rectangle {
        color: chooser.style.window
        border.color: chooser.style.separator
        radius: 4
    }

    contentItem: Item {
        PanelTextField {
            id: search

            objectName: "columns_search"
            width: parent.width
            style: chooser.style
            placeholderText: qsTr("Search columns")
            onTextEdited: {
                if (chooser.browser)
                    chooser.browser.setColumnsFilter(text);
                Qt.callLater(chooser.openGroups);
            }
            Keys.onDownPressed: available.forceActiveFocus()
            Accessible.name: placeholderText
        }
        ChooserList {
            id: available

            objectName: "available_columns"
            anchors { left: parent.left; top: search.bottom; bottom: buttons.top; margins: gap }
            anchors.leftMargin: 0
            width: (parent.width - gap) * 0.56
            style: chooser.style
            title: qsTr("Available")
            model: columns
            onActivated: chooser.toggle(row)

            delegate: ChooserRow {
                style: chooser.style
                title: model.display
                depth: model.depth
                group: model.hasChildren
                checkable: !model.hasChildren
                checked: model.checked ? true : false
                current: ListView.isCurrentItem && available.activeFocus
                onClicked: {
                    available.currentIndex = index;
                    chooser.toggle(index);
                }
            }
        }
        ChooserList {
            id: chosen

            objectName: "chosen_columns"
            anchors {
                left: available.right
                right: parent.right
                top: search.bottom
                bottom: buttons.top
                margins: gap
            }
            anchors.rightMargin: 0
            style: chooser.style
            title: qsTr("Shown")
            emptyText: qsTr("No columns yet")
            model: chooser.selectedModel
            onActivated: chooser.removeRow(row)
            onRemoved: chooser.removeRow(row)

            delegate: ChooserRow {
                style: chooser.style
                title: model.display
                removable: true
                current: ListView.isCurrentItem && chosen.activeFocus
                onClicked: {
                    chosen.currentIndex = index;
                    chosen.forceActiveFocus();
                }
                onRemoved: chooser.removeRow(index)
            }
        }
        Row {
            id: buttons

            anchors { right: parent.right; bottom: parent.bottom }
            spacing: chooser.style.spacing * 2

            PanelButton {
                objectName: "clear_columns"
                style: chooser.style
                text: qsTr("Clear")
                enabled: chosen.count > 0
                onClicked: chooser.browser.clearSelectedColumns()
            }
            PanelButton {
                style: chooser.style
                text: qsTr("Close")
                onClicked: chooser.close()
            }
        }
    }
}
