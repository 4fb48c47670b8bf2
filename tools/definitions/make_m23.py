#!/usr/bin/env python3
"""Builds the definitions resource "M23" from the written definitions.

Input: tools/definitions/definitions-*.txt, UTF-8, one line per word:
    KEY§SHOWN FORM$definition
(KEY: the word as the lexicon spells it; SHOWN FORM: as a dictionary prints it,
with accents; definition: at most 72 characters). Lines starting with "#" and
blank lines are ignored.

Output: data/lexicon/M23 in code page 1252, one line per 2- or 3-letter word of
data/lexicon/DICO in that list's order, CR LF between lines, the last line
closed by a NUL instead, then NUL padding to a multiple of 4 bytes.

Every word of 2 or 3 letters must have exactly one line, and no line may name
a word the list does not hold; a definition says "inv." only when the list
has no plural of the word, and gives the plural ("plur. xis") when it has one:
the script stops with the list of problems.
"""
import glob
import os
import sys

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
LIMIT = 72


# Words whose look-alike plural in the list is another word: their "inv."
# stands.
OTHER_WORD = {
    "DO": "DOS, le dos",
    "FA": "FAX, le fax",
    "LA": "LAS, fatigué",
    "MI": "MIS, MIX: mettre, le mix",
    "MOI": "MOIS, le mois",
    "OUI": "OUIS, de ouïr",
    "ORE": "ORES, d'ores et déjà",
    "PIE": "PIES, des pies (l'adjectif est invariable)",
    "RA": "RAS, à ras",
    "SI": "SIS, SIX: de seoir, six",
}


def all_words():
    words = set()
    for name in ["DICO"] + ["DIC%d" % n for n in range(10, 16)]:
        with open(os.path.join(ROOT, "data", "lexicon", name), "rb") as f:
            words.update(f.read().rstrip(b"\0").decode("ascii").split("\r\n"))
    return words


def plural_problems(entries, words):
    """A definition that says "inv." while the list has the plural, or that
    does not give a plural the list has and the definition once denied."""
    problems = []
    for key, (shown, definition) in sorted(entries.items()):
        plurals = [p for p in (key + "S", key + "X") if p in words]
        if not plurals or key in OTHER_WORD:
            continue
        if "inv." in definition:
            problems.append("%s: says inv., but the list has %s" % (key, ", ".join(plurals)))
    return problems


def short_words():
    with open(os.path.join(ROOT, "data", "lexicon", "DICO"), "rb") as f:
        data = f.read().rstrip(b"\0").decode("ascii")
    return [w for w in data.split("\r\n") if w and len(w) <= 3]


def read_definitions():
    entries = {}
    problems = []
    for path in sorted(glob.glob(os.path.join(ROOT, "tools", "definitions", "definitions-*.txt"))):
        with open(path, encoding="utf-8") as f:
            for number, line in enumerate(f, 1):
                line = line.rstrip("\n")
                if not line.strip() or line.startswith("#"):
                    continue
                where = "%s:%d" % (os.path.basename(path), number)
                if "§" not in line or "$" not in line.split("§", 1)[1]:
                    problems.append("%s: not KEY§SHOWN$definition: %s" % (where, line))
                    continue
                key, rest = line.split("§", 1)
                shown, definition = rest.split("$", 1)
                definition = definition.strip()
                if key in entries:
                    problems.append("%s: %s defined twice" % (where, key))
                try:
                    size = len(definition.encode("cp1252"))
                except UnicodeEncodeError as error:
                    problems.append("%s: %s: not in code page 1252: %s" % (where, key, error))
                    continue
                if size > LIMIT:
                    problems.append("%s: %s: %d characters (at most %d)" % (where, key, size, LIMIT))
                if not definition:
                    problems.append("%s: %s: empty definition" % (where, key))
                entries[key] = (shown.strip(), definition)
    return entries, problems


def main():
    words = short_words()
    entries, problems = read_definitions()
    known = set(words)
    problems += ["no definition for %s" % w for w in words if w not in entries]
    problems += ["%s is not a word of the list" % k for k in entries if k not in known]
    problems += plural_problems(entries, all_words())
    if problems:
        print("\n".join(problems), file=sys.stderr)
        print("%d problem(s)" % len(problems), file=sys.stderr)
        return 1
    lines = ["%s§%s$%s" % (w, entries[w][0], entries[w][1]) for w in words]
    data = "\r\n".join(lines).encode("cp1252") + b"\0"
    data += b"\0" * (-len(data) % 4)
    with open(os.path.join(ROOT, "data", "lexicon", "M23"), "wb") as f:
        f.write(data)
    print("M23: %d lines, %d bytes" % (len(lines), len(data)))
    return 0


if __name__ == "__main__":
    sys.exit(main())
