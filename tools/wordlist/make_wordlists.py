#!/usr/bin/python3
"""Make Ostrane's French word lists from the hunspell French dictionary.

Reads the "toutes variantes" dictionary of Debian's hunspell-fr-comprehensive
(fr.dic + fr.aff), keeps the entries a word game accepts, expands every
inflection with its own affix expander, and writes:

  data/lexicon/DICO          words of 2 to 9 letters, by length then A-Z
  data/lexicon/DIC10..DIC15  words of 10 to 15 letters, A-Z
  data/lexicon/words23.txt   the 2- and 3-letter words, one per line (LF)
  data/lexicon/NOTICE        origin and licence of the lists
  data/lexicon/MPL-2.0.txt   the licence text

The word lists are code page 1252 text (plain A-Z here), CR LF after every
word, then NUL bytes up to a multiple of 4 bytes.

Python 3 standard library only.  Same input, same bytes.

  /usr/bin/python3 tools/wordlist/make_wordlists.py           # write the lists
  /usr/bin/python3 tools/wordlist/make_wordlists.py --check   # verify them
"""

import argparse
import os
import re
import shutil
import subprocess
import sys
import time
import unicodedata

HERE = os.path.dirname(os.path.abspath(__file__))
REPO = os.path.dirname(os.path.dirname(HERE))

DEFAULT_AFF = "/usr/share/hunspell/fr.aff"
DEFAULT_DIC = "/usr/share/hunspell/fr.dic"
DEFAULT_WFRENCH = "/usr/share/dict/french"
DEFAULT_MPL = "/usr/share/common-licenses/MPL-2.0"
DEFAULT_OUT = os.path.join(REPO, "data", "lexicon")
STOPLIST = os.path.join(HERE, "stoplist.txt")
SHORTWORDS = os.path.join(HERE, "short_words.txt")

NOTICE_TEXT = (
    "French word list derived from the Dicollecte/Grammalecte French dictionary v7.0,\n"
    "\u00a9 2007\u20132018 Dicollecte contributors, Mozilla Public License 2.0, https://grammalecte.net\n"
    "\n"
    "The files DICO and DIC10 to DIC15 were derived from the \"toutes variantes\" dictionary\n"
    "(hunspell fr.dic and fr.aff as shipped by Debian's hunspell-fr-comprehensive) by\n"
    "tools/wordlist/make_wordlists.py: entries filtered, inflections expanded, accents\n"
    "removed, upper-cased; 2- and 3-letter words reviewed by hand (tools/wordlist/).\n"
    "The licence text is in MPL-2.0.txt next to this file.\n"
)

# --------------------------------------------------------------------------
# Entry filter
# --------------------------------------------------------------------------

# Part-of-speech tags whose entries never enter the lists.
DROP_TAGS = {
    "npr",   # proper nouns
    "prn",   # first names
    "patr",  # family names
    "nbro",  # roman numerals
    "err",   # forms marked as errors (qu, jusqu...)
    "sign",  # signs
    "sfx",   # suffixes (.com, .fr...)
    "ponc",  # punctuation
    "div",   # odds and ends
}
# Titles ("po:titr") drop nothing: the dictionary gives the tag to common
# nouns that also serve as titles (maître, docteur, madame, papa, seigneur)
# and to their plurals used alone (mesdames, messieurs), all lower-case
# words; the abbreviations of titles (Dr, Mme, Mgr) are written with a
# capital and fall to the case rule.
# Prefixes and parts of locutions stay out unless the same entry is also one
# of these.
WORD_TAGS = {"nom", "adj", "adv", "interj", "prep", "mg"}

KEEPCASE_FLAG = "||"      # symbols kept as typed (km, bar, erg as units...)
UNIT_SYMBOL_FLAG = "U."   # unit symbols taking SI prefixes
UNIT_PREFIX_FLAGS = {"Um", "Ui"}  # unit names taking SI prefixes

WORD_RE = re.compile(r"^[a-z]{2,15}$")


def read_list_file(path):
    """Lines of a small data file without comments and blanks."""
    items = []
    with open(path, encoding="utf-8") as f:
        for lineno, line in enumerate(f, 1):
            text = line.split("#", 1)[0].strip()
            if text:
                items.append((lineno, text))
    return items


