// Fixed-point decimals with four places, for frame positions and widths: sums
// of widths such as 14.3 + 2.5 stay exact and a frame lands where the rows are.
#pragma once

#include <cmath>
#include <cstdint>
#include <string>

namespace mise_en_page {

struct Monnaie {
  std::int64_t dix_milliemes = 0;

  static Monnaie De(double v) { return {std::llround(v * 10000.0)}; }
  // "14.3", "2", "-0.5"; anything else is 0.
  static Monnaie Lit(const std::string& texte);
  double EnDouble() const { return static_cast<double>(dix_milliemes) / 10000.0; }

  Monnaie operator+(Monnaie o) const { return {dix_milliemes + o.dix_milliemes}; }
  Monnaie operator-(Monnaie o) const { return {dix_milliemes - o.dix_milliemes}; }
  // Product of two fixed-point numbers, rounded half away from zero to four places.
  Monnaie operator*(Monnaie o) const;
  bool operator==(const Monnaie&) const = default;
};

}  // namespace mise_en_page
