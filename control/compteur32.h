// The run's counts and positions are 32-bit integers (the published interface
// types them so): a count that does not fit is an error of the run, named in
// French, never a silent wrap to a smaller or negative number.
#pragma once

#include <cstdint>
#include <string>

namespace compteur {

// n as a 32-bit integer; fails with std::overflow_error naming quoi ("le
// nombre de personnes") when n is out of range.
std::int32_t Entier32(long long n, const std::string& quoi);

// n + 1; fails the same way when n is already the largest 32-bit integer.
std::int32_t Suivant(std::int32_t n, const std::string& quoi);

}  // namespace compteur
