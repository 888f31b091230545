#include "app/choix_terminal.h"

#include <istream>
#include <ostream>

#include "marbrel/outils.h"

namespace vesko_app {

namespace cups = printing::cups;

std::string DecritFile(const cups::FileServeur& file) {
  std::string ligne = file.nom + (file.defaut ? " (par défaut)" : "") + " — ";
  const std::string& raison = file.etat.raison;
  switch (file.etat.etat) {
    case cups::EtatFile::Prete:
      return ligne + "prête";
    case cups::EtatFile::Arretee:
      return ligne + "arrêtée" + (raison.empty() ? "" : " : " + raison);
    case cups::EtatFile::Refuse:
      return ligne + "refuse les travaux" + (raison.empty() ? "" : " : " + raison);
    case cups::EtatFile::Inconnue:
    case cups::EtatFile::ServeurMuet:
      return ligne + "injoignable" + (raison.empty() ? "" : " : " + raison);
  }
  return ligne;
}

long DemandeImprimante(const std::vector<printing::Destination>& liste,
                       const std::vector<cups::FileServeur>& etats, std::istream& entree,
                       std::ostream& sortie) {
  auto etat_de = [&etats](const std::string& nom) -> const cups::FileServeur* {
    for (const cups::FileServeur& f : etats)
      if (f.nom == nom) return &f;
    return nullptr;
  };
  sortie << "Imprimantes disponibles :\n";
  for (size_t i = 0; i < liste.size(); ++i) {
    const cups::FileServeur* f = etat_de(liste[i].nom);
    sortie << "  " << (i + 1) << ". " << (f != nullptr ? DecritFile(*f) : liste[i].nom) << "\n";
  }
  sortie << "  0. Annuler\n";
  for (;;) {
    sortie << "Votre choix : " << std::flush;
    std::string reponse;
    if (!std::getline(entree, reponse)) {
      sortie << "\n";
      return -1;
    }
    if (marbrel::EstNumerique(reponse) &&
        reponse.find_first_not_of("0123456789 ") == std::string::npos) {
      const long n = std::stol(reponse);
      if (n == 0) return -1;
      if (n >= 1 && n <= static_cast<long>(liste.size())) {
        const cups::FileServeur* f = etat_de(liste[static_cast<size_t>(n - 1)].nom);
        if (f == nullptr || f->etat.Prete()) return n - 1;
        sortie << "Impossible : " << f->etat.Message() << " Choisissez-en une autre.\n";
        continue;
      }
    }
    sortie << "Répondez par un numéro entre 0 et " << liste.size() << ".\n";
  }
}

}  // namespace vesko_app