def load_stoplist(path):
    """The lemmas of the stop-list, and its kinds: "~regex" lines, each a
    pattern that a whole kind of abbreviation matches."""
    lemmas, kinds = set(), []
    for lineno, text in read_list_file(path):
        if text.startswith("~"):
            kinds.append((lineno, re.compile(text[1:])))
        else:
            lemmas.add(text)
    return lemmas, kinds


def load_short_words(path):
    """The reviewed additions (+entry, fr.dic syntax) and removals (-WORD)."""
    add, remove = [], []
    for lineno, text in read_list_file(path):
        if text.startswith("-") and re.fullmatch(r"[A-Z]{2,15}", text[1:]):
            remove.append(text[1:])
        elif text.startswith("+") and len(text) > 2:
            add.append((lineno, text[1:]))
        else:
            raise SystemExit(f"{path}:{lineno}: expected -WORD or +entry, got {text!r}")
    return add, remove


# --------------------------------------------------------------------------
# Affix file and expander
# --------------------------------------------------------------------------

class Rule:
    __slots__ = ("strip", "add", "cont", "cond")

    def __init__(self, strip, add, cont, cond):
        self.strip = strip
        self.add = add
        self.cont = cont
        self.cond = cond


class Affix:
    __slots__ = ("flag", "is_prefix", "cross", "rules")

    def __init__(self, flag, is_prefix, cross):
        self.flag = flag
        self.is_prefix = is_prefix
        self.cross = cross
        self.rules = []


def condition_regex(cond, is_prefix):
    """Compile a hunspell condition (characters, '.', [set], [^set])."""
    if cond == ".":
        return None
    parts = []
    i = 0
    while i < len(cond):
        c = cond[i]
        if c == "[":
            j = cond.index("]", i)
            body = cond[i + 1:j]
            neg = body.startswith("^")
            if neg:
                body = body[1:]
            parts.append("[" + ("^" if neg else "") + "".join(re.escape(ch) for ch in body) + "]")
            i = j + 1
        elif c == ".":
            parts.append(".")
            i += 1
        else:
            parts.append(re.escape(c))
            i += 1
    pattern = "".join(parts)
    return re.compile(pattern if is_prefix else "(?:" + pattern + ")$")


class AffixFile:
    def __init__(self, path):
        self.flag_mode = "char"
        self.needaffix = None
        self.forbidden = None
        self.circumfix = None
        self.fullstrip = False
        self.affixes = {}
        self._parse(path)

    def split_flags(self, text):
        if not text:
            return ()
        if self.flag_mode == "long":
            if len(text) % 2:
                raise ValueError(f"odd flag string {text!r}")
            return tuple(text[i:i + 2] for i in range(0, len(text), 2))
        if self.flag_mode == "num":
            return tuple(text.split(","))
        return tuple(text)

    def _parse(self, path):
        with open(path, encoding="utf-8") as f:
            lines = f.read().split("\n")
        pending = 0
        current = None
        for line in lines:
            fields = line.split()
            if not fields or fields[0].startswith("#"):
                continue
            key = fields[0]
            if key == "FLAG":
                self.flag_mode = fields[1]
            elif key == "NEEDAFFIX":
                self.needaffix = fields[1]
            elif key == "FORBIDDENWORD":
                self.forbidden = fields[1]
            elif key == "CIRCUMFIX":
                self.circumfix = fields[1]
            elif key == "FULLSTRIP":
                self.fullstrip = True
            elif key in ("PFX", "SFX"):
                if pending == 0:
                    # header: PFX flag cross count
                    current = Affix(fields[1], key == "PFX", fields[2] == "Y")
                    if fields[1] in self.affixes:
                        raise ValueError(f"affix flag {fields[1]} defined twice")
                    self.affixes[fields[1]] = current
                    pending = int(fields[3])
                else:
                    if fields[1] != current.flag:
                        raise ValueError(f"rule of {fields[1]} inside {current.flag}")
                    strip = "" if fields[2] == "0" else fields[2]
                    add_field = fields[3]
                    if "/" in add_field:
                        add, cont = add_field.split("/", 1)
                        cont = frozenset(self.split_flags(cont))
                    else:
                        add, cont = add_field, frozenset()
                    add = "" if add == "0" else add
                    cond = fields[4] if len(fields) > 4 else "."
                    current.rules.append(Rule(strip, add, cont, condition_regex(cond, current.is_prefix)))
                    pending -= 1
        if pending:
            raise ValueError("affix file ends inside an affix class")

    def applies(self, rule, is_prefix, word):
        """Return the affixed form of word, or None when the rule does not fit."""
        strip = rule.strip
        if strip and (len(word) < len(strip) or (len(word) == len(strip) and not self.fullstrip)):
            return None
        if is_prefix:
            if not word.startswith(strip):
                return None
            if rule.cond is not None and not rule.cond.match(word):
                return None
            return rule.add + word[len(strip):]
        if not word.endswith(strip):
            return None
        if rule.cond is not None and not rule.cond.search(word):
            return None
        return (word[:len(word) - len(strip)] if strip else word) + rule.add


