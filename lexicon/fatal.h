#pragma once
// The program's one way out when it cannot go on: an internal error or an
// index outside its table. The text is shown through the installed handler
// (a critical message box in the windowed program, standard error in the
// command-line tool) and the process ends. Tests install a handler that
// throws, so that the text can be checked.

#include <functional>
#include <string>
#include <string_view>

namespace ostrane {

using FatalHandler = std::function<void(const std::string& text)>;

// Installs the handler and returns the one it replaces.
FatalHandler SetFatalHandler(FatalHandler handler);

// Shows the text and ends the process with status 3. Never returns; a
// handler that throws leaves through its exception instead.
[[noreturn]] void Fatal(const std::string& text);

// An index outside its table: "Erreur d'exécution 9" with what and where.
[[noreturn]] void FatalIndex(std::string_view where, long index);

// The texts of the numbered internal errors.
std::string InternalError101Text();
std::string InternalError102Text(int errorNumber, std::string_view systemText);

}  // namespace ostrane
