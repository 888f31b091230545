// Reading UTF-8 one character at a time, as the PDF writer needs it for the
// glyphs of a page and the text of the document's metadata.
#pragma once

#include <string>

namespace printing::pdf {

inline constexpr char32_t kCaractereRemplacement = 0xFFFD;

// The character that starts at p (before fin), p moved past it. A byte that
// does not begin a well-formed sequence, or a sequence cut short, gives
// U+FFFD and moves by one byte.
inline char32_t ProchainCaractere(const unsigned char*& p, const unsigned char* fin) {
  const unsigned char premier = *p++;
  if (premier < 0x80) return premier;
  int suite;
  char32_t c;
  if ((premier & 0xE0) == 0xC0) {
    suite = 1;
    c = premier & 0x1F;
  } else if ((premier & 0xF0) == 0xE0) {
    suite = 2;
    c = premier & 0x0F;
  } else if ((premier & 0xF8) == 0xF0) {
    suite = 3;
    c = premier & 0x07;
  } else {
    return kCaractereRemplacement;
  }
  const unsigned char* q = p;
  for (int i = 0; i < suite; ++i, ++q) {
    if (q >= fin || (*q & 0xC0) != 0x80) return kCaractereRemplacement;
    c = (c << 6) | (*q & 0x3F);
  }
  p = q;
  if (c > 0x10FFFF || (c >= 0xD800 && c <= 0xDFFF)) return kCaractereRemplacement;
  return c;
}

// The character c in UTF-8, appended to sortie.
inline void AjouteUtf8(char32_t c, std::string& sortie) {
  if (c < 0x80) {
    sortie.push_back(static_cast<char>(c));
  } else if (c < 0x800) {
    sortie.push_back(static_cast<char>(0xC0 | (c >> 6)));
    sortie.push_back(static_cast<char>(0x80 | (c & 0x3F)));
  } else if (c < 0x10000) {
    sortie.push_back(static_cast<char>(0xE0 | (c >> 12)));
    sortie.push_back(static_cast<char>(0x80 | ((c >> 6) & 0x3F)));
    sortie.push_back(static_cast<char>(0x80 | (c & 0x3F)));
  } else {
    sortie.push_back(static_cast<char>(0xF0 | (c >> 18)));
    sortie.push_back(static_cast<char>(0x80 | ((c >> 12) & 0x3F)));
    sortie.push_back(static_cast<char>(0x80 | ((c >> 6) & 0x3F)));
    sortie.push_back(static_cast<char>(0x80 | (c & 0x3F)));
  }
}

}  // namespace printing::pdf