def expand(aff, word, flags, skip_prefixed_units=True):
    """Every surface form of one dictionary entry.

    Covers what this affix file uses: the bare word unless it needs an affix,
    suffixes, a second suffix named in a suffix's continuation, prefixes,
    suffixes named in a prefix's continuation, and prefix x suffix cross
    products (both classes cross, or the prefix named by the suffix).
    """
    forms = set()
    if aff.forbidden in flags:
        return forms
    need = aff.needaffix
    if need not in flags:
        forms.add(word)
    affixes = aff.affixes
    sfx = [affixes[f] for f in flags if f in affixes and not affixes[f].is_prefix]
    pfx = [affixes[f] for f in flags if f in affixes and affixes[f].is_prefix]

    def prefix_rules(affix):
        for rule in affix.rules:
            if skip_prefixed_units and affix.flag in UNIT_PREFIX_FLAGS and rule.add:
                continue  # MÈTRE yes, KILOMÈTRE no
            yield rule

    def add_prefixed(affix, stem_form):
        """Put prefix affix on a suffixed form of word (condition on word)."""
        for prule in prefix_rules(affix):
            if aff.applies(prule, True, word) is None:
                continue
            forms.add(prule.add + stem_form[len(prule.strip):])

    for s in sfx:
        for rule in s.rules:
            w1 = aff.applies(rule, False, word)
            if w1 is None:
                continue
            if need not in rule.cont:
                forms.add(w1)
            for f in sorted(rule.cont):
                a2 = affixes.get(f)
                if a2 is None:
                    continue
                if a2.is_prefix:
                    add_prefixed(a2, w1)
                else:
                    for r2 in a2.rules:
                        w2 = aff.applies(r2, False, w1)
                        if w2 is not None and need not in r2.cont:
                            forms.add(w2)
            if s.cross:
                for p in pfx:
                    if p.cross:
                        add_prefixed(p, w1)

    for p in pfx:
        for prule in prefix_rules(p):
            w1 = aff.applies(prule, True, word)
            if w1 is None:
                continue
            if need not in prule.cont:
                forms.add(w1)
            for f in sorted(prule.cont):
                a2 = affixes.get(f)
                if a2 is None or a2.is_prefix:
                    continue
                for srule in a2.rules:
                    ws = aff.applies(srule, False, word)
                    if ws is not None:
                        forms.add(prule.add + ws[len(prule.strip):])
    return forms


# --------------------------------------------------------------------------
# Dictionary entries
# --------------------------------------------------------------------------

class Entry:
    __slots__ = ("lemma", "flags", "tags", "line")

    def __init__(self, lemma, flags, tags, line):
        self.lemma = lemma
        self.flags = flags
        self.tags = tags
        self.line = line


def parse_dic_line(aff, line, lineno):
    fields = line.split()
    head = fields[0]
    if "/" in head:
        lemma, flag_text = head.split("/", 1)
    else:
        lemma, flag_text = head, ""
    tags = frozenset(x[3:] for x in fields[1:] if x.startswith("po:"))
    return Entry(lemma, aff.split_flags(flag_text), tags, lineno)


def read_dic(aff, path):
    with open(path, encoding="utf-8") as f:
        lines = f.read().split("\n")
    # the first line holds the entry count
    return [parse_dic_line(aff, line, lineno) for lineno, line in enumerate(lines[1:], 2) if line.strip()]


