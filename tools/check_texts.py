#!/usr/bin/env python3
"""Compares the languages' texts with each other, and with what the sources use.

check_texts.py [ROOT]. One line a fault on standard output; exit 1 when there is any. English, which
the ids are made from, is what the others are compared with:
  - each text is there once, as TEXT or as FORMS alike, and none that English lacks;
  - FORMS has as many forms as the language's plurals, a list as many words (or one for all);
  - each word and form takes the same arguments in the same order (of forms, one may take none);
  - blanks and line ends at the beginning and end are the same, and so is a colon at the end;
  - each text is used somewhere.
"""
import pathlib
import re
import sys

ENGLISH = "english.inc"
FORMS_OF = {"one_form": 1, "one_or_many": 2, "up_to_one": 2, "east_slavic": 3, "polish": 3,
            "czech": 3, "arabic": 6}
LANGUAGE = re.compile(r'LANGUAGE\((\w+), u"([A-Za-z-]+)", u"[^"]+", (\w+), (\w+)\)$')
TEXT = re.compile(r'(TEXT|FORMS)\((\w+), u"((?:[^"\\]|\\.)*)"\)$')
ARGUMENT = re.compile(r"%(?:\.\d+)?(?:ld|d|s|f)")
faults = []


def fault(path, line, text):
    faults.append(f"{path}:{line}: {text}")


class Language:
    def __init__(self, root, path):
        self.path = path.relative_to(root)
        self.texts = {}  # by id: the line's number, TEXT or FORMS, the text
        self.forms = None
        for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
            if not line or line.startswith("//"):
                continue
            if head := LANGUAGE.match(line):
                self.take_head(number, head)
            elif text := TEXT.match(line):
                self.take_text(number, *text.groups())
            else:
                fault(self.path, number, "neither LANGUAGE(...) nor one text on one line")
        if self.forms is None:
            fault(self.path, 1, "no LANGUAGE(name, code, own name, direction, plurals)")

    def take_head(self, number, head):
        if self.forms is not None:
            fault(self.path, number, "a second LANGUAGE")
        if head.group(3) not in ("left_to_right", "right_to_left"):
            fault(self.path, number, f"no direction: {head.group(3)}")
        if head.group(4) not in FORMS_OF:
            fault(self.path, number, f"no family of plurals: {head.group(4)}")
        self.forms = FORMS_OF.get(head.group(4), 0)

    def take_text(self, number, kind, name, text):
        if name in self.texts:
            fault(self.path, number, f"{name} stands in line {self.texts[name][0]} too")
        if not text:
            fault(self.path, number, f"{name} is empty")
        if kind == "FORMS" and self.forms and text.count("|") + 1 != self.forms:
            fault(self.path, number, f"{name} has not {self.forms} forms")
        self.texts[name] = (number, kind, text)


def ends(text):
    """The blanks and line ends at both ends, and whether a colon closes the text."""
    plain = text.replace(r"\n", "\n")
    kept = plain.strip()
    start = len(plain) - len(plain.lstrip())
    return plain[:start], plain[len(plain.rstrip()):], kept.endswith(":")


def compare_arguments(path, number, name, kind, text, english):
    wanted = [ARGUMENT.findall(word) for word in english.split("|")]
    for place, word in enumerate(text.split("|")):
        found = ARGUMENT.findall(word)
        if kind == "FORMS" and (found == wanted[-1] or not found):
            continue
        if kind == "TEXT" and found == wanted[min(place, len(wanted) - 1)]:
            continue
        fault(path, number, f"{name} takes other arguments than in English: {word}")


def compare(english, other):
    for name, (number, kind, text) in english.texts.items():
        if name not in other.texts:
            fault(other.path, 1, f"{name} is missing: {english.path}:{number}")
            continue
        there, other_kind, other_text = other.texts[name]
        if other_kind != kind:
            fault(other.path, there, f"{name} is {kind} in English")
            continue
        words = other_text.count("|") + 1
        if kind == "TEXT" and words not in (1, text.count("|") + 1):
            fault(other.path, there, f"{name} has {text.count('|') + 1} words in English")
        elif kind == "TEXT" and words == 1 and "|" in text and not name.endswith("_endings"):
            fault(other.path, there, f"{name} is a list in English")
        compare_arguments(other.path, there, name, kind, other_text, text)
        if ends(text) != ends(other_text):
            fault(other.path, there, f"{name} begins or ends otherwise than in English")
    for name, (number, _, _) in other.texts.items():
        if name not in english.texts:
            fault(other.path, number, f"{name} is no text of English")


def compare_own_forms(english):
    for name, (number, kind, text) in english.texts.items():
        if kind == "FORMS":
            compare_arguments(english.path, number, name, kind, text, text)


def used_names(root):
    names = set()
    for pattern in ("*.cpp", "*.h"):
        for path in root.rglob(pattern):
            if path.relative_to(root).parts[0] not in ("build", "tests"):
                names.update(re.findall(r"StringId::(\w+)", path.read_text(encoding="utf-8")))
    return names


def main():
    root = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else
                        pathlib.Path(__file__).resolve().parent.parent)
    languages = [Language(root, path)
                 for path in sorted((root / "resources/languages").glob("*.inc"))]
    english = [one for one in languages if one.path.name == ENGLISH]
    if not english:
        fault(f"resources/languages/{ENGLISH}", 1, "is missing")
    for one in languages:
        if english and one is not english[0]:
            compare(english[0], one)
    used = used_names(root)
    for one in english:
        compare_own_forms(one)
        for name, (number, _, _) in one.texts.items():
            if name not in used:
                fault(one.path, number, f"{name} is used nowhere")
    print("\n".join(faults), end="\n" if faults else "")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
