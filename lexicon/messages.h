#pragma once
// Every message and question of the program goes through one box, titled
// with the program's name. The rules ask; the window (or a test) answers.

#include <string>

namespace ostrane {

enum class Answer : int { Ok = 1, Yes = 6, No = 7 };
enum class Buttons { Ok, YesNo };
enum class Icon { None, Critical, Question, Warning, Information };

struct BoxStyle {
  Buttons buttons = Buttons::Ok;
  Icon icon = Icon::None;
  bool defaultNo = false;  // the second button is the default
};

inline constexpr BoxStyle kYesNoDefaultNo{Buttons::YesNo, Icon::None, true};
inline constexpr BoxStyle kYesNo{Buttons::YesNo, Icon::None, false};
inline constexpr BoxStyle kOkOnly{Buttons::Ok, Icon::None, false};

class MessageBoxes {
 public:
  virtual ~MessageBoxes() = default;
  // Shows the text and returns the answer. Only No is ever tested: anything
  // else counts as Yes.
  virtual Answer MsgBox(const std::string& text, BoxStyle style) = 0;
};

}  // namespace ostrane