def is_verb(tags):
    return any(len(t) > 1 and t[0] == "v" and t[1].isdigit() for t in tags)


def entry_verdict(entry, stoplist):
    """None when the entry is kept, else the reason it is dropped.
    `stoplist` is (lemmas, kinds)."""
    lemmas, kinds = stoplist
    lemma, tags, flags = entry.lemma, entry.tags, entry.flags
    if len(lemma) < 2 or not lemma.isalpha() or lemma != lemma.lower():
        return "not a lower-case word"
    if KEEPCASE_FLAG in flags:
        return "symbol"
    if UNIT_SYMBOL_FLAG in flags:
        return "unit symbol"
    if tags & DROP_TAGS:
        return "tag " + ",".join(sorted(tags & DROP_TAGS))
    if not (tags & WORD_TAGS) and ("pfx" in tags or any(t.startswith("loc.") for t in tags)):
        return "prefix or part of a locution"
    if lemma in lemmas:
        return "stop-list"
    if any(kind.fullmatch(lemma) for _, kind in kinds):
        return "stop-list kind"
    return None


def locution_word(entry):
    """A part of a locution that is a word of its own: one lower-case word,
    tagged only as part of a locution (à l'envi, d'antan, à jeun, d'emblée,
    en catimini, en tapinois, a fortiori). Kept when wfrench attests it."""
    tags = entry.tags
    return (not (tags & WORD_TAGS) and "pfx" not in tags and any(t.startswith("loc.") for t in tags)
            and entry.lemma.isalpha() and entry.lemma == entry.lemma.lower())


def needs_evidence(entry):
    """Verbs and adverbs are kept only when wfrench knows one of their forms.

    Function words are exempt, and so are adverbs in -ment, which wfrench
    lists poorly although they are regular (superficiellement...).
    """
    if "mg" in entry.tags:
        return False
    if is_verb(entry.tags):
        return True
    return "adv" in entry.tags and not entry.lemma.endswith("ment")


def unit_prefixed_groups(aff, entry):
    """The forms of each prefixed unit name (kilo+mètre...), one set per prefix."""
    for flag in entry.flags:
        affix = aff.affixes.get(flag)
        if flag not in UNIT_PREFIX_FLAGS or affix is None:
            continue
        for rule in affix.rules:
            if not rule.add or "'" in rule.add:
                continue
            stem = aff.applies(rule, True, entry.lemma)
            if stem is None:
                continue
            if rule.cont:
                yield expand(aff, stem, tuple(sorted(rule.cont)))
            else:
                yield {stem}


def normalise(form):
    """Game spelling of a form: A-Z only, or None."""
    if "'" in form or "\u2019" in form or "-" in form or " " in form:
        return None
    f = form.replace("\u0153", "oe").replace("\u00e6", "ae").replace("\u0152", "OE").replace("\u00c6", "AE")
    f = unicodedata.normalize("NFD", f)
    f = "".join(c for c in f if not unicodedata.combining(c)).lower()
    if not WORD_RE.match(f):
        return None
    return f.upper()


def load_wfrench(path):
    words = set()
    with open(path, encoding="utf-8") as f:
        for line in f:
            w = normalise(line.strip())
            if w:
                words.add(w)
    return words


# --------------------------------------------------------------------------
# Building
# --------------------------------------------------------------------------

