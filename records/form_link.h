#pragma once
// What a side form may do to the form that opened it, without knowing it.

#include <functional>

namespace ostrane {

// Disables (false) or enables again (true) the main form. A side form that
// disables the main form enables it again when it closes. An empty function
// does nothing.
using EnableMainForm = std::function<void(bool enabled)>;

// The mouse pointer a form asks for.
enum class Pointer { Default, Hourglass };

}  // namespace ostrane
