#pragma once
// Contact sheets to look at the pictures as a player sees them: the boards
// with tiles laid on them, the faces enlarged and recoloured as the program
// does, the small pictures enlarged. Only for the eye; not program data.

#include <QString>

namespace ostrane::draw {

void WriteSheets(const QString& dir);

}  // namespace ostrane::draw
