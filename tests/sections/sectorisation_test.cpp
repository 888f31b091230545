#include "tests/support/releve.h"

TEST(Sectorisation, CodesNamesAndLinesPerDossierType) {
  // Each case: the dossier type, the civil status attributes, the lines.
  const std::vector<V> cas = {
      // A 7-character quarter code carries its sector and sub-sector; the names line up.
      {"AIDE", "39=R07|40=0120304", " ", " Responsable          : R07     Mme BERNARD",
       " Secteur              : 012     Nord", " Sous-Secteur         : 01203   Nord-Gare",
       " Quartier             : 0120304 Gare Sud"},
      // A 2-character quarter code gives the same short sector codes.
      {"AIDE", "40=01", " ",
       " Responsable          :      ", " Secteur              : 01     Court",
       " Sous-Secteur         : 01   Court-Sous", " Quartier             : 01 Court-Quartier"},
      {"AIDANT", "31=012|32=01203|33=0120304|34=T|35=C0412", " ",
       " Secteur              : 012     Nord", " Sous-Secteur         : 01203   Nord-Gare",
       " Quartier             : 0120304 Gare Sud", " Centre médical       : C04     Centre Pasteur",
       " Antenne médicale     : C0412  Antenne Villette",
       " Moyen locomotion     : Transports en commun"},
      // Empty codes keep every line, gaps included.
      {"AIDANT", "2=NOM", " ",
       " Secteur              :      ", " Sous-Secteur         :    ", " Quartier             :  ",
       " Centre médical       :      ", " Antenne médicale     :   ", " Moyen locomotion     : "},
      // Another type reads CIVILAIDE, without responsible or medical lines.
      {"BENEVOLE", "31=012|32=01203|33=01|35=C0412|39=R07|40=0120304", " ",
       " Secteur              : 012     Nord", " Sous-Secteur         : 01203   Nord-Gare",
       " Quartier             : 01 Court-Quartier"},
  };
  Banc b;
  // The names, as file, key and name.
  const V noms = {
      "RESPONSABLE",     "R07",   "Mme BERNARD",     "SECTEUR",       "012",     "Nord",
      "SECTEUR",         "01",    "Court",           "SOUSSECTEUR",   "01203",   "Nord-Gare",
      "SOUSSECTEUR",     "01",    "Court-Sous",      "QUARTIER",      "0120304", "Gare Sud",
      "QUARTIER",        "01",    "Court-Quartier",  "CENTREMEDICAL", "C04",     "Centre Pasteur",
      "ANTENNEMEDICALE", "C0412", "Antenne Villette"};
  for (size_t i = 0; i < noms.size(); i += 3) b.Met(noms[i], noms[i + 1], Rec({noms[i + 2]}));
  b.Met("TABLES", "MOYENSLOC", Rec({"", "V]T", "Voiture]Transports en commun"}));
  for (const V& c : cas) {
    const std::string cle = "P000" + std::to_string(&c - &cas[0]);
    b.Met(c[0] == "AIDANT" ? "CIVILAIDANT" : "CIVILAIDE", cle, Fiche(c[1]));
    b.Imprime(c[0], {cle});
    EXPECT_EQ(Bloc(b, "SECTORISATION"), V(c.begin() + 2, c.end())) << c[0] << " " << c[1];
  }
}
