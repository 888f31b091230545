// The print run on the recording printer: headers, the order of the
// sections per dossier type, page breaks and the promise that a failure
// never stops the run.
#include <gtest/gtest.h>

#include <algorithm>

#include "db/lecture.h"
#include "db/variable.h"
#include "marbrel/erreur.h"
#include "marbrel/outils.h"
#include "marbrel/sqlite_store.h"
#include "marbrel/texte.h"
#include "printing/imprimantes.h"
#include "printing/print_formats.h"
#include "tests/support/banc.h"

using banc::Banc;
using banc::Rec;

namespace {

// The 16-point titles, in print order.
std::vector<std::string> Titres(const Banc& b) {
  std::vector<std::string> titres;
  for (const auto& page : b.Enregistrement().pages) {
    for (const auto& e : page.elements) {
      const auto* t = std::get_if<printing::ElementTexte>(&e);
      if (t && t->police.taille == 16) titres.push_back(t->texte);
    }
  }
  return titres;
}

std::string LigneDate(const std::string& date, int page) {
  return "Date : " + date + std::string(55, ' ') + "Page " + std::to_string(page);
}

}  // namespace

TEST(Entete, FirstPageAndFollowingPages) {
  Banc b;
  b.Met("CIVILAIDE", "A0001", Rec({"", "DURAND", "Marie"}));
  b.Imprime("AIDE", {"A0001"}, "05/02/2024");
  auto l = b.Lignes();
  ASSERT_GE(l.size(), 13u);
  for (int i = 0; i < 4; ++i) EXPECT_EQ(l[i], " ");
  EXPECT_EQ(l[4], LigneDate("05/02/2024", 1));
  EXPECT_EQ(l[5], " ");
  EXPECT_EQ(l[7], std::string(17, ' ') + "DOSSIER AIDE");
  EXPECT_EQ(l[10], "A0001 DURAND Marie");
  EXPECT_EQ(l[11], " ");
  EXPECT_EQ(l[12], " ");

  // The dossier title is the only 18-point bold item.
  const auto& premier = b.Enregistrement().pages.at(0).elements;
  int grands = 0;
  for (const auto& e : premier) {
    const auto* t = std::get_if<printing::ElementTexte>(&e);
    if (t && t->police.taille == 18) {
      ++grands;
      EXPECT_TRUE(t->police.gras);
      EXPECT_EQ(t->texte, std::string(17, ' ') + "DOSSIER AIDE");
    }
  }
  EXPECT_EQ(grands, 1);

  // A following page: eject, two blanks, the date line with its number.
  auto ff = std::find(l.begin(), l.end(), "\f");
  ASSERT_NE(ff, l.end());
  EXPECT_EQ(*(ff + 1), " ");
  EXPECT_EQ(*(ff + 2), " ");
  EXPECT_EQ(*(ff + 3), LigneDate("05/02/2024", 2));
  EXPECT_EQ(*(ff + 6), "A0001 DURAND Marie");
}

TEST(Entete, PageTwelveIsOneCharacterLonger) {
  Banc b;  // for the application and a clean set of slots
  printing::Enregistrement rec;
  Ctr_Vesko& c = b.Controle();
  c.Commence_Sur(
      std::make_unique<printing::Printer>(std::make_unique<printing::RecordingSurface>(&rec)));
  c.Type_Dossier = "AIDANT";
  Variable::Principal = Rec({"", "MARTIN", "Paul"});
  db::FixeAujourdhui(std::stol(marbrel::Outils::Instance().Date_Interne("29/02/2024")));
  std::string code = "S0001";
  c.Entete_Page(code);
  EXPECT_EQ(std::get<printing::ElementTexte>(rec.pages[0].elements[7]).texte,
            std::string(17, ' ') + "DOSSIER AIDANT");
  for (int i = 0; i < 11; ++i) c.NewPage(code);
  c.Imprimante()->EndDoc();
  ASSERT_EQ(rec.pages.size(), 12u);
  const auto& derniere = rec.pages.back().elements;
  EXPECT_EQ(std::get<printing::ElementTexte>(derniere.at(2)).texte, LigneDate("29/02/2024", 12));
  EXPECT_EQ(LigneDate("29/02/2024", 12).size(), LigneDate("29/02/2024", 1).size() + 1);
  EXPECT_EQ(std::get<printing::ElementTexte>(derniere.at(5)).texte, "S0001 MARTIN Paul");
  // Eight header lines after the eject, nothing else.
  EXPECT_EQ(derniere.size(), 8u);
  EXPECT_EQ(c.Num_Page, 12);
}

TEST(Driver, TwoPersonsRestartNumberingAndAbsentKeyPrintsEmptyDossier) {
  Banc b;
  b.Met("CIVILAIDE", "A0001", Rec({"", "DURAND", "Marie"}));
  b.Imprime("AIDE", {"A0001", "A9999"});
  auto l = b.Lignes();
  std::vector<size_t> pages1;
  for (size_t i = 0; i < l.size(); ++i)
    if (l[i] == LigneDate("15/03/2024", 1)) pages1.push_back(i);
  ASSERT_EQ(pages1.size(), 2u);
  // The second dossier starts on a fresh page with its own first header.
  EXPECT_EQ(l[pages1[1] - 5], "\f");
  EXPECT_NE(std::find(l.begin(), l.end(), "A9999  "), l.end());
  ASSERT_EQ(b.Controle().Cles_Absentes().size(), 1u);
  EXPECT_EQ(b.Controle().Cles_Absentes()[0], "A9999");
  EXPECT_TRUE(b.Enregistrement().termine);
}

