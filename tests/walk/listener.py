#!/usr/bin/python3
"""listener.py PICTURE TITLE WIDTHxHEIGHT: writes down what a screen reader finds in the window of that title and size.

One line for each control on show: role, name, value, and the label it is tied to. A control without a name, and a label
that stands before a field and is not tied to it, go to the list of faults as well. The folder for both is
TARVELLO_WALK_HEARD.
"""
import os
import sys
import time

import pyatspi

PICTURE, TITLE, SIZE = sys.argv[1:4]
PATIENCE = 10  # seconds until the program has put itself on the bus
FIELDS = {
    pyatspi.ROLE_ENTRY, pyatspi.ROLE_TEXT, pyatspi.ROLE_COMBO_BOX, pyatspi.ROLE_SPIN_BUTTON, pyatspi.ROLE_LIST,
    pyatspi.ROLE_TABLE, pyatspi.ROLE_TREE, pyatspi.ROLE_TREE_TABLE, pyatspi.ROLE_LIST_BOX,
}
CONTROLS = FIELDS | {
    pyatspi.ROLE_PUSH_BUTTON, pyatspi.ROLE_TOGGLE_BUTTON, pyatspi.ROLE_CHECK_BOX, pyatspi.ROLE_RADIO_BUTTON,
    pyatspi.ROLE_PAGE_TAB, pyatspi.ROLE_PAGE_TAB_LIST, pyatspi.ROLE_MENU, pyatspi.ROLE_MENU_ITEM,
    pyatspi.ROLE_CHECK_MENU_ITEM, pyatspi.ROLE_LINK, pyatspi.ROLE_SLIDER, pyatspi.ROLE_PROGRESS_BAR,
    pyatspi.ROLE_PUSH_BUTTON_MENU,
}
# What is inside them is told by the control itself; of a long list the rows would be too many.
CLOSED = {
    pyatspi.ROLE_COMBO_BOX, pyatspi.ROLE_SPIN_BUTTON, pyatspi.ROLE_SCROLL_BAR, pyatspi.ROLE_LIST, pyatspi.ROLE_TABLE,
    pyatspi.ROLE_TREE, pyatspi.ROLE_TREE_TABLE, pyatspi.ROLE_LIST_BOX,
}


def program():
    """The program on the bus; it may have put itself there only just now."""
    for _ in range(10 * PATIENCE):
        for application in pyatspi.Registry.getDesktop(0):
            if application is not None and application.name == "Tarvello":
                return application
        time.sleep(0.1)
    sys.exit("the program is not on the bus of the screen readers")


def is_showing(control):
    return control.getState().contains(pyatspi.STATE_SHOWING)


def window_on_show():
    windows = [window for window in program() if window is not None and is_showing(window)]
    named = [window for window in windows if window.name.strip() == TITLE.strip()]
    if not named:
        sys.exit(f"no window \"{TITLE}\" can be heard, only {[window.name for window in windows]}")
    # The picture over the start and the window below it have one title.
    return min(named, key=difference_in_size)


def difference_in_size(window):
    place = window.queryComponent().getExtents(pyatspi.DESKTOP_COORDS)
    width, height = (int(length) for length in SIZE.split("x"))
    return abs(place.width - width) + abs(place.height - height)


def related(control, kind):
    return [
        relation.getTarget(i)
        for relation in control.getRelationSet()
        if relation.getRelationType() == kind
        for i in range(relation.getNTargets())
    ]


def labels_of(control):
    """Those of the control, or of what it is a part of: a date and its tick are one field."""
    return related(control, pyatspi.RELATION_LABELLED_BY) or (
        related(control.parent, pyatspi.RELATION_LABELLED_BY) if control.parent is not None else [])


def value_of(control):
    interfaces = pyatspi.listInterfaces(control)
    if "Text" in interfaces:
        text = control.queryText()
        return text.getText(0, min(text.characterCount, 200))
    if "Value" in interfaces:
        return str(control.queryValue().currentValue)
    state = control.getState()
    return ", ".join(word for word, flag in (("checked", pyatspi.STATE_CHECKED), ("selected", pyatspi.STATE_SELECTED),
                                             ("disabled", None)) if (state.contains(flag) if flag is not None else
                                                                     not state.contains(pyatspi.STATE_ENABLED)))


def told_of(control, told):
    """The labels that say themselves whose they are; the toolkit tells those of a list so."""
    return [label for label, field in told if field == control]


def walk(control, depth, heard):
    for child in control:
        if child is None or not is_showing(child):
            continue
        heard.append((depth, child))
        if child.getRole() not in CLOSED:
            walk(child, depth + 1, heard)


def place_of(control):
    return control.queryComponent().getExtents(pyatspi.WINDOW_COORDS)


def stands_before(label, field):
    words, place = place_of(label), place_of(field)
    middle = words.y + words.height / 2
    return words.x + words.width <= place.x <= words.x + words.width + 24 and place.y <= middle <= place.y + place.height


def line_of(depth, control, told):
    text = f"{'  ' * depth}{control.getRoleName()} \"{control.name}\""
    value = value_of(control)
    labels = ", ".join(label.name for label in labels_of(control) or told_of(control, told)) if control.getRole() in FIELDS else ""
    return text + (f" = {value!r}" if value else "") + (f" <- \"{labels}\"" if labels else "")


def told_by(controls):
    return [(label, field) for label in controls if label.getRole() == pyatspi.ROLE_LABEL
            for field in related(label, pyatspi.RELATION_LABEL_FOR)]


def faults_of(controls):
    for control in controls:
        if control.getRole() in CONTROLS and not control.name.strip():
            yield f"a {control.getRoleName()} has no name, in \"{control.parent.name}\""
    told = told_by(controls)
    free = [field for field in controls
            if field.getRole() in FIELDS and not labels_of(field) and not told_of(field, told)]
    for label in controls:
        if label.getRole() != pyatspi.ROLE_LABEL or not label.name.strip() or related(label, pyatspi.RELATION_LABEL_FOR):
            continue
        for field in free:
            if stands_before(label, field):
                yield f"the label \"{label.name}\" is not tied to \"{field.name}\""


def main():
    window = window_on_show()
    heard = []
    walk(window, 1, heard)
    told = told_by([control for _, control in heard])
    lines = [f"{window.getRoleName()} \"{window.name}\""] + [line_of(depth, control, told) for depth, control in heard]
    with open(os.path.join(os.environ["TARVELLO_WALK_HEARD"], PICTURE + ".txt"), "w", encoding="utf-8") as file:
        file.write("\n".join(lines) + "\n")
    with open(os.path.join(os.environ["TARVELLO_WALK_HEARD"], "faults"), "a", encoding="utf-8") as file:
        file.writelines(f"{PICTURE}: {fault}\n" for fault in faults_of([control for _, control in heard]))


main()
