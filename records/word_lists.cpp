#include "records/word_lists.h"

#include "records/game_journal.h"
#include "records/program.h"
#include "records/settings.h"

namespace ostrane {
namespace {

std::string Plural(int64_t count, const char* one, const char* many) {
  return FrenchCount(count) + " " + (count > 1 ? many : one);
}

std::string FileName(const std::filesystem::path& file) { return "« " + file.filename().string() + " »"; }

}  // namespace

std::string DescribeWordList(const WordListInUse& list) {
  if (list.Embedded()) return "la liste intégrée (" + Plural(list.words, "mot", "mots") + ")";
  std::string text = "la liste " + FileName(list.file) + " (" + Plural(list.words, "mot", "mots");
  if (list.skipped > 0) text += ", " + Plural(list.skipped, "ligne ignorée", "lignes ignorées");
  return text + ")";
}

WordLists::WordLists(Program& program, Lexicon& lexicon, Lexicon::Reader embedded, std::filesystem::path cacheFolder)
    : program_(program), lexicon_(lexicon), embedded_(std::move(embedded)), cacheFolder_(std::move(cacheFolder)) {}

Lexicon::Reader WordLists::StartReader() {
  told_.clear();
  program_.wordList = WordListInUse{};
  const std::string& file = program_.settings.wordList;
  if (!file.empty()) {
    std::string error;
    ready_ = CompiledWordList::Open(file, cacheFolder_, error);
    if (!ready_) {
      told_ = error + "\nLa liste intégrée reste en service.";
    } else {
      program_.wordList = ready_->Info();
      const CompiledWordList* list = &*ready_;
      return [this, list](std::string_view name) {
        if (name == Lexicon::kDefinitions) return embedded_(name);
        return std::string(list->Text(name));
      };
    }
  }
  return embedded_;
}

void WordLists::Started() {
  if (ready_) lexicon_.SetGraph(ready_->Graph());  // read back with the list: not made again
  ready_.reset();
  if (program_.wordList.Embedded()) program_.wordList.words = lexicon_.WordCount();
}

std::string WordLists::InUse() const { return DescribeWordList(program_.wordList); }

std::string WordLists::Chosen() const {
  const std::string& file = program_.settings.wordList;
  if (file.empty()) return "la liste intégrée";
  if (!chosen_.Embedded() && chosen_.file == std::filesystem::path(file)) return DescribeWordList(chosen_);
  if (!program_.wordList.Embedded() && program_.wordList.file == std::filesystem::path(file))
    return DescribeWordList(program_.wordList);
  return "la liste " + FileName(file);
}

bool WordLists::ChoiceWaits() const {
  const std::string& chosen = program_.settings.wordList;
  return chosen.empty() ? !program_.wordList.Embedded() : program_.wordList.file != std::filesystem::path(chosen);
}

bool WordLists::Choose(const std::string& file) {
  told_.clear();
  std::string path;
  if (!file.empty()) {
    std::string error;
    const std::optional<CompiledWordList> list = CompiledWordList::Open(file, cacheFolder_, error);
    if (!list) {
      told_ = error + "\nLa liste en service ne change pas.";
      return false;
    }
    path = list->Info().file.string();
    chosen_ = list->Info();
  }
  program_.settings.wordList = path;
  WriteSettings(program_.SettingsFile(), program_.settings);
  return true;
}

void WordLists::BeforeNewGame() {
  told_.clear();
  const std::string& file = program_.settings.wordList;
  if (file.empty()) {
    if (!program_.wordList.Embedded()) LoadEmbedded();
    return;
  }
  if (!Load(file)) {
    told_ += "\nLa liste en service reste " + InUse() + ".";
  }
}

void WordLists::ForTakenUpGame(const SavedGame& game) {
  told_.clear();
  if (game.wordListFile.empty()) {
    if (!program_.wordList.Embedded()) LoadEmbedded();
    return;
  }
  if (!program_.wordList.Embedded() && program_.wordList.file == std::filesystem::path(game.wordListFile) &&
      program_.wordList.key == game.wordListKey)
    return;
  const std::string was = "La partie « " + game.NomPartie + " » a été jouée avec la liste de mots « " +
                          std::filesystem::path(game.wordListFile).filename().string() + " »";
  if (!Load(game.wordListFile)) {
    told_ = was + ", qui ne peut plus servir :\n" + told_ + "\nElle continue avec " + InUse() + ".";
    return;
  }
  if (program_.wordList.key != game.wordListKey)
    told_ = was + ", qui a changé depuis : elle continue avec la liste telle qu'elle est maintenant, " +
            InUse() + ".";
}

bool WordLists::Load(const std::string& file) {
  // Read again each time (its compiled copy makes that quick): the file may
  // have changed since it was chosen.
  std::string error;
  std::optional<CompiledWordList> list = CompiledWordList::Open(file, cacheFolder_, error);
  if (!list) {
    told_ = error;
    return false;
  }
  if (!program_.wordList.Embedded() && program_.wordList.file == list->Info().file &&
      program_.wordList.key == list->Info().key)
    return true;  // in the lexicon already
  list->LoadInto(lexicon_, embedded_);
  program_.wordList = list->Info();
  return true;
}

void WordLists::LoadEmbedded() {
  lexicon_.LoadAll(embedded_);
  program_.wordList = WordListInUse{};
  program_.wordList.words = lexicon_.WordCount();
}

}  // namespace ostrane
