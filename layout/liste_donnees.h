// The layout of the framed label-and-value lists (ImprimeDonnées) and of the
// room they need on a page. One home for the row format, so that the lists,
// their callers and the tests agree on where every character goes.
//
// A row is printed inside a two-column frame whose first column starts at the
// left margin (Cadre_Gauche) and whose separator lies at 2 cm plus the first
// width:
//   two spaces | the label, cut and padded to the label room | one space |
//   the value right-aligned in kLargeurValeur characters
// The label room is every whole character left of the separator after the
// indent, so the character the separator crosses is the space. For the 8.5 +
// 2.5 cm frames this gives 2 + 43 + 1 + 9 = 55 characters, the list width;
// the care recipient's 14.3 cm first column holds 68, room for the
// 67-character task lines.
#pragma once

#include <string>

#include "marbrel/tabdyn.h"
#include "printing/printer.h"

namespace mise_en_page {

inline constexpr long kRetraitListe = 2;
inline constexpr long kLargeurValeur = 9;
// The empty form indents each label by 9 spaces.
inline constexpr long kRetraitFormulaire = 9;
// Lines a list's caller prints after it: two empty lines, the total, a blank.
inline constexpr long kReserveListe = 4;
// A title is never left at the foot of a page with fewer rows than this.
inline constexpr long kLignesAvecTitre = 3;

// The label room of a frame whose column widths (cm, values of attribute 1)
// are `largeurs`, with one centimetre worth `centimetre` twips.
long Largeur_Libelle(const marbrel::TabDyn& largeurs, long centimetre);

// One row: indent, label, gap, value (see above). The label is expected cut
// to `largeur_libelle` already; the value to kLargeurValeur.
std::string Ligne_Liste(const std::string& libelle, const std::string& valeur,
                        long largeur_libelle);

// How many 11-point lines still fit below the printer's current position
// before the printer would eject the page by itself (0 when none).
long Lignes_Restantes_Page(const printing::Printer& p);

// The height of a section title (Titre) in 11-point lines, rounded up.
long Lignes_Titre();

// The rows a list's first chunk may take below its header on this page,
// leaving room for the lines printed after the list (at least one).
long Lignes_Par_Page(const printing::Printer& p);

// Whether a list's title, its header and its first rows still fit on this
// page: a title is never left at the foot of a page, and the printer never
// has to eject a page without its running header.
bool Place_Pour_Liste(const printing::Printer& p);

// A number of hundredths as a list prints it: a time with two decimals,
// right-aligned in 8 characters; marks whole when they are whole.
std::string Texte_Nombre(long long centiemes, bool en_heures);

}  // namespace mise_en_page
