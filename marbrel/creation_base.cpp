#include "marbrel/creation_base.h"

#include "marbrel/schema.h"
#include "marbrel/tabdyn.h"

namespace marbrel {

namespace {

struct ItemDictionnaire {
  const char* fichier;
  const char* nom;
  const char* type;
  const char* definition;  // attribute number or I-type expression
  const char* titre;
  const char* format;
};

// The unavailability keys are the person's code (5 characters), the start day
// (5 digits), the weekday and the start time: the start day is read from the key.
constexpr ItemDictionnaire kItems[] = {
    {"TPSAIDEINDISPO", "DateDebIndispo", "I", "@ID[6,5]", "Début indispo", "5R"},
    {"TPSAIDANTINDISPO", "DateDebIndispo", "I", "@ID[6,5]", "Début indispo", "5R"},
    {"TPSINCOMPATIBILITES", "CodeAide", "D", "1", "Code aidé", "10L"},
    {"TPSINCOMPATIBILITES", "NomPrenomAidantIncomp", "D", "2", "Aidant incompatible", "30L"},
};

}  // namespace

void CreeFichiersVesko(Store& store) {
  store.Transaction([&] {
    for (std::string_view nom : kFichiersVesko) store.CreeFichier(std::string(nom));
    for (const ItemDictionnaire& item : kItems) {
      TabDyn definition;
      definition.Remplace(1, item.type);
      definition.Remplace(2, item.definition);
      definition.Remplace(3, "");
      definition.Remplace(4, item.titre);
      definition.Remplace(5, item.format);
      definition.Remplace(6, "S");
      std::string dict = std::string("DICT ") + item.fichier;
      store.CreeFichier(dict);
      store.Ecrit(dict, item.nom, definition.Texte());
    }
  });
}

}  // namespace marbrel
