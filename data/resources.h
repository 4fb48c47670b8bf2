#pragma once
// Named resources carried inside the program.

#include <string>
#include <string_view>

namespace ostrane {

// The bytes of the resource with this name ("DICO", "DIC10", "M23",
// "sons/101.wav"...). Empty when there is no such resource.
std::string ReadResource(std::string_view name);

}  // namespace ostrane
