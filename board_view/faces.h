#pragma once
// The pictures of the board view: the three board images, the tile faces
// (ImgLet, ImgJok), the arrow of a proposal, the waiting pictures, the sound
// button's pictures, the tick box and the picker's empty place. They are
// read from the program's resources (":/pictures/<name>.png"); a picture
// that is not there is drawn in code, so the program always has a face of
// the right size to show.
//
// On a high-density screen the set is the one drawn at twice the resolution
// ("<name>@2x.png"): each picture has twice the pixels each way and a device
// pixel ratio of 2, so it covers the same logical pixels and stays sharp.

#include <QImage>
#include <QString>

#include <array>

namespace ostrane::view {

inline constexpr int kFaceSize = 35;
inline constexpr int kBoardImageSize = 542;
inline constexpr int kArrowSize = 41;

// Points of a letter 'a'..'z' in the French edition (0 for anything else).
int LetterPoints(char letter);

class FaceSet {
 public:
  // Loads every picture (resources first, drawings in code otherwise), at
  // scale 1 or 2 (device pixels to the logical pixel).
  explicit FaceSet(int scale = 1);

  // The shared set of the program, loaded on first use: at scale 2 when a
  // screen of the application has a device pixel ratio above 1.
  static const FaceSet& Shared();

  int Scale() const { return scale_; }

  // ImgLet(0) to ImgLet(25): "a" to "z"; ImgLet(26): the blank with no letter.
  const QImage& ImgLet(int index) const;
  // ImgJok(0) to ImgJok(26): a blank standing for "A" + index.
  const QImage& ImgJok(int index) const;
  // Plateau2, Plateau3, Plateau4: "Classique", "Chocolat", "Relief".
  const QImage& Plateau(int number) const;

  const QImage& ArrowHorizontal() const { return arrowH_; }
  const QImage& ArrowVertical() const { return arrowV_; }
  const QImage& Wait(int phase) const;  // Iabc(1) to Iabc(3)
  const QImage& SoundOn() const { return soundOn_; }   // ImgHP1
  const QImage& SoundOff() const { return soundOff_; }  // ImgHP2
  const QImage& TickOn() const { return tickOn_; }
  const QImage& TickOff() const { return tickOff_; }
  const QImage& EmptySlot() const { return slotEmpty_; }  // ImgMod(0)
  const QImage& Icon() const { return icon_; }

  // How many pictures came from the resources (the rest were drawn here).
  int FromResources() const { return fromResources_; }

 private:
  QImage Load(const QString& name, const QImage& fallback, QImage::Format format);

  int scale_;
  std::array<QImage, 27> let_;
  std::array<QImage, 27> jok_;
  std::array<QImage, 3> plateau_;
  QImage arrowH_, arrowV_;
  std::array<QImage, 3> wait_;
  QImage soundOn_, soundOff_, tickOn_, tickOff_, slotEmpty_, icon_;
  int fromResources_ = 0;
};

// Drawings used when a picture is missing from the resources.
QImage DrawProvisionalLetter(char letter);  // 'a'..'z'
QImage DrawProvisionalJoker(char letter);   // 'A'..'Z'
QImage DrawProvisionalBlank();
QImage DrawProvisionalBoard(int number);  // 2, 3, 4
QImage DrawProvisionalArrow(bool vertical);

}  // namespace ostrane::view
