#include "app/gui/rich_text.h"

#include <QDir>
#include <QFile>
#include <QList>
#include <QStringDecoder>

#include <cctype>

#include <vector>

#include "data/resources.h"

namespace ostrane::gui {
namespace {

struct CharState {
  bool bold = false;
  bool italic = false;
  int colour = 0;      // index in the colour table, 0 the default
  int halfPoints = 0;  // 0: the document's size
  bool skip = false;   // a destination that is not text (font table...)
  int ucSkip = 1;      // characters that stand in for a \u character
};

struct ParaState {
  int firstIndent = 0, leftIndent = 0, spaceAfter = 0, spaceBefore = 0;  // twips
};

QChar Cp1252(int byte) {
  const char c = char(byte);
  auto decode = QStringDecoder("windows-1252");
  if (!decode.isValid()) return QChar(QLatin1Char(c));
  const QString s = decode(QByteArrayView(&c, 1));
  return s.isEmpty() ? QChar(QLatin1Char(c)) : s.at(0);
}

class Converter {
 public:
  explicit Converter(const QByteArray& rtf) : in_(rtf) {}

  QString Run() {
    while (at_ < in_.size()) {
      const char c = in_[at_];
      if (c == '{') {
        stack_.push_back(state_);
        ++at_;
        if (Peek("\\*")) state_.skip = true;
      } else if (c == '}') {
        CloseSpan();
        if (!stack_.empty()) {
          state_ = stack_.back();
          stack_.pop_back();
        }
        if (!state_.skip) readingColours_ = false;
        ++at_;
      } else if (c == '\\') {
        ++at_;
        ControlWord();
      } else if (c == '\r' || c == '\n') {
        ++at_;
      } else {
        Text(QChar(QLatin1Char(c)));
        ++at_;
      }
    }
    EndParagraph(false);
    return html_;
  }

 private:
  bool Peek(const char* s) const { return in_.mid(at_).startsWith(s); }

  void ControlWord() {
    if (at_ >= in_.size()) return;
    const char c = in_[at_];
    if (!std::isalpha(static_cast<unsigned char>(c))) {
      ++at_;
      switch (c) {
        case '\'': {
          const int byte = in_.mid(at_, 2).toInt(nullptr, 16);
          at_ += 2;
          if (pendingSkip_ > 0) {
            --pendingSkip_;
            return;
          }
          Text(Cp1252(byte));
          return;
        }
        case '~': Text(QChar(0x00A0)); return;
        case '-': return;                        // optional hyphen
        case '_': Text(QChar(0x2011)); return;  // non-breaking hyphen
        case '*': state_.skip = true; return;
        default: Text(QChar(QLatin1Char(c))); return;  // \\ \{ \}
      }
    }
    const qsizetype start = at_;
    while (at_ < in_.size() && std::isalpha(static_cast<unsigned char>(in_[at_]))) ++at_;
    const QByteArray word = in_.mid(start, at_ - start);
    bool hasValue = false;
    int value = 0;
    const qsizetype numStart = at_;
    if (at_ < in_.size() && (in_[at_] == '-' || std::isdigit(static_cast<unsigned char>(in_[at_])))) {
      ++at_;
      while (at_ < in_.size() && std::isdigit(static_cast<unsigned char>(in_[at_]))) ++at_;
      value = in_.mid(numStart, at_ - numStart).toInt();
      hasValue = true;
    }
    if (at_ < in_.size() && in_[at_] == ' ') ++at_;  // the delimiter belongs to the word
    Apply(word, hasValue, value);
  }

  void Apply(const QByteArray& word, bool hasValue, int value) {
    static const QList<QByteArray> kDestinations = {"fonttbl", "stylesheet", "info", "pict", "header", "footer"};
    if (word == "colortbl") {
      state_.skip = true;
      readingColours_ = true;
      colours_.clear();
      return;
    }
    if (readingColours_ && state_.skip) {
      if (word == "red") red_ = value, sawComponent_ = true;
      if (word == "green") green_ = value, sawComponent_ = true;
      if (word == "blue") blue_ = value, sawComponent_ = true;
      return;
    }
    if (kDestinations.contains(word)) {
      state_.skip = true;
      return;
    }
    if (state_.skip) return;
    if (word == "par") {
      EndParagraph(true);
    } else if (word == "line") {
      Raw(QStringLiteral("<br>"));
    } else if (word == "tab") {
      Raw(QStringLiteral("&nbsp;&nbsp;&nbsp;"));
    } else if (word == "pard") {
      para_ = ParaState{};
    } else if (word == "fi") {
      para_.firstIndent = value;
    } else if (word == "li") {
      para_.leftIndent = value;
    } else if (word == "sa") {
      para_.spaceAfter = value;
    } else if (word == "sb") {
      para_.spaceBefore = value;
    } else if (word == "b") {
      SetChar([&] { state_.bold = !hasValue || value != 0; });
    } else if (word == "i") {
      SetChar([&] { state_.italic = !hasValue || value != 0; });
    } else if (word == "cf") {
      SetChar([&] { state_.colour = value; });
    } else if (word == "fs") {
      SetChar([&] { state_.halfPoints = value; });
    } else if (word == "plain") {
      SetChar([&] { state_.bold = state_.italic = false, state_.colour = 0, state_.halfPoints = 0; });
    } else if (word == "uc") {
      state_.ucSkip = value;
    } else if (word == "u") {
      Text(QChar(char16_t(value < 0 ? value + 65536 : value)));
      pendingSkip_ = state_.ucSkip;
    } else if (word == "emdash") {
      Text(QChar(0x2014));
    } else if (word == "endash") {
      Text(QChar(0x2013));
    } else if (word == "bullet") {
      Text(QChar(0x2022));
    }
  }

