// Any text as a dump: it loads or fails with the library's error; what loads
// exports to a dump that loads again to the very same store.
#include <cstdint>
#include <cstdlib>
#include <sstream>

#include "marbrel/dump.h"
#include "marbrel/erreur.h"
#include "tests/fuzz/magasin_memoire.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* donnees, std::size_t taille) {
  const std::string_view texte(reinterpret_cast<const char*>(donnees), taille);
  marbrel::Dump dump;
  try {
    dump = marbrel::LitDump(texte, "fuzz.json");
  } catch (const marbrel::Erreur& e) {
    if (e.Numero() != marbrel::ERR_IMPORT) std::abort();
    return 0;
  }
  essai::MagasinMemoire premier;
  for (const auto& [fichier, enregistrements] : dump.fichiers) premier.CreeFichier(fichier);
  marbrel::Importe(premier, {dump});

  std::ostringstream sortie;
  marbrel::Exporte(premier, {}, sortie);
  const marbrel::Dump relu = marbrel::LitDump(sortie.str(), "export.json");
  essai::MagasinMemoire second;
  for (const auto& [fichier, enregistrements] : relu.fichiers) second.CreeFichier(fichier);
  marbrel::Importe(second, {relu});
  if (!(premier == second)) std::abort();
  return 0;
}
