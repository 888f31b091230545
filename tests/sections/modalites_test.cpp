// The intervention modalities: underlined headings, the mission text cut at
// its stored lines and at spaces within 76 characters, the planning line, and
// the needs record left in its slot for the tasks section.
#include <gtest/gtest.h>

#include "db/procedure.h"
#include "db/variable.h"
#include "printing/recording.h"
#include "tests/support/banc.h"
#include "tests/support/section_seule.h"

using banc::Rec;
using V = std::vector<std::string>;

namespace {

const std::string CRLF = "\r\n";
const std::string MISSION = "Informations pour ordre de mission :";
const std::string PLANNING = "Informations pour planning :";

// A BESOINSAIDE record: the task key's suffix in 1, the mission text in 5,
// the planning in 17.
marbrel::TabDyn Besoins(const std::string& mission, const std::string& planning) {
  return Rec({"T01", "", "", "", mission, "", "", "", "", "", "", "", "", "", "", "", planning});
}

}  // namespace

TEST(ModaliteInterv, NoRecordPrintsUnderlinedHeadingsAndBlanks) {
  banc::Banc b;
  b.Imprime("AIDE", {"A0001"});
  EXPECT_EQ(banc::Section_Seule(b, "MODALITES D'INTERVENTION"),
            (V{" ", MISSION, " ", " ", " ", PLANNING, " ", " "}));
  int soulignes = 0;
  for (const auto& page : b.Enregistrement().pages) {
    for (const auto& e : page.elements) {
      const auto* t = std::get_if<printing::ElementTexte>(&e);
      if (t && t->police.souligne && (t->texte == MISSION || t->texte == PLANNING)) ++soulignes;
    }
  }
  EXPECT_EQ(soulignes, 2);
}

TEST(ModaliteInterv, MissionTextWithA200CharacterLine) {
  const std::string longue =  // 200 characters
      "Passage le matin pour le lever, la toilette et l'habillage ; préparer le petit "
      "déjeuner, vérifier la prise des médicaments du pilulier puis aérer la chambre et "
      "refaire le lit avant de partir à 10h30 .";
  banc::Banc b;
  b.Met("BESOINSAIDE", "A0001",
        Besoins("Sonner deux fois." + CRLF + longue + CRLF + "Clé chez la voisine.",
                "Lundi matin]Jeudi après-midi"));
  b.Imprime("AIDE", {"A0001"});
  EXPECT_EQ(banc::Section_Seule(b, "MODALITES D'INTERVENTION"),
            (V{" ", MISSION, " ", " Sonner deux fois.",
               " Passage le matin pour le lever, la toilette et l'habillage ; préparer le",
               " petit déjeuner, vérifier la prise des médicaments du pilulier puis aérer la",
               " chambre et refaire le lit avant de partir à 10h30 .", " Clé chez la voisine.", " ",
               " ", PLANNING, " ", " Lundi matin, Jeudi après-midi"}));
}

TEST(ModaliteInterv, LeavesTheNeedsRecordInItsSlot) {
  banc::Banc b;
  b.Met("BESOINSAIDE", "A0001", Besoins("Texte", "Planning"));
  printing::Enregistrement rec;
  Ctr_Vesko& c = b.Controle();
  c.TheDatabase(marbrel::Base::OuvreSqlite(b.Chemin(), true));
  Procedure::Ouvre_Fichiers();
  c.Commence_Sur(
      std::make_unique<printing::Printer>(std::make_unique<printing::RecordingSurface>(&rec)));
  std::string code = "A0001";
  c.Modalite_Interv(code);
  EXPECT_EQ(Variable::Enregistrement(Fic::BESOINSAIDE)(1, 1), "T01");
  // An absent key leaves an empty record, not the previous person's.
  code = "A0002";
  c.Modalite_Interv(code);
  EXPECT_TRUE(Variable::Enregistrement(Fic::BESOINSAIDE).Vide());
  Procedure::Ferme_Fichiers();
}
