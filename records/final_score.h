#pragma once
// FrmFini: the small form that shows the final score once a game has run
// out. Its closing is what arms the best-score step of the main form.

#include <functional>
#include <string>
#include <string_view>

#include "records/form_link.h"

namespace ostrane {

class FrmFini {
 public:
  struct View {
    std::string LblScore;  // the score label, "N points"
    Pointer pointer = Pointer::Default;
    bool unloaded = false;
  };

  // `onUnload` is the main form's part of the closing: enable CmdGame and
  // set TimScore to 200 ms.
  FrmFini(std::string_view lblPtsJoueur, std::function<void()> onUnload)
      : lblPtsJoueur_(lblPtsJoueur), onUnload_(std::move(onUnload)) {}

  // Centred on the screen by the window. The label takes the score.
  void Form_Load() {
    view_.LblScore = lblPtsJoueur_ + " points";
    AffichageScore();
  }
  void AffichageScore() { view_.pointer = Pointer::Default; }
  void CmdQuit_Click() { Form_Unload(); }
  void Foc_Click() { Form_Unload(); }
  void Form_Unload() {
    if (view_.unloaded) return;
    view_.unloaded = true;
    if (onUnload_) onUnload_();
  }

  const View& view() const { return view_; }

 private:
  std::string lblPtsJoueur_;
  std::function<void()> onUnload_;
  View view_;
};

}  // namespace ostrane
