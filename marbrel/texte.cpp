#include "marbrel/texte.h"

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

}  // namespace texte
