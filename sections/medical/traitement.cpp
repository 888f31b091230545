#include "sections/medical/traitement.h"

#include <optional>

#include "marbrel/outils.h"
#include "marbrel/texte.h"

namespace traitement {

namespace {

// Column widths, from the header: each title and the spaces after it.
constexpr long kColMedication = 27;
constexpr long kColQuantite = 16;
constexpr long kColFrequence = 16;
constexpr long kColDuree = 13;

constexpr long kAttribut = 10;

// A duration is a whole number of units; anything else has no number.
std::optional<long> Nombre(const std::string& duree) {
  if (duree.empty() || duree.size() > 9) return std::nullopt;
  for (char c : duree) {
    if (c < '0' || c > '9') return std::nullopt;
  }
  return std::stol(duree);
}

std::string Colonne(marbrel::TabDyn& fiche, long i, long champ, long largeur) {
  std::string valeur = fiche(kAttribut, i, champ);
  if (texte::Len(valeur) > largeur - 1) {
    valeur = texte::Left(valeur, largeur - 1);
    fiche.Remplace(kAttribut, i, champ, valeur);
  }
  return texte::Pad(valeur, largeur);
}

}  // namespace

std::string Entete() {
  return "Médication" + texte::Space(17) + "Quantité" + texte::Space(8) + "Fréquence" +
         texte::Space(7) + "Durée" + texte::Space(8) + "Date de fin";
}

std::string Unite_Duree(const std::string& unite, const std::string& duree) {
  const std::optional<long> n = Nombre(duree);
  if (unite == kMois) return "Mois";
  if (unite == kSemaines && n == 1) return "Semaine";
  if (unite == kSemaines && n > 1) return "Semaines";
  if (unite == kJours && n > 1) return "Jours";
  return "Jour";
}

std::string Ligne(marbrel::TabDyn& fiche, long i) {
  const std::string duree = fiche(kAttribut, i, kDuree);
  // Without a number there is nothing for a unit word to qualify.
  const std::string texte_duree =
      duree.empty() ? "" : duree + " " + Unite_Duree(fiche(kAttribut, i, kUnite), duree);
  return Colonne(fiche, i, kMedication, kColMedication) +
         Colonne(fiche, i, kQuantite, kColQuantite) + Colonne(fiche, i, kFrequence, kColFrequence) +
         texte::Pad(texte_duree, kColDuree) +
         marbrel::Outils::Instance().Date_Externe(fiche(kAttribut, i, kDateFin));
}

}  // namespace traitement
