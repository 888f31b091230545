// The query language on any sentence: it answers or fails with the library's
// error, never anything else; and when it answers, the rows it found through
// the key index are exactly those a full scan of the file finds.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "marbrel/base.h"
#include "marbrel/erreur.h"
#include "marbrel/marques.h"
#include "marbrel/query/analyse.h"
#include "marbrel/query/dictionnaire.h"
#include "marbrel/query/evaluateur.h"
#include "tests/fuzz/magasin_memoire.h"

namespace {

using namespace marbrel;

std::shared_ptr<essai::MagasinMemoire> Magasin() {
  auto m = std::make_shared<essai::MagasinMemoire>();
  m->CreeFichier("P");
  m->CreeFichier("DICT P");
  const std::string am(1, AM), vm(1, VM);
  // Keys that share beginnings, equal as numbers, hold marks of the language.
  const char* cles[] = {
      "A0001", "A00010", "A0001X", "A0002", "1",    "0001", "1.0", "+1",
      "10",    "9",      "[A",     "A]",    "A\"1", "B",    "b",   "A00012150030900"};
  int i = 0;
  for (const char* cle : cles) {
    ++i;
    m->Ecrit("P", cle,
             std::string(cle) + am + std::to_string(i * 7 % 5) + am +
                 (i % 2 ? "" : "x" + vm + "y") + am + std::to_string(21500 + i));
  }
  m->Ecrit("DICT P", "Code", "D" + am + "1" + am + am + "Code" + am + "5L" + am + "S");
  m->Ecrit("DICT P", "Nombre", "D" + am + "2" + am + am + "N" + am + "5R" + am + "S");
  m->Ecrit("DICT P", "Debut", "I" + am + "@ID[6,5]" + am + am + "D" + am + "5R" + am + "S");
  m->Ecrit("DICT P", "Tete", "I" + am + "@ID[1,3]" + am + am + "T" + am + "3L" + am + "S");
  return m;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* donnees, std::size_t taille) {
  static const auto magasin = Magasin();
  static const Base base(magasin);
  const std::string phrase(reinterpret_cast<const char*>(donnees), taille);
  if (phrase.find(AM) != std::string::npos) return 0;  // one attribute of the command

  std::vector<std::string> trouvees;
  try {
    const Liste_Selection liste = base.Selectionne(phrase + AM + AM + "0", "");
    for (long r = 1; r <= liste.DCount(); ++r) trouvees.push_back(liste(r, 1));
  } catch (const Erreur&) {
    return 0;  // a sentence the language refuses, with its French message
  }

  // The same criteria on every row of the file.
  const requete::Requete q = requete::Analyse(phrase);
  std::vector<std::string> toutes;
  requete::CritereCompile criteres;
  auto resout = [&](const requete::Champ& c) {
    return requete::ResoutChamp(*magasin, q.fichier, c.nom);
  };
  if (q.a_criteres) criteres = requete::Compile(q.criteres, resout);
  magasin->Parcourt(q.fichier, [&](const std::string& cle, const std::string& texte) {
    if (!q.a_criteres || requete::Vrai(criteres, cle, TabDyn(texte))) toutes.push_back(cle);
    return true;
  });
  std::sort(trouvees.begin(), trouvees.end());
  if (trouvees != toutes) std::abort();
  return 0;
}