class Build:
    """The whole computation, kept for reporting and checking."""

    def __init__(self, args):
        self.args = args
        self.aff = AffixFile(args.aff)
        self.entries = read_dic(self.aff, args.dic)
        self.stoplist = load_stoplist(STOPLIST)
        self.add, self.remove = load_short_words(SHORTWORDS)
        self.wfrench = load_wfrench(args.wfrench) if args.evidence else None
        self.dropped = {}          # reason -> count of entries
        self.no_evidence = []      # lemmas dropped by the wfrench test
        self.kept_entries = []
        self.unit_words = set()    # words of prefixed unit names kept
        self.forms_of = {}         # entry index -> set of raw forms (--check only)
        words = set()
        removed = set(self.remove)
        self.locution_words = []
        for i, e in enumerate(self.entries):
            reason = entry_verdict(e, self.stoplist)
            if (reason == "prefix or part of a locution" and self.wfrench is not None and locution_word(e)
                    and normalise(e.lemma) in self.wfrench):
                lemmas, kinds = self.stoplist
                if e.lemma in lemmas or any(kind.fullmatch(e.lemma) for _, kind in kinds):
                    reason = "stop-list"
                else:
                    reason = None
                    self.locution_words.append(e.lemma)
            if reason is None and normalise(e.lemma) in removed:
                reason = "short-word review"
            if reason is None:
                forms = expand(self.aff, e.lemma, e.flags)
                normal = {n for n in map(normalise, forms) if n}
                if self.wfrench is not None and needs_evidence(e) and not (normal & self.wfrench):
                    reason = "no wfrench evidence"
                    self.no_evidence.append(e.lemma)
            if reason is not None:
                key = reason.split(" ", 1)[0] if reason.startswith("tag ") else reason
                self.dropped[key] = self.dropped.get(key, 0) + 1
                continue
            if self.wfrench is not None:
                # kilogramme, centimètre, mégawatt: a prefixed unit name is
                # kept when wfrench knows one of its forms.
                for group in unit_prefixed_groups(self.aff, e):
                    normal_group = {n for n in map(normalise, group) if n}
                    if normal_group & self.wfrench:
                        forms = forms | group
                        normal |= normal_group
                        self.unit_words |= normal_group
            self.kept_entries.append(e)
            if args.check:
                self.forms_of[i] = forms
            words |= normal
        self.expanded = set(words)
        self.stale = []
        # the hand review: added entries skip the filters, they were chosen
        self.added_words = set()
        for lineno, text in self.add:
            e = parse_dic_line(self.aff, text, lineno)
            normal = {n for n in map(normalise, expand(self.aff, e.lemma, e.flags)) if n}
            if not normal or normal <= words:
                self.stale.append("+" + text)
            self.added_words |= normal - words
            words |= normal
        lemmas = {e.lemma for e in self.entries}
        self.stale += sorted("stop-list " + w for w in self.stoplist[0] - lemmas)
        self.stale += ["stop-list kind " + kind.pattern for _, kind in self.stoplist[1]
                       if not any(kind.fullmatch(x) for x in lemmas)]
        removed_lemmas = {normalise(lemma) for lemma in lemmas} & removed
        for w in self.remove:
            if w not in words and w not in removed_lemmas:
                self.stale.append("-" + w)
            words.discard(w)
        self.words = words
        self.dico = sorted((w for w in words if len(w) <= 9), key=lambda w: (len(w), w))
        self.long = {n: sorted(w for w in words if len(w) == n) for n in range(10, 16)}


def encode_list(words):
    data = "".join(w + "\r\n" for w in words).encode("cp1252")
    return data + b"\0" * (-len(data) % 4)


def outputs(build):
    """File name -> bytes of every list file."""
    files = {"DICO": encode_list(build.dico)}
    for n in range(10, 16):
        files[f"DIC{n}"] = encode_list(build.long[n])
    files["words23.txt"] = "".join(w + "\n" for w in build.dico if len(w) <= 3).encode("ascii")
    files["NOTICE"] = NOTICE_TEXT.encode("utf-8")
    with open(build.args.mpl, "rb") as f:
        files["MPL-2.0.txt"] = f.read()
    return files


def counts_text(build):
    lines = []
    total = 0
    for n in range(2, 16):
        c = sum(1 for w in build.words if len(w) == n)
        total += c
        lines.append(f"{n:>2} letters: {c:>7}")
    lines.append(f"total:      {total:>7}  (DICO {len(build.dico)}, DIC10-DIC15 {total - len(build.dico)})")
    return "\n".join(lines)


# --------------------------------------------------------------------------
# Checks
# --------------------------------------------------------------------------

ABAISSER = """abaisser abaissant abaissé abaissés abaissée abaissées
abaisse abaisses abaissons abaissez abaissent
abaissais abaissait abaissions abaissiez abaissaient
abaissai abaissas abaissa abaissâmes abaissâtes abaissèrent
abaisserai abaisseras abaissera abaisserons abaisserez abaisseront
abaisserais abaisserait abaisserions abaisseriez abaisseraient
abaissasse abaissasses abaissât abaissassions abaissassiez abaissassent""".split()

