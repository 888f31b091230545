// Runs sentences against the temporary store and reads the rows back.
#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "marbrel/erreur.h"
#include "marbrel/tabdyn.h"
#include "tests/marbrel/base_temporaire.h"

class SelectionTest : public BaseTemporaire {
 protected:
  // The rows of the sentence, each as its fields.
  std::vector<std::vector<std::string>> Lignes(const std::string& phrase,
                                               const std::string& champs = "0",
                                               const std::string& fichier = "") {
    marbrel::Liste_Selection liste =
        base_->Selectionne(phrase + marbrel::AM + fichier + marbrel::AM + champs, "");
    const long n = 1 + static_cast<long>(std::count(champs.begin(), champs.end(), ' '));
    std::vector<std::vector<std::string>> lignes(static_cast<size_t>(liste.DCount()));
    for (long r = 1; r <= liste.DCount(); ++r) {
      for (long f = 1; f <= n; ++f) lignes[static_cast<size_t>(r - 1)].push_back(liste(r, f));
    }
    return lignes;
  }

  // The keys the sentence selects, in order.
  std::vector<std::string> ClesDe(const std::string& phrase) {
    std::vector<std::string> cles;
    for (const auto& ligne : Lignes(phrase)) cles.push_back(ligne[0]);
    return cles;
  }

  // The message of the error the sentence raises ("" when it runs).
  std::string MessageDe(const std::string& phrase, const std::string& champs = "0",
                        const std::string& fichier = "") {
    try {
      Lignes(phrase, champs, fichier);
    } catch (const marbrel::Erreur& e) {
      EXPECT_EQ(e.Numero(), marbrel::ERR_REQUETE) << e.what();
      return e.what();
    }
    return "";
  }

  // Built attribute by attribute: an I-type's brackets are not value marks.
  void Dictionnaire(const std::string& fichier, const std::string& item, const std::string& type,
                    const std::string& definition, const std::string& format) {
    const char am = marbrel::AM;
    Ecrit("DICT " + fichier, item,
          type + am + definition + am + am + item + am + format + am + "S");
  }
};

using Cles = std::vector<std::string>;
