// Character-counting text helpers for the sections.
//
// Every length, cut and padding in a printed line counts characters, not bytes:
// "Hélène" is 6 characters wide on paper although it takes 7 bytes. Positions
// are 1-based like the rest of the system.
#pragma once

#include <string>
#include <string_view>

namespace texte {

// Number of characters (UTF-8 code points; a mark byte counts as one).
long Len(std::string_view s);

// The first n characters (all of them when n >= Len, "" when n <= 0).
std::string Left(std::string_view s, long n);

// n characters starting at character position start (1-based); n < 0 means
// "to the end". A start past the end gives "".
std::string Mid(std::string_view s, long start, long n = -1);

// The last n characters.
std::string Right(std::string_view s, long n);

// n spaces; nothing when n <= 0.
std::string Space(long n);

// The value followed by spaces up to width characters. A value already wider
// than the column is kept whole and gets no spaces: a padding that comes out
// negative never cuts.
std::string Pad(std::string_view s, long width);

// Spaces then the value, right-aligned in width characters (never cut).
std::string PadLeft(std::string_view s, long width);

// Character position (1-based) of the first occurrence of needle at or after
// character position start; 0 when absent.
long InStr(long start, std::string_view s, std::string_view needle);

// Upper case of ASCII letters only; accents are left as they are.
std::string UpperAscii(std::string_view s);

// A text as one printed line may hold it: each mark of the store (values
// joined by a space) and each control character becomes one space (a stored
// CR LF pair one space too), and every byte that is not part of well-formed
// UTF-8 becomes U+FFFD. The result is valid UTF-8 whatever the input.
std::string Sur_Une_Ligne(std::string_view s);

// A stored text to be wrapped: each mark of the store starts a new line, as a
// stored line break (CR LF) does.
std::string Marques_En_Retours(std::string_view s);

}  // namespace texte
