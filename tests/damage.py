#!/usr/bin/env python3
"""Damages calendars in every way that a disk or a person can, and judges what the program answers.

    damage.py PROGRAM [COUNT [FIRST]]

Damage number N is the same each time; more than a hundred are tried with all commands. A command
may give the answer of the whole calendar and end with 0, or end with 1 and a sentence that names
the file. It may not crash, hang, answer something else, write into a file that it refuses, or
replace a good backup by a lesser one. Rows whose checksums are right but whose content no program
wrote may cost their own appointments, and no others. Ends with "N passed, N failed".
"""
import collections, hashlib, json, os, random, re, shutil, sqlite3, struct, subprocess, sys
import tempfile

LIMIT = 20  # seconds until a command counts as hanging; it is run beside others
NOW = ["--now", "2026-11-06T10:00", "--language", "en"]
SPANS = {"year": ["2026-01-01", "2026-12-31"], "month": ["2026-11-01", "2026-11-30"],
         "day": ["2026-11-06"], "all": ["1999-01-01", "2040-12-31"]}
VIEWS = ["day", "month", "year"]
WORDS = "Обед встреча Review Fair Zahnarzt 会議 dinner train Q3 budget".split()


def event(i, rng):
    """One of ten kinds, with what else an event may say."""
    hour = rng.randint(0, 22)
    date = f"{rng.randint(2024, 2027)}{rng.randint(1, 12):02}{rng.randint(1, 28):02}"
    moment = f"{date}T{hour:02}1500"
    lines = [f"SUMMARY:{rng.choice(WORDS)} {i}", f"CATEGORIES:{rng.choice(WORDS[:4])},Work"]
    more = {3: "DESCRIPTION:" + " ".join(rng.choices(WORDS, k=rng.randint(5, 200))),
            7: f"LOCATION:Room {i}",
            5: "BEGIN:VALARM\r\nACTION:DISPLAY\r\nDESCRIPTION:x\r\nTRIGGER:-PT10M\r\nEND:VALARM",
            11: f"ATTENDEE;CN=Person {i}:mailto:p{i}@x.test\r\nORGANIZER:mailto:o@x.test",
            13: f"X-KEPT:value {i}", 17: "CLASS:PRIVATE"}
    lines += [text for every, text in more.items() if i % every == 0]
    starts = {1: f"DTSTART;VALUE=DATE:{date}", 3: f"DTSTART:{date}T{hour:02}0000Z",
              2: f"DTSTART;TZID=America/New_York:{date}T{hour:02}3000",
              7: f"DTSTART;TZID=Custom:{date}T{hour:02}0000"}
    rules = {4: f"DURATION:P{rng.randint(1, 12)}DT2H",
             5: f"RRULE:FREQ=WEEKLY;BYDAY=MO,WE;COUNT={rng.randint(3, 60)}\r\nEXDATE:{moment}",
             6: "RRULE:FREQ=MONTHLY;BYDAY=-1FR;BYSETPOS=1;INTERVAL=2",
             8: f"RRULE:FREQ=DAILY;COUNT={rng.randint(2, 30)}"}
    lines += [starts.get(i % 10, f"DTSTART:{moment}")]
    lines += [rule for kind, rule in rules.items() if kind == i % 10]
    head = ["BEGIN:VEVENT", f"UID:e{i}@damage", "DTSTAMP:20260101T000000Z"]
    changed = head + [f"RECURRENCE-ID:{moment}", f"DTSTART:{date}T{hour:02}4500",
                      f"SUMMARY:moved {i}", "END:VEVENT"]
    return head + lines + ["END:VEVENT"] + changed * (i % 10 == 5)


def calendar(lines):
    head = ["BEGIN:VCALENDAR", "VERSION:2.0", "PRODID:-//Test//EN"]
    return "\r\n".join(head + lines + ["END:VCALENDAR", ""])


def large_calendar():
    rng = random.Random(7)
    zone = ["BEGIN:VTIMEZONE", "TZID:Custom", "BEGIN:STANDARD", "DTSTART:19700101T000000",
            "TZOFFSETFROM:+0345", "TZOFFSETTO:+0345", "END:STANDARD", "END:VTIMEZONE"]
    task = ["BEGIN:VTODO", "UID:todo@damage", "SUMMARY:a task", "END:VTODO"]
    return calendar(zone + [line for i in range(2000) for line in event(i, rng)] + task)


