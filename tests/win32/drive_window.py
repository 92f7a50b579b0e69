#!/usr/bin/env python3
"""Drives the program in its real window as a person does: imports a calendar, writes a weekly
meeting, moves one of its occurrences, changes a colour, starts again and finds all of it. What came
of it is asked of the program's own commands, never read from a picture.

    drive_window.py [--pictures FOLDER] [--tour] [--device-store FOLDER] PROGRAM...

PROGRAM is the command that starts it, such as `wine orvello.exe`. It needs an X display, xdotool and
ImageMagick. Pictures of each step go to FOLDER; with --tour also all views, the editor and each page
of the settings at the sizes that they are made for, in both languages; with --device-store also what
a person does with a device's store, which the pimstore.dll in FOLDER stands in for. Places to press are those of
a screen of 480x640 at 192 dpi. Ends with "N passed, N failed"; exit 1 when anything failed."""
import argparse
import json
import os
import shutil
import subprocess
import sys
import tempfile
import time

NOW = "2026-11-06T10:00"
CALENDAR = """BEGIN:VCALENDAR
VERSION:2.0
PRODID:-//Test//EN
BEGIN:VEVENT
UID:dentist@test
DTSTAMP:20261101T000000Z
DTSTART:20261106T090000
DTEND:20261106T100000
SUMMARY:Dentist
END:VEVENT
END:VCALENDAR
"""
SETTINGS_PAGES = 8
SIZES = [("240x320", 96), ("320x240", 96), ("480x640", 192), ("1000x700", 96)]
# On the screen that the story is told on.
STORY_SIZE = (480, 640)
EDITOR_OK, OCCURS = (50, 90), (280, 371)
OPTIONS, EXIT = (137, 615), (232, 615)
FIRST_COLOR, HEX_FIELD, SHEET_OK, PICKER_OK = (150, 209), (385, 90), (370, 30), (404, 611)
PATIENCE = 30  # seconds; a machine may be busy


class Failed(Exception):
    pass


class Window:
    """The program in its window, and the person in front of it."""

    def __init__(self, command, arguments, pictures):
        self.pictures = pictures
        self.shown = None
        self.errors = tempfile.TemporaryFile()
        self.process = subprocess.Popen(command + arguments, stdout=self.errors, stderr=self.errors)
        self.id = self.wait_for_window()

    def wait_for_window(self):
        until = time.monotonic() + PATIENCE
        while time.monotonic() < until:
            if self.process.poll() is not None:
                raise Failed(f"it ended with {self.process.returncode}: {self.said()}")
            found = self.tool("search", "--onlyvisible", "--name", "^Orvello$", check=False).split()
            if found:
                self.tool("windowfocus", found[-1], check=False)
                return found[-1]
            time.sleep(0.1)
        raise Failed("no window came")

    def said(self):
        self.errors.seek(0)
        return self.errors.read().decode("utf-8", "replace").strip()[-400:]

    @staticmethod
    def tool(*arguments, check=True):
        done = subprocess.run(("xdotool",) + arguments, capture_output=True, text=True)
        if check and done.returncode != 0:
            raise Failed(f"xdotool {' '.join(arguments)}: {done.stderr.strip()}")
        return done.stdout

    def look(self):
        done = subprocess.run(("import", "-window", "root", "rgb:-"), capture_output=True)
        return done.stdout

    def settle(self):
        """Until what is shown stays; a blinking caret is not waited for."""
        before = self.look()
        for _ in range(12):
            time.sleep(0.25)
            now = self.look()
            if now == before:
                break
            before = now
        self.shown = before

    def keys(self, *names):
        for name in names:
            self.tool("key", "--clearmodifiers", name)
            self.settle()

    def write(self, text):
        self.tool("type", "--clearmodifiers", "--delay", "30", text)
        self.settle()

    def place(self):
        lines = self.tool("getwindowgeometry", "--shell", self.id).split()
        place = dict(line.split("=") for line in lines)
        return [int(place[name]) for name in ("X", "Y", "WIDTH", "HEIGHT")]

    def press(self, point):
        """`point` counts from the content, around which a system may draw a frame of its own."""
        left, top, width, height = self.place()
        side = (width - STORY_SIZE[0]) // 2
        left, top = left + side, top + height - STORY_SIZE[1] - side
        self.tool("mousemove", str(left + point[0]), str(top + point[1]), "click", "1")
        self.settle()

    def picture(self, name):
        """With the boxes over the window, which may be windows of their own."""
        if not self.pictures:
            return
        left, top, width, height = self.place()
        path = os.path.join(self.pictures, name + ".png")
        subprocess.run(("import", "-window", "root", "-crop", f"{width}x{height}+{left}+{top}",
                        "+repage", path), check=False, capture_output=True)

    def wait_for_end(self):
        try:
            return self.process.wait(PATIENCE)
        except subprocess.TimeoutExpired:
            raise Failed("it does not end") from None

    def kill(self):
        if self.process.poll() is None:
            self.process.kill()
            self.process.wait()


