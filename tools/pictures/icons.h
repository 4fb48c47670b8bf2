#pragma once
// The small pictures: the red arrow of a proposal, the waiting hourglass,
// the sound button and the tick box. All have a transparent background
// except the tick box, which is opaque.

#include <QImage>

namespace ostrane::draw {

inline constexpr int kArrowSize = 41;
inline constexpr int kWaitSize = 48;
inline constexpr int kSoundSize = 24;
inline constexpr int kTickSize = 13;

// arrow_h (across, pointing right) and arrow_v (down): bright red with a
// white outline, centred in a 41 by 41 transparent picture.
QImage DrawArrow(bool down);

// wait_1 .. wait_3: an hourglass whose sand runs down, phase 1 to 3.
QImage DrawWait(int phase);

// sound_on (a loudspeaker with waves) and sound_off (without waves, crossed).
QImage DrawSound(bool on);

// tick_off and tick_on: the box of the short-word definitions.
QImage DrawTick(bool ticked);

}  // namespace ostrane::draw
