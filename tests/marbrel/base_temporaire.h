// A real SQLite store in a fresh temporary directory, removed after the test.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <initializer_list>
#include <memory>
#include <string>

#include "marbrel/base.h"
#include "marbrel/marques.h"
#include "marbrel/sqlite_store.h"

// m contains x (the message is shown when it does not).
#define EXPECT_CONTIENT(m, x) EXPECT_PRED_FORMAT2(::testing::IsSubstring, x, m)

class BaseTemporaire : public ::testing::Test {
 protected:
  void SetUp() override {
    std::string modele = (std::filesystem::temp_directory_path() / "vesko-marbrel-XXXXXX").string();
    dossier_ = mkdtemp(modele.data());
    chemin_ = dossier_ + "/base.vesko";
    store_ = std::make_shared<marbrel::SqliteStore>(chemin_, marbrel::SqliteStore::Mode::Creation);
    base_ = std::make_shared<marbrel::Base>(store_);
  }
  void TearDown() override {
    base_.reset();
    store_.reset();
    std::filesystem::remove_all(dossier_);
  }

  // Record text from attributes written with "]" for value marks and "\" for
  // sub-value marks, the way multivalue people write them on paper.
  static std::string Rec(std::initializer_list<std::string> attributs) {
    std::string texte;
    for (const std::string& a : attributs) {
      if (&a != attributs.begin()) texte += marbrel::AM;
      for (char c : a) texte += c == ']' ? marbrel::VM : (c == '\\' ? marbrel::SM : c);
    }
    return texte;
  }

  void Ecrit(const std::string& fichier, const std::string& cle, const std::string& texte) {
    store_->CreeFichier(fichier);
    store_->Ecrit(fichier, cle, texte);
  }

  std::string dossier_;
  std::string chemin_;
  std::shared_ptr<marbrel::SqliteStore> store_;
  std::shared_ptr<marbrel::Base> base_;
};
