#include "marbrel/outils.h"

#include <cstdio>
#include <cstdlib>

namespace marbrel {

namespace {

// Days since 1970-01-01 of a proleptic Gregorian date (H. Hinnant's algorithm).
long DaysFromCivil(long y, unsigned m, unsigned d) {
  y -= m <= 2;
  const long era = (y >= 0 ? y : y - 399) / 400;
  const unsigned yoe = static_cast<unsigned>(y - era * 400);
  const unsigned doy = (153 * (m + (m > 2 ? -3 : 9)) + 2) / 5 + d - 1;
  const unsigned doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
  return era * 146097 + static_cast<long>(doe) - 719468;
}

// Day 0 of the library's numbering, 31/12/1967, in days since 1970-01-01.
const long kOrigine = DaysFromCivil(1967, 12, 31);

}  // namespace

Outils& Outils::Instance() {
  static Outils instance;
  return instance;
}

bool EstNumerique(const std::string& s) {
  size_t i = 0;
  if (i < s.size() && (s[i] == '-' || s[i] == '+')) ++i;
  bool chiffre = false, point = false;
  for (; i < s.size(); ++i) {
    if (s[i] >= '0' && s[i] <= '9') {
      chiffre = true;
    } else if (s[i] == '.' && !point) {
      point = true;
    } else {
      return false;
    }
  }
  return chiffre;
}

long Outils::Date_Interne(int annee, int mois, int jour) {
  return DaysFromCivil(annee, static_cast<unsigned>(mois), static_cast<unsigned>(jour)) - kOrigine;
}

Outils::Jour Outils::Calendrier(long jour) {
  long z = jour + kOrigine + 719468;
  const long era = (z >= 0 ? z : z - 146096) / 146097;
  const unsigned doe = static_cast<unsigned>(z - era * 146097);
  const unsigned yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
  const long y = static_cast<long>(yoe) + era * 400;
  const unsigned doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
  const unsigned mp = (5 * doy + 2) / 153;
  const unsigned d = doy - (153 * mp + 2) / 5 + 1;
  const unsigned m = mp < 10 ? mp + 3 : mp - 9;
  return {static_cast<int>(y + (m <= 2)), static_cast<int>(m), static_cast<int>(d)};
}

std::string Outils::Date_Externe(long jour) const {
  Jour j = Calendrier(jour);
  char texte[32];
  std::snprintf(texte, sizeof texte, "%02d/%02d/%04d", j.jour, j.mois, j.annee);
  return texte;
}

std::string Outils::Date_Externe(const std::string& jour) const {
  // Day numbers are whole; "12.5" or "abc" is not a date.
  if (!EstNumerique(jour) || jour.find('.') != std::string::npos) return "";
  if (jour.size() > 9) return "";
  return Date_Externe(std::strtol(jour.c_str(), nullptr, 10));
}

std::string Outils::Date_Interne(const std::string& date) const {
  int j = 0, m = 0, a = 0;
  char fin = 0;
  if (date.size() != 10 || std::sscanf(date.c_str(), "%2d/%2d/%4d%c", &j, &m, &a, &fin) != 3) {
    return "";
  }
  if (m < 1 || m > 12 || j < 1) return "";
  long n = Date_Interne(a, m, j);
  Jour verif = Calendrier(n);
  if (verif.jour != j || verif.mois != m) return "";  // 31/02 and the like
  return std::to_string(n);
}

std::optional<long long> Centimes(const std::string& nombre) {
  if (!EstNumerique(nombre)) return std::nullopt;
  size_t i = 0;
  bool negatif = false;
  if (nombre[0] == '-' || nombre[0] == '+') {
    negatif = nombre[0] == '-';
    i = 1;
  }
  long long entier = 0;
  for (; i < nombre.size() && nombre[i] != '.'; ++i) {
    entier = entier * 10 + (nombre[i] - '0');
    if (entier > 100000000000000LL) return std::nullopt;
  }
  long long fraction = 0;
  int chiffres = 0;
  bool arrondi = false;
  if (i < nombre.size()) {
    for (++i; i < nombre.size(); ++i) {
      if (chiffres < 2) {
        fraction = fraction * 10 + (nombre[i] - '0');
        ++chiffres;
      } else if (chiffres == 2) {
        arrondi = nombre[i] >= '5';
        ++chiffres;
      }
    }
  }
  while (chiffres < 2) {
    fraction *= 10;
    ++chiffres;
  }
  long long total = entier * 100 + fraction + (arrondi ? 1 : 0);
  return negatif ? -total : total;
}

std::string Centiemes_En_Texte(long long centiemes) {
  bool negatif = centiemes < 0;
  unsigned long long v = negatif ? 0ULL - static_cast<unsigned long long>(centiemes)
                                 : static_cast<unsigned long long>(centiemes);
  std::string fraction = std::to_string(v % 100);
  if (fraction.size() < 2) fraction = "0" + fraction;
  return (negatif ? "-" : "") + std::to_string(v / 100) + "." + fraction;
}

std::string Outils::Format_Montant(const std::string& nombre, int entiers, int decimales,
                                   std::int16_t /*option*/) const {
  if (!EstNumerique(nombre) || decimales < 0 || decimales > 9) return "";
  // Exact decimal rounding on the digits themselves.
  bool negatif = nombre[0] == '-';
  size_t i = (nombre[0] == '-' || nombre[0] == '+') ? 1 : 0;
  std::string ent, frac;
  for (; i < nombre.size() && nombre[i] != '.'; ++i) ent += nombre[i];
  if (i < nombre.size()) frac = nombre.substr(i + 1);
  bool monte = frac.size() > static_cast<size_t>(decimales) && frac[decimales] >= '5';
  frac.resize(static_cast<size_t>(decimales), '0');
  std::string chiffres = ent + frac;
  if (chiffres.empty()) chiffres = "0";
  if (monte) {
    int k = static_cast<int>(chiffres.size()) - 1;
    while (k >= 0 && chiffres[k] == '9') chiffres[k--] = '0';
    if (k < 0) {
      chiffres.insert(chiffres.begin(), '1');
    } else {
      ++chiffres[k];
    }
  }
  std::string partie_entiere = chiffres.substr(0, chiffres.size() - decimales);
  std::string partie_decimale = chiffres.substr(chiffres.size() - decimales);
  size_t premier = partie_entiere.find_first_not_of('0');
  partie_entiere = premier == std::string::npos ? "0" : partie_entiere.substr(premier);
  bool zero = partie_entiere == "0" && partie_decimale.find_first_not_of('0') == std::string::npos;
  std::string texte = (negatif && !zero ? "-" : "") + partie_entiere;
  if (decimales > 0) texte += "." + partie_decimale;
  long largeur = entiers + 1 + decimales;
  if (static_cast<long>(texte.size()) < largeur) {
    texte.insert(0, static_cast<size_t>(largeur) - texte.size(), ' ');
  }
  return texte;
}

void Outils::Installe_Choix(Choix choix, Reglage reglage) {
  choix_ = std::move(choix);
  reglage_ = std::move(reglage);
}

std::string Outils::Choix_Imprimante(const std::string& format_papier) const {
  return choix_ ? choix_(format_papier) : "-1";
}

std::int16_t Outils::Reglage_Imprimante() const { return reglage_ ? reglage_() : 9; }

}  // namespace marbrel