  template <typename F>
  void SetChar(F change) {
    CloseSpan();
    change();
  }

  void Text(QChar ch) {
    if (readingColours_ && state_.skip) {
      if (ch == QLatin1Char(';')) {
        // An entry with no component is the automatic colour.
        colours_ << (sawComponent_ ? QStringLiteral("#%1%2%3")
                                         .arg(red_, 2, 16, QLatin1Char('0'))
                                         .arg(green_, 2, 16, QLatin1Char('0'))
                                         .arg(blue_, 2, 16, QLatin1Char('0'))
                                   : QString());
        red_ = green_ = blue_ = 0;
        sawComponent_ = false;
      }
      return;
    }
    if (state_.skip) return;
    if (pendingSkip_ > 0) {
      --pendingSkip_;
      return;
    }
    if (ch == QLatin1Char(' ') && !paragraphOpen_) return;
    OpenSpan();
    if (ch == QLatin1Char('<'))
      html_ += QStringLiteral("&lt;");
    else if (ch == QLatin1Char('>'))
      html_ += QStringLiteral("&gt;");
    else if (ch == QLatin1Char('&'))
      html_ += QStringLiteral("&amp;");
    else
      html_ += ch;
  }

  void Raw(const QString& s) {
    OpenSpan();
    html_ += s;
  }

  void OpenParagraph() {
    if (paragraphOpen_) return;
    const double px = 1.0 / 15.0;
    html_ += QStringLiteral("<p style=\"margin-top:%1px; margin-bottom:%2px; margin-left:%3px; text-indent:%4px;\">")
                 .arg(int(para_.spaceBefore * px))
                 .arg(int(para_.spaceAfter * px))
                 .arg(int(para_.leftIndent * px))
                 .arg(int(para_.firstIndent * px));
    paragraphOpen_ = true;
  }

  void OpenSpan() {
    OpenParagraph();
    if (spanOpen_) return;
    QString style;
    if (state_.bold) style += QStringLiteral("font-weight:bold;");
    if (state_.italic) style += QStringLiteral("font-style:italic;");
    if (state_.colour > 0 && state_.colour < colours_.size() && !colours_[state_.colour].isEmpty())
      style += QStringLiteral("color:%1;").arg(colours_[state_.colour]);
    if (state_.halfPoints > 0) style += QStringLiteral("font-size:%1pt;").arg(state_.halfPoints / 2.0);
    html_ += QStringLiteral("<span style=\"%1\">").arg(style);
    spanOpen_ = true;
  }

  void CloseSpan() {
    if (!spanOpen_) return;
    html_ += QStringLiteral("</span>");
    spanOpen_ = false;
  }

  void EndParagraph(bool always) {
    CloseSpan();
    if (!paragraphOpen_ && always) OpenParagraph();
    if (paragraphOpen_) html_ += QStringLiteral("</p>");
    paragraphOpen_ = false;
  }

  const QByteArray in_;
  qsizetype at_ = 0;
  std::vector<CharState> stack_;
  CharState state_;
  ParaState para_;
  QString html_;
  QStringList colours_{QString()};
  int red_ = 0, green_ = 0, blue_ = 0;
  bool readingColours_ = false;
  bool sawComponent_ = false;
  bool paragraphOpen_ = false;
  bool spanOpen_ = false;
  int pendingSkip_ = 0;
};

}  // namespace

QString RtfToHtml(const QByteArray& rtf) {
  if (!rtf.trimmed().startsWith("{\\rtf")) {
    return QStringLiteral("<p>") + QString::fromLocal8Bit(rtf).toHtmlEscaped().replace(QLatin1Char('\n'), QStringLiteral("<br>")) +
           QStringLiteral("</p>");
  }
  return Converter(rtf).Run();
}

QByteArray ReadDocument(const QString& startDirectory, const QString& name) {
  QFile file(QDir(startDirectory).filePath(name));
  if (file.open(QIODevice::ReadOnly)) return file.readAll();
  const std::string bytes = ReadResource("help/" + name.toStdString());
  return QByteArray(bytes.data(), qsizetype(bytes.size()));
}

}  // namespace ostrane::gui
