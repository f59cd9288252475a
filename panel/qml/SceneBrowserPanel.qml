import QtQuick 2.15
import QtQml.Models 2.15
import Kyr.SceneOutline 1.0

// The Scene Browser: a tree of the objects that a browser object shows, with its selection, hover and
// menu in step.
//
//     SceneBrowserPanel {
//         browser: sceneBrowser   // a SceneBrowserData
//         alwaysReveal: true
//     }
//
// Keys: arrows, Home, End, Page Up and Down with Shift and Ctrl; Left and Right close and open, with
// Shift the whole branch, as does *; Space selects, Ctrl+Space toggles; F reveals the selection;
// letters search by name (Shift+F for a name with F).
//
// Without a browser, any item model will do: set `model`, and `selectionModel` if there is one.
FocusScope {
    id: panel

    property QtObject browser: null
    property QtObject model: browser ? browser.model : null
    property QtObject selectionModel: browser ? browser.selectionModel : ownSelection
    // Scrolls to what is selected elsewhere, as F does on demand.
    property bool alwaysReveal: false
    property PanelStyle style: PanelStyle {}
    property string emptyText: qsTr("No scene")

    readonly property alias tree: tree

    // For what a browser does by itself.
    signal menuRequested()
    signal activated(var sourceIndex)

    // Expands what hides the row and scrolls it into view; a row in view stays where it is.
    function revealIndex(sourceIndex) {
        tree.showIndex(sourceIndex);
    }
    function revealSelection() {
        const primary = tree.navigator.primaryIndex();
        if (primary.valid)
            revealIndex(primary);
    }
    function expandAll() {
        tree.navigator.expandAll();
    }
    function collapseAll() {
        tree.navigator.collapseAll();
    }

    implicitWidth: 360
    implicitHeight: 480

    ItemSelectionModel {
        id: ownSelection

        model: panel.model
    }

    Connections {
        target: panel.browser

        function onExpandAllRequested() { panel.expandAll(); }
        function onCollapseAllRequested() { panel.collapseAll(); }
        function onOnShowItem(index) { panel.revealIndex(index); }
    }
    Connections {
        target: panel.selectionModel

        function onSelectionChanged() {
            if (panel.alwaysReveal && !tree.navigator.changing)
                Qt.callLater(panel.revealSelection);
        }
    }

    Rectangle {
        anchors.fill: parent
        color: panel.style.window
    }
    PanelSlot {
        id: headerSlot

        objectName: "header_slot"
        anchors { left: parent.left; right: parent.right; top: parent.top }
        panel: panel.browser ? panel.browser.headerPanel : null
    }
    OutlineHeader {
        id: header

        anchors { left: parent.left; right: parent.right; top: headerSlot.bottom }
        style: panel.style
        showCount: tree.hasCount
        buttonCount: tree.buttonCount
        rightMargin: tree.scrollBarWidth
    }
    OutlineTree {
        id: tree

        objectName: "outline_tree"
        anchors {
            left: parent.left
            right: parent.right
            top: header.bottom
            bottom: footerSlot.top
        }
        focus: true
        style: panel.style
        sourceModel: panel.model
        selectionModel: panel.selectionModel

        onHoverEntered: {
            if (panel.browser)
                panel.browser.syncHover(sourceIndex);
        }
        onHoverLeft: {
            if (panel.browser)
                panel.browser.resetHover();
        }
        onMenuRequested: {
            if (panel.browser)
                panel.browser.requestMenu();
            panel.menuRequested();
        }
        onActivated: {
            if (panel.browser)
                panel.browser.onDoubleClicked(sourceIndex);
            panel.activated(sourceIndex);
        }
        onSelectAllRequested: {
            if (panel.browser)
                panel.browser.selectAll();
            else
                tree.navigator.selectVisible();
        }
        onRevealRequested: panel.revealSelection()
    }
    Text {
        anchors.centerIn: tree
        visible: tree.count === 0
        text: panel.emptyText
        color: panel.style.faintText
        font.pixelSize: panel.style.pixelSize
    }
    PanelSlot {
        id: footerSlot

        objectName: "footer_slot"
        anchors { left: parent.left; right: parent.right; bottom: parent.bottom }
        panel: panel.browser ? panel.browser.footerPanel : null
    }
}
