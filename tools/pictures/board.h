#pragma once
// The three board pictures, 542 by 542: fifteen squares a side at a pitch of
// 36. Square (column, row) has its grid line at x = 36 * column + 1 and its
// face at x = 36 * column + 2 .. 36 * column + 36 (35 pixels, where a tile is
// painted); the same for y. The premium squares are drawn from the table of
// the game, each with its short label centred on the square's face.

#include <QImage>
#include <QString>

namespace ostrane::draw {

inline constexpr int kBoardSize = 542;
inline constexpr int kPitch = 36;
inline constexpr int kSquares = 15;
inline constexpr int kTileSize = 35;

// Premium code of a square: '0' plain, '1' letter x2, '2' letter x3,
// '3' word x2, '4' word x3.
char PremiumCode(int column, int row);

enum class BoardStyle { Classique, Chocolat, Relief };

QImage DrawBoard(BoardStyle style);

// Checks that each square of a board picture shows the colour of its premium:
// squares of one code look alike and squares of different codes differ.
void CheckBoard(const QImage& board, const QString& name);

}  // namespace ostrane::draw
