"""The built program, run as a person runs it.

`build/ostrane` is started in an empty folder on a desktop of its own (see
desktop.py) and played through its windows with the pointer and the keys:
the game's name, a whole game on the short bag "Courte et facile" through the
picker, the best play's box, tiles dragged onto the board, validation, the
end of the game and the table of the best scores; "Nouvelle partie" and a
second game; a third game killed in its middle, the program started again,
the game taken up and finished; then the program left. The files it keeps in
its folder are checked at each stage, and a picture of the screen is kept for
each step in build/e2e/screenshots.

Run alone: ctest --test-dir build -R e2e --output-on-failure
(or: python3 tests/e2e/session_test.py --build build).
"""

import argparse
import os
import pathlib
import re
import shutil
import subprocess
import sys
import unittest
import warnings

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent))

from desktop import Desktop, find, require_tools  # noqa: E402
from player import Player  # noqa: E402

warnings.simplefilter("ignore")  # the accessibility library's own deprecations
BUILD = pathlib.Path(os.environ.get("OSTRANE_BUILD_DIR", "build")).resolve()
NO_DISPLAY = ("Ostrane a besoin d'une session graphique : aucun affichage n'est disponible. "
              "(L'outil ostrane-cli, lui, fonctionne sans affichage.)")
SHORT_EASY_BAG = "AACEEEEEEIMNRSSSTU"
TOUR_OFF = "Afficher les messages d'aide"
SOUNDS = "Jouer les sons"


def read(path):
    return path.read_bytes().decode("utf-8")


class WithoutADisplay(unittest.TestCase):
    def run_program(self, env, *args):
        env = {k: v for k, v in env.items() if not k.startswith(("QT_QPA", "WAYLAND"))}
        return subprocess.run([str(BUILD / "ostrane"), *args], env=env, capture_output=True, text=True,
                              timeout=30)

    def test_help_and_version_answer_on_the_terminal(self):
        env = {k: v for k, v in os.environ.items() if k != "DISPLAY"}
        env["XDG_DATA_HOME"] = "/nulle/part"
        done = self.run_program(env, "--help")
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        self.assertTrue(done.stdout.startswith("Ostrane 1.23 : le compagnon de jeu de Tablinor.\n"))
        self.assertIn("--dossier-utilisateur", done.stdout)
        self.assertIn("\n  /nulle/part/ostrane\n", done.stdout)  # where the files go from the menu
        done = self.run_program(env, "--version")
        self.assertEqual((done.returncode, done.stdout, done.stderr), (0, "Ostrane 1.23\n", ""))

    def test_one_french_sentence_and_a_failing_status(self):
        base = {k: v for k, v in os.environ.items() if k != "DISPLAY"}
        for what, env in (("no display named", base), ("a display out of reach", dict(base, DISPLAY=":98765"))):
            with self.subTest(what):
                done = self.run_program(env)
                self.assertEqual(done.returncode, 1)
                self.assertEqual(done.stderr.strip(), NO_DISPLAY)
                self.assertEqual(done.stdout, "")


