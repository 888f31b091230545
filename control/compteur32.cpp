#include "control/compteur32.h"

#include <limits>
#include <stdexcept>

namespace compteur {

std::int32_t Entier32(long long n, const std::string& quoi) {
  constexpr long long kMin = std::numeric_limits<std::int32_t>::min();
  constexpr long long kMax = std::numeric_limits<std::int32_t>::max();
  if (n < kMin || n > kMax) {
    throw std::overflow_error(quoi + " (" + std::to_string(n) +
                              ") dépasse la limite d'un entier 32 bits (" + std::to_string(kMax) +
                              ").");
  }
  return static_cast<std::int32_t>(n);
}

std::int32_t Suivant(std::int32_t n, const std::string& quoi) {
  return Entier32(static_cast<long long>(n) + 1, quoi);
}

}  // namespace compteur
