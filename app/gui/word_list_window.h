#pragma once
// "Liste de mots": which list the program plays with (the embedded one, or
// the player's file with its word count), the list chosen for the next game
// when it differs, and the ways to choose a file or to go back to the
// embedded list.

#include <QDialog>

#include <functional>

class QLabel;
class QPushButton;

namespace ostrane {
class WordLists;
}

namespace ostrane::gui {

class WordListWindow : public QDialog {
  Q_OBJECT
 public:
  WordListWindow(QWidget* parent, WordLists& lists);

  void Refresh();
  // The choice of a file (asked in a file dialog), or of the embedded list.
  void ChooseFile();
  void ChooseEmbedded();
  // The same with the file given: false, and the player told why, when it
  // cannot serve.
  bool ChooseFrom(const QString& file);

  QLabel* InUseLabel() const { return inUse_; }
  QLabel* ChosenLabel() const { return chosen_; }
  QPushButton* FileButton() const { return file_; }
  QPushButton* EmbeddedButton() const { return embedded_; }

  // Puts the chosen list in service at once when no game has begun (the
  // window then closes, and the program says so); true when it does.
  std::function<bool()> applyNow;
  // Tells the player something (a message box of the program).
  std::function<void(const QString& text)> tell;

 private:
  void Chosen();

  WordLists& lists_;
  QLabel* inUse_;
  QLabel* chosen_;
  QPushButton* file_;
  QPushButton* embedded_;
};

}  // namespace ostrane::gui
