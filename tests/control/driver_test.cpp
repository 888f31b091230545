// The print run on the recording printer: headers, the order of the sections
// per dossier type, and the promise that a failure never stops the run.
#include <gtest/gtest.h>

#include <algorithm>

#include "db/lecture.h"
#include "db/variable.h"
#include "marbrel/erreur.h"
#include "marbrel/outils.h"
#include "marbrel/sqlite_store.h"
#include "printing/print_formats.h"
#include "tests/support/banc.h"

using banc::Banc;
using banc::Rec;

namespace {

std::string LigneDate(const std::string& date, int page) {
  return "Date : " + date + std::string(55, ' ') + "Page " + std::to_string(page);
}

const std::string kDossierAide = std::string(17, ' ') + "DOSSIER AIDE";

std::vector<std::string> Tranche(const std::vector<std::string>& l, size_t debut, size_t n) {
  if (debut + n > l.size()) return {};
  return {l.begin() + static_cast<long>(debut), l.begin() + static_cast<long>(debut + n)};
}

}  // namespace

TEST(Entete, FirstPageAndFollowingPages) {
  Banc b;
  b.Met("CIVILAIDE", "A0001", Rec({"", "DURAND", "Marie"}));
  b.Imprime("AIDE", {"A0001"}, "05/02/2024");
  const auto l = b.Lignes();
  EXPECT_EQ(Tranche(l, 0, 13),
            (std::vector<std::string>{" ", " ", " ", " ", LigneDate("05/02/2024", 1), " ", " ",
                                      kDossierAide, " ", " ", "A0001 DURAND Marie", " ", " "}));
  // The dossier title is the only 18-point item, and it is bold.
  for (const auto& e : b.Enregistrement().pages.at(0).elements) {
    if (const auto* t = std::get_if<printing::ElementTexte>(&e)) {
      EXPECT_EQ(t->police.taille == 18, t->texte == kDossierAide) << t->texte;
      EXPECT_TRUE(t->police.gras || t->texte != kDossierAide);
    }
  }
  // A following page: eject, two blanks, the date line with its number.
  const auto ff = static_cast<size_t>(std::find(l.begin(), l.end(), "\f") - l.begin());
  EXPECT_EQ(Tranche(l, ff, 9),
            (std::vector<std::string>{"\f", " ", " ", LigneDate("05/02/2024", 2), " ", " ",
                                      "A0001 DURAND Marie", " ", " "}));
}

TEST(Entete, PageTwelveIsOneCharacterLonger) {
  Banc b;  // for the application and a clean set of slots
  printing::Enregistrement rec;
  Ctr_Vesko& c = b.Controle();
  c.Commence_Sur(
      std::make_unique<printing::Printer>(std::make_unique<printing::RecordingSurface>(&rec)));
  Variable::Principal = Rec({"", "MARTIN", "Paul"});
  db::FixeAujourdhui(std::stol(marbrel::Outils::Instance().Date_Interne("29/02/2024")));
  std::string code = "S0001";
  c.Entete_Page(code);
  for (int i = 0; i < 11; ++i) c.NewPage(code);
  c.Imprimante()->EndDoc();
  const std::string texte = printing::EnTexte(rec);
  // Eight header lines after the last eject, nothing else.
  EXPECT_EQ(std::count(texte.begin(), texte.end(), '\f'), 11);
  EXPECT_EQ(texte.substr(texte.rfind('\f')),
            "\f\n \n \n" + LigneDate("29/02/2024", 12) + "\n \n \nS0001 MARTIN Paul\n \n \n");
}

TEST(Driver, TwoPersonsRestartNumberingAndAbsentKeyPrintsEmptyDossier) {
  Banc b;
  b.Met("CIVILAIDE", "A0001", Rec({"", "DURAND", "Marie"}));
  b.Imprime("AIDE", {"A0001", "A9999"});
  const auto l = b.Lignes();
  std::vector<size_t> pages1;
  for (size_t i = 0; i < l.size(); ++i)
    if (l[i] == LigneDate("15/03/2024", 1)) pages1.push_back(i);
  ASSERT_EQ(pages1.size(), 2u);
  // The second dossier starts on a fresh page with its own first header.
  EXPECT_EQ(l[pages1[1] - 5], "\f");
  EXPECT_EQ(l[pages1[1] + 6], "A9999  ");
  EXPECT_EQ(b.Controle().Cles_Absentes(), std::vector<std::string>{"A9999"});
  EXPECT_TRUE(b.Enregistrement().termine);
}

TEST(Driver, EmptyKeyListGivesOneEmptyDossier) {
  Banc b;
  b.Imprime("AIDE", {});
  const auto l = b.Lignes();
  ASSERT_GE(l.size(), 11u);
  EXPECT_EQ(l[10], "  ");
  EXPECT_EQ(std::count(l.begin(), l.end(), LigneDate("15/03/2024", 1)), 1);
}

