#include "bench/magasin_realiste.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <random>
#include <set>
#include <stdexcept>

#include "marbrel/creation_base.h"
#include "marbrel/dump.h"
#include "marbrel/marques.h"
#include "marbrel/sqlite_store.h"

namespace banc_essai {

namespace {

using Enregistrements = marbrel::Dump::Enregistrements;

// "A" or "S" and four base-36 digits, from "1000" up.
std::string Cle(char type, int i) {
  static const char chiffres[] = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ";
  int v = 36 * 36 * 36 + i;
  std::string s(4, '0');
  for (int k = 3; k >= 0; --k) {
    s[static_cast<size_t>(k)] = chiffres[v % 36];
    v /= 36;
  }
  return type + s;
}

std::string Attribut(const std::string& rec, int n) {
  size_t debut = 0;
  for (int i = 1; i < n; ++i) {
    debut = rec.find(marbrel::AM, debut);
    if (debut == std::string::npos) return "";
    ++debut;
  }
  return rec.substr(debut, rec.find(marbrel::AM, debut) - debut);
}

// The paragraphs of the demo's notes, to write new notes from.
std::vector<std::string> Paragraphes(const std::map<std::string, Enregistrements>& fichiers) {
  std::vector<std::string> paragraphes;
  for (const char* nom : {"BLOCNOTAIDE", "BLOCNOTAIDANT"}) {
    auto f = fichiers.find(nom);
    if (f == fichiers.end()) continue;
    for (const auto& [cle, rec] : f->second) {
      const std::string note = Attribut(rec, 1);
      size_t debut = 0;
      while (debut < note.size()) {
        size_t fin = note.find("\r\n\r\n", debut);
        if (fin == std::string::npos) fin = note.size();
        // The date that opens a paragraph is written anew.
        std::string p = note.substr(debut, fin - debut);
        const size_t tiret = p.find(" - ");
        if (tiret != std::string::npos && tiret < 12) p = p.substr(tiret + 3);
        if (!p.empty()) paragraphes.push_back(p);
        debut = fin + 4;
      }
    }
  }
  if (paragraphes.empty()) paragraphes.push_back("Intervention réalisée sans difficulté.");
  return paragraphes;
}

// A note of about `longueur` characters: dated paragraphs, cut at a space.
std::string Note(const std::vector<std::string>& paragraphes, size_t longueur, std::mt19937& alea) {
  std::string note;
  int jour = 1 + static_cast<int>(alea() % 28), mois = 1 + static_cast<int>(alea() % 12);
  while (note.size() < longueur) {
    if (!note.empty()) note += "\r\n\r\n";
    char date[16];
    std::snprintf(date, sizeof date, "%02d/%02d/2024", jour, mois);
    note += std::string(date) + " - " + paragraphes[alea() % paragraphes.size()];
    jour = jour % 28 + 1;
    if (jour == 1) mois = mois % 12 + 1;
  }
  if (note.size() > longueur) {
    size_t coupe = note.rfind(' ', longueur);
    note.resize(coupe == std::string::npos || coupe < longueur / 2 ? longueur : coupe);
    // Never end in the middle of a character.
    while (!note.empty() && (static_cast<unsigned char>(note.back()) & 0xC0) == 0x80) {
      note.pop_back();
    }
    if (!note.empty() && (static_cast<unsigned char>(note.back()) & 0xC0) == 0xC0) note.pop_back();
  }
  return note;
}

}  // namespace

MagasinRealiste GenereMagasin(const std::string& dossier_demo, int n, const std::string& chemin,
                              unsigned graine) {
  namespace fs = std::filesystem;
  std::vector<fs::path> fichiers_demo;
  for (const auto& f : fs::directory_iterator(dossier_demo)) {
    if (f.path().extension() == ".json") fichiers_demo.push_back(f.path());
  }
  std::sort(fichiers_demo.begin(), fichiers_demo.end());
  std::map<std::string, Enregistrements> demo;
  std::vector<std::string> ordre;
  for (const auto& f : fichiers_demo) {
    for (auto& [nom, recs] : marbrel::LitDumpFichier(f.string()).fichiers) {
      if (!demo.count(nom)) ordre.push_back(nom);
      auto& tous = demo[nom];
      tous.insert(tous.end(), recs.begin(), recs.end());
    }
  }
  // The demo's persons are the models: the care recipients of CIVILAIDE, the
  // carers that have a full dossier (INFOSAIDANT).
  std::vector<std::string> modeles_aide, modeles_aidant;
  for (const auto& [cle, rec] : demo["CIVILAIDE"]) modeles_aide.push_back(cle);
  for (const auto& [cle, rec] : demo["INFOSAIDANT"]) modeles_aidant.push_back(cle);
  if (modeles_aide.empty() || modeles_aidant.empty()) {
    throw std::runtime_error("les données de démonstration de " + dossier_demo +
                             " n'ont ni CIVILAIDE ni INFOSAIDANT.");
  }
  const std::set<std::string> modeles = [&] {
    std::set<std::string> s(modeles_aide.begin(), modeles_aide.end());
    s.insert(modeles_aidant.begin(), modeles_aidant.end());
    return s;
  }();

  MagasinRealiste resultat;
  for (int i = 0; i < n; ++i) {
    resultat.aides.push_back(Cle('A', i));
    resultat.aidants.push_back(Cle('S', i));
  }
  std::mt19937 alea(graine);
  const std::vector<std::string> paragraphes = Paragraphes(demo);

  marbrel::Dump dump;
  dump.origine = "magasin réaliste";
  for (const std::string& nom : ordre) {
    if (nom == "TPSINCOMPATIBILITES") continue;  // made below, between the new persons
    const Enregistrements& recs = demo[nom];
    Enregistrements sortie;
    // The records of each model in this file: its own key, or keys it begins.
    std::map<std::string, const std::string*> propre;
    std::map<std::string, std::vector<std::pair<std::string, const std::string*>>> suffixes;
    for (const auto& [cle, rec] : recs) {
      if (modeles.count(cle)) {
        propre[cle] = &rec;
      } else if (cle.size() > 5 && modeles.count(cle.substr(0, 5))) {
        suffixes[cle.substr(0, 5)].push_back({cle.substr(5), &rec});
      } else if (!(nom == "CIVILAIDANT" && !cle.empty() && cle[0] == 'S')) {
        sortie.push_back({cle, rec});  // a catalogue: tables, tasks, sectors…
      }
    }
    const bool notes = nom == "BLOCNOTAIDE" || nom == "BLOCNOTAIDANT";
    const bool indisponibilites = nom == "TPSAIDEINDISPO" || nom == "TPSAIDANTINDISPO";
    std::vector<std::pair<std::string, const std::string*>> toutes_indispos;
    for (const auto& [m, liste] : suffixes) {
      toutes_indispos.insert(toutes_indispos.end(), liste.begin(), liste.end());
    }
    for (int type = 0; type < 2; ++type) {
      const auto& nouvelles = type == 0 ? resultat.aides : resultat.aidants;
      const auto& modeles_type = type == 0 ? modeles_aide : modeles_aidant;
      for (size_t i = 0; i < nouvelles.size(); ++i) {
        const std::string& cle = nouvelles[i];
        const std::string& modele = modeles_type[i % modeles_type.size()];
        if (notes && (nom == "BLOCNOTAIDE") == (type == 0)) {
          const size_t longueur = 150 + alea() % (5000 - 150 + 1);
          std::string rec = Note(paragraphes, longueur, alea);
          if (propre.count(modele)) {
            const std::string& m = *propre[modele];
            const size_t reste = m.find(marbrel::AM);
            if (reste != std::string::npos) rec += m.substr(reste);
          }
          sortie.push_back({cle, rec});
          continue;
        }
        if (propre.count(modele)) sortie.push_back({cle, *propre[modele]});
        if (indisponibilites && !toutes_indispos.empty() &&
            (nom == "TPSAIDEINDISPO") == (type == 0)) {
          const int k = static_cast<int>(alea() % 9);
          for (int j = 0; j < k; ++j) {
            const auto& [suffixe, rec] = toutes_indispos[alea() % toutes_indispos.size()];
            char fin[16];
            std::snprintf(fin, sizeof fin, "%05lu%lu%02lu%02lu", 20000 + alea() % 1000,
                          1 + alea() % 7, 7 + alea() % 12, (alea() % 4) * 15);
            sortie.push_back({cle + fin, *rec});
          }
        } else if (!indisponibilites && suffixes.count(modele)) {
          for (const auto& [suffixe, rec] : suffixes[modele])
            sortie.push_back({cle + suffixe, *rec});
        }
      }
    }
    for (const auto& [cle, rec] : sortie)
      resultat.octets_donnees += static_cast<long long>(rec.size());
    dump.fichiers.push_back({nom, std::move(sortie)});
  }

  // Up to four incompatible carers per care recipient, named as the carer's
  // record names them.
  std::map<std::string, std::string> noms;
  for (const auto& [nom, recs] : dump.fichiers) {
    if (nom != "CIVILAIDANT") continue;
    for (const auto& [cle, rec] : recs) noms[cle] = Attribut(rec, 2) + " " + Attribut(rec, 3);
  }
  Enregistrements incompatibles;
  for (const std::string& aide : resultat.aides) {
    const int k = static_cast<int>(alea() % 5);
    for (int j = 0; j < k; ++j) {
      const std::string& aidant = resultat.aidants[alea() % resultat.aidants.size()];
      incompatibles.push_back({aidant + aide, aide + marbrel::AM + noms[aidant]});
    }
  }
  dump.fichiers.push_back({"TPSINCOMPATIBILITES", std::move(incompatibles)});

  fs::remove(chemin);
  marbrel::SqliteStore store(chemin, marbrel::SqliteStore::Mode::Creation);
  marbrel::CreeFichiersVesko(store);
  marbrel::Importe(store, {dump});
  return resultat;
}

}  // namespace banc_essai