class AnEveningOfPlay(unittest.TestCase):
    def setUp(self):
        missing = require_tools()
        if missing:
            self.fail("missing tools: %s (tools/build.sh test installs them)" % ", ".join(missing))
        self.work = BUILD / "e2e"
        shutil.rmtree(self.work, ignore_errors=True)
        self.folder = self.work / "start"  # the program's start folder, empty
        self.folder.mkdir(parents=True)
        self.shots = self.work / "screenshots"
        self.desktop = Desktop(self.work / "desktop")
        self.desktop.start()
        self.addCleanup(self.desktop.stop)
        self.player = Player(self.desktop, self.shots, seed=7)
        self.addCleanup(self.stop_program)

    def stop_program(self):
        if self.player.program and self.player.program.running():
            self.player.program.kill()

    def start(self):
        return self.player.start(BUILD / "ostrane", self.folder, self.work / "ostrane.log")

    def file(self, name):
        return self.folder / name

    def check_history(self, plays, score):
        history = find(self.player.main(), description="Historique").text().splitlines()
        self.assertEqual(len(history), len(plays))
        for n, line in enumerate(history, 1):  # the main word laid, which a play of one tile chooses
            self.assertRegex(line, r"^%02d [A-Z]+ +\d+$" % n)
        self.assertEqual(sum(int(line.split()[-1]) for line in history), score)

    def check_best_scores(self, games):
        """bestsco.ret holds one line per game entered, 44 characters each."""
        text = read(self.file("bestsco.ret"))
        self.assertTrue(text.endswith("\r\n"))
        lines = text.split("\r\n")[:-1]
        self.assertEqual([(int(l[:7]), l[7:25].rstrip()) for l in lines], games)
        for line in lines:
            self.assertEqual(len(line), 44)
            self.assertRegex(line[25:], r"^   \d\d/\d\d/\d\d   \d\d:\d\d$")

    def play_a_whole_game(self, name, games_before, shots=None, untick=(), analysis_first=False):
        """A game from its first draw to the table of the best scores. A game
        whose last tiles have nowhere to go (about one in two hundred on this
        bag) can only be stopped: it is, and a new one is played."""
        p = self.player
        for attempt in range(3):
            p.begin()
            plays, stuck = p.play_out(shots, analysis_first)
            if not stuck:
                break
            p.shot("no_play_left_%d" % attempt)
            p.stop()
            self.assertFalse(self.file("partie.ret").exists(), "the journal goes with a stop")
            p.click(p.button("Nouvelle partie"))
            p.name_form(name, untick=untick)
        else:
            self.fail("three games in a row came to a rack with no play")
        score = int(p.value("Score"))
        self.check_history(plays, score)
        final, lines, chosen = p.finish(praise=bool(games_before))
        self.assertEqual(final, "%d points" % score)
        self.assertFalse(self.file("partie.ret").exists(), "the journal goes with a natural end")
        games = games_before + [(score, name)]
        self.check_best_scores(games)
        self.assertEqual(len(lines), len(games))
        self.assertIn(name, chosen)  # the selection walked down to the new game
        return score, plays

    def test_three_games_a_kill_and_a_take_up(self):
        p = self.player
        program = self.start()

        # The name of the first game, offered by the form.
        self.assertEqual(p.name_form(shot="name_form"), "Partie tabli 01")
        # The tour's first box: Escape closes it.
        p.window(name="Informations")
        p.shot("tour_step_1")
        p.close_tour_box(key="Escape")
        self.assertIsNone(program.window(name="Informations"))

        # The short bag is chosen in the tools frame; it takes effect with the
        # next game, which goes back through the name form.
        main = p.main()
        p.click(find(main, role="radio button", name="Courte et facile"))
        p.wait(lambda: find(p.main(), role="radio button", name="Courte et facile").checked, "the bag chosen")
        p.click(find(main, role="push button", name="Nouvelle partie"))
        self.assertEqual(p.name_form("Partie courte", shot="name_form_again"), "Partie tabli 02")
        p.wait(p.close_tour_box, "the tour's first box")
        p.click(find(p.main(), role="push button", name="V"))  # the tools frame folds off the board
        p.shot("main_window_ready")

        # Game 1, the tour on, as far as the table of the best scores.
        score1, plays1 = self.play_a_whole_game(
            "Partie courte", [], {"picker": "picker", "proposal": "best_play", "laid": "tiles_laid"})
        self.assertEqual(p.bags[0], SHORT_EASY_BAG)  # what the picker offered at the first draw
        self.assertTrue(any("Le mot" in t and "a été validé" in t for t in p.tour))
        self.assertEqual(p.value("Indications"), "\nFin de la partie.")
        p.shot("game_1_over")

        # Game 2: "Nouvelle partie" again, the tour turned off in the form.
        p.click(p.button("Nouvelle partie"))
        offered = p.name_form("Seconde partie", untick=[TOUR_OFF])
        self.assertEqual(offered, "Partie tabli %02d" % p.name_forms)  # one more at each game
        tour_boxes = len(p.tour)
        # Its first play is the exact top, laid from "Analyse du tirage".
        score2, plays2 = self.play_a_whole_game("Seconde partie", [(score1, "Partie courte")], untick=[TOUR_OFF],
                                                analysis_first=True)
        # The analysis again: the game's score against the tops of its turns.
        self.desktop.key("F5")
        _, analysis = p.window(name="Analyse du tirage")
        self.assertTrue(any(w.name.startswith("Votre score : %d points sur " % score2) for w in analysis))
        p.shot("analysis_score_against_tops")
        p.click(find(analysis, role="push button", name="Fermer"))
        p.gone(name="Analyse du tirage")
        self.assertEqual(len(p.tour), tour_boxes, "no tour once it is turned off")
        self.assertTrue(any(m.startswith(("SUPER SCORE !", "BRAVO !", "Bravo !")) for m in p.messages))
        p.shot("game_2_over")

        # Game 3, killed after two plays while the third draw is being picked.
        p.click(p.button("Nouvelle partie"))
        name3 = p.name_form()
        self.assertEqual(name3, "Partie tabli %02d" % p.name_forms)
        p.begin()
        kept = []
        for turn in range(2):
            kept.append(p.play_turn())
            self.assertEqual(p.turn_after_validation(), "picker")
        score3 = int(p.value("Score"))
        p.window(name="Tirage des jetons")
        p.shot("game_3_before_the_kill")
        journal = read(self.file("partie.ret"))
        self.assertTrue(journal.startswith("Ostrane partie 1\r\nNom=%s\r\n" % name3))
        self.assertIn("\r\nPoints=%d\r\nCoups=2\r\n" % score3, journal)
        self.assertIn("\r\nChevalet=\r\n", journal)  # the draw was still to be made
        self.assertEqual(program.kill(), -9)
        self.assertFalse(self.file("Option.ret").exists(), "options are saved on leaving, not before")

        # Started again: the game is offered, taken up with "Oui", and finished.
        program = self.start()
        question = p.answer_box("Oui", "Voulez-vous la reprendre ?")
        self.assertEqual(question, "Une partie n'a pas été terminée : « %s » (2 coups, %d points).\n"
                                   "Voulez-vous la reprendre ?" % (name3, score3))
        # The game is laid back on the board once the box has gone: wait for it.
        p.wait(lambda: p.value("Score") == str(score3), "the score of the game taken up", timeout=10.0)
        self.assertEqual(p.value("Score"), str(score3))
        self.check_history(kept, score3)

        # The third rack drawn, the second play is taken back (Ctrl+Z): its
        # rack is on the stand again and the same play is proposed.
        p.pick()
        p.proposal()
        self.desktop.key("ctrl+z")
        again = p.proposal()
        self.assertEqual(again, kept[1])
        self.assertEqual(p.value("Score"), str(kept[0][2]))
        self.check_history(kept[:1], kept[0][2])
        p.shot("game_3_play_taken_back")

        # Saved so (Ctrl+S) and its score sheet made (Ctrl+P), in a folder of the player's.
        saved, sheet = self.work / "troisieme.ostrane", self.work / "troisieme.pdf"
        self.desktop.key("ctrl+s")
        p.file_dialog("Enregistrer la partie", saved, shot="save_dialog")
        self.assertTrue(read(saved).startswith("Ostrane partie enregistrée 1\r\nNom=%s\r\n" % name3))
        self.desktop.key("ctrl+p")
        p.file_dialog("Feuille de partie", sheet)
        p.wait(lambda: sheet.exists() and sheet.stat().st_size > 0, "the score sheet")
        p.count += 1
        subprocess.run(["pdftoppm", "-png", "-r", "60", "-singlefile", str(sheet),
                        str(p.shots / ("%02d-score_sheet_page" % p.count))], check=True)
        text = subprocess.run(["pdftotext", "-layout", str(sheet), "-"], check=True, capture_output=True,
                              text=True).stdout
        self.assertIn(name3, text)
        self.assertIn("%d points" % kept[0][2], text)

        # The play laid again, and the game goes on.
        p.replay_board(kept[:1])
        p.lay(again[0], again[1])
        self.assertEqual(p.validate(), again[2])
        self.assertEqual(p.turn_after_validation(), "picker")
        played, stuck = p.play_out({"laid": "game_3_taken_up_and_played_on"})
        plays3 = kept + played
        score = int(p.value("Score"))
        self.check_history(plays3, score)
        best_before = [(score1, "Partie courte"), (score2, "Seconde partie")]
        if stuck:  # its last tiles had nowhere to go: a stop ends it
            p.stop()
            self.check_best_scores(best_before)
        else:
            final, lines, chosen = p.finish(praise=True, shots=("game_3_final_score", "game_3_best_scores"))
            self.assertEqual(final, "%d points" % score)
            self.check_best_scores(best_before + [(score, name3)])
        self.assertFalse(self.file("partie.ret").exists())
        self.assertFalse(self.file("partie.enr").exists())

        # The saved game opened again (Ctrl+O): its first play, and the second
        # rack on the stand with its play proposed; then stopped.
        self.desktop.key("ctrl+o")
        p.file_dialog("Ouvrir une partie", saved)
        self.assertEqual(p.proposal(), kept[1])
        self.assertEqual(p.value("Score"), str(kept[0][2]))
        self.check_history(kept[:1], kept[0][2])
        p.shot("saved_game_opened")
        p.stop()

        # A new game's form with the sounds turned off, then leaving: the
        # options reach "Option.ret".
        p.click(p.button("Nouvelle partie"))
        p.name_form(untick=[SOUNDS])
        p.wait(lambda: p.close_tour_box() or p.program.window(name="Ostrane", role="filler"), "the main window")
        p.close_tour_box()

        # The player's own word list, chosen before the game begins (Ctrl+L):
        # in service at once, and kept in the program's settings.
        own = self.work / "ma liste.txt"
        own.write_text("# Ma liste\nZorglub\nzorglubs\nchat\nchats\nmaître\nl'eau\n", encoding="utf-8")
        self.desktop.key("ctrl+l")
        _, content = p.window(name="Liste de mots")
        p.shot("word_list_window")
        p.click(find(content, role="push button", name="Choisir un fichier…"))
        p.file_dialog("Choisir une liste de mots", own)
        said = p.answer_box("OK", "est en service")
        self.assertEqual(said, "La liste « ma liste.txt » (5 mots, 1 ligne ignorée) est en service.")
        p.wait(lambda: p.close_tour_box() or p.program.window(name="Ostrane", role="filler"), "the main window made again")
        p.close_tour_box()
        box = find(p.main(), role="text", name="Vérifier un mot")
        p.click(box)
        self.desktop.type("zorglub")
        self.desktop.key("Return")
        p.wait(lambda: p.value("Réponse de la vérification") == "Le mot ZORGLUB existe.", "the word checked")
        p.shot("word_list_in_service")
        self.assertIn("liste_de_mots=%s\n" % own, read(self.file("ostrane.ini")))
        p.click(p.button("Quitter"))
        p.answer_box("Oui", "Quitter le programme ?")
        self.assertEqual(program.wait_exit(20), 0)
        self.assertEqual(read(self.file("Option.ret")),
                         "Oui\r\n5\r\n120\r\nSonNo\r\nDureeYes\r\nImg plateau 2\r\nDef mots 23 1\r\n"
                         "Encadrement 1\r\nResolutionE 0\r\n")
        self.assertEqual(sorted(f.name for f in self.folder.iterdir()), ["Option.ret", "bestsco.ret", "ostrane.ini"])