TEST(Driver, OrderOfSectionsByDossierType) {
  // The titles of the rows, joined; the tasks/capacities and unavailability
  // titles depend on the type inside their sections and are left out.
  const std::string aide =
      "ETAT CIVIL|RESSOURCES|ORIGINE DOSSIER|ADRESSE FACTURATION|ADRESSE BANCAIRE|SECTORISATION|"
      "MODALITES D'INTERVENTION|AIDANTS INCOMPATIBLES|COMPORTEMENT|HABITAT|ENTOURAGE|"
      "PERSONNE A PREVENIR|CONTACTS|INTERVENANTS EXTERIEURS|AIDES TECHNIQUES|"
      "ANTECEDENTS MEDICAUX|DIAGNOSTIC|TRAITEMENT MEDICAL|BLOC-NOTES|";
  const std::string aidant =
      "ETAT CIVIL|ADRESSE BANCAIRE|SECTORISATION|FORMATION|EXPERIENCES|ACTIVITES POSSIBLES|"
      "COMPORTEMENT|DISPONIBILITES|PERSONNE A PREVENIR|HANDICAP|DETAIL ETRANGER|BLOC-NOTES|";
  // A third word runs the common rows, the carer's training rows and the care
  // recipient's closing rows, under the title "DOSSIER AIDE".
  const std::string autre =
      "ETAT CIVIL|ADRESSE BANCAIRE|SECTORISATION|FORMATION|EXPERIENCES|ACTIVITES POSSIBLES|"
      "COMPORTEMENT|PERSONNE A PREVENIR|CONTACTS|INTERVENANTS EXTERIEURS|AIDES TECHNIQUES|"
      "ANTECEDENTS MEDICAUX|DIAGNOSTIC|TRAITEMENT MEDICAL|BLOC-NOTES|";
  const struct {
    std::string type, titres, dossier;
  } cas[] = {{"AIDE", aide, kDossierAide},
             {"AIDANT", aidant, std::string(17, ' ') + "DOSSIER AIDANT"},
             {"aide", autre, kDossierAide}};
  for (const auto& c : cas) {
    SCOPED_TRACE(c.type);
    Banc b;
    b.Imprime(c.type, {"K1"});
    std::string titres;
    for (const auto& page : b.Enregistrement().pages) {
      for (const auto& e : page.elements) {
        const auto* t = std::get_if<printing::ElementTexte>(&e);
        const std::string cle = t ? "|" + t->texte + "|" : "";
        if (t && t->police.taille == 16 && ("|" + aide + aidant).find(cle) != std::string::npos)
          titres += t->texte + "|";
      }
    }
    EXPECT_EQ(titres, c.titres);
    EXPECT_EQ(b.Lignes().at(7), c.dossier);
  }
}

TEST(Driver, AFailingSectionDoesNotStopTheRun) {
  Banc b;
  b.Met("CIVILAIDE", "A0001", Rec({"", "DURAND", "Marie"}));
  b.FaitEchouer("RESSOURCESAIDE");
  b.Imprime("AIDE", {"A0001"});
  const auto& incidents = b.Controle().Incidents();
  ASSERT_EQ(incidents.size(), 1u);
  EXPECT_EQ(incidents[0].section, "Ressource_Aide");
  EXPECT_EQ(incidents[0].cle, "A0001");
  EXPECT_NE(incidents[0].message.find("RESSOURCESAIDE"), std::string::npos);
  // The sections after the failing one still printed and the document ended.
  EXPECT_TRUE(b.Enregistrement().termine);
  const auto l = b.Lignes();
  EXPECT_EQ(std::count(l.begin(), l.end(), "ORIGINE DOSSIER"), 1);
  EXPECT_EQ(std::count(l.begin(), l.end(), "BLOC-NOTES"), 1);
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

  // A base without every file of a run: the first one missing is named.
  auto store = std::make_shared<marbrel::SqliteStore>(b.Chemin() + ".partielle",
                                                      marbrel::SqliteStore::Mode::Creation);
  store->CreeFichier("ACTIVITES");
  store->CreeFichier("AIDEDETAILTACHE");
  b.Controle().TheDatabase(std::make_shared<marbrel::Base>(store));
  try {
    b.Controle().Edition(liste, type);
    FAIL() << "l'ouverture aurait dû échouer";
  } catch (const marbrel::Erreur& e) {
    EXPECT_NE(std::string(e.what()).find("ANTENNEMEDICALE"), std::string::npos);
  }
  EXPECT_EQ(Variable::Base, nullptr);
  for (const auto& f : Variable::Fichiers) EXPECT_EQ(f, nullptr);
}
