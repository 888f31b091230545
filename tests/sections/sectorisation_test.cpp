// Sector, sub-sector and quarter of both dossier types; the care recipient's
// responsible person; the carer's medical centre, antenna and transport.
#include <gtest/gtest.h>

#include "tests/support/banc.h"

using banc::Banc;
using banc::Rec;

namespace {

marbrel::TabDyn Fiche(std::initializer_list<std::pair<long, std::string>> attributs) {
  marbrel::TabDyn r;
  r.Remplace(4, "NOM");
  for (const auto& [a, v] : attributs) r.Remplace(a, v);
  return r;
}

void Geographie(Banc& b) {
  b.Met("RESPONSABLE", "R07", Rec({"Mme BERNARD"}));
  b.Met("SECTEUR", "012", Rec({"Nord"}));
  b.Met("SECTEUR", "01", Rec({"Secteur court"}));
  b.Met("SOUSSECTEUR", "01203", Rec({"Nord-Gare"}));
  b.Met("SOUSSECTEUR", "01", Rec({"Sous-secteur court"}));
  b.Met("QUARTIER", "0120304", Rec({"Gare Sud"}));
  b.Met("QUARTIER", "01", Rec({"Quartier court"}));
}

}  // namespace

TEST(Sectorisation, CareRecipientCodesComeFromTheQuarterCode) {
  Banc b;
  Geographie(b);
  b.Met("CIVILAIDE", "A0001", Fiche({{39, "R07"}, {40, "0120304"}}));
  b.Imprime("AIDE", {"A0001"});
  auto l = b.Section("SECTORISATION");
  // Codes of 3, 5 and 7 characters put the three names in one column.
  const std::vector<std::string> attendu = {
      " ", " Responsable          : R07     Mme BERNARD", " Secteur              : 012     Nord",
      " Sous-Secteur         : 01203   Nord-Gare", " Quartier             : 0120304 Gare Sud"};
  ASSERT_GE(l.size(), attendu.size());
  EXPECT_EQ(std::vector<std::string>(l.begin(), l.begin() + 5), attendu);
  // No medical or transport lines for a care recipient (the page ends here).
  EXPECT_EQ(l.size(), 5u);
}

TEST(Sectorisation, ShortQuarterCodeGivesShortSectorCodes) {
  Banc b;
  Geographie(b);
  b.Met("CIVILAIDE", "A0001", Fiche({{40, "01"}}));
  b.Imprime("AIDE", {"A0001"});
  auto l = b.Section("SECTORISATION");
  ASSERT_GE(l.size(), 5u);
  EXPECT_EQ(l[1], " Responsable          :      ");
  EXPECT_EQ(l[2], " Secteur              : 01     Secteur court");
  EXPECT_EQ(l[3], " Sous-Secteur         : 01   Sous-secteur court");
  EXPECT_EQ(l[4], " Quartier             : 01 Quartier court");
}

TEST(Sectorisation, CarerMedicalCentreAntennaAndTransport) {
  Banc b;
  Geographie(b);
  b.Met("CENTREMEDICAL", "C04", Rec({"Centre Pasteur"}));
  b.Met("ANTENNEMEDICALE", "C0412", Rec({"Antenne Villette"}));
  b.Met("TABLES", "MOYENSLOC", Rec({"", "V]M]T", "Voiture]Moto]Transports en commun"}));
  b.Met("CIVILAIDANT", "S0001",
        Fiche({{31, "012"}, {32, "01203"}, {33, "0120304"}, {34, "T"}, {35, "C0412"}}));
  b.Imprime("AIDANT", {"S0001"});
  auto l = b.Section("SECTORISATION");
  const std::vector<std::string> attendu = {" ",
                                            " Secteur              : 012     Nord",
                                            " Sous-Secteur         : 01203   Nord-Gare",
                                            " Quartier             : 0120304 Gare Sud",
                                            " Centre médical       : C04     Centre Pasteur",
                                            " Antenne médicale     : C0412  Antenne Villette",
                                            " Moyen locomotion     : Transports en commun",
                                            " "};
  EXPECT_EQ(l, attendu);
}

TEST(Sectorisation, CarerWithoutCodesKeepsEveryLine) {
  Banc b;
  b.Met("CIVILAIDANT", "S0001", Fiche({}));
  b.Imprime("AIDANT", {"S0001"});
  auto l = b.Section("SECTORISATION");
  const std::vector<std::string> attendu = {" ",
                                            " Secteur              :      ",
                                            " Sous-Secteur         :    ",
                                            " Quartier             :  ",
                                            " Centre médical       :      ",
                                            " Antenne médicale     :   ",
                                            " Moyen locomotion     : ",
                                            " "};
  EXPECT_EQ(l, attendu);
}

TEST(Sectorisation, OtherDossierTypeUsesCarerCodesWithoutMedicalLines) {
  Banc b;
  Geographie(b);
  b.Met("CENTREMEDICAL", "C04", Rec({"Centre Pasteur"}));
  // Any type other than "AIDANT" reads its main record from CIVILAIDE.
  b.Met(
      "CIVILAIDE", "B0001",
      Fiche({{31, "012"}, {32, "01203"}, {33, "0120304"}, {35, "C0412"}, {39, "R07"}, {40, "01"}}));
  b.Imprime("BENEVOLE", {"B0001"});
  auto l = b.Section("SECTORISATION");
  const std::vector<std::string> attendu = {" ", " Secteur              : 012     Nord",
                                            " Sous-Secteur         : 01203   Nord-Gare",
                                            " Quartier             : 0120304 Gare Sud"};
  ASSERT_GE(l.size(), 4u);
  EXPECT_EQ(std::vector<std::string>(l.begin(), l.begin() + 4), attendu);
  for (const auto& ligne : l) {
    EXPECT_EQ(ligne.find("Centre"), std::string::npos);
    EXPECT_EQ(ligne.find("Moyen"), std::string::npos);
  }
}
