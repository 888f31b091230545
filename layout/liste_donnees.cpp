// The framed label-and-value lists: a carer's capacities and behaviour marks,
// a care recipient's tasks and behaviour. Rows are printed in chunks that fit
// their page, each chunk framed on its own, the column header repeated on
// every following page.
#include "layout/liste_donnees.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <optional>

#include "control/compteur32.h"
#include "control/ctr_vesko.h"
#include "db/lecture.h"
#include "db/variable.h"
#include "layout/lignes.h"
#include "layout/monnaie.h"
#include "marbrel/outils.h"
#include "marbrel/texte.h"
#include "printing/geometrie.h"

namespace mise_en_page {

long Largeur_Libelle(const marbrel::TabDyn& largeurs, long centimetre) {
  const Monnaie separateur = (Monnaie::Lit("2") + Monnaie::Lit(largeurs(1, 1))) *
                             Monnaie{static_cast<std::int64_t>(centimetre) * 10000};
  const auto caractere =
      static_cast<std::int64_t>(std::llround(printing::LargeurCaractere(11) * 10000));
  const long avant_separateur = static_cast<long>(separateur.dix_milliemes / caractere);
  return std::max(0L, avant_separateur - kRetraitListe);
}

std::string Ligne_Liste(const std::string& libelle, const std::string& valeur,
                        long largeur_libelle) {
  return texte::Space(kRetraitListe) + texte::Pad(libelle, largeur_libelle) + " " +
         texte::PadLeft(valeur, kLargeurValeur);
}

long Lignes_Restantes_Page(const printing::Printer& p) {
  // The printer's own overflow test, counted in whole lines.
  const double place = p.Paper().HauteurImprimable() + 0.5 - p.CurrentY();
  return std::max(0L, static_cast<long>(std::floor(place / printing::kHauteurLigne11)));
}

long Lignes_Titre() {
  const double hauteur = 2 * printing::kHauteurLigne11 + printing::HauteurLigne(16);
  return static_cast<long>(std::ceil(hauteur / printing::kHauteurLigne11));
}

long Lignes_Par_Page(const printing::Printer& p) {
  return std::max(1L, Lignes_Restantes_Page(p) - kReserveListe);
}

bool Place_Pour_Liste(const printing::Printer& p) {
  return Lignes_Restantes_Page(p) >= Lignes_Titre() + 1 + kLignesAvecTitre + kReserveListe;
}

std::string Texte_Nombre(long long centiemes, bool en_heures) {
  if (en_heures) {
    return marbrel::Outils::Instance().Format_Montant(marbrel::Centiemes_En_Texte(centiemes), 5, 2);
  }
  if (centiemes % 100 == 0) return std::to_string(centiemes / 100);
  return marbrel::Centiemes_En_Texte(centiemes);
}

}  // namespace mise_en_page

namespace {

using namespace mise_en_page;

// A carer's value as a number of hundredths, for the total. Times are stored
// in hundredths of an hour; marks are plain numbers. Text that is not a
// number counts for nothing.
std::optional<long long> Centiemes_De(const std::string& valeur, bool stocke_en_centiemes) {
  std::optional<long long> c = marbrel::Centimes(valeur);
  if (!c || !stocke_en_centiemes) return c;
  // "250" stored means 2.50: Centimes read it as 250.00.
  const long long arrondi = *c >= 0 ? (*c + 50) / 100 : (*c - 50) / 100;
  return arrondi;
}

// The element cut to its column; only a text that is too long is cut and
// written back, so reading a row never adds empty values to a record.
std::string Dans_Colonne(marbrel::TabDyn& enregistrement, long a, long v, long largeur) {
  std::string valeur = enregistrement(a, v);
  if (texte::Len(valeur) <= largeur) return valeur;
  return Coupe(enregistrement, a, v, largeur);
}

}  // namespace