class Story:
    """The steps of one person's afternoon, each checked."""

    def __init__(self, command, pictures, folder):
        self.command, self.pictures, self.folder = command, pictures, folder
        self.data = os.path.join(folder, "data")
        self.passed = self.failed = 0

    def options(self, screen="%dx%d" % STORY_SIZE, dpi=192, language="en"):
        return ["--data", self.data, "--now", NOW, "--screen", screen, "--dpi", str(dpi),
                "--language", language]

    def run(self, *arguments, data=None):
        return subprocess.run(self.command + list(arguments) +
                              ["--data", data or self.data, "--now", NOW],
                              capture_output=True, timeout=PATIENCE, check=False)

    def ask(self, *arguments, data=None):
        done = self.run(*arguments, data=data)
        if done.returncode != 0:
            raise Failed(f"{arguments[0]} ended with {done.returncode}: {done.stderr.decode()}")
        return done.stdout.decode("utf-8").replace("\r\n", "\n")

    def appointments(self):
        found = json.loads(self.ask("agenda", "2026-11-06", "2026-11-21", "--json"))
        return [(one["start"][:16], one["subject"]) for one in found]

    def expect(self, what, answer, wanted):
        """`answer` may take a moment to become what is wanted."""
        until = time.monotonic() + PATIENCE
        got = answer()
        while got != wanted and time.monotonic() < until:
            time.sleep(0.5)
            got = answer()
        if got == wanted:
            self.passed += 1
        else:
            self.failed += 1
            print(f"FAILED: {what}: got {got}, wanted {wanted}")

    def end(self, window, what):
        window.press(EXIT)
        self.expect(f"{what}: the end", window.wait_for_end, 0)

    def tell(self):
        calendar = os.path.join(self.folder, "week.ics")
        with open(calendar, "w", newline="\r\n", encoding="utf-8") as file:
            file.write(CALENDAR)
        window = Window(self.command, [calendar] + self.options(), self.pictures)
        try:
            self.first_start(window)
            self.change_color(window)
            self.end(window, "first start")
        finally:
            window.kill()
        window = Window(self.command, self.options() + ["--view", "day", "--date", "2026-11-14"],
                        self.pictures)
        try:
            window.settle()
            window.keys("Return")  # away with the greeting
            window.picture("9-started-again")
            self.expect("appointments after the start", self.appointments, self.all_of_it)
            self.end(window, "second start")
        finally:
            window.kill()
        self.expect("the moved occurrence in the export",
                    lambda: "RECURRENCE-ID:20261113T143000" in self.ask("export", "-"), True)
        self.expect("the color after the end", self.color, "#1e4a7a")
        other = os.path.join(self.folder, "other")
        self.expect("the color of another folder", lambda: self.color(other), "#5a5a5a")

    def color(self, data=None):
        return self.ask("settings", "get", "itemcolor0", data=data).strip().lower()

    dentist = ("2026-11-06T09:00", "Dentist")
    weekly = [("2026-11-06T14:30", "Team"), ("2026-11-13T14:30", "Team"),
              ("2026-11-20T14:30", "Team")]
    all_of_it = [dentist, weekly[0], ("2026-11-14T14:30", "Team"), weekly[2]]

    def first_start(self, window):
        window.settle()
        window.picture("1-import")
        window.keys("Return")
        self.expect("import", self.appointments, [self.dentist])
        window.picture("2-imported")
        window.keys("Return", "n")
        window.write("Team")
        window.keys("Tab", "Tab", "Tab")
        window.write("14:30")
        window.keys("Tab", "Tab")
        window.write("15:30")
        window.press(OCCURS)
        window.picture("3-weekly")
        window.keys("Down", "Return")
        window.picture("4-written")
        window.press(EDITOR_OK)
        self.expect("weekly meeting", self.appointments, [self.dentist] + self.weekly)
        window.picture("5-month")
        window.keys("ctrl+1", "Down", "Next", "ctrl+x", "Right", "ctrl+v")
        self.expect("moved occurrence", self.appointments, self.all_of_it)
        window.picture("6-moved")

    def change_color(self, window):
        window.press(OPTIONS)
        window.keys("Down", "Return", *["ctrl+Tab"] * 5)
        window.press(FIRST_COLOR)
        window.press(HEX_FIELD)
        window.keys("ctrl+a")
        window.write("#1E4A7A")
        window.picture("7-color")
        window.press(PICKER_OK)
        window.picture("8-recolored")
        window.press(SHEET_OK)
        self.expect("color", self.color, "#1e4a7a")

    def tell_of_device(self, library):
        """A device's own store, which the library stands in for, keeps what both ways into it say."""
        self.data = os.path.join(self.folder, "device")
        os.environ["WINEPATH"] = "Z:" + os.path.abspath(library).replace("/", "\\")
        os.environ["PIMSTORE_FILE"] = os.path.join(self.folder, "pimstore")
        calendar = os.path.join(self.folder, "week.ics")
        for outcome in ("1 imported, 0 updated", "0 imported, 1 updated"):  # and not twice there
            self.expect("import on a device",
                        lambda: self.ask("import", calendar, "--device-store")[:len(outcome)],
                        outcome)
        window = Window(self.command, self.options() + ["--device-store"], self.pictures)
        try:
            window.settle()
            window.keys("Return", "n")
            window.write("Team")
            window.picture("device-editor")
            window.keys("Return")
            window.picture("device")
            self.end(window, "the device's store")
        finally:
            window.kill()
        self.expect("what a device keeps",
                    lambda: [one["subject"] for one in json.loads(
                        self.ask("agenda", "2026-11-06", "--json", "--device-store"))],
                    ["Dentist", "Team"])
        self.expect("a device's UIDs",
                    lambda: "UID:dentist@test" in self.ask("export", "-", "--device-store"), True)
        for command, call, reason in (("backup", "", "the device's own store is not"),
                                      ("restore", "", "the device's own store is not"),
                                      ("agenda", "Logon", "Failure to logon to app object."),
                                      ("search x", "Items", "could not be read"),
                                      (f"import {calendar}", "Save", "could not be written")):
            os.environ["PIMSTORE_FAIL"] = call
            done = self.run(*command.split(" "), "--device-store")
            self.expect(f"{command} on a device without {call}",
                        lambda: (done.returncode, reason in done.stderr.decode()), (1, True))

    def tour(self):
        for screen, dpi in SIZES:
            for language in ("en", "ru"):
                window = Window(self.command, self.options(screen, dpi, language), self.pictures)
                try:
                    self.look_around(window, f"{screen}-{language}")
                finally:
                    window.kill()

    def look_around(self, window, name):
        for key, view in (("ctrl+3", "year"), ("ctrl+2", "month"), ("ctrl+1", "day")):
            window.keys(key)
            window.picture(f"{name}-{view}")
        window.keys("n")
        window.picture(f"{name}-editor")
        window.keys("Escape", "ctrl+g")
        window.picture(f"{name}-date")
        window.keys("Escape", "ctrl+f")
        window.picture(f"{name}-find")
        # By the menu bar, wherever its buttons are on a screen of that size.
        window.keys("Escape", "ctrl+2", "Tab", "Right", "Return", "Down", "Return")
        for page in range(SETTINGS_PAGES):
            window.picture(f"{name}-settings-{page + 1}")
            window.keys("ctrl+Tab")
        window.keys("Escape")
        self.passed += 1


def main():
    parser = argparse.ArgumentParser(usage=__doc__)
    parser.add_argument("--pictures")
    parser.add_argument("--tour", action="store_true")
    parser.add_argument("--device-store")
    parser.add_argument("program", nargs="+")
    arguments = parser.parse_args()
    if arguments.pictures:
        os.makedirs(arguments.pictures, exist_ok=True)
    folder = tempfile.mkdtemp()
    story = Story(arguments.program, arguments.pictures, folder)
    try:
        story.tell()
        if arguments.device_store:
            story.tell_of_device(arguments.device_store)
        if arguments.tour:
            story.tour()
    except (Failed, subprocess.TimeoutExpired, ValueError) as fault:
        story.failed += 1
        print(f"FAILED: {fault}")
    finally:
        shutil.rmtree(folder, ignore_errors=True)
    print(f"{story.passed} passed, {story.failed} failed")
    return 1 if story.failed else 0


if __name__ == "__main__":
    sys.exit(main())