SMALL = calendar(["BEGIN:VEVENT", "UID:small@damage", "DTSTAMP:20260101T000000Z",
                  "DTSTART:20261106T120000", "SUMMARY:small", "END:VEVENT"])


# ---- damages: each spoils the file, and answers in words what it did

def read(path):
    with open(path, "rb") as file: return file.read()


def write(path, data):
    with open(path, "wb") as file: file.write(data)


def page_size(data):
    return int.from_bytes(data[16:18], "big") or 4096


def flip_bit(path, rng):
    data = bytearray(read(path))
    at = rng.randrange(len(data) * 8)
    data[at // 8] ^= 1 << at % 8
    write(path, data)
    return f"bit {at}"


def flip_letter(path, rng):
    data = bytearray(read(path))
    at = rng.choice([found.start() for found in re.finditer(rb"[A-Za-z]{4}", data)])
    data[at] ^= 1
    write(path, data)
    return f"letter {at}"


def set_bytes(path, rng):
    data = bytearray(read(path))
    at, count = rng.randrange(len(data)), rng.choice([1, 2, 4, 16, 100, 512])
    new = rng.choice([bytes(count), b"\xff" * count, rng.randbytes(count)])
    data[at:at + count] = new[:len(data) - at]
    write(path, data)
    return f"{count} bytes at {at}"


def whole_page(path, rng):
    data = bytearray(read(path))
    size = page_size(data)
    one, other = rng.randrange(len(data) // size), rng.randrange(1, len(data) // size)
    how = rng.choice(["zero", "random", "swap", "copy", "shift"])
    a, b = slice(one * size, one * size + size), slice(other * size, other * size + size)
    if how == "swap": data[a], data[b] = data[b], data[a]
    else:
        data[b] = {"zero": bytes(size), "random": rng.randbytes(size), "copy": data[a],
                   "shift": data[b][8:] + bytes(8)}[how]
    write(path, data)
    return f"{how} pages {one + 1}, {other + 1}"


def header(path, rng):
    data = bytearray(read(path))
    at = rng.choice([0, 16, 17, 18, 19, 20, 21, 22, 23, 24, 27, 28, 31, 32, 36, 40, 44, 47, 48, 52,
                     56, 59, 60, 63, 64, 68, 71, 72, 80, 92, 96, 100, 101, 103, 105, 107, 108])
    data[at] = rng.choice([0, 1, 2, 255, data[at] ^ 1, rng.randrange(256)])
    write(path, data)
    return f"header byte {at} = {data[at]}"


def length(path, rng):
    size = os.path.getsize(path)
    to = rng.choice([0, 1, 50, 99, 100, 512, 4096, size - 1, size - 4096, size + 1, size + 4096,
                     rng.randrange(size), rng.randrange(size // 4096) * 4096])
    os.truncate(path, to)
    return f"{to} of {size} bytes"


def journal(path, rng):
    """What lies beside the file: rubbish, another file's journal, or its own, whole or damaged."""
    how = rng.choice(["rubbish", "zeros", "wal", "foreign", "own", "own damaged"])
    if how == "wal": write(path + "-wal", rng.randbytes(9000))
    elif how == "rubbish": write(path + "-journal", rng.randbytes(9000))
    elif how == "zeros": write(path + "-journal", bytes(9000))
    else:  # as a process leaves it that dies between its writes and the commit
        work, own = path + ".work", how != "foreign"
        if own: shutil.copy(path, work)
        db = sqlite3.connect(work, isolation_level=None)
        table = "items" if own else "t"
        if not own:
            db.execute("create table t (subject)")
            db.executemany("insert into t values (?)", [("x" * 300,)] * 300)
        db.execute("pragma cache_size = 1")
        db.execute("begin immediate")
        db.execute(f"update {table} set subject = subject || 'zzz'")
        left = bytearray(read(work + "-journal"))
        if own: shutil.copy(work, path)
        db.execute("rollback")
        db.close()
        os.unlink(work)
        if how == "own damaged": left[rng.randrange(len(left))] ^= 1 << rng.randrange(8)
        write(path + "-journal", left)
    return f"{how} journal"


def execute(path, *statements):
    db = sqlite3.connect(path, isolation_level=None)
    db.execute("pragma writable_schema = on")
    for one in statements: db.execute(one)
    db.close()
    return "; ".join(statements)


def schema(path, rng):
    table = rng.choice("items exceptions recipients zones foreign_components contacts category_uses"
                       " changes".split())
    index = rng.choice(["items_days", "items_series"])
    return execute(path, rng.choice([
        f"drop table {table}", f"drop index {index}",
        f"delete from sqlite_schema where name = '{table}'",
        f"delete from sqlite_schema where name = '{index}'", f"alter table {table} rename to other",
        f"update sqlite_schema set rootpage = 3 where name = '{table}'",
        f"update sqlite_schema set rootpage = 999999 where name = '{index}'",
        f"update sqlite_schema set sql = 'rubbish' where name = '{table}'", "create table more (x)",
        "pragma user_version = 0", "pragma application_id = 5", f"delete from {table}", "vacuum"]))


def rows(path, rng):
    column = rng.choice("start end zone uid first_day last_day span_class subject categories"
                        " all_day busy_status pattern resolved rules residue last_start body"
                        " recurring reminder_minutes location".split())
    value = rng.choice(["x'80ff00fe'", "9223372036854775807", "-9223372036854775808", "'rubbish'",
                        "''", "1e300", "1", "zeroblob(100000)", "'Nowhere/Land'"])
    oid, series = rng.randint(1, 1900), 10 * rng.randint(0, 190) + rng.choice([6, 7, 9])
    far = rng.choice([9223372036854775807, 4294967297, -5])
    return execute(path, rng.choice([
        f"update items set {column} = {value} where oid = {oid}",
        f"update items set {column} = {value} where oid = {series}",
        f"update or ignore items set {column} = {value} where oid % 7 = 0",
        f"update items set oid = {far} where oid = {oid}",
        f"update items set pattern = null, resolved = null, rules = null where oid = {series}",
        f"update exceptions set original_start = {value}", f"update exceptions set zone = {value}",
        f"update exceptions set start = {value} where oid % 3 = 0", "delete from zones",
        "update zones set definition = 'rubbish'", "update recipients set exception = 77",
        f"update foreign_components set text = {value}", f"delete from items where oid = {series}",
        "update exceptions set deleted = 1 - deleted"]))


def nulls(path, rng):
    """A NULL where none may be; the schema is another one for as long as that takes."""
    column = rng.choice("uid start end zone subject first_day span_class categories".split())
    oid = rng.randint(1, 1900)
    db = sqlite3.connect(path)
    (sql,) = db.execute("select sql from sqlite_schema where name = 'items'").fetchone()
    db.close()
    to = "update sqlite_schema set sql = '{}' where name = 'items'"
    execute(path, to.format(sql.replace("NOT NULL", "").replace("'", "''")))
    what = execute(path, f"update items set {column} = null where oid = {oid}")
    execute(path, to.format(sql.replace("'", "''")))
    return what


def sealed(path, rng):
    """As `rows` and their kin, with the checksums that the program itself would have written."""
    what = rng.choice([rows, rows, rows, nulls, schema])(path, rng)
    data = bytearray(read(path))
    size, mask = page_size(data), 0xFFFFFFFF
    for start in range(0, len(data) if data[20] == 8 else 0, size):
        number = start // size + 1
        a, b = (number * 2654435761 + 1) & mask, ~number & mask
        for one, two in struct.iter_unpack("<II", data[start:start + size - 8]):
            a = (a + one + b) & mask
            b = (b + two + a) & mask
        data[start + size - 8:start + size] = struct.pack("<II", a, b)
    write(path, data)
    return what


KINDS = {flip_bit: 5, flip_letter: 3, set_bytes: 4, whole_page: 6, header: 4, length: 3, journal: 2,
         schema: 3, rows: 2, nulls: 1, sealed: 4}


KEYS = {"items": 2, "exceptions": 2, "recipients": 3, "zones": 1, "foreign_components": 1}


def touched(good, sick):
    """Numbers and UIDs of the items of which two files say different things; None: of all."""
    def content(path):
        db = sqlite3.connect(f"file:{path}?mode=ro", uri=True)
        answer = {table: {row[:keys]: row for row in db.execute(f"select * from {table}")}
                  for table, keys in KEYS.items()}
        order = db.execute("select name, sql from sqlite_schema order by name").fetchall()
        users = ("select oid, uid from items where zone = ?1 or oid in (select oid from exceptions"
                 " where zone = ?1)")
        zones = {name: db.execute(users, (name,)).fetchall() for (name,) in answer["zones"]}
        uids = dict(db.execute("select oid, uid from items"))
        db.close()
        return answer, order, zones, uids
    try: (one, order, zones, uids), (two, other, _, other_uids) = content(good), content(sick)
    except sqlite3.Error: return None
    if order != other or one["foreign_components"] != two["foreign_components"]: return None
    found = set()
    for table in one:
        for key in one[table].keys() | two[table].keys():
            if one[table].get(key) == two[table].get(key): continue
            if table == "zones": found |= {part for pair in zones.get(key[0], []) for part in pair}
            else: found |= {key[0], uids.get(key[0]), other_uids.get(key[0])}
    return found


# ---- the judge

class Judge:
    def __init__(self, program, thorough):
        self.program, self.thorough = os.path.abspath(program), thorough
        self.faults, self.tally = [], collections.Counter()
        self.work = tempfile.mkdtemp(prefix="damage.")
        self.env = dict(os.environ, QT_QPA_PLATFORM="offscreen", TZ="Europe/Berlin",
                        LC_ALL="C.UTF-8", HOME=self.work)
        write(self.at("large.ics"), large_calendar().encode())
        write(self.at("small.ics"), SMALL.encode())
        self.ask_the_whole()

    def at(self, name): return os.path.join(self.work, name)

    def run(self, folder, *words):
        try:
            done = subprocess.run([self.program, *words, "--data", self.at(folder), *NOW],
                                  env=self.env, cwd=self.work, capture_output=True, timeout=LIMIT)
        except subprocess.TimeoutExpired: return "hang", b"", ""
        return done.returncode, done.stdout, done.stderr.decode("utf-8", "replace")

    def ask_the_whole(self):
        code, _, err = self.run("good", "import", "large.ics")
        if code != 0: sys.exit(f"the whole calendar can't be made: {err}")
        self.run("good", "--measure", "start")  # makes the other files
        self.restores = self.run("good", "restore", "--list")[0] != 2
        self.expect = {name: self.run("good", "agenda", "--json", *span)[1]
                       for name, span in SPANS.items()}
        for view in VIEWS:
            self.run("good", "render", view, "picture.png")
            self.expect["picture of the " + view] = read(self.at("picture.png"))
        shutil.copytree(self.at("good"), self.at("grown"))
        self.run("grown", "import", "small.ics")
        for folder in ("good", "grown"):
            self.run(folder, "export", "whole.ics")
            self.expect[folder] = read(self.at("whole.ics"))

    def files(self, calendar_only):
        sums = {}
        for folder, _, names in os.walk(self.at("trial")):
            for name in names:
                path = os.path.join(folder, name)
                if not calendar_only or re.fullmatch(r"calendar\.db(-journal|-wal)?", name):
                    sums[path] = hashlib.md5(read(path)).hexdigest()
        return sums

    def fault(self, what, detail=""):
        self.faults.append((self.number, self.damage, what, " ".join(detail.split())))

    def same(self, got, wanted, pieces):
        """Equal, or but for whose rows were changed; `pieces` splits into (owner, piece)."""
        if got == wanted or not self.sealed: return got == wanted
        if self.touched is None: return True
        def others(text):
            return collections.Counter(piece for owner, piece in pieces(text)
                                       if owner not in self.touched)
        return not others(wanted) - others(got)

    @staticmethod
    def rows_of(text): return [(row["oid"], json.dumps(row)) for row in json.loads(text)]

    @staticmethod
    def events_of(text):
        blocks = re.findall(rb"BEGIN:VEVENT\r\n.*?END:VEVENT\r\n", text, re.S)
        return [(re.search(rb"\nUID:(.*?)\r\n", block)[1].decode(), block) for block in blocks]

    def probe(self, name, words, right, calendar_only=False):
        """Runs a command on a fresh copy of the damaged calendar. True: it answered."""
        shutil.rmtree(self.at("trial"), ignore_errors=True)
        shutil.copytree(self.at("sick"), self.at("trial"))
        before = self.files(calendar_only)
        code, out, err = self.run("trial", *words)
        if code not in (0, 1): self.fault(f"{name}: crash or hang", f"{code} {err[-200:]}")
        elif code == 0: self.tally["answered"] += 1
        else: self.tally["refused"] += 1
        if code == 0:
            if not right(out): self.fault(f"{name}: wrong answer", err[-200:])
            return True
        if right is not ANY and "calendar.db" not in err:
            self.fault(f"{name}: the refusal doesn't name the file", err[-200:])
        after = self.files(calendar_only)
        if after != before:
            changed = {os.path.basename(path) for path, _ in before.items() ^ after.items()}
            self.fault(f"{name}: wrote into what it refused", " ".join(sorted(changed)))
        return False

    def one(self, number):
        rng = random.Random(number)
        make = rng.choices(list(KINDS), list(KINDS.values()))[0]
        shutil.rmtree(self.at("sick"), ignore_errors=True)
        shutil.copytree(self.at("good"), self.at("sick"))
        path = self.at("sick/calendar.db")
        try: what = make(path, rng)
        except sqlite3.Error as error: what = f"none ({error})"
        self.number, self.damage, self.sealed = number, f"{make.__name__}: {what}", make is sealed
        self.touched = touched(self.at("good/calendar.db"), path) if self.sealed else None
        for name in SPANS if self.thorough else ["year"]:
            self.probe(f"agenda of the {name}", ["agenda", "--json", *SPANS[name]],
                       lambda out: self.same(out, self.expect[name], self.rows_of))
        self.export()
        self.probe("import", ["import", "small.ics"], self.has_grown)
        for view in VIEWS if self.thorough else [VIEWS[number % 3]]:
            self.probe(f"picture of the {view}", ["render", view, "picture.png"],
                       lambda _: self.shows(view), True)
        if self.thorough or number % 4 == 0: self.probe("window", ["--measure", "start"], ANY, True)
        if (self.thorough or number % 4 == 2) and self.restores:
            self.probe("restore --list", ["restore", "--list"], ANY)

    def shows(self, view):
        return self.sealed or read(self.at("picture.png")) == self.expect["picture of the " + view]

    def export(self):
        backup, good = self.at("backup.ics"), self.expect["good"]
        write(backup, good)
        answered = self.probe("export", ["export", "backup.ics"],
                              lambda _: self.same(read(backup), good, self.events_of))
        if not answered and read(backup) != good: self.fault("export: replaced the good backup")
        if os.path.exists(backup + ".part"): self.fault("export: left half a file")

    def has_grown(self, _):
        code, out, _ = self.run("trial", "export", "-")
        return code != 0 or self.same(out, self.expect["grown"], self.events_of)

    def report(self, count):
        for number, damage, what, detail in self.faults:
            print(f"{number}: {damage[:150]}: {what} {detail[:200]}")
        if self.thorough:
            kinds = collections.Counter((one[1].split(":")[0], one[2]) for one in self.faults)
            for (kind, what), found in sorted(kinds.items()): print(f"{found:6} {kind}: {what}")
            for what, found in sorted(self.tally.items()): print(f"{found:6} {what}")
        bad = len({fault[0] for fault in self.faults})
        print(f"{count - bad} passed, {bad} failed")
        return bad == 0


def ANY(_): return True


def main():
    if len(sys.argv) < 2: sys.exit(__doc__)
    count, first = int((sys.argv[2:] or [60])[0]), int((sys.argv[3:] or [0])[0])
    judge = Judge(sys.argv[1], count > 100)
    try:
        for number in range(first, first + count): judge.one(number)
        good = judge.report(count)
    finally: shutil.rmtree(judge.work, ignore_errors=True)
    sys.exit(0 if good else 1)


main()
