// Outils: the library's utility object — dates, amounts and the printer choice.
// One per process, created on first use and kept (Outils::Instance()).
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace marbrel {

class Outils {
 public:
  static Outils& Instance();

  // Internal day numbers count from 31/12/1967 (day 0); day 1 is 01/01/1968 and
  // days before 1968 are negative. Date_Externe gives "dd/mm/yyyy", or "" for an
  // empty or non-numeric day.
  std::string Date_Externe(const std::string& jour) const;
  std::string Date_Externe(long jour) const;
  // The day number of a calendar date; Date_Interne("dd/mm/yyyy") gives "" for
  // text that is not a real date.
  static long Date_Interne(int annee, int mois, int jour);
  std::string Date_Interne(const std::string& date) const;
  // The calendar date (year, month, day) of a day number.
  struct Jour {
    int annee, mois, jour;
  };
  static Jour Calendrier(long jour);

  // The number as fixed-point text with "." as decimal point, rounded half away
  // from zero to `decimales` places and right-aligned in entiers + 1 + decimales
  // characters (a wider number prints whole). Non-numeric text gives "".
  // The third integer is accepted for the callers' sake and has no effect.
  std::string Format_Montant(const std::string& nombre, int entiers, int decimales,
                             std::int16_t option = 0) const;

  // The printer choice is made by a chooser that the host installs (a dialog,
  // a terminal list, a fixed answer for a batch). It returns the index of the
  // chosen printer in the system's list as text, or "-1" when none was chosen.
  using Choix = std::function<std::string(const std::string& format_papier)>;
  // The paper-size code of the latest choice (DMPAPER numbering: 9 = A4).
  using Reglage = std::function<std::int16_t()>;
  void Installe_Choix(Choix choix, Reglage reglage);
  // Without an installed chooser no printer is chosen ("-1") and the paper is A4.
  std::string Choix_Imprimante(const std::string& format_papier) const;
  std::int16_t Reglage_Imprimante() const;

 private:
  Outils() = default;
  Choix choix_;
  Reglage reglage_;
};

// The exact decimal value of a numeric text (optional sign, digits, optional
// decimal point): used wherever stored amounts are added, so that no binary
// fraction drifts. Centimes() reads "12.34" as 1234; a text with more than two
// decimals is rounded half away from zero. Nothing for non-numeric text.
std::optional<long long> Centimes(const std::string& nombre);
// "1234" (hundredths, as stored) → "12.34".
std::string Centiemes_En_Texte(long long centiemes);

// True for an optional sign, digits, an optional decimal point; never for "".
bool EstNumerique(const std::string& s);

}  // namespace marbrel
