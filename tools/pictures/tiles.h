#pragma once
// Tile faces, 35 by 35, opaque. The program recolours a face by darkness:
// every pixel of the top-left 33 by 33 whose red + green + blue is below 528
// takes the painter's colour, and the last two rows and columns are left as
// drawn. So a face keeps its ground light everywhere in that area and only
// the letter and its value dark; its shadow edge lies in the last two rows
// and columns.

#include <QColor>
#include <QImage>
#include <QString>

namespace ostrane::draw {

inline constexpr int kFaceSize = 35;
inline constexpr int kTestedSize = 33;  // the part of a face that is recoloured

// Points of a letter 'a'..'z'.
int LetterPoints(char letter);

// let_a .. let_z: the letter large and dark, its value in the bottom-right
// corner.
QImage DrawLetterFace(char letter);

// jok_a .. jok_z: a blank standing for a letter: the letter dark, no value, a
// small dark star in the bottom-right corner (it scores nothing).
QImage DrawJokerFace(char letter);

// let_blank: a blank with no letter yet: the face with a "?" pressed into it,
// drawn in light tones only, so recolouring would change nothing.
QImage DrawBlankFace();

// slot_empty: a free place of the tile picker, a hollow in the panel.
QImage DrawEmptySlot();

// ostrane: the application icon, 64 by 64, a tile "O" on a clear ground.
QImage DrawAppIcon();

// The same icon drawn at pixels by pixels for the desktop's icon theme, and
// as vector art (the letters as outlines, so no font is needed to show it).
QImage DrawAppIconAt(int pixels);
QString AppIconSvg();

// What the program's painters do to a face.
QImage Recoloured(const QImage& face, const QColor& colour);

}  // namespace ostrane::draw
