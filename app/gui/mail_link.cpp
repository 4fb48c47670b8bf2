#include "app/gui/mail_link.h"

#include "lexicon/word_list.h"

namespace ostrane {

std::string SubEncodeUrl(std::string_view strTexte) {
  static constexpr char kHex[] = "0123456789ABCDEF";
  const std::string bytes = Utf8ToCp1252(strTexte);
  std::string out;
  out.reserve(bytes.size() * 3);
  for (const char c : bytes) {
    const auto b = static_cast<unsigned char>(c);
    if ((b >= '0' && b <= '9') || (b >= 'A' && b <= 'Z') || (b >= 'a' && b <= 'z')) {
      out += c;
    } else {
      out += '%';
      if (b < 16) {
        out += '0';
        out += kHex[b];
      } else {
        out += kHex[b >> 4];
        out += kHex[b & 15];
      }
    }
  }
  return out;
}

std::string MailLink(std::string_view strA, std::string_view strCc, std::string_view strCci,
                     std::string_view strSujet, std::string_view strCorps) {
  std::string link;
  const auto addList = [&link](std::string_view list, const char* key) {
    if (list.empty()) return;
    size_t start = 0;
    while (start <= list.size()) {
      size_t end = list.find(';', start);
      if (end == std::string_view::npos) end = list.size();
      const std::string_view item = list.substr(start, end - start);
      if (!item.empty()) {
        link += key;
        link += item;
        link += '&';
      }
      start = end + 1;
    }
  };
  addList(strA, "to=");
  addList(strCc, "cc=");
  addList(strCci, "bcc=");
  if (!link.empty()) link.pop_back();
  const std::string body = SubEncodeUrl(strCorps);
  if (!strSujet.empty()) {
    link += "&Subject=";
    link += strSujet;
  }
  if (!body.empty()) {
    link += "&Body=";
    link += body;
  }
  return "mailto:?" + link;
}

void SubOuvreCourrier(Shell& shell, std::string_view strA, std::string_view strCc, std::string_view strCci,
                      std::string_view strSujet, std::string_view strCorps) {
  shell.Open(MailLink(strA, strCc, strCci, strSujet, strCorps));
}

}  // namespace ostrane
