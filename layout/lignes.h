// The line-building rules every section shares, each in one place.
#pragma once

#include <initializer_list>
#include <string>

#include "marbrel/tabdyn.h"
#include "printing/printer.h"

namespace mise_en_page {

// The 24 characters before a value: a space, the label padded to 21, ": ".
std::string Etiquette(const std::string& libelle);

// A label line: the label, then the value.
void Ligne(printing::Printer& p, const std::string& libelle, const std::string& valeur);

// A blank line holds one space; a filler row of a table holds nothing.
void Blanc(printing::Printer& p);
void Ligne_Vide(printing::Printer& p);

// The indent of a continuation line under a label.
inline constexpr long kRetrait = 24;

// Cuts element (a, v) of a record held in memory to largeur characters,
// writes the cut text back into that record (never into the database, which
// a print does not write) and returns it.
std::string Coupe(marbrel::TabDyn& enregistrement, long a, long v, long largeur);

// "O" → "OUI", "N" → "NON", anything else → "" (exact comparison).
std::string OuiNon(const std::string& code);

// A list of column widths in centimetres for Cadre (values of attribute 1).
marbrel::TabDyn Largeurs(std::initializer_list<const char*> largeurs);

}  // namespace mise_en_page