void Ctr_Vesko::ImprimeDonnées(std::string& W_Code) {
  Liste_Total = 0;
  Compteur_Ligne = 0;
  Liste_Index = 0;
  const long largeur = Largeur_Libelle(Liste_Taille_Col, Un_Centimetre);
  const bool aidant = Liste_Type == 2;

  // The text of row i, or nothing when the row is left out.
  std::function<std::optional<std::string>(long)> ligne;
  long nb_lignes = Liste_Nb_Ligne;
  std::int32_t entetes = 1;  // header lines inside the first frame

  if (Liste_Nb_Ligne <= 0) {
    // Nothing recorded: the whole code table, to be filled in by hand. Its
    // labels keep inside the frame's first column.
    nb_lignes = Variable::Tables.DCount(2);
    ligne = [&](long i) -> std::optional<std::string> {
      const long place = largeur + kRetraitListe - kRetraitFormulaire;
      return texte::Space(kRetraitFormulaire) + texte::Left(Variable::Tables(3, i), place);
    };
    Liste_Lignes_Chunk = std::min<std::int32_t>(Liste_Ligne_Par_Page, nb_lignes);
  } else {
    ligne = [&](long i) -> std::optional<std::string> {
      std::string libelle, valeur;
      if (Liste_Catalogue) {
        libelle = Dans_Colonne(Liste_Tache, 1, i, largeur);
        valeur = Dans_Colonne(Liste_Tache, 2, i, kLargeurValeur);
      } else {
        const long position = db::Position_Code(Variable::Tables, Liste_Source(Liste_Attribut, i));
        if (position > 0) libelle = Dans_Colonne(Variable::Tables, 3, position, largeur);
        valeur = Liste_Source(Liste_Attribut + 1, i);
        if (aidant && Liste_Centiemes && Centiemes_De(valeur, true)) {
          valeur = Texte_Nombre(*Centiemes_De(valeur, true), true);
        } else {
          valeur = Dans_Colonne(Liste_Source, Liste_Attribut + 1, i, kLargeurValeur);
        }
      }
      if (libelle.empty() && valeur.empty()) return std::nullopt;
      if (aidant) {
        Liste_Total +=
            Centiemes_De(Liste_Source(Liste_Attribut + 1, i), Liste_Centiemes).value_or(0);
      }
      return Ligne_Liste(libelle, valeur, largeur);
    };
    // A list of the other kind of dossier than the run's prints its header
    // line itself, and its first chunk stays as the previous list left it.
    if ((Liste_Type == 2) == (Type_Dossier == "AIDANT")) {
      Liste_Lignes_Chunk = std::min(Liste_Ligne_Par_Page, Liste_Nb_Ligne);
    } else {
      P().Print(Liste_Entete);
      entetes = 2;
      Liste_Lignes_Chunk = std::max<std::int32_t>(0, Liste_Lignes_Chunk);
    }
  }

  // The line counter counts every row the list prints, on all its pages (the
  // driver reads it to know whether the next section still fits); each
  // chunk's frame is as high as that chunk's own rows.
  std::int32_t lignes_tranche = 0;
  auto imprime_tranche = [&]() {
    lignes_tranche = 0;
    for (std::int32_t k = 0; k < Liste_Lignes_Chunk; ++k) {
      ++Liste_Index;
      if (auto rangee = ligne(Liste_Index)) {
        P().Print(*rangee);
        ++lignes_tranche;
        ++Compteur_Ligne;
      }
    }
  };
  auto encadre = [&](std::int32_t lignes_entete) {
    Cadre_Gauche = true;
    Cadre(W_PointDepart, lignes_entete + lignes_tranche, Liste_Taille_Col);
  };

  Liste_Lignes_Restantes =
      compteur::Entier32(nb_lignes, "Le nombre de lignes de la liste") - Liste_Lignes_Chunk;
  imprime_tranche();
  encadre(entetes);

  while (Liste_Lignes_Restantes > 0) {
    NewPage(W_Code);
    W_PointDepart = Monnaie::De(P().CurrentY());
    // Every page of a list carries its column header inside its frame.
    P().Print(Liste_Entete);
    Liste_Ligne_Par_Page = static_cast<std::int32_t>(Lignes_Par_Page(P()));
    Liste_Lignes_Chunk = std::min(Liste_Ligne_Par_Page, Liste_Lignes_Restantes);
    Liste_Lignes_Restantes -= Liste_Lignes_Chunk;
    imprime_tranche();
    encadre(1);
  }
}
