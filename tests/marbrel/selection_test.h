// Runs sentences against the temporary store and reads the rows back.
#pragma once

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
    marbrel::TabDyn commande;
    commande.Remplace(1, phrase);
    commande.Remplace(2, fichier);
    commande.Remplace(3, champs);
    marbrel::Liste_Selection liste = base_->Selectionne(commande.Texte(), "");
    long n = 1;
    for (char c : champs) n += c == ' ' ? 1 : 0;
    std::vector<std::vector<std::string>> lignes;
    for (long r = 1; r <= liste.DCount(); ++r) {
      std::vector<std::string> ligne;
      for (long f = 1; f <= n; ++f) ligne.push_back(liste(r, f));
      lignes.push_back(ligne);
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

  void Dictionnaire(const std::string& fichier, const std::string& item, const std::string& type,
                    const std::string& definition, const std::string& format) {
    // Built attribute by attribute: an I-type's brackets are not value marks.
    marbrel::TabDyn d;
    d.Remplace(1, type);
    d.Remplace(2, definition);
    d.Remplace(4, item);
    d.Remplace(5, format);
    d.Remplace(6, "S");
    Ecrit("DICT " + fichier, item, d.Texte());
  }
};

using Cles = std::vector<std::string>;
