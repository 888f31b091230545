// Directory files: the layout in which multivalue systems export their data,
// and the one home of its rules here.
//
//   FOLDER/CIVILAIDE/A0001          one folder per file, one OS file per record
//   FOLDER/D_TPSINCOMPATIBILITES/…  a dictionary ("DICT NAME" is read too)
//
// A folder's name is the file's name, an OS file's name the record's key, both
// with these escapes for what a file name cannot hold:
//
//   ?? for ?      ?\ for /      ?. for a leading .      ?XX (two upper-case
//   hex digits) for a control byte (0x01-0x1F, 0x7F)
//
// An OS file holds the record's attributes separated by line feeds (no final
// line feed); values and sub-values are separated by the value and sub-value
// marks. A record whose text itself holds a line feed (a note typed on
// several lines) is written in the marks form instead: attributes separated by
// the attribute mark and one attribute mark at the very end; a file holding an
// attribute mark is read that way, its line feeds kept as text.
//
// Encodings: UTF-8 (the marks are the bytes 0xFE, 0xFD, 0xFC, as in the store)
// or ISO-8859-1, where the marks are the characters þ ý ü (the same bytes):
// reading converts the text to UTF-8 and keeps the marks as marks; writing
// refuses a character Latin-1 cannot hold, and þ ý ü themselves.
#pragma once

#include <string>
#include <vector>

#include "marbrel/dump.h"
#include "marbrel/store.h"

namespace marbrel {

enum class Encodage { Utf8, Latin1 };

// "utf8"/"utf-8" or "latin1"/"iso-8859-1"; anything else fails with ERR_IMPORT.
Encodage EncodageNomme(const std::string& nom);

// Reads and checks every file of dossier, touching no store: load the result
// with Importe (one transaction). Anything wrong fails with ERR_IMPORT, whose
// French message names the OS file and what is wrong.
Dump LitRepertoire(const std::string& dossier, Encodage encodage);

// Writes the named files (every file of the store when noms is empty) under
// dossier, which must not exist or be empty. All or nothing: the files are
// written into a temporary folder beside it, renamed into place at the end.
void ExporteRepertoire(Store& store, const std::vector<std::string>& noms,
                       const std::string& dossier, Encodage encodage);

// The OS file name of a key (or file name), and back; "" for a name that is
// not one of ours.
std::string NomDeFichierOs(const std::string& cle);
std::string CleDeNomOs(const std::string& nom);

}  // namespace marbrel
