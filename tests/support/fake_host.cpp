#include "tests/support/fake_host.h"

#include <algorithm>

namespace ostrane::test {

Answer AnsweringBoxes::MsgBox(const std::string& text, BoxStyle style) {
  shown.push_back({text, style});
  if (style.buttons == Buttons::Ok) return Answer::Ok;
  if (onQuestion) return onQuestion(text, style);
  if (answers.empty()) return Answer::Yes;
  const Answer answer = answers.front();
  answers.pop_front();
  return answer;
}

std::vector<std::string> AnsweringBoxes::Texts() const {
  std::vector<std::string> texts;
  for (const ShownMessage& box : shown) texts.push_back(box.text);
  return texts;
}

bool AnsweringBoxes::Showed(const std::string& text) const {
  return std::any_of(shown.begin(), shown.end(), [&](const ShownMessage& box) { return box.text == text; });
}

}  // namespace ostrane::test
