// The dump: the whole or part of a store as one JSON text (UTF-8). This is the
// one home of its format.
//
//   {"FILE": {"KEY": RECORD, ...}, "DICT FILE": {"ITEM": RECORD}, ...}
//
// RECORD is an array whose element n is attribute n + 1. An attribute is a
// string, or an array of values; a value is a string, or an array of
// sub-values (strings). So ["DUPONT", ["06 11 22 33 44", "01 45 67 89 10"]]
// is a record of two attributes, the second holding two values. An empty
// record is []. Export writes the shortest form: an attribute without marks
// is a string, a value without sub-value marks is a string.
//
// Loading is all or nothing: every dump is read and checked before the store
// is touched, then all of them are written in one transaction. A dump is read
// as a stream of JSON events into its records, never as a tree of the whole
// text: an import holds its records, about the size of its dumps. Within a
// dump, files and records are kept in the order of their names and keys. A file named
// with no record is still created; a record replaces the record of the same
// key already in the store (and one of a later dump replaces that of an
// earlier one).
#pragma once

#include <iosfwd>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "marbrel/store.h"

namespace marbrel {

struct Dump {
  std::string origine;  // where the text came from (a path), for messages
  using Enregistrements = std::vector<std::pair<std::string, std::string>>;  // key, record text
  std::vector<std::pair<std::string, Enregistrements>> fichiers;
};

// Reads and checks a dump. Anything wrong fails with Erreur(ERR_IMPORT), whose
// French message names the origin, the file, the key and what is wrong (or the
// line and column of a JSON syntax error).
Dump LitDump(std::string_view json, const std::string& origine);
// The same for a dump file; a file that cannot be read fails with ERR_IMPORT.
Dump LitDumpFichier(const std::string& chemin);

// Writes the dumps, in order, in one transaction of the store.
void Importe(Store& store, const std::vector<Dump>& dumps);

// Writes the named files (all files of the store, dictionaries included, when
// noms is empty) as one dump. A name the store lacks fails with
// ERR_FICHIER_INCONNU before anything is written.
void Exporte(Store& store, const std::vector<std::string>& noms, std::ostream& sortie);

}  // namespace marbrel
