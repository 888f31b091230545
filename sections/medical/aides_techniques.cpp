// The technical aids in use at a care recipient's home, two to a line, from
// the environment record that the housing section read.
#include "control/ctr_vesko.h"
#include "db/lecture.h"
#include "db/variable.h"
#include "marbrel/texte.h"

namespace {

// The label of an aid, the table read afresh each time.
std::string Libelle_Aide(const std::string& code) {
  return db::Libelle_Table("AIDETECHNIQUE", code);
}

}  // namespace

void Ctr_Vesko::Aide_Technique() {
  Titre("AIDES TECHNIQUES");
  const TabDyn& environnement = Variable::Enregistrement(Fic::ENVIRONAIDE);
  // Always three lines of two aids, laid out like the activities: an empty
  // left column prints nothing at all, so an aid alone on the right starts
  // its line; an empty right column ends the line with one space.
  for (long j = 1; j <= 5; j += 2) {
    const std::string gauche = environnement(19, j);
    const std::string droite = environnement(19, j + 1);
    if (!gauche.empty()) {
      const std::string libelle = Libelle_Aide(gauche);
      P().Print(" " + libelle + texte::Space(40 - texte::Len(libelle)), false);
    }
    P().Print(droite.empty() ? " " : Libelle_Aide(droite));
  }
}
