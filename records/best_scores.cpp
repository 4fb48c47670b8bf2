#include "records/best_scores.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <optional>

#include "lexicon/word_list.h"
#include "records/program.h"

namespace ostrane {
namespace {

constexpr const char* kCrLf = "\r\n";
constexpr int kItemsRead = 50;
constexpr int kHeadWidthStep = 5;     // the best-score step compares 5 characters...
constexpr int kHeadWidthTable = 4;    // ...the table 4: it shows scores up to 9999

// A number read the lenient way (as Val reads it): blanks anywhere are
// ignored, then a sign, digits, a decimal point and an exponent as far as
// they go; no number at all is 0.
double LenientNumber(std::string_view text) {
  std::string compact;
  for (char c : text)
    if (c != ' ' && c != '\t' && c != '\n' && c != '\r') compact += c;
  size_t pos = 0;
  std::string number;
  if (pos < compact.size() && (compact[pos] == '-' || compact[pos] == '+')) number += compact[pos++];
  while (pos < compact.size() && compact[pos] >= '0' && compact[pos] <= '9') number += compact[pos++];
  if (pos < compact.size() && compact[pos] == '.') {
    number += compact[pos++];
    while (pos < compact.size() && compact[pos] >= '0' && compact[pos] <= '9') number += compact[pos++];
  }
  if (pos < compact.size() && (compact[pos] == 'e' || compact[pos] == 'E' || compact[pos] == 'd' ||
                               compact[pos] == 'D')) {
    std::string exponent = "e";
    size_t e = pos + 1;
    if (e < compact.size() && (compact[e] == '-' || compact[e] == '+')) exponent += compact[e++];
    const size_t digits = e;
    while (e < compact.size() && compact[e] >= '0' && compact[e] <= '9') exponent += compact[e++];
    if (e > digits) number += exponent;
  }
  if (number.empty() || number == "-" || number == "+") return 0;
  return std::strtod(number.c_str(), nullptr);
}

// A whole number read the strict way (as a conversion to an integer reads
// it): blanks around, a sign, digits, perhaps a decimal part rounded half to
// even. Anything else is a type mismatch (error 13): no value.
std::optional<long> StrictInteger(std::string_view text) {
  size_t begin = 0, end = text.size();
  while (begin < end && (text[begin] == ' ' || text[begin] == '\t')) ++begin;
  while (end > begin && (text[end - 1] == ' ' || text[end - 1] == '\t')) --end;
  text = text.substr(begin, end - begin);
  size_t pos = 0;
  bool negative = false;
  if (pos < text.size() && (text[pos] == '-' || text[pos] == '+')) negative = text[pos++] == '-';
  const size_t digits = pos;
  long value = 0;
  while (pos < text.size() && text[pos] >= '0' && text[pos] <= '9') value = value * 10 + (text[pos++] - '0');
  if (pos == digits) return std::nullopt;
  if (pos < text.size() && (text[pos] == '.' || text[pos] == ',')) {
    const size_t fraction = ++pos;
    while (pos < text.size() && text[pos] >= '0' && text[pos] <= '9') ++pos;
    if (pos != text.size()) return std::nullopt;
    const double rest = std::stod("0." + std::string(text.substr(fraction, pos - fraction)) + "0");
    if (rest > 0.5 || (rest == 0.5 && value % 2 == 1)) ++value;
  }
  if (pos != text.size()) return std::nullopt;
  return negative ? -value : value;
}

// The text filled behind with blanks, at least one, to the width.
std::string FillBehind(std::string text, size_t width) {
  do text += ' ';
  while (text.size() < width);
  return text;
}

std::string TwoDigits(int value) {
  char text[16];
  std::snprintf(text, sizeof text, "%02d", value % 100 < 0 ? -(value % 100) : value % 100);
  return text;
}

std::string ThreeDigits(int value) {
  char text[16];
  std::snprintf(text, sizeof text, "%03d", value);
  return text;
}

// The lines of the file as read one by one, at most `max`: each ends at CR
// LF (or a lone CR or LF); a last line without its end counts too.
std::vector<std::string> ReadLines(std::string_view bytes, size_t max) {
  std::vector<std::string> lines;
  size_t pos = 0;
  while (pos < bytes.size() && lines.size() < max) {
    size_t end = pos;
    while (end < bytes.size() && bytes[end] != '\r' && bytes[end] != '\n') ++end;
    lines.emplace_back(bytes.substr(pos, end - pos));
    if (end < bytes.size() && bytes[end] == '\r') ++end;
    if (end < bytes.size() && bytes[end] == '\n') ++end;
    pos = end;
  }
  return lines;
}

// The message of a failed file operation: `readOnlyCode` for no access (75),
// `otherCode` with the system's text for anything else.
std::string FileErrorText(const FileError& error, int readOnlyCode, int otherCode) {
  const bool readOnly = error.number == kErrPathFileAccess;
  return "Erreur interne " + std::to_string(readOnly ? readOnlyCode : otherCode) + " - " +
         std::to_string(error.number) + "      " + kCrLf +
         (readOnly ? std::string("Fichier uniquement en lecture.") : error.text) + "      ";
}

}  // namespace

std::string BestScoreLine(int score, std::string_view nomPartie, const DateTime& when) {
  return FillBehind(std::to_string(score), 7) + FillBehind(Utf8ToCp1252(nomPartie), 18) + "   " +
         TwoDigits(when.day) + "/" + TwoDigits(when.month) + "/" + TwoDigits(when.year) + "   " +
         TwoDigits(when.hour) + ":" + TwoDigits(when.minute);
}

std::vector<std::string> ReadScoreItems(std::string_view bytes, size_t maxItems) {
  // Every comma and every line end closes an item, so a blank line is an
  // empty item. Blanks before an item are skipped. The file's last line end
  // closes its last item; a comma at the very end leaves one empty item more.
  std::vector<std::string> items;
  size_t pos = 0;
  bool afterComma = false;
  while (items.size() < maxItems) {
    while (pos < bytes.size() && (bytes[pos] == ' ' || bytes[pos] == '\t')) ++pos;
    if (pos >= bytes.size()) {
      if (afterComma) items.emplace_back();
      break;
    }
    size_t end = pos;
    while (end < bytes.size() && bytes[end] != ',' && bytes[end] != '\r' && bytes[end] != '\n') ++end;
    items.emplace_back(bytes.substr(pos, end - pos));
    afterComma = end < bytes.size() && bytes[end] == ',';
    if (end < bytes.size()) {
      if (bytes[end] == '\r' && end + 1 < bytes.size() && bytes[end + 1] == '\n') ++end;
      ++end;
    }
    pos = end;
  }
  return items;
}

bool ScoreQualifies(int score, const std::vector<std::string>& items) {
  for (const std::string& item : items)
    if (double(score) > std::fabs(LenientNumber(std::string_view(item).substr(0, kHeadWidthStep)))) return true;
  return items.size() < size_t(FrmBest::kTableSize);
}

ScoreStepResult TimScoreStep(Program& program, std::string_view lblPtsJoueur, TextFiles& files) {
  ScoreStepResult result;
  const auto file = program.BestScoresFile();

  // After a failure the step shows it, then opens the table all the same.
  auto failed = [&](const FileError& error) {
    program.StrMsg = FileErrorText(error, 104, 105);
    program.ShowMessage(kOkOnly);
    program.BestNouveau = 1;
    result.openBest = true;
    return result;
  };

  std::string bytes;
  std::vector<std::string> items;
  if (const FileError error = files.Read(file, bytes)) {
    if (error.number != kErrFileNotFound) return failed(error);  // no file: no item, the score enters
  } else {
    items = ReadScoreItems(bytes, kItemsRead);
  }

  const double points = std::fabs(LenientNumber(lblPtsJoueur));
  if (points > 32767.5) return failed(FileError::Of(kErrOverflow));
  program.ScoreCourant = int16_t(std::nearbyint(points));
  const int score = program.ScoreCourant;

  if (ScoreQualifies(score, items)) {
    program.StrMsg = "Vous avez réalisé un score de " + std::to_string(score) + " points." + kCrLf + kCrLf +
                     "Voulez-vous inscrire ce résultat dans le tableau      " + kCrLf +
                     "récapitulant les trente meilleurs scores ?";
    if (program.ShowMessage(kYesNo) == Answer::No) return result;
  } else {
    program.StrMsg = std::string("Désolé, mais votre score, bien que respectable, n'est       ") + kCrLf +
                     "pas suffisant pour figurer dans les trente meilleurs.";
    program.ShowMessage(BoxStyle{Buttons::Ok, Icon::Information, false});
    return result;
  }

  const std::string line = BestScoreLine(score, program.NomPartie, program.host.clock.Now());
  if (const FileError error = files.Append(file, line + kCrLf)) return failed(error);
  result.appended = true;
  program.BestNouveau = 1;
  result.openBest = true;
  return result;
}

std::vector<std::string> RankBestLines(const std::vector<std::string>& lines) {
  const size_t n = lines.size();
  std::vector<long> a(n, 0), b(n, 0);
  for (size_t i = 0; i < n; ++i) {
    // A head that is no number leaves its entry at 0 and the loop goes on.
    if (const auto head = StrictInteger(std::string_view(lines[i]).substr(0, kHeadWidthTable)))
      a[i] = b[i] = std::labs(*head);
  }
  std::vector<std::string> ranked;
  for (size_t pass = 0; pass < n; ++pass) {
    for (size_t i = 0; i < n; ++i)
      for (size_t j = 0; j < n; ++j)
        if (b[j] != a[i] && b[j] > a[i]) a[i] = 0;
    for (size_t i = 0; i < n; ++i) {
      if (a[i] != 0) {
        ranked.push_back(ThreeDigits(int(ranked.size()) + 1) + "  " + lines[i]);
        a[i] = b[i] = 0;
      } else {
        a[i] = b[i];
      }
    }
  }
  return ranked;
}

std::string PraiseText(int rank) {
  if (rank == 1)
    return std::string("SUPER SCORE !") + kCrLf + "Vous venez de réaliser le meilleur score du classement.      ";
  if (rank >= 2 && rank <= 5)
    return std::string("BRAVO !") + kCrLf +
           "Votre score figure parmi les cinq meilleurs parties du classement.      ";
  return std::string("Bravo !") + kCrLf + "Votre score figure à la " + std::to_string(rank) +
         " ème place dans la      " + kCrLf + "liste des trente meilleurs parties.";
}

FrmBest::FrmBest(Program& program, EnableMainForm enableMain, TextFiles& files)
    : program_(program), enableMain_(std::move(enableMain)), files_(files) {
  timDeb_ = program_.host.timers.Create([this] { TimDeb_Timer(); });
  timLigne_ = program_.host.timers.Create([this] { TimLigne_Timer(); });
  timLigneBis_ = program_.host.timers.Create([this] { TimLigneBis_Timer(); });
}

FrmBest::~FrmBest() = default;

void FrmBest::Form_Load() {
  listeChargee_ = 0;
  pasDescente_ = 0;
  view_.pointer = Pointer::Hourglass;
  timDeb_->SetInterval(100);
  view_.visible = true;
}

void FrmBest::ShowFileError(const FileError& error) {
  program_.StrMsg = FileErrorText(error, 111, 112);
  program_.ShowMessage(kOkOnly);
}

void FrmBest::TimDeb_Timer() {
  timDeb_->SetInterval(0);
  if (listeChargee_ || view_.unloaded) return;
  const auto file = program_.BestScoresFile();

  std::string bytes;
  FileError error = files_.Read(file, bytes);
  if (error.number == kErrFileNotFound) {
    // No table yet: an empty file is made and read again.
    error = files_.Append(file, "");
    if (!error) {
      error = files_.Read(file, bytes);
      // Made but still not found: the folder itself is amiss.
      if (error.number == kErrFileNotFound) error = FileError::Of(kErrPathNotFound);
    }
  }
  std::vector<std::string> texts;
  nbLignes_ = 0;
  if (error) {
    ShowFileError(error);
  } else {
    const std::vector<std::string> lines = ReadLines(bytes, kMaxLinesRead);
    nbLignes_ = int16_t(lines.size());
    texts = RankBestLines(lines);

    view_.LstSco.clear();
    for (int rank = kTableSize; rank >= 1; --rank) {
      if (size_t(rank) > texts.size()) continue;
      const std::string& text = texts[size_t(rank) - 1];
      view_.LstSco.insert(view_.LstSco.begin(), Cp1252ToUtf8(text));
      const auto shown = StrictInteger(std::string_view(text).substr(5, 4));
      if (shown && *shown == program_.ScoreCourant) rangScore_ = int16_t(rank);
    }

    if (nbLignes_ >= kTableSize + 1) {
      // The only place where a game leaves the table. Ranks without an entry
      // give empty lines.
      std::string kept;
      for (int rank = 1; rank <= kTableSize; ++rank) {
        const std::string text = size_t(rank) <= texts.size() ? texts[size_t(rank) - 1] : std::string();
        if (rank > 1) kept += kCrLf;
        kept += text.size() > size_t(kBestLineWidth) ? text.substr(text.size() - kBestLineWidth) : text;
      }
      kept += kCrLf;
      if (const FileError rewrite = files_.Replace(file, kept)) ShowFileError(rewrite);
    }
  }

  listeChargee_ = -1;
  view_.LstScoVisible = true;
  view_.pointer = Pointer::Default;
  Changed();
  if (nbLignes_ >= 1) {
    view_.CmdEffEnabled = true;
  } else {
    view_.CmdEffEnabled = false;
    program_.StrMsg = "Aucune partie n'est actuellement enregistrée.      ";
    program_.ShowMessage(kOkOnly);
  }
  if (program_.BestNouveau == 1) {
    view_.visible = true;
    view_.focus = Focus::LstSco;
    timLigne_->SetInterval(10);
  }
  Changed();
}

void FrmBest::TimLigne_Timer() {
  timLigne_->SetInterval(0);
  view_.ListIndex = view_.LstSco.empty() ? -1 : 0;
  timLigneBis_->SetInterval(10);
  Changed();
}

void FrmBest::TimLigneBis_Timer() {
  ++pasDescente_;
  if (pasDescente_ <= rangScore_ - 1) {
    if (view_.ListIndex + 1 < int(view_.LstSco.size())) ++view_.ListIndex;
    Changed();
    return;
  }
  timLigneBis_->SetInterval(0);
  view_.focus = Focus::Foc;
  Changed();
  program_.StrMsg = PraiseText(rangScore_);
  if (nbLignes_ > 1) program_.ShowMessage(kOkOnly);
  program_.BestNouveau = 0;
}

void FrmBest::CmdEff_Click() {
  if (!view_.CmdEffEnabled || view_.unloaded) return;
  program_.StrMsg = "Voulez-vous vraiment effacer la liste des meilleurs scores ?";
  if (program_.ShowMessage(kYesNo) == Answer::No) return;
  view_.LstSco.clear();
  view_.ListIndex = -1;
  const FileError error = files_.Remove(program_.BestScoresFile());
  if (error && error.number != kErrFileNotFound) {
    program_.StrMsg = FileErrorText(error, 113, 114);
    program_.ShowMessage(kOkOnly);
    return;
  }
  view_.CmdEffEnabled = false;
  nbLignes_ = 0;
}

void FrmBest::Form_Unload() {
  if (view_.unloaded) return;
  timDeb_->SetInterval(0);
  timLigne_->SetInterval(0);
  timLigneBis_->SetInterval(0);
  view_.unloaded = true;
  view_.visible = false;
  program_.BestNouveau = -1;
  if (enableMain_) enableMain_(true);  // last: the opener may end this form
}

}  // namespace ostrane
