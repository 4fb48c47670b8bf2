#pragma once
// The state of the controls of a form, held by the form's model. A window
// shows these values and forwards the user's actions; it decides nothing.
// Field names follow the controls' own properties: CmdValider.enabled,
// LblIndic.text, PicGamer[i].left. Texts are UTF-8 and a line break is CR LF;
// the window converts when it shows them.

#include <cstdint>
#include <string>

namespace ostrane {

// A colour: one the form gives explicitly, or the system colour of button
// text, or whatever the control was designed with.
struct Color {
  enum class Kind : uint8_t { Designed, Rgb, ButtonText };
  Kind kind = Kind::Designed;
  uint8_t r = 0, g = 0, b = 0;

  static constexpr Color Rgb(uint8_t red, uint8_t green, uint8_t blue) {
    return Color{Kind::Rgb, red, green, blue};
  }
  static constexpr Color Grey(uint8_t level) { return Rgb(level, level, level); }
  static constexpr Color ButtonText() { return Color{Kind::ButtonText, 0, 0, 0}; }
  bool operator==(const Color&) const = default;
};

struct Control {
  bool enabled = true;
  bool visible = true;
};

struct Button : Control {
  std::string caption;
  std::string tip;
  bool isDefault = false;  // Enter presses it
};

struct Label : Control {
  std::string text;
  Color foreColor;
  Color backColor;
  bool bold = false;
};

struct TextBox : Control {
  std::string text;
  Color foreColor;
  Color backColor;
};

struct CheckBox : Control {
  std::string caption;
  bool value = false;
};

struct OptionButton : Control {
  std::string caption;
  bool value = false;
};

struct Frame : Control {
  std::string caption;
  int left = 0, top = 0, width = 0, height = 0;
};

// A line drawn over the board, in the board's own pixels.
struct Line {
  bool visible = false;
  int x1 = 0, y1 = 0, x2 = 0, y2 = 0;
};

// What a tile (or the scratch picture PicTemp) shows: one of the face
// pictures, as it is or with its dark pixels recoloured.
//  ImgLet 0..25 the letters a..z, 26 the blank with no letter;
//  ImgJok 0..26 the blank standing for A..Z (index = letter code - 65).
struct TileFace {
  enum class Picture : uint8_t { None, ImgLet, ImgJok };
  enum class Tint : uint8_t {
    None,     // the picture as it is
    Blue,     // 0, 75, 255: an ordinary tile laid and not yet validated
    Black,    // 0, 0, 0: an ordinary tile on the rack
    DarkRed,  // 148, 0, 0: a blank with a letter, on the board
  };
  Picture picture = Picture::None;
  int index = 0;
  Tint tint = Tint::None;
  bool operator==(const TileFace&) const = default;
};

// The colour a tint gives to dark pixels (sum of the components below 528,
// in the top-left 33 x 33 pixels of the face).
inline constexpr Color TintColor(TileFace::Tint tint) {
  switch (tint) {
    case TileFace::Tint::Blue:
      return Color::Rgb(0, 75, 255);
    case TileFace::Tint::Black:
      return Color::Rgb(0, 0, 0);
    case TileFace::Tint::DarkRed:
      return Color::Rgb(148, 0, 0);
    default:
      return Color{};
  }
}
inline constexpr int kDarkThreshold = 528;

// One of the seven tiles PicGamer(0..6), in window coordinates.
struct Tile : Control {
  std::string Tag;  // "", a lower-case letter, "?", an upper-case letter, or "Nul"
  int left = 0, top = 0;
  TileFace face;
  int zOrder = 0;  // a higher value is drawn above
};

}  // namespace ostrane
