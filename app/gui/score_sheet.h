#pragma once
// "Feuille de partie": the game on paper, as a PDF or printed: its name and
// date, the board as the program draws it, each turn with its points and the
// running total, and, when the exact analysis worked the tops out, the top of
// each turn and the share of the top the game reached.

#include <QImage>
#include <QString>

#include "game/game_record.h"

class QPagedPaintDevice;

namespace ostrane::gui {

// Paints the sheet on a device of pages (a PDF writer, a printer); returns
// the number of pages.
int PaintScoreSheet(QPagedPaintDevice& device, const GameFile& game, const QImage& board);
// Writes the sheet to a PDF file; false and a French sentence on failure.
bool WriteScoreSheet(const QString& file, const GameFile& game, const QImage& board, QString& error);

}  // namespace ostrane::gui
