"""What assistive technology is told of windows, over the bus that it uses (AT-SPI), and what it can do there."""
import re

import dbus

ACCESSIBLE = "org.a11y.atspi.Accessible"
FOCUSABLE, FOCUSED, SENSITIVE, SHOWING = 1 << 11, 1 << 12, 1 << 24, 1 << 25
LABELLED_BY = 2  # among the relations
# Of nothing that people could do something with.
NO_ROLES = {"", "invalid", "unknown", "filler", "redundant object"}
LISTS = {"table", "tree table", "tree", "list"}  # whose cells are many, and are named by what is in them


class Thing:
    """One accessible thing: a window, a button, a cell."""

    def __init__(self, bus, reference):
        self.bus, self.reference = bus, (str(reference[0]), str(reference[1]))
        self.thing = bus.get_object(*self.reference, introspect=False)

    def name(self):
        return str(self.thing.Get(ACCESSIBLE, "Name", dbus_interface=dbus.PROPERTIES_IFACE))

    def role(self):
        return str(self.thing.GetRoleName(dbus_interface=ACCESSIBLE))

    def has(self, states):
        return int(self.thing.GetState(dbus_interface=ACCESSIBLE)[0]) & states == states

    def children(self):
        return [Thing(self.bus, child) for child in self.thing.GetChildren(dbus_interface=ACCESSIBLE)]

    def labels(self):
        """The names of what labels it."""
        relations = self.thing.GetRelationSet(dbus_interface=ACCESSIBLE)
        return [Thing(self.bus, target).name() for kind, targets in relations if kind == LABELLED_BY for target in targets]

    def press(self):
        """Does what a click on it does."""
        self.act("Press")

    def act(self, name):
        actions = self.thing.GetActions(dbus_interface="org.a11y.atspi.Action")
        index = next(i for i, action in enumerate(actions) if str(action[0]) == name)
        self.thing.DoAction(dbus.Int32(index), dbus_interface="org.a11y.atspi.Action")

    def toggle(self):
        """Switches it, as a click on it does."""
        self.act("Toggle")

    def write(self, text):
        """In place of what it holds."""
        self.thing.SetTextContents(text, dbus_interface="org.a11y.atspi.EditableText")

    def description(self):
        return str(self.thing.Get(ACCESSIBLE, "Description", dbus_interface=dbus.PROPERTIES_IFACE))

    def take_focus(self):
        self.thing.GrabFocus(dbus_interface="org.a11y.atspi.Component")

    def has_focus(self):
        return self.has(FOCUSED)

    def place(self):
        """Its left and upper edge on the screen, its width and height, in pixels."""
        return [int(x) for x in self.thing.GetExtents(dbus.UInt32(0), dbus_interface="org.a11y.atspi.Component")]

    def middle(self):
        x, y, width, height = self.place()
        return x + width // 2, y + height // 2

    def walk(self, enters_all=False):
        """All that is shown in it, itself first; without what is in lists, unless enters_all."""
        try:
            is_shown = self.has(SHOWING) or self.role() == "application"
        except dbus.DBusException:
            return  # it went meanwhile
        if not is_shown:
            return
        yield self
        if enters_all or self.role() not in {*LISTS, "combo box"}:
            for child in self.children():
                yield from child.walk(enters_all)

    def find(self, role, name, enters_all=False):
        """The first one that is shown whose role and name match; None if there is none."""
        for thing in self.walk(enters_all):
            try:
                if re.fullmatch(role, thing.role()) and re.search(name, thing.name()):
                    return thing
            except dbus.DBusException:
                pass
        return None


class Spoken:
    """What all programs tell."""

    def __init__(self, session):
        """Starts what assistive technology talks to, in the session with a bus at that address."""
        status = dbus.bus.BusConnection(session).get_object("org.a11y.Bus", "/org/a11y/bus")
        self.bus = dbus.bus.BusConnection(str(status.GetAddress(dbus_interface="org.a11y.Bus")))
        self.root = Thing(self.bus, ("org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root"))

    def windows(self, title):
        """Those whose titles match."""
        found = []
        for program in self.root.children():
            try:
                found += [window for window in program.children() if re.search(title, window.name())]
            except dbus.DBusException:
                pass  # it ends
        return found

    def find(self, title, role, name, enters_all=False):
        """What has that role and name in one of these windows; None if there is none."""
        found = (window.find(role, name, enters_all) for window in self.windows(title))
        return next(filter(None, found), None)


def nameless(window):
    """What can be used in the window and has no name or no role, as texts; and what has, as pairs of role and name."""
    missing, told = [], []
    for thing in window.walk():
        role = thing.role()
        if not thing.has(SENSITIVE | SHOWING) or not (thing.has(FOCUSABLE) or role in LISTS):
            continue
        names = [thing.name(), *thing.labels()]
        if role == "filler" and any(child.role() == "page tab list" for child in thing.children()):
            continue  # passes the keys on to its tabs
        told.append((role, next(filter(None, names), "")))
        if role in NO_ROLES or not any(name.strip() for name in names):
            missing.append(f"{role!r} {names!r} at {thing.middle()}")
    return missing, told
