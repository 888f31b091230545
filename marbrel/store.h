// Where the multivalue files live. The library reads and writes through this
// interface only; the SQLite store is the embedded default.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace marbrel {

class Store {
 public:
  virtual ~Store() = default;

  // Called for each record visited; return false to stop the walk.
  using Visiteur = std::function<bool(const std::string& cle, const std::string& enregistrement)>;

  virtual bool LectureSeule() const = 0;
  virtual bool ExisteFichier(const std::string& fichier) = 0;
  // File names in byte order (dictionaries included, as "DICT NAME").
  virtual std::vector<std::string> Fichiers() = 0;
  // The record text, or nothing when the key is absent.
  virtual std::optional<std::string> Lit(const std::string& fichier, const std::string& cle) = 0;
  // Every record of the file, in byte order of the keys.
  virtual void Parcourt(const std::string& fichier, const Visiteur& visiteur) = 0;
  // The records whose key starts with prefixe, in key order, found through the
  // key index without reading the rest of the file.
  virtual void ParcourtPrefixe(const std::string& fichier, const std::string& prefixe,
                               const Visiteur& visiteur) = 0;
  // Records read so far by Parcourt and ParcourtPrefixe (for tests and benchmarks
  // that prove a selection only touched the rows it needed).
  virtual long long EnregistrementsParcourus() const = 0;

  // Writes; each fails with ERR_LECTURE_SEULE on a read-only store.
  virtual void CreeFichier(const std::string& fichier) = 0;
  virtual void Ecrit(const std::string& fichier, const std::string& cle,
                     const std::string& enregistrement) = 0;
  virtual void Supprime(const std::string& fichier, const std::string& cle) = 0;
  // Writes many records of one existing file: suivant fills in the next key and
  // record and returns false when there are no more. The effect is that of
  // Ecrit for each record; a store may do it faster (the SQLite store prepares
  // its statement once), which loading a dump or a benchmark file needs.
  using Producteur = std::function<bool(std::string& cle, std::string& enregistrement)>;
  virtual void EcritLot(const std::string& fichier, const Producteur& suivant) {
    std::string cle, enregistrement;
    while (suivant(cle, enregistrement)) Ecrit(fichier, cle, enregistrement);
  }
  // Runs f as one transaction: everything f wrote is kept, or nothing when f throws.
  virtual void Transaction(const std::function<void()>& f) = 0;

  // A read snapshot: from DebutInstantane to the matching FinInstantane every
  // read sees the store as it was when the snapshot began, whatever other
  // connections commit meanwhile. Calls nest; only the outermost pair counts.
  // A print run holds one for its whole length, so that a dossier printed
  // while an import commits is wholly the old one or wholly the new one.
  // FinInstantane never fails.
  virtual void DebutInstantane() {}
  virtual void FinInstantane() {}
};

}  // namespace marbrel
