// Page geometry of the print runtime, in twips (1440 per inch, 567 per cm).
//
// The origin of every coordinate is the top-left corner of the printable area;
// the paper keeps an unprintable margin of 5 mm on every side.
#pragma once

#include <cstdint>
#include <string>

namespace printing {

inline constexpr double kTwipsParCm = 567.0;
inline constexpr double kMargeCm = 0.5;

// The pitch of an 11-point line: frames assume exactly this height per row,
// so rows and ruled boxes stay in step down the page.
inline constexpr double kHauteurLigne11 = 0.417 * kTwipsParCm;

// Height of one printed line in a font of that size: 0.417 cm at 11 points,
// in proportion for other sizes.
inline double HauteurLigne(double taille_points) { return kHauteurLigne11 * taille_points / 11.0; }

// Width of one character of a fixed-pitch font with Courier New's metrics
// (advance of 0.6 em); twips per point = 20.
inline double LargeurCaractere(double taille_points) { return 0.6 * taille_points * 20.0; }

// A sheet of paper: its DMPAPER code, name and size in millimetres.
struct Papier {
  std::int16_t code = 9;
  std::string nom = "A4";
  double largeur_mm = 210.0;
  double hauteur_mm = 297.0;

  double LargeurImprimable() const { return (largeur_mm / 10.0 - 2 * kMargeCm) * kTwipsParCm; }
  double HauteurImprimable() const { return (hauteur_mm / 10.0 - 2 * kMargeCm) * kTwipsParCm; }
};

// The paper of a DMPAPER code: 9 = A4, 8 = A3, 1 = Letter, 5 = Legal, 11 = A5.
// Unknown codes give A4, the service's paper.
Papier PapierDeCode(std::int16_t code);

}  // namespace printing
