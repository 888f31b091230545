#include "tests/support/releve.h"

TEST(Sectorisation, CodesNamesAndLinesPerDossierType) {
  // Each case: the dossier type, the civil status attributes, the lines.
  const std::vector<V> cas = {
      // A 7-character quarter code carries its sector and sub-sector; the names line up.
      {"AIDE", "39=R07|40=0120304", " ", " Responsable          : R07     RESR07",
       " Secteur              : 012     SEC012", " Sous-Secteur         : 01203   SOU01203",
       " Quartier             : 0120304 QUA0120304"},
      // A 2-character quarter code gives the same short sector codes.
      {"AIDE", "40=01", " ",
       " Responsable          :      ", " Secteur              : 01     SEC01",
       " Sous-Secteur         : 01   SOU01", " Quartier             : 01 QUA01"},
      {"AIDANT", "31=012|32=01203|33=0120304|34=T|35=C0412", " ",
       " Secteur              : 012     SEC012", " Sous-Secteur         : 01203   SOU01203",
       " Quartier             : 0120304 QUA0120304", " Centre médical       : C04     CENC04",
       " Antenne médicale     : C0412  ANTC0412", " Moyen locomotion     : Transports en commun"},
      // Empty codes keep every line, gaps included.
      {"AIDANT", "2=NOM", " ",
       " Secteur              :      ", " Sous-Secteur         :    ", " Quartier             :  ",
       " Centre médical       :      ", " Antenne médicale     :   ", " Moyen locomotion     : "},
      // Another type reads CIVILAIDE, without responsible or medical lines.
      {"BENEVOLE", "31=012|32=01203|33=01|35=C0412|39=R07|40=0120304", " ",
       " Secteur              : 012     SEC012", " Sous-Secteur         : 01203   SOU01203",
       " Quartier             : 01 QUA01"},
  };
  Banc b;
  // Each file of names knows every code, by its own first three letters and the code.
  for (const std::string f :
       {"RESPONSABLE", "SECTEUR", "SOUSSECTEUR", "QUARTIER", "CENTREMEDICAL", "ANTENNEMEDICALE"})
    for (const char* c : {"R07", "01", "012", "01203", "0120304", "C04", "C0412"})
      b.Met(f, c, Rec({f.substr(0, 3) + c}));
  b.Met("TABLES", "MOYENSLOC", Rec({"", "V]T", "Voiture]Transports en commun"}));
  for (const V& c : cas) {
    const std::string cle = "P000" + std::to_string(&c - &cas[0]);
    b.Met(c[0] == "AIDANT" ? "CIVILAIDANT" : "CIVILAIDE", cle, Fiche(c[1]));
    b.Imprime(c[0], {cle});
    EXPECT_EQ(Bloc(b, "SECTORISATION"), V(c.begin() + 2, c.end())) << c[0] << " " << c[1];
  }
}

TEST(Sectorisation, AnUnknownOrEmptyMeansOfTransportTakesTheLabelWhereTheScanStops) {
  Banc b;
  // The table's free position carries a label of its own.
  b.Met("TABLES", "MOYENSLOC", Rec({"", "V]T]", "Voiture]Transports en commun]Non renseigné"}));
  b.Met("CIVILAIDANT", "S0001", Fiche("34=X"));
  b.Met("CIVILAIDANT", "S0002", Fiche("2=NOM"));
  b.Imprime("AIDANT", {"S0001", "S0002"});
  EXPECT_EQ(Bloc(b, "SECTORISATION").back(), " Moyen locomotion     : Non renseigné");
  EXPECT_EQ(Bloc(b, "SECTORISATION", 1).back(), " Moyen locomotion     : Non renseigné");
}
