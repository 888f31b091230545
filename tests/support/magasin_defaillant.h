// A store that fails on purpose: every read of one file throws the store's
// own error, so tests prove that a failure costs only its section.
#pragma once

#include <memory>
#include <string>

#include "marbrel/erreur.h"
#include "marbrel/store.h"

namespace banc {

class MagasinDefaillant : public marbrel::Store {
 public:
  MagasinDefaillant(std::shared_ptr<marbrel::Store> reel, std::string fichier_en_panne)
      : reel_(std::move(reel)), panne_(std::move(fichier_en_panne)) {}

  bool LectureSeule() const override { return reel_->LectureSeule(); }
  bool ExisteFichier(const std::string& f) override { return reel_->ExisteFichier(f); }
  std::vector<std::string> Fichiers() override { return reel_->Fichiers(); }
  std::optional<std::string> Lit(const std::string& f, const std::string& cle) override {
    Panne(f);
    return reel_->Lit(f, cle);
  }
  void Parcourt(const std::string& f, const Visiteur& v) override {
    Panne(f);
    reel_->Parcourt(f, v);
  }
  void ParcourtPrefixe(const std::string& f, const std::string& p, const Visiteur& v) override {
    Panne(f);
    reel_->ParcourtPrefixe(f, p, v);
  }
  long long EnregistrementsParcourus() const override { return reel_->EnregistrementsParcourus(); }
  void CreeFichier(const std::string& f) override { reel_->CreeFichier(f); }
  void Ecrit(const std::string& f, const std::string& c, const std::string& e) override {
    reel_->Ecrit(f, c, e);
  }
  void Supprime(const std::string& f, const std::string& c) override { reel_->Supprime(f, c); }
  void Transaction(const std::function<void()>& f) override { reel_->Transaction(f); }

 private:
  void Panne(const std::string& f) const {
    if (f == panne_) {
      throw marbrel::Erreur(marbrel::ERR_BASE, "Erreur de lecture simulée dans " + f + ".");
    }
  }
  std::shared_ptr<marbrel::Store> reel_;
  std::string panne_;
};

}  // namespace banc
