#include "marbrel/texte.h"

#include "marbrel/marques.h"

namespace texte {

namespace {

bool IsContinuation(unsigned char c) { return (c & 0xC0) == 0x80; }

// Byte offset of the character at 0-based character index n (or s.size()).
size_t ByteOffset(std::string_view s, long n) {
  // Stray continuation bytes before the first character belong to it: a cut
  // never drops them.
  if (n <= 0) return 0;
  size_t i = 0;
  long seen = 0;
  while (i < s.size()) {
    if (!IsContinuation(static_cast<unsigned char>(s[i]))) {
      if (seen == n) return i;
      ++seen;
    }
    ++i;
  }
  return s.size();
}

}  // namespace

long Len(std::string_view s) {
  long n = 0;
  for (unsigned char c : s) {
    if (!IsContinuation(c)) ++n;
  }
  return n;
}

std::string Left(std::string_view s, long n) {
  if (n <= 0) return "";
  return std::string(s.substr(0, ByteOffset(s, n)));
}

std::string Mid(std::string_view s, long start, long n) {
  if (start < 1) start = 1;
  size_t from = ByteOffset(s, start - 1);
  if (from >= s.size()) return "";
  std::string_view rest = s.substr(from);
  if (n < 0) return std::string(rest);
  return std::string(rest.substr(0, ByteOffset(rest, n)));
}

std::string Right(std::string_view s, long n) {
  long len = Len(s);
  if (n >= len) return std::string(s);
  if (n <= 0) return "";
  return Mid(s, len - n + 1);
}

std::string Space(long n) { return n > 0 ? std::string(static_cast<size_t>(n), ' ') : ""; }

std::string Pad(std::string_view s, long width) { return std::string(s) + Space(width - Len(s)); }

std::string PadLeft(std::string_view s, long width) {
  return Space(width - Len(s)) + std::string(s);
}

long InStr(long start, std::string_view s, std::string_view needle) {
  if (start < 1) start = 1;
  size_t from = ByteOffset(s, start - 1);
  if (from > s.size()) return 0;
  size_t at = s.find(needle, from);
  if (at == std::string_view::npos) return 0;
  return Len(s.substr(0, at)) + 1;
}

std::string UpperAscii(std::string_view s) {
  std::string out(s);
  for (char& c : out) {
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
  }
  return out;
}

namespace {

// The length of the well-formed UTF-8 sequence starting at s[i], 0 when the
// bytes there are not one (a mark, a Latin-1 byte, a cut sequence).
size_t Sequence(std::string_view s, size_t i) {
  const auto c = static_cast<unsigned char>(s[i]);
  size_t n = 0;
  unsigned char bas = 0x80, haut = 0xBF;  // the range of the second byte
  if (c < 0x80) return 1;
  if (c >= 0xC2 && c <= 0xDF) n = 2;
  if (c >= 0xE0 && c <= 0xEF) n = 3;
  if (c >= 0xF0 && c <= 0xF4) n = 4;
  if (n == 0 || i + n > s.size()) return 0;
  if (c == 0xE0) bas = 0xA0;   // no overlong form
  if (c == 0xED) haut = 0x9F;  // no surrogate
  if (c == 0xF0) bas = 0x90;
  if (c == 0xF4) haut = 0x8F;  // nothing past U+10FFFF
  const auto deuxieme = static_cast<unsigned char>(s[i + 1]);
  if (deuxieme < bas || deuxieme > haut) return 0;
  for (size_t k = 2; k < n; ++k) {
    if (!IsContinuation(static_cast<unsigned char>(s[i + k]))) return 0;
  }
  return n;
}

bool EstMarque(char c) { return c == marbrel::AM || c == marbrel::VM || c == marbrel::SM; }

}  // namespace

std::string Sur_Une_Ligne(std::string_view s) {
  std::string out;
  out.reserve(s.size());
  for (size_t i = 0; i < s.size();) {
    const auto c = static_cast<unsigned char>(s[i]);
    if (c == '\r' && i + 1 < s.size() && s[i + 1] == '\n') {
      out += ' ';
      i += 2;
    } else if (EstMarque(s[i]) || c < 0x20 || c == 0x7F) {
      out += ' ';
      ++i;
    } else if (const size_t n = Sequence(s, i); n > 0) {
      out.append(s.substr(i, n));
      i += n;
    } else {
      out += "\xEF\xBF\xBD";  // U+FFFD
      ++i;
    }
  }
  return out;
}

std::string Marques_En_Retours(std::string_view s) {
  std::string out;
  out.reserve(s.size());
  for (char c : s) {
    if (EstMarque(c)) {
      out += "\r\n";
    } else {
      out += c;
    }
  }
  return out;
}

}  // namespace texte