class FromTheMenu(unittest.TestCase):
    """Started as the applications menu or a file manager may start it, from a
    folder that is no place for its files: the root of the disk."""

    def setUp(self):
        missing = require_tools()
        if missing:
            self.fail("missing tools: %s (tools/build.sh test installs them)" % ", ".join(missing))
        self.work = BUILD / "e2e-menu"
        shutil.rmtree(self.work, ignore_errors=True)
        self.work.mkdir(parents=True)
        self.desktop = Desktop(self.work / "desktop")
        self.desktop.start()
        self.addCleanup(self.desktop.stop)
        self.player = Player(self.desktop, self.work / "screenshots", seed=3)
        self.addCleanup(lambda: self.player.program and self.player.program.running() and self.player.program.kill())

    def test_started_from_the_root_the_files_go_to_the_data_folder(self):
        root = pathlib.Path("/")
        before = {name: (root / name).exists() for name in ("Option.ret", "bestsco.ret", "partie.ret", "ostrane.ini")}
        home = self.work / "home"
        data = home / "data" / "ostrane"
        p = self.player
        program = p.start(BUILD / "ostrane", root, self.work / "ostrane.log", home=home)
        p.name_form()
        p.wait(lambda: p.close_tour_box() or p.program.window(name="Ostrane", role="filler"), "the main window")
        p.close_tour_box()
        # A game begins: its journal is kept in the data folder.
        p.begin()
        p.pick()
        p.proposal()
        p.wait(lambda: (data / "partie.ret").exists(), "the journal in the data folder")
        p.close_tour_box()
        # The about box says where the files are.
        p.click(p.button("A propos"))
        _, content = p.window(name="A propos de Ostrane")
        said = [w.name for w in content if w.role == "label" and "dossier de données" in (w.name or "")]
        self.assertEqual(said, ["Les options, les meilleurs scores et la partie en cours sont gardés dans votre "
                                "dossier de données : %s" % data])
        p.shot("about_box_from_the_menu")
        p.click(find(content, role="push button", name="Fermer"))
        p.gone(name="A propos de Ostrane")
        p.click(p.button("Quitter"))
        p.answer_box("Oui", "Quitter le programme ?")
        self.assertEqual(program.wait_exit(20), 0)
        self.assertTrue((data / "Option.ret").exists())
        self.assertTrue(read(data / "Option.ret").startswith("Oui\r\n"))
        after = {name: (root / name).exists() for name in before}
        self.assertEqual(after, before, "nothing written in the root folder")


if __name__ == "__main__":
    parser = argparse.ArgumentParser()
    parser.add_argument("--build", default=str(BUILD))
    args, rest = parser.parse_known_args()
    BUILD = pathlib.Path(args.build).resolve()
    unittest.main(argv=[sys.argv[0]] + rest, verbosity=2, warnings="ignore")
