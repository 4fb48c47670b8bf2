#pragma once
// The mail link of the contact form: the message is handed to the system's
// mail program as a "mailto:" address. Plain C++.

#include <string>
#include <string_view>

#include "records/host.h"

namespace ostrane {

// The text's bytes in code page 1252, one by one: "0".."9", "A".."Z" and
// "a".."z" stay; any other byte becomes "%" and its value in hexadecimal
// (upper-case digits, "%0" and one digit below 16).
std::string SubEncodeUrl(std::string_view strTexte);

// "mailto:?" followed by "to=" item "&" for each non-empty item of strA
// split on ";", then "cc=" and "bcc=" for the other two lists, less the last
// character; then "&Subject=" and the subject when one is given, and
// "&Body=" and the encoded body when one is given.
std::string MailLink(std::string_view strA, std::string_view strCc, std::string_view strCci,
                     std::string_view strSujet, std::string_view strCorps);

// Builds the link and opens it; failures are kept quiet.
void SubOuvreCourrier(Shell& shell, std::string_view strA, std::string_view strCc, std::string_view strCci,
                      std::string_view strSujet, std::string_view strCorps);

}  // namespace ostrane