# Words that must be in the lists, and words that must not.
MUST_HAVE = """ABAISSASSIEZ ABAISSAT ABAISSERAIENT FINISSIONS FINIRENT FINIES ALLIONS IRAIENT
AILLENT FUMES FUSSIONS EUMES EUSSIEZ FAISONS FIMES FISSENT CHEVAUX TRAVAUX ACTRICE ACTRICES
OEIL YEUX CIEUX METRE METRES LITRE GRAMMES KILOGRAMMES CENTIMETRE MEGAWATTS HERTZ LUX OHM
WATTS CE ET JE MA NI SA SE OU OUI NON DEUX TROIS CINQ ZYGOMATIQUES PRAGMATIQUEMENT
CONSTITUTIONNEL AA AAS KA OM IXE IXERAIENT ZEK YUE MAITRE MAITRESSE DOCTEUR PROFESSEUR MONSIEUR
MADAME MADEMOISELLE MAMAN PAPA SEIGNEUR MESSIRE ANTAN ENVI JEUN EMBLEE CATIMINI TAPINOIS FORTIORI
APP APPS LED LEDS PHO GIF""".split()
MUST_NOT_HAVE = """KM MW KG CM MM YOTTAMETRE GIGAGRAMME ATTOWATT NANOJOULES PETAHERTZ JANV COS PT DPI
QU JUSQU LORSQU TOULOUSE LYON MME MLLE XIV AV VS ZZZZ ABA AVO TANH ARCSINH QBIT KIBIBIT ETYM
ABALOBER ABALOBERAIENT""".split()


def check_expander(build, problems):
    """Paradigm samples, expanded straight from the dictionary entries."""
    aff = build.aff
    by_lemma = {}
    for e in build.entries:
        by_lemma.setdefault(e.lemma, []).append(e)
    forms = set()
    for e in by_lemma["abaisser"]:
        forms |= expand(aff, e.lemma, e.flags)
    missing = [f for f in ABAISSER if f not in forms]
    if missing:
        problems.append(f"abaisser: missing forms {missing}")
    print(f"abaisser: {len(forms)} forms, {len([f for f in forms if normalise(f)])} without apostrophe")
    for w in MUST_HAVE:
        if w not in build.words:
            problems.append(f"{w} missing")
    for w in MUST_NOT_HAVE:
        if w in build.words:
            problems.append(f"{w} present")


def check_with_hunspell(build, problems, sample_step):
    """Every raw form of every sample_step-th kept entry must be accepted by hunspell -G."""
    if shutil.which("hunspell") is None:
        problems.append("hunspell not found: forms not checked")
        return
    dictionary = os.path.splitext(build.args.dic)[0]
    sample = set()
    keys = sorted(build.forms_of)
    for k in keys[::sample_step]:
        for f in build.forms_of[k]:
            if normalise(f):
                sample.add(f)
    # also every form that yields a 2- or 3-letter word
    for k in keys:
        for f in build.forms_of[k]:
            n = normalise(f)
            if n and len(n) <= 3:
                sample.add(f)
    sample = sorted(sample)
    run = subprocess.run(["hunspell", "-G", "-d", dictionary], input="\n".join(sample) + "\n",
                         capture_output=True, text=True, encoding="utf-8", check=False)
    accepted = set(run.stdout.split("\n"))
    rejected = [f for f in sample if f not in accepted]
    print(f"hunspell -G: {len(sample)} forms sent, {len(sample) - len(rejected)} accepted")
    if rejected:
        problems.append(f"hunspell rejects {len(rejected)} forms, e.g. {rejected[:20]}")


def check_list_bytes(name, data, problems, order_key):
    if len(data) % 4:
        problems.append(f"{name}: size {len(data)} not a multiple of 4")
    body = data.rstrip(b"\0")
    if len(data) - len(body) > 3:
        problems.append(f"{name}: more than 3 NUL bytes of padding")
    if not body.endswith(b"\r\n"):
        problems.append(f"{name}: does not end with CR LF before the padding")
    words = body.decode("cp1252").split("\r\n")[:-1]
    for w in words:
        if not re.fullmatch(r"[A-Z]{2,15}", w):
            problems.append(f"{name}: bad line {w!r}")
            break
    if words != sorted(set(words), key=order_key):
        problems.append(f"{name}: not sorted or has duplicates")
    return words


