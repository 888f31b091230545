// Base::Selectionne: runs the sentence of a command record.
#include <algorithm>
#include <stdexcept>

#include "marbrel/base.h"
#include "marbrel/erreur.h"
#include "marbrel/query/analyse.h"
#include "marbrel/query/comparaison.h"
#include "marbrel/query/erreur_requete.h"
#include "marbrel/query/evaluateur.h"
#include "marbrel/query/plan.h"

namespace marbrel {

namespace {

using namespace requete;

struct Ligne {
  std::string cle;
  std::vector<std::string> tri;
  std::vector<std::string> champs;
};

// The field list of the command: names or numbers separated by blanks; none
// means the key alone.
std::vector<std::string> MotsDe(const std::string& liste) {
  std::vector<std::string> mots;
  std::size_t i = 0;
  while (i < liste.size()) {
    if (liste[i] == ' ' || liste[i] == '\t') {
      ++i;
      continue;
    }
    std::size_t fin = liste.find_first_of(" \t", i);
    if (fin == std::string::npos) fin = liste.size();
    mots.push_back(liste.substr(i, fin - i));
    i = fin;
  }
  if (mots.empty()) mots.push_back("0");
  return mots;
}

}  // namespace

Liste_Selection Base::Selectionne(const std::string& commande, const std::string& options) const {
  TabDyn cmd(commande);
  const std::string phrase = cmd(1);
  const std::string fichier_commande = cmd(2);
  const std::string liste_champs = cmd(3);
  if (!options.empty()) {
    throw Erreur(ERR_REQUETE, "Option de sélection inconnue « " + options +
                                  " » : le second argument de Selectionne doit être vide.");
  }

  Requete q = Analyse(phrase);
  if (!fichier_commande.empty() && fichier_commande != q.fichier) {
    ErreurRequete(phrase, q.position_fichier,
                  "Le fichier de la phrase (" + q.fichier + ") n'est pas celui de la commande (" +
                      fichier_commande + ")");
  }
  Store& store = *store_;
  if (!store.ExisteFichier(q.fichier)) {
    ErreurRequete(phrase, q.position_fichier, "Fichier inconnu « " + q.fichier + " »");
  }
  auto resout = [&](const Champ& champ) {
    try {
      return ResoutChamp(store, q.fichier, champ.nom);
    } catch (const std::invalid_argument& e) {
      ErreurRequete(phrase, champ.position, e.what());
    }
  };

  CritereCompile criteres;
  if (q.a_criteres) criteres = Compile(q.criteres, resout);
  std::vector<Item> tri;
  for (const Champ& c : q.tri) tri.push_back(resout(c));
  std::vector<Item> sortie;
  for (const std::string& nom : MotsDe(liste_champs)) {
    try {
      sortie.push_back(ResoutChamp(store, q.fichier, nom));
    } catch (const std::invalid_argument& e) {
      throw Erreur(ERR_REQUETE, std::string(e.what()) + " dans la liste des champs « " +
                                    liste_champs + " » de la commande.");
    }
  }

  std::vector<Ligne> lignes;
  auto visite = [&](const std::string& cle, const std::string& texte) {
    TabDyn enregistrement(texte);
    if (q.a_criteres && !Vrai(criteres, cle, enregistrement)) return true;
    Ligne l;
    l.cle = cle;
    for (const Item& item : tri) l.tri.push_back(item.PremiereValeur(cle, enregistrement));
    for (const Item& item : sortie) l.champs.push_back(item.Texte(cle, enregistrement));
    lignes.push_back(std::move(l));
    return true;
  };
  std::optional<std::vector<std::string>> prefixes;
  if (q.a_criteres) prefixes = PrefixesCle(criteres);
  if (prefixes) {
    for (const std::string& p : *prefixes) store.ParcourtPrefixe(q.fichier, p, visite);
  } else {
    store.Parcourt(q.fichier, visite);
  }

  // Both walks return rows in key order, so a stable sort on the PAR fields
  // leaves equal rows by key. SELECT keeps the walk's order.
  if (q.triee && !tri.empty()) {
    std::stable_sort(lignes.begin(), lignes.end(), [&](const Ligne& a, const Ligne& b) {
      for (std::size_t i = 0; i < tri.size(); ++i) {
        int c = CompareTri(a.tri[i], b.tri[i], tri[i].numerique);
        if (c != 0) return c < 0;
      }
      return false;
    });
  }

  Liste_Selection resultat;
  for (const Ligne& l : lignes) resultat.Ajoute(l.champs);
  return resultat;
}

}  // namespace marbrel
