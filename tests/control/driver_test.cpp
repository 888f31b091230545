// The print run on the recording printer: headers, the order of the sections
// per dossier type, and the promise that a failure never stops the run.
#include "db/variable.h"
#include "marbrel/erreur.h"
#include "marbrel/sqlite_store.h"
#include "tests/support/releve.h"

namespace {

std::string LigneDate(const std::string& date, int page) {
  return "Date : " + date + S(55) + "Page " + std::to_string(page);
}

const std::string kDossierAide = S(17) + "DOSSIER AIDE";

}  // namespace

// The header of a following page is checked on page twelve (controle_test.cpp).
TEST(Driver, FirstPageHeaderThenASecondPersonWithAnAbsentKeyRestartsTheNumbering) {
  Banc b;
  b.Met("CIVILAIDE", "A0001", Rec({"", "DURAND", "Marie"}));
  b.Imprime("AIDE", {"A0001", "A9999"}, "05/02/2024");
  const auto l = b.Lignes();
  EXPECT_EQ(Tranche(l, 0, 13), (V{" ", " ", " ", " ", LigneDate("05/02/2024", 1), " ", " ",
                                  kDossierAide, " ", " ", "A0001 DURAND Marie", " ", " "}));
  // The dossier title is the only 18-point item, and it is bold.
  for (const auto& e : b.Enregistrement().pages.at(0).elements) {
    if (!Texte(e)) continue;
    EXPECT_EQ(Texte(e)->police.taille == 18, Texte(e)->texte == kDossierAide) << Texte(e)->texte;
    EXPECT_TRUE(Texte(e)->police.gras || Texte(e)->texte != kDossierAide);
  }
  // The second dossier starts on a fresh page with its own first header.
  const auto i = static_cast<size_t>(std::find(l.begin(), l.end(), "A9999  ") - l.begin());
  ASSERT_GT(i, 11u);
  EXPECT_EQ(Tranche(l, i - 11, i + 1), (V{"\f", " ", " ", " ", " ", LigneDate("05/02/2024", 1), " ",
                                          " ", kDossierAide, " ", " ", "A9999  "}));
  EXPECT_EQ(b.Controle().Cles_Absentes(), V{"A9999"});
  EXPECT_TRUE(b.Enregistrement().termine);
}

TEST(Driver, OrderOfSectionsByDossierTypeAndOneDossierForAnEmptyList) {
  // A third word runs the common rows, the carer's training rows and the care
  // recipient's closing rows, under the title "DOSSIER AIDE". An empty key
  // list still gives one dossier, for the key "".
  const struct {
    std::string type, dossier, cle, titres;
  } cas[] = {
      {"AIDE", "AIDE", "K0001",
       "ETAT CIVIL|CONJOINT|AUTRES PERSONNES AU FOYER|RESSOURCES|ORIGINE DOSSIER|"
       "ADRESSE FACTURATION|ADRESSE BANCAIRE|SECTORISATION|MODALITES D'INTERVENTION|"
       "AIDANTS INCOMPATIBLES|TACHES A ACCOMPLIR|COMPORTEMENT|INDISPONIBILITES|HABITAT|ENTOURAGE|"
       "PERSONNE A PREVENIR|CONTACTS|INTERVENANTS EXTERIEURS|AIDES TECHNIQUES|"
       "ANTECEDENTS MEDICAUX|DIAGNOSTIC|TRAITEMENT MEDICAL|BLOC-NOTES|"},
      {"AIDANT", "AIDANT", "K0001",
       "ETAT CIVIL|ADRESSE BANCAIRE|SECTORISATION|FORMATION|EXPERIENCES|ACTIVITES POSSIBLES|"
       "CAPACITES|COMPORTEMENT|DISPONIBILITES|PERSONNE A PREVENIR|HANDICAP|DETAIL ETRANGER|"
       "BLOC-NOTES|"},
      {"aide", "AIDE", "",
       "ETAT CIVIL|CONJOINT|AUTRES PERSONNES AU FOYER|ADRESSE BANCAIRE|SECTORISATION|FORMATION|"
       "EXPERIENCES|ACTIVITES POSSIBLES|TACHES A ACCOMPLIR|COMPORTEMENT|INDISPONIBILITES|"
       "PERSONNE A PREVENIR|CONTACTS|INTERVENANTS EXTERIEURS|AIDES TECHNIQUES|"
       "ANTECEDENTS MEDICAUX|DIAGNOSTIC|TRAITEMENT MEDICAL|BLOC-NOTES|"}};
  for (const auto& c : cas) {
    SCOPED_TRACE(c.type);
    Banc b;
    b.Imprime(c.type, c.cle.empty() ? V{} : V{c.cle});
    std::string titres;
    for (const auto& page : b.Enregistrement().pages)
      for (const auto& e : page.elements)
        if (Texte(e) && Texte(e)->police.taille == 16) titres += Texte(e)->texte + "|";
    EXPECT_EQ(titres, c.titres);
    const auto l = b.Lignes();
    EXPECT_EQ(Tranche(l, 7, 11), (V{S(17) + "DOSSIER " + c.dossier, " ", " ", c.cle + S(2)}));
    EXPECT_EQ(std::count(l.begin(), l.end(), LigneDate("15/03/2024", 1)), 1);
  }
}

TEST(Driver, AFailingSectionDoesNotStopTheRun) {
  Banc b;
  b.FaitEchouer("RESSOURCESAIDE");
  b.Imprime("AIDE", {"A0001"});
  const auto& incidents = b.Controle().Incidents();
  ASSERT_EQ(incidents.size(), 1u);
  EXPECT_EQ(incidents[0].section + " " + incidents[0].cle, "Ressource_Aide A0001");
  EXPECT_NE(incidents[0].message.find("RESSOURCESAIDE"), std::string::npos);
  // The sections after the failing one still printed and the document ended.
  EXPECT_TRUE(b.Enregistrement().termine);
  EXPECT_NE(b.Texte().find("\nORIGINE DOSSIER\n"), std::string::npos);
}

TEST(Edition, ACancelledChoiceOrAMissingFilePrintNothingAndCloseEverything) {
  Banc b;
  b.Imprime("AIDE", {"A1"});
  const size_t pages_avant = b.Enregistrement().pages.size();
  marbrel::Outils::Instance().Installe_Choix([](const std::string&) { return "-1"; },
                                             [] { return std::int16_t{9}; });
  marbrel::TabDyn liste = Rec({"A1"});
  std::string type = "AIDE";
  b.Controle().TheDatabase(marbrel::Base::OuvreSqlite(b.Chemin(), true));
  b.Controle().Edition(liste, type);
  EXPECT_EQ(b.Enregistrement().pages.size(), pages_avant);
  EXPECT_EQ(Variable::Base, nullptr);
  for (const auto& f : Variable::Fichiers) EXPECT_EQ(f, nullptr);

  // A base without every file of a run: the opening fails, and the file it
  // had opened is closed (the store's message is checked with the store).
  auto store = std::make_shared<marbrel::SqliteStore>(b.Chemin() + ".partielle",
                                                      marbrel::SqliteStore::Mode::Creation);
  store->CreeFichier("ACTIVITES");
  b.Controle().TheDatabase(std::make_shared<marbrel::Base>(store));
  EXPECT_THROW(b.Controle().Edition(liste, type), marbrel::Erreur);
  EXPECT_EQ(Variable::Base, nullptr);
  for (const auto& f : Variable::Fichiers) EXPECT_EQ(f, nullptr);
}