def check_files(build, problems):
    out = build.args.out
    expected = outputs(build)
    for name, data in expected.items():
        path = os.path.join(out, name)
        if not os.path.exists(path):
            problems.append(f"{name}: missing")
            continue
        with open(path, "rb") as f:
            on_disk = f.read()
        if on_disk != data:
            problems.append(f"{name}: differs from a fresh build")
    read = {}
    for name in ["DICO"] + [f"DIC{n}" for n in range(10, 16)]:
        path = os.path.join(out, name)
        if not os.path.exists(path):
            continue
        with open(path, "rb") as f:
            data = f.read()
        key = (lambda w: (len(w), w)) if name == "DICO" else (lambda w: w)
        words = check_list_bytes(name, data, problems, key)
        lengths = {len(w) for w in words}
        want = set(range(2, 10)) if name == "DICO" else {int(name[3:])}
        if not lengths <= want:
            problems.append(f"{name}: words of lengths {sorted(lengths - want)}")
        read[name] = words
    if "DICO" in read:
        w23 = os.path.join(out, "words23.txt")
        if os.path.exists(w23):
            with open(w23, encoding="ascii") as f:
                if f.read().split("\n")[:-1] != [w for w in read["DICO"] if len(w) <= 3]:
                    problems.append("words23.txt does not match DICO")
    print("files checked: " + ", ".join(f"{k} {len(v)}" for k, v in read.items()))


def run_check(build, sample_step):
    problems = []
    if build.stale:
        problems.append(f"review lines with no effect: {build.stale}")
    check_expander(build, problems)
    check_with_hunspell(build, problems, sample_step)
    check_files(build, problems)
    for p in problems:
        print("PROBLEM: " + p)
    print("check: " + ("FAILED" if problems else "all good"))
    return 1 if problems else 0


# --------------------------------------------------------------------------

def main():
    ap = argparse.ArgumentParser(description=__doc__.split("\n\n")[0])
    ap.add_argument("--aff", default=DEFAULT_AFF)
    ap.add_argument("--dic", default=DEFAULT_DIC)
    ap.add_argument("--wfrench", default=DEFAULT_WFRENCH)
    ap.add_argument("--mpl", default=DEFAULT_MPL)
    ap.add_argument("--out", default=DEFAULT_OUT, help="output directory (default data/lexicon)")
    ap.add_argument("--no-evidence", dest="evidence", action="store_false",
                    help="keep verbs and adverbs that wfrench does not attest")
    ap.add_argument("--check", action="store_true",
                    help="verify paradigms, forms (hunspell -G) and the files in --out; write nothing")
    ap.add_argument("--sample-step", type=int, default=1,
                    help="--check sends every form of every n-th kept entry to hunspell (default 1: all)")
    ap.add_argument("--dump", metavar="FILE", help="also write the entries dropped for want of evidence")
    args = ap.parse_args()

    start = time.monotonic()
    build = Build(args)
    print(f"{len(build.entries)} dictionary entries, {len(build.kept_entries)} kept")
    for reason, count in sorted(build.dropped.items(), key=lambda kv: (-kv[1], kv[0])):
        print(f"  dropped {count:>6}  {reason}")
    print(f"{len(build.unit_words)} words of prefixed unit names attested by wfrench")
    print(f"{len(build.locution_words)} parts of locutions kept as words (wfrench attests them): "
          + " ".join(sorted(build.locution_words)))
    print(f"{len(build.expanded)} words from the expansion, short-word review: "
          f"{len(build.add)} entries giving {len(build.added_words)} words added, {len(build.remove)} words removed")
    for s in build.stale:
        print(f"note: review line {s} has no effect")
    print(counts_text(build))
    if args.dump:
        with open(args.dump, "w", encoding="utf-8") as f:
            f.write("\n".join(sorted(set(build.no_evidence))) + "\n")

    if args.check:
        status = run_check(build, args.sample_step)
        print(f"time: {time.monotonic() - start:.1f} s")
        return status

    os.makedirs(args.out, exist_ok=True)
    for name, data in outputs(build).items():
        with open(os.path.join(args.out, name), "wb") as f:
            f.write(data)
    print(f"written to {args.out}")
    print(f"time: {time.monotonic() - start:.1f} s")
    return 0


if __name__ == "__main__":
    sys.exit(main())
