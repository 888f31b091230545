#include "marbrel/visible.h"

namespace texte {

std::string Visible(std::string_view s) {
  static const char* const kChiffres = "0123456789ABCDEF";
  std::string vu;
  vu.reserve(s.size());
  for (char c : s) {
    const auto octet = static_cast<unsigned char>(c);
    if (c == '\n') {
      vu += "\\n";
    } else if (c == '\t') {
      vu += "\\t";
    } else if (c == '\r') {
      vu += "\\r";
    } else if (octet < 0x20 || octet == 0x7F || octet >= 0xFC) {
      vu += "\\x";
      vu += kChiffres[octet >> 4];
      vu += kChiffres[octet & 0xF];
    } else {
      vu += c;
    }
  }
  return vu;
}

}  // namespace texte