TEST(Driver, EmptyKeyListGivesOneEmptyDossier) {
  Banc b;
  b.Imprime("AIDE", {});
  auto l = b.Lignes();
  ASSERT_GE(l.size(), 11u);
  EXPECT_EQ(l[10], "  ");
  EXPECT_EQ(std::count(l.begin(), l.end(), LigneDate("15/03/2024", 1)), 1);
}

TEST(Driver, OrderOfSectionsByDossierType) {
  const std::vector<std::string> aide = {"ETAT CIVIL",
                                         "RESSOURCES",
                                         "ORIGINE DOSSIER",
                                         "ADRESSE FACTURATION",
                                         "ADRESSE BANCAIRE",
                                         "SECTORISATION",
                                         "MODALITES D'INTERVENTION",
                                         "AIDANTS INCOMPATIBLES",
                                         "COMPORTEMENT",
                                         "HABITAT",
                                         "ENTOURAGE",
                                         "PERSONNE A PREVENIR",
                                         "CONTACTS",
                                         "INTERVENANTS EXTERIEURS",
                                         "AIDES TECHNIQUES",
                                         "ANTECEDENTS MEDICAUX",
                                         "DIAGNOSTIC",
                                         "TRAITEMENT MEDICAL",
                                         "BLOC-NOTES"};
  const std::vector<std::string> aidant = {
      "ETAT CIVIL",   "ADRESSE BANCAIRE", "SECTORISATION",
      "FORMATION",    "EXPERIENCES",      "ACTIVITES POSSIBLES",
      "COMPORTEMENT", "DISPONIBILITES",   "PERSONNE A PREVENIR",
      "HANDICAP",     "DETAIL ETRANGER",  "BLOC-NOTES"};
  // A third word runs the common rows, the carer's training rows and the
  // care recipient's closing rows.
  const std::vector<std::string> autre = {
      "ETAT CIVIL",  "ADRESSE BANCAIRE",        "SECTORISATION",    "FORMATION",
      "EXPERIENCES", "ACTIVITES POSSIBLES",     "COMPORTEMENT",     "PERSONNE A PREVENIR",
      "CONTACTS",    "INTERVENANTS EXTERIEURS", "AIDES TECHNIQUES", "ANTECEDENTS MEDICAUX",
      "DIAGNOSTIC",  "TRAITEMENT MEDICAL",      "BLOC-NOTES"};
  auto filtre = [](std::vector<std::string> t, const std::vector<std::string>& connus) {
    std::vector<std::string> r;
    for (auto& x : t)
      if (std::find(connus.begin(), connus.end(), x) != connus.end()) r.push_back(x);
    return r;
  };
  // The tasks/capacities title and the unavailability heading depend on the
  // type inside their sections; the order of the rows is what is checked here.
  std::vector<std::string> tous = aide;
  tous.insert(tous.end(), aidant.begin(), aidant.end());
  {
    Banc b;
    b.Imprime("AIDE", {"A1"});
    EXPECT_EQ(filtre(Titres(b), tous), aide);
  }
  {
    Banc b;
    b.Imprime("AIDANT", {"S1"});
    EXPECT_EQ(filtre(Titres(b), tous), aidant);
  }
  {
    Banc b;
    b.Imprime("aide", {"X1"});
    EXPECT_EQ(filtre(Titres(b), tous), autre);
    // The third word prints "DOSSIER AIDE".
    EXPECT_EQ(b.Lignes()[7], std::string(17, ' ') + "DOSSIER AIDE");
  }
}

TEST(Edition, CancelledChoicePrintsNothingAndClosesFiles) {
  Banc b;
  b.Imprime("AIDE", {"A1"});
  printing::Enregistrement vide;
  marbrel::Outils::Instance().Installe_Choix([](const std::string&) { return "-1"; },
                                             [] { return std::int16_t{9}; });
  marbrel::TabDyn liste = Rec({"A1"});
  std::string type = "AIDE";
  b.Controle().TheDatabase(marbrel::Base::OuvreSqlite(b.Chemin(), true));
  size_t pages_avant = b.Enregistrement().pages.size();
  b.Controle().Edition(liste, type);
  EXPECT_EQ(b.Enregistrement().pages.size(), pages_avant);
  EXPECT_EQ(Variable::Base, nullptr);
  for (const auto& f : Variable::Fichiers) EXPECT_EQ(f, nullptr);
}

TEST(Edition, MissingFileFailsAndStillClosesEverything) {
  Banc b;
  auto store = std::make_shared<marbrel::SqliteStore>(b.Chemin() + ".partielle",
                                                      marbrel::SqliteStore::Mode::Creation);
  store->CreeFichier("ACTIVITES");
  store->CreeFichier("AIDEDETAILTACHE");
  b.Controle().TheDatabase(std::make_shared<marbrel::Base>(store));
  marbrel::TabDyn liste = Rec({"A1"});
  std::string type = "AIDE";
  try {
    b.Controle().Edition(liste, type);
    FAIL() << "l'ouverture aurait dû échouer";
  } catch (const marbrel::Erreur& e) {
    EXPECT_NE(std::string(e.what()).find("ANTENNEMEDICALE"), std::string::npos);
  }
  for (const auto& f : Variable::Fichiers) EXPECT_EQ(f, nullptr);
  EXPECT_EQ(Variable::Base, nullptr);
}
