// The outside professionals of a care recipient (doctor, nurse,
// physiotherapist, social worker...): a framed table of at least eight rows,
// then the observations written about them, each under its professional's name.
//
// INTERVENANTEXT, keyed by the care recipient's code, holds one professional
// per value position across its attributes: 1 the type (code of the "TABLES"
// record "AUTRINTERVENANT"), 2 the name, 3 the telephone, 4 the address or
// town, 5 the observation (free text, stored lines separated by CR LF).
#include <algorithm>
#include <vector>

#include "control/compteur32.h"
#include "control/ctr_vesko.h"
#include "db/lecture.h"
#include "db/variable.h"
#include "layout/lignes.h"
#include "layout/liste_donnees.h"
#include "layout/page_pleine.h"
#include "layout/texte_libre.h"
#include "marbrel/texte.h"

namespace {

// The columns, in characters, and the frame drawn around them from the left
// margin: each separator falls between the two spaces that part two columns.
// A cell never cuts its text: it wraps at its spaces onto more lines of the
// row (each value of a multivalued cell on a line of its own), so that a
// telephone number ("+33 (0)3 20 55 66 77" fills its 20 characters) and the
// town at the end of an address always print whole. See docs/donnees-sections.md.
constexpr long kType = 16, kNom = 18, kTelephone = 20, kAdresse = 16;
const std::string kEcart = "  ";
constexpr long kRangeesMinimum = 8;  // the table keeps its shape when short
// Observations go on under the name, in what is left of a 78-character line.
constexpr long kNomObservation = 22;
constexpr long kRetraitObservation = 2 + kNomObservation + 3;
constexpr long kLargeurObservation = 78 - kRetraitObservation;

using Cellule = std::vector<std::string>;

std::string Rangee(const std::string& type, const std::string& nom, const std::string& telephone,
                   const std::string& adresse) {
  return kEcart + texte::Pad(type, kType) + kEcart + texte::Pad(nom, kNom) + kEcart +
         texte::Pad(telephone, kTelephone) + kEcart + adresse;
}

}  // namespace

void Ctr_Vesko::Intervenants_Exterieurs() {
  // Called without the key: the person is the one whose dossier is printing.
  std::string W_Code = Code_Dossier;
  TabDyn& intervenants = db::Lit(Fic::INTERVENANTEXT, W_Code);
  const TabDyn types = db::Charge_Table("AUTRINTERVENANT");
  const long nombre = intervenants.DCount();
  const long rangees = std::max(kRangeesMinimum, nombre);
  const auto coupure = [this](const std::string& t) { return Position_Coupure(t); };

  // The cells of row i (empty for a filler row), each wrapped to its column.
  auto cellules = [&](long i) {
    auto cellule = [&](const std::string& valeur, long largeur) {
      Cellule lignes = mise_en_page::Decoupe_Texte(valeur, largeur, coupure);
      // A piece taken at the full width leaves the space after it in front of
      // the next piece: a cell line never starts with it.
      for (std::string& l : lignes) l.erase(0, l.find_first_not_of(' '));
      return lignes;
    };
    if (i > nombre) return std::vector<Cellule>(4);
    return std::vector<Cellule>{cellule(db::Libelle_Arret(types, intervenants(1, i)), kType),
                                cellule(intervenants(2, i), kNom),
                                cellule(intervenants(3, i), kTelephone),
                                cellule(intervenants(4, i), kAdresse)};
  };
  auto hauteur = [](const std::vector<Cellule>& c) {
    size_t h = 1;
    for (const Cellule& l : c) h = std::max(h, l.size());
    return static_cast<long>(h);
  };

  // A short table keeps whole on one page; a longer one starts here when its
  // title, header and first eight rows fit, and goes on over the next pages.
  long debut = 0;
  for (long i = 1; i <= kRangeesMinimum; ++i) debut += hauteur(cellules(i));
  if (mise_en_page::Lignes_Restantes_Page(P()) < mise_en_page::Lignes_Titre() + 1 + debut) {
    NewPage(W_Code);
  }
  Titre("INTERVENANTS EXTERIEURS");
  Taille_Col = mise_en_page::Largeurs({"2.4", "4.7", "5.05", "4.25"});
  const std::string entete = Rangee("Type", "Nom", "Téléphone", "Adresse ou ville");
  std::int32_t lignes_cadre = 0;  // the header and rows under the current frame's top
  auto ouvre_cadre = [&] {
    W_PointDepart = Monnaie::De(P().CurrentY());
    P().Print(entete);
    lignes_cadre = 1;
  };
  auto ferme_cadre = [&] {
    Cadre_Gauche = true;
    Cadre(W_PointDepart, lignes_cadre, Taille_Col);
  };

  ouvre_cadre();
  for (long i = 1; i <= rangees; ++i) {
    const std::vector<Cellule> c = cellules(i);
    const long h = hauteur(c);
    // A row never runs over the foot of a page: the page's frame is closed,
    // and the next page goes on under the running header and the column header.
    if (mise_en_page::Lignes_Restantes_Page(P()) < h) {
      ferme_cadre();
      NewPage(W_Code);
      ouvre_cadre();
    }
    for (long k = 0; k < h; ++k) {
      auto morceau = [&](size_t colonne) {
        const Cellule& l = c[colonne];
        return static_cast<size_t>(k) < l.size() ? l[static_cast<size_t>(k)] : std::string();
      };
      // A filler row holds nothing, like every table's.
      const std::string ligne =
          i > nombre ? "" : Rangee(morceau(0), morceau(1), morceau(2), morceau(3));
      P().Print(ligne);
      lignes_cadre = compteur::Suivant(lignes_cadre, "Le nombre de lignes du tableau");
    }
  }
  ferme_cadre();

  bool premiere = true;
  for (long i = 1; i <= nombre; ++i) {
    const auto lignes =
        mise_en_page::Decoupe_Texte(intervenants(5, i), kLargeurObservation, coupure);
    if (lignes.empty()) continue;
    if (premiere) {
      mise_en_page::Blanc(P());
      P().SetFontUnderline(true);
      P().Print(" Observations :");
      P().SetFontUnderline(false);
      mise_en_page::Blanc(P());
      premiere = false;
    }
    // A professional without a name is known by its type.
    std::string qui = intervenants(2, i);
    if (qui.empty())
      qui = texte::Left(db::Libelle_Arret(types, intervenants(1, i)), kNomObservation);
    std::string debut_ligne = kEcart + texte::Pad(qui, kNomObservation) + " : ";
    for (const std::string& ligne : lignes) {
      if (mise_en_page::Page_Pleine(P())) NewPage(W_Code);
      P().Print(debut_ligne + ligne);
      debut_ligne = texte::Space(kRetraitObservation);
    }
  }
}
