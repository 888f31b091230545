// A store held in memory, for the fuzz targets: every file a map of keys to
// record texts, in byte order of the keys as the SQLite store gives them.
#pragma once

#include <map>
#include <stdexcept>

#include "marbrel/store.h"

namespace essai {

class MagasinMemoire : public marbrel::Store {
 public:
  bool LectureSeule() const override { return false; }
  bool ExisteFichier(const std::string& f) override { return fichiers_.count(f) > 0; }
  std::vector<std::string> Fichiers() override {
    std::vector<std::string> noms;
    for (const auto& [nom, contenu] : fichiers_) noms.push_back(nom);
    return noms;
  }
  std::optional<std::string> Lit(const std::string& f, const std::string& cle) override {
    auto fichier = fichiers_.find(f);
    if (fichier == fichiers_.end()) return std::nullopt;
    auto e = fichier->second.find(cle);
    if (e == fichier->second.end()) return std::nullopt;
    return e->second;
  }
  void Parcourt(const std::string& f, const Visiteur& v) override {
    for (const auto& [cle, texte] : fichiers_[f]) {
      ++parcourus_;
      if (!v(cle, texte)) return;
    }
  }
  void ParcourtPrefixe(const std::string& f, const std::string& prefixe,
                       const Visiteur& v) override {
    auto& fichier = fichiers_[f];
    for (auto e = fichier.lower_bound(prefixe);
         e != fichier.end() && e->first.compare(0, prefixe.size(), prefixe) == 0; ++e) {
      ++parcourus_;
      if (!v(e->first, e->second)) return;
    }
  }
  long long EnregistrementsParcourus() const override { return parcourus_; }
  void CreeFichier(const std::string& f) override { fichiers_[f]; }
  void Ecrit(const std::string& f, const std::string& cle, const std::string& texte) override {
    if (!ExisteFichier(f)) throw std::logic_error("fichier inconnu");
    fichiers_[f][cle] = texte;
  }
  void Supprime(const std::string& f, const std::string& cle) override { fichiers_[f].erase(cle); }
  void Transaction(const std::function<void()>& f) override {
    auto avant = fichiers_;
    try {
      f();
    } catch (...) {
      fichiers_ = std::move(avant);
      throw;
    }
  }
  bool operator==(const MagasinMemoire& autre) const { return fichiers_ == autre.fichiers_; }

 private:
  std::map<std::string, std::map<std::string, std::string>> fichiers_;
  long long parcourus_ = 0;
};

}  // namespace essai
