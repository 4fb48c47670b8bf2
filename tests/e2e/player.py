"""A player at the real program: what a person does with each window, read
from what the windows show and done with the pointer and the keys.

The player keeps the board in mind (every play it has laid), as a person at a
real table does, so that it knows which squares are free when it lays a word.
"""

import pathlib
import random
import re

from desktop import Desktop, Program, Timeout, find, wait

PITCH = 36  # the board's squares, in pixels
SQUARE_OFFSET = 2 + 17  # from the board's corner to the centre of the first square
ROWS = "ABCDEFGHIJKLMNO"


class Player:
    def __init__(self, desktop: Desktop, shots: pathlib.Path, seed=1):
        self.desktop = desktop
        self.shots = shots
        self.count = 0
        self.rng = random.Random(seed)
        self.program = None
        self.board = {}  # (row, column) -> letter, as laid
        self.tour = []  # the texts of the tour's boxes
        self.messages = []  # the texts of the message boxes
        self.bags = []  # the tiles the picker offered at each draw

    # --------------------------------------------------------------- basics
    def shot(self, name):
        self.count += 1
        self.desktop.shot(self.shots / ("%02d-%s.png" % (self.count, name)))

    def wait(self, condition, what, timeout=20.0):
        def leave_trace():
            self.count += 1
            self.desktop.shot(self.shots / ("%02d-TIMEOUT.png" % self.count))
            (self.shots / ("%02d-TIMEOUT.txt" % self.count)).write_text(
                "waiting for %s\n%s\n" % (what, self.program.dump() if self.program else ""))
        if self.program is not None and not self.program.running():
            raise AssertionError("the program ended (status %s) while waiting for %s"
                                 % (self.program.proc.returncode, what))
        return wait(lambda: self._alive() and condition(), what, timeout, leave_trace)

    def _alive(self):
        if self.program is not None and not self.program.running():
            raise AssertionError("the program ended (status %s)" % self.program.proc.returncode)
        return True

    def click(self, widget):
        assert widget is not None, "nothing to click"
        self.desktop.click(*widget.centre)

    def window(self, name=None, having=None, timeout=20.0):
        return self.wait(lambda: self.program.window(name=name, having=having),
                         "the window %s" % (name or having), timeout)

    def gone(self, name=None, having=None, timeout=10.0):
        self.wait(lambda: not self.program.window(name=name, having=having),
                  "the window %s to close" % (name or having), timeout)

    def button(self, name, timeout=20.0):
        """Waits for an enabled button of that caption on the screen."""
        def ready():
            for _, content in self.program.windows():
                b = find(content, role="push button", name=name, enabled=True)
                if b:
                    return b
        return self.wait(ready, "the button %r" % name, timeout)

    def main(self):
        """The content of the main window."""
        return self.wait(lambda: self.program.window(name="Ostrane", role="filler"), "the main window")[1]

    def value(self, description):
        w = find(self.main(), description=description)
        return w.text() if w else None

    # ---------------------------------------------------------- the windows
    def start(self, executable, folder, log, home=None, args=()):
        self.program = Program(self.desktop, executable, folder, log, home).start(*args)
        self.name_forms = 0
        return self.program

    def close_tour_box(self, key=None):
        """Closes what comes up by itself and only asks to be read: the guided
        tour's box (by its button, or by `key`), or a message box with OK only
        (the bonus, the praise). The final score is not one of them."""
        for window in self.program.toplevels():
            if window.name == "Informations":
                content = self.program.content(window)
                self.tour.append("\n".join(w.name for w in content if w.role == "label" and w.name))
                if key:
                    self.desktop.key(key)
                else:
                    self.click(find(content, role="push button", name="OK"))
                self.gone(name="Informations")
                return True
            if window.name == "Ostrane" and window.role == "alert":
                content = self.program.content(window)
                buttons = [w for w in content if w.role == "push button"]
                labels = [w.name for w in content if w.role == "label" and w.name]
                if len(buttons) == 1 and buttons[0].name == "OK" and not any(
                        re.fullmatch(r"\d+ points", t) for t in labels):
                    self.messages.append("\n".join(labels))
                    self.click(buttons[0])
                    self.wait(lambda: all(w.node != window.node for w in self.program.toplevels()),
                              "the message box to close", 10)
                    return True
        return False

    def answer_box(self, answer, contains=""):
        """Answers the next message box whose text holds `contains`; returns its text."""
        def box():
            for window, content in self.program.windows():
                if window.name != "Ostrane":
                    continue
                button = find(content, role="push button", name=answer)
                texts = [w.name for w in content if w.role == "label" and w.name]
                if button and any(contains in t for t in texts):
                    return button, "\n".join(texts)
        button, text = self.wait(box, "a box with %r saying %r" % (answer, contains))
        self.messages.append(text)
        self.click(button)
        # A box placed by the window manager after it was read may have taken
        # the click elsewhere: it is clicked again where it now stands.
        # An answer that ends the program closes the box too.
        def closed():
            return not self.program.running() or not box()
        for _ in range(3):
            try:
                wait(closed, "the box to close", 3)
                break
            except Timeout:
                again = box()
                if again:
                    self.click(again[0])
        return text

    def name_form(self, name=None, untick=(), shot=None):
        """Fills the game's name form and starts; returns the name it offered."""
        _, content = self.window(having="Commencer")
        self.name_forms += 1
        box = find(content, role="text")
        offered = box.text()
        if name is not None:
            self.click(box)
            self.desktop.key("ctrl+a")
            self.desktop.type(name)
            self.wait(lambda: find(self.window(having="Commencer")[1], role="text").text() == name,
                      "the name typed")
        for caption in untick:
            tick = find(content, role="check box", name=caption)
            if tick.checked:
                self.click(tick)
        if shot:
            self.shot(shot)
        self.click(find(content, role="push button", name="Commencer"))
        self.gone(having="Commencer")
        return offered

    def begin(self):
        """"Débuter la partie", once the main window is awake and the tour's box
        that comes with it (when the tour is on) is closed."""
        self.board = {}

        def ready():
            button = find(self.main(), role="push button", name="Débuter la partie", enabled=True)
            if not button or self.close_tour_box():  # looked at after the window woke up
                return None
            return button
        self.click(self.wait(ready, "the main window ready to start"))

    # --------------------------------------------------------------- a turn
    def pick(self, shot=None):
        """Clicks in the tiles drawn, at random among what the picker shows is
        left. The picker wakes up a moment after it opens (and the tour may
        put its box over it then): the letters are clicked once it is awake
        and nothing stands over it; a click that did not take is made again."""
        def awake():
            up = self.program.window(name="Tirage des jetons")
            if not up or not find(up[1], role="push button", name="Quitter", enabled=True):
                return None
            if self.close_tour_box():  # looked at after the picker woke up
                return None
            return up
        _, content = self.wait(awake, "the picker")
        bag = []
        for i, w in enumerate(content):
            if w.role == "push button" and len(w.name) == 1:
                m = re.fullmatch(r"×(\d+)", content[i + 1].name if i + 1 < len(content) else "")
                bag += [w.name] * (int(m.group(1)) if m else 0)
        self.bags.append("".join(sorted(bag)))
        drawn = [bag.pop(self.rng.randrange(len(bag))) for _ in range(min(7, len(bag)))]
        buttons = {w.name: w for w in content if w.role == "push button"}
        for letter in drawn:
            self.click(buttons[letter])

        def all_taken():
            now = self.program.window(name="Tirage des jetons")[1]
            shown = self.picked(now)
            if sorted(shown) == sorted(drawn):
                return True
            missing = list(drawn)
            for c in shown:
                missing.remove(c)
            if missing and not self.close_tour_box():
                self.click(find(now, role="push button", name=missing[0], enabled=True))
            return False
        self.wait(all_taken, "the tiles %s to be picked" % "".join(drawn))
        if shot:
            self.shot(shot)
        self.click(self.button("Valider"))
        self.gone(name="Tirage des jetons")
        return "".join(sorted(drawn))

    @staticmethod
    def picked(content):
        """The letters the picker shows as drawn."""
        labels = [w.name for w in content if w.role == "label"]
        i = labels.index("Tirage :")
        following = labels[i + 1] if i + 1 < len(labels) else ""
        return following if re.fullmatch(r"[A-Z?]*", following) else ""

    def proposal(self, shot=None):
        """Reads the best play from its box and closes it: (word, position, points),
        or None when the box says there is none."""
        def box():
            self.close_tour_box()
            up = self.program.window(having="Meilleure suggestion:") or \
                self.program.window(having="Pas de solution possible.")
            return up
        _, content = self.wait(box, "the best play's box", 30)
        if shot:
            self.shot(shot)
        labels = [w.name for w in content if w.role == "label"]
        result = None
        if "Meilleure suggestion:" in labels:
            i = labels.index("Meilleure suggestion:")
            word = labels[i + 1]
            j = labels.index("Position:")
            position = labels[j + 1]
            k = labels.index("Points:")
            result = (word, position, int(labels[k + 1]))
        self.click(find(content, role="push button", name="OK"))
        self.wait(lambda: not (self.program.window(having="Meilleure suggestion:") or
                               self.program.window(having="Pas de solution possible.")), "the box to close")
        self.wait(lambda: self.close_tour_box() or not self.program.window(name="Informations"),
                  "the tour's box after the proposal")
        return result

    def squares(self, word, position):
        """The squares of a play from its box's position "H-8  Horizontal". At a
        first play the box may name the other direction (the arrow on the board
        shows the right one, but it blinks): the word goes through the centre."""
        m = re.fullmatch(r"([A-O])-(\d+)\s+(Horizontal|Vertical)", position)
        row, column, across = ROWS.index(m.group(1)), int(m.group(2)) - 1, m.group(3) == "Horizontal"
        if not self.board:
            covers = (row == 7 and column <= 7 < column + len(word)) if across else \
                (column == 7 and row <= 7 < row + len(word))
            across = across if covers else not across
        return [((row, column + i) if across else (row + i, column), letter) for i, letter in enumerate(word)]

    def rack(self):
        """The tiles on the rack: (letter or '?', widget)."""
        content = self.main()
        strip = find(content, name="Chevalet")
        sx, sy, sw, sh = strip.box
        tiles = []
        for w in content:
            if w.name.startswith("Jeton"):
                x, y = w.centre
                if sx <= x <= sx + sw and sy <= y <= sy + sh:
                    letter = "?" if "joker" in w.name else w.name[-1]
                    tiles.append((letter, w))
        return tiles

    def square_centre(self, row, column):
        x, y, _, _ = find(self.main(), name="Plateau").box
        return (x + PITCH * column + SQUARE_OFFSET, y + PITCH * row + SQUARE_OFFSET)

    def lay(self, word, position, shot=None):
        """Drags the tiles of the play from the rack to the board; a blank gets
        its letter typed. Plain tiles first, the blank where none is left."""
        tiles = self.rack()
        board = find(self.main(), name="Plateau").box
        for (row, column), letter in self.squares(word, position):
            if (row, column) in self.board:
                continue
            plain = [t for t in tiles if t[0] == letter]
            chosen = plain[0] if plain else next(t for t in tiles if t[0] == "?")
            tiles.remove(chosen)
            target = (board[0] + PITCH * column + SQUARE_OFFSET, board[1] + PITCH * row + SQUARE_OFFSET)
            self.desktop.drag(chosen[1].centre, target)
            if chosen[0] == "?":
                self.window(name="Joker")
                self.desktop.type(letter.lower())
                self.gone(name="Joker")
            self.board[(row, column)] = letter
        self.wait(lambda: len(self.rack()) == len(tiles), "the tiles to leave the rack")
        if shot:
            self.shot(shot)

    def replay_board(self, plays):
        """The board in mind again, as these plays laid it (after a play was
        taken back)."""
        self.board = {}
        for word, position, _ in plays:
            for square, letter in self.squares(word, position):
                self.board.setdefault(square, letter)

    def file_dialog(self, title, path, shot=None):
        """Answers the file dialog of that title with a whole path, typed."""
        self.window(name=title)
        self.desktop.key("ctrl+a")
        self.desktop.type(str(path))
        if shot:
            self.shot(shot)
        self.desktop.key("Return")
        self.gone(name=title)

    def lay_from_analysis(self, shots=("analysis_list", "analysis_ghost", "analysis_laid")):
        """F5 opens "Analyse du tirage"; its first play is shown over the board
        with a click, then laid from the rack with a double click. Returns the
        play as the proposal's box would give it: (word, position, points)."""
        self.desktop.key("F5")

        def listed():
            up = self.program.window(name="Analyse du tirage")
            cells = [w for w in up[1] if w.role == "table cell"] if up else []
            return cells[:6] if len(cells) >= 6 and cells[0].name == "1" else None
        rank, word, place, sense, points, tiles = self.wait(listed, "the analysis's list")
        self.shot(shots[0])
        self.click(word)
        self.wait(lambda: find(self.program.window(name="Analyse du tirage")[1], role="push button",
                               name="Poser le coup", enabled=True), "the play shown over the board")
        self.shot(shots[1])
        before = len(self.rack())
        self.desktop.double_click(*word.centre)
        self.wait(lambda: len(self.rack()) == before - int(tiles.name), "the tiles laid from the list")
        self.wait(lambda: self.value("Points du coup") == points.name, "the validation's points")
        self.shot(shots[2])
        letters = word.name.split()[0].upper()
        position = "%s  %s" % (place.name, "Vertical" if sense.name == "↓" else "Horizontal")
        for (row, column), letter in self.squares(letters, position):
            self.board[(row, column)] = letter
        # Done with the list: the window goes, the main window's buttons show.
        self.click(find(self.program.window(name="Analyse du tirage")[1], role="push button", name="Fermer"))
        self.gone(name="Analyse du tirage")
        return letters, position, int(points.name)

    def validate(self):
        """Clicks "Valider le mot"; returns the points the play was counted."""
        before = int(self.value("Score"))
        points = int(self.value("Points du coup"))
        self.click(self.button("Valider le mot"))
        self.wait(lambda: self.close_tour_box() or int(self.value("Score") or -1) == before + points,
                  "the score to grow")
        self.close_tour_box()
        return points

    def play_turn(self, shots=None, from_analysis=False):
        """One turn: the draw, the best play read, laid and validated (or the
        analysis's first play laid from its list). Returns the play, or None
        when there was none."""
        shots = shots or {}
        self.pick(shots.get("picker"))
        play = self.proposal(shots.get("proposal"))
        if play is None:
            return None
        if from_analysis:
            play = self.lay_from_analysis()
        else:
            self.lay(play[0], play[1], shots.get("laid"))
        self.validate()
        return play

    def turn_after_validation(self):
        """After a validation: the next picker, or the end of the game."""
        def next_step():
            self.close_tour_box()
            if self.program.window(name="Tirage des jetons"):
                return "picker"
            if self.program.window(having="Fin de la partie") or self.final_score_box():
                return "end"
        return self.wait(next_step, "the next draw or the end", 30)

    def final_score_box(self):
        """The final score's box when it is up: (window, content, "N points")."""
        for window in self.program.toplevels():
            if window.name != "Ostrane" or window.role != "dialog":
                continue
            content = self.program.content(window)
            for w in content:
                if w.role == "label" and re.fullmatch(r"\d+ points", w.name):
                    return window, content, w.name
        return None

    def play_out(self, shots=None, analysis_first=False):
        """Plays turns until the bag and the rack are empty. Returns the plays,
        and whether the game came to a rack with no play instead (the bag empty
        and the last tiles nowhere to go: then only a stop ends the game)."""
        plays = []
        while True:
            play = self.play_turn(shots if not plays else None, analysis_first and not plays)
            if play is None:
                return plays, True
            plays.append(play)
            if self.turn_after_validation() == "end":
                return plays, False

    def stop(self):
        """"Arrêter la partie", answered Yes."""
        self.click(self.button("Arrêter la partie"))
        self.answer_box("Oui", "Voulez-vous abandonner la partie en cours ?")
        self.wait(lambda: find(self.main(), role="push button", name="Nouvelle partie", enabled=True),
                  "the game stopped")

    def finish(self, praise, shots=("final_score", "best_scores")):
        """The final score's box closed, the table's question answered Yes, the
        table read once its selection has walked down to the new game (and the
        praise that follows from the second game on closed). Returns the final
        score's text, the table's lines and the selected line."""
        _, content, score = self.wait(self.final_score_box, "the final score", 10)
        self.shot(shots[0])
        self.click(find(content, role="push button"))
        self.answer_box("Oui", "Vous avez réalisé un score de")
        self.window(name="Les 30 meilleures parties")

        def settled():
            # The walk of the selection ends with the praise (from the second
            # game on) or with nothing; either way the selection stays put.
            up = self.program.window(name="Les 30 meilleures parties")
            lines = [w for w in up[1] if w.role == "list item"]
            chosen = [w.name for w in lines if w.selected]
            if self.close_tour_box():
                self.praised = True
                return None
            if chosen and chosen == self._last_chosen and self.praised == praise:
                return [w.name for w in lines], chosen[0]
            self._last_chosen = chosen
            return None
        self.praised = False
        self._last_chosen = None
        lines, chosen = self.wait(settled, "the table to settle", 15)
        self.shot(shots[1])
        self.click(find(self.program.window(name="Les 30 meilleures parties")[1], role="push button",
                        name="Fermer"))
        self.gone(name="Les 30 meilleures parties")
        return score, lines, chosen
