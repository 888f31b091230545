// A test bench for the print run: a real SQLite store in a temporary folder,
// the control, and a recording printer. A test puts records, runs Edition and
// reads back the text and the drawn items.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "control/ctr_vesko.h"
#include "marbrel/base.h"
#include "marbrel/tabdyn.h"
#include "printing/recording.h"

namespace banc {

// Builds a record from its attributes; within an attribute, values are
// separated by "]" and sub-values by "\\" in these test strings (e.g. "a]b").
marbrel::TabDyn Rec(std::initializer_list<std::string> attributs);

class Banc {
 public:
  // Creates the store with every file of a run, empty, and the control.
  Banc();
  ~Banc();

  // Writes a record (the store is opened read-write for the set-up only).
  void Met(const std::string& fichier, const std::string& cle, const marbrel::TabDyn& rec);
  // Writes a dictionary item into "DICT <fichier>".
  void MetDict(const std::string& fichier, const std::string& item, const marbrel::TabDyn& rec);

  // Prints the dossiers of keys as dossier type `type` with "today" fixed to
  // the given date (dd/mm/yyyy); the printer is the recording one.
  void Imprime(const std::string& type, const std::vector<std::string>& cles,
               const std::string& aujourdhui = "15/03/2024");

  // From now on every read of that file fails with a store error.
  void FaitEchouer(const std::string& fichier) { en_panne_ = fichier; }

  // The recording's text format, split into lines (a page eject is "\f").
  std::vector<std::string> Lignes() const;
  std::string Texte() const;
  std::string Json() const;
  const printing::Enregistrement& Enregistrement() const { return enregistrement_; }

  Ctr_Vesko& Controle() { return *controle_; }
  const std::string& Chemin() const { return chemin_; }

 private:
  std::string dossier_;
  std::string chemin_;
  std::shared_ptr<marbrel::Base> ecriture_;
  std::unique_ptr<Ctr_Vesko> controle_;
  printing::Enregistrement enregistrement_;
  std::string en_panne_;
};

}  // namespace banc
