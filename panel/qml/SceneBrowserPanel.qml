import QtQuick 2.15
import QtQml.Models 2.15
import Kyr.SceneOutline 1.0

// The Scene Browser: a tree of the objects that a browser object shows, with its selection, hover and
// menu in step.
//
//     SceneBrowserPanel {
//         browser: sceneBrowser   // a SceneBrowserData
//         settingsName: "outline"
//     }
//
// Keys: arrows, Home, End, Page Up and Down with Shift and Ctrl; Left and Right close and open, with
// Shift the whole branch, as does *; Space selects, Ctrl+Space toggles; F reveals the selection;
// letters search by name (Shift+F for a name with F); F2 renames; Ctrl+Left and Ctrl+Right go
// through the row's toggles, buttons and cells, which Space switches and F2 edits; Ctrl+F filters;
// Menu opens the menu at the row.
//
// Without a browser, any item model will do: set `model`, and `selectionModel` if there is one.
FocusScope {
    id: panel

    property QtObject browser: null
    property QtObject model: browser ? browser.model : null
    property QtObject selectionModel: browser ? browser.selectionModel : ownSelection
    // Scrolls to what is selected elsewhere, as F does on demand.
    property bool alwaysReveal: true
    property PanelStyle style: PanelStyle {}
    property string emptyText: qsTr("No scene")
    // Where widths and sorting of the columns are kept in the application's settings.
    property alias settingsName: columns.settingsName

    readonly property alias tree: tree
    // The browser's choice of how the scene shows.
    readonly property QtObject mode: browser && browser.selectableData ? browser.selectableData : null
    readonly property QtObject predicate: browser && browser.filterPredicate ? browser.filterPredicate
                                                                             : null
    // Selected objects, and how many of them the filter hides.
    readonly property alias selectionCount: selectionStatus.count
    readonly property alias hiddenSelectionCount: selectionStatus.hidden
    readonly property string statusText: selectionStatus.text
    // Rows that the filter finds; below 0 while nothing filters.
    readonly property int matchCount: tree.outline.matchCount

    // For what a browser does by itself.
    // Before the browser's menu shows, with the place on the screen that it is about: the pointer, or
    // the current row if the keyboard asked.
    signal menuAboutToShow(point place)
    signal menuRequested()
    signal activated(var sourceIndex)
    // Around the changes of one gesture in the panel, for an editor to make one undo step of them.
    signal editBegins(string text)
    signal editEnds()

    // Expands what hides the row and scrolls it into view; a row in view stays where it is.
    function revealIndex(sourceIndex) {
        tree.showIndex(sourceIndex);
    }
    function revealSelection() {
        const primary = tree.navigator.primaryIndex();
        if (primary.valid)
            revealIndex(primary);
    }
    // What the filter shows and found.
    function selectMatches() {
        tree.navigator.selectMatches();
    }
    function focusFilter() {
        filterBar.focusField();
    }
    function rename() {
        tree.startEditing();
    }
    function expandAll() {
        tree.navigator.expandAll();
    }
    function collapseAll() {
        tree.navigator.collapseAll();
    }

    implicitWidth: 340
    implicitHeight: 480

    Binding {
        target: panel
        property: "implicitWidth"
        value: Math.max(340, rowLayout.naturalWidth)
        // A new width makes new rows, which tell how many buttons there are.
        delayed: true
    }
    OutlineColumns {
        id: columns

        // Made anew by the browser, which tells by its signal alone.
        function readModel() {
            model = panel.browser && panel.browser.selectedColumnsModel
                    ? panel.browser.selectedColumnsModel : null;
        }
    }
    onBrowserChanged: columns.readModel()
    Connections {
        target: panel.browser
        ignoreUnknownSignals: true

        function onColumnsModelChanged() { columns.readModel(); }
    }
    OutlineLayout {
        id: rowLayout

        style: panel.style
        columns: columns
        width: tree.width
        rightMargin: tree.scrollBarWidth
        buttonCount: tree.buttonCount
        hasCount: tree.hasCount
        canChoose: panel.browser && panel.browser.columnsModel ? true : false
    }
    Connections {
        target: tree.rowEditor

        function onEditBegins(text) { panel.editBegins(text); }
        function onEditEnds() { panel.editEnds(); }
    }
    Connections {
        target: tree.dragger

        function onEditBegins(text) { panel.editBegins(text); }
        function onEditEnds() { panel.editEnds(); }
    }
    SelectionStatus {
        id: selectionStatus

        outline: tree.outline
    }
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
        target: tree.outline

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
    FilterBar {
        id: filterBar

        objectName: "filter_bar"
        anchors { left: parent.left; right: parent.right; top: headerSlot.bottom }
        style: panel.style
        predicate: panel.predicate
        mode: panel.mode
        matchCount: panel.matchCount
        working: tree.outline.working
        filters: panel.browser && panel.browser.filterData ? panel.browser.filterData : []
        onFinished: tree.forceActiveFocus()
    }
    OutlineHeader {
        id: header

        objectName: "outline_header"
        anchors { left: parent.left; right: parent.right; top: filterBar.bottom }
        style: panel.style
        columns: columns
        layout: rowLayout
        canChoose: rowLayout.canChoose
        onChooserRequested: panel.browser.showColumnsDialog()
    }
    TreeNotice {
        id: notice

        objectName: "tree_notice"
        anchors { left: parent.left; right: parent.right; top: header.bottom }
        style: panel.style
        outline: tree.outline
    }
    OutlineTree {
        id: tree

        objectName: "outline_tree"
        anchors {
            left: parent.left
            right: parent.right
            top: notice.bottom
            bottom: footerSlot.top
        }
        focus: true
        style: panel.style
        columns: columns
        layout: rowLayout
        sourceModel: panel.model
        selectionModel: panel.selectionModel
        predicate: panel.predicate
        arrangement: panel.mode && panel.mode.arrangement !== undefined ? panel.mode.arrangement
                                                                        : "hierarchy"

        onHoverEntered: {
            if (panel.browser)
                panel.browser.syncHover(sourceIndex);
        }
        onHoverLeft: {
            if (panel.browser)
                panel.browser.resetHover();
        }
        onMenuRequested: {
            panel.menuAboutToShow(tree.mapToGlobal(place.x, place.y));
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
            if (tree.outline.matchCount >= 0)
                panel.selectMatches();
            else if (panel.browser)
                panel.browser.selectAll();
            else
                tree.navigator.selectVisible();
        }
        onRevealRequested: panel.revealSelection()
        onFilterRequested: {
            if (panel.predicate)
                panel.focusFilter();
        }
    }
    EmptyTree {
        anchors.centerIn: tree
        width: tree.width - panel.style.spacing * 8
        visible: tree.count === 0
        style: panel.style
        predicate: panel.predicate
        filters: filterBar.filters
        filtered: tree.outline.arranged
        emptyText: panel.emptyText
        onCleared: tree.forceActiveFocus()
    }
    PanelSlot {
        id: footerSlot

        objectName: "footer_slot"
        anchors { left: parent.left; right: parent.right; bottom: parent.bottom }
        panel: panel.browser ? panel.browser.footerPanel : null
    }
}
