"""What ./bench measures: each line of the tables by the names of its benchmarks.

A line is (title, benchmark, floor, rival); floor and rival are other benchmarks or None, and {n} in a
name stands for the number of objects. Lines with two objects a number say so in their title.
"""

OURS = "<RowSelectionModel>"
STOCK = "<Model>"
SIZES = (1_000, 10_000, 100_000, 1_000_000)
SHAPES = ("flat", "1000_levels", "chain", "1000_parents", "bushy")


def selection(title, name, floor=None, once=""):
    return (title, f"{name}{OURS}/{{n}}{once}", floor, f"{name}{STOCK}/{{n}}/iterations:1")


THRICE, ONCE = "/iterations:3", "/iterations:1"
BUILD, ODD = "buildRanges/{n}", "buildOddRows/{n}"

TABLES = [
    ("Row selection", "selection", [
        ("build the ranges of a swap", BUILD, None, None),
        selection("replace all selected rows by others and back", "swapAlternateRows", BUILD),
        selection("invert alternate rows", "invertAlternateRows", BUILD),
        selection("toggle every range", "toggleEveryRange", BUILD),
        ("add one row and take it away", f"addOneToMany{OURS}/{{n}}", None, f"addOneToMany{STOCK}/{{n}}"),
        selection("replace one range per parent", "replaceOneRangePerParent", BUILD),
        ("walk over every row, two a parent", "walkAllRows/{n}", None, None),
        ("select all, two a parent, with the editor's selection", "selectAll/{n}", "walkAllRows/{n}", None),
    ]),
    ("Select all by shape", "selection", [
        (f"{shape.replace('_', ' ')}", f"selectAllOfShape/{shape}/{{n}}", f"walkShape/{shape}/{{n}}", None)
        for shape in SHAPES
    ]),
    *((title, "selection", [
        (f"{shape.replace('_', ' ')}", f"{name}/{shape}/{{n}}", floor and f"{floor}/{shape}/{{n}}", None)
        for shape in SHAPES
    ]) for title, name, floor in (
        ("Every second object from the editor and back, by shape", "fromEditorOfShape", "rowsOfShape"),
        ("Reset with every second object selected, by shape", "resetOfShape", "rowsOfShape"),
        ("Hover of 1,000 rows, by shape", "hoverOfShape", None),
    )),
    ("Rows that come, go and move under a selection of every other row", "selection", [
        ("build the ranges", ODD, None, None),
        selection("a parent of a third of all rows goes", "removeParent", ODD, THRICE),
        selection("a tenth of all rows goes", "removeTenth", ODD, THRICE),
        selection("one row moves, all rows selected", "moveOneOfAll", ODD, THRICE),
        selection("1,000 rows come one by one", "insertThousand", f"insertThousand<HeldRanges>/{{n}}{ONCE}", ONCE),
        selection("1,000 rows go one by one", "removeThousand", f"removeThousand<HeldRanges>/{{n}}{ONCE}", ONCE),
        selection("1,000 rows move one by one", "moveThousand", f"moveThousand<HeldRanges>/{{n}}{ONCE}", ONCE),
    ]),
    ("Panel", "panel", [
        (title, f"{name}/{{n}}", None, f"{rival[0]}/{{n}}" if rival else None) for title, name, *rival in (
            ("expand all, of groups of two", "expandAll"),
            ("collapse all", "collapseAll"),
            ("toggle every group by hand", "toggleEachGroup"),
            ("mark and unmark one row in each group", "markEachGroup"),
            ("a selection range over all rows", "rangeOverAllRows"),
            ("a search that finds nothing", "searchWithoutAMatch"),
            ("from a row to its source index", "rowToIndex"),
            ("insert and remove a row", "insertAndRemoveRow", "insertAndRemoveRowOfProxies"),
            ("a keystroke in the filter field", "filterKeystroke", "filterKeystrokeOfProxies"),
            ("the same with names above, properties and exclusions", "filterByProperties"),
            ("the same with everything selected", "filterWithAllSelected"),
            ("sort by name", "sortByName", "sortProxies"),
            ("three mode switches", "switchModes"),
            ("insert and remove a row while filtered", "insertAndRemoveRowFound"),
        )
    ]),
    ("Panel by shape", "panel", [
        (f"{title}: {shape.replace('_', ' ')}", f"{name}/{shape}/{{n}}", None, None)
        for title, name in (("open", "openPanel"), ("reveal the deepest object", "revealDeepest"))
        for shape in SHAPES
    ]),
    ("Property clipboard, 20 properties an object", "property_clipboard", [
        ("copy", "copy/{n}", "copyFloor/{n}", None),
        ("paste", "paste/{n}", "pasteFloor/{n}", None),
    ]),
]

SIGNAL = {
    "ours": "ours", "bare loop": "bare_loop", "boost::signals2": "boost_signals2",
    "libsigc++": "sigcpp", "Qt direct": "qt_direct",
}

# The main lines of the figure, each with its rival or else its floor.
FIGURE = [
    "replace all selected rows by others and back", "invert alternate rows",
    "add one row and take it away", "select all, two a parent, with the editor's selection",
    "a tenth of all rows goes", "1,000 rows come one by one", "1,000 rows go one by one",
    "a keystroke in the filter field", "copy", "paste",
]

# Below this many times the cost for ten times the objects.
MOST_GROWTH = 15
